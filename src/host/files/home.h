#pragma once
#include <filesystem>

#include "base/result.h"

namespace tessarel::host {

/// Makes the folder drive_c of a home that has none: drive C: with its Windows and system directories, the data directory
/// with all settings, help texts and sound cues, and the small scripts that stand for programs of the desktop. It comes into
/// being whole or not at all; one that exists is never touched. `dataFiles` is the folder of the program's own data: home/
/// (required), cues/ and help/ (as far as they are there).
Result<void> provisionHome(const std::filesystem::path& home, const std::filesystem::path& dataFiles);

/// The folder of drive C: in a home.
std::filesystem::path driveCOf(const std::filesystem::path& home);

}  // namespace tessarel::host
