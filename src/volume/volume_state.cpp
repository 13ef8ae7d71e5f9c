#include "volume/volume_state.h"

#include <algorithm>

namespace tessarel::volume {
namespace {

using platform::LineLevel;
using platform::OutputLevel;
using platform::StereoLevel;

std::int32_t inScale(std::int32_t level) { return std::clamp(level, 0, fullLevel); }

void setWords(VolumeState& state, StereoLevel level) {
    state.cdVolumeLeft = level.left;
    state.cdVolumeRight = level.right;
}

StereoLevel words(const VolumeState& state) { return {state.cdVolumeLeft, state.cdVolumeRight}; }

// The level behind a mute.
StereoLevel audibleLevel(const VolumeState& state) {
    return state.muted ? StereoLevel{state.muteMemory[0], state.muteMemory[1]} : words(state);
}

// A slider whose level is the same stays where it is: it need not be the exact position of its level.
void moveSliders(VolumeState& state, StereoLevel from, StereoLevel to) {
    if (to.left != from.left) {
        state.sliderLastLeft = static_cast<std::int16_t>(sliderPosition(to.left));
    }
    if (to.right != from.right) {
        state.sliderLastRight = static_cast<std::int16_t>(sliderPosition(to.right));
    }
    state.linked = state.linked && standTogether(state.sliderLastLeft, state.sliderLastRight);
}

bool holdsMute(const VolumeState& state) {
    return state.levelsRead && state.muted && !state.mutedByMixer && words(state) == StereoLevel{0, 0};
}

VolumeState muteOfMixer(VolumeState state, StereoLevel level) {
    setWords(state, level);
    state = afterMute(state);
    state.mutedByMixer = true;
    return state;
}

}  // namespace

bool standsForOutput(const VolumeState& state) { return state.outputReady && !state.levelsRead; }

VolumeState asRead(VolumeState state, const LineLevel& line) {
    const StereoLevel heard{inScale(line.level.left), inScale(line.level.right)};
    if (holdsMute(state) && heard == words(state)) {
        return state;
    }
    setWords(state, heard);
    state.sliderLastLeft = static_cast<std::int16_t>(sliderPosition(state.cdVolumeLeft));
    state.sliderLastRight = static_cast<std::int16_t>(sliderPosition(state.cdVolumeRight));
    state.linked = standTogether(state.sliderLastLeft, state.sliderLastRight);
    state.muted = state.mutedByMixer = false;
    state.levelsRead = true;
    return line.muted ? muteOfMixer(state, words(state)) : state;
}

VolumeState afterMove(VolumeState state, Side moved, int position) {
    const bool left = moved == Side::left;
    auto& level = left ? state.cdVolumeLeft : state.cdVolumeRight;
    auto& last = left ? state.sliderLastLeft : state.sliderLastRight;
    level = levelAfterMove(level, last, position);
    last = static_cast<std::int16_t>(position);
    if (state.linked) {
        state.cdVolumeLeft = state.cdVolumeRight = level;
        state.sliderLastLeft = state.sliderLastRight = last;
    }
    return state;
}

VolumeState afterMute(VolumeState state) {
    state.muteMemory = {state.cdVolumeLeft, state.cdVolumeRight};
    setWords(state, {0, 0});
    state.muted = true;
    return state;
}

VolumeState afterUnmute(VolumeState state) {
    setWords(state, audibleLevel(state));
    state.muted = state.mutedByMixer = false;
    return state;
}

VolumeState afterLineChange(VolumeState state, const LineLevel& line) {
    const StereoLevel heard{inScale(line.level.left), inScale(line.level.right)};
    const bool known = heard == words(state);
    if (known && (line.muted ? state.muted : !state.mutedByMixer)) {
        return state;
    }
    moveSliders(state, audibleLevel(state), heard);
    if (line.muted) {
        return muteOfMixer(state, heard);
    }
    setWords(state, heard);
    state.muted = state.mutedByMixer = false;
    return state;
}

VolumeState afterMoveTogether(VolumeState state, int position) {
    state.sliderLastLeft = state.sliderLastRight = static_cast<std::int16_t>(position);
    return state;
}

VolumeState asOutput(VolumeState state, const OutputLevel& output) {
    state = afterMoveTogether(state, positionOfStep(output.step));
    setWords(state, {fullLevel, fullLevel});
    state.muteMemory[0] = output.step;
    state.muted = output.muted;
    state.mutedByMixer = false;
    state.linked = true;
    state.levelsRead = false;
    state.outputReady = true;
    return state;
}

VolumeState afterOutputChange(VolumeState state, const OutputLevel& output) {
    if (output.step != state.muteMemory[0]) {
        state = afterMoveTogether(state, positionOfStep(output.step));
        state.muteMemory[0] = output.step;
    }
    state.muted = output.muted;
    return state;
}

}  // namespace tessarel::volume
