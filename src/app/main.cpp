#include <fmt/format.h>

#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "app/composition.h"
#include "app/options.h"
#include "host/desktop/window_finder.h"

namespace {

using namespace tessarel;

constexpr auto desktopId = "org.tessarel.Tessarel";
constexpr std::chrono::milliseconds iconDelay{500};
constexpr int statusFailure = 1;
constexpr int statusWrongOption = 2;

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

app::Surroundings surroundings() {
    std::error_code ignored;
    return {variable("XDG_DATA_HOME"), variable("HOME"), std::filesystem::current_path(ignored).string()};
}

int fail(const std::string& message, int status) {
    fmt::print(stderr, "tessarel: {}\n", message);
    return status;
}

// Whether Qt will find its windows elsewhere than on an X server.
bool otherPlatform() { return !variable("QT_QPA_PLATFORM").empty() || !variable("WAYLAND_DISPLAY").empty(); }

int printDrives(const app::Options& options) {
    const auto list = app::listDrives(options);
    if (!list) {
        return fail(list.error().message, statusFailure);
    }
    fmt::print("{}", *list);
    return 0;
}

int openProgram(char* programName, const app::Options& options, const std::string& workingDirectory) {
    auto display = otherPlatform() ? nullptr : host::holdDisplay();
    if (!display && !otherPlatform()) {
        return fail("There is no display to open a window on. Start it from a desktop session, or set DISPLAY.", statusFailure);
    }
    // The words behind the name are the program's own: Qt must not take any of them for an option.
    int count = 1;
    char* names[] = {programName, nullptr};
    QApplication application(count, names);
    display.reset();
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName("tessarel");
    QApplication::setApplicationVersion(TESSAREL_VERSION);
    QApplication::setDesktopFileName(desktopId);
    QApplication::setQuitOnLastWindowClosed(false);
    // The look-up of an icon takes longer than the first window shall wait for.
    QTimer::singleShot(iconDelay, &application, [] { QApplication::setWindowIcon(QIcon::fromTheme(desktopId)); });
    const auto installation = app::findInstallation(QCoreApplication::applicationFilePath().toStdString());
    return app::runProgram(options, installation, workingDirectory);
}

}  // namespace

int main(int count, char** arguments) {
    const auto around = surroundings();
    const auto options = app::parseOptions({arguments + 1, arguments + count}, around);
    if (!options) {
        return fail(options.error().message, statusWrongOption);
    }
    if (options->help) {
        fmt::print("{}", app::helpText());
        return 0;
    }
    if (options->version) {
        fmt::print("Tessarel {}\n", TESSAREL_VERSION);
        return 0;
    }
    return options->listDrives ? printDrives(*options) : openProgram(arguments[0], *options, around.workingDirectory);
}
