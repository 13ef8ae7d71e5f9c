#pragma once
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"

namespace tessarel::host {

/// One opened file of an image. Reads may come from several threads.
class ImageFile {
public:
    virtual ~ImageFile() = default;

    /// Whether it is a sound file, whose places count samples; those of others count bytes.
    virtual bool sound() const = 0;
    virtual std::int64_t size() const = 0;
    /// Reads `count` stereo samples from a place on. A file that is shorter than it was is `Fault::failed`.
    virtual Result<void> readSamples(std::int64_t from, std::int64_t count, std::int16_t* samples) = 0;
    /// Reads bytes; not of sound files.
    virtual Result<void> readBytes(std::int64_t from, std::int64_t count, std::byte* bytes) = 0;
};

enum class ByteOrder : std::uint8_t { little, big };

/// Opens a regular file. One that begins as a WAVE, AIFF or FLAC file is opened as sound, and refused unless it holds 16-bit
/// stereo at 44100 Hz; any other is samples in the given byte order, or sectors. Messages are whole sentences that name the
/// file.
Result<std::shared_ptr<ImageFile>> openImageFile(const std::filesystem::path& path, ByteOrder order);

/// The file that a sheet means by a name: relative to the sheet, an absolute or back-slashed one reduced to its last part,
/// capitals or not. `Fault::notFound` when there is none.
Result<std::filesystem::path> fileBeside(const std::filesystem::path& sheet, std::string_view name);

/// A file's name for messages, in UTF-8.
std::string shownName(const std::filesystem::path& path);

}  // namespace tessarel::host
