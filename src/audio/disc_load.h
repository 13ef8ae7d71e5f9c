#pragma once
#include <cstdint>
#include <string>

#include "audio/device/mm_control.h"
#include "audio/player_state.h"

namespace tessarel::audio {

/// The number that names a disc's record, from the packed lengths of its tracks and of the whole disc.
std::int32_t computeDiscNumber(MMControl& device, int discTrackCount);

/// "mm:ss" of a packed length under an hour, "h:mm:ss" otherwise.
std::string discLengthText(std::int32_t packedLength);

/// "m:ss" of track n. Corrects a drive that reports every length up to the end of the disc; otherwise stores the frames
/// part in `trackFrames`.
std::string trackLengthText(MMControl& device, PlayerState& player, int n);

/// Fills `trackLengths` and sets `trackTimesReady`.
void buildTrackLengths(MMControl& device, PlayerState& player);

/// The lead-in in frames of the disc in an opened device; leaves the device in its time format for tracks.
std::int32_t measureLeadIn(MMControl& device);

/// The total that stands in for a disc length that the device could not give: "1:mm:ss" or "mm:ss".
std::string summedLengthText(const PlayerState& player);

}  // namespace tessarel::audio
