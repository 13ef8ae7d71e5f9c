#pragma once
#include <string>

#include "audio/player_session.h"
#include "audio/player_state.h"
#include "forms/windows.h"
#include "library/disc_record.h"
#include "shell/context.h"
#include "shell/shared_state.h"
#include "volume/remote_state.h"
#include "volume/volume_engine.h"

namespace tessarel::app {

/// The world that a program runs in; it outlives the program.
struct Platform {
    platform::Scheduler& scheduler;
    platform::FileSystem& files;
    platform::Drives& drives;
    platform::Processes& processes;
    platform::Dialogs& dialogs;
    platform::System& system;
    platform::SoundFiles& sounds;
    platform::CdPlayers& cdPlayers;
    platform::AudioLevels& levels;
    platform::SystemMixer& systemMixer;
    platform::MediaSession& media;
    platform::Notifications& notifications;
};

/// The whole program without its views: all shared state, and the windows by name. Views attach to `windows` before `start`.
class Program {
public:
    explicit Program(const Platform& platform);

    shell::SharedState state;
    audio::PlayerState player;
    library::DiscRecord record;
    volume::VolumeState volume;
    volume::RemoteState remote;
    forms::Windows windows;

    /// Runs the start-up form, which opens the first window. May end the process by platform::endProcess.
    void start(const std::string& commandLine);

    /// Once, when the process ends by whatever way and the windows' code no longer runs: gives back the sound that a mute has
    /// silenced, and deletes the running mark. A disc that sounds goes on.
    void end();

    /// The drive letter that the settings name for discs, read ahead of `start`; `otherwise` when they name none.
    char discDrive(char otherwise) const;

private:
    void declareWindows();
    void openWaitingWindow();

    shell::Context context_;
    audio::PlayerSession session_;
    std::string commandLine_;
};

}  // namespace tessarel::app
