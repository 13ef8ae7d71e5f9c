#include <fmt/format.h>

#include <QApplication>
#include <QIcon>
#include <QPixmapCache>
#include <QTimer>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "app/composition.h"
#include "app/options.h"
#include "host/desktop/font_warm_up.h"

namespace {

using namespace tessarel;

constexpr auto desktopId = "org.tessarel.Tessarel";
constexpr std::chrono::milliseconds iconDelay{500};
constexpr int pictureCache = 1024;  // KiB; every dialog leaves a third of a MiB in Qt's cache of pictures
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

// While the application object is made: what Qt can't start without is told in a sentence, in place of a dump.
void tellMissingDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*text*/) {
    if (type == QtFatalMsg) {
        fail("There is no display to open a window on. Start it from a desktop session, or set DISPLAY.", statusFailure);
        std::_Exit(statusFailure);
    }
}

int printDrives(const app::Options& options) {
    const auto list = app::listDrives(options);
    if (!list) {
        return fail(list.error().message, statusFailure);
    }
    fmt::print("{}", *list);
    return 0;
}

int openProgram(char* programName, const app::Options& options, const std::string& workingDirectory) {
    std::optional<host::FontWarmUp> fonts(std::in_place);
    // The words behind the name are the program's own: Qt must not take any of them for an option.
    int count = 1;
    char* names[] = {programName, nullptr};
    qInstallMessageHandler(tellMissingDisplay);
    QApplication application(count, names);
    qInstallMessageHandler(nullptr);
    QPixmapCache::setCacheLimit(pictureCache);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName("tessarel");
    QApplication::setApplicationVersion(TESSAREL_VERSION);
    QApplication::setDesktopFileName(desktopId);
    QApplication::setQuitOnLastWindowClosed(false);
    // The look-up of an icon takes longer than the first window shall wait for.
    QTimer::singleShot(iconDelay, &application, [] { QApplication::setWindowIcon(QIcon::fromTheme(desktopId)); });
    const auto installation = app::findInstallation(QCoreApplication::applicationFilePath().toStdString());
    return app::runProgram(options, installation, workingDirectory, [&] { fonts.reset(); });
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
