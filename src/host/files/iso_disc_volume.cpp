#include "host/files/iso_disc_volume.h"

#include <fmt/format.h>

#include "host/image/iso_volume.h"
#include "platform/file_system.h"

namespace tessarel::host {
namespace {

std::string joined(std::span<const std::string> path) {
    std::string out;
    for (const auto& part : path) {
        out.append(out.empty() ? "" : "\\").append(part);
    }
    return out;
}

int attributesOf(const IsoEntry& entry) {
    return (entry.directory ? platform::attributeDirectory : 0) | (entry.hidden ? platform::attributeHidden : 0);
}

class IsoDiscVolume : public DiscVolume {
public:
    IsoDiscVolume(std::shared_ptr<Medium> medium, IsoVolume volume) : medium_(std::move(medium)), volume_(std::move(volume)) {}

    std::string label() const override { return volume_.label(); }

    Result<std::vector<DiscEntry>> list(std::span<const std::string> folder) const override {
        const auto listed = folder.empty() ? Result<std::vector<IsoEntry>>(volume_.root()) : volume_.list(joined(folder));
        if (!listed) {
            return tl::unexpected(listed.error());
        }
        std::vector<DiscEntry> entries;
        for (const auto& each : *listed) {
            entries.push_back({each.name, attributesOf(each)});
        }
        return entries;
    }

    Result<std::string> read(std::span<const std::string> file, std::size_t mostBytes) const override {
        const auto path = joined(file);
        const auto entry = volume_.find(path);
        if (!entry) {
            return tl::unexpected(entry.error());
        }
        if (entry->size > mostBytes) {
            return failure(Fault::unsupported, fmt::format("{} is larger than {} MB.", path, mostBytes >> 20U));
        }
        return volume_.read(path, mostBytes);
    }

private:
    std::shared_ptr<Medium> medium_;  // what the volume reads from
    IsoVolume volume_;
};

}  // namespace

Result<std::shared_ptr<DiscVolume>> openIsoDiscVolume(std::shared_ptr<Medium> medium, Frames trackStart) {
    auto volume = IsoVolume::open(*medium, trackStart);
    if (!volume) {
        return tl::unexpected(volume.error());
    }
    return std::make_shared<IsoDiscVolume>(std::move(medium), std::move(*volume));
}

}  // namespace tessarel::host
