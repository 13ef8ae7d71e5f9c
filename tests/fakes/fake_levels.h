#pragma once
#include <optional>
#include <vector>

#include "platform/audio_levels.h"

namespace tessarel::fakes {

/// A level of sound that keeps what it is set to.
class FakeLevels : public platform::AudioLevels {
public:
    platform::StereoLevel level;
    bool server = true;                       ///< whether there is a sound server
    std::vector<platform::StereoLevel> sets;  ///< each level that was set, in order

    std::optional<platform::StereoLevel> discLevel() const override { return server ? std::optional(level) : std::nullopt; }
    bool setDiscLevel(platform::StereoLevel to) override {
        level = to;
        sets.push_back(to);
        return server;
    }
    /// As if another mixer had moved the level.
    void moveFromOutside(platform::StereoLevel to) {
        level = to;
        if (onDiscLevelChanged) {
            onDiscLevelChanged(to);
        }
    }
};

}  // namespace tessarel::fakes
