#pragma once
#include <memory>
#include <string>

#include "host/files/disc_files.h"
#include "host/medium.h"
#include "platform/drives.h"

namespace tessarel::app {

/// What is in a CD-ROM drive, in a few words for a person: "no disc", or the kind of the disc, its title and its length.
std::string describeDisc(const std::shared_ptr<host::Medium>& medium, const host::OpenDiscVolume& openVolume);

/// A line for each drive: letter, kind, and what is in it. `folderC` and the root of the real files are told as such.
std::string driveList(const platform::Drives& drives, host::DiscDrives& discs, const std::string& folderC,
                      const host::OpenDiscVolume& openVolume);

}  // namespace tessarel::app
