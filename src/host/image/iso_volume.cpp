#include "host/image/iso_volume.h"

#include <algorithm>
#include <limits>

#include "base/text.h"

namespace tessarel::host {
namespace {

constexpr int mostDescriptors = 32;
constexpr int mostContinuations = 8;
constexpr int deepestPath = 64;
constexpr std::uint32_t largestDirectory = 8 * 1024 * 1024;
constexpr std::uint64_t sectorSize = dataSectorBytes;

std::span<const std::byte> bytesOf(const std::string& s) { return {reinterpret_cast<const std::byte*>(s.data()), s.size()}; }

std::vector<std::string_view> pathParts(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const auto end = std::min(path.find_first_of("/\\"), path.size());
        if (end > 0) {
            parts.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

std::uint64_t sizeOf(const std::vector<IsoExtent>& extents) {
    std::uint64_t sum = 0;
    for (const IsoExtent& extent : extents) {
        sum += extent.bytes;
    }
    return sum;
}

/// The records "." and ".." of every directory.
bool isSelfOrParent(const IsoRecord& record) {
    return record.identifier.size() == 1 && (record.identifier[0] == '\0' || record.identifier[0] == '\1');
}

}  // namespace

Result<IsoVolume> IsoVolume::open(Medium& medium, Frames trackStart) {
    IsoVolume volume(medium);
    if (auto done = volume.readDescriptors(trackStart); !done) {
        return tl::unexpected(done.error());
    }
    return volume;
}

Result<void> IsoVolume::readDescriptors(Frames trackStart) {
    std::optional<IsoDescriptor> chosen;
    for (int d = 0; d < mostDescriptors; ++d) {
        std::vector<std::byte> sector(dataSectorBytes);
        if (auto done = medium_->readData(trackStart + volumeDescriptorSector + d, 1, sector.data()); !done) {
            return done;
        }
        auto found = parseVolumeDescriptor(sector);
        if (!found || found->kind == IsoDescriptor::Kind::terminator) {
            break;
        }
        const bool joliet = found->kind == IsoDescriptor::Kind::joliet;
        if (found->kind == IsoDescriptor::Kind::primary && !chosen) {
            chosen = std::move(found);
        } else if (joliet && chosen) {
            joliet_ = true;
            found->label = found->label.empty() ? chosen->label : found->label;
            chosen = std::move(found);
            break;
        }
    }
    if (!chosen) {
        return failure(Fault::invalid, "The track holds no ISO 9660 volume.");
    }
    label_ = chosen->label;
    if (auto done = findBase(trackStart, chosen->root); !done) {
        return done;
    }
    auto extent = chosen->root.extents.front();
    extent.sector += base_;
    auto entries = readDirectory({extent});
    if (!entries) {
        return tl::unexpected(entries.error());
    }
    root_ = std::move(*entries);
    return {};
}

/// Sectors count from the disc's start, but from the track's own where a later session was stored alone. The root's first
/// record, which names the root's own sector, tells which.
Result<void> IsoVolume::findBase(Frames trackStart, const IsoRecord& root) {
    for (const std::uint32_t base : {0U, static_cast<std::uint32_t>(trackStart)}) {
        base_ = base;
        const auto sector = std::uint64_t{root.extents.front().sector} + base;
        if (sector > static_cast<std::uint64_t>(std::numeric_limits<Frames>::max())) {
            continue;
        }
        const auto first = readExtents({{static_cast<std::uint32_t>(sector), dataSectorBytes}}, 0, dataSectorBytes);
        if (!first) {
            continue;
        }
        const auto records = parseDirectory(bytesOf(*first));
        if (records && !records->empty() && records->front().identifier == std::string(1, '\0') &&
            records->front().extents.front().sector == root.extents.front().sector) {
            learnRockRidge(records->front());
            return {};
        }
    }
    return failure(Fault::invalid, "The volume's root folder is damaged.");
}

void IsoVolume::learnRockRidge(const IsoRecord& self) {
    RockRidge found;
    readSystemUse(self.systemUse, found);
    rockRidge_ = found.skip.has_value() && !joliet_;
    systemUseSkip_ = static_cast<std::size_t>(found.skip.value_or(0));
}

std::string IsoVolume::rockRidgeName(const IsoRecord& record) const {
    RockRidge found;
    if (!rockRidge_ || record.systemUse.size() <= systemUseSkip_) {
        return {};
    }
    readSystemUse(std::span(record.systemUse).subspan(systemUseSkip_), found);
    for (int i = 0; i < mostContinuations && found.more; ++i) {
        const IsoContinuation more = *found.more;
        found.more.reset();
        if (more.offset >= dataSectorBytes || more.bytes > dataSectorBytes - more.offset) {
            break;
        }
        const auto sector = readExtents({{more.sector + base_, dataSectorBytes}}, 0, dataSectorBytes);
        if (!sector) {
            break;
        }
        readSystemUse(bytesOf(*sector).subspan(more.offset, more.bytes), found);
    }
    return text::decodeLatin1(found.name);
}

Result<std::vector<IsoEntry>> IsoVolume::readDirectory(const std::vector<IsoExtent>& extents) const {
    if (sizeOf(extents) > largestDirectory) {
        return failure(Fault::invalid, "A folder of the disc is damaged: it is too large.");
    }
    const auto bytes = readExtents(extents, 0, static_cast<std::size_t>(sizeOf(extents)));
    if (!bytes) {
        return tl::unexpected(bytes.error());
    }
    auto records = parseDirectory(bytesOf(*bytes));
    if (!records) {
        return tl::unexpected(records.error());
    }
    std::vector<IsoEntry> entries;
    for (IsoRecord& record : *records) {
        if (isSelfOrParent(record) || record.associated) {
            continue;
        }
        auto name = std::optional(rockRidgeName(record));
        if (!isUsableName(*name)) {
            name = isoName(record.identifier, joliet_);
        }
        if (!name) {
            continue;
        }
        for (IsoExtent& extent : record.extents) {
            extent.sector += base_;
        }
        const auto size = sizeOf(record.extents);
        entries.push_back(
            {std::move(*name), record.directory, record.hidden, size, record.interleaved, std::move(record.extents)});
    }
    return entries;
}

Result<IsoEntry> IsoVolume::find(std::string_view path) const {
    const auto parts = pathParts(path);
    if (parts.empty() || parts.size() > deepestPath) {
        return failure(Fault::notFound, "There is no such file on the disc.");
    }
    std::vector<IsoEntry> below = root_;
    for (std::size_t p = 0;; ++p) {
        const auto found = std::find_if(below.begin(), below.end(),
                                        [&](const IsoEntry& e) { return text::sameIgnoringCase(e.name, parts[p]); });
        const bool last = p + 1 == parts.size();
        if (found == below.end() || (!last && !found->directory)) {
            return failure(Fault::notFound, "There is no such file on the disc.");
        }
        if (last) {
            return *found;
        }
        auto next = readDirectory(found->extents);
        if (!next) {
            return tl::unexpected(next.error());
        }
        below = std::move(*next);
    }
}

Result<std::vector<IsoEntry>> IsoVolume::list(std::string_view path) const {
    if (pathParts(path).empty()) {
        return root_;
    }
    const auto folder = find(path);
    if (!folder) {
        return tl::unexpected(folder.error());
    }
    if (!folder->directory) {
        return failure(Fault::invalid, "This is a file, not a folder.");
    }
    return readDirectory(folder->extents);
}

Result<std::string> IsoVolume::read(std::string_view path, std::size_t maxBytes) const {
    const auto file = find(path);
    return file ? read(*file, 0, maxBytes) : tl::unexpected(file.error());
}

Result<std::string> IsoVolume::read(const IsoEntry& file, std::uint64_t offset, std::size_t count) const {
    if (file.directory || file.interleaved) {
        return failure(file.directory ? Fault::invalid : Fault::unsupported, "This can't be read as a file.");
    }
    return readExtents(file.extents, offset, count);
}

Result<std::string> IsoVolume::readExtents(const std::vector<IsoExtent>& extents, std::uint64_t offset,
                                           std::size_t count) const {
    std::string out;
    for (const IsoExtent& extent : extents) {
        if (offset >= extent.bytes || count == 0) {
            offset -= std::min<std::uint64_t>(offset, extent.bytes);
            continue;
        }
        const std::uint64_t part = std::min<std::uint64_t>(count, extent.bytes - offset);
        const std::uint64_t first = offset / sectorSize;
        const std::uint64_t sectors = (offset + part + sectorSize - 1) / sectorSize - first;
        const std::uint64_t at = extent.sector + first;
        // Asked before memory is taken, so that a length that lies costs none.
        if (at + sectors > static_cast<std::uint64_t>(medium_->toc().leadOut)) {
            return failure(Fault::invalid, "A file of the disc lies beyond its end.");
        }
        std::string sectorBytes(static_cast<std::size_t>(sectors * sectorSize), '\0');
        if (auto done = medium_->readData(static_cast<Frames>(at), static_cast<int>(sectors),
                                          reinterpret_cast<std::byte*>(sectorBytes.data()));
            !done) {
            return tl::unexpected(done.error());
        }
        out.append(sectorBytes, static_cast<std::size_t>(offset % sectorSize), static_cast<std::size_t>(part));
        count -= static_cast<std::size_t>(part);
        offset = 0;
    }
    return out;
}

}  // namespace tessarel::host
