#include "image_maker.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <fstream>

namespace tessarel::host::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "image-test-XXXXXX").native();
    path_ = ::mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::write(std::string_view name, std::string_view bytes) const {
    const fs::path path = path_ / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

Samples ramp(std::int64_t first, std::int64_t count) {
    Samples out;
    out.reserve(static_cast<std::size_t>(count) * 2);
    for (auto n = static_cast<std::uint32_t>(first); count > 0; ++n, --count) {
        out.push_back(static_cast<std::int16_t>(n + 1));
        out.push_back(static_cast<std::int16_t>((n >> 16U) * 77U + n * 3U + 5U));
    }
    return out;
}

Samples rampFrames(Frames first, Frames count) {
    return ramp(std::int64_t{first} * samplesPerFrame, std::int64_t{count} * samplesPerFrame);
}

Samples silence(Frames frames) { return Samples(static_cast<std::size_t>(frames) * samplesPerFrame * 2); }

Samples operator+(Samples a, const Samples& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::string littleEndian(const Samples& samples) {
    std::string out;
    for (const std::int16_t s : samples) {
        out += static_cast<char>(s & 0xFF);
        out += static_cast<char>(s >> 8);
    }
    return out;
}

std::string bigEndian(const Samples& samples) {
    std::string out;
    for (const std::int16_t s : samples) {
        out += static_cast<char>(s >> 8);
        out += static_cast<char>(s & 0xFF);
    }
    return out;
}

void writeSound(const fs::path& path, int format, const Samples& samples, int channels, int rate) {
    SF_INFO info{};
    info.format = format;
    info.channels = channels;
    info.samplerate = rate;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    EXPECT_EQ(sf_writef_short(file, samples.data(), frames), frames);
    sf_close(file);
}

std::string userData(int n) {
    std::string out(dataSectorBytes, '\0');
    for (int i = 0; i < dataSectorBytes; ++i) {
        out[static_cast<std::size_t>(i)] = static_cast<char>(i < 4 ? n >> (i * 8) : n * 31 + i * 7 + i / 256);
    }
    return out;
}

std::string cookedSectors(int first, int count) {
    std::string out;
    for (int n = first; n < first + count; ++n) {
        out += userData(n);
    }
    return out;
}

std::string headlessSectors(int first, int count) {
    std::string out;
    for (int n = first; n < first + count; ++n) {
        out += std::string("\0\0\x08\0\0\0\x08\0", 8) + userData(n) + std::string(280, 'e');
    }
    return out;
}

std::string rawSectors(int first, int count, int mode) {
    std::string out;
    for (int n = first; n < first + count; ++n) {
        out += std::string(1, '\0') + std::string(10, '\xFF') + std::string(4, '\0') + static_cast<char>(mode);
        out += mode == 1 ? userData(n) + std::string(288, 'e') : headlessSectors(n, 1);
    }
    return out;
}

Samples audio(Medium& medium, Frames from, int count) {
    Samples out(static_cast<std::size_t>(count) * samplesPerFrame * 2, 0x5A5A);
    const auto done = medium.readAudio(from, count, out.data());
    EXPECT_TRUE(done) << done.error().message;
    return out;
}

std::string data(Medium& medium, Frames from, int count) {
    std::string out(static_cast<std::size_t>(count) * dataSectorBytes, 'x');
    const auto done = medium.readData(from, count, reinterpret_cast<std::byte*>(out.data()));
    EXPECT_TRUE(done) << done.error().message;
    return out;
}

std::shared_ptr<Medium> opened(const fs::path& path) {
    auto medium = openDiscImage(path);
    EXPECT_TRUE(medium) << medium.error().message;
    return medium.value_or(nullptr);
}

std::string refusal(const fs::path& path) {
    const auto medium = openDiscImage(path);
    EXPECT_FALSE(medium) << "not refused";
    return medium ? std::string() : medium.error().message;
}

std::string tocText(const Medium& medium) {
    std::string out;
    for (const auto& track : medium.toc().tracks) {
        out += fmt::format("{} {} {} {}\n", track.number, track.start, track.length, track.audio ? "audio" : "data");
    }
    return out + fmt::format("{}", medium.toc().leadOut);
}

}  // namespace tessarel::host::testing
