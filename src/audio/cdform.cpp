#include "audio/cdform.h"

#include "audio/device/audio_device.h"
#include "audio/iconmin.h"
#include "audio/program_list.h"
#include "audio/running_mark.h"
#include "audio/track_rules.h"
#include "base/text.h"
#include "forms/windows.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_system.h"
#include "platform/process_end.h"
#include "platform/system.h"
#include "shell/cues.h"
#include "shell/panel_colors.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"
#include "volume/mixer_launch.h"

namespace tessarel::audio {
namespace {

constexpr int watchMs = 1100;
constexpr std::int16_t powerCue = 3;

}  // namespace

CDForm::CDForm(forms::Windows& windows, shell::Context context, PlayerState& player, library::DiscRecord& record,
               volume::VolumeState& volumeState, volume::RemoteState& remoteState, PlayerSession& session)
    : Form(windows, shell::audioCdWindow),
      MMControl1(context.scheduler, context.cdPlayers, [&state = context.state] { return shell::driveLetter(state.cdDrive); }),
      Timer2(*this, "Timer2", pulseMs, [this] { Timer2_Timer(); }),
      Timer3(*this, "Timer3", watchMs, [this] { Timer3_Timer(); }),
      context_(context),
      player_(player),
      record_(record),
      volumeState_(volumeState),
      remoteState_(remoteState),
      volume_(context, volumeState, CDForm::volumeControls()),
      session_(session) {
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
    face.mixerKey.Click = [this] {
        if (context_.state.discDrawerOpen != 1) {
            startMixer();
        }
    };
    face.upperLine.MouseDown = [this](forms::MouseButton button) { Label12_MouseDown(button); };
    face.discLamp.Click = [this] { Label14_Click(); };
    face.enhancedKey.Click = [this] { Label14_Click(); };
    face.wallpaperLamp.Click = [this] { Label26_Click(); };
    face.webKey.Click = [this] { SSCommand2_Click(); };
    giveTips();
}

void CDForm::Form_Load() {
    shell::SharedState& state = context_.state;
    if (state.runMode == "CDLITE") {
        state.autoStartMode = 1;
        state.autoStartDone = 0;
    }
    writeRunningMark(context_);
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
    player_.discText = {};
    state.discSearchDormant = 0;
    state.discWindowActive = 1;
    setUpFace();
    loadUserSettings();
    openWallpaper();
    restorePosition();
    applyDisplayMode();
    layLines();
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
    session_.discLoaded();
}

DeviceReading CDForm::deviceReading() const {
    return {MMControl1.Mode(), unpackTmsf(MMControl1.Position()), MMControl1.lastAudioTrackUpTo(heardTrack() - 1)};
}

// The player's own while nothing is heard.
int CDForm::heardTrack() const {
    const int deviceMode = MMControl1.Mode();
    const bool heard = deviceMode == mode::playing || deviceMode == mode::paused;
    return heard ? unpackTmsf(MMControl1.Position()).track : player_.currentTrack;
}

void CDForm::goByTheSound() {
    player_.currentTrack = static_cast<std::int16_t>(heardTrack());
    player_.lastAdvanceTime = 0;
}

void CDForm::letTrackRunOn() {
    if (player_.playLaunched == singleTrackChosen) {
        player_.playLaunched = 1;
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
    const auto readoutFont = shell::readoutFont(context_.state);
    for (auto* label : {&face.trackDigits, &face.timeText, &face.leftFigure, &face.rightFigure}) {
        label->FontName = readoutFont;
    }
    colourReadout();
    face.discLamp.Caption = std::string("DISC");
    face.discLamp.ForeColor = color(0);
    face.programLamp.Caption = std::string("Pgm Stored");
    face.abLamp.Caption = std::string("A - B");
    face.abLamp.ForeColor = color(2);
    face.abText.ForeColor = colors::black;
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

void CDForm::disableWhatIsNotBuilt() {
    const auto needs = [this](forms::Control& key, const char* window) {
        if (!windows().knows(window)) {
            shell::disableAsNotBuilt(key);
        }
    };
    needs(face.Image10[functionKeys::mainMenu], "cdmenu");
    needs(face.Image10[functionKeys::discInfo], "acdtabs");
    needs(face.webKey, "wwwdtop");
    if (context_.state.wallpaperMode > 0) {
        needs(face.wallpaperLamp, shell::wallpaperForm);
    }
}

// In programmed mode the key has a list to show, whatever other windows there are.
void CDForm::enableInformation(bool programmedMode) {
    forms::Control& key = face.Image16[programKeys::information];
    if (!windows().knows(artTextWindow) && !programmedMode) {
        shell::disableAsNotBuilt(key);
        return;
    }
    key.Enabled = true;
    key.ToolTipText = tipWithKeys(key.spokenName(), {{Act::program, programKeys::information}});
}

void CDForm::colourReadout() {
    for (auto* label :
         {&face.trackDigits, &face.timeText, &face.timeCaption, &face.timeColon, &face.upperLine, &face.lowerLine}) {
        label->ForeColor = color(0);
    }
}

void CDForm::Form_Activate() {
    context_.state.activeTessarel = shell::Tessarel::audioCd;
    context_.state.activeDiscKind = 1;
    colourReadout();
    volume_.activate();
    showWallpaperLamp();
    endMinimised();
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
    if (shell::insertOrTell(context_, paths.front())) {
        handOverToWaitingWindow();
    }
}

// A new disc has come in place of this one: the waiting window takes it at its next look.
void CDForm::handOverToWaitingWindow() {
    endPlay();
    MMControl1.Command("stop");
    MMControl1.Command("close");
    setTransport(Transport::noDisc);
    greyControls(true);
    context_.state.discDrawerOpen = 1;
    windows().show(shell::waitingWindow);
    discHasLeft();
}

void CDForm::Form_Unload() {
    session_.discGone();
    dropRemote();
    windows().unload(ProgramList::windowName);
    windows().unload(ICONmin::windowName);
    deleteRunningMark(context_);
    context_.state.discWindowActive = 0;
}

void CDForm::Image5_MouseUp() {
    face.exitLabel.ForeColor = colors::darkRed;
    shell::playCue(context_, powerCue);
    volume_.closeVolumeApp();
    deleteRunningMark(context_);
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

}  // namespace tessarel::audio
