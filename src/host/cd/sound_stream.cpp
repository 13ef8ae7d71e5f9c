#include "host/cd/sound_stream.h"

#include <algorithm>

#include "host/cd/sample_clock.h"
#include "host/level_words.h"

namespace tessarel::host {
namespace {

constexpr std::size_t bytesPerSample = 4;
constexpr std::uint32_t bytesOfMs(std::uint32_t ms) {
    return static_cast<std::uint32_t>(samplesPerSecond) * ms / 1000 * static_cast<std::uint32_t>(bytesPerSample);
}
// A long buffer that is filled in large pieces keeps the processor asleep; the short pre-buffer makes the start quick.
constexpr pa_buffer_attr bufferShape{static_cast<std::uint32_t>(-1), bytesOfMs(2000), bytesOfMs(20), bytesOfMs(500),
                                     static_cast<std::uint32_t>(-1)};
// Half of what two requests leave of the whole is the server's own share: with long requests it plays a few milliseconds at a
// time, while as much is buffered as ever.
constexpr pa_buffer_attr quickShape{static_cast<std::uint32_t>(-1), bytesOfMs(2000), bytesOfMs(20), bytesOfMs(996),
                                    static_cast<std::uint32_t>(-1)};

void forget(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

pa_stream* newStream(pa_context* context) {
    const pa_sample_spec format{PA_SAMPLE_S16LE, static_cast<std::uint32_t>(samplesPerSecond), 2};
    pa_channel_map channels;
    pa_channel_map_init_stereo(&channels);
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "music");
    pa_stream* stream = pa_stream_new_with_proplist(context, "Audio CD", &format, &channels, properties);
    pa_proplist_free(properties);
    return stream;
}

}  // namespace

SoundStream::SoundStream(SoundOutput& output, SoundStreamOwner& owner)
    : output_(output), owner_(owner), stream_(newStream(output.context())) {
    if (!stream_) {
        return;
    }
    pa_stream_set_state_callback(stream_, stateChanged, this);
    pa_stream_set_write_callback(stream_, wanted, this);
    const auto level = output.levels(platform::Line::disc).startLevel();
    const pa_cvolume volume = volumeOf(level.value_or(platform::LineLevel{}).level, 2);
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE |
                                                      PA_STREAM_ADJUST_LATENCY | startFlag(level));
    pa_stream_connect_playback(stream_, nullptr, &bufferShape, flags, level ? &volume : nullptr, nullptr);
}

SoundStream::~SoundStream() {
    if (!stream_) {
        return;
    }
    forgetDrain();
    pa_stream_set_state_callback(stream_, nullptr, nullptr);
    pa_stream_set_write_callback(stream_, nullptr, nullptr);
    output_.levels(platform::Line::disc).streamParted(index_);
    output_.partingStreams().add(output_.handle(), output_.levels(platform::Line::disc), stream_);
}

std::size_t SoundStream::feed(const Source& source) {
    if (!stream_ || pa_stream_get_state(stream_) != PA_STREAM_READY) {
        return 0;
    }
    std::size_t total = 0;
    for (std::size_t room = pa_stream_writable_size(stream_); room != static_cast<std::size_t>(-1) && room >= bytesPerSample;) {
        void* piece = nullptr;
        std::size_t bytes = room;
        if (pa_stream_begin_write(stream_, &piece, &bytes) < 0 || !piece) {
            break;
        }
        const std::size_t given = source(static_cast<std::int16_t*>(piece), std::min(bytes, room) / bytesPerSample);
        if (given == 0) {
            pa_stream_cancel_write(stream_);
            break;
        }
        pa_stream_write(stream_, piece, given * bytesPerSample, nullptr, 0, PA_SEEK_RELATIVE);
        total += given;
        room -= given * bytesPerSample;
    }
    return total;
}

std::optional<std::int64_t> SoundStream::heard() const {
    pa_usec_t time = 0;
    if (!stream_ || pa_stream_get_time(stream_, &time) < 0) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(time) * samplesPerSecond / 1'000'000;
}

void SoundStream::cork(bool silent) {
    if (stream_) {
        forget(pa_stream_cork(stream_, silent ? 1 : 0, nullptr, nullptr));
    }
}

void SoundStream::flush() {
    forgetDrain();
    if (stream_) {
        forget(pa_stream_flush(stream_, nullptr, nullptr));
    }
}

void SoundStream::drain() {
    forgetDrain();
    if (stream_) {
        drain_ = pa_stream_drain(stream_, drained, this);
    }
}

void SoundStream::forgetDrain() {
    if (drain_) {
        pa_operation_cancel(drain_);
        pa_operation_unref(drain_);
        drain_ = nullptr;
    }
}

void SoundStream::quicken(bool quick) {
    forget(pa_stream_set_buffer_attr(stream_, quick ? &quickShape : &bufferShape, nullptr, nullptr));
}

void SoundStream::stateChanged(pa_stream* stream, void* self) {
    auto& sound = *static_cast<SoundStream*>(self);
    const pa_stream_state_t state = pa_stream_get_state(stream);
    if (state == PA_STREAM_READY) {
        sound.index_ = pa_stream_get_index(stream);
        sound.output_.levels(platform::Line::disc).streamStarted(sound.output_.handle(), sound.index_, 2, &sound);
        sound.owner_.streamReady();
    } else if (state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED) {
        sound.owner_.streamLost();
    }
}

void SoundStream::wanted(pa_stream*, std::size_t, void* self) { static_cast<SoundStream*>(self)->owner_.streamHungry(); }

void SoundStream::drained(pa_stream*, int success, void* self) {
    if (success) {
        static_cast<SoundStream*>(self)->owner_.streamDrained();
    }
}

}  // namespace tessarel::host
