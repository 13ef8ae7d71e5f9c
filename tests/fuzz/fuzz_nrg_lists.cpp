// links: tessarel_image
#include <cstdint>
#include <string_view>

#include "host/image/nrg_footer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tessarel::host;
    const auto footer = parseNrgLists({reinterpret_cast<const char*>(bytes), size});
    if (!footer) {
        return 0;
    }
    if (const auto plan = planNrg(*footer, 2352 * 3000)) {
        (void)layOut(*plan);
    }
    return 0;
}
