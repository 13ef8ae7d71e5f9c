#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/scheduler.h"

namespace tessarel::platform {

/// Bits of a directory look-up; without any, plain files only.
enum Attributes : int {
    attributeNone = 0,
    attributeHidden = 2,
    attributeSystem = 4,
    attributeVolume = 8,
    attributeDirectory = 16,
};

/// Files as the program sees them: drive letters, back-slashes, names without regard to case. A relative path starts in
/// the current directory, and started programs begin there too.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Moves the current drive and directory. A folder that does not exist leaves them as they were and gives false.
    virtual bool changeDirectory(std::string_view path) = 0;
    virtual std::string currentDirectory() const = 0;

    /// The names that match a path whose last part may hold `*` and `?`, in the volume's own stable order: plain files,
    /// and those of the kinds that `attributes` adds. With `attributeVolume` alone, the label if there is one. A path that
    /// ends in a back-slash matches all in it. No match is an empty list; an unready drive is `Fault::notReady`.
    virtual Result<std::vector<std::string>> list(std::string_view pattern, int attributes) const = 0;

    /// The bytes of a file. Files beyond 64 MB are refused.
    virtual Result<std::string> read(std::string_view path) const = 0;

    /// Replaces a file whole: after a failure the old one stands as it was.
    virtual Result<void> write(std::string_view path, std::string_view bytes) = 0;

    virtual Result<void> remove(std::string_view path) = 0;

    /// When a file was last written; nothing for one that does not exist.
    virtual std::optional<WallTime> modified(std::string_view path) const = 0;

    /// Whether a plain, hidden or system file of this exact name exists. Patterns are not served.
    virtual bool exists(std::string_view path) const = 0;
    virtual bool directoryExists(std::string_view path) const = 0;

    /// The first name that `list` gives, empty for none and for an unready drive.
    std::string first(std::string_view pattern, int attributes = attributeNone) const {
        const auto names = list(pattern, attributes);
        return names && !names->empty() ? names->front() : std::string();
    }
};

}  // namespace tessarel::platform
