#pragma once
#include <optional>

#include "audio/player_state.h"

/// The player's decisions, as functions from values to values.
namespace tessarel::audio {

/// What is to be done when a time update has seen the position.
enum class TrackEnd {
    nothing,
    programTrackOver,  ///< programmed and single-track mode: `playLaunched` falls to 0
    wrapToFirst,
    discOver,
    advance,           ///< the next track's digits come; the disc plays on by itself
    advanceAfterWait,  ///< the same, after the wait of three seconds that a corrected disc has
};

/// Length of a track in seconds as the end test takes it: minus 5, and 4 more on the last track of the grid in whole-disc mode.
int endSecondsOf(const PlayerState& player, int lengthSeconds);

/// `now` is the seconds-since-midnight clock.
TrackEnd trackEnd(const PlayerState& player, int timeCorrection, double now);

/// Seconds from one reading of the seconds-since-midnight clock to a later one.
double elapsedSince(double then, double now);

/// Percent of the track that a held seek key moves by in one tick; `state` is `seekKeyState`.
int seekStepPercent(int state);

/// Length of an intro for the option's value and a track's length, in seconds.
double introDuration(int option, int trackSeconds);

/// The track of an entry of the program; 0 outside 1 to 101.
int programEntry(const PlayerState& player, int index);

/// Colours of a cell that the pulse decides on.
enum class CellColor { keep, dim, lit, shown };

/// What the pulse does to the cell of a track (1 to 20). `digits` is the track shown; `isDim` whether the cell shows as dim.
CellColor cellColor(const PlayerState& player, int track, int digits, bool isDim);

}  // namespace tessarel::audio
