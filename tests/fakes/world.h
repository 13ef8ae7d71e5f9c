#pragma once
#include <initializer_list>
#include <memory>

#include "forms/windows.h"
#include "platform/process_end.h"
#include "shell/context.h"
#include "shell/shared_state.h"
#include "tests/fakes/fake_cd_players.h"
#include "tests/fakes/fake_dialogs.h"
#include "tests/fakes/fake_drives.h"
#include "tests/fakes/fake_levels.h"
#include "tests/fakes/fake_media_session.h"
#include "tests/fakes/fake_notifications.h"
#include "tests/fakes/fake_processes.h"
#include "tests/fakes/fake_sounds.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/fake_system_mixer.h"
#include "tests/fakes/memory_file_system.h"
#include "tests/fakes/simulated_scheduler.h"

namespace tessarel::fakes {

/// A whole machine of fakes with an empty data directory, `C:\Tessarel`, and the context that the program runs in.
struct World {
    World() : World(nullptr) {}
    /// With other players than `cd`.
    explicit World(platform::CdPlayers& players) : World(&players) {}
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    SimulatedScheduler scheduler;
    MemoryFileSystem files{&scheduler};
    FakeDrives drives;
    FakeProcesses processes{files};
    FakeDialogs dialogs;
    FakeSystem system;
    FakeSounds sounds{scheduler};
    FakeLevels levels;
    FakeSystemMixer systemMixer;
    FakeMediaSession media;
    FakeNotifications notifications;
    FakeCdPlayers cd{scheduler};
    shell::SharedState state;
    forms::Windows windows{scheduler};
    shell::Context context;

private:
    explicit World(platform::CdPlayers* players)
        : context{scheduler, files,       drives,  processes, dialogs, system, sounds, players == nullptr ? cd : *players,
                  levels,    systemMixer, windows, state} {
        state.dataDir = "C:\\Tessarel";
        state.systemDir = "C:\\WINDOWS\\SYSTEM";
        state.windowsDir = "C:\\WINDOWS";
        state.cdDrive = "D:\\";
        files.drive('D').ready = false;
    }
};

/// Runs code as the dispatcher does; true when it ended the process.
template <class Code>
bool endsProcess(const Code& code) {
    try {
        code();
    } catch (const platform::ProcessEnd&) {
        return true;
    }
    return false;
}

/// A window without code of its own, for what only needs to be seen shown.
struct PlainForm : forms::Form {
    using Form::Form;
};

/// Declares a `PlainForm` under each name.
inline void declarePlain(forms::Windows& windows, std::initializer_list<const char*> names) {
    for (const auto* name : names) {
        windows.declare(name, [name](forms::Windows& owner) { return std::make_unique<PlainForm>(owner, name); });
    }
}

}  // namespace tessarel::fakes
