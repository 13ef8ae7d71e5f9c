#pragma once
#include <chrono>
#include <cstdint>

namespace tessarel::host {

inline constexpr std::int64_t samplesPerSecond = 44100;

/// Counts samples on steady time. It runs on by itself where no sound device tells the time, and is set right by `set` where
/// one does.
class SampleClock {
public:
    using Time = std::chrono::steady_clock::time_point;

    std::int64_t at(Time now) const {
        if (!running_ || now <= since_) {
            return samples_;
        }
        const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now - since_).count();
        return samples_ + elapsed * samplesPerSecond / 1'000'000;
    }
    bool running() const { return running_; }

    void set(std::int64_t samples, Time now) {
        samples_ = samples;
        since_ = now;
    }
    void run(Time now) {
        set(at(now), now);
        running_ = true;
    }
    void freeze(Time now) {
        set(at(now), now);
        running_ = false;
    }

private:
    std::int64_t samples_ = 0;
    Time since_{};
    bool running_ = false;
};

}  // namespace tessarel::host
