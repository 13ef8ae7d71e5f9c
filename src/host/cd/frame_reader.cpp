#include "host/cd/frame_reader.h"

#include <algorithm>

namespace tessarel::host {
namespace {

constexpr std::ptrdiff_t valuesPerFrame = std::ptrdiff_t{samplesPerFrame} * 2;

}  // namespace

FrameReader::Outcome FrameReader::read(Medium& medium, Frames address, Frames count, std::int16_t* samples,
                                       const std::function<bool()>& cancelled) {
    const auto done = medium.readAudio(address, count, samples);
    if (done) {
        errors_.good();
        return Outcome::good;
    }
    return done.error().fault == Fault::notReady ? Outcome::gone : readSingly(medium, address, count, samples, cancelled);
}

FrameReader::Outcome FrameReader::readSingly(Medium& medium, Frames address, Frames count, std::int16_t* samples,
                                             const std::function<bool()>& cancelled) {
    for (Frames i = 0; i < count && !cancelled(); ++i) {
        std::int16_t* const frame = samples + i * valuesPerFrame;
        const auto done = medium.readAudio(address + i, 1, frame);
        if (done) {
            errors_.good();
            continue;
        }
        if (done.error().fault == Fault::notReady) {
            return Outcome::gone;
        }
        std::fill_n(frame, valuesPerFrame, std::int16_t{0});
        if (errors_.bad(std::chrono::steady_clock::now())) {
            std::fill_n(frame, (count - i) * valuesPerFrame, std::int16_t{0});
            return Outcome::hopeless;
        }
    }
    return Outcome::good;
}

}  // namespace tessarel::host
