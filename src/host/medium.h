#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "base/packed_time.h"
#include "base/result.h"
#include "platform/cd_player.h"

namespace tessarel::host {

inline constexpr int samplesPerFrame = 588;                  ///< stereo samples of one audio frame
inline constexpr int audioFrameBytes = samplesPerFrame * 4;  ///< 16-bit, left and right
inline constexpr int dataSectorBytes = 2048;

/// A disc that can be read: an image, or the one in a real drive. Frame addresses are those of `platform::CdTrack`.
/// The table of contents never changes; a new disc is a new medium. The reads may block and may be called from one reading
/// thread and the program's thread at the same time.
class Medium {
public:
    virtual ~Medium() = default;

    virtual const platform::CdToc& toc() const = 0;

    /// Reads `count` frames of sound, interleaved left and right, into `samples` (count * 588 * 2 values). Gaps that the image
    /// does not store are silence. A frame of a data track, or one outside 0 to the lead-out, is `Fault::invalid`; a disc that
    /// has gone is `Fault::notReady`.
    virtual Result<void> readAudio(Frames from, int count, std::int16_t* samples) = 0;

    /// Reads `count` sectors of 2048 bytes of user data from data tracks.
    virtual Result<void> readData(Frames from, int count, std::byte* bytes) = 0;
};

/// One CD-ROM drive.
class DiscDrive {
public:
    virtual ~DiscDrive() = default;

    /// The disc now in it; null when there is none. The same object for as long as the disc stays. Takes well under a
    /// millisecond unless a disc has just come.
    virtual std::shared_ptr<Medium> medium() = 0;

    /// Takes the drive for playing; `release` gives it back.
    virtual std::optional<platform::CdOpenFault> acquire(bool shareable) = 0;
    virtual void release() = 0;

    /// Opens the tray, or takes the image out.
    virtual void eject() = 0;
};

/// The CD-ROM drives by letter.
class DiscDrives {
public:
    virtual ~DiscDrives() = default;
    /// Null for a letter that is no CD-ROM drive. Lives as long as this table.
    virtual DiscDrive* drive(char letter) = 0;
};

}  // namespace tessarel::host
