#pragma once
#include <cstdint>
#include <optional>

#include "platform/audio_levels.h"

namespace tessarel::host {

/// Gives the sound server's streams that carry a line of the program's sound their level, whatever connection they are on. Any
/// thread may call it but the disc's sound thread.
class LineStreams {
public:
    virtual ~LineStreams() = default;
    /// What a new stream is to start with; nothing when the server may decide.
    virtual std::optional<platform::LineLevel> startLevel() const = 0;
    /// A stream, by the server's number, follows the line until `streamGone`.
    virtual void streamStarted(std::uint32_t index, int channels) = 0;
    virtual void streamGone(std::uint32_t index) = 0;
};

}  // namespace tessarel::host
