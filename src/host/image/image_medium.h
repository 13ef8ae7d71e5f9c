#pragma once
#include <memory>
#include <vector>

#include "host/image/disc_plan.h"
#include "host/image/image_files.h"
#include "host/medium.h"

namespace tessarel::host {

/// A disc that is laid out over files. A stretch of sectors inside an audio track, the gap before a data track, sounds as
/// silence.
class ImageMedium final : public Medium {
public:
    /// `files` are those that the layout's pieces count.
    ImageMedium(DiscLayout layout, std::vector<std::shared_ptr<ImageFile>> files);

    const platform::CdToc& toc() const override { return layout_.toc; }
    Result<void> readAudio(Frames from, int count, std::int16_t* samples) override;
    Result<void> readData(Frames from, int count, std::byte* bytes) override;

private:
    Result<void> readSector(const Piece& piece, std::int64_t into, std::byte* bytes);
    std::size_t pieceAt(std::int64_t sample) const;

    DiscLayout layout_;
    std::vector<std::shared_ptr<ImageFile>> files_;
};

/// Whether all of these frames lie in audio tracks (or in data tracks); the frames before the first track are of its kind.
/// The message of an error tells which frame does not.
Result<void> checkKind(const platform::CdToc& toc, Frames from, int count, bool audio);

/// The user data of a raw 2352-byte sector, 2048 bytes into `data`. One without any, or that is none, is an error.
Result<void> userData(const std::byte* sector, std::byte* data);

}  // namespace tessarel::host
