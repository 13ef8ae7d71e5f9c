#pragma once
#include <pulse/pulseaudio.h>

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "host/cd/level_ramp.h"
#include "host/cd/open_questions.h"
#include "platform/audio_levels.h"

namespace tessarel::host {

/// Where a line's streams live: the connection and its loop. Whoever hands it on is on the sound thread or holds its lock.
struct SoundServer {
    pa_context* context = nullptr;
    pa_mainloop_api* loop = nullptr;
};

/// Can be asked to play in short pieces for a while, so that the steps of a level are heard one by one.
class QuickSound {
public:
    virtual void quicken(bool quick) = 0;

protected:
    ~QuickSound() = default;
};

/// Keeps one level for a line of the program's sound, whichever streams carry it. A change glides, so that it does not click.
class StreamLevels {
public:
    using Listener = std::function<void(const platform::LineLevel&)>;

    // From any thread:

    platform::LineLevel level() const;
    /// What a new stream is to start with; nothing when the server may decide.
    std::optional<platform::LineLevel> startLevel() const;
    /// Lifts the mute. Under `SoundOutput::Lock` together with `send`, so that the server's news can't come between the two.
    void remember(platform::StereoLevel level);
    /// Called on the sound thread when something else has changed the level.
    void setListener(Listener listener);

    // On the sound thread or with its lock:

    /// Brings the streams that now sound to the remembered level, the first step at once.
    void send(const SoundServer& server);
    /// Lets the streams play in short pieces for a while, for a change that is made elsewhere.
    void hurry(const SoundServer& server);
    /// `sound` may be null, else it lives until `streamParted`.
    void streamStarted(const SoundServer& server, std::uint32_t index, int channels, QuickSound* sound);
    /// The stream still follows the level, but nobody hears it.
    void streamParted(std::uint32_t index);
    void streamGone(std::uint32_t index);
    /// The server tells that a stream, perhaps not ours, has changed.
    void streamChanged(const SoundServer& server, std::uint32_t index);
    void serverGone();
    /// Ends a glide at once.
    void arrive();

private:
    struct Stream {
        std::uint32_t index;
        int channels;
        QuickSound* sound;
    };

    static void heardInfo(pa_context*, const pa_sink_input_info* info, int end, void* self);
    static void tick(pa_mainloop_api*, pa_time_event*, const timeval*, void* self);
    void ask(std::uint32_t index);
    void take(const pa_sink_input_info& info);
    void step();
    void rest();
    void quicken(bool quick);
    void stopClock();
    void restartClock(unsigned ms);
    void write(const Stream& stream, platform::StereoLevel level);

    mutable std::mutex mutex_;
    platform::LineLevel level_;
    LevelRamp ramp_;  ///< what the streams have been told
    bool chosen_ = false;
    bool unmute_ = false;
    OpenQuestions questions_;
    std::vector<Stream> streams_;
    SoundServer server_;
    pa_time_event* clock_ = nullptr;  ///< runs while the streams are quickened
    bool resting_ = false;            ///< the level has arrived, and the clock waits for a further change
    Listener listener_;
};

}  // namespace tessarel::host
