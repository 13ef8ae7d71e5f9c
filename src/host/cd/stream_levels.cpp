#include "host/cd/stream_levels.h"

#include <algorithm>

#include "host/cd/level_words.h"

namespace tessarel::host {
namespace {

void forget(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

}  // namespace

pa_cvolume volumeOf(platform::StereoLevel level) {
    pa_cvolume volume;
    pa_cvolume_init(&volume);
    volume.channels = 2;
    volume.values[0] = volumeOfWord(level.left);
    volume.values[1] = volumeOfWord(level.right);
    return volume;
}

platform::StereoLevel StreamLevels::level() const {
    const std::lock_guard hold(mutex_);
    return level_;
}

std::optional<platform::StereoLevel> StreamLevels::startLevel() const {
    const std::lock_guard hold(mutex_);
    return chosen_ ? std::optional(level_) : std::nullopt;
}

void StreamLevels::remember(platform::StereoLevel level) {
    const std::lock_guard hold(mutex_);
    level_ = {std::clamp(level.left, 0, 65535), std::clamp(level.right, 0, 65535)};
    chosen_ = true;
    ++writes_;
}

void StreamLevels::setListener(Listener listener) {
    const std::lock_guard hold(mutex_);
    listener_ = std::move(listener);
}

void StreamLevels::send(pa_context* context) {
    const std::lock_guard hold(mutex_);
    const pa_cvolume volume = volumeOf(level_);
    for (const std::uint32_t index : streams_) {
        forget(pa_context_set_sink_input_volume(context, index, &volume, nullptr, nullptr));
    }
}

void StreamLevels::streamStarted(pa_context* context, std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    streams_.push_back(index);
    ask(context, index);
}

void StreamLevels::streamGone(std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    std::erase(streams_, index);
}

void StreamLevels::streamChanged(pa_context* context, std::uint32_t index) {
    const std::lock_guard hold(mutex_);
    if (std::find(streams_.begin(), streams_.end(), index) != streams_.end()) {
        ask(context, index);
    }
}

void StreamLevels::serverGone() {
    const std::lock_guard hold(mutex_);
    streams_.clear();
    asked_.clear();
}

void StreamLevels::ask(pa_context* context, std::uint32_t index) {
    if (pa_operation* question = pa_context_get_sink_input_info(context, index, heardInfo, this)) {
        asked_.push_back(writes_);
        pa_operation_unref(question);
    }
}

void StreamLevels::heardInfo(pa_context*, const pa_sink_input_info* info, int end, void* self) {
    auto& levels = *static_cast<StreamLevels*>(self);
    if (end == 0 && info) {
        levels.take(info->volume);
        return;
    }
    const std::lock_guard hold(levels.mutex_);
    if (!levels.asked_.empty()) {
        levels.asked_.pop_front();
    }
}

void StreamLevels::take(const pa_cvolume& volume) {
    Listener listener;
    platform::StereoLevel heard;
    {
        const std::lock_guard hold(mutex_);
        const bool current = !asked_.empty() && asked_.front() == writes_;
        heard = {wordOfVolume(volume.values[0]), wordOfVolume(volume.values[volume.channels > 1 ? 1 : 0])};
        if (!current || heard == level_) {
            return;
        }
        level_ = heard;
        listener = listener_;
    }
    if (listener) {
        listener(heard);
    }
}

}  // namespace tessarel::host
