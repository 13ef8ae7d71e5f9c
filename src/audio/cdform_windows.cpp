// The windows and programs around the player that its keys lead to.
#include <algorithm>
#include <array>
#include <utility>

#include "audio/cdform.h"
#include "audio/enhanced_disc.h"
#include "audio/program_list.h"
#include "audio/running_mark.h"
#include "base/sequential_file.h"
#include "base/text.h"
#include "forms/windows.h"
#include "library/record_rules.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"

namespace tessarel::audio {
namespace {

constexpr const char* userFieldsFile = "userdef.dat";
constexpr const char* webDesktop = "wwwdtop";
constexpr std::array jacketAndArtWindows{artTextWindow, "cdjacket", "cdjkimgs", "cdart",    "cdartbig",
                                         "CDViewBG",    "CDViewer", "cdartts",  "cdartsss", "cdartbmp"};

constexpr std::int16_t wallpaperWithPlayer = 1;  // of the wallpaper's modes
constexpr std::int16_t noWallpaper = 0;          // of its styles
constexpr std::int16_t firstPictureStyle = 3;

// Letters of the upper line in points, and how much smaller the lower line's are.
constexpr int usualLetters = 14;
constexpr int leastLetters = 8;
constexpr int largestLetters = 26;
constexpr int lowerLineLess = 3;

}  // namespace

void CDForm::Image20_Click() {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    context_.state.alwaysOnTop = context_.state.alwaysOnTop == 1 ? 0 : 1;
    shell::writeModeLast(context_);
    applyDisplayMode();
}

void CDForm::applyDisplayMode() {
    const bool expanded = context_.state.alwaysOnTop == 1;
    alwaysInFront = expanded;
    if (expanded) {
        setexpdsp();
    } else {
        setnormdsp();
    }
}

void CDForm::setexpdsp() { expandedDisplay = true; }

void CDForm::setnormdsp() { expandedDisplay = false; }

void CDForm::Label12_MouseDown(forms::MouseButton button) {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    const int now = player_.titleLetters == 0 ? usualLetters : player_.titleLetters;
    const int step = button == forms::MouseButton::left ? 1 : -1;
    player_.titleLetters = static_cast<std::int16_t>(std::clamp(now + step, leastLetters, largestLetters));
    layLines();
}

void CDForm::layLines() {
    if (player_.titleLetters > 0) {
        face.upperLine.FontSize = player_.titleLetters;
        face.lowerLine.FontSize = player_.titleLetters - lowerLineLess;
    }
}

// What the windows around the player show: the folder of the art pictures, and what the user calls a field of his own.
void CDForm::loadUserSettings() {
    shell::SharedState& state = context_.state;
    if (const auto folder = shell::loadArtFolder(context_)) {
        const bool there = !text::trim(folder->artImageDir).empty() && context_.files.directoryExists(folder->artImageDir);
        state.artImageDir = there ? folder->artImageDir : state.windowsDir;
        state.bmpSort = folder->bmpSort;
    }
    if (const auto fields = shell::settingsText(context_.files, shell::dataPath(state, userFieldsFile))) {
        state.userDefined1 = SequentialReader(*fields).text().value_or(std::string());
        library::decodeRecordText(state.userDefined1);
    }
}

void CDForm::openWallpaper() {
    shell::SharedState& state = context_.state;
    if (state.wallpaperMode == wallpaperWithPlayer && state.runMode != "CDLITE") {
        windows().showBeside(shell::wallpaperForm);
        state.wallpaperShowing = windows().isVisible(shell::wallpaperForm) ? 1 : 0;
    }
}

bool CDForm::wallpaperLacksItsPicture() const {
    return context_.state.wallpaperStyle >= firstPictureStyle && context_.state.wallpaperImage.empty();
}

void CDForm::showWallpaperLamp() {
    const bool up = windows().isVisible(shell::wallpaperForm);
    const bool noImage = wallpaperLacksItsPicture();
    face.wallpaperLamp.Caption = std::string(up ? "WP on" : noImage ? "WP n/a" : "WP off");
    face.wallpaperLamp.ForeColor = color(up ? 0 : noImage ? 6 : 7);
}

void CDForm::Label26_Click() {
    shell::SharedState& state = context_.state;
    if (state.discDrawerOpen == 1) {
        return;
    }
    if (state.wallpaperMode == 0) {
        context_.dialogs.message({.text = "Wallpaper option is currently turned off!\n\nAccess the Tessarel Setup section "
                                          "to select wallpaper options."});
        return;
    }
    if (windows().isVisible(shell::wallpaperForm)) {
        windows().unload(shell::wallpaperForm);
    } else if (state.wallpaperStyle != noWallpaper && !wallpaperLacksItsPicture()) {
        windows().show(shell::wallpaperForm);
        ZOrder();
    }
    state.wallpaperShowing = windows().isVisible(shell::wallpaperForm) ? 1 : 0;
    showWallpaperLamp();
}

void CDForm::SSCommand2_Click() {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    stopintro();
    context_.state.activeTessarel = shell::Tessarel::audioCd;
    windows().show(webDesktop);
}

void CDForm::leaveForMainMenu() {
    if (isLit(transport::play) || isLit(transport::pause)) {
        MMControl1_StopClick();
        MMControl1.Shareable = true;
        MMControl1.Command("stop");
        MMControl1.Command("close");
    }
    context_.state.returnedToMenu = 1;
    deleteRunningMark(context_);
    unloadArtWindows();
    windows().show("cdmenu");
    windows().unload(name());
}

void CDForm::showDiscInformation() {
    context_.system.setPointer(platform::PointerShape::hourglass);
    windows().show("cdinfbg");
    if (const auto* tabs = windows().find<Form>("acdtabs");
        tabs != nullptr && tabs->WindowState == forms::WindowState::minimised) {
        windows().unload("acdtabs");
    }
    record_.discInfo[2] = std::to_string(player_.discTrackCount);
    windows().show("acdtabs");
}

void CDForm::cinfo() {
    showArtText();
    if (player_.playMode == programmed) {
        windows().showBeside(ProgramList::windowName);
    }
    ZOrder();
}

void CDForm::showArtText() { windows().showBeside(artTextWindow); }

// The program has changed: a list of it that is up shows it as it is now, with the row that plays.
void CDForm::refillProgramList() {
    if (auto* list = windows().find<ProgramList>(ProgramList::windowName)) {
        list->refill();
        list->selectRow(player_.programIndex - 1);
    }
}

void CDForm::hideWindowsAround() {
    const auto hide = [this](const char* window) {
        if (windows().isVisible(window)) {
            windows().hide(window);
            hiddenAround_.emplace_back(window);
        }
    };
    std::for_each(jacketAndArtWindows.begin(), jacketAndArtWindows.end(), hide);
    hide(ProgramList::windowName);
}

void CDForm::showWindowsAround() {
    for (const auto& window : std::exchange(hiddenAround_, {})) {
        if (windows().isLoaded(window)) {
            windows().showBeside(window);
        }
    }
}

void CDForm::unloadArtWindows() {
    for (const auto* window : jacketAndArtWindows) {
        windows().unload(window);
    }
}

void CDForm::Label14_Click() {
    if (context_.state.discDrawerOpen == 1 || player_.enhancedDisc != 1) {
        return;
    }
    const std::string root = context_.state.cdDrive;
    auto program = enhancedProgram(context_.files, root);
    if (!program) {
        program = askForEnhancedProgram();
    }
    if (!program) {
        return;
    }
    context_.files.changeDirectory(root);
    shell::startOrTell(context_, shell::commandWord(*program));
    icntla_Click(transport::stop);
    Image4_Click(modeKeys::disc);
}

std::optional<std::string> CDForm::askForEnhancedProgram() {
    const auto answer = context_.dialogs.message({.title = "Tessarel Enhanced CD Menu",
                                                  .text = "Enhanced CD Startup File Not Found! Do you wish to search for the "
                                                          "program file on the CD?",
                                                  .buttons = platform::Buttons::yesNo,
                                                  .icon = platform::Icon::question});
    if (answer != platform::Answer::yes) {
        return std::nullopt;
    }
    return context_.dialogs.openFile({.title = "Find Enhanced CD Startup File...",
                                      .filter = "All Executable Files (*.exe; *.com; *.bat)|*.exe; *.com; *.bat|"
                                                "EXE Files Only (*.exe)|*.exe|COM Files Only (*.com)|*.com|"
                                                "BAT Files Only (*.bat)|*.bat",
                                      .startDirectory = context_.state.cdDrive});
}

}  // namespace tessarel::audio
