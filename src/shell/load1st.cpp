#include "shell/load1st.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "forms/windows.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_system.h"
#include "platform/process_end.h"
#include "shell/panel_colors.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"

namespace tessarel::shell {
namespace {

constexpr auto cdRomType = static_cast<std::int16_t>(platform::DriveType::cdRom);
constexpr std::int16_t wallpaperFromStart = 3;

}  // namespace

std::int16_t screenClassFor(int widthPixels) {
    return static_cast<std::int16_t>(1 + (widthPixels > 799 ? 1 : 0) + (widthPixels > 1023 ? 1 : 0) +
                                     (widthPixels > 1279 ? 1 : 0));
}

double colorsOf(const platform::ScreenInfo& screen) { return std::exp2(screen.bitsPerPixel * screen.planes); }

Load1st::Load1st(forms::Windows& windows, Context context, std::string commandLine)
    : Form(windows, "Load1st"), context_(context), commandLine_(std::move(commandLine)) {}

void Load1st::Form_Load() {
    context_.system.setPointer(platform::PointerShape::hourglass);
    context_.state.discDrawerOpen = 0;
    context_.state.osPlatform = static_cast<std::int16_t>(context_.system.platformId().value_or(0));
    readCommandLine();
    readScreen();
    context_.state.systemDir = text::upper(context_.system.systemDirectory());
    context_.state.windowsDir = text::upper(context_.system.windowsDirectory());
    const Road road = readSettings();
    if (road == Road::askForDirectory) {
        askForDataDirectory();
    }
    if (road != Road::goOn && context_.state.driveWarningIgnored == 0 && !startSetUp() && road == Road::askForDirectory) {
        platform::endProcess();
    }
    readLateSettings();
    openFirstWindow();
}

void Load1st::readScreen() {
    auto& state = context_.state;
    const auto screen = context_.system.screen();
    const double pixels =
        screen.twipsPerPixel > 0 ? std::floor(static_cast<double>(screen.widthTwips) / screen.twipsPerPixel) : 0;
    state.screenWidthPixels =
        static_cast<std::int16_t>(std::clamp(pixels, 0.0, static_cast<double>(std::numeric_limits<std::int16_t>::max())));
    state.screenClass = screenClassFor(state.screenWidthPixels);
    state.smallFontsDisplay = screen.twipsPerPixel > 14 ? 1 : 0;
}

void Load1st::readCommandLine() {
    const auto command = parseCommandLine(commandLine_);
    context_.state.runMode = command.runMode;
    commandTrack_ = command.commandTrack;
    if (!command.programPath.empty() && context_.files.exists(command.programPath)) {
        startProgramInstead(command.programPath);
    }
}

void Load1st::startProgramInstead(const std::string& path) {
    if (const auto directory = text::splitDirectory(path); !directory.empty()) {
        context_.files.changeDirectory(directory);
    }
    startOrTell(context_, commandWord(path));
    platform::endProcess();
}

Load1st::Road Load1st::readSettings() {
    auto& state = context_.state;
    if (!loadTslwin(context_)) {
        return Road::askForDirectory;
    }
    state.setupRequested = 0;
    state.driveWarningIgnored = 0;
    moveToDataDir(context_);
    if (!context_.files.exists(dataPath(state, "tslwin1.ini"))) {
        startOrTell(context_, "cdsetup.exe INITSETUP");
        platform::endProcess();
    }
    readEarlySettings();
    if (state.skipDriveChecks == 1) {
        return Road::goOn;
    }
    const Road road = checkDrives();
    return road == Road::goOn ? findLibrary() : road;
}

void Load1st::readEarlySettings() {
    auto& state = context_.state;
    loadTslwin1(context_);
    loadTslwin5(context_);
    loadTslwin6(context_);
    loadModeLast(context_);
    loadTslLinks(context_);
    state.displayColors = colorsOf(context_.system.screen());
    state.menuWindowOpen.fill(0);
    resetDiscState(state);
    state.discSearchDormant = 0;  // no waiting window is up yet
    if (state.cursorHidden != 1) {
        state.cursorHidden = 0;
    }
}

Load1st::Road Load1st::checkDrives() {
    auto& state = context_.state;
    findDriveTypes();
    if (isDriveWarningDue()) {
        if (wantsSetUpAfterWarning()) {
            return Road::setUp;
        }
        state.driveWarningIgnored = 1;
    }
    const bool beyond = !state.cdDrive.empty() && driveLetter(state.cdDrive) > state.lastCdDriveLetter;
    return beyond && state.driveWarningIgnored == 0 ? Road::setUp : Road::goOn;
}

void Load1st::findDriveTypes() {
    auto& state = context_.state;
    state.lastCdDriveLetter = 'D';
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const auto type = static_cast<std::int16_t>(context_.drives.type(letter));
        state.driveTypes.at(static_cast<std::size_t>(letter - 'A')) = type;
        if (type == cdRomType) {
            state.lastCdDriveLetter = static_cast<unsigned char>(letter);
        }
    }
}

