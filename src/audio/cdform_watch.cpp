#include <chrono>

#include "audio/cdform.h"
#include "audio/program_list.h"
#include "audio/running_mark.h"
#include "audio/track_rules.h"
#include "base/clock_text.h"
#include "forms/windows.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/cues.h"
#include "shell/shared_state.h"
#include "shell/window_names.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;

constexpr auto drawerStepTime = 110ms;
constexpr auto discGoneDelay = 1500ms;
constexpr std::int16_t drawerCue = 5;

}  // namespace

void CDForm::Timer3_Timer() {
    session_.refresh();  // the pulse rests after a program's end
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    if (player_.introTrack > 0) {
        stepIntro();
    }
    watchForIdle();
    if (context_.state.discDrawerOpen != 1 && context_.state.discSearchDormant == 0) {
        watchForDisc();
    }
}

void CDForm::stepIntro() {
    const auto now = context_.scheduler.secondsSinceMidnight();
    if (player_.introClock == 0) {
        player_.introClock = now;
        player_.pickedTrackIndex = static_cast<std::int16_t>(player_.introTrack - 1);
        startTrack();
        return;
    }
    const int length = clockSeconds(lengthOf(player_.currentTrack));
    player_.positionSeconds = length;
    if (elapsedSince(player_.introClock, now) > introDuration(context_.state.audioOptions[4], length)) {
        player_.introTrack =
            static_cast<std::int16_t>(player_.introTrack >= player_.discTrackCount ? 1 : player_.introTrack + 1);
        player_.introClock = 0;
    }
}

// Only in elapsed time: the other modes show the end of the disc as it is.
void CDForm::watchForIdle() {
    if (face.trackDigits.Caption != std::string("0") || context_.state.audioTimeMode != 0) {
        return;
    }
    if (ranOut_) {
        MMControl1.stopAtDiscEnd();
    } else {
        MMControl1.Command("stop");
    }
    face.statusBar.FloodPercent = 0;
    face.icntlc[transport::play].Visible = false;
    if (auto* other = remote()) {
        other->resetLights();
    }
    face.timeText.Caption = std::string("00:00");
    mirrorToRemote();  // the pulse that does it may have stopped with the program
    if (player_.playMode == singleTrack) {
        Image4_Click(modeKeys::disc);
    }
    if (context_.state.audioOptions[1] == 1) {
        MMControl1_EjectClick();
    }
}

void CDForm::watchForDisc() {
    const int tracks = MMControl1.Tracks();
    const bool sameDisc = tracks == player_.discTrackCount && MMControl1.Length() == loadedLength_;
    player_.discTrackCount = static_cast<std::int16_t>(tracks);
    if (tracks == 0 || !sameDisc) {
        discGone();
    }
}

// What every way to the window without a disc has in common.
void CDForm::endPlay() {
    stopintro();
    clrab();
    hideKeypad();
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    player_.pausedPosition = 0;
    soundsEnded_ = false;
    endPauseText();
    deleteRunningMark(context_);
    windows().unload(ProgramList::windowName);
}

void CDForm::discGone() {
    endPlay();
    face.discLamp.ForeColor = color(5);
    setAllCells(color(6));
    MMControl1.Command("stop");
    MMControl1.Command("close");
    face.upperLine.Caption = std::string();
    face.lowerLine.Caption = std::string();
    face.trackDigits.Caption = std::string("0");
    face.statusBar.FloodPercent = 0;
    windows().unload(artTextWindow);
    face.timeText.Caption = std::string("00:00");
    opendrawer();
    context_.scheduler.wait(discGoneDelay);
    windows().show(shell::waitingWindow);
    context_.state.discDrawerOpen = 1;
    discHasLeft();
}

void CDForm::MMControl1_EjectClick() {
    endPlay();
    context_.system.setPointer(platform::PointerShape::hourglass);
    face.discLamp.ForeColor = color(5);
    setAllCells(color(6));
    context_.state.discDrawerOpen = 1;
    face.trackDigits.Caption = std::string("0");
    face.timeText.Caption = std::string("00:00");
    face.statusBar.FloodPercent = 0;
    player_.discTrackCount = 0;
    MMControl1.Command("stop");
    face.upperLine.Caption = std::string();
    face.lowerLine.Caption = std::string();
    opendrawer();
    MMControl1.Command("Eject");
    MMControl1.Command("Close");
    context_.system.setPointer(platform::PointerShape::normal);
    unloadArtWindows();
    windows().show(shell::waitingWindow);
    discHasLeft();
}

void CDForm::opendrawer() {
    if (drawerMoving_) {
        return;
    }
    drawerMoving_ = true;
    context_.state.discDrawerOpen = 1;
    context_.state.alwaysOnTop = 0;
    applyDisplayMode();
    if (Visible) {
        shell::playCue(context_, drawerCue);
    }
    setTransport(Transport::noDisc);
    greyControls(true);
    while (drawerPosition < drawerSteps) {
        drawerPosition = drawerPosition + 1;
        context_.scheduler.wait(drawerStepTime);
    }
    if (context_.state.audioOptions[2] == 1) {
        MMControl1_EjectClick();
    }
    drawerMoving_ = false;
}

// While the drawer is open nothing but Eject, exit and the window's own place acts.
void CDForm::greyControls(bool grey) {
    for (auto* cover : {&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover}) {
        cover->ForeColor = grey ? colors::black : colors::grey;
    }
    for (forms::Control* control : std::initializer_list<forms::Control*>{
             &face.leftSlider, &face.rightSlider, &face.sliderPanel, &face.Image2[0], &face.Image2[1], &face.Image9[0],
             &face.Image9[1], &face.mixerKey, &face.mixerButton, &face.expandKey, &face.minimiseKey}) {
        control->Enabled = !grey;
    }
}

void CDForm::closedrawer() {
    while (drawerPosition > 0) {
        drawerPosition = drawerPosition - 1;
        context_.scheduler.wait(drawerStepTime);
    }
    greyControls(false);
}

// With a disc in, the drawer opens as by the key.
void CDForm::Panel3D7_Click() {
    if (context_.state.discDrawerOpen != 1) {
        icntla_Click(transport::eject);
        return;
    }
    if (drawerPosition > 0) {
        closedrawer();
    } else {
        opendrawer();
    }
    MMControl1.Command("Open");
    MMControl1.Command("Eject");
    MMControl1.Command("Close");
}

}  // namespace tessarel::audio
