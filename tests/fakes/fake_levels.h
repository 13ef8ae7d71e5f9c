#pragma once
#include <array>
#include <vector>

#include "platform/audio_levels.h"

namespace tessarel::fakes {

/// Levels of sound that keep what they are set to.
class FakeLevels : public platform::AudioLevels {
public:
    struct Line {
        platform::LineLevel now;
        std::vector<platform::StereoLevel> sets;  ///< each level that was set, in order
        Watchers<platform::LineLevel> watchers;
    };

    int readCode = platform::deviceCodes::success;  ///< other than success: every read fails with it
    int setCode = platform::deviceCodes::success;   ///< what every set answers; the level is kept all the same

    Line& line(platform::Line which) { return lines_[static_cast<std::size_t>(which)]; }
    Line& disc() { return line(platform::Line::disc); }

    tl::expected<platform::LineLevel, int> level(platform::Line which) const override {
        if (readCode != platform::deviceCodes::success) {
            return tl::unexpected(readCode);
        }
        return lines_[static_cast<std::size_t>(which)].now;
    }
    int setLevel(platform::Line which, platform::StereoLevel to) override {
        line(which).now = {to, false};
        line(which).sets.push_back(to);
        return setCode;
    }
    [[nodiscard]] Subscription watch(platform::Line which, Handler handler) override {
        return line(which).watchers.add(std::move(handler));
    }
    /// As if the desktop's mixer had changed a line.
    void changeFromOutside(platform::LineLevel to, platform::Line which = platform::Line::disc) {
        line(which).now = to;
        line(which).watchers.tell(to);
    }

private:
    std::array<Line, 3> lines_;
};

}  // namespace tessarel::fakes
