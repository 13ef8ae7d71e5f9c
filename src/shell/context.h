#pragma once

namespace tessarel::platform {
class AudioLevels;
class CdPlayers;
class Dialogs;
class Drives;
class FileSystem;
class Processes;
class Scheduler;
class SoundFiles;
class System;
class SystemMixer;
}  // namespace tessarel::platform

namespace tessarel::forms {
class Windows;
}

namespace tessarel::shell {

struct SharedState;

/// What every routine of the program may reach: the world through its interfaces, the windows, and the shared state.
/// A bundle of references, handed down by value; the composition root owns what they refer to.
struct Context {
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
    forms::Windows& windows;
    SharedState& state;
};

}  // namespace tessarel::shell
