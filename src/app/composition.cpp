#include "app/composition.h"

#include <fmt/format.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "app/drive_list.h"
#include "app/end_signals.h"
#include "app/playing_on.h"
#include "app/program.h"
#include "host/cd/cd_players.h"
#include "host/cd/line_levels.h"
#include "host/cd/output_mixer.h"
#include "host/cd/physical_drive.h"
#include "host/cd/sound_output.h"
#include "host/desktop/desktop_notifications.h"
#include "host/desktop/dispatch.h"
#include "host/desktop/mpris.h"
#include "host/desktop/pulse_sound_files.h"
#include "host/desktop/qt_scheduler.h"
#include "host/desktop/qt_system.h"
#include "host/desktop/window_finder.h"
#include "host/files/drive_table.h"
#include "host/files/home.h"
#include "host/files/iso_disc_volume.h"
#include "host/files/launcher.h"
#include "host/files/real_files.h"
#include "host/image/disc_image.h"
#include "ui/cdform_view.h"
#include "ui/dialogs.h"
#include "ui/main_windows.h"
#include "ui/standard_views.h"
#include "ui/theme.h"

namespace tessarel::app {
namespace {

namespace fs = std::filesystem;

/// Between two looks whether a disc that plays on has ended.
constexpr std::chrono::milliseconds glance{200};
/// What the program's own command line calls the window that waits for a disc.
constexpr const char* waitingWindowWord = "CDROMLIB";
/// The last letter that images are put under: Z: is the real file system.
constexpr char lastImageDrive = 'Y';
/// From the start to the desktop's being told of the program, so that the first window does not wait for it.
constexpr std::chrono::milliseconds busDelay{600};

std::vector<std::unique_ptr<host::DiscDrive>> opticalDrives() {
    std::vector<std::unique_ptr<host::DiscDrive>> drives;
    for (auto& device : host::opticalDevices()) {
        drives.push_back(std::make_unique<host::PhysicalDrive>(std::move(device)));
    }
    return drives;
}

host::DriveSources driveSources() { return {opticalDrives, host::openDiscImage}; }

char firstDiscDrive(const platform::Drives& drives) {
    char letter = 'A';
    while (letter < 'Z' && drives.type(letter) != platform::DriveType::cdRom) {
        ++letter;
    }
    return letter;
}

// In the order of the names; empty for no folder, and for one without an image.
std::string firstImageIn(const std::string& folder) {
    std::error_code failed;
    std::string first;
    for (fs::directory_iterator at(folder, failed); !failed && at != fs::directory_iterator(); at.increment(failed)) {
        const auto name = at->path().string();
        std::error_code ignored;
        if (host::looksLikeDiscImage(at->path()) && at->is_regular_file(ignored) && (first.empty() || name < first)) {
            first = name;
        }
    }
    return first;
}

void report(const std::string& message) { fmt::print(stderr, "tessarel: {}\n", message); }

// A platform without a screen shows nobody a box that waits for an answer.
bool boxesAreSeen() {
    const auto platformName = QApplication::platformName();
    return platformName != "offscreen" && platformName != "minimal";
}

// The images that were refused stay out; the sentences that tell why come back.
std::vector<std::string> insertAll(platform::Drives& drives, const std::vector<Insertion>& insertions) {
    std::vector<std::string> refusals;
    for (const auto& [letter, image] : insertions) {
        if (const auto inserted = drives.insertImage(letter, image); !inserted) {
            refusals.push_back(inserted.error().message);
        }
    }
    return refusals;
}

/// The views of the program's windows. Made before the program starts, gone before it.
struct Screen {
    Screen(Program& program, const platform::FileSystem& files)
        : theme(ui::desktopScale(ui::CdFormView::largestDesign()), look(program.state, files)), views(program.windows) {
        ui::knowStandardViews(views, theme, program.player, program.record);
    }

    // The settings are read after the views are known.
    static ui::Look look(const shell::SharedState& state, const platform::FileSystem& files) {
        return {state.panelColors, [&state] { return ui::skinOf(state); },
                [&files](const std::string& path) -> std::optional<std::string> {
                    auto bytes = files.read(path);
                    return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
                }};
    }

    ui::Theme theme;
    ui::Views views;
};

/// The adapters, the program on them, and the views on it.
class Composition {
public:
    Composition(const fs::path& home, const Installation& installation)
        : home_(home),
          drives_(host::driveCOf(home), driveSources()),
          files_(drives_, host::openIsoDiscVolume),
          launcher_(files_, {installation.companions, host::commandPathOfEnvironment(), host::findWindow}),
          players_(scheduler_, drives_, sound_),
          levels_(scheduler_, sound_),
          systemMixer_(scheduler_, sound_),
          system_(QApplication::beep),
          cues_(scheduler_, files_, levels_.streams(platform::Line::wave)),
          dialogs_({[this](const std::string& path) { return files_.realPath(path).string(); },
                    [this](const std::string& path) { return files_.programPath(path); }}),
          media_(realPath()),
          notifications_(realPath()),
          program_({scheduler_, files_, drives_, launcher_, dialogs_, system_, cues_, players_, levels_, systemMixer_, media_,
                    notifications_}),
          screen_(std::make_unique<Screen>(program_, files_)) {}

