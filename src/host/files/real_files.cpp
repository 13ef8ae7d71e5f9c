#include "host/files/real_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "base/text.h"
#include "host/files/system_error.h"
#include "host/files/whole_file.h"

namespace tessarel::host {

using platform::attributeDirectory;
using platform::attributeHidden;
using platform::attributeSystem;
using platform::attributeVolume;

/// A program path and what its drive is.
struct RealFiles::Place : ProgramPath {
    std::optional<std::string> root;  // the real folder of a fixed drive; nothing for a CD-ROM drive

    Place parent() const {
        Place up = *this;
        if (!up.parts.empty()) {
            up.parts.pop_back();
        }
        return up;
    }
};

namespace {

std::optional<int> attributesOf(std::string_view name, mode_t mode) {
    const int hidden = name.starts_with('.') ? attributeHidden : 0;
    if (S_ISDIR(mode)) {
        return hidden | attributeDirectory;
    }
    return S_ISREG(mode) ? std::optional(hidden) : std::nullopt;
}

std::optional<int> attributesOf(int folder, const dirent& entry) {
    const std::string_view name = entry.d_name;
    // A name with a back-slash in it can't be told apart from a path.
    if (name == "." || name == ".." || name.find('\\') != std::string_view::npos) {
        return std::nullopt;
    }
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return attributesOf(name, DTTOIF(entry.d_type));
    }
    struct stat status {};
    return ::fstatat(folder, entry.d_name, &status, 0) == 0 ? attributesOf(name, status.st_mode) : std::nullopt;
}

bool isWanted(const DiscEntry& entry, int attributes) {
    return (entry.attributes & ~attributes & (attributeHidden | attributeSystem | attributeDirectory)) == 0;
}

Result<std::vector<DiscEntry>> namesIn(const std::string& folder, std::string_view shown) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), &::closedir);
    if (!stream) {
        return errno == ENOTDIR ? Result<std::vector<DiscEntry>>() : systemError(errno, shown, "listed");
    }
    std::vector<std::pair<std::string, DiscEntry>> sorted;
    // One stream is read by one thread only.
    while (const dirent* entry = ::readdir(stream.get())) {  // NOLINT(concurrency-mt-unsafe)
        if (const auto attributes = attributesOf(::dirfd(stream.get()), *entry)) {
            const auto name = shownName(entry->d_name);
            sorted.emplace_back(text::lower(name), DiscEntry{name, *attributes});
        }
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return std::tie(a.first, a.second.name) < std::tie(b.first, b.second.name); });
    std::vector<DiscEntry> entries;
    entries.reserve(sorted.size());
    for (auto& each : sorted) {
        entries.push_back(std::move(each.second));
    }
    return entries;
}

std::string lastName(const std::string& realPath) { return shownName(realPath.substr(realPath.rfind('/') + 1)); }

platform::WallTime wallTime(const timespec& time) {
    std::tm local{};
    ::localtime_r(&time.tv_sec, &local);
    const std::chrono::seconds sinceMidnight(local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            sinceMidnight + platform::Milliseconds(time.tv_nsec / 1'000'000)};
}

bool hasWildcard(std::string_view name) { return name.find_first_of("*?") != std::string_view::npos; }

}  // namespace

std::optional<RealFiles::Place> RealFiles::placeOf(std::string_view path) const {
    auto parsed = current_.absolute(path);
    if (!parsed) {
        return std::nullopt;
    }
    auto root = drives_.folder(parsed->drive);
    if (!root && !drives_.drive(parsed->drive)) {
        return std::nullopt;
    }
    return Place{std::move(*parsed), std::move(root)};
}

Result<RealFiles::Place> RealFiles::placeToUse(std::string_view path, std::string_view done) const {
    auto place = placeOf(path);
    return place ? Result<Place>(std::move(*place)) : systemError(ENOENT, path, done);
}

tl::expected<Located, int> RealFiles::locate(const Place& place) const {
    auto at = folders_.find(*place.root, place.parts);
    if (at && place.namesFolder && !at->isFolder()) {
        return tl::unexpected(ENOTDIR);
    }
    return at;
}

