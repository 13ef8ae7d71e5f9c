#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "base/result.h"

namespace tessarel::platform {

/// The kinds of a drive, by the numbers that the program keeps in `driveTypes`.
enum class DriveType { unknown = 0, noRoot = 1, removable = 2, fixed = 3, remote = 4, cdRom = 5, ramDisk = 6 };

/// The machine's drives by letter, and disc images put into them.
class Drives {
public:
    virtual ~Drives() = default;

    /// Kind of the drive under a letter, of either case; `noRoot` for a letter without a drive.
    virtual DriveType type(char letter) const = 0;

    /// Puts an image (a path of the program's own, or a real one) into the drive of a letter, which becomes a CD-ROM
    /// drive if there was none. It hides the drive's own disc until it is taken out. An image that can't be read right is
    /// refused with a reason that names the file and what is wrong, and the drive keeps what it held.
    virtual Result<void> insertImage(char letter, std::string_view path) = 0;
};

}  // namespace tessarel::platform
