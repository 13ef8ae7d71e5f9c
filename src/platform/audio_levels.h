#pragma once
#include <cstdint>
#include <functional>
#include <tl/expected.hpp>

#include "base/watchers.h"

namespace tessarel::platform {

/// What of the program's own sound a level is for.
enum class Line {
    disc,  ///< audio discs
    wave,  ///< sound files
    midi,
};

/// Left and right level of a line, 0 silent to 65535 full.
struct StereoLevel {
    std::int32_t left = 65535;
    std::int32_t right = 65535;
    bool operator==(const StereoLevel&) const = default;
};

/// How a line stands.
struct LineLevel {
    StereoLevel level;
    bool muted = false;  ///< silenced by the desktop's mixer, which keeps the level
    bool operator==(const LineLevel&) const = default;
};

/// What a sound device answers, by the numbers that users are told of.
namespace deviceCodes {
inline constexpr int success = 0;
inline constexpr int outOfRange = 2;
inline constexpr int notEnabled = 3;  ///< not now; what was set is kept for later
inline constexpr int noDriver = 6;
}  // namespace deviceCodes

/// The sound levels of the program's own streams, line by line. A line keeps its level whichever streams carry it.
class AudioLevels {
public:
    using Handler = std::function<void(const LineLevel&)>;

    virtual ~AudioLevels() = default;

    /// Before the first sound, the level that it will start with; a device code when there is none.
    virtual tl::expected<LineLevel, int> level(Line line) const = 0;

    /// Sets the level and lifts the desktop mixer's mute. Returns a device code; with `notEnabled` the level holds for the
    /// stream that comes.
    virtual int setLevel(Line line, StereoLevel level) = 0;

    /// Calls the handler on the program's thread whenever something else, such as the desktop's mixer, has changed the line.
    [[nodiscard]] virtual Subscription watch(Line line, Handler handler) = 0;
};

}  // namespace tessarel::platform
