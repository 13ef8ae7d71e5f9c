#include "shell/web_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/settings_files.h"
#include "shell/task_helpers.h"

namespace tessarel::shell {
namespace {

constexpr std::array<const char*, 10> browserCandidates = {"C:\\Program Files\\NETSCAPE\\NAVIGATOR\\PROGRAM\\NETSCAPE.EXE",
                                                           "D:\\Program Files\\NETSCAPE\\NAVIGATOR\\PROGRAM\\NETSCAPE.EXE",
                                                           "C:\\Program Files\\Netscape\\Communicator\\Program\\netscape.exe",
                                                           "D:\\Program Files\\Netscape\\Communicator\\Program\\netscape.exe",
                                                           "C:\\Netscape\\Communicator\\Program\\netscape.exe",
                                                           "C:\\Program Files\\Internet Explorer\\Iexplore.exe",
                                                           "C:\\Program Files\\Microsoft Internet\\Iexplore.exe",
                                                           "C:\\Program Files\\Plus!\\Microsoft Internet\\Iexplore.exe",
                                                           "D:\\Program Files\\Internet Explorer\\Iexplore.exe",
                                                           "D:\\Program Files\\Microsoft Internet\\Iexplore.exe"};

constexpr std::size_t valueColumn = 15;  // where the path begins behind "NETSCAPE.EXE"

std::string browserFromLine(const std::string& line) {
    const auto capitals = text::upper(line);
    if (capitals.starts_with("NETSCAPE.EXE")) {
        return text::trim(text::mid(line, valueColumn));
    }
    const auto end = capitals.find(".EXE");
    if (!capitals.starts_with("NETSCAPE") || end == std::string::npos) {
        return {};
    }
    const auto start = std::min(capitals.find("C:\\"), capitals.find("D:\\"));
    return start < end ? line.substr(start, end + 4 - start) : std::string();
}

std::string installedBrowser(const Context& context) {
    const auto winIni = settingsText(context.files, context.state.windowsDir + "\\WIN.INI");
    if (auto named = browserFromWinIni(winIni.value_or("")); !named.empty()) {
        return named;
    }
    const auto* found = std::find_if(browserCandidates.begin(), browserCandidates.end(),
                                     [&](const char* path) { return context.files.exists(path); });
    return found == browserCandidates.end() ? std::string() : std::string(*found);
}

std::string browserOfUser(const Context& context) {
    const auto answer =
        context.dialogs.message({.text = "Unable to identify Web Browser or more than one Web Browser detected on "
                                         "your system! Do you wish to enter it now?",
                                 .buttons = platform::Buttons::yesNo,
                                 .icon = platform::Icon::question});
    if (answer != platform::Answer::yes) {
        return {};
    }
    return context.dialogs
        .openFile({"Select Web Browser",
                   "All Executable Files (*.exe;*.com)|*.exe;*.com|EXE Files Only (*.exe)|*.exe|COM Files Only (*.com)|*.com",
                   "C:\\"})
        .value_or("");
}

void lookForBrowser(const Context& context, bool mayAsk) {
    auto& state = context.state;
    auto found = installedBrowser(context);
    if (found.empty() && mayAsk) {
        found = browserOfUser(context);
    }
    if (found.empty()) {
        return;
    }
    state.webBrowserPath = found;
    if (state.setupRequested != 1) {
        rewriteTslwin4(context, [&](Settings& settings) { settings.webBrowserPath = found; });
    }
}

bool isBrowserThere(const Context& context) {
    const auto& path = context.state.webBrowserPath;
    return !path.empty() && context.files.exists(path);
}

}  // namespace

std::string browserFromWinIni(std::string_view winIni) {
    while (!winIni.empty()) {
        const auto end = std::min(winIni.find_first_of("\r\n"), winIni.size());
        if (auto found = browserFromLine(text::trim(winIni.substr(0, end))); !found.empty()) {
            return found;
        }
        winIni.remove_prefix(std::min(end + 1, winIni.size()));
    }
    return {};
}

void openWebPage(const Context& context, std::string_view url) {
    const bool onlySearch = url.starts_with(findBrowser);
    if (onlySearch || !isBrowserThere(context)) {
        lookForBrowser(context, !url.starts_with(findInstalledBrowser));
    }
    if (onlySearch) {
        return;
    }
    if (isBrowserThere(context)) {
        const auto& browser = context.state.webBrowserPath;
        context.files.changeDirectory(text::splitDirectory(browser));
        // A browser that can't be started is passed over in silence.
        (void)context.processes.start(fmt::format("{} {}", commandWord(browser), url), platform::WindowStyle::normal);
    }
    context.system.setPointer(platform::PointerShape::normal);
}

}  // namespace tessarel::shell
