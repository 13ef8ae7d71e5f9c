#include "audio/time_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/clock_text.h"

namespace tessarel::audio {
namespace {

enum class Guard { neverBack, neverAhead, neverUp, stepsDown };

double secondsOfTracks(const PlayerState& player, int from, int to) {
    double sum = 0;
    for (int n = std::max(from, 1); n <= std::min(to, 100); ++n) {
        sum += clockSeconds(player.trackLengths.at(static_cast<std::size_t>(n)));
    }
    return sum;
}

double secondsOfProgramAfter(const PlayerState& player, int index) {
    double sum = 0;
    for (int i = std::max(index + 1, 1); i <= 100; ++i) {
        const int track = player.programList.at(static_cast<std::size_t>(i));
        if (track == 0) {
            break;
        }
        sum += secondsOfTracks(player, track, track);
    }
    return sum;
}

double leftInTrack(const PlayerState& player) { return player.trackEndSeconds + 5 - player.positionSeconds; }

// The guards are not symmetric: the time in a track never falls, the time on the disc rises by one at most, what is left of a
// track never rises, and what is left of the disc falls by one when the position has jumped ahead.
double guarded(const PlayerState& player, const TimeReading& reading, double t, Guard guard) {
    const bool sameTrack = player.lastShownTrack > 0 && reading.track == player.lastShownTrack;
    const double last = player.lastShownSeconds;
    if (!sameTrack || last < 1) {
        return t;
    }
    if (guard == Guard::neverBack && t < last) {
        return last + 1;
    }
    if (guard == Guard::neverAhead && t > last) {
        return last + 1;
    }
    const bool steps = (guard == Guard::neverUp && t > last) || (guard == Guard::stepsDown && t < last);
    return steps ? last - 1 : t;
}

std::string shortTime(double seconds) {
    const int whole = static_cast<int>(std::max(seconds, 0.0));
    return std::to_string(whole / 60) + ":" + twoDigits(whole % 60);
}

TimeReadout elapsedInTrack(const PlayerState& player, const TimeReading& reading) {
    const double t = std::max(guarded(player, reading, player.positionSeconds, Guard::neverBack), 0.0);
    return {shortTime(t), t};
}

TimeReadout leftInTrackText(const PlayerState& player, const TimeReading& reading) {
    const double t = guarded(player, reading, std::max(leftInTrack(player), 0.0), Guard::neverUp);
    return {"-" + shortTime(t), t};
}

TimeReadout elapsedOnDisc(const PlayerState& player, const TimeReading& reading) {
    if (player.playMode != wholeDisc) {
        return {reading.positionText.starts_with('-') ? "00:00" : reading.positionText, std::nullopt};
    }
    const double before = secondsOfTracks(player, 1, player.currentTrack - 1);
    const double t = guarded(player, reading, before + player.positionSeconds, Guard::neverAhead);
    return {longTime(t), t};
}

double restAfterTrack(const PlayerState& player) {
    switch (player.playMode) {
        case programmed:
            return secondsOfProgramAfter(player, player.programIndex);
        case wholeDisc:
            return secondsOfTracks(player, player.currentTrack + 1, player.discTrackCount);
        default:
            return 0;
    }
}

TimeReadout leftInAll(const PlayerState& player, const TimeReading& reading) {
    const double t = guarded(player, reading, restAfterTrack(player) + leftInTrack(player), Guard::stepsDown);
    return {"-" + (player.playMode == singleTrack ? shortTime(t) : longTime(t)), t};
}

}  // namespace

const char* timeCaption(int timeMode) {
    constexpr std::array<const char*, 4> captions = {"Time", "Rem", "TOTAL", "Totrem"};
    return captions.at(static_cast<std::size_t>(std::clamp(timeMode, 0, 3)));
}

int nextTimeMode(int timeMode) { return timeMode < 0 || timeMode >= 3 ? 0 : timeMode + 1; }

TimeReadout readTime(const PlayerState& player, const TimeReading& reading) {
    switch (reading.timeMode) {
        case 1:
            return leftInTrackText(player, reading);
        case 2:
            return elapsedOnDisc(player, reading);
        case 3:
            return leftInAll(player, reading);
        default:
            return elapsedInTrack(player, reading);
    }
}

std::string longTime(double seconds) {
    const int whole = static_cast<int>(std::max(seconds, 0.0));
    const std::string hours = whole >= 3600 ? std::to_string(whole / 3600) + ":" : std::string();
    return hours + twoDigits(whole / 60 % 60) + ":" + twoDigits(whole % 60);
}

std::optional<int> barPercent(const std::string& lengthText, const std::string& positionText) {
    if (positionText == "00:00") {
        return 0;
    }
    const int total = clockSeconds(lengthText);
    const int now = clockSeconds(positionText);
    if (now < 1) {
        return 0;
    }
    if (total < now) {
        return std::nullopt;
    }
    return static_cast<int>(std::floor(100.0 * now / total + 0.5));
}

}  // namespace tessarel::audio
