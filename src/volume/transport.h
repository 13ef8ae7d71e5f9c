#pragma once

namespace tessarel::volume {

/// Indices of the transport keys, of a player and of the window that stands in for it.
namespace transport {
inline constexpr int prev = 0;
inline constexpr int next = 1;
inline constexpr int play = 2;
inline constexpr int pause = 3;
inline constexpr int stop = 4;
inline constexpr int eject = 5;
inline constexpr int count = 6;
}  // namespace transport

/// What the lights of the transport keys tell.
enum class TransportLights { stopped, playing, paused, noDisc };

/// Whether a key wears its lit cover. A key that is lit or dim takes no press.
bool isLit(TransportLights lights, int key);
/// Whether a key wears its dim cover.
bool isDim(TransportLights lights, int key);

}  // namespace tessarel::volume
