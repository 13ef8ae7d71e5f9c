#include "audio/track_rules.h"

#include <algorithm>

namespace tessarel::audio {
namespace {

constexpr double secondsPerDay = 86400;
constexpr double secondsBetweenAdvances = 8;

TrackEnd wholeDiscEnd(const PlayerState& player, int timeCorrection, double now) {
    const bool wraps = player.repeatOn == 1;
    // In the last seconds of a track the next one is current already, but the position is still that of the one before.
    const bool arrived = player.reportedTrack == player.currentTrack;
    if (player.currentTrack < 1 || (wraps && arrived && player.currentTrack == player.gridTrackCount)) {
        return TrackEnd::wrapToFirst;
    }
    if (player.currentTrack > player.discTrackCount) {
        return wraps ? TrackEnd::wrapToFirst : TrackEnd::discOver;
    }
    if (timeCorrection != 0) {
        return arrived ? TrackEnd::advanceAfterWait : TrackEnd::nothing;
    }
    return elapsedSince(player.lastAdvanceTime, now) < secondsBetweenAdvances ? TrackEnd::nothing : TrackEnd::advance;
}

bool inProgramFrom(const PlayerState& player, int index, int track) {
    for (int i = std::max(index, 1); i <= 100; ++i) {
        if (programEntry(player, i) == track) {
            return true;
        }
    }
    return false;
}

CellColor wholeDiscCell(const PlayerState& player, int track, int digits) {
    if (player.repeatOn == 1) {
        return CellColor::shown;
    }
    return digits > 20 || track < digits ? CellColor::dim : CellColor::shown;
}

}  // namespace

int endSecondsOf(const PlayerState& player, int lengthSeconds) {
    const bool lastOfGrid = player.playMode == wholeDisc && player.currentTrack == player.gridTrackCount;
    return lengthSeconds - 5 + (lastOfGrid ? 4 : 0);
}

TrackEnd trackEnd(const PlayerState& player, int timeCorrection, double now) {
    if (player.playMode != wholeDisc) {
        const bool over = player.positionSeconds >= player.trackEndSeconds + 2 + timeCorrection;
        return over ? TrackEnd::programTrackOver : TrackEnd::nothing;
    }
    return player.positionSeconds >= player.trackEndSeconds ? wholeDiscEnd(player, timeCorrection, now) : TrackEnd::nothing;
}

double elapsedSince(double then, double now) { return now >= then ? now - then : now - then + secondsPerDay; }

int seekStepPercent(int state) {
    if (state > 0) {
        return state < 8 ? 2 : state < 13 ? 6 : 10;
    }
    if (state < 0) {
        return state > -7 ? -4 : state > -11 ? -8 : -12;
    }
    return 0;
}

double introDuration(int option, int trackSeconds) {
    const int wanted = option < 2 || option > 30 ? 7 : option;
    return std::min(wanted, trackSeconds);
}

int programEntry(const PlayerState& player, int index) {
    return index < 1 || index > 101 ? 0 : player.programList.at(static_cast<std::size_t>(index));
}

CellColor cellColor(const PlayerState& player, int track, int digits, bool isDim) {
    switch (player.playMode) {
        case programmed:
            return isDim && inProgramFrom(player, player.programIndex, track) ? CellColor::lit : CellColor::keep;
        case singleTrack:
            return track == player.currentTrack ? CellColor::shown : CellColor::dim;
        default:
            return wholeDiscCell(player, track, digits);
    }
}

}  // namespace tessarel::audio
