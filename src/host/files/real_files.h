#pragma once
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/files/disc_files.h"
#include "host/files/drive_table.h"
#include "host/files/host_folders.h"
#include "host/files/program_path.h"
#include "platform/file_system.h"

namespace tessarel::host {

/// The program's files on the real drives and discs. Names, in both directions, are UTF-8; a name on disk that is not is
/// shown as Windows-1252 and found again by that text. Host folders list sorted without regard to case, names that begin
/// with a dot count as hidden, and what is neither plain file nor folder is passed over. To be used from one thread.
class RealFiles : public platform::FileSystem {
public:
    /// The drives must outlive this. Starts in `C:\`.
    RealFiles(DriveTable& drives, OpenDiscVolume openVolume) : drives_(drives), openVolume_(std::move(openVolume)) {}

    bool changeDirectory(std::string_view path) override;
    std::string currentDirectory() const override { return current_.current().text(); }
    Result<std::vector<std::string>> list(std::string_view pattern, int attributes) const override;
    Result<std::string> read(std::string_view path) const override;
    Result<void> write(std::string_view path, std::string_view bytes) override;
    Result<void> remove(std::string_view path) override;
    std::optional<platform::WallTime> modified(std::string_view path) const override;
    bool exists(std::string_view path) const override;
    bool directoryExists(std::string_view path) const override;

    /// Where a path lies on the real file system, spelled as on disk as far as it exists. Empty for a place that has none:
    /// on a disc, or on a drive that is not there.
    std::filesystem::path realPath(std::string_view path) const;

    /// The program's name for a real path: on C: when it lies in the home's drive folder, else on Z:.
    std::string programPath(const std::filesystem::path& real) const;

private:
    struct Place;

    std::optional<Place> placeOf(std::string_view path) const;
    Result<Place> placeToUse(std::string_view path, std::string_view done) const;
    tl::expected<Located, int> locate(const Place& place) const;
    tl::expected<std::filesystem::path, int> targetOf(const Place& place) const;
    Result<const DiscFiles*> disc(char letter) const;
    Result<std::vector<DiscEntry>> entries(const Place& folder) const;
    std::optional<DiscEntry> entry(const Place& place) const;
    Result<std::vector<std::string>> label(char letter) const;
    std::optional<Located> plainFile(std::string_view path) const;

    struct OpenedDisc {
        std::weak_ptr<Medium> medium;
        Result<DiscFiles> files;
    };

    DriveTable& drives_;
    OpenDiscVolume openVolume_;
    CurrentDirectories current_;
    mutable HostFolders folders_;
    mutable std::map<char, OpenedDisc> discs_;
};

}  // namespace tessarel::host
