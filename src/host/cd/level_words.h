#pragma once
#include <pulse/volume.h>

#include <algorithm>
#include <cstdint>

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

}  // namespace tessarel::host
