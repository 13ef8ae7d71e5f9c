// links: tessarel_image
#include <cstdint>
#include <string_view>

#include "host/image/cue_sheet.h"
#include "host/image/disc_plan.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tessarel::host;
    const auto sheet = parseCueSheet({reinterpret_cast<const char*>(bytes), size});
    if (!sheet) {
        return 0;
    }
    std::vector<FileExtent> files;
    for (const CueFile& file : sheet->files) {
        const bool sound = file.kind == CueFileKind::sound;
        files.push_back({file.name, sound, sound ? 588 * 3000 + 7 : 2352 * 3000});
    }
    if (const auto plan = planCue(*sheet, files)) {
        (void)layOut(*plan);
    }
    return 0;
}
