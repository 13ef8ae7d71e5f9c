// links: tessarel_image
#include <cstdint>
#include <cstring>

#include "host/image/iso_volume.h"

namespace {

using namespace tessarel;

/// The input lies from the volume descriptors on.
class InputDisc final : public host::Medium {
public:
    InputDisc(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes) {
        toc_.leadOut = static_cast<Frames>(host::volumeDescriptorSector + size / host::dataSectorBytes);
        toc_.tracks.push_back({1, 0, toc_.leadOut, false, {}, {}});
    }
    const platform::CdToc& toc() const override { return toc_; }
    Result<void> readAudio(Frames, int, std::int16_t*) override { return failure(Fault::invalid, "no sound"); }
    Result<void> readData(Frames from, int count, std::byte* out) override {
        if (from < host::volumeDescriptorSector || count < 0 || from > toc_.leadOut - count) {
            return failure(Fault::invalid, "off the disc");
        }
        std::memcpy(out, bytes_ + static_cast<std::size_t>(from - host::volumeDescriptorSector) * host::dataSectorBytes,
                    static_cast<std::size_t>(count) * host::dataSectorBytes);
        return {};
    }

private:
    const std::uint8_t* bytes_;
    platform::CdToc toc_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    InputDisc disc(bytes, size);
    const auto volume = host::IsoVolume::open(disc, 0);
    if (!volume) {
        return 0;
    }
    for (const host::IsoEntry& entry : volume->root()) {
        if (entry.directory) {
            (void)volume->list(entry.name);
        } else {
            (void)volume->read(entry, 0, 10000);
        }
    }
    return 0;
}
