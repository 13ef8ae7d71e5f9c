#pragma once
#include <stop_token>

#include "host/desktop/sound_decoder.h"

namespace tessarel::host {

/// Plays a sound to its end on a connection of its own, and returns then; at once without a sound server. Cut within a moment
/// when a stop is requested. For a worker thread.
void playThroughPulse(SoundDecoder& sound, const std::stop_token& stop);

}  // namespace tessarel::host
