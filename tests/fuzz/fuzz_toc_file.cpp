// links: tessarel_image
#include <cstdint>
#include <string_view>

#include "host/image/disc_plan.h"
#include "host/image/toc_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tessarel::host;
    const auto toc = parseTocFile({reinterpret_cast<const char*>(bytes), size});
    if (!toc) {
        return 0;
    }
    std::vector<FileExtent> files;
    for (const TocTrack& track : toc->tracks) {
        for (const TocPiece& piece : track.pieces) {
            if (!piece.file.empty()) {
                files.push_back({piece.file, piece.file.back() == 'v', 2352 * 3000});
            }
        }
    }
    if (const auto plan = planToc(*toc, files)) {
        (void)layOut(*plan);
    }
    return 0;
}
