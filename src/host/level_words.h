#pragma once
#include <pulse/def.h>
#include <pulse/volume.h>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "platform/audio_levels.h"

namespace tessarel::host {

/// A level word of 0 to 65535 in the sound server's scale. Full is exactly PA_VOLUME_NORM, which is one more than the largest
/// word; all others are the same number in both, so that words and the desktop mixer's percents agree. Words outside the
/// range are brought into it.
constexpr pa_volume_t volumeOfWord(std::int32_t word) {
    return word >= 65535 ? PA_VOLUME_NORM : static_cast<pa_volume_t>(std::max(word, 0));
}

/// The reverse; a volume above full is full.
constexpr std::int32_t wordOfVolume(pa_volume_t volume) {
    return static_cast<std::int32_t>(std::min<pa_volume_t>(volume, 65535));
}

/// The server's form of a level, for a stream of some channels: with two, left and right; otherwise all get the middle of both.
inline pa_cvolume volumeOf(platform::StereoLevel level, int channels) {
    pa_cvolume volume;
    pa_cvolume_set(&volume, static_cast<unsigned>(channels), volumeOfWord((level.left + level.right) / 2));
    if (channels == 2) {
        volume.values[0] = volumeOfWord(level.left);
        volume.values[1] = volumeOfWord(level.right);
    }
    return volume;
}

/// The reverse; of more than two channels the first two count.
inline platform::StereoLevel levelOf(const pa_cvolume& volume) {
    return {wordOfVolume(volume.values[0]), wordOfVolume(volume.values[volume.channels > 1 ? 1 : 0])};
}

/// Whether a new stream starts muted; with nothing the server decides.
inline pa_stream_flags_t startFlag(const std::optional<platform::LineLevel>& level) {
    return !level ? PA_STREAM_NOFLAGS : level->muted ? PA_STREAM_START_MUTED : PA_STREAM_START_UNMUTED;
}

}  // namespace tessarel::host
