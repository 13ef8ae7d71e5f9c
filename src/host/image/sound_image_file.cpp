#include "host/image/sound_image_file.h"

#include <fmt/format.h>
#include <sndfile.h>

#include <array>
#include <mutex>
#include <string_view>

namespace tessarel::host {
namespace {

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundHandle = std::unique_ptr<SNDFILE, CloseSound>;

class SoundFile final : public ImageFile {
public:
    SoundFile(SoundHandle handle, std::int64_t size, std::string name)
        : handle_(std::move(handle)), size_(size), name_(std::move(name)) {}

    bool sound() const override { return true; }
    std::int64_t size() const override { return size_; }

    Result<void> readSamples(std::int64_t from, std::int64_t count, std::int16_t* samples) override {
        const std::lock_guard lock(mutex_);
        if (from != next_ && sf_seek(handle_.get(), from, SEEK_SET) != from) {
            return unreadable();
        }
        const auto got = sf_readf_short(handle_.get(), samples, count);
        next_ = from + count;
        if (got != count || sf_error(handle_.get()) != SF_ERR_NO_ERROR) {
            return unreadable();
        }
        return {};
    }

    Result<void> readBytes(std::int64_t, std::int64_t, std::byte*) override {
        return failure(Fault::invalid, fmt::format("\"{}\" is a sound file.", name_));
    }

private:
    tl::unexpected<Error> unreadable() {
        next_ = -1;
        return failure(Fault::failed, fmt::format("\"{}\" is damaged, or has become shorter.", name_));
    }

    std::mutex mutex_;
    SoundHandle handle_;
    std::int64_t size_;
    std::int64_t next_ = 0;
    std::string name_;
};

std::uint32_t number32(const unsigned char* b, bool bigEndian) {
    return bigEndian ? std::uint32_t{b[0]} << 24U | std::uint32_t{b[1]} << 16U | std::uint32_t{b[2]} << 8U | b[3]
                     : std::uint32_t{b[3]} << 24U | std::uint32_t{b[2]} << 16U | std::uint32_t{b[1]} << 8U | b[0];
}

/// Whether a chunk of samples says that it is longer than the file. The decoder takes such a file as it is, and says nothing.
/// Writers to a pipe leave a length of 0 or of all ones.
bool isCutOff(ImageFile& file) {
    std::array<unsigned char, 8> head{};
    const auto read = [&](std::int64_t at) {
        return at + 8 <= file.size() && file.readBytes(at, 8, reinterpret_cast<std::byte*>(head.data())).has_value();
    };
    const auto id = [&] { return std::string_view(reinterpret_cast<const char*>(head.data()), 4); };
    if (!read(0) || id() == "fLaC" || id() == "RF64") {
        return false;
    }
    const bool bigEndian = id() == "FORM";
    for (std::int64_t at = 12; read(at);) {
        const std::int64_t length = number32(head.data() + 4, bigEndian);
        if (id() == "data" || id() == "SSND") {
            return length < 0xFFFFF000 && at + 8 + length > file.size();
        }
        at += 8 + length + length % 2;
    }
    return false;
}

std::string unfit(const SF_INFO& info) {
    const int kind = info.format & SF_FORMAT_TYPEMASK;
    const bool served = kind == SF_FORMAT_WAV || kind == SF_FORMAT_WAVEX || kind == SF_FORMAT_RF64 || kind == SF_FORMAT_AIFF ||
                        kind == SF_FORMAT_FLAC;
    if (!served) {
        return "is no WAVE, AIFF or FLAC file";
    }
    if ((info.format & SF_FORMAT_SUBMASK) != SF_FORMAT_PCM_16) {
        return "does not hold 16-bit samples";
    }
    if (info.channels != 2) {
        return fmt::format("has {} {} in place of two channels", info.channels, info.channels == 1 ? "channel" : "channels");
    }
    if (info.samplerate != 44100) {
        return fmt::format("has {} samples a second in place of 44100", info.samplerate);
    }
    return {};
}

}  // namespace

Result<std::shared_ptr<ImageFile>> openSoundImageFile(const std::filesystem::path& path, ImageFile& bytes) {
    const std::string name = shownName(path);
    SF_INFO info{};
    SoundHandle handle(sf_open(path.c_str(), SFM_READ, &info));
    if (!handle) {
        return failure(Fault::invalid, fmt::format("\"{}\" is damaged: {}", name, sf_strerror(nullptr)));
    }
    if (const std::string reason = unfit(info); !reason.empty()) {
        return failure(Fault::unsupported, fmt::format("\"{}\" {}.", name, reason));
    }
    if (isCutOff(bytes)) {
        return failure(Fault::invalid, fmt::format("\"{}\" is cut off.", name));
    }
    if (info.frames <= 0 || info.frames > std::int64_t{1} << 36U || info.seekable == 0) {
        return failure(Fault::invalid, fmt::format("\"{}\" does not tell its length.", name));
    }
    return std::make_shared<SoundFile>(std::move(handle), info.frames, name);
}

}  // namespace tessarel::host
