#pragma once
#include <cstdint>

namespace tessarel {

/// A colour as the settings files hold it: 0x00BBGGRR.
using Color = std::uint32_t;

namespace colors {
inline constexpr Color black = 0x000000;
inline constexpr Color white = 0xFFFFFF;
inline constexpr Color red = 255;
inline constexpr Color darkRed = 192;
/// The grey that marks a mode label as live, and a grid cell as switched off.
inline constexpr Color grey = 0x808080;
}  // namespace colors

constexpr int redOf(Color c) { return static_cast<int>(c & 0xFFU); }
constexpr int greenOf(Color c) { return static_cast<int>((c >> 8U) & 0xFFU); }
constexpr int blueOf(Color c) { return static_cast<int>((c >> 16U) & 0xFFU); }

}  // namespace tessarel
