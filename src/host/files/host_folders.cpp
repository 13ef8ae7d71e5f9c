#include "host/files/host_folders.h"

#include <dirent.h>

#include <cerrno>
#include <cmath>
#include <ctime>
#include <memory>
#include <numeric>

#include "base/text.h"

namespace tessarel::host {
namespace {

// Two changes within one tick of the file system's clock leave the same time stamp. Longer than any such tick.
constexpr double tickSeconds = 0.02;
// Reading a folder of this size again costs less than half a millisecond.
constexpr std::size_t smallFolder = 1000;
constexpr std::size_t mostFolders = 64;
constexpr std::size_t mostNames = 400'000;

std::string joined(const std::string& root, std::span<const std::string> parts) {
    std::string path = root;
    for (const auto& part : parts) {
        path.append("/").append(part);
    }
    return path.empty() ? "/" : path;
}

std::string folded(std::string_view bytes) { return text::lower(shownName(bytes)); }

void keepFirst(std::unordered_map<std::string, std::string>& names, std::string_view name) {
    auto& kept = names[folded(name)];
    if (kept.empty() || name < kept) {
        kept = name;
    }
}

}  // namespace

std::string shownName(std::string_view bytes) { return text::isValidUtf8(bytes) ? std::string(bytes) : text::decode(bytes); }

tl::expected<Located, int> HostFolders::find(const std::string& root, std::span<const std::string> parts) {
    Located at{joined(root, parts), {}};
    if (::stat(at.path.c_str(), &at.status) == 0) {
        return at;
    }
    const int code = errno;
    if (parts.empty() || (code != ENOENT && code != ENOTDIR)) {
        return tl::unexpected(code);
    }
    auto folder = find(root, parts.first(parts.size() - 1));
    if (!folder) {
        return folder;
    }
    if (!folder->isFolder()) {
        return tl::unexpected(ENOTDIR);
    }
    const auto name = lookUp(*folder, parts.back());
    if (!name) {
        return tl::unexpected(ENOENT);
    }
    at.path = (folder->path == "/" ? "" : folder->path) + "/" + *name;
    return ::stat(at.path.c_str(), &at.status) == 0 ? tl::expected<Located, int>(at) : tl::unexpected(errno);
}

std::string HostFolders::spelled(const std::string& root, std::span<const std::string> parts) {
    for (std::size_t known = parts.size();; --known) {
        const auto at = find(root, parts.first(known));
        if (at || known == 0) {
            const auto base = at ? at->path : joined(root, {});
            return known == parts.size() ? base : joined(base == "/" ? "" : base, parts.subspan(known));
        }
    }
}

bool HostFolders::same(const Stamp& a, const Stamp& b) {
    return a.device == b.device && a.inode == b.inode && a.changed.tv_sec == b.changed.tv_sec &&
           a.changed.tv_nsec == b.changed.tv_nsec;
}

bool HostFolders::isSettled(const timespec& changed) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const double age =
        static_cast<double>(now.tv_sec - changed.tv_sec) + static_cast<double>(now.tv_nsec - changed.tv_nsec) * 1e-9;
    return std::abs(age) > tickSeconds;
}

// An unsettled index of a large folder is trusted for that moment: to read the folder for each look would take seconds.
bool HostFolders::isCurrent(const Index& index, const struct stat& status) {
    if (!same(index.stamp, stampOf(status))) {
        return false;
    }
    return index.settled || (index.names.size() >= smallFolder && !isSettled(index.stamp.changed));
}

std::optional<std::string> HostFolders::lookUp(const Located& folder, std::string_view name) {
    const auto known = indices_.find(folder.path);
    const auto& index = known != indices_.end() && isCurrent(known->second, folder.status) ? known->second : read(folder);
    const auto found = index.names.find(folded(name));
    return found != index.names.end() ? std::optional(found->second) : std::nullopt;
}

HostFolders::Index& HostFolders::read(const Located& folder) {
    makeRoom();
    auto& index = indices_[folder.path];
    index = {stampOf(folder.status), isSettled(folder.status.st_mtim), {}};
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.path.c_str()), &::closedir);
    if (stream) {
        // One stream is read by one thread only.
        while (const dirent* entry = ::readdir(stream.get())) {  // NOLINT(concurrency-mt-unsafe)
            keepFirst(index.names, entry->d_name);
        }
    }
    return index;
}

void HostFolders::makeRoom() {
    const auto names = std::accumulate(indices_.begin(), indices_.end(), std::size_t{0},
                                       [](std::size_t sum, const auto& each) { return sum + each.second.names.size(); });
    if (indices_.size() >= mostFolders || names > mostNames) {
        indices_.clear();
    }
}

bool HostFolders::knows(const std::string& folder) const {
    const auto known = indices_.find(folder);
    struct stat status {};
    return known != indices_.end() && ::stat(folder.c_str(), &status) == 0 && same(known->second.stamp, stampOf(status));
}

void HostFolders::added(const std::string& folder, std::string_view name) {
    const auto known = indices_.find(folder);
    struct stat status {};
    if (known == indices_.end() || ::stat(folder.c_str(), &status) != 0) {
        return;
    }
    known->second.stamp = stampOf(status);
    known->second.settled = false;
    keepFirst(known->second.names, name);
}

}  // namespace tessarel::host
