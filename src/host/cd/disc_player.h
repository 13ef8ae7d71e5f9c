#pragma once
#include <memory>

#include "host/cd/cd_players.h"
#include "host/cd/disc_playback.h"

namespace tessarel::host {

/// One window's player. Its drive is watched once a second while a disc plays or is paused.
class DiscPlayer final : public platform::CdPlayer {
public:
    explicit DiscPlayer(DiscPlayers& players);
    ~DiscPlayer() override;
    DiscPlayer(const DiscPlayer&) = delete;
    DiscPlayer& operator=(const DiscPlayer&) = delete;

    std::optional<platform::CdOpenFault> open(char letter, bool shareable) override;
    void close() override;
    std::shared_ptr<const platform::CdToc> toc() override;
    void play(Frames from) override;
    void seek(Frames to) override;
    void pause() override;
    void resume() override;
    void stop() override;
    void runOut() override;
    void eject() override;
    platform::CdState state() const override { return state_; }
    Frames position() const override;

    bool sounding() const;

private:
    DiscPlayback& playback();
    void halt(platform::CdState state);
    void cutRunOut();
    void watchDisc();
    void ended(unsigned play, platform::CdEnding ending);
    void tell(platform::CdEnding ending);

    DiscPlayers& players_;
    DiscDrive* drive_ = nullptr;
    std::shared_ptr<Medium> playing_;  ///< the disc being played, until stopped
    std::unique_ptr<DiscPlayback> playback_;
    platform::TimerHandle watch_;
    platform::CdState state_ = platform::CdState::closed;
    Frames rest_ = 0;          ///< the position while nothing plays, or while paused away from where the sound was held
    bool moved_ = false;       ///< `seek` has set `rest_`, and `resume` is to play from there
    bool runningOut_ = false;  ///< stopped for the caller, while the rest still sounds
    unsigned play_ = 0;        ///< tells a late end of an earlier play from that of the present one
    std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace tessarel::host
