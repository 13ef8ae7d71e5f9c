#include "host/cd/disc_player.h"

#include <algorithm>
#include <utility>

namespace tessarel::host {
namespace {

constexpr platform::Milliseconds watchInterval{1000};

}  // namespace

using platform::CdEnding;
using platform::CdState;

DiscPlayer::DiscPlayer(DiscPlayers& players) : players_(players) { players_.players_.push_back(this); }

DiscPlayer::~DiscPlayer() {
    close();
    std::erase(players_.players_, this);
}

std::optional<platform::CdOpenFault> DiscPlayer::open(char letter, bool shareable) {
    close();
    DiscDrive* drive = players_.drives_.drive(letter);
    if (!drive) {
        return platform::CdOpenFault::noDriver;
    }
    if (const auto fault = drive->acquire(shareable)) {
        return fault;
    }
    drive_ = drive;
    state_ = CdState::stopped;
    return std::nullopt;
}

void DiscPlayer::close() {
    if (!drive_) {
        return;
    }
    halt(CdState::closed);
    if (playback_) {
        players_.retire(std::move(playback_));
    }
    std::exchange(drive_, nullptr)->release();
    rest_ = 0;
}

std::shared_ptr<const platform::CdToc> DiscPlayer::toc() {
    auto medium = drive_ ? drive_->medium() : nullptr;
    if (!medium) {
        return nullptr;
    }
    const platform::CdToc& toc = medium->toc();
    return {std::move(medium), &toc};
}

void DiscPlayer::play(Frames from) {
    if (!drive_) {
        return;
    }
    auto medium = drive_->medium();
    if (!medium) {
        halt(CdState::stopped);
        return;
    }
    runningOut_ = moved_ = false;
    PlayPlan plan(medium->toc(), from);
    playback().start(medium, std::move(plan), ++play_);
    playing_ = std::move(medium);
    state_ = CdState::playing;
    if (!watch_) {
        watch_ = players_.scheduler_.every(watchInterval, [this] { watchDisc(); });
    }
}

void DiscPlayer::seek(Frames to) {
    if (!drive_) {
        return;
    }
    cutRunOut();
    if (state_ == CdState::playing) {
        pause();
    }
    const auto medium = drive_->medium();
    rest_ = std::clamp(to, 0, medium ? std::max(medium->toc().leadOut, 0) : 0);
    moved_ = true;
}

void DiscPlayer::pause() {
    cutRunOut();
    if (state_ == CdState::playing) {
        playback_->pause();
        state_ = CdState::paused;
    }
}

void DiscPlayer::resume() {
    cutRunOut();
    if (moved_) {
        play(rest_);
    } else if (state_ == CdState::paused) {
        playback_->resume();
        state_ = CdState::playing;
    }
}

void DiscPlayer::stop() {
    if (drive_) {
        halt(CdState::stopped);
    }
}

void DiscPlayer::runOut() {
    if (state_ != CdState::playing || !playback_->sounding()) {
        stop();
        return;
    }
    rest_ = position();
    state_ = CdState::stopped;
    runningOut_ = true;
}

void DiscPlayer::eject() {
    if (drive_) {
        halt(CdState::stopped);
        drive_->eject();
    }
}

Frames DiscPlayer::position() const {
    const bool inPlay = state_ == CdState::playing || state_ == CdState::paused;
    return inPlay && !moved_ ? playback_->position() : rest_;
}

bool DiscPlayer::sounding() const { return playback_ && playback_->sounding(); }

DiscPlayback& DiscPlayer::playback() {
    if (!playback_) {
        platform::Scheduler& scheduler = players_.scheduler_;
        playback_ = std::make_unique<DiscPlayback>(
            players_.sound_, [this, &scheduler, watcher = std::weak_ptr(alive_)](unsigned play, CdEnding ending) {
                scheduler.post([this, watcher, play, ending] {
                    if (!watcher.expired()) {
                        ended(play, ending);
                    }
                });
            });
    }
    return *playback_;
}

void DiscPlayer::halt(CdState state) {
    rest_ = position();
    state_ = state;
    moved_ = runningOut_ = false;
    ++play_;
    watch_.reset();
    playing_.reset();
    if (playback_) {
        playback_->stop();
    }
}

void DiscPlayer::cutRunOut() {
    if (runningOut_) {
        halt(CdState::stopped);
    }
}

void DiscPlayer::watchDisc() {
    if (drive_->medium() == playing_) {
        return;
    }
    const bool quietly = runningOut_;
    halt(CdState::stopped);
    if (!quietly) {
        tell(CdEnding::hardware);
    }
}

void DiscPlayer::ended(unsigned play, CdEnding ending) {
    if (play != play_) {
        return;
    }
    const bool quietly = runningOut_;
    halt(CdState::stopped);
    if (!quietly) {
        tell(ending);
    }
}

void DiscPlayer::tell(CdEnding ending) {
    if (const auto handler = onEnded) {
        handler(ending);
    }
}

}  // namespace tessarel::host
