#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/packed_time.h"
#include "host/image/disc_image.h"

namespace tessarel::host::testing {

using Samples = std::vector<std::int16_t>;

/// A folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file and gives its path.
    std::filesystem::path write(std::string_view name, std::string_view bytes) const;

private:
    std::filesystem::path path_;
};

/// Stereo samples that occur nowhere twice in ten minutes: the n-th, counted from `first`, tells n.
Samples ramp(std::int64_t first, std::int64_t count);
/// The same by frames of 588.
Samples rampFrames(Frames first, Frames count);
Samples silence(Frames frames);
Samples operator+(Samples a, const Samples& b);

std::string littleEndian(const Samples& samples);
std::string bigEndian(const Samples& samples);

/// A sound file of libsndfile's format number.
void writeSound(const std::filesystem::path& path, int format, const Samples& samples, int channels = 2, int rate = 44100);

/// The user data of sector n: n in its first four bytes, then a pattern that depends on it.
std::string userData(int n);
std::string cookedSectors(int first, int count);
/// Whole 2352-byte sectors of mode 1, or of mode 2 form 1.
std::string rawSectors(int first, int count, int mode);
/// 2336-byte sectors of mode 2 form 1.
std::string headlessSectors(int first, int count);

/// Reads frames, and adds a test failure when that fails.
Samples audio(Medium& medium, Frames from, int count);
std::string data(Medium& medium, Frames from, int count);

/// Opens an image, and adds a test failure with the reason when it is refused.
std::shared_ptr<Medium> opened(const std::filesystem::path& path);
/// Why an image is refused; a test failure and an empty text when it is not.
std::string refusal(const std::filesystem::path& path);

/// "number start length audio|data", one track a line, and the lead-out.
std::string tocText(const Medium& medium);

}  // namespace tessarel::host::testing
