#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "host/image/disc_plan.h"

/// The lists that stand behind the sectors of an NRG image. Pure: bytes in, values out.
namespace tessarel::host {

struct NrgTrack {
    SectorForm form = SectorForm::audio;
    bool newSession = false;
    std::int64_t pregapAt = 0;          ///< bytes: where its stored pregap begins
    std::int64_t at = 0;                ///< bytes: its INDEX 01
    std::int64_t end = 0;               ///< bytes
    std::optional<std::int32_t> start;  ///< frame address of its INDEX 01, where its own list tells it
};

struct NrgFooter {
    std::vector<NrgTrack> tracks;         ///< numbers from 1
    std::map<int, std::int32_t> starts;   ///< frame addresses by track number, as the cue list tells them
    std::optional<std::int32_t> leadOut;  ///< the last one of the cue lists
};

/// Where the lists begin in an image of `fileSize` bytes that ends in these 12 bytes; nothing when it ends in no footer.
std::optional<std::int64_t> nrgListsAt(std::string_view lastBytes, std::int64_t fileSize);

/// Reads the lists. Messages are reasons, to be put behind the image's name.
Result<NrgFooter> parseNrgLists(std::string_view lists);

/// Checks the lists against each other and against the `sectorArea` bytes before them, and plans the disc; its file is number
/// 0.
Result<DiscPlan> planNrg(const NrgFooter& footer, std::int64_t sectorArea);

}  // namespace tessarel::host
