#include <algorithm>

#include "audio/cdform.h"
#include "audio/device/audio_device.h"
#include "audio/disc_text.h"
#include "audio/time_text.h"
#include "audio/track_rules.h"
#include "base/text.h"
#include "platform/system.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

constexpr double blinkSeconds = 0.4;
constexpr int longestHold = 1000;  // ticks; the steps grow no more long before
constexpr double headSeconds = 2;  // a track counts as just begun up to here

}  // namespace

void CDForm::Timer2_Timer() {
    pulse();
    session_.refresh();
}

void CDForm::pulse() {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    stepSeekKeys();
    blinkMarkA();
    loopMarks();
    mirrorToRemote();
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
    noticeSilence();
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
    const int held = player_.seekKeyState + (player_.seekKeyState > 0 ? 1 : -1);
    player_.seekKeyState = static_cast<std::int16_t>(std::clamp(held, -longestHold, longestHold));
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
    const bool wanted = state.autoStartMode == 1 || state.autoStartMode == 2 || state.playOpenedDisc == 1;
    if (state.autoStartDone != 0 || !wanted) {
        return false;
    }
    state.playOpenedDisc = 0;
    setTransport(Transport::playing);
    state.autoStartDone = 1;
    if (face.programLamp.ForeColor == color(3)) {
        Label30_Click();
        return true;
    }
    player_.playingFlag = 1;
    player_.pausedFlag = 0;
    player_.pausedPosition = 0;
    endPauseText();
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(1));
    launch(player_.currentTrack);
    refreshTimeCaption();
    if (state.runMode == "CDLITE") {
        Command3D14_Click();
        state.runMode.clear();
    }
    return true;
}

// True while the player stands behind the last track. The display is cleared once, unless the disc is about to begin again.
bool CDForm::showDiscRunOut() {
    if (player_.currentTrack <= player_.discTrackCount) {
        return false;
    }
    const bool wraps = player_.repeatOn == 1 && player_.playMode == wholeDisc && player_.playingFlag == 1 && soundsFrom(1);
    if (!ranOut_ && !wraps) {
        ranOut_ = true;
        face.trackDigits.Caption = std::string("0");
        face.timeText.Caption = std::string();
        face.lowerLine.Caption = std::string();
        face.statusBar.FloodPercent = 0;
        player_.playingFlag = 0;
        player_.pausedFlag = 0;
        player_.pausedPosition = 0;
        endPauseText();
        setTransport(Transport::stopped);
    }
    return true;
}

void CDForm::relaunch(int track) {
    MMControl1.Command("Stop");
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(track));
    face.trackDigits.Caption = std::to_string(player_.currentTrack);
    launch(player_.currentTrack);
    player_.playingFlag = 1;
    player_.pausedFlag = 0;
    player_.pausedPosition = 0;
    endPauseText();
    setTransport(Transport::playing);
}

// A pause outlasts the end window of its track.
void CDForm::endOfTrackActions() {
    if (player_.pausedFlag == 1) {
        return;
    }
    const bool repeats = player_.repeatOn == 1;
    switch (player_.playMode) {
        case singleTrack:
            if (repeats && player_.playLaunched != 1 && soundsFrom(player_.currentTrack)) {
                relaunch(player_.currentTrack);
            } else if (player_.playLaunched == 0) {
                endSingleTrack();
            }
            break;
        case programmed:
            if (player_.playLaunched == 0) {
                MMControl1_PlayClick();
                playOnWithoutProgram();
            }
            break;
        default:
            if (repeats && player_.playLaunched != 1) {
                relaunch(1);
            }
    }
}

// There was no program, and the whole disc has been chosen in its place: what the Play key does, this does.
void CDForm::playOnWithoutProgram() {
    if (player_.playMode != programmed && player_.playingFlag == 1) {
        MMControl1.Command("Play");
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

// In the first seconds of a track its digits and title come. After the end the digits stay 0, however short the track was.
void CDForm::showTrackStart() {
    if (player_.playingFlag == 0 && player_.pausedFlag == 0 && digits() == 0) {
        return;
    }
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
    face.lowerLine.Caption = ShownTexts(record_, player_.discText).trackTitle(player_.currentTrack);
    showTitleInCaptions();
}

}  // namespace tessarel::audio
