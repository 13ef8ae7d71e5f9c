#pragma once
#include <filesystem>
#include <memory>

#include "host/image/image_files.h"

namespace tessarel::host {

/// Opens a file that begins as WAVE, AIFF or FLAC; `bytes` is the same file, for a look at its own lengths.
Result<std::shared_ptr<ImageFile>> openSoundImageFile(const std::filesystem::path& path, ImageFile& bytes);

}  // namespace tessarel::host
