#pragma once
#include <array>
#include <cstdint>

#include "platform/audio_levels.h"
#include "platform/system_mixer.h"
#include "volume/volume_levels.h"

namespace tessarel::volume {

/// Levels and slider positions, which outlive the windows that show them. The program owns one for the disc; the engines
/// write it. A copy hands everything over to another window.
struct VolumeState {
    std::int32_t cdVolumeLeft = fullLevel;   ///< 0 to 65535; 0 while muted by level
    std::int32_t cdVolumeRight = fullLevel;  ///< 0 to 65535
    /// Left and right level saved over a mute. Where the desktop's output is driven, the first is the output's step, 0 to 250.
    std::array<std::int32_t, 2> muteMemory{platform::SystemMixer::middleStep, 0};
    std::int16_t sliderLastLeft = 0;  ///< 0 to 100
    std::int16_t sliderLastRight = 0;
    bool muted = false;
    bool mutedByMixer = false;  ///< the mute is the desktop mixer's, not ours
    bool linked = true;
    bool levelsRead = false;   ///< sliders and levels stand for the line, as they have been taken over from the sound device
    bool outputReady = false;  ///< the desktop's output has been brought to the middle
};

/// Whether sliders and mute stand for the desktop's output, and not for a line.
bool standsForOutput(const VolumeState& state);

enum class Side { left, right };

/// The sliders and words that show how a line stands, as it is read. A line that our own mute holds at 0 is read past: the
/// level from before stays in memory.
VolumeState asRead(VolumeState state, const platform::LineLevel& line);

/// After a person has moved a slider that works on a line; a mute has been lifted before.
VolumeState afterMove(VolumeState state, Side moved, int position);

VolumeState afterMute(VolumeState state);
VolumeState afterUnmute(VolumeState state);

/// After something else has changed the line. The news of an own change change nothing.
VolumeState afterLineChange(VolumeState state, const platform::LineLevel& line);

/// Where sliders drive the desktop's output they stand together: after a move, when they come to show the output, and after
/// something else has changed it.
VolumeState afterMoveTogether(VolumeState state, int position);
VolumeState asOutput(VolumeState state, const platform::OutputLevel& output);
VolumeState afterOutputChange(VolumeState state, const platform::OutputLevel& output);

}  // namespace tessarel::volume
