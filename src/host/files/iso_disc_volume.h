#pragma once
#include "host/files/disc_files.h"

namespace tessarel::host {

/// Opens the ISO 9660 file system of a data track.
Result<std::shared_ptr<DiscVolume>> openIsoDiscVolume(std::shared_ptr<Medium> medium, Frames trackStart);

}  // namespace tessarel::host
