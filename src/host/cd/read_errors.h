#pragma once
#include <chrono>

#include "base/packed_time.h"

namespace tessarel::host {

/// Tells a scratch from a disc that can no longer be read: three seconds of music, or ten of waiting, that give nothing but
/// errors.
class ReadErrors {
public:
    using Time = std::chrono::steady_clock::time_point;

    void good() { failed_ = 0; }
    /// Notes a frame that could not be read. True when it is time to give up.
    bool bad(Time now) {
        if (failed_++ == 0) {
            since_ = now;
        }
        return failed_ >= 3 * framesPerSecond || now - since_ >= std::chrono::seconds(10);
    }

private:
    Frames failed_ = 0;
    Time since_{};
};

}  // namespace tessarel::host
