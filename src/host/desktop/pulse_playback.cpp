#include "host/desktop/pulse_playback.h"

#include <pulse/pulseaudio.h>

#include <chrono>
#include <memory>
#include <vector>

#include "host/level_words.h"

namespace tessarel::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds connectPatience{5};
/// A server that takes no more sound for this long has hung.
constexpr std::chrono::seconds stallPatience{5};
constexpr auto turn = std::chrono::microseconds(std::chrono::milliseconds(20)).count();
constexpr std::uint32_t bufferMilliseconds = 200;
constexpr std::size_t chunkFrames = 4096;

struct Release {
    void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    void operator()(pa_context* context) const {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    void operator()(pa_stream* stream) const {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
    void operator()(pa_operation* operation) const { pa_operation_unref(operation); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

class Playback {
public:
    Playback(LineStreams& line, const std::stop_token& stop) : line_(line), stop_(stop), loop_(pa_mainloop_new()) {}
    ~Playback() {
        if (index_ != PA_INVALID_INDEX) {
            line_.streamGone(index_);
        }
    }
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    void run(SoundDecoder& sound) {
        if (connect() && openStream(sound)) {
            feed(sound);
            drain();
        }
    }

private:
    // Takes the connection one step forward; false when it is broken or a stop is requested.
    bool step() {
        if (stop_.stop_requested() || pa_mainloop_prepare(loop_.get(), static_cast<int>(turn)) < 0 ||
            pa_mainloop_poll(loop_.get()) < 0 || pa_mainloop_dispatch(loop_.get()) < 0) {
            return false;
        }
        return PA_CONTEXT_IS_GOOD(pa_context_get_state(context_.get())) &&
               (!stream_ || PA_STREAM_IS_GOOD(pa_stream_get_state(stream_.get())));
    }

    template <class Condition>
    bool stepUntil(Condition reached, Clock::duration patience) {
        const auto end = Clock::now() + patience;
        while (!reached()) {
            if (!step() || Clock::now() > end) {
                return false;
            }
        }
        return true;
    }

    bool connect() {
        if (!loop_) {
            return false;
        }
        context_.reset(pa_context_new(pa_mainloop_get_api(loop_.get()), "Tessarel"));
        if (!context_ || pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
            return false;
        }
        return stepUntil([this] { return pa_context_get_state(context_.get()) == PA_CONTEXT_READY; }, connectPatience);
    }

    bool openStream(const SoundDecoder& sound) {
        const pa_sample_spec spec{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(sound.rate()),
                                  static_cast<std::uint8_t>(sound.channels())};
        pa_channel_map map;
        pa_channel_map_init_extend(&map, spec.channels, PA_CHANNEL_MAP_DEFAULT);
        stream_.reset(pa_stream_new(context_.get(), "Cue", &spec, &map));
        pa_buffer_attr buffer{};
        buffer.maxlength = static_cast<std::uint32_t>(-1);
        buffer.tlength = static_cast<std::uint32_t>(pa_usec_to_bytes(bufferMilliseconds * PA_USEC_PER_MSEC, &spec));
        buffer.prebuf = static_cast<std::uint32_t>(-1);
        buffer.minreq = static_cast<std::uint32_t>(-1);
        const auto level = line_.startLevel();
        const pa_cvolume volume = volumeOf(level.value_or(platform::LineLevel{}).level, spec.channels);
        const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | startFlag(level));
        if (!stream_ ||
            pa_stream_connect_playback(stream_.get(), nullptr, &buffer, flags, level ? &volume : nullptr, nullptr) < 0 ||
            !stepUntil([this] { return pa_stream_get_state(stream_.get()) == PA_STREAM_READY; }, connectPatience)) {
            return false;
        }
        index_ = pa_stream_get_index(stream_.get());
        line_.streamStarted(index_, spec.channels);
        return true;
    }

    // Hands over all samples, as fast as the server takes them.
    void feed(SoundDecoder& sound) {
        const std::size_t frameBytes = sizeof(float) * static_cast<std::size_t>(sound.channels());
        std::vector<float> samples(chunkFrames * static_cast<std::size_t>(sound.channels()));
        const auto room = [this, frameBytes] { return pa_stream_writable_size(stream_.get()) >= frameBytes; };
        while (stepUntil(room, stallPatience)) {
            const auto frames = std::min(pa_stream_writable_size(stream_.get()) / frameBytes, chunkFrames);
            const auto read = sound.read(samples.data(), frames);
            if (read == 0 ||
                pa_stream_write(stream_.get(), samples.data(), read * frameBytes, nullptr, 0, PA_SEEK_RELATIVE) < 0) {
                return;
            }
        }
    }

    void drain() {
        if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream_.get()))) {
            return;
        }
        const Owned<pa_operation> drained(pa_stream_drain(stream_.get(), nullptr, nullptr));
        if (drained) {
            stepUntil([&] { return pa_operation_get_state(drained.get()) != PA_OPERATION_RUNNING; }, stallPatience);
        }
    }

    LineStreams& line_;
    const std::stop_token& stop_;
    std::uint32_t index_ = PA_INVALID_INDEX;
    Owned<pa_mainloop> loop_;
    Owned<pa_context> context_;
    Owned<pa_stream> stream_;
};

}  // namespace

void playThroughPulse(SoundDecoder& sound, LineStreams& line, const std::stop_token& stop) { Playback(line, stop).run(sound); }

}  // namespace tessarel::host
