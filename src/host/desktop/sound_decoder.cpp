#include "host/desktop/sound_decoder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessarel::host {

namespace {
constexpr int mostChannels = 32;
constexpr int highestRate = 192000;
constexpr std::chrono::hours longest{24};
}  // namespace

// What libsndfile calls to read a file that lies in memory.
struct DecoderMemory {
    static SoundDecoder& self(void* user) { return *static_cast<SoundDecoder*>(user); }
    static sf_count_t size(SoundDecoder& decoder) { return static_cast<sf_count_t>(decoder.bytes_.size()); }

    static sf_count_t length(void* user) { return size(self(user)); }
    static sf_count_t tell(void* user) { return self(user).position_; }
    static sf_count_t write(const void* /*data*/, sf_count_t /*count*/, void* /*user*/) { return 0; }

    static sf_count_t seek(sf_count_t offset, int whence, void* user) {
        auto& decoder = self(user);
        const sf_count_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? decoder.position_ : size(decoder);
        decoder.position_ = std::clamp<sf_count_t>(base + offset, 0, size(decoder));
        return decoder.position_;
    }
    static sf_count_t read(void* data, sf_count_t count, void* user) {
        auto& decoder = self(user);
        const auto given = std::clamp<sf_count_t>(count, 0, size(decoder) - decoder.position_);
        std::memcpy(data, decoder.bytes_.data() + decoder.position_, static_cast<std::size_t>(given));
        decoder.position_ += given;
        return given;
    }
};

SoundDecoder::SoundDecoder(std::string bytes) : bytes_(std::move(bytes)) {
    SF_VIRTUAL_IO memory{&DecoderMemory::length, &DecoderMemory::seek, &DecoderMemory::read, &DecoderMemory::write,
                         &DecoderMemory::tell};
    file_.reset(sf_open_virtual(&memory, SFM_READ, &info_, this));
}

bool SoundDecoder::valid() const {
    return file_ && info_.channels >= 1 && info_.channels <= mostChannels && info_.samplerate >= 1 &&
           info_.samplerate <= highestRate;
}

platform::Milliseconds SoundDecoder::length() const {
    const double seconds = static_cast<double>(info_.frames) / std::max(info_.samplerate, 1);
    const auto most = std::chrono::duration<double>(longest).count();
    return platform::Milliseconds(static_cast<long>(std::clamp(seconds, 0.0, most) * 1000));
}

std::size_t SoundDecoder::read(float* samples, std::size_t frames) {
    return static_cast<std::size_t>(
        std::max<sf_count_t>(sf_readf_float(file_.get(), samples, static_cast<sf_count_t>(frames)), 0));
}

}  // namespace tessarel::host
