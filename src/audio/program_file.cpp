#include "audio/program_file.h"

#include "base/sequential_file.h"

namespace tessarel::audio {
namespace {

constexpr std::size_t entries = 100;

std::int16_t within(std::int16_t track, std::int16_t last) { return track < 1 || track > last ? std::int16_t{0} : track; }

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
    for (std::size_t i = 1; i <= entries; ++i) {
        const auto value = reader.integer();
        if (!value) {
            return;
        }
        const auto track = within(*value, player.gridTrackCount);
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
