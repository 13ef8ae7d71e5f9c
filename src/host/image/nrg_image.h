#pragma once
#include <filesystem>
#include <memory>

#include "base/result.h"
#include "host/medium.h"

namespace tessarel::host {

/// Opens an NRG image.
Result<std::shared_ptr<Medium>> openNrgImage(const std::filesystem::path& path);

}  // namespace tessarel::host
