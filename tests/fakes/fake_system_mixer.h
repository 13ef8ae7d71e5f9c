#pragma once
#include <vector>

#include "platform/system_mixer.h"

namespace tessarel::fakes {

/// A default output that keeps what it is set to.
class FakeSystemMixer : public platform::SystemMixer {
public:
    platform::OutputLevel now;
    int balance = 0;         ///< 0 in the middle
    std::vector<int> steps;  ///< each step that was set, in order
    std::vector<bool> mutes;

    void setStep(int step) override {
        now.step = step;
        steps.push_back(step);
    }
    void setMuted(bool muted) override {
        now.muted = muted;
        mutes.push_back(muted);
    }
    void centreBalance() override { balance = 0; }
    platform::OutputLevel level() const override { return now; }
    [[nodiscard]] Subscription watch(Handler handler) override { return watchers_.add(std::move(handler)); }
    /// As if the desktop's volume control had changed it.
    void changeFromOutside(platform::OutputLevel to) {
        now = to;
        watchers_.tell(to);
    }

private:
    Watchers<platform::OutputLevel> watchers_;
};

}  // namespace tessarel::fakes