Result<const DiscFiles*> RealFiles::disc(char letter) const {
    const auto medium = drives_.drive(letter)->medium();
    if (!medium) {
        discs_.erase(letter);
        return failure(Fault::notReady, fmt::format("There is no disc in drive {}:.", letter));
    }
    auto known = discs_.find(letter);
    if (known == discs_.end() || known->second.medium.lock() != medium) {
        known = discs_.insert_or_assign(letter, OpenedDisc{medium, DiscFiles::open(medium, openVolume_)}).first;
    }
    const auto& files = known->second.files;
    return files ? Result<const DiscFiles*>(&*files) : tl::unexpected(files.error());
}

std::optional<DiscEntry> RealFiles::entry(const Place& place) const {
    std::optional<DiscEntry> found;
    if (!place.root) {
        const auto files = disc(place.drive);
        found = files ? (*files)->find(place.parts) : std::nullopt;
    } else if (const auto at = locate(place)) {
        const auto name = lastName(at->path);
        const auto attributes = attributesOf(name, at->status.st_mode);
        found = attributes ? std::optional(DiscEntry{name, *attributes}) : std::nullopt;
    }
    const bool folder = found && (found->attributes & attributeDirectory) != 0;
    return place.namesFolder && !folder ? std::nullopt : found;
}

Result<std::vector<DiscEntry>> RealFiles::entries(const Place& folder) const {
    if (!folder.root) {
        const auto files = disc(folder.drive);
        return files ? (*files)->list(folder.parts) : tl::unexpected(files.error());
    }
    const auto at = folders_.find(*folder.root, folder.parts);
    if (!at) {
        return faultOf(at.error()) == Fault::notFound ? Result<std::vector<DiscEntry>>()
                                                      : systemError(at.error(), folder.text(), "listed");
    }
    return namesIn(at->path, folder.text());
}

Result<std::vector<std::string>> RealFiles::label(char letter) const {
    std::vector<std::string> names;
    if (drives_.folder(letter)) {
        return names;
    }
    const auto files = disc(letter);
    if (!files) {
        return tl::unexpected(files.error());
    }
    if (auto text = (*files)->label(); !text.empty()) {
        names.push_back(std::move(text));
    }
    return names;
}

Result<std::vector<std::string>> RealFiles::list(std::string_view pattern, int attributes) const {
    const auto place = placeToUse(pattern, "listed");
    if (!place) {
        return tl::unexpected(place.error());
    }
    if (attributes == attributeVolume) {
        return label(place->drive);
    }
    const bool all = place->namesFolder || pattern.empty() || pattern.ends_with(':');
    if (!all && place->root && !hasWildcard(place->parts.back())) {
        const auto found = entry(*place);
        return found && isWanted(*found, attributes) ? std::vector{found->name} : std::vector<std::string>();
    }
    const auto in = entries(all ? *place : place->parent());
    if (!in) {
        return tl::unexpected(in.error());
    }
    const std::string wanted = all ? "*" : place->parts.back();
    std::vector<std::string> names;
    for (const auto& each : *in) {
        if (isWanted(each, attributes) && text::matchesPattern(each.name, wanted)) {
            names.push_back(each.name);
        }
    }
    return names;
}

bool RealFiles::changeDirectory(std::string_view path) {
    auto place = placeOf(path);
    if (place && path.size() == 2 && path[1] == ':' && !directoryExists(path)) {
        place->parts.clear();  // the directory that was current on this drive is gone
    }
    const auto found = place ? entry(*place) : std::nullopt;
    if (!found || (found->attributes & attributeDirectory) == 0) {
        return false;
    }
    current_.move(*place);
    return true;
}

Result<std::string> RealFiles::read(std::string_view path) const {
    const auto place = placeToUse(path, "read");
    if (!place) {
        return tl::unexpected(place.error());
    }
    const auto name = place->text();
    if (!place->root) {
        const auto files = disc(place->drive);
        return files ? (*files)->read(place->parts, name) : tl::unexpected(files.error());
    }
    const auto at = locate(*place);
    return at ? readWhole(at->path, name) : systemError(at.error(), name, "read");
}

