#pragma once
#include <functional>

#include "host/cd/read_errors.h"
#include "host/medium.h"

namespace tessarel::host {

/// Reads sound off a medium; what can't be read becomes silence, a frame at a time, so that the music goes on in time.
class FrameReader {
public:
    enum class Outcome {
        good,
        gone,      ///< the disc is no longer there
        hopeless,  ///< nothing but errors for too long; what is left of the samples is silence
    };

    /// Fills `count` frames from an address on. Between frames of a damaged spot it asks `cancelled`, and leaves when that is
    /// so; the samples then mean nothing.
    Outcome read(Medium& medium, Frames address, Frames count, std::int16_t* samples, const std::function<bool()>& cancelled);
    void reset() { errors_.good(); }

private:
    Outcome readSingly(Medium& medium, Frames address, Frames count, std::int16_t* samples,
                       const std::function<bool()>& cancelled);

    ReadErrors errors_;
};

}  // namespace tessarel::host
