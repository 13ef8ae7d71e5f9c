#include "shell/cues.h"

#include <fmt/format.h>

#include <array>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "platform/sound_files.h"
#include "shell/settings_files.h"
#include "shell/task_helpers.h"

namespace tessarel::shell {
namespace {

constexpr std::int16_t lastTopicOfDataDir = 2;

template <std::size_t N>
std::string elementOr(const std::array<const char*, N>& table, std::int16_t index) {
    const auto at = static_cast<std::size_t>(index);
    return index < 0 || at >= N ? std::string() : std::string(table.at(at));
}

// The platform's plain text viewer; empty when there is none.
std::string textViewer(const Context& context) {
    for (const auto* name : {"\\notepad.exe", "\\write.exe"}) {
        auto path = context.state.windowsDir + name;
        if (context.files.exists(path)) {
            return path;
        }
    }
    return {};
}

void showHelpAsText(const Context& context) {
    const auto& state = context.state;
    context.dialogs.message(
        {.text = fmt::format("Optional Tessarel Help module not loaded on your machine; you may download this "
                             "module at: {} - attempting to display text file instead...",
                             helpDownloadPage),
         .icon = platform::Icon::information});
    const auto viewer = textViewer(context);
    if (viewer.empty()) {
        context.dialogs.message({.text = "Unable to find Windows Notepad or Write application in your Windows Directory!",
                                 .icon = platform::Icon::exclamation});
        return;
    }
    const auto file = helpFile(state.helpTopic);
    if (file.empty()) {
        return;
    }
    context.files.changeDirectory(state.helpTopic <= lastTopicOfDataDir ? state.dataDir : dataPath(state, "tslhelp"));
    (void)context.processes.start(fmt::format("{} {}", commandWord(viewer), file), platform::WindowStyle::normal);
}

}  // namespace

std::string cueFile(std::int16_t cue) {
    constexpr std::array<const char*, 6> files = {"click.wav",  "minimize.wav", "XXXXXXXX.wav",
                                                  "click1.wav", "mixer.wav",    "opendraw.wav"};
    return elementOr(files, cue);
}

void playCue(const Context& context, std::int16_t cue) {
    constexpr std::int16_t familyWithoutCues = 2;
    if (context.state.osPlatform == familyWithoutCues || context.state.soundCuesOff == 1) {
        return;
    }
    const auto file = cueFile(cue);
    context.sounds.play(file.empty() ? file : dataPath(context.state, "system\\" + file));
}

void playEntrySound(const Context& context, const std::string& path) {
    if (!path.empty() && context.files.exists(path)) {
        context.sounds.playAndWait(path);
    }
}

std::string helpFile(std::int16_t topic) {
    constexpr std::array<const char*, 27> files = {
        "TESSAREL.TXT", "TESSAREL.TXT", "SYSREQ.TXT",   "GSETMAIN.TXT", "GSETCUST.TXT", "GSETADV.TXT",  "PLAYWAVE.TXT",
        "RECOPTS.TXT",  "TSLINFO.TXT",  "TSLUSE.TXT",   "RDTINFO.TXT",  "RDTUSE.TXT",   "CDLIB.TXT",    "TSLLIB.TXT",
        "CDPINFO.TXT",  "CDPUSE.TXT",   "CDPLIB.TXT",   "CDLIBF.TXT",   "CDJKOPTS.TXT", "CDJKIMGS.TXT", "CDPMENU.TXT",
        "CDBGRND.TXT",  "CDPROMPT.TXT", "PASSWORD.TXT", "HINTS.TXT",    "COMPWINA.TXT", "COMPMISC.TXT"};
    return elementOr(files, topic);
}

void showHelp(const Context& context) {
    auto& state = context.state;
    moveToDataDir(context);
    state.appToCheck = "CDHELP.EXE";
    isAppRunning(context);
    if (!context.files.exists(dataPath(state, "cdhelp.exe"))) {
        showHelpAsText(context);
    } else if (state.appAlreadyRunning != 1) {
        (void)context.processes.start(fmt::format("CDHELP.EXE {}", state.helpTopic), platform::WindowStyle::normal);
    }
}

}  // namespace tessarel::shell
