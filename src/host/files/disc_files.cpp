#include "host/files/disc_files.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "host/files/whole_file.h"
#include "platform/file_system.h"

namespace tessarel::host {
namespace {

std::vector<DiscEntry> trackFiles(const platform::CdToc& toc) {
    std::vector<DiscEntry> files;
    for (const auto& track : toc.tracks) {
        if (track.audio) {
            files.push_back({fmt::format("TRACK{:02}.CDA", track.number), platform::attributeNone});
        }
    }
    return files;
}

const DiscEntry* match(const std::vector<DiscEntry>& entries, const std::string& name) {
    auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& each) { return each.name == name; });
    if (found == entries.end()) {
        found = std::find_if(entries.begin(), entries.end(),
                             [&](const auto& each) { return text::sameIgnoringCase(each.name, name); });
    }
    return found != entries.end() ? &*found : nullptr;
}

}  // namespace

std::optional<Frames> dataTrackOnShow(const platform::CdToc& toc) {
    if (toc.tracks.empty()) {
        return std::nullopt;
    }
    for (const auto* track : {&toc.tracks.front(), &toc.tracks.back()}) {
        if (!track->audio) {
            return track->start;
        }
    }
    return std::nullopt;
}

Result<DiscFiles> DiscFiles::open(std::shared_ptr<Medium> medium, const OpenDiscVolume& openVolume) {
    DiscFiles files;
    files.tracks_ = trackFiles(medium->toc());
    const auto start = dataTrackOnShow(medium->toc());
    if (!start) {
        return files;
    }
    auto volume = openVolume(std::move(medium), *start);
    if (!volume && files.tracks_.empty()) {
        return tl::unexpected(volume.error());
    }
    files.volume_ = volume ? std::move(*volume) : nullptr;
    return files;
}

Result<std::vector<DiscEntry>> DiscFiles::list(std::span<const std::string> folder) const {
    DiscEntry entry;
    const auto path = spelled(folder, &entry);
    if (!path || (entry.attributes & platform::attributeDirectory) == 0) {
        return std::vector<DiscEntry>();
    }
    return volume_ ? volume_->list(*path) : tracks_;
}

std::optional<DiscEntry> DiscFiles::find(std::span<const std::string> path) const {
    DiscEntry entry;
    return spelled(path, &entry) ? std::optional(entry) : std::nullopt;
}

Result<std::string> DiscFiles::read(std::span<const std::string> file, std::string_view name) const {
    DiscEntry entry;
    const auto path = spelled(file, &entry);
    if (!path) {
        return failure(Fault::notFound, fmt::format("{} can't be read: it does not exist.", name));
    }
    if ((entry.attributes & platform::attributeDirectory) != 0) {
        return failure(Fault::invalid, fmt::format("{} is a folder, not a plain file.", name));
    }
    if (!volume_) {
        return failure(Fault::unsupported, fmt::format("{} is a track of sound, not a file that can be read.", name));
    }
    return volume_->read(*path, largestFile);
}

std::optional<std::vector<std::string>> DiscFiles::spelled(std::span<const std::string> path, DiscEntry* last) const {
    std::vector<std::string> out;
    *last = {{}, platform::attributeDirectory};
    for (const auto& name : path) {
        if ((last->attributes & platform::attributeDirectory) == 0) {
            return std::nullopt;
        }
        const auto entries = volume_ ? volume_->list(out) : Result<std::vector<DiscEntry>>(tracks_);
        const auto* found = entries ? match(*entries, name) : nullptr;
        if (!found) {
            return std::nullopt;
        }
        *last = *found;
        out.push_back(found->name);
    }
    return out;
}

}  // namespace tessarel::host
