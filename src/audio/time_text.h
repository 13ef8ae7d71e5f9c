#pragma once
#include <optional>
#include <string>

#include "audio/player_state.h"

namespace tessarel::audio {

/// What a time readout is made from.
struct TimeReading {
    int timeMode = 0;          ///< 0 elapsed, 1 left in the track, 2 elapsed on the disc, 3 left
    int track = 0;             ///< the digits shown
    std::string positionText;  ///< "mm:ss" in the track
};

struct TimeReadout {
    std::string text;
    std::optional<double> shownSeconds;  ///< the value used; nothing where the mode has none
};

/// The caption of a time mode, 0 to 3.
const char* timeCaption(int timeMode);

/// The next mode after a press: 0, 1, 2, 3, 0.
int nextTimeMode(int timeMode);

/// The time text. Its guards against a position that stutters use `lastShownTrack` and `lastShownSeconds`.
TimeReadout readTime(const PlayerState& player, const TimeReading& reading);

/// "mm:ss" from 0 to 59:59, "h:mm:ss" from an hour on.
std::string longTime(double seconds);

/// Percent of a track for a position, both "mm:ss"; nothing when the bar is to stay as it is.
std::optional<int> barPercent(const std::string& lengthText, const std::string& positionText);

}  // namespace tessarel::audio
