#pragma once
#include <string>

namespace tessarel::platform {

/// Short sounds from files. What can't be played is passed over in silence.
class SoundFiles {
public:
    virtual ~SoundFiles() = default;
    /// Starts to play and returns at once; an empty path does nothing.
    virtual void play(const std::string& path) = 0;
    /// Plays to the end, as a deliberate wait.
    virtual void playAndWait(const std::string& path) = 0;
};

}  // namespace tessarel::platform
