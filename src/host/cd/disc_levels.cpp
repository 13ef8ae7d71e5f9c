#include "host/cd/disc_levels.h"

namespace tessarel::host {

DiscLevels::DiscLevels(platform::Scheduler& scheduler, SoundOutput& sound) : sound_(sound) {
    sound_.levels().setListener([this, &scheduler, watcher = std::weak_ptr(alive_)](platform::StereoLevel level) {
        scheduler.post([this, watcher, level] {
            if (!watcher.expired() && onDiscLevelChanged) {
                onDiscLevelChanged(level);
            }
        });
    });
}

DiscLevels::~DiscLevels() { sound_.levels().setListener(nullptr); }

std::optional<platform::StereoLevel> DiscLevels::discLevel() const {
    if (sound_.server() == SoundOutput::Server::missing) {
        return std::nullopt;
    }
    return sound_.levels().level();
}

bool DiscLevels::setDiscLevel(platform::StereoLevel level) {
    const SoundOutput::Lock lock(sound_);
    sound_.levels().remember(level);
    if (lock) {
        sound_.levels().send(sound_.context());
    }
    return sound_.server() != SoundOutput::Server::missing;
}

}  // namespace tessarel::host
