#pragma once
#include <pulse/pulseaudio.h>

#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/audio_levels.h"

namespace tessarel::host {

/// Keeps one level for the disc's sound, whichever stream carries it. Calls that take a context are made on the sound thread or
/// under `SoundOutput::Lock`; the others from any thread.
class StreamLevels {
public:
    using Listener = std::function<void(platform::StereoLevel)>;

    platform::StereoLevel level() const;
    /// The level that a new stream is to start with; nothing when the server may decide.
    std::optional<platform::StereoLevel> startLevel() const;
    /// Under `SoundOutput::Lock` together with `send`, so that the server's news can't come between the two.
    void remember(platform::StereoLevel level);
    /// Called on the sound thread when something else has changed the level.
    void setListener(Listener listener);

    /// Gives the remembered level to the streams that now sound.
    void send(pa_context* context);
    void streamStarted(pa_context* context, std::uint32_t index);
    void streamGone(std::uint32_t index);
    /// The server tells that a stream, perhaps not ours, has changed.
    void streamChanged(pa_context* context, std::uint32_t index);
    void serverGone();

private:
    static void heardInfo(pa_context*, const pa_sink_input_info* info, int end, void* self);
    void ask(pa_context* context, std::uint32_t index);
    void take(const pa_cvolume& volume);

    mutable std::mutex mutex_;
    platform::StereoLevel level_;
    bool chosen_ = false;
    unsigned writes_ = 0;         ///< counts own changes: what was asked before the last one is out of date
    std::deque<unsigned> asked_;  ///< `writes_` at each question that is still open
    std::vector<std::uint32_t> streams_;
    Listener listener_;
};

/// The server's form of a level, for a stereo stream.
pa_cvolume volumeOf(platform::StereoLevel level);

}  // namespace tessarel::host
