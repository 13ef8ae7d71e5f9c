#pragma once
#include <memory>
#include <vector>

#include "host/line_streams.h"
#include "platform/file_system.h"
#include "platform/scheduler.h"
#include "platform/sound_files.h"

namespace tessarel::host {

/// Short sounds through the desktop's sound server. Each sound that plays has a thread and a connection of its own; without one
/// there is neither. What can't be read, is no sound file or finds no server is passed over in silence.
class PulseSoundFiles : public platform::SoundFiles {
public:
    /// The sounds play at the level of `line`.
    PulseSoundFiles(platform::Scheduler& scheduler, const platform::FileSystem& files, LineStreams& line)
        : scheduler_(scheduler), files_(files), line_(line) {}
    /// Cuts what still plays.
    ~PulseSoundFiles() override;
    PulseSoundFiles(const PulseSoundFiles&) = delete;
    PulseSoundFiles& operator=(const PulseSoundFiles&) = delete;

    /// Beyond four sounds at a time a further one is passed over.
    void play(const std::string& path) override;
    /// Waits at most two seconds longer than the file says that it lasts.
    void playAndWait(const std::string& path) override;

private:
    struct Sound;

    /// Null when the file can't be played.
    std::shared_ptr<Sound> start(const std::string& path);

    platform::Scheduler& scheduler_;
    const platform::FileSystem& files_;
    LineStreams& line_;
    std::vector<std::shared_ptr<Sound>> sounds_;
};

}  // namespace tessarel::host
