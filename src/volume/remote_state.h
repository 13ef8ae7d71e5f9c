#pragma once
#include <cstdint>

#include "volume/volume_state.h"

namespace tessarel::volume {

/// Whose sound the small volume window serves.
enum class SourceKind : std::int16_t { disc = 0, wave = 1, midi = 2 };

/// What the small volume window keeps. One instance; that window writes it, and `openRemote` the `sourceKind`.
struct RemoteState {
    SourceKind sourceKind = SourceKind::disc;
    std::int16_t volumeWindowOpen = 0;
    std::int16_t compactRemote = 0;  ///< 0 while it shows the volume side, 1 for the display side
    std::int16_t remoteStereo = 1;   ///< 0 when the device has one channel only
    VolumeState words;               ///< its own levels and slider positions

    std::int32_t remoteLeft() const { return words.cdVolumeLeft; }
    std::int32_t remoteRight() const { return words.cdVolumeRight; }
};

/// Whether the window is up for the disc and works on its own words, not on the player's sliders.
bool hasDiscLevels(const RemoteState& state, std::int16_t volumeMode);

/// One channel for both: right takes left's level and position, and the sliders stay linked.
VolumeState asMono(VolumeState state);

}  // namespace tessarel::volume
