#include "host/image/nrg_image.h"

#include <array>

#include "host/image/image_errors.h"
#include "host/image/image_medium.h"
#include "host/image/nrg_footer.h"

namespace tessarel::host {
namespace {

constexpr std::int64_t mostListBytes = std::int64_t{1024} * 1024;
constexpr std::int64_t footerBytes = 12;

Result<std::string> readText(ImageFile& file, std::int64_t at, std::int64_t count) {
    std::string bytes(static_cast<std::size_t>(count), '\0');
    if (auto done = file.readBytes(at, count, reinterpret_cast<std::byte*>(bytes.data())); !done) {
        return tl::unexpected(done.error());
    }
    return bytes;
}

Result<DiscLayout> readLayout(ImageFile& file) {
    const std::int64_t size = file.size();
    const auto last = size >= footerBytes && !file.sound() ? readText(file, size - footerBytes, footerBytes) : std::string();
    const auto at = last ? nrgListsAt(*last, size) : std::nullopt;
    if (!at || size - *at > mostListBytes) {
        return failure(Fault::invalid, "it does not end as an NRG image does.");
    }
    const auto lists = readText(file, *at, size - *at);
    if (!lists) {
        return tl::unexpected(lists.error());
    }
    const auto footer = parseNrgLists(*lists);
    if (!footer) {
        return tl::unexpected(footer.error());
    }
    const auto plan = planNrg(*footer, *at);
    if (!plan) {
        return tl::unexpected(plan.error());
    }
    return layOut(*plan);
}

}  // namespace

Result<std::shared_ptr<Medium>> openNrgImage(const std::filesystem::path& path) {
    auto file = openImageFile(path, ByteOrder::little);
    if (!file) {
        return tl::unexpected(file.error());
    }
    auto layout = readLayout(**file);
    if (!layout) {
        return refuseImage(path, layout.error());
    }
    return std::make_shared<ImageMedium>(std::move(*layout), std::vector{*file});
}

}  // namespace tessarel::host
