#pragma once
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"
#include "host/medium.h"

namespace tessarel::host {

/// A name in a folder of a disc.
struct DiscEntry {
    std::string name;
    int attributes = 0;  ///< of `platform::Attributes`: hidden, directory
    bool operator==(const DiscEntry&) const = default;
};

/// The file system of a data track. Paths are names as `list` gives them, from the root down.
class DiscVolume {
public:
    virtual ~DiscVolume() = default;
    virtual std::string label() const = 0;
    /// What lies in a folder, in the disc's own order.
    virtual Result<std::vector<DiscEntry>> list(std::span<const std::string> folder) const = 0;
    virtual Result<std::string> read(std::span<const std::string> file, std::size_t mostBytes) const = 0;
};

/// Reads the file system of the data track that begins at a frame address.
using OpenDiscVolume = std::function<Result<std::shared_ptr<DiscVolume>>(std::shared_ptr<Medium>, Frames trackStart)>;

/// The data track whose files a disc shows: the first track, or else the last. Nothing for any other disc.
std::optional<Frames> dataTrackOnShow(const platform::CdToc& toc);

/// The files of one disc: those of its data track, or one TRACKnn.CDA for each track of sound. A disc whose data track
/// can't be read shows its sound, if it has any. Names are found without regard to case, the exact one first.
class DiscFiles {
public:
    static Result<DiscFiles> open(std::shared_ptr<Medium> medium, const OpenDiscVolume& openVolume);

    std::string label() const { return volume_ ? volume_->label() : std::string(); }

    /// The entry that a path names; the root is a directory without a name. Nothing if there is none.
    std::optional<DiscEntry> find(std::span<const std::string> path) const;
    Result<std::vector<DiscEntry>> list(std::span<const std::string> folder) const;
    /// `name` is for errors. Tracks of sound are no files to read.
    Result<std::string> read(std::span<const std::string> file, std::string_view name) const;

private:
    std::optional<std::vector<std::string>> spelled(std::span<const std::string> path, DiscEntry* last) const;

    std::shared_ptr<DiscVolume> volume_;  // null on a disc of sound
    std::vector<DiscEntry> tracks_;
};

}  // namespace tessarel::host
