#pragma once
#include <filesystem>
#include <memory>

#include "base/result.h"
#include "host/medium.h"

namespace tessarel::host {

/// Whether a file's extension is one of a disc image's: .cue .toc .nrg .iso .bin .img, in any case.
bool looksLikeDiscImage(const std::filesystem::path& file);

/// Opens a disc image by its extension. A .bin or .img is opened through the cue sheet of its name beside it. An image comes
/// out right or not at all: the error is a sentence that names the file and what is wrong with it.
Result<std::shared_ptr<Medium>> openDiscImage(const std::filesystem::path& file);

}  // namespace tessarel::host
