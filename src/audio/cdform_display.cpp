#include <algorithm>
#include <chrono>

#include "audio/cdform.h"
#include "audio/device/audio_device.h"
#include "audio/disc_text.h"
#include "audio/time_text.h"
#include "audio/track_rules.h"
#include "base/clock_text.h"
#include "base/packed_time.h"
#include "base/text.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;

constexpr auto correctedDiscWait = 3s;
constexpr float leastMark = 1;  // a mark at the head of a track, as 0 is none

}  // namespace

void CDForm::MMControl1_StatusUpdate() {
    if (player_.seekKeyState != 0) {
        return;
    }
    if (MMControl1.Mode() == mode::stopped) {
        showStatus(1, "Rewinding");
        MMControl1.setFrom(1);
        return;
    }
    if (MMControl1.Mode() == mode::playing && WindowState != forms::WindowState::minimised) {
        player_.reportedTrack = static_cast<std::int16_t>(unpackTmsf(MMControl1.Position()).track);
        showStatus(player_.reportedTrack, "Play");
        updateTimeDisplay(player_.reportedTrack, positionText());
    }
}

std::string CDForm::positionText() const {
    const Tmsf position = unpackTmsf(MMControl1.Position());
    return clockText(std::to_string(position.minutes) + ":" + std::to_string(position.seconds));
}

void CDForm::refreshTimeCaption() {
    face.timeText.Caption = std::string();
    face.timeCaption.Caption = std::string(timeCaption(context_.state.audioTimeMode));
}

void CDForm::showStatus(int track, const std::string& word) {
    if (track > player_.discTrackCount) {
        return;
    }
    const ShownTexts texts(record_, player_.discText);
    const auto top = texts.discLine();
    if (word == "None") {
        face.lowerLine.Caption = std::string("Please Insert a CD");
        return;
    }
    if (face.upperLine.Caption == top) {
        return;
    }
    if (word == "Stopped" || word == "Paused") {
        face.lowerLine.Caption = word;
        return;
    }
    face.upperLine.Caption = top;
    if (player_.playStarted > 0) {
        face.lowerLine.Caption = texts.trackTitle(track);
    }
}

// "mm:ss", empty for a track that the disc lacks.
std::string CDForm::lengthOf(int track) const {
    const bool known = track >= 1 && track <= 101;
    return known ? clockText(player_.trackLengths.at(static_cast<std::size_t>(track))) : std::string();
}

void CDForm::updateTimeDisplay(int track, const std::string& position) {
    if (player_.playStarted < 1) {
        player_.playStarted = 1;
        player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(1));
        face.trackDigits.Caption = std::to_string(player_.currentTrack);
    }
    if (track > player_.discTrackCount) {
        return;
    }
    updateBar(position);
    if (track == 0) {
        return;
    }
    MMControl1.setTrack(track);
    formattedLength_ = lengthOf(player_.currentTrack);
    player_.positionSeconds = text::val(text::left(position, 2)) * 60 + text::val(text::right(position, 2));
    player_.trackEndSeconds = static_cast<std::int16_t>(endSecondsOf(player_, clockSeconds(formattedLength_)));
    const int shown = digits();
    const auto readout = readTime(player_, {context_.state.audioTimeMode, shown, position});
    face.timeText.Caption = readout.text;
    player_.lastShownTrack = static_cast<std::int16_t>(shown);
    if (readout.shownSeconds) {
        player_.lastShownSeconds = *readout.shownSeconds;
    }
    applyTrackEnd();
}

void CDForm::updateBar(const std::string& position) {
    if (const auto percent = barPercent(lengthOf(player_.currentTrack), position)) {
        face.statusBar.FloodPercent = *percent;
        face.statusBar.ForeColor = *percent >= 50 ? colors::white : colors::black;
    }
}

