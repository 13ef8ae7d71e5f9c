#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "host/cd/sound_output.h"

namespace tessarel::host {

/// What a stream tells its owner, on the sound thread.
class SoundStreamOwner {
public:
    virtual void streamReady() = 0;
    /// The stream is of no more use; the owner may destroy it within the call.
    virtual void streamLost() = 0;
    /// The server wants more samples than it has been given.
    virtual void streamHungry() = 0;
    /// All that was written before `drain` has been heard.
    virtual void streamDrained() = 0;

protected:
    ~SoundStreamOwner() = default;
};

/// One stream of stereo 16-bit samples at 44100 a second. Everything, construction and destruction included, happens on the
/// sound thread or under `SoundOutput::Lock`. It begins to sound as soon as it is ready and has samples.
class SoundStream final : private QuickSound {
public:
    /// Copies at most `count` stereo samples to where it is told, and returns how many.
    using Source = std::function<std::size_t(std::int16_t* samples, std::size_t count)>;

    SoundStream(SoundOutput& output, SoundStreamOwner& owner);
    ~SoundStream();
    SoundStream(const SoundStream&) = delete;
    SoundStream& operator=(const SoundStream&) = delete;

    /// Hands on what the server has room for, as far as the source gives; returns how many samples.
    std::size_t feed(const Source& source);
    /// Samples heard since the stream began; nothing while the server has not told.
    std::optional<std::int64_t> heard() const;
    void cork(bool silent);
    /// Throws away what was written and is not heard yet; a pending `drain` is forgotten.
    void flush();
    void drain();

private:
    static void stateChanged(pa_stream* stream, void* self);
    static void wanted(pa_stream*, std::size_t bytes, void* self);
    static void drained(pa_stream*, int success, void* self);
    void forgetDrain();
    void quicken(bool quick) override;

    SoundOutput& output_;
    SoundStreamOwner& owner_;
    pa_stream* stream_ = nullptr;
    pa_operation* drain_ = nullptr;
    std::uint32_t index_ = PA_INVALID_INDEX;
};

}  // namespace tessarel::host
