#pragma once
#include <sndfile.h>

#include <cstddef>
#include <memory>
#include <string>

#include "platform/scheduler.h"

namespace tessarel::host {

/// Sound samples out of the bytes of a file, of any kind that libsndfile reads.
class SoundDecoder {
public:
    explicit SoundDecoder(std::string bytes);
    SoundDecoder(const SoundDecoder&) = delete;
    SoundDecoder& operator=(const SoundDecoder&) = delete;

    /// Whether the bytes are a sound file, and one of at most 32 channels and a rate from 1 to 192000 samples a second.
    bool valid() const;

    int channels() const { return info_.channels; }
    int rate() const { return info_.samplerate; }
    /// As the file's header tells it: what can be decoded may be less.
    platform::Milliseconds length() const;

    /// Decodes up to `frames` samples of each channel, interleaved, -1 to 1; returns how many, 0 at the end.
    std::size_t read(float* samples, std::size_t frames);

private:
    struct Close {
        void operator()(SNDFILE* file) const { sf_close(file); }
    };

    std::string bytes_;
    sf_count_t position_ = 0;
    SF_INFO info_{};
    std::unique_ptr<SNDFILE, Close> file_;

    friend struct DecoderMemory;
};

}  // namespace tessarel::host
