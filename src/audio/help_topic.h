#pragma once
#include <cstdint>

namespace tessarel::audio {

/// The help topic of the player and its list.
inline constexpr std::int16_t playerHelp = 15;

}  // namespace tessarel::audio
