#include <chrono>

#include "audio/cdform.h"
#include "audio/track_rules.h"
#include "base/clock_text.h"
#include "forms/windows.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/cues.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;

constexpr auto drawerStepTime = 110ms;
constexpr auto discGoneDelay = 1500ms;
constexpr const char* waitingWindow = "CD1st";
constexpr std::int16_t drawerCue = 5;

}  // namespace

void CDForm::Timer3_Timer() {
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
    if (player_.playMode == singleTrack) {
        Image4_Click(modeKeys::disc);
    }
    if (context_.state.audioOptions[1] == 1) {
        MMControl1_EjectClick();
    }
}

void CDForm::watchForDisc() {
    player_.discTrackCount = static_cast<std::int16_t>(MMControl1.Tracks());
    if (player_.discTrackCount == 0 || MMControl1.Length() != loadedLength_) {
        discGone();
    }
}

void CDForm::discGone() {
    face.discLamp.ForeColor = color(5);
    setAllCells(color(6));
    MMControl1.Command("stop");
    MMControl1.Command("close");
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    face.upperLine.Caption = std::string();
    face.lowerLine.Caption = std::string();
    face.trackDigits.Caption = std::string("0");
    face.statusBar.FloodPercent = 0;
    face.timeText.Caption = std::string("00:00");
    opendrawer();
    context_.scheduler.wait(discGoneDelay);
    windows().show(waitingWindow);
    context_.state.discDrawerOpen = 1;
}

void CDForm::MMControl1_EjectClick() {
    stopintro();
    deleteRunningMark();
    clrab();
    context_.system.setPointer(platform::PointerShape::hourglass);
    face.discLamp.ForeColor = color(5);
    setAllCells(color(6));
    context_.state.discDrawerOpen = 1;
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
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
    windows().show(waitingWindow);
}

void CDForm::opendrawer() {
    if (drawerMoving_) {
        return;
    }
    drawerMoving_ = true;
    context_.state.discDrawerOpen = 1;
    context_.state.alwaysOnTop = 0;
    alwaysInFront = false;
    hideKeypad();
    if (Visible) {
        shell::playCue(context_, drawerCue);
    }
    setTransport(Transport::noDisc);
    for (auto* cover : {&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover}) {
        cover->ForeColor = colors::black;
    }
    while (drawerPosition < drawerSteps) {
        drawerPosition = drawerPosition + 1;
        context_.scheduler.wait(drawerStepTime);
    }
    if (context_.state.audioOptions[2] == 1) {
        MMControl1_EjectClick();
    }
    drawerMoving_ = false;
}

void CDForm::closedrawer() {
    while (drawerPosition > 0) {
        drawerPosition = drawerPosition - 1;
        context_.scheduler.wait(drawerStepTime);
    }
    for (auto* cover : {&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover}) {
        cover->ForeColor = colors::grey;
    }
}

void CDForm::Panel3D7_Click() {
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
