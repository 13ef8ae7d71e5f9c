#include "audio/program_file.h"

#include <cmath>

#include "base/sequential_file.h"

namespace tessarel::audio {
namespace {

constexpr std::size_t entries = 100;

std::int16_t within(double track, std::int16_t last) {
    const double whole = std::nearbyint(track);
    return whole < 1 || whole > last ? std::int16_t{0} : static_cast<std::int16_t>(whole);
}

}  // namespace

std::string programPath(std::string_view discRecordPath) { return std::string(discRecordPath) + "2"; }

std::string programFileBytes(const PlayerState& player) {
    SequentialWriter writer;
    for (std::size_t i = 1; i <= entries; ++i) {
        writer.number(within(player.programList.at(i), player.discTrackCount));
    }
    return writer.bytes();
}

void takeProgramFile(PlayerState& player, std::string_view bytes) {
    SequentialReader reader(bytes);
    player.programCount = 0;
    player.programList.fill(0);
    for (std::size_t i = 1; i <= entries; ++i) {
        const auto value = reader.variant();
        if (!value) {
            return;
        }
        const auto track = within(value->asNumber(), player.gridTrackCount);
        player.programList.at(i) = track;
        if (track > 0) {
            ++player.programCount;
            player.programBackup.at(static_cast<std::size_t>(player.programCount)) = track;
        }
    }
}

bool holdsProgram(std::string_view bytes) {
    const auto first = SequentialReader(bytes).integer();
    return first && *first >= 1;
}

}  // namespace tessarel::audio
