#pragma once
#include <cdio/cdio.h>

#include <memory>
#include <mutex>
#include <string>

#include "host/medium.h"

namespace tessarel::host {

/// The disc in a drive, read through libcdio and cdio-paranoia.
class PhysicalMedium : public Medium {
public:
    /// Reads the table of contents. `device` may also be an image that libcdio knows. A disc that has none, such as a blank
    /// one, is `Fault::invalid`; no disc is `Fault::notReady`.
    static Result<std::shared_ptr<Medium>> open(const std::string& device);
    ~PhysicalMedium() override;

    const platform::CdToc& toc() const override { return toc_; }
    Result<void> readAudio(Frames from, int count, std::int16_t* samples) override;
    Result<void> readData(Frames from, int count, std::byte* bytes) override;

private:
    class Ripper;
    struct CloseCdio {
        void operator()(CdIo_t* disc) const { cdio_destroy(disc); }
    };
    using Disc = std::unique_ptr<CdIo_t, CloseCdio>;

    PhysicalMedium(std::string device, Disc disc, platform::CdToc toc);
    bool isAudio(Frames from, int count) const;
    bool isData(Frames from, int count) const;

    const std::string device_;
    const platform::CdToc toc_;
    std::mutex dataMutex_;
    Disc dataDisc_;
    std::mutex audioMutex_;
    std::unique_ptr<Ripper> ripper_;  ///< made by the first read of sound
};

/// Shortens the audio track in front of a second session's data track to what its own session holds: between the two lie the
/// first session's lead-out and the second one's lead-in, which nobody can play. `lastSession` is the address at which the last
/// session begins, 0 when there is but one.
void trimSessionGap(platform::CdToc& toc, Frames lastSession);

}  // namespace tessarel::host
