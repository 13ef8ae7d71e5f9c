#pragma once
#include "platform/audio_levels.h"

namespace tessarel::host {

/// Takes a level to another in steps that are too small to be heard as clicks. Counts no time: the caller takes a step every
/// `stepMs`.
class LevelRamp {
public:
    static constexpr int stepMs = 2;
    /// A first change sets out gently, since the server may still play in long pieces, which put steps together.
    static constexpr int gentleSteps = 30;
    /// A further one is taken up at an even pace, from where the level stands, so that it keeps up with a hand.
    static constexpr int evenSteps = 16;

    enum class Pace { gentle, even };

    /// Stands still at a level.
    void set(platform::StereoLevel level);
    void aim(platform::StereoLevel target, Pace pace);
    bool moving() const { return done_ < steps_; }
    /// The next level on the way; the last one is the target, exactly.
    platform::StereoLevel step();

    platform::StereoLevel now() const { return now_; }
    platform::StereoLevel target() const { return to_; }

private:
    platform::StereoLevel from_;
    platform::StereoLevel to_;
    platform::StereoLevel now_;
    Pace pace_ = Pace::even;
    int steps_ = 0;
    int done_ = 0;
};

}  // namespace tessarel::host
