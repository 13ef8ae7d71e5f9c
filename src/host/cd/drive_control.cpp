#include "host/cd/drive_control.h"

#include <cdio/cdio.h>
#include <cdio/mmc_ll_cmds.h>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <utility>

namespace tessarel::host {
namespace {

constexpr unsigned commandTimeoutMs = 10'000;

/// An open file that closes itself.
class DeviceFile {
public:
    DeviceFile() = default;
    DeviceFile(const std::string& path, int extraFlags)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | extraFlags)) {}
    DeviceFile(DeviceFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    DeviceFile& operator=(DeviceFile&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~DeviceFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }

private:
    int descriptor_ = -1;
};

bool isMounted(const std::string& device) {
    std::ifstream mounts("/proc/self/mounts");
    for (std::string line; std::getline(mounts, line);) {
        if (line.compare(0, device.size() + 1, device + ' ') == 0) {
            return true;
        }
    }
    return false;
}

platform::CdOpenFault faultOf(int error) {
    switch (error) {
        case EBUSY:
            return platform::CdOpenFault::inUse;
        case EACCES:
        case EPERM:
            return platform::CdOpenFault::cannotPlay;
        default:
            return platform::CdOpenFault::noDriver;
    }
}

class LinuxDriveControl : public DriveControl {
public:
    explicit LinuxDriveControl(std::string device) : device_(std::move(device)) {}

    std::int64_t discMark() override {
        if (!file_) {
            file_ = DeviceFile(device_, 0);
        }
        if (!file_ || ::ioctl(file_.get(), CDROM_DRIVE_STATUS, CDSL_CURRENT) != CDS_DISC_OK) {
            return 0;
        }
        if (::ioctl(file_.get(), CDROM_MEDIA_CHANGED, CDSL_CURRENT) == 1) {
            ++changes_;
        }
        return changes_ + lastChange();
    }

    std::optional<platform::CdOpenFault> claim(bool exclusive) override {
        exclusive_ = exclusive;
        DeviceFile file(device_, exclusive ? O_EXCL : 0);
        if (!file && errno == EBUSY && isMounted(device_)) {
            file = DeviceFile(device_, 0);  // the desktop has mounted the data part; nobody plays the disc
        }
        if (!file) {
            return faultOf(errno);
        }
        claim_ = std::move(file);
        return std::nullopt;
    }

    void unclaim() override { claim_ = DeviceFile(); }

    void eject() override {
        const bool claimed = static_cast<bool>(claim_);
        claim_ = DeviceFile();  // the kernel opens the tray for a sole user only
        file_ = DeviceFile();
        if (!ejectAsSoleUser()) {
            ejectByCommand();
        }
        if (claimed) {
            claim(exclusive_);
        }
    }

private:
    /// The change flag can be taken by another program that asks first; the kernel's own time of the last change can't.
    std::int64_t lastChange() const {
#ifdef CDROM_TIMED_MEDIA_CHANGE
        cdrom_timed_media_change_info info{};
        if (::ioctl(file_.get(), CDROM_TIMED_MEDIA_CHANGE, &info) == 0) {
            return info.last_media_change;
        }
#endif
        return 0;
    }

    bool ejectAsSoleUser() const {
        const DeviceFile file(device_, 0);
        if (!file) {
            return false;
        }
        ::ioctl(file.get(), CDROM_LOCKDOOR, 0);
        return ::ioctl(file.get(), CDROMEJECT) >= 0;
    }

    /// Works while a read is still going on too, but needs the right to write to the device.
    void ejectByCommand() const {
        if (CdIo_t* disc = cdio_open_am(device_.c_str(), DRIVER_DEVICE, "MMC_RDWR")) {
            mmc_prevent_allow_medium_removal(disc, false, false, commandTimeoutMs);
            mmc_start_stop_unit(disc, true, true, 0, commandTimeoutMs);
            cdio_destroy(disc);
        }
    }

    const std::string device_;
    DeviceFile file_;
    DeviceFile claim_;
    bool exclusive_ = false;
    std::int64_t changes_ = 1;
};

}  // namespace

std::unique_ptr<DriveControl> makeDriveControl(std::string device) {
    return std::make_unique<LinuxDriveControl>(std::move(device));
}

std::vector<std::string> opticalDevicesListed(const std::string& info) {
    constexpr std::string_view heading = "drive name:";
    std::vector<std::string> devices;
    std::istringstream lines(info);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, heading.size(), heading) == 0) {
            std::istringstream names(line.substr(heading.size()));
            for (std::string name; names >> name;) {
                devices.push_back("/dev/" + name);
            }
        }
    }
    std::sort(devices.begin(), devices.end());
    return devices;
}

std::vector<std::string> opticalDevices() {
    const std::ifstream file("/proc/sys/dev/cdrom/info");
    std::ostringstream text;
    text << file.rdbuf();
    return opticalDevicesListed(text.str());
}

}  // namespace tessarel::host