void CDForm::applyTrackEnd() {
    const auto now = context_.scheduler.secondsSinceMidnight();
    switch (trackEnd(player_, record_.timeCorrection, now)) {
        case TrackEnd::nothing:
            break;
        case TrackEnd::programTrackOver:
            player_.playLaunched = 0;
            break;
        case TrackEnd::wrapToFirst:
            wrapToFirst();
            break;
        case TrackEnd::discOver:
            discOver();
            break;
        case TrackEnd::advanceAfterWait:
            context_.scheduler.wait(correctedDiscWait);
            ++player_.currentTrack;
            break;
        case TrackEnd::advance:
            ++player_.currentTrack;
            player_.lastAdvanceTime = now;
            break;
    }
}

void CDForm::wrapToFirst() {
    if (!soundsFrom(1)) {
        player_.currentTrack = static_cast<std::int16_t>(player_.discTrackCount + 1);
        return;
    }
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(1));
    startSequence(player_.currentTrack);
    setCells(1, player_.gridTrackCount, color(0));
}

void CDForm::discOver() {
    player_.discFinished = 1;
    setCells(1, player_.gridTrackCount, color(0));
    MMControl1.stopAtDiscEnd();
    setTransport(Transport::stopped);
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    face.timeText.Caption = std::string();
    face.lowerLine.Caption = std::string();
    face.trackDigits.Caption = std::string("0");
    face.statusBar.FloodPercent = 0;
    player_.currentTrack = 0;
}

void CDForm::refreshTimeNow() { updateTimeDisplay(unpackTmsf(MMControl1.Position()).track, positionText()); }

void CDForm::CDStatusBar_MouseDown(float x) {
    if (context_.state.discDrawerOpen == 1 || !isLit(transport::play)) {
        return;
    }
    seekInTrack(MMControl1, lengthOf(player_.currentTrack), x, static_cast<float>(face.statusBar.Width), player_.currentTrack);
    refreshTimeNow();  // still guarded: a jump back shows one second more before the digits follow
    forgetShownTime();
}

void CDForm::scntla_MouseDown(int index) {
    if (context_.state.discDrawerOpen == 1 || face.scntlb[index].Visible) {
        return;
    }
    stopintro();
    const bool runs = player_.pausedFlag == 0 && player_.playingFlag == 1;
    if (index == seekKeys::forward && runs) {
        player_.seekKeyState = 1;
    } else if (index == seekKeys::rewind && runs) {
        player_.seekKeyState = -1;
    }
}

void CDForm::scntla_MouseUp(int index) {
    if (index == seekKeys::forward || index == seekKeys::rewind) {
        player_.seekKeyState = 0;
        return;
    }
    if (context_.state.discDrawerOpen == 1 || face.scntlb[index].Visible) {
        return;
    }
    if (index == seekKeys::timeMode) {
        pressTimeMode();
    } else if (player_.pausedFlag != 1) {
        pressMarks();
    }
}

void CDForm::pressTimeMode() {
    if (context_.state.discDrawerOpen == 1 || player_.pausedFlag == 1) {
        return;
    }
    stopintro();
    forgetShownTime();
    context_.state.audioTimeMode = static_cast<std::int16_t>(nextTimeMode(context_.state.audioTimeMode));
    shell::writeModeLast(context_);
    refreshTimeCaption();
}

void CDForm::pressMarks() {
    if (player_.markA > 0 && player_.markB > 0) {
        clrab();
        return;
    }
    const float point = std::max(barPoint(), leastMark);
    if (!isLit(transport::play)) {
        return;
    }
    if (player_.markA <= 0) {
        player_.lastShownSeconds = 0;
        player_.markTrack = static_cast<std::int16_t>(digits());
        player_.markA = point;
        face.abLamp.ForeColor = color(3);
        return;
    }
    face.abLamp.ForeColor = color(0);
    player_.markB = point;
    CDStatusBar_MouseDown(player_.markA);
}

void CDForm::clrab() {
    if (player_.markA <= 0) {
        return;
    }
    player_.markA = 0;
    player_.markB = 0;
    player_.markTrack = 0;
    face.abLamp.ForeColor = color(2);
    face.abText.ForeColor = colors::black;
}

}  // namespace tessarel::audio