Result<void> RealFiles::write(std::string_view path, std::string_view bytes) {
    const auto place = placeToUse(path, "written");
    if (!place) {
        return tl::unexpected(place.error());
    }
    const auto name = place->text();
    if (!place->root) {
        return failure(Fault::denied, fmt::format("{} can't be written: discs can only be read.", name));
    }
    if (place->namesFolder) {
        return systemError(EISDIR, name, "written");
    }
    const auto target = targetOf(*place);
    if (!target) {
        return systemError(target.error(), name, "written");
    }
    const auto folder = target->parent_path().string();
    const bool known = folders_.knows(folder);
    auto written = replaceWhole(*target, bytes, name);
    if (written && known) {
        folders_.added(folder, target->filename().string());
    }
    return written;
}

tl::expected<std::filesystem::path, int> RealFiles::targetOf(const Place& place) const {
    if (const auto old = folders_.find(*place.root, place.parts)) {
        return std::filesystem::path(old->path);
    } else if (faultOf(old.error()) != Fault::notFound) {
        return tl::unexpected(old.error());
    }
    const auto folder = folders_.find(*place.root, place.parent().parts);
    if (!folder || !folder->isFolder()) {
        return tl::unexpected(folder ? ENOTDIR : folder.error());
    }
    return std::filesystem::path(folder->path) / place.parts.back();
}

Result<void> RealFiles::remove(std::string_view path) {
    const auto place = placeToUse(path, "deleted");
    if (!place) {
        return tl::unexpected(place.error());
    }
    const auto name = place->text();
    if (!place->root) {
        return failure(Fault::denied, fmt::format("{} can't be deleted: discs can only be read.", name));
    }
    const auto at = locate(*place);
    if (!at) {
        return systemError(at.error(), name, "deleted");
    }
    if (!at->isFile()) {
        return failure(Fault::invalid, fmt::format("{} can't be deleted: it is no plain file.", name));
    }
    return ::unlink(at->path.c_str()) == 0 ? Result<void>() : systemError(errno, name, "deleted");
}

std::optional<Located> RealFiles::plainFile(std::string_view path) const {
    const auto place = placeOf(path);
    if (!place || !place->root) {
        return std::nullopt;
    }
    auto at = locate(*place);
    return at && at->isFile() ? std::optional(std::move(*at)) : std::nullopt;
}

std::optional<platform::WallTime> RealFiles::modified(std::string_view path) const {
    const auto at = plainFile(path);
    return at ? std::optional(wallTime(at->status.st_mtim)) : std::nullopt;
}

bool RealFiles::exists(std::string_view path) const {
    const auto place = placeOf(path);
    const auto found = place ? entry(*place) : std::nullopt;
    return found && (found->attributes & attributeDirectory) == 0;
}

bool RealFiles::directoryExists(std::string_view path) const {
    const auto place = placeOf(path);
    const auto found = place ? entry(*place) : std::nullopt;
    return found && (found->attributes & attributeDirectory) != 0;
}

std::filesystem::path RealFiles::realPath(std::string_view path) const {
    const auto place = placeOf(path);
    return place && place->root ? std::filesystem::path(folders_.spelled(*place->root, place->parts)) : std::filesystem::path();
}

std::string RealFiles::programPath(const std::filesystem::path& real) const {
    auto whole = std::filesystem::absolute(real).lexically_normal().string();
    while (whole.ends_with('/')) {
        whole.pop_back();
    }
    const auto home = *drives_.folder('C');
    const bool inHome = whole.starts_with(home) && (whole.size() == home.size() || whole[home.size()] == '/');
    auto rest = shownName(inHome ? std::string_view(whole).substr(home.size()) : std::string_view(whole));
    std::replace(rest.begin(), rest.end(), '/', '\\');
    return std::string(inHome ? "C:" : "Z:") + (rest.empty() ? "\\" : rest);
}

}  // namespace tessarel::host
