#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/audio_levels.h"

/// How slider positions and device levels turn into each other. A slider runs from 0, loudest and at the top, to 100,
/// silent; a channel's level from 0, silent, to 65535.
namespace tessarel::volume {

inline constexpr std::int32_t fullLevel = 65535;
inline constexpr int silentPosition = 100;

/// How the volume is driven, by the numbers of the settings.
namespace modes {
inline constexpr std::int16_t mixerButton = 0;  ///< no sliders
inline constexpr std::int16_t direct = 3;       ///< sliders set the level of the program's own sound
inline constexpr std::int16_t output = 4;       ///< sliders set the level of the desktop's default output
}  // namespace modes

/// The mode that a number in the settings stands for: 1 and 2 are read as 3.
std::int16_t effectiveMode(std::int16_t stored);

/// The device's volume word: left in the low 16 bits, right in the high ones.
std::uint32_t packVolume(std::int32_t left, std::int32_t right);
platform::StereoLevel unpackVolume(std::uint32_t word);

/// The slider position of a channel's level.
int sliderPosition(std::int32_t level);

/// A channel's level after its slider has moved from one position to another. It moves by as much as the slider did, so it
/// need not be the exact level of the new position; a slider at its lowest end silences the channel.
std::int32_t levelAfterMove(std::int32_t level, int from, int to);

/// The step of the desktop's output, 0 to 250, for a slider position, and back. The ends are the output's own.
int stepOfPosition(int position);
int positionOfStep(int step);

/// The figure beside a slider.
int sliderFigure(int position);

/// Whether two sliders stand so close that they are taken for linked.
bool standTogether(int left, int right);

/// What the user is told of a sound device's error code; nothing for codes that are passed over.
std::optional<std::string_view> volumeErrorText(int code);

}  // namespace tessarel::volume
