#pragma once
#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/cd_player.h"
#include "tests/fakes/simulated_scheduler.h"

namespace tessarel::fakes {

/// A table of contents of audio tracks with these lengths in frames, the first at `start`.
inline std::shared_ptr<const platform::CdToc> makeToc(const std::vector<Frames>& lengths, Frames start = 0) {
    auto toc = std::make_shared<platform::CdToc>();
    for (const Frames length : lengths) {
        toc->tracks.push_back({static_cast<int>(toc->tracks.size()) + 1, start, length, true, {}, {}});
        start += length;
    }
    toc->leadOut = start;
    return toc;
}

/// The same disc with its last track as data.
inline std::shared_ptr<const platform::CdToc> withDataAtTheEnd(const std::shared_ptr<const platform::CdToc>& disc) {
    auto toc = std::make_shared<platform::CdToc>(*disc);
    toc->tracks.back().audio = false;
    return toc;
}

/// Where the last sound of a disc ends.
inline Frames soundEnd(const platform::CdToc& toc) {
    Frames end = 0;
    for (const auto& track : toc.tracks) {
        end = track.audio ? track.start + track.length : end;
    }
    return end;
}

/// A disc of `count` tracks of the same length in seconds.
inline std::shared_ptr<const platform::CdToc> makeDisc(int count, int secondsEach) {
    return makeToc(std::vector<Frames>(static_cast<std::size_t>(count), secondsEach * framesPerSecond));
}

/// A drive whose disc runs by the simulated clock.
class FakeCdPlayers : public platform::CdPlayers {
public:
    explicit FakeCdPlayers(SimulatedScheduler& scheduler) : scheduler_(scheduler) {
        scheduler_.onClock = [this] { run(); };
    }
    ~FakeCdPlayers() override { scheduler_.onClock = nullptr; }

    std::unique_ptr<platform::CdPlayer> make() override { return std::make_unique<Player>(*this); }

    std::shared_ptr<const platform::CdToc> disc;
    std::optional<platform::CdOpenFault> openFault;
    /// Stretches in which a disc has sounded, as [from, to) in frame addresses.
    std::vector<std::pair<Frames, Frames>> heard;
    std::vector<std::string> log;  ///< the calls to any player
    int opened = 0;

    /// How many players there are, opened or not.
    std::size_t made() const { return players_.size(); }

    void insert(std::shared_ptr<const platform::CdToc> toc) { disc = std::move(toc); }
    /// As if the disc were pulled out of the drive.
    void pull() {
        disc.reset();
        run();
    }

private:
    class Player : public platform::CdPlayer {
    public:
        explicit Player(FakeCdPlayers& owner) : owner_(owner) { owner_.players_.push_back(this); }
        ~Player() override {
            std::erase(owner_.players_, this);
            owner_.opened -= state_ == platform::CdState::closed ? 0 : 1;
        }

        std::optional<platform::CdOpenFault> open(char letter, bool /*shareable*/) override {
            owner_.log.push_back(std::string("open ") + letter);
            if (owner_.openFault) {
                return owner_.openFault;
            }
            ++owner_.opened;
            state_ = platform::CdState::stopped;
            at_ = 0;
            return std::nullopt;
        }
        void close() override {
            if (state_ != platform::CdState::closed) {
                halt(platform::CdState::closed, "close");
                --owner_.opened;
            }
        }
        std::shared_ptr<const platform::CdToc> toc() override {
            return state_ == platform::CdState::closed ? nullptr : owner_.disc;
        }
        void play(Frames from) override {
            halt(platform::CdState::playing, "play " + std::to_string(from));
            at_ = startedFrom_ = from;
            startedAt_ = owner_.scheduler_.now();
            disc_ = owner_.disc;
        }
        void seek(Frames to) override {
            const auto state = state_ == platform::CdState::paused ? platform::CdState::paused : platform::CdState::stopped;
            halt(state, "seek " + std::to_string(to));
            at_ = to;
        }
        void pause() override {
            if (state_ == platform::CdState::playing) {
                halt(platform::CdState::paused, "pause");
            }
        }
        void resume() override {
            if (state_ == platform::CdState::paused) {
                owner_.log.push_back("resume");
                state_ = platform::CdState::playing;
                startedFrom_ = at_;
                startedAt_ = owner_.scheduler_.now();
                disc_ = owner_.disc;
            }
        }
        void stop() override { halt(platform::CdState::stopped, "stop"); }
        void runOut() override {
            const bool sounding = state_ == platform::CdState::playing && owner_.disc;
            halt(platform::CdState::stopped, "runOut");
            if (sounding) {
                owner_.heard.back().second = soundEnd(*owner_.disc);
            }
        }
        void eject() override {
            halt(platform::CdState::stopped, "eject");
            owner_.disc.reset();
        }
        platform::CdState state() const override { return state_; }
        Frames position() const override {
            if (state_ != platform::CdState::playing) {
                return at_;
            }
            const auto elapsed = (owner_.scheduler_.now() - startedAt_).count() * framesPerSecond / 1000;
            const Frames end = disc_ ? soundEnd(*disc_) : startedFrom_;
            return std::min<Frames>(startedFrom_ + static_cast<Frames>(elapsed), end);
        }

        void run() {
            if (state_ != platform::CdState::playing) {
                return;
            }
            if (owner_.disc != disc_) {
                end(platform::CdEnding::hardware);
            } else if (disc_ && position() >= soundEnd(*disc_)) {
                end(platform::CdEnding::endOfDisc);
            }
        }

    private:
        void halt(platform::CdState next, const std::string& what) {
            if (!what.empty()) {
                owner_.log.push_back(what);
            }
            if (state_ == platform::CdState::playing) {
                at_ = position();
                owner_.heard.emplace_back(startedFrom_, at_);
            }
            state_ = next;
        }
        void end(platform::CdEnding why) {
            halt(platform::CdState::stopped, "");
            owner_.scheduler_.post([this, why] {
                if (onEnded) {
                    onEnded(why);
                }
            });
        }

        FakeCdPlayers& owner_;
        platform::CdState state_ = platform::CdState::closed;
        Frames at_ = 0;
        Frames startedFrom_ = 0;
        platform::Milliseconds startedAt_{0};
        std::shared_ptr<const platform::CdToc> disc_;
    };

    void run() {
        for (auto* player : std::vector<Player*>(players_)) {
            player->run();
        }
    }

    SimulatedScheduler& scheduler_;
    std::vector<Player*> players_;
};

}  // namespace tessarel::fakes
