// links: tessarel_audio
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "audio/program_file.h"

// A recalled program holds tracks of the grid only, counts what it shows, and comes back as it was when it is saved.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessarel::audio;
    if (size == 0) {
        return 0;
    }
    PlayerState player;
    player.discTrackCount = static_cast<std::int16_t>(data[0] % 100);
    player.gridTrackCount = std::min<std::int16_t>(player.discTrackCount, 20);
    player.programList.fill(7);
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    (void)holdsProgram(bytes);
    takeProgramFile(player, bytes);

    const auto& list = player.programList;
    const bool ofTheGrid = std::all_of(list.begin(), list.end(), [&](int t) { return t >= 0 && t <= player.gridTrackCount; });
    const auto counted = std::count_if(list.begin(), list.end(), [](int t) { return t > 0; });
    PlayerState again = player;
    takeProgramFile(again, programFileBytes(player));
    if (!ofTheGrid || counted != player.programCount || again.programList != list) {
        std::abort();
    }
    return 0;
}
