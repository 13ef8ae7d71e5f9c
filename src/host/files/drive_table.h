#pragma once
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/files/host_folders.h"
#include "host/medium.h"
#include "platform/drives.h"

namespace tessarel::host {

/// Where a drive table gets its discs from.
struct DriveSources {
    /// The machine's optical drives, in their order. Asked once.
    std::function<std::vector<std::unique_ptr<DiscDrive>>()> opticalDrives;
    /// Opens a disc image. An error names the file and what is wrong with it.
    std::function<Result<std::shared_ptr<Medium>>(const std::filesystem::path&)> openImage;
};

/// The drive letters: C: a folder of the home, D: and on the optical drives, Z: the root of the real file system. There is
/// always a D:, an empty CD-ROM drive for images if the machine has none. Images lie in their letters until the program ends.
class DriveTable : public platform::Drives, public DiscDrives {
public:
    DriveTable(const std::filesystem::path& driveC, DriveSources sources);
    ~DriveTable() override;

    platform::DriveType type(char letter) const override;
    Result<void> insertImage(char letter, std::string_view path) override;
    DiscDrive* drive(char letter) override;

    /// The real folder that is the root of a fixed drive, without a slash at its end, so empty for Z:. Nothing for others.
    std::optional<std::string> folder(char letter) const;

private:
    class Slot;

    Result<std::filesystem::path> realImagePath(std::string_view path);

    std::string driveC_;
    DriveSources sources_;
    HostFolders folders_;
    std::map<char, std::unique_ptr<Slot>> slots_;
};

}  // namespace tessarel::host
