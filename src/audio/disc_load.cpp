#include "audio/disc_load.h"

#include <algorithm>
#include <cmath>

#include "base/clock_text.h"
#include "base/packed_time.h"
#include "base/text.h"

namespace tessarel::audio {
namespace {

Msf lengthOfTrack(MMControl& device, int n) {
    device.setTrack(n);
    return unpackMsf(device.TrackLength());
}

// Such a drive gives the whole disc's length for its first track. The minutes alone don't tell: the first track of a sound
// disc may fill all but its last seconds.
bool reportsLengthsToDiscEnd(MMControl& device, const PlayerState& player) {
    const Msf first = lengthOfTrack(device, 1);
    return first.minutes >= player.discLengthMinutes && toFrames(first) >= toFrames(unpackMsf(device.Length()));
}

std::string lengthText(int minutes, int seconds) { return std::to_string(minutes) + ":" + twoDigits(seconds); }

std::string clockOf(int hours, int minutes, int seconds) {
    const std::string tail = twoDigits(minutes) + ":" + twoDigits(seconds);
    return hours > 0 ? std::to_string(hours) + ":" + tail : tail;
}

}  // namespace

std::int32_t computeDiscNumber(MMControl& device, int discTrackCount) {
    double sum = device.Tracks();
    for (int n = 1; n <= discTrackCount; ++n) {
        device.setTrack(n);
        sum += device.TrackLength();
        sum += device.Length();
    }
    return static_cast<std::int32_t>(std::clamp(sum, -2147483648.0, 2147483647.0));
}

std::string discLengthText(std::int32_t packedLength) {
    const Msf length = unpackMsf(packedLength);
    return clockOf(length.minutes / 60, length.minutes % 60, length.seconds);
}

std::string trackLengthText(MMControl& device, PlayerState& player, int n) {
    const bool last = n == player.discTrackCount;
    if (!last && reportsLengthsToDiscEnd(device, player)) {
        const Msf here = lengthOfTrack(device, n);
        const Msf next = lengthOfTrack(device, n + 1);
        int minutes = here.minutes - next.minutes;
        int seconds = here.seconds - next.seconds;
        if (seconds < 0) {
            seconds += 60;
            --minutes;
        }
        return lengthText(minutes, seconds);
    }
    const Msf length = lengthOfTrack(device, n);
    player.trackFrames.at(static_cast<std::size_t>(n)) = length.frames;
    return lengthText(length.minutes, length.seconds);
}

void buildTrackLengths(MMControl& device, PlayerState& player) {
    const int count = std::min<int>(player.discTrackCount, 100);
    for (int n = 1; n <= count; ++n) {
        player.trackLengths.at(static_cast<std::size_t>(n)) = trackLengthText(device, player, n);
    }
    player.trackTimesReady = 1;
}

std::int32_t measureLeadIn(MMControl& device) {
    device.sendString("set cdaudio time format milliseconds");
    const double milliseconds = text::val(device.sendString("status cdaudio position"));
    device.TimeFormat = timeFormatTmsf;
    return static_cast<std::int32_t>(milliseconds * framesPerSecond / 1000);
}

std::string summedLengthText(const PlayerState& player) {
    int seconds = 3;
    for (int n = 1; n <= std::min<int>(player.discTrackCount, 100); ++n) {
        seconds += clockSeconds(player.trackLengths.at(static_cast<std::size_t>(n)));
    }
    const bool overAnHour = seconds >= 3600;
    const int rest = overAnHour ? seconds - 3600 : seconds;
    return (overAnHour ? "1:" : "") + twoDigits(rest / 60) + ":" + twoDigits(rest % 60);
}

}  // namespace tessarel::audio
