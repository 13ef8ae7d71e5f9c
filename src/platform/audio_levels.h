#pragma once
#include <cstdint>
#include <functional>
#include <optional>

namespace tessarel::platform {

/// Left and right level of a line, 0 silent to 65535 full.
struct StereoLevel {
    std::int32_t left = 65535;
    std::int32_t right = 65535;
    bool operator==(const StereoLevel&) const = default;
};

/// The sound level of the program's own disc stream.
class AudioLevels {
public:
    virtual ~AudioLevels() = default;

    /// Nothing when there is no sound server. Before the first sound, the level that it will start with.
    virtual std::optional<StereoLevel> discLevel() const = 0;

    /// False when there is no sound server; the level then holds for the stream that comes.
    virtual bool setDiscLevel(StereoLevel level) = 0;

    /// Called on the program's thread when something else, such as the desktop's mixer, has changed the level.
    std::function<void(StereoLevel)> onDiscLevelChanged;
};

}  // namespace tessarel::platform