    int run(const Options& options, const std::string& workingDirectory) {
        host::guard([&] {
            const auto line = takeImage(options, workingDirectory);
            program_.start(line);
        });
        QTimer::singleShot(busDelay, qApp, [this] {
            if (!host::processEnding()) {
                media_.connect();
            }
        });
        if (!host::processEnding()) {
            QApplication::exec();
        }
        media_.disconnect();
        screen_.reset();
        program_.end();
        if (players_.sounding() && host::exitStatus() == 0 && !endSignals_.received()) {
            playOn();
        }
        return host::exitStatus();
    }

private:
    host::RealPath realPath() {
        return [this](const std::string& path) { return files_.realPath(path); };
    }

    // Inserts what the options name, tells of what can't be, and returns the program's own command line. A disc that a person
    // opens plays, and the window that waits for discs takes it, whatever window the settings begin with.
    std::string takeImage(const Options& options, const std::string& workingDirectory) {
        auto insertions = options.insertions;
        const auto line = commandLine(options.words, workingDirectory,
                                      {[](const std::string& path) { return isFile(path); }, host::looksLikeDiscImage,
                                       [this](const std::string& path) { return files_.programPath(path); }, firstImageIn});
        char letter = program_.discDrive(firstDiscDrive(drives_));
        for (const auto& image : line.images) {
            insertions.push_back({letter, image});
            letter = static_cast<char>(std::min(letter + 1, int{lastImageDrive}));
        }
        const auto refusals = insertAll(drives_, insertions);
        const bool opened = line.discInDrive || !line.images.empty();
        program_.state.playOpenedDisc = opened && refusals.empty() ? 1 : 0;
        for (const auto& refusal : refusals) {
            report(refusal);
            if (boxesAreSeen()) {
                dialogs_.message({.text = refusal, .icon = platform::Icon::exclamation});
            }
        }
        return opened && line.text.empty() ? std::string(waitingWindowWord) : line.text;
    }

    static bool isFile(const std::string& path) {
        std::error_code ignored;
        return fs::is_regular_file(path, ignored);
    }

    void playOn() {
        const PlayingOn mark(home_);
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [this] {
            if (!players_.sounding()) {
                QApplication::exit(host::exitStatus());
            }
        });
        look.start(glance);
        QApplication::exec();
    }

    fs::path home_;
    host::QtScheduler scheduler_;
    EndSignals endSignals_;
    host::DriveTable drives_;
    host::RealFiles files_;
    host::Launcher launcher_;
    host::SoundOutput sound_;
    host::DiscPlayers players_;
    host::LineLevels levels_;
    host::OutputMixer systemMixer_;
    host::QtSystem system_;
    host::PulseSoundFiles cues_;
    ui::QtDialogs dialogs_;
    host::Mpris media_;
    host::DesktopNotifications notifications_;
    Program program_;
    std::unique_ptr<Screen> screen_;
};

// The first folder that exists of `name` beside the program, where a program of /bin has it, and where it was installed to.
fs::path firstFolder(const fs::path& binaries, const fs::path& beside, const fs::path& shared, const fs::path& installed) {
    std::error_code ignored;
    for (const auto& folder : {binaries / beside, binaries.parent_path() / shared, installed}) {
        if (fs::is_directory(folder, ignored)) {
            return folder;
        }
    }
    return {};
}

}  // namespace

Installation findInstallation(const fs::path& program) {
    const auto binaries = program.parent_path();
    std::error_code ignored;
    // Where it was built, the companions lie beside the program; installed, they have a folder of their own.
    const bool built = fs::is_directory(binaries / "share/tessarel", ignored);
    return {firstFolder(binaries, "share/tessarel", "share/tessarel", TESSAREL_INSTALLED_DATA),
            built ? binaries : firstFolder(binaries, "companions", "libexec/tessarel", TESSAREL_INSTALLED_COMPANIONS)};
}

Result<std::string> listDrives(const Options& options) {
    const auto folderC = host::driveCOf(options.home);
    host::DriveTable drives(folderC, driveSources());
    if (const auto refusals = insertAll(drives, options.insertions); !refusals.empty()) {
        return failure(Fault::invalid, fmt::format("{}", fmt::join(refusals, "\n")));
    }
    return driveList(drives, drives, folderC.string(), host::openIsoDiscVolume);
}

int runProgram(const Options& options, const Installation& installation, const std::string& workingDirectory,
               const std::function<void()>& beforeFirstText) {
    const fs::path home = options.home;
    endPlayingOn(home);
    if (const auto made = host::provisionHome(home, installation.data); !made) {
        report(made.error().message);
        if (boxesAreSeen()) {
            QMessageBox::critical(nullptr, "Tessarel", QString::fromStdString(made.error().message));
        }
        return 1;
    }
    Composition composition(home, installation);
    beforeFirstText();
    return composition.run(options, workingDirectory);
}

}  // namespace tessarel::app
