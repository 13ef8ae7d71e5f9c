#include "host/cd/physical_drive.h"

#include <utility>

#include "host/cd/physical_medium.h"

namespace tessarel::host {
namespace {

/// The player asks for its disc many times in a row; the drive is bothered once in a while.
constexpr std::chrono::milliseconds askInterval{100};

}  // namespace

PhysicalDrive::PhysicalDrive(const std::string& device) : PhysicalDrive(device, makeDriveControl(device)) {}

PhysicalDrive::PhysicalDrive(std::string device, std::unique_ptr<DriveControl> control)
    : device_(std::move(device)), control_(std::move(control)) {}

PhysicalDrive::~PhysicalDrive() = default;

std::shared_ptr<Medium> PhysicalDrive::medium() {
    const auto now = std::chrono::steady_clock::now();
    if (asked_ != std::chrono::steady_clock::time_point{} && now - asked_ < askInterval) {
        return medium_;
    }
    const std::int64_t mark = control_->discMark();
    if (mark != mark_) {
        mark_ = mark;
        medium_.reset();
        if (mark != 0) {
            medium_ = PhysicalMedium::open(device_).value_or(nullptr);
        }
    }
    asked_ = std::chrono::steady_clock::now();
    return medium_;
}

std::optional<platform::CdOpenFault> PhysicalDrive::acquire(bool shareable) {
    if (const auto fault = share_.acquire(shareable)) {
        return fault;
    }
    if (const auto fault = control_->claim(!shareable)) {
        share_.release();
        return fault;
    }
    return std::nullopt;
}

void PhysicalDrive::release() {
    share_.release();
    if (!share_.held()) {
        control_->unclaim();
    }
}

void PhysicalDrive::eject() {
    medium_.reset();
    mark_ = 0;
    control_->eject();
    asked_ = {};
}

}  // namespace tessarel::host
