#pragma once
#include <chrono>
#include <string>

#include "app/program.h"
#include "audio/cdform.h"
#include "tests/fakes/world.h"

namespace tessarel::scenarios {

using namespace std::chrono_literals;

/// Panel colours that are all different, so that a test can tell which one a control has.
inline Color panelColor(int index) { return 0x101010U * static_cast<Color>(index + 1); }

/// The whole program on fakes, with a disc drive that runs by the simulated clock.
struct Machine {
    Machine() {
        shell::SharedState& state = program.state;
        state.dataDir = "C:\\Tessarel";
        state.windowsDir = "C:\\WINDOWS";
        state.systemDir = "C:\\WINDOWS\\SYSTEM";
        state.cdDrive = "D:\\";
        state.cdRomEnabled = 1;
        state.audioCdEnabled = 1;
        state.volumeMode = 3;
        state.audioOptions[4] = 10;
        state.osPlatform = 1;
        for (std::size_t i = 0; i < state.panelColors.size(); ++i) {
            state.panelColors.at(i) = panelColor(static_cast<int>(i));
        }
        world.files.drive('D').ready = false;
    }

    fakes::World world;
    app::Program program{app::Platform{world.scheduler, world.files, world.drives, world.processes, world.dialogs, world.system,
                                       world.sounds, world.cd, world.levels, world.systemMixer, world.media,
                                       world.notifications}};

    /// Puts an audio disc into drive D, its tracks in the root.
    void insert(std::shared_ptr<const platform::CdToc> disc) {
        auto& drive = world.files.drive('D');
        drive.ready = true;
        for (const auto& track : disc->tracks) {
            const std::string number = (track.number < 10 ? "0" : "") + std::to_string(track.number);
            world.files.put("D:\\TRACK" + number + ".CDA", "");
        }
        world.cd.insert(std::move(disc));
    }

    void pullOut() {
        world.files.clear('D');
        world.files.drive('D').ready = false;
        world.cd.pull();
    }

    /// Opens the Audio CD window on the disc in the drive and lets it build its track table.
    audio::CDForm& openPlayer() {
        program.windows.show("CDForm");
        run(100ms);
        return player();
    }
    audio::CDForm& openPlayer(std::shared_ptr<const platform::CdToc> disc) {
        insert(std::move(disc));
        return openPlayer();
    }

    audio::CDForm& player() { return *program.windows.find<audio::CDForm>("CDForm"); }
    audio::PlayerState& state() { return program.player; }
    /// Runs code as the composition does: true when it ended the process, and the program has ended then.
    template <class Code>
    bool ends(const Code& code) {
        const bool ended = fakes::endsProcess(code);
        if (ended) {
            program.end();
        }
        return ended;
    }

    void run(platform::Milliseconds span) { world.scheduler.runFor(span); }
    template <class Condition>
    bool runUntil(Condition condition, platform::Milliseconds limit) {
        return world.scheduler.runUntil(condition, limit);
    }

    void press(int transportIndex) { player().face.icntla[transportIndex].press(); }
    void choose(int modeKey) { player().face.Image4[modeKey].press(); }
    void pick(int track) { player().face.cells[track - 1].press(); }

    int digits() { return std::stoi("0" + player().face.trackDigits.Caption.get()); }
    std::string time() { return player().face.timeText.Caption.get(); }

    /// The track that the drive is on.
    int soundingTrack() { return unpackTmsf(player().MMControl1.Position()).track; }
    bool sounding() { return player().MMControl1.Mode() == audio::mode::playing; }
};

}  // namespace tessarel::scenarios
