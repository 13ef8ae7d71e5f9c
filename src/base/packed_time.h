#pragma once
#include <cstdint>

namespace tessarel {

/// A count of CD frames; one second is 75 of them.
using Frames = std::int32_t;

inline constexpr Frames framesPerSecond = 75;
/// Frames between the start of a disc's timeline and its frame address 0.
inline constexpr Frames leadInFrames = 150;

/// A length or disc position taken apart.
struct Msf {
    int minutes = 0;
    int seconds = 0;
    int frames = 0;
    bool operator==(const Msf&) const = default;
};

/// A position inside a track. A bare track number is that track at 0:00:00.
struct Tmsf {
    int track = 0;
    int minutes = 0;
    int seconds = 0;
    int frames = 0;
    bool operator==(const Tmsf&) const = default;
};

/// bits 0-7 minutes, 8-15 seconds, 16-23 frames.
constexpr std::int32_t packMsf(const Msf& t) { return (t.minutes & 0xFF) | (t.seconds & 0xFF) << 8 | (t.frames & 0xFF) << 16; }
constexpr Msf unpackMsf(std::int32_t packed) { return {packed & 0xFF, packed >> 8 & 0xFF, packed >> 16 & 0xFF}; }

/// bits 0-7 track, 8-15 minutes, 16-23 seconds, 24-31 frames.
constexpr std::int32_t packTmsf(const Tmsf& t) {
    const std::uint32_t word = static_cast<std::uint32_t>(t.track & 0xFF) | static_cast<std::uint32_t>(t.minutes & 0xFF) << 8U |
                               static_cast<std::uint32_t>(t.seconds & 0xFF) << 16U |
                               static_cast<std::uint32_t>(t.frames & 0xFF) << 24U;
    return static_cast<std::int32_t>(word);
}
constexpr Tmsf unpackTmsf(std::int32_t packed) {
    const auto word = static_cast<std::uint32_t>(packed);
    return {static_cast<int>(word & 0xFFU), static_cast<int>(word >> 8U & 0xFFU), static_cast<int>(word >> 16U & 0xFFU),
            static_cast<int>(word >> 24U & 0xFFU)};
}

constexpr Frames toFrames(const Msf& t) { return (t.minutes * 60 + t.seconds) * framesPerSecond + t.frames; }
constexpr Msf fromFrames(Frames f) { return {f / (60 * framesPerSecond), f / framesPerSecond % 60, f % framesPerSecond}; }

}  // namespace tessarel
