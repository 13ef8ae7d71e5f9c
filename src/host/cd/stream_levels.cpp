#include "host/cd/stream_levels.h"

#include <algorithm>
#include <utility>

#include "host/level_words.h"

namespace tessarel::host {
namespace {

using platform::LineLevel;
using platform::StereoLevel;

void forget(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

std::int32_t inScale(std::int32_t word) { return std::clamp(word, 0, 65535); }

/// A hand on a slider moves on within this time.
constexpr unsigned restMs = 300;

pa_usec_t timeIn(unsigned ms) { return pa_rtclock_now() + ms * PA_USEC_PER_MSEC; }

}  // namespace

LineLevel StreamLevels::level() const {
    const std::lock_guard hold(mutex_);
    return level_;
}

std::optional<LineLevel> StreamLevels::startLevel() const {
    const std::lock_guard hold(mutex_);
    return chosen_ ? std::optional(LineLevel{ramp_.now(), level_.muted}) : std::nullopt;
}

void StreamLevels::remember(StereoLevel level) {
    const std::lock_guard hold(mutex_);
    unmute_ = unmute_ || level_.muted;
    level_ = {{inScale(level.left), inScale(level.right)}, false};
    chosen_ = true;
    questions_.changed();
    if (streams_.empty()) {
        ramp_.set(level_.level);
    }
}

void StreamLevels::setListener(Listener listener) {
    const std::lock_guard hold(mutex_);
    listener_ = std::move(listener);
}

void StreamLevels::send(const SoundServer& server) {
    const std::lock_guard hold(mutex_);
    server_ = server;
    if (std::exchange(unmute_, false)) {
        ramp_.set({0, 0});
        for (const Stream& stream : streams_) {
            write(stream, ramp_.now());
            forget(pa_context_set_sink_input_mute(server_.context, stream.index, 0, nullptr, nullptr));
        }
    }
    ramp_.aim(level_.level, clock_ ? LevelRamp::Pace::even : LevelRamp::Pace::gentle);
    if (!ramp_.moving()) {
        return;
    }
    if (!clock_) {
        quicken(true);
        clock_ = pa_context_rttime_new(server_.context, timeIn(LevelRamp::stepMs), tick, this);
        step();
    } else if (std::exchange(resting_, false)) {
        restartClock(LevelRamp::stepMs);
        step();
    }
}

void StreamLevels::hurry(const SoundServer& server) {
    const std::lock_guard hold(mutex_);
    server_ = server;
    if (!clock_ && !streams_.empty()) {
        quicken(true);
        clock_ = pa_context_rttime_new(server_.context, timeIn(restMs), tick, this);
        resting_ = true;
    } else if (resting_) {
        restartClock(restMs);
    }
}

void StreamLevels::tick(pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
    auto& levels = *static_cast<StreamLevels*>(self);
    const std::lock_guard hold(levels.mutex_);
    if (levels.ramp_.moving()) {
        levels.restartClock(LevelRamp::stepMs);
        levels.step();
    } else if (!levels.resting_) {
        levels.rest();
    } else {
        levels.stopClock();
        levels.quicken(false);
    }
}

// News that came while the level glided have been passed over: the server is asked now.
void StreamLevels::rest() {
    resting_ = true;
    restartClock(restMs);
    for (const Stream& stream : streams_) {
        ask(stream.index);
    }
}

void StreamLevels::quicken(bool quick) {
    for (const Stream& stream : streams_) {
        if (stream.sound) {
            stream.sound->quicken(quick);
        }
    }
}

void StreamLevels::step() {
    questions_.changed();
    const StereoLevel level = ramp_.step();
    for (const Stream& stream : streams_) {
        write(stream, level);
    }
}

void StreamLevels::write(const Stream& stream, StereoLevel level) {
    const pa_cvolume volume = volumeOf(level, stream.channels);
    forget(pa_context_set_sink_input_volume(server_.context, stream.index, &volume, nullptr, nullptr));
}

void StreamLevels::stopClock() {
    if (clock_) {
        server_.loop->time_free(std::exchange(clock_, nullptr));
    }
    resting_ = false;
}

void StreamLevels::restartClock(unsigned ms) { pa_context_rttime_restart(server_.context, clock_, timeIn(ms)); }

void StreamLevels::streamStarted(const SoundServer& server, std::uint32_t index, int channels, QuickSound* sound) {
    const std::lock_guard hold(mutex_);
    server_ = server;
    streams_.push_back({index, channels, sound});
    if (clock_ && sound) {
        sound->quicken(true);
    }
    ask(index);
}

void StreamLevels::streamParted(std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    for (Stream& stream : streams_) {
        stream.sound = stream.index == index ? nullptr : stream.sound;
    }
}

void StreamLevels::streamGone(std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    std::erase_if(streams_, [index](const Stream& stream) { return stream.index == index; });
    if (streams_.empty()) {
        stopClock();
        ramp_.set(level_.level);
    }
}

void StreamLevels::arrive() {
    const std::lock_guard hold(mutex_);
    if (ramp_.moving()) {
        ramp_.set(level_.level);
        step();
    }
}

// While the level glides the news are its own steps; the server is asked when it has come to rest.
void StreamLevels::streamChanged(const SoundServer& server, std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    server_ = server;
    const bool ours = std::any_of(streams_.begin(), streams_.end(), [&](const Stream& s) { return s.index == index; });
    if (ours && !ramp_.moving()) {
        ask(index);
    }
}

void StreamLevels::serverGone() {
    const std::lock_guard hold(mutex_);
    stopClock();
    streams_.clear();
    questions_.forget();
    unmute_ = false;
    ramp_.set(level_.level);
}

void StreamLevels::ask(std::uint32_t index) {
    if (pa_operation* question = pa_context_get_sink_input_info(server_.context, index, heardInfo, this)) {
        questions_.asked();
        pa_operation_unref(question);
    }
}

void StreamLevels::heardInfo(pa_context*, const pa_sink_input_info* info, int end, void* self) {
    auto& levels = *static_cast<StreamLevels*>(self);
    if (end == 0 && info) {
        levels.take(*info);
        return;
    }
    const std::lock_guard hold(levels.mutex_);
    levels.questions_.answered();
}

void StreamLevels::take(const pa_sink_input_info& info) {
    Listener listener;
    const LineLevel heard{levelOf(info.volume), info.mute != 0};
    {
        const std::lock_guard hold(mutex_);
        const bool own = heard == LineLevel{levelOf(volumeOf(ramp_.now(), info.volume.channels)), level_.muted};
        if (own || !questions_.current()) {
            return;
        }
        level_ = heard;
        ramp_.set(heard.level);
        chosen_ = true;
        listener = listener_;
    }
    if (listener) {
        listener(heard);
    }
}

}  // namespace tessarel::host
