#include "host/files/drive_table.h"

#include <fmt/format.h>

#include <mutex>

#include "host/files/program_path.h"
#include "host/files/system_error.h"

namespace tessarel::host {
namespace {

constexpr char homeLetter = 'C';
constexpr char rootLetter = 'Z';
constexpr char firstDiscLetter = 'D';

}  // namespace

/// A letter's CD-ROM drive: a real one or none, and over it perhaps an image.
class DriveTable::Slot : public DiscDrive {
public:
    explicit Slot(std::unique_ptr<DiscDrive> real) : real_(std::move(real)) {}

    void insert(std::shared_ptr<Medium> image) {
        const std::lock_guard lock(mutex_);
        image_ = std::move(image);
    }

    std::shared_ptr<Medium> medium() override {
        if (auto image = inserted()) {
            return image;
        }
        return real_ ? real_->medium() : nullptr;
    }

    std::optional<platform::CdOpenFault> acquire(bool shareable) override {
        if (holders_ > 0 && !(shareable && shared_)) {
            return platform::CdOpenFault::inUse;
        }
        if (holders_ == 0 && real_ && !inserted()) {
            if (const auto fault = real_->acquire(shareable)) {
                return fault;
            }
            realHeld_ = true;
        }
        ++holders_;
        shared_ = shareable;
        return std::nullopt;
    }

    void release() override {
        if (holders_ == 0 || --holders_ > 0) {
            return;
        }
        if (std::exchange(realHeld_, false)) {
            real_->release();
        }
    }

    void eject() override {
        if (inserted()) {
            insert(nullptr);
        } else if (real_) {
            real_->eject();
        }
    }

private:
    std::shared_ptr<Medium> inserted() {
        const std::lock_guard lock(mutex_);
        return image_;
    }

    std::unique_ptr<DiscDrive> real_;
    std::mutex mutex_;  // a reading thread may ask for the medium while the program changes it
    std::shared_ptr<Medium> image_;
    int holders_ = 0;
    bool shared_ = false;
    bool realHeld_ = false;
};

DriveTable::DriveTable(const std::filesystem::path& driveC, DriveSources sources)
    : driveC_(driveC.lexically_normal().string()), sources_(std::move(sources)) {
    while (driveC_.ends_with('/')) {
        driveC_.pop_back();
    }
    char letter = firstDiscLetter;
    for (auto& real : sources_.opticalDrives ? sources_.opticalDrives() : std::vector<std::unique_ptr<DiscDrive>>()) {
        if (letter < rootLetter) {
            slots_[letter++] = std::make_unique<Slot>(std::move(real));
        }
    }
    if (slots_.empty()) {
        slots_[firstDiscLetter] = std::make_unique<Slot>(nullptr);
    }
}

DriveTable::~DriveTable() = default;

platform::DriveType DriveTable::type(char letter) const {
    const auto capital = driveLetter(letter);
    if (!capital) {
        return platform::DriveType::noRoot;
    }
    if (slots_.contains(*capital)) {
        return platform::DriveType::cdRom;
    }
    return folder(*capital) ? platform::DriveType::fixed : platform::DriveType::noRoot;
}

std::optional<std::string> DriveTable::folder(char letter) const {
    switch (driveLetter(letter).value_or('\0')) {
        case homeLetter:
            return driveC_;
        case rootLetter:
            return std::string();
        default:
            return std::nullopt;
    }
}

DiscDrive* DriveTable::drive(char letter) {
    const auto slot = slots_.find(driveLetter(letter).value_or('\0'));
    return slot != slots_.end() ? slot->second.get() : nullptr;
}

Result<void> DriveTable::insertImage(char letter, std::string_view path) {
    const auto capital = driveLetter(letter);
    if (!capital || folder(*capital)) {
        return failure(Fault::invalid, fmt::format("{} can't be put into {}: because it is no CD-ROM drive.", path, letter));
    }
    const auto real = realImagePath(path);
    if (!real) {
        return tl::unexpected(real.error());
    }
    auto image = sources_.openImage(*real);
    if (!image) {
        return tl::unexpected(image.error());
    }
    auto& slot = slots_[*capital];
    if (!slot) {
        slot = std::make_unique<Slot>(nullptr);
    }
    slot->insert(std::move(*image));
    return {};
}

Result<std::filesystem::path> DriveTable::realImagePath(std::string_view path) {
    if (path.starts_with('/')) {
        return std::filesystem::path(path);
    }
    const auto parsed = hasDriveRoot(path) ? CurrentDirectories().absolute(path) : std::nullopt;
    if (!parsed) {
        return failure(Fault::notFound, fmt::format("{} is not the full path of a disc image.", path));
    }
    const auto root = folder(parsed->drive);
    if (!root) {
        return drive(parsed->drive) ? failure(Fault::unsupported,
                                              fmt::format("{} lies on a disc; copy the image to a folder to insert it.", path))
                                    : failure(Fault::notFound, fmt::format("{}: there is no drive {}:.", path, parsed->drive));
    }
    const auto found = folders_.find(*root, parsed->parts);
    if (!found) {
        return systemError(found.error(), path, "inserted");
    }
    return std::filesystem::path(found->path);
}

}  // namespace tessarel::host
