#pragma once
#include <sys/stat.h>

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <unordered_map>

namespace tessarel::host {

/// A file or folder of the real file system, links followed.
struct Located {
    std::string path;
    struct stat status {};

    bool isFile() const { return S_ISREG(status.st_mode); }
    bool isFolder() const { return S_ISDIR(status.st_mode); }
};

/// Finds names on the real file system without regard to case. A name that is there as it is spelled costs one system
/// call; for any other, the folder's names are remembered, and read again once the folder has changed.
class HostFolders {
public:
    /// Looks for `parts` below `root`, which has no slash at its end (the root of the file system is empty). Of names that
    /// differ only in case the exact one is taken, else the first in byte order. The error is an errno value.
    tl::expected<Located, int> find(const std::string& root, std::span<const std::string> parts);

    /// The real path: as spelled on disk as far as it exists, and as given from there on.
    std::string spelled(const std::string& root, std::span<const std::string> parts);

    /// Whether a folder's names are remembered and no change of it has been seen since.
    bool knows(const std::string& folder) const;
    /// To be called when a file was written into a folder that was known just before, so that it stays known.
    void added(const std::string& folder, std::string_view name);

private:
    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        timespec changed{};
    };
    struct Index {
        Stamp stamp;
        bool settled = false;  // read when the folder's time stamp could no longer hide a further change
        std::unordered_map<std::string, std::string> names;
    };

    static Stamp stampOf(const struct stat& status) { return {status.st_dev, status.st_ino, status.st_mtim}; }
    static bool same(const Stamp& a, const Stamp& b);
    static bool isSettled(const timespec& changed);
    static bool isCurrent(const Index& index, const struct stat& status);
    std::optional<std::string> lookUp(const Located& folder, std::string_view name);
    Index& read(const Located& folder);
    void makeRoom();

    std::map<std::string, Index, std::less<>> indices_;
};

/// A name on disk as text: UTF-8, of whatever bytes it is made.
std::string shownName(std::string_view bytes);

}  // namespace tessarel::host
