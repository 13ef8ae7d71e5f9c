#include "audio/cdform.h"
#include "audio/device/audio_device.h"
#include "audio/time_text.h"
#include "audio/track_rules.h"
#include "base/text.h"
#include "platform/system.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

constexpr double blinkSeconds = 0.4;
constexpr double headSeconds = 2;  // a track counts as just begun up to here

}  // namespace

void CDForm::Timer2_Timer() {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    stepSeekKeys();
    blinkMarkA();
    loopMarks();
    if (auto* other = remote()) {
        other->mirror(face);
    }
    if (digits() < 1) {
        face.lowerLine.Caption = std::string();
    }
    if (player_.currentTrack < 1 && (player_.playingFlag == 1 || player_.pausedFlag == 1)) {
        player_.playingFlag = 0;
        player_.pausedFlag = 0;
        face.lowerLine.Caption = std::string();
        if (auto* other = remote()) {
            other->resetLights();
        }
    }
    lateLoadWork();
    takeSoundsEnd();
    if (autoPlay() || showDiscRunOut()) {
        return;
    }
    context_.system.setPointer(platform::PointerShape::normal);
    endOfTrackActions();
    if (Timer2.Interval == 0) {
        return;  // a program has ended, and the pulse with it
    }
    paintCells();
    showTrackStart();
}

void CDForm::stepSeekKeys() {
    if (player_.seekKeyState == 0) {
        return;
    }
    player_.seekKeyState = static_cast<std::int16_t>(player_.seekKeyState + (player_.seekKeyState > 0 ? 1 : -1));
    const int percent = face.statusBar.FloodPercent + seekStepPercent(player_.seekKeyState);
    if (percent <= 0 || percent >= 100) {
        player_.seekKeyState = 0;
        return;
    }
    const auto width = static_cast<float>(face.statusBar.Width);
    seekInTrack(MMControl1, lengthOf(player_.currentTrack), width * static_cast<float>(percent) / 100.0F, width,
                player_.currentTrack);
    forgetShownTime();
    refreshTimeNow();
}

void CDForm::blinkMarkA() {
    const auto now = context_.scheduler.secondsSinceMidnight();
    if (player_.markA <= 0 || player_.markB > 0 || elapsedSince(lastBlink_, now) < blinkSeconds) {
        return;
    }
    lastBlink_ = now;
    if (digits() != player_.markTrack || face.timeText.Caption.get().ends_with("0:00")) {
        clrab();
        return;
    }
    face.abLamp.ForeColor = color(face.abLamp.ForeColor == color(3) ? 2 : 3);
    face.abText.ForeColor = face.abLamp.ForeColor.get();
}

void CDForm::loopMarks() {
    if (player_.markB > 0 && barPoint() >= player_.markB) {
        CDStatusBar_MouseDown(player_.markA);
    }
}

// True when play has just been started by itself.
bool CDForm::autoPlay() {
    shell::SharedState& state = context_.state;
    if (state.autoStartDone != 0 || (state.autoStartMode != 1 && state.autoStartMode != 2)) {
        return false;
    }
    setTransport(Transport::playing);
    state.autoStartDone = 1;
    if (face.programLamp.ForeColor == color(3)) {
        Label30_Click();
        return true;
    }
    player_.playingFlag = 1;
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(1));
    launch(player_.currentTrack);
    refreshTimeCaption();
    if (state.runMode == "CDLITE") {
        WindowState = forms::WindowState::minimised;
        state.runMode.clear();
    }
    return true;
}

// True while the player stands behind the last track. The display is cleared once.
bool CDForm::showDiscRunOut() {
    if (player_.currentTrack <= player_.discTrackCount) {
        return false;
    }
    if (!ranOut_) {
        ranOut_ = true;
        face.trackDigits.Caption = std::string("0");
        face.timeText.Caption = std::string();
        face.lowerLine.Caption = std::string();
        face.statusBar.FloodPercent = 0;
        player_.playingFlag = 0;
        player_.pausedFlag = 0;
        setTransport(Transport::stopped);
    }
    return true;
}

void CDForm::relaunch(int track) {
    MMControl1.Command("Stop");
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(track));
    launch(player_.currentTrack);
    player_.playingFlag = 1;
    player_.pausedFlag = 0;
    player_.pausedPosition = 0;
    endPauseText();
    setTransport(Transport::playing);
}

void CDForm::endOfTrackActions() {
    const bool repeats = player_.repeatOn == 1;
    switch (player_.playMode) {
        case singleTrack:
            if (repeats && player_.playLaunched != 1) {
                relaunch(player_.currentTrack);
            } else if (!repeats && player_.playLaunched == 0) {
                endSingleTrack();
            }
            break;
        case programmed:
            if (player_.playLaunched == 0) {
                MMControl1_PlayClick();
            }
            break;
        default:
            if (repeats && player_.playLaunched != 1) {
                relaunch(1);
            }
    }
}

void CDForm::endSingleTrack() {
    MMControl1.Command("Stop");
    player_.playLaunched = 1;  // the end has been dealt with
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    face.timeText.Caption = std::string("00:00");
    face.trackDigits.Caption = std::string("0");
    face.statusBar.FloodPercent = 0;
    setTransport(Transport::stopped);
    if (auto* other = remote()) {
        other->resetLights();
    }
}

// In the first seconds of a track its digits and title come.
void CDForm::showTrackStart() {
    if (player_.playStarted == 0 || player_.positionSeconds > headSeconds) {
        return;
    }
    player_.currentTrack = static_cast<std::int16_t>(std::max<int>(player_.currentTrack, 1) + player_.skipStep);
    if (player_.keepTrackDigits == 1) {
        player_.keepTrackDigits = 0;
    } else {
        face.trackDigits.Caption = std::to_string(player_.currentTrack);
    }
    const bool elapsedMode = context_.state.audioTimeMode == 0;
    if (elapsedMode && text::val(text::left(face.timeText.Caption.get(), 1)) > 0) {
        face.timeText.Caption = std::string("0:00");
        face.statusBar.FloodPercent = 0;
    }
    player_.skipStep = 0;
    face.lowerLine.Caption = titleOf(player_.currentTrack);
    Caption = "Tessarel [" + face.lowerLine.Caption.get() + "]";
}

}  // namespace tessarel::audio
