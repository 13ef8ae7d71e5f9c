#pragma once
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "host/cd/frame_reader.h"
#include "host/cd/play_plan.h"
#include "host/cd/sample_clock.h"
#include "host/cd/sample_ring.h"
#include "host/cd/sound_stream.h"

namespace tessarel::host {

/// Brings a disc's sound from the medium to the sound server, on a reading thread of its own. Where there is no server the disc
/// "plays" on a steady clock, and the sound joins in when a server comes. The calls come from one thread and return at once.
///
/// Locks are taken in one order: the sound thread's (`SoundOutput::Lock`), then `mutex_`.
class DiscPlayback final : private SoundServerListener, private SoundStreamOwner {
public:
    /// Called on a thread of the playback when a play has run to its end.
    using Ended = std::function<void(unsigned play, platform::CdEnding ending)>;

    DiscPlayback(SoundOutput& output, Ended ended);
    /// Waits for a read that is going on.
    ~DiscPlayback();
    DiscPlayback(const DiscPlayback&) = delete;
    DiscPlayback& operator=(const DiscPlayback&) = delete;

    /// Drops what sounds and plays a plan from its first frame. `play` is given back to `Ended`.
    void start(std::shared_ptr<Medium> medium, PlayPlan plan, unsigned play);
    void pause();
    void resume();
    /// Silent at once; the medium is let go.
    void stop();
    /// Stops for good without waiting for the reading thread; `finished` tells when that has ended.
    void quit();
    bool finished() const { return finished_; }

    /// The address that is heard now.
    Frames position() const;
    /// Whether a play is being heard, or about to be.
    bool sounding() const;

private:
    using Time = SampleClock::Time;
    enum class Step { end, goSilent, connect, openStream, dropStream, read, sleep };
    class Hold;

    void run();
    Step nextStep(Time now) const;
    Step soundStep(Time now) const;
    void take(Step step, Time now, std::unique_lock<std::mutex>& hold);
    std::optional<Time> wakeTime(Time now) const;
    void openStream();
    void dropStream();
    void readBatch(std::unique_lock<std::mutex>& hold);
    void end(std::unique_lock<std::mutex>& hold);
    void feedFromReader(std::unique_lock<std::mutex>& hold);

    void soundServerFound() override;
    void soundServerMissing() override;
    void streamReady() override;
    void streamLost() override;
    void streamHungry() override;
    void streamDrained() override;

    // With `mutex_` held, and the sound thread's lock where there is a stream:
    void feed(Time now);
    void syncClock(Time now) const;
    void readAgainFrom(Frames index);
    void awaitSound(Time now);
    void loseStream(Time now);
    bool allRead() const { return readIndex_ >= limit_; }
    std::int64_t samplesOf(Frames index) const { return static_cast<std::int64_t>(index) * samplesPerFrame; }
    Frames heardFrames(Time now) const { return static_cast<Frames>(clock_.at(now) / samplesPerFrame); }

    SoundOutput& output_;
    const Ended ended_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    bool quit_ = false;
    std::atomic<bool> finished_{false};

    // The play that is going on.
    std::shared_ptr<Medium> medium_;
    PlayPlan plan_;
    unsigned play_ = 0;
    bool active_ = false;   ///< until stopped or ended
    bool running_ = false;  ///< active and not paused
    platform::CdEnding ending_ = platform::CdEnding::endOfDisc;
    Frames limit_ = 0;  ///< index behind the last frame that is to sound

    // From the medium into the ring.
    std::atomic<unsigned> epoch_{0};  ///< changes whenever what is being read is no longer wanted
    SampleRing ring_;
    Frames readIndex_ = 0;  ///< of the next frame to read
    bool filling_ = true;   ///< the ring is filled up, then left alone until it has run down a good part
    FrameReader reader_;
    std::vector<std::int16_t> batch_;

    // From the ring to the server.
    std::unique_ptr<SoundStream> stream_;
    bool live_ = false;            ///< the stream is ready
    bool silent_ = false;          ///< there is no sound at present: the clock runs by itself
    std::int64_t streamBase_ = 0;  ///< the stream's count when it was given the first sample of `startIndex_`
    Frames startIndex_ = 0;
    std::int64_t written_ = 0;  ///< samples since `streamBase_`
    bool drainAsked_ = false;
    bool drained_ = false;
    mutable SampleClock clock_;  ///< counts the plan's samples
    Time openedAt_{};
    Time nextTry_{};
    Time patience_{};  ///< until then the play waits for its sound to begin

    std::thread thread_;
};

}  // namespace tessarel::host
