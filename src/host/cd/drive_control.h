#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/cd_player.h"

namespace tessarel::host {

/// What is asked of a drive's tray and lock, apart from reading its disc.
class DriveControl {
public:
    virtual ~DriveControl() = default;

    /// 0 when no disc lies ready; else a number that is another one after each change of discs. Reads nothing off the disc.
    virtual std::int64_t discMark() = 0;
    /// Checks that the drive can be used, and keeps other programs from it when `exclusive`.
    virtual std::optional<platform::CdOpenFault> claim(bool exclusive) = 0;
    virtual void unclaim() = 0;
    virtual void eject() = 0;
};

/// The control of a device file such as /dev/sr0. The file need not exist.
std::unique_ptr<DriveControl> makeDriveControl(std::string device);

/// The machine's CD-ROM drives, as device paths in the order of their names.
std::vector<std::string> opticalDevices();
/// The drives that the text of /proc/sys/dev/cdrom/info lists.
std::vector<std::string> opticalDevicesListed(const std::string& info);

}  // namespace tessarel::host
