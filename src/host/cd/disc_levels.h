#pragma once
#include <memory>

#include "host/cd/sound_output.h"
#include "platform/audio_levels.h"
#include "platform/scheduler.h"

namespace tessarel::host {

/// The level of the disc's sound, as the desktop's mixer shows it. Until a first disc has played nobody has asked the sound
/// server, and it counts as there.
class DiscLevels : public platform::AudioLevels {
public:
    /// Both must outlive it.
    DiscLevels(platform::Scheduler& scheduler, SoundOutput& sound);
    ~DiscLevels() override;
    DiscLevels(const DiscLevels&) = delete;
    DiscLevels& operator=(const DiscLevels&) = delete;

    std::optional<platform::StereoLevel> discLevel() const override;
    bool setDiscLevel(platform::StereoLevel level) override;

private:
    SoundOutput& sound_;
    std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace tessarel::host
