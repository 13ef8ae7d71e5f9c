#pragma once
#include <chrono>
#include <memory>
#include <string>

#include "host/cd/drive_control.h"
#include "host/cd/drive_share.h"
#include "host/medium.h"

namespace tessarel::host {

/// A CD-ROM drive of the machine. To be used from one thread; its media from several.
class PhysicalDrive : public DiscDrive {
public:
    /// `device` is a path such as /dev/sr0.
    explicit PhysicalDrive(const std::string& device);
    PhysicalDrive(std::string device, std::unique_ptr<DriveControl> control);
    ~PhysicalDrive() override;

    std::shared_ptr<Medium> medium() override;
    std::optional<platform::CdOpenFault> acquire(bool shareable) override;
    void release() override;
    void eject() override;

    const std::string& device() const { return device_; }

private:
    const std::string device_;
    std::unique_ptr<DriveControl> control_;
    DriveShare share_;
    std::shared_ptr<Medium> medium_;
    std::int64_t mark_ = 0;  ///< the disc that `medium_` was made for, or could not be
    std::chrono::steady_clock::time_point asked_{};
};

}  // namespace tessarel::host
