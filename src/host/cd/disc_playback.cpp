#include "host/cd/disc_playback.h"

#include <algorithm>
#include <utility>

namespace tessarel::host {
namespace {

using namespace std::chrono_literals;

constexpr Frames readAheadFrames = 10 * framesPerSecond;
constexpr Frames refillFrames = 2 * framesPerSecond;
constexpr Frames firstBatchFrames = 16;  // small, so that the first sample is heard soon
constexpr Frames batchFrames = framesPerSecond;
constexpr auto retryInterval = 1s;
constexpr auto serverPatience = 2s;
constexpr auto streamPatience = 5s;

std::chrono::microseconds durationOf(std::int64_t samples) {
    return std::chrono::microseconds(samples * 1'000'000 / samplesPerSecond + 1);
}

SampleClock::Time steadyNow() { return std::chrono::steady_clock::now(); }

}  // namespace

/// Holds the state, and the sound thread too whenever there is a stream.
class DiscPlayback::Hold {
public:
    explicit Hold(const DiscPlayback& playback) : state_(playback.mutex_, std::defer_lock) {
        for (;;) {
            sound_.emplace(playback.output_);
            state_.lock();
            if (*sound_ || !playback.stream_) {
                return;
            }
            state_.unlock();
        }
    }
    ~Hold() { state_.unlock(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    std::optional<SoundOutput::Lock> sound_;
    std::unique_lock<std::mutex> state_;
};

DiscPlayback::DiscPlayback(SoundOutput& output, Ended ended)
    : output_(output),
      ended_(std::move(ended)),
      ring_(static_cast<std::size_t>(readAheadFrames) * samplesPerFrame),
      batch_(static_cast<std::size_t>(batchFrames) * samplesPerFrame * 2) {
    output_.addListener(*this);
    thread_ = std::thread([this] { run(); });
}

DiscPlayback::~DiscPlayback() {
    quit();
    thread_.join();
}

void DiscPlayback::quit() {
    {
        const Hold hold(*this);
        quit_ = true;
        active_ = running_ = live_ = false;
        ++epoch_;
        stream_.reset();
        wake_.notify_all();
    }
    output_.removeListener(*this);
}

void DiscPlayback::start(std::shared_ptr<Medium> medium, PlayPlan plan, unsigned play) {
    output_.connect();
    const Hold hold(*this);
    const Time now = steadyNow();
    medium_ = std::move(medium);
    plan_ = std::move(plan);
    play_ = play;
    active_ = running_ = true;
    ending_ = platform::CdEnding::endOfDisc;
    limit_ = plan_.total();
    silent_ = false;
    clock_.freeze(now);
    clock_.set(0, now);
    readAgainFrom(0);
    if (live_) {
        streamBase_ = stream_->heard().value_or(0);
        stream_->flush();
        stream_->cork(false);
        clock_.run(now);
    } else {
        awaitSound(now);
    }
    wake_.notify_all();
}

void DiscPlayback::pause() {
    const Hold hold(*this);
    if (!running_) {
        return;
    }
    const Time now = steadyNow();
    syncClock(now);
    running_ = false;
    clock_.freeze(now);
    if (live_) {
        stream_->cork(true);
    }
}

void DiscPlayback::resume() {
    output_.connect();
    const Hold hold(*this);
    if (!active_ || running_) {
        return;
    }
    const Time now = steadyNow();
    running_ = true;
    if (live_) {
        stream_->cork(false);
        clock_.run(now);
    } else {
        awaitSound(now);
    }
    wake_.notify_all();
}

void DiscPlayback::stop() {
    const Hold hold(*this);
    const Time now = steadyNow();
    syncClock(now);
    clock_.freeze(now);
    active_ = running_ = silent_ = false;
    readAgainFrom(heardFrames(now));
    medium_.reset();
    if (live_) {
        stream_->cork(true);
        stream_->flush();
    }
}

Frames DiscPlayback::position() const {
    const Hold hold(*this);
    const Time now = steadyNow();
    syncClock(now);
    return plan_.addressAt(std::min(heardFrames(now), limit_));
}

bool DiscPlayback::sounding() const {
    const std::lock_guard hold(mutex_);
    return active_ && running_ && !silent_;
}

void DiscPlayback::syncClock(Time now) const {
    if (!live_ || !running_) {
        return;
    }
    const std::int64_t heard = stream_->heard().value_or(streamBase_) - streamBase_;
    clock_.set(samplesOf(startIndex_) + std::clamp<std::int64_t>(heard, 0, written_), now);
}

void DiscPlayback::readAgainFrom(Frames index) {
    ++epoch_;
    ring_.clear();
    filling_ = true;
    startIndex_ = readIndex_ = index;
    written_ = 0;
    drainAsked_ = drained_ = false;
}

void DiscPlayback::awaitSound(Time now) {
    silent_ = false;
    nextTry_ = now;
    patience_ = output_.server() == SoundOutput::Server::missing ? now : now + serverPatience;
}

// The reading thread.

void DiscPlayback::run() {
    std::unique_lock hold(mutex_);
    while (!quit_) {
        const Time now = steadyNow();
        take(nextStep(now), now, hold);
    }
    finished_ = true;
}

DiscPlayback::Step DiscPlayback::nextStep(Time now) const {
    if (!active_) {
        return Step::sleep;
    }
    if (drained_ || startIndex_ >= limit_ || (silent_ && heardFrames(now) >= limit_)) {
        return Step::end;
    }
    if (const Step step = soundStep(now); step != Step::sleep) {
        return step;
    }
    const bool room = ring_.room() >= static_cast<std::size_t>(batchFrames) * samplesPerFrame;
    return !silent_ && filling_ && room && !allRead() ? Step::read : Step::sleep;
}

DiscPlayback::Step DiscPlayback::soundStep(Time now) const {
    if (!running_ || live_) {
        return Step::sleep;
    }
    if (!silent_ && now >= patience_) {
        return Step::goSilent;
    }
    if (stream_) {
        return now >= openedAt_ + streamPatience ? Step::dropStream : Step::sleep;
    }
    if (now < nextTry_) {
        return Step::sleep;
    }
    return output_.server() == SoundOutput::Server::ready ? Step::openStream : Step::connect;
}

void DiscPlayback::take(Step step, Time now, std::unique_lock<std::mutex>& hold) {
    switch (step) {
        case Step::end:
            end(hold);
            break;
        case Step::goSilent:
            silent_ = true;
            clock_.run(now);
            break;
        case Step::connect:
        case Step::openStream:
        case Step::dropStream:
            nextTry_ = now + retryInterval;
            hold.unlock();
            if (step == Step::connect) {
                output_.connect();
            } else if (step == Step::openStream) {
                openStream();
            } else {
                dropStream();
            }
            hold.lock();
            break;
        case Step::read:
            readBatch(hold);
            break;
        case Step::sleep:
            if (const auto until = wakeTime(now)) {
                wake_.wait_until(hold, *until);
            } else {
                wake_.wait(hold);
            }
            break;
    }
}

std::optional<DiscPlayback::Time> DiscPlayback::wakeTime(Time now) const {
    if (!running_ || live_) {
        return std::nullopt;
    }
    Time until = stream_ ? openedAt_ + streamPatience : nextTry_;
    if (silent_) {
        until = std::min<Time>(until, now + durationOf(samplesOf(limit_) - clock_.at(now)));
    } else {
        until = std::min(until, patience_);
    }
    return until;
}

void DiscPlayback::openStream() {
    const SoundOutput::Lock sound(output_);
    const std::lock_guard hold(mutex_);
    if (sound && !stream_ && running_) {
        openedAt_ = steadyNow();
        stream_ = std::make_unique<SoundStream>(output_, static_cast<SoundStreamOwner&>(*this));
    }
}

void DiscPlayback::dropStream() {
    const Hold hold(*this);
    if (!live_) {
        stream_.reset();
    }
}

void DiscPlayback::readBatch(std::unique_lock<std::mutex>& hold) {
    const unsigned epoch = epoch_;
    const Frames index = readIndex_;
    const bool first = index == startIndex_;
    const Frames count = std::min(plan_.runFrom(index), first ? firstBatchFrames : batchFrames);
    const Frames address = plan_.addressAt(index);
    const auto medium = medium_;
    hold.unlock();
    if (first) {
        reader_.reset();
    }
    const auto outcome = reader_.read(*medium, address, count, batch_.data(), [&] { return epoch_ != epoch; });
    hold.lock();
    if (epoch_ != epoch) {
        return;
    }
    if (outcome == FrameReader::Outcome::gone) {
        ending_ = platform::CdEnding::hardware;
        drained_ = true;
        return;
    }
    ring_.push(batch_.data(), static_cast<std::size_t>(count) * samplesPerFrame);
    readIndex_ += count;
    filling_ = ring_.room() >= static_cast<std::size_t>(batchFrames) * samplesPerFrame;
    if (outcome == FrameReader::Outcome::hopeless) {
        ending_ = platform::CdEnding::hardware;
        limit_ = readIndex_;
    }
    feedFromReader(hold);
}

void DiscPlayback::feedFromReader(std::unique_lock<std::mutex>& hold) {
    if (!live_) {
        return;
    }
    hold.unlock();
    {
        const SoundOutput::Lock sound(output_);
        hold.lock();
        if (sound && live_ && active_) {
            feed(steadyNow());
        }
        hold.unlock();
    }
    hold.lock();
}

void DiscPlayback::end(std::unique_lock<std::mutex>& hold) {
    const unsigned play = play_;
    const platform::CdEnding ending = ending_;
    const unsigned epoch = ++epoch_;
    const Time now = steadyNow();
    clock_.freeze(now);
    if (ending == platform::CdEnding::endOfDisc) {
        clock_.set(samplesOf(limit_), now);
    }
    active_ = running_ = silent_ = false;
    medium_.reset();
    hold.unlock();
    {
        const Hold both(*this);
        if (live_ && epoch_ == epoch) {
            stream_->cork(true);
            stream_->flush();
        }
    }
    ended_(play, ending);
    hold.lock();
}

// The sound thread, with its own lock held.

void DiscPlayback::feed(Time now) {
    written_ += static_cast<std::int64_t>(
        stream_->feed([this](std::int16_t* samples, std::size_t count) { return ring_.pop(samples, count); }));
    syncClock(now);
    if (allRead()) {
        if (ring_.size() == 0 && !drainAsked_) {
            drainAsked_ = true;
            stream_->drain();
        }
    } else if (!filling_ && ring_.room() >= static_cast<std::size_t>(refillFrames) * samplesPerFrame) {
        filling_ = true;
        wake_.notify_all();
    }
}

void DiscPlayback::soundServerFound() {
    const std::lock_guard hold(mutex_);
    nextTry_ = steadyNow();
    wake_.notify_all();
}

void DiscPlayback::soundServerMissing() {
    const std::lock_guard hold(mutex_);
    const Time now = steadyNow();
    patience_ = now;
    nextTry_ = now + retryInterval;
    if (stream_) {
        loseStream(now);
    }
    wake_.notify_all();
}

void DiscPlayback::streamReady() {
    const std::lock_guard hold(mutex_);
    const Time now = steadyNow();
    live_ = true;
    streamBase_ = 0;
    written_ = 0;
    if (silent_) {
        readAgainFrom(heardFrames(now));
        silent_ = false;
    }
    if (running_) {
        clock_.set(samplesOf(startIndex_), now);
        clock_.run(now);
    } else {
        stream_->cork(true);
    }
    if (active_) {
        feed(now);
    }
    wake_.notify_all();
}

void DiscPlayback::streamLost() {
    const std::lock_guard hold(mutex_);
    loseStream(steadyNow());
    wake_.notify_all();
}

void DiscPlayback::loseStream(Time now) {
    const bool wasLive = live_;
    live_ = false;
    stream_.reset();
    if (active_ && wasLive) {
        const std::int64_t known = samplesOf(startIndex_) + written_;
        clock_.set(std::min(clock_.at(now), known), now);
        readAgainFrom(heardFrames(now));
        silent_ = running_;
    }
    nextTry_ = std::max(now, openedAt_ + retryInterval);
}

void DiscPlayback::streamHungry() {
    const std::lock_guard hold(mutex_);
    if (active_ && live_) {
        feed(steadyNow());
    }
}

void DiscPlayback::streamDrained() {
    const std::lock_guard hold(mutex_);
    if (active_ && drainAsked_) {
        drained_ = true;
        wake_.notify_all();
    }
}

}  // namespace tessarel::host