bool Load1st::isDriveWarningDue() const {
    const auto& state = context_.state;
    const char letter = driveLetter(state.cdDrive);
    const bool isCdRom =
        letter >= 'A' && letter <= 'Z' && state.driveTypes.at(static_cast<std::size_t>(letter - 'A')) == cdRomType;
    return state.cdRomEnabled != 0 && !isCdRom;
}

bool Load1st::wantsSetUpAfterWarning() {
    const auto& drive = context_.state.cdDrive;
    const auto letter = text::upper(text::left(drive, 1));
    const auto answer = context_.dialogs.message(
        {.text = fmt::format(
             "NOTE: the Primary CD-ROM drive selected does not appear to be a CD-ROM drive. Please verify that the {} drive "
             "currently selected is in fact a CD-ROM drive. If the selected drive is a CD-ROM drive but does not operate "
             "properly, you may have to obtain an updated CD-ROM driver.\n\nDo You Wish to Access the Setup Section?",
             letter),
         .buttons = platform::Buttons::yesNo,
         .icon = platform::Icon::exclamation});
    return answer == platform::Answer::yes;
}

Load1st::Road Load1st::findLibrary() {
    auto& state = context_.state;
    state.cdDrivePrimary = state.cdDrive;
    removeDataFile(context_, "TSL.DAT");
    if (!context_.files.exists(dataPath(state, "cdromlib.grp"))) {
        return Road::askForDirectory;
    }
    return state.cdDrive.empty() ? Road::setUp : Road::goOn;
}

void Load1st::askForDataDirectory() {
    context_.system.setPointer(platform::PointerShape::normal);
    const auto answer = context_.dialogs.input(
        "Tessarel",
        "Location of Tessarel Data File(s) Not Found, Please Enter Full Path:    (e.g. C:\\Program Files\\Tessarel)");
    if (!answer || text::mid(*answer, 2, 2) != ":\\") {
        platform::endProcess();
    }
    context_.state.dataDir = *answer;
    moveToDataDir(context_);
}

// Set-up changes what this process has read, so nothing is left for it to do. False when set-up can't be started: the user has
// been told, and what was read can still serve.
bool Load1st::startSetUp() {
    context_.state.discSearchDormant = 1;
    context_.state.setupRequested = 1;
    context_.system.setPointer(platform::PointerShape::normal);
    moveToDataDir(context_);
    if (!startOrTell(context_, "cdsetup.exe")) {
        context_.state.discSearchDormant = 0;
        return false;
    }
    windows().unload("cdmenu");
    platform::endProcess();
}

void Load1st::readLateSettings() {
    auto& state = context_.state;
    state.setupRequested = 0;
    loadTslwin3(context_);
    loadTslwin4(context_);
    fillColorTables(state);
    chooseMixer();
    loadTslwin2(context_);
    state.rdDrivePrimary = state.rdDrive;
    state.menuMaximised = isMenuMaximised(context_) ? 1 : 0;
    if (state.wallpaperMode >= wallpaperFromStart) {
        windows().show(wallpaperForm);
    }
}

void Load1st::chooseMixer() {
    auto& state = context_.state;
    const auto mixer = state.windowsDir + "\\sndvol32.exe";
    if (state.mixerPath.empty() && context_.files.exists(mixer)) {
        state.mixerPath = mixer;
    }
}

void Load1st::openFirstWindow() {
    auto& state = context_.state;
    const bool discWindows = state.startInDiscWindows == 1 && state.returnedToMenu != 1;
    if (!state.runMode.empty()) {
        openWindowOfRunMode();
    } else if (discWindows) {
        const bool audioOnly = state.cdRomEnabled == 0 && state.audioCdEnabled == 1;
        leaveTo(audioOnly ? audioCdWindow : waitingWindow);
    } else {
        windows().show("cdmenu");
        context_.system.setPointer(platform::PointerShape::normal);
    }
}

void Load1st::openWindowOfRunMode() {
    auto& runMode = context_.state.runMode;
    context_.system.setPointer(platform::PointerShape::hourglass);
    if (runMode == "CDROMLIB") {
        runMode.clear();
        leaveTo(waitingWindow);
    } else if (runMode == "RDLIB") {
        runMode.clear();
        leaveTo("RDtessarel");
    } else if (runMode == "AUDIOCD") {
        runMode.clear();
        leaveTo(audioCdWindow);
    } else if (runMode == "CDLITE") {
        openUnseen();
    } else if (runMode == "AUDIOCD1") {
        runMode = commandTrack_ == 0 ? std::string() : std::to_string(commandTrack_);
        leaveTo(audioCdWindow);
    } else if (runMode == "MEDIA") {
        runMode.clear();
        leaveTo("animate");
    } else {
        openMedia();
    }
}

// The waiting window works by its timer alone, until a disc is found.
void Load1st::openUnseen() {
    windows().load(waitingWindow);
    if (auto* wallpaper = windows().load(wallpaperForm)) {
        wallpaper->ZOrder();
    }
    windows().unload(name());
}

void Load1st::openMedia() {
    context_.state.openedDirectly = 1;
    windows().show("animbg");
    leaveTo("animate");
}

void Load1st::leaveTo(const char* window) {
    windows().show(window);
    windows().unload(name());
}

}  // namespace tessarel::shell
