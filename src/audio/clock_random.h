#pragma once
#include <cmath>
#include <cstdint>

namespace tessarel::audio {

/// Numbers drawn at random, seeded from the clock as often as wanted. Seeding mixes the clock into what was there, so that
/// draws differ while the clock stands.
class ClockRandom {
public:
    void randomize(double secondsSinceMidnight) {
        state_ ^= static_cast<std::uint64_t>(std::llround(secondsSinceMidnight * 1000)) * 0x9E3779B97F4A7C15U;
    }
    /// From 0 up to 1.
    double rnd() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state_;
        z = (z ^ z >> 30U) * 0xBF58476D1CE4E5B9U;
        z = (z ^ z >> 27U) * 0x94D049BB133111EBU;
        return static_cast<double>((z ^ z >> 31U) >> 11U) * 0x1.0p-53;
    }

private:
    std::uint64_t state_ = 0;
};

}  // namespace tessarel::audio
