#pragma once
#include <functional>
#include <string>
#include <vector>

#include "platform/scheduler.h"
#include "platform/sound_files.h"

namespace tessarel::fakes {

/// Keeps the paths that it is told to play; a sound that is waited for takes `length` on the clock.
class FakeSounds : public platform::SoundFiles {
public:
    explicit FakeSounds(platform::Scheduler& scheduler) : scheduler_(scheduler) {}

    std::vector<std::string> played;  ///< by `play`
    std::vector<std::string> waited;  ///< by `playAndWait`
    platform::Milliseconds length{500};

    void play(const std::string& path) override {
        if (!path.empty()) {
            played.push_back(path);
        }
    }
    void playAndWait(const std::string& path) override {
        waited.push_back(path);
        scheduler_.wait(length);
    }

private:
    platform::Scheduler& scheduler_;
};

}  // namespace tessarel::fakes
