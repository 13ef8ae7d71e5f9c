#pragma once
#include <stop_token>

#include "host/desktop/sound_decoder.h"
#include "host/line_streams.h"

namespace tessarel::host {

/// Plays a sound to its end, at the level of a line, on a connection of its own, and returns then; at once without a sound
/// server. Cut within a moment when a stop is requested. For a worker thread.
void playThroughPulse(SoundDecoder& sound, LineStreams& line, const std::stop_token& stop);

}  // namespace tessarel::host
