#include "volume/volume_levels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/audio_levels.h"
#include "platform/system_mixer.h"

namespace tessarel::volume {
namespace {

using platform::SystemMixer;

constexpr double stepsPerPosition = static_cast<double>(SystemMixer::fullStep) / silentPosition;

std::int32_t rounded(double value) { return static_cast<std::int32_t>(std::nearbyint(value)); }

}  // namespace

std::int16_t effectiveMode(std::int16_t stored) { return stored == 1 || stored == 2 ? modes::direct : stored; }

std::uint32_t packVolume(std::int32_t left, std::int32_t right) {
    return (static_cast<std::uint32_t>(left) & 0xFFFFU) | (static_cast<std::uint32_t>(right) & 0xFFFFU) << 16U;
}

platform::StereoLevel unpackVolume(std::uint32_t word) {
    return {static_cast<std::int32_t>(word & 0xFFFFU), static_cast<std::int32_t>(word >> 16U)};
}

int sliderPosition(std::int32_t level) { return rounded(std::abs(silentPosition - level * 100.0 / fullLevel)); }

std::int32_t levelAfterMove(std::int32_t level, int from, int to) {
    if (to >= silentPosition) {
        return 0;
    }
    const auto step = rounded(std::abs(to - from) * static_cast<double>(fullLevel) / 100.0);
    return to < from ? std::min(level + step, fullLevel) : std::max(level - step, 0);
}

int stepOfPosition(int position) {
    return std::clamp(rounded(SystemMixer::fullStep - stepsPerPosition * position), 0, SystemMixer::fullStep);
}

int positionOfStep(int step) {
    return std::clamp(rounded((SystemMixer::fullStep - step) / stepsPerPosition), 0, silentPosition);
}

int sliderFigure(int position) { return silentPosition - position; }

bool standTogether(int left, int right) { return std::abs(left - right) < 2; }

std::optional<std::string_view> volumeErrorText(int code) {
    switch (code) {
        case platform::deviceCodes::outOfRange:
            return "Specified sound board device ID is out of range; you may need to install an updated driver for your sound "
                   "board, or use the Force Windows Compatible sound mode or disable the internal volume sliders in the "
                   "Tessarel Setup Section.";
        case platform::deviceCodes::noDriver:
            return "The driver failed to install.";
        default:
            return std::nullopt;
    }
}

}  // namespace tessarel::volume
