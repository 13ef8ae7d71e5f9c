#pragma once
#include <memory>
#include <vector>

#include "host/cd/sound_output.h"
#include "host/medium.h"
#include "platform/cd_player.h"
#include "platform/scheduler.h"

namespace tessarel::host {

class DiscPlayback;
class DiscPlayer;

/// Plays the discs of the drives through the desktop's sound server. A player that never plays costs nothing. Must outlive its
/// players, and be outlived by what it is given.
class DiscPlayers : public platform::CdPlayers {
public:
    DiscPlayers(platform::Scheduler& scheduler, DiscDrives& drives, SoundOutput& sound);
    /// Waits for reads that are still going on.
    ~DiscPlayers() override;

    std::unique_ptr<platform::CdPlayer> make() override;

    /// Whether a disc is being heard now, a run-out included. A program that ends can wait for this to turn false.
    bool sounding() const;

private:
    friend class DiscPlayer;
    /// Takes a playback whose reading thread may still be busy.
    void retire(std::unique_ptr<DiscPlayback> playback);

    platform::Scheduler& scheduler_;
    DiscDrives& drives_;
    SoundOutput& sound_;
    std::vector<DiscPlayer*> players_;
    std::vector<std::unique_ptr<DiscPlayback>> retired_;
};

}  // namespace tessarel::host
