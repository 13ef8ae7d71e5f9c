#include "host/cd/level_ramp.h"

#include <cmath>

namespace tessarel::host {
namespace {

// The server's scale is cubic: a level's third power is how far a sample swings.
std::int32_t between(std::int32_t from, std::int32_t to, double share) {
    const auto swing = [](double level) { return level * level * level; };
    return static_cast<std::int32_t>(std::lround(std::cbrt(std::lerp(swing(from), swing(to), share))));
}

}  // namespace

void LevelRamp::set(platform::StereoLevel level) {
    from_ = to_ = now_ = level;
    steps_ = done_ = 0;
}

void LevelRamp::aim(platform::StereoLevel target, Pace pace) {
    from_ = now_;
    to_ = target;
    pace_ = pace;
    done_ = 0;
    steps_ = from_ == to_ ? 0 : pace == Pace::gentle ? gentleSteps : evenSteps;
}

platform::StereoLevel LevelRamp::step() {
    if (moving()) {
        ++done_;
    }
    if (!moving()) {
        now_ = to_;
        return now_;
    }
    const double way = static_cast<double>(done_) / steps_;
    const double share = pace_ == Pace::gentle ? way * way : way;
    now_ = {between(from_.left, to_.left, share), between(from_.right, to_.right, share)};
    return now_;
}

}  // namespace tessarel::host
