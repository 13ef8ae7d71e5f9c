#include "audio/cdform.h"

#include "audio/device/audio_device.h"
#include "audio/track_rules.h"
#include "base/sequential_file.h"
#include "base/text.h"
#include "forms/windows.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_system.h"
#include "platform/process_end.h"
#include "platform/system.h"
#include "shell/cues.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "volume/mixer_launch.h"

namespace tessarel::audio {
namespace {

constexpr int pulseMs = 100;
constexpr int watchMs = 1100;
constexpr std::int16_t powerCue = 3;
constexpr std::int16_t clickCue = 0;
constexpr std::int16_t playerHelp = 15;
constexpr const char* notThereYet = "This window is not part of this version yet.";

}  // namespace

CDForm::CDForm(forms::Windows& windows, shell::Context context, PlayerState& player, library::DiscRecord& record,
               volume::VolumeState& volumeState)
    : Form(windows, "CDForm"),
      MMControl1(context.scheduler, context.cdPlayers, [&state = context.state] { return shell::driveLetter(state.cdDrive); }),
      Timer2(*this, "Timer2", pulseMs, [this] { Timer2_Timer(); }),
      Timer3(*this, "Timer3", watchMs, [this] { Timer3_Timer(); }),
      context_(context),
      player_(player),
      record_(record),
      volume_(context, volumeState,
              {face.leftSlider, face.rightSlider, face.leftFigure, face.rightFigure, face.Image2[0], face.Image2[1],
               face.Image9[0], face.Image9[1], face.sliderPanel, face.mixerButton}) {
    MMControl1.StatusUpdate = [this] { dispatch([this] { MMControl1_StatusUpdate(); }); };
    MMControl1.PlayCompleted = [this](int code) { dispatch([this, code] { MMControl1_PlayCompleted(code); }); };
    Width = 15600;
    Height = 6780;
    Caption = std::string("Tessarel");
    wireTransport();
    wireModes();
    wireWindow();
}

void CDForm::wireTransport() {
    for (int i = 0; i < transport::count; ++i) {
        face.icntla[i].Click = [this, i] { icntla_Click(i); };
    }
    for (int i = 0; i < seekKeys::count; ++i) {
        face.scntla[i].MouseDown = [this, i](forms::MouseButton) { scntla_MouseDown(i); };
        face.scntla[i].MouseUp = [this, i](forms::MouseButton) { scntla_MouseUp(i); };
        face.scntlc[i].Visible = false;
    }
    for (auto* label : {&face.recordLamp, &face.timeCaption, &face.timeText, &face.timeColon}) {
        label->Click = [this] { pressTimeMode(); };
    }
    face.statusBar.BarPressed = [this](forms::MouseButton, float x) { CDStatusBar_MouseDown(x); };
}

void CDForm::wireModes() {
    for (int i = 0; i < modeKeys::count; ++i) {
        face.Image4[i].Click = [this, i] { Image4_Click(i); };
    }
    for (int i = 0; i < functionKeys::count; ++i) {
        face.Image10[i].Click = [this, i] { Image10_Click(i); };
    }
    for (int i = 0; i < programKeys::count; ++i) {
        face.Image16[i].Click = [this, i] { Image16_Click(i); };
    }
    for (int i = 0; i < gridCells; ++i) {
        face.cells[i].Click = [this, i] { Image17_Click(i); };
    }
    face.keypadEntry.EnterPressed = [this] { Text1_Enter(); };
    face.programLamp.Click = [this] { Label30_Click(); };
}

void CDForm::wireWindow() {
    face.exitKey.MouseUp = [this](forms::MouseButton) { Image5_MouseUp(); };
    face.exitPanel.Click = [this] { Image5_MouseUp(); };
    face.expandKey.Click = [this] { Image20_Click(); };
    face.minimiseKey.Click = [this] { Command3D14_Click(); };
    face.drawerPanel.Click = [this] { Panel3D7_Click(); };
    face.mixerKey.Click = [this] { startMixer(); };
}

void CDForm::Form_Load() {
    shell::SharedState& state = context_.state;
    if (state.runMode == "CDLITE") {
        state.autoStartMode = 1;
        state.autoStartDone = 0;
    }
    context_.files.write(runningMark(), SequentialWriter().number(0).bytes());
    player_.introTrack = 0;
    player_.seekKeyState = 0;
    player_.programPanelOpen = 0;
    player_.markA = 0;
    player_.markB = 0;
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    player_.trackTimesReady = 0;
    forgetShownTime();
    player_.discTrackCount = 0;
    player_.trackLengths.fill({});
    state.discSearchDormant = 0;
    state.discWindowActive = 1;
    setUpFace();
    restorePosition();
    alwaysInFront = state.alwaysOnTop == 1;
    prepareDevice();
    if (openAudioDevice(MMControl1, context_.dialogs)) {
        loadAudioDisc();
    }
    setFirstDisplay();
    if (!state.runMode.empty() && state.runMode != "CDLITE") {
        takeRunModeTrack();
    } else if (state.audioOptions[3] == 1 && player_.mixerStarted == 0) {
        startMixer();
    }
}

void CDForm::startMixer() {
    player_.mixerStarted = 1;
    volume::launchMixer(context_);
}

void CDForm::prepareDevice() {
    MMControl1.Shareable = false;
    MMControl1.setUpdateInterval(0);
    MMControl1.DeviceType = "CDAudio";
}

void CDForm::setUpFace() {
    const std::string readoutFont = context_.state.lcdFontOff == 1 ? "Arial" : "LcdD";
    for (auto* label : {&face.trackDigits, &face.timeText, &face.leftFigure, &face.rightFigure}) {
        label->FontName = readoutFont;
    }
    for (auto* label :
         {&face.trackDigits, &face.timeText, &face.timeCaption, &face.timeColon, &face.upperLine, &face.lowerLine}) {
        label->ForeColor = color(0);
    }
    face.discLamp.Caption = std::string("DISC");
    face.discLamp.ForeColor = color(0);
    face.programLamp.Caption = std::string("Pgm Stored");
    face.abLamp.Caption = std::string("A - B");
    face.abLamp.ForeColor = color(2);
    face.recordLamp.Caption = std::string("Library");
    face.recordLamp.ForeColor = color(2);
    face.keypadEntry.Visible = false;
    face.enhancedKey.Visible = false;
    for (auto* cover : {&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover, &face.keypadCover,
                        &face.informationCover}) {
        cover->ForeColor = colors::grey;
    }
    endPauseText();
    showWallpaperLamp();
    setModeLights(modeKeys::disc);
    setTransport(Transport::stopped);
    disableWhatIsNotBuilt();
}

void CDForm::showWallpaperLamp() {
    const bool up = windows().isVisible("Form26");
    const bool noImage = context_.state.wallpaperStyle >= 3 && context_.state.wallpaperImage.empty();
    face.wallpaperLamp.Caption = std::string(up ? "WP on" : noImage ? "WP n/a" : "WP off");
    face.wallpaperLamp.ForeColor = color(up ? 0 : noImage ? 6 : 7);
}

// A key whose window this version lacks is dead, and says so.
void CDForm::disableWhatIsNotBuilt() {
    const auto needs = [this](forms::Control& key, const char* window) {
        if (!windows().knows(window)) {
            key.Enabled = false;
            key.ToolTipText = std::string(notThereYet);
        }
    };
    needs(face.Image10[functionKeys::mainMenu], "cdmenu");
    needs(face.Image10[functionKeys::discInfo], "acdtabs");
    needs(face.Image16[programKeys::information], "cdarttxt");
    needs(face.webKey, "wwwdtop");
    needs(face.enhancedKey, "CDROMer");
}

void CDForm::Form_Activate() {
    context_.state.activeTessarel = shell::Tessarel::audioCd;
    context_.state.activeDiscKind = 1;
    volume_.activate();
    showWallpaperLamp();
}

void CDForm::Form_KeyDown(int keyCode, int /*shift*/) {
    if (keyCode == forms::keys::escape && face.keypadEntry.Visible) {
        hideKeypad();
    } else if (keyCode == forms::keys::escape) {
        Image5_MouseUp();
    } else if (keyCode == forms::keys::f1 || keyCode == forms::keys::help) {
        context_.state.helpTopic = playerHelp;
        shell::showHelp(context_);
    }
}

void CDForm::hideKeypad() {
    face.keypadEntry.Text = std::string();
    face.keypadEntry.Visible = false;
}

void CDForm::restorePosition() { shell::placeForm(context_, *this, shell::cdFormPositionFile); }

void CDForm::Form_MouseDown(forms::MouseButton button) {
    shell::moveOrCentreForm(context_, *this, shell::cdFormPositionFile, button);
}

void CDForm::Form_FilesDropped(const std::vector<std::string>& paths) {
    if (paths.empty()) {
        return;
    }
    const auto inserted = context_.drives.insertImage(shell::driveLetter(context_.state.cdDrive), paths.front());
    if (!inserted) {
        context_.dialogs.message({"Tessarel", inserted.error().message});
        return;
    }
    handOverToWaitingWindow();
}

// A new disc has come in place of this one: the waiting window takes it at its next look.
void CDForm::handOverToWaitingWindow() {
    stopintro();
    clrab();
    MMControl1.Command("stop");
    MMControl1.Command("close");
    hideKeypad();
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    setTransport(Transport::noDisc);
    context_.state.discDrawerOpen = 1;
    windows().show("CD1st");
}

void CDForm::Image20_Click() {
    context_.state.alwaysOnTop = context_.state.alwaysOnTop == 1 ? 0 : 1;
    shell::writeModeLast(context_);
    alwaysInFront = context_.state.alwaysOnTop == 1;
}

void CDForm::Command3D14_Click() {
    shell::playCue(context_, clickCue);
    WindowState = forms::WindowState::minimised;
    context_.state.minimisedOnce = 1;
}

std::string CDForm::runningMark() const { return context_.state.dataDir + "\\audiocd.tmp"; }

void CDForm::deleteRunningMark() {
    if (context_.files.exists(runningMark())) {
        context_.files.remove(runningMark());
    }
}

void CDForm::Form_Unload() {
    deleteRunningMark();
    context_.state.discWindowActive = 0;
}

void CDForm::Image5_MouseUp() {
    face.exitLabel.ForeColor = colors::darkRed;
    shell::playCue(context_, powerCue);
    deleteRunningMark();
    context_.system.setPointer(platform::PointerShape::hourglass);
    face.exitPanel.ForeColor = colors::red;
    if (player_.playingFlag == 1) {
        player_.playingFlag = 0;
        face.icntlc[transport::stop].Visible = false;
    }
    if (context_.state.audioOptions[5] != 1) {
        MMControl1.Command("Stop");
        MMControl1.Command("Close");
    }
    volume_.unmute();
    context_.files.changeDirectory(context_.state.dataDir);
    platform::endProcess();
}

void CDForm::leaveForMainMenu() {
    if (isLit(transport::play) || isLit(transport::pause)) {
        MMControl1_StopClick();
        MMControl1.Shareable = true;
        MMControl1.Command("stop");
        MMControl1.Command("close");
    }
    context_.state.returnedToMenu = 1;
    deleteRunningMark();
    windows().show("cdmenu");
    windows().unload("CDForm");
}

void CDForm::showDiscInformation() {
    context_.system.setPointer(platform::PointerShape::hourglass);
    record_.discInfo[2] = std::to_string(player_.discTrackCount);
    windows().show("acdtabs");
}

}  // namespace tessarel::audio
