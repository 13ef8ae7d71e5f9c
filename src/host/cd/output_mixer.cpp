#include "host/cd/output_mixer.h"

#include <algorithm>
#include <utility>

#include "host/level_words.h"

namespace tessarel::host {
namespace {

using platform::OutputLevel;
using platform::SystemMixer;

constexpr const char* defaultOutput = "@DEFAULT_SINK@";

void forget(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

pa_usec_t nextTick() { return pa_rtclock_now() + LevelRamp::stepMs * PA_USEC_PER_MSEC; }

OutputLevel standOf(const pa_sink_info& info) { return {stepOfVolume(pa_cvolume_max(&info.volume)), info.mute != 0}; }

}  // namespace

pa_volume_t volumeOfStep(int step) {
    return (static_cast<pa_volume_t>(std::clamp(step, 0, SystemMixer::fullStep)) * PA_VOLUME_NORM + SystemMixer::fullStep / 2) /
           SystemMixer::fullStep;
}

int stepOfVolume(pa_volume_t volume) {
    const auto within = std::min<pa_volume_t>(volume, PA_VOLUME_NORM);
    return static_cast<int>((within * SystemMixer::fullStep + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM);
}

OutputMixer::OutputMixer(platform::Scheduler& scheduler, SoundOutput& sound) : scheduler_(scheduler), sound_(sound) {
    sound_.addListener(*this);
}

OutputMixer::~OutputMixer() {
    sound_.settle();
    sound_.removeListener(*this);
    const SoundOutput::Lock lock(sound_);
    if (lock && ramp_.moving()) {
        ramp_.set(ramp_.target());
        takeStep();
    }
    if (lock) {
        stopClock();
    }
    for (pa_operation* operation : operations_) {
        if (lock) {
            pa_operation_cancel(operation);
        }
        pa_operation_unref(operation);
    }
}

void OutputMixer::setStep(int step) {
    want([step](Wish& wish, OutputLevel& known) { wish.step = known.step = std::clamp(step, 0, fullStep); });
}

void OutputMixer::setMuted(bool muted) {
    want([muted](Wish& wish, OutputLevel& known) { wish.muted = known.muted = muted; });
}

void OutputMixer::centreBalance() {
    want([](Wish& wish, OutputLevel&) { wish.centred = true; });
}

OutputLevel OutputMixer::level() const {
    const std::lock_guard hold(mutex_);
    return known_;
}

Subscription OutputMixer::watch(Handler handler) { return news_->add(std::move(handler)); }

template <class Edit>
void OutputMixer::want(Edit edit) {
    {
        const std::lock_guard hold(mutex_);
        inUse_ = true;
        edit(wish_, known_);
    }
    sound_.connect();
    if (const SoundOutput::Lock lock(sound_); lock) {
        ask();
    }
}

// On the sound thread, or with its lock.
void OutputMixer::ask() {
    std::erase_if(operations_, [](pa_operation* operation) {
        const bool over = pa_operation_get_state(operation) != PA_OPERATION_RUNNING;
        if (over) {
            pa_operation_unref(operation);
        }
        return over;
    });
    if (pa_operation* question = pa_context_get_sink_info_by_name(sound_.context(), defaultOutput, heardOutput, this)) {
        operations_.push_back(question);
        const std::lock_guard hold(mutex_);
        questions_.asked();
    }
}

void OutputMixer::heardOutput(pa_context* context, const pa_sink_info* info, int end, void* self) {
    auto& mixer = *static_cast<OutputMixer*>(self);
    if (end == 0 && info) {
        mixer.take(context, *info);
        return;
    }
    const std::lock_guard hold(mixer.mutex_);
    mixer.questions_.answered();
}

void OutputMixer::take(pa_context* context, const pa_sink_info& info) {
    const std::lock_guard hold(mutex_);
    const bool wished = wish_.step || wish_.muted || wish_.centred;
    if (!wished && (clock_ || !questions_.current())) {
        return;
    }
    const OutputLevel stands = wished ? apply(context, info) : standOf(info);
    if (stands == known_) {
        return;
    }
    known_ = stands;
    scheduler_.post([stands, news = std::weak_ptr(news_)] {
        if (const auto alive = news.lock()) {
            alive->tell(stands);
        }
    });
}

OutputLevel OutputMixer::apply(pa_context* context, const pa_sink_info& info) {
    const Wish wish = std::exchange(wish_, {});
    OutputLevel stands = standOf(info);
    shape_ = info.volume;
    sink_ = info.index;
    if (wish.centred) {
        pa_cvolume_set_balance(&shape_, &info.channel_map, 0);
    }
    if (!pa_cvolume_equal(&shape_, &info.volume)) {
        write(shape_);
    }
    if (wish.step) {
        glide(*wish.step);
        stands.step = *wish.step;
    }
    if (wish.muted && *wish.muted != stands.muted) {
        forget(pa_context_set_sink_mute_by_index(context, info.index, *wish.muted ? 1 : 0, nullptr, nullptr));
        stands.muted = *wish.muted;
    }
    questions_.changed();
    return stands;
}

void OutputMixer::glide(int step) {
    const auto from = wordOfVolume(pa_cvolume_max(&shape_));
    const auto to = wordOfVolume(volumeOfStep(step));
    ramp_.set({from, from});
    ramp_.aim({to, to}, clock_ ? LevelRamp::Pace::even : LevelRamp::Pace::gentle);
    if (!ramp_.moving()) {
        takeStep();  // it may stand above full
        return;
    }
    sound_.levels(platform::Line::disc).hurry(sound_.handle());
    if (!clock_) {
        clock_ = pa_context_rttime_new(sound_.context(), nextTick(), tick, this);
    }
    takeStep();
}

void OutputMixer::tick(pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
    auto& mixer = *static_cast<OutputMixer*>(self);
    {
        const std::lock_guard hold(mixer.mutex_);
        if (mixer.ramp_.moving()) {
            pa_context_rttime_restart(mixer.sound_.context(), mixer.clock_, nextTick());
            mixer.takeStep();
            return;
        }
        mixer.stopClock();
    }
    // News that came on the way have been passed over.
    mixer.ask();
}

void OutputMixer::takeStep() {
    pa_cvolume volume = shape_;
    pa_cvolume_scale(&volume, volumeOfWord(ramp_.step().left));
    write(volume);
}

void OutputMixer::write(const pa_cvolume& volume) {
    forget(pa_context_set_sink_volume_by_index(sound_.context(), sink_, &volume, nullptr, nullptr));
    questions_.changed();
}

void OutputMixer::stopClock() {
    if (clock_) {
        sound_.handle().loop->time_free(std::exchange(clock_, nullptr));
    }
}

void OutputMixer::soundServerFound() { outputChanged(); }

void OutputMixer::soundServerMissing() {
    const std::lock_guard hold(mutex_);
    wish_ = {};
    questions_.forget();
    ramp_.set(ramp_.target());  // the output that glided is no more
    stopClock();
}

void OutputMixer::outputChanged() {
    {
        const std::lock_guard hold(mutex_);
        if (!inUse_) {
            return;
        }
    }
    ask();
}

}  // namespace tessarel::host
