#include "audio/device/mm_control.h"

#include <algorithm>

#include "base/text.h"

namespace tessarel::audio {
namespace {

// Rounded up, so that truncating the milliseconds back to frames gives the same frame.
std::int64_t toMilliseconds(Frames frames) { return (std::int64_t{frames} * 1000 + framesPerSecond - 1) / framesPerSecond; }

}  // namespace

MMControl::MMControl(platform::Scheduler& scheduler, platform::CdPlayers& players, std::function<char()> driveLetter)
    : scheduler_(scheduler), player_(players.make()), driveLetter_(std::move(driveLetter)) {
    player_->onEnded = [this](platform::CdEnding ending) {
        if (PlayCompleted) {
            PlayCompleted(ending == platform::CdEnding::hardware ? deviceError::hardware : deviceError::none);
        }
    };
}

void MMControl::setUpdateInterval(int ms) {
    if (ms == updateInterval_) {
        return;
    }
    updateInterval_ = ms;
    status_.reset();
    if (ms > 0) {
        status_ = scheduler_.every(platform::Milliseconds(ms), [this] {
            if (open_ && StatusUpdate) {
                StatusUpdate();
            }
        });
    }
}

void MMControl::Command(std::string_view word) {
    const auto command = text::lower(word);
    if (command == "open") {
        open();
    } else if (!open_) {
        return;
    } else if (command == "close") {
        close();
    } else if (command == "play") {
        play();
    } else if (command == "pause") {
        player_->pause();
    } else if (command == "resume") {
        player_->resume();
    } else if (command == "seek") {
        seek();
    } else if (command == "stop") {
        player_->stop();
    } else if (command == "eject") {
        player_->eject();
    }
}

void MMControl::stopAtDiscEnd() {
    if (player_->state() == platform::CdState::playing) {
        player_->runOut();
    }
}

void MMControl::open() {
    if (open_) {
        return;
    }
    const auto fault = player_->open(driveLetter_(), Shareable);
    open_ = !fault;
    canPlay_ = open_;
    moved_ = false;
    if (!fault || *fault == platform::CdOpenFault::cannotPlay) {
        error_ = deviceError::none;
    } else {
        error_ = *fault == platform::CdOpenFault::inUse ? deviceError::inUse : deviceError::notLoaded;
    }
}

void MMControl::close() {
    player_->close();
    open_ = false;
    from_.reset();
}

void MMControl::play() {
    if (from_) {
        if (const auto start = addressOf(*from_)) {
            from_.reset();
            moved_ = true;
            player_->play(*start);
        }
        return;
    }
    switch (player_->state()) {
        case platform::CdState::paused:
            player_->resume();
            break;
        case platform::CdState::stopped:
            if (toc()) {
                player_->play(address());
                moved_ = true;
            }
            break;
        case platform::CdState::playing:
        case platform::CdState::closed:
            break;
    }
}

void MMControl::seek() {
    if (const auto target = addressOf(to_)) {
        moved_ = true;
        player_->seek(*target);
    }
}

int MMControl::Mode() const {
    switch (player_->state()) {
        case platform::CdState::playing:
            return mode::playing;
        case platform::CdState::paused:
            return mode::paused;
        case platform::CdState::stopped:
            return mode::stopped;
        case platform::CdState::closed:
            break;
    }
    return mode::notOpen;
}

std::shared_ptr<const platform::CdToc> MMControl::toc() const { return open_ ? player_->toc() : nullptr; }

int MMControl::Tracks() const {
    const auto disc = toc();
    return disc ? static_cast<int>(disc->tracks.size()) : 0;
}

int MMControl::firstAudioTrackFrom(int track) const {
    const auto disc = toc();
    const int count = disc ? static_cast<int>(disc->tracks.size()) : 0;
    for (int n = std::max(track, 1); n <= count; ++n) {
        if (disc->tracks[static_cast<std::size_t>(n - 1)].audio) {
            return n;
        }
    }
    return track;
}

int MMControl::lastAudioTrackUpTo(int track) const {
    const auto disc = toc();
    int n = disc ? std::min(track, static_cast<int>(disc->tracks.size())) : 0;
    while (n > 0 && !disc->tracks[static_cast<std::size_t>(n - 1)].audio) {
        --n;
    }
    return std::max(n, 0);
}

std::int32_t MMControl::TrackLength() const {
    const auto disc = toc();
    if (!disc || track_ < 1 || track_ > static_cast<int>(disc->tracks.size())) {
        return 0;
    }
    return packMsf(fromFrames(disc->tracks[static_cast<std::size_t>(track_ - 1)].length));
}

std::int32_t MMControl::Length() const {
    const auto disc = toc();
    return disc ? packMsf(fromFrames(disc->leadOut - disc->tracks.front().start)) : 0;
}

Frames MMControl::address() const {
    const auto disc = toc();
    const bool atStart = !moved_ && player_->state() != platform::CdState::playing;
    return disc && atStart ? disc->tracks.front().start : player_->position();
}

std::int32_t MMControl::Position() const {
    const auto disc = toc();
    if (!disc) {
        return lastPosition_;
    }
    const Frames at = address();
    int track = 1;
    while (track < static_cast<int>(disc->tracks.size()) && disc->tracks[static_cast<std::size_t>(track)].start <= at) {
        ++track;
    }
    const Frames start = disc->tracks[static_cast<std::size_t>(track - 1)].start;
    const Msf inTrack = fromFrames(at > start ? at - start : 0);
    lastPosition_ = packTmsf({track, inTrack.minutes, inTrack.seconds, inTrack.frames});
    return lastPosition_;
}

std::optional<Frames> MMControl::addressOf(std::int32_t tmsf) const {
    const auto disc = toc();
    const Tmsf time = unpackTmsf(tmsf);
    if (!disc || time.track < 1 || time.track > static_cast<int>(disc->tracks.size())) {
        return std::nullopt;
    }
    const Frames at =
        disc->tracks[static_cast<std::size_t>(time.track - 1)].start + toFrames({time.minutes, time.seconds, time.frames});
    return at < disc->leadOut ? std::optional(at) : std::nullopt;
}

std::string MMControl::sendString(std::string_view command) {
    if (!toc() || command != "status cdaudio position") {
        return {};
    }
    return std::to_string(toMilliseconds(address() + leadInFrames));
}

}  // namespace tessarel::audio
