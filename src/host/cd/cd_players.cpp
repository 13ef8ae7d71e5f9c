#include "host/cd/cd_players.h"

#include <algorithm>

#include "host/cd/disc_player.h"

namespace tessarel::host {

DiscPlayers::DiscPlayers(platform::Scheduler& scheduler, DiscDrives& drives, SoundOutput& sound)
    : scheduler_(scheduler), drives_(drives), sound_(sound) {}

DiscPlayers::~DiscPlayers() = default;

std::unique_ptr<platform::CdPlayer> DiscPlayers::make() { return std::make_unique<DiscPlayer>(*this); }

bool DiscPlayers::sounding() const {
    return std::any_of(players_.begin(), players_.end(), [](const DiscPlayer* player) { return player->sounding(); });
}

void DiscPlayers::retire(std::unique_ptr<DiscPlayback> playback) {
    std::erase_if(retired_, [](const auto& old) { return old->finished(); });
    playback->quit();
    retired_.push_back(std::move(playback));
}

}  // namespace tessarel::host
