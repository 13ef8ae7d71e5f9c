#pragma once
#include <fmt/format.h>

#include <filesystem>

#include "host/image/image_files.h"

namespace tessarel::host {

/// A reason becomes a sentence that names the image.
inline tl::unexpected<Error> refuseImage(const std::filesystem::path& image, const Error& reason) {
    return failure(reason.fault, fmt::format("\"{}\" can't be used: {}", shownName(image), reason.message));
}

}  // namespace tessarel::host
