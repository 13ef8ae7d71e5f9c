#include "tests/scenarios/player_rules.h"

#include <algorithm>
#include <regex>

#include "audio/track_rules.h"

namespace tessarel::scenarios {
namespace {

using namespace audio;

struct Rules {
    Machine& machine;
    std::vector<std::string> broken;

    void check(bool holds, const std::string& rule) {
        if (!holds) {
            broken.push_back(rule);
        }
    }
};

bool isFlag(int value) { return value == 0 || value == 1; }

bool within(int value, int low, int high) { return low <= value && value <= high; }

bool matches(const std::string& text, const char* pattern) { return std::regex_match(text, std::regex(pattern)); }

bool discIn(Machine& m) {
    return m.program.windows.isLoaded("CDForm") && m.program.state.discDrawerOpen == 0 && m.state().discTrackCount > 0;
}

// Whether the disc in the drive is still the one that the window was loaded for, as far as it can tell without a look.
bool sameDiscIn(Machine& m) { return discIn(m) && m.player().MMControl1.Tracks() == m.state().discTrackCount; }

int mostEntries(const PlayerState& player) {
    const auto first = player.programList.begin() + 1;
    return static_cast<int>(std::find(first, player.programList.end(), 0) - first);
}

void checkRanges(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    const auto& state = rules.machine.program.state;
    rules.check(isFlag(p.playingFlag) && isFlag(p.pausedFlag), "the flags are 0 or 1");
    rules.check(p.playingFlag + p.pausedFlag < 2, "playing and paused are never both set");
    rules.check(isFlag(p.discFinished), "discFinished is 0 or 1");
    rules.check(isFlag(p.skipStep), "skipStep is 0 or 1");
    rules.check(isFlag(p.repeatOn), "repeatOn is 0 or 1");
    rules.check(isFlag(state.discDrawerOpen), "discDrawerOpen is 0 or 1");
    rules.check(within(p.playMode, programmed, wholeDisc), "the play mode is 0, 1 or 2");
    rules.check(isFlag(p.playLaunched) || p.playLaunched == singleTrackChosen, "playLaunched is 0, 1 or 99");
    rules.check(within(p.programCount, 0, 100), "a program counts 0 to 100 entries");
    rules.check(within(p.programIndex, 0, 100), "the entry that plays is 0 to 100");
    rules.check(within(p.seekKeyState, -1000, 1000), "the count of a held seek key stays in bounds");
    rules.check(within(state.audioTimeMode, 0, 3), "the time mode is 0 to 3");
    rules.check(within(p.gridTrackCount, 0, gridCells), "the grid has at most 20 tracks");
    rules.check(p.markA > 0 || p.markB == 0, "B is never marked without A");
    rules.check((p.introClock == 0 || p.introTrack > 0), "without an intro scan its clock is 0");
}

// A window is there, and the way on from it too.
void checkWindows(Rules& rules) {
    Machine& m = rules.machine;
    auto& windows = m.program.windows;
    rules.check(windows.anyVisible(), "a window is visible");
    const bool player = windows.isLoaded("CDForm");
    const bool waiting = windows.isLoaded("CD1st");
    rules.check(player || waiting, "the player or the waiting window is loaded");
    rules.check(player || m.state().playingFlag == 0 || waiting, "nothing plays without the player's window");
    if (player) {
        rules.check((m.program.state.discDrawerOpen == 1) == waiting, "the waiting window is up just while there is no disc");
        rules.check(windows.isVisible("CDForm") || windows.isLoaded("ICONmin"), "the player's window or its icon shows");
    }
    rules.check((m.state().programPanelOpen == 1) == windows.isLoaded("aplaylst"),
                "the list of the program is open just when it says so");
    rules.check(m.world.cd.opened <= 1, "one device at most is open");
}

// A stored program is a hundred numbers of tracks, and nothing else is written into the folder of records.
void checkFiles(Rules& rules) {
    Machine& m = rules.machine;
    for (const auto& path : m.world.files.written) {
        if (path.find("\\datacd\\") == std::string::npos) {
            continue;
        }
        rules.check(path.ends_with(".CD2"), "only programs are written beside the records: " + path);
        const auto bytes = m.world.files.bytes(path);
        if (bytes != "(no such file)") {
            rules.check(std::count(bytes.begin(), bytes.end(), '\n') == 100, "a stored program has a hundred lines");
            rules.check(matches(bytes.substr(0, bytes.find('\n') + 1), "[1-9][0-9]?\r\n"),
                        "a stored program begins with a track");
        }
    }
    m.world.files.written.clear();
    rules.check(!m.world.files.exists("C:\\Tessarel\\audiocd.tmp") || m.program.windows.isLoaded("CDForm"),
                "the running mark lies there only with the player's window");
}

void checkCovers(Rules& rules, bool lives, int lit) {
    CDFormFace& face = rules.machine.player().face;
    for (int i = 0; i < transport::count; ++i) {
        const auto key = face.icntla[i].spokenName();
        const bool always = i == transport::eject || (i == transport::play && rules.machine.program.state.discDrawerOpen == 0);
        rules.check(face.icntlc[i].Visible == (i == lit), "lit cover of " + key);
        rules.check(face.icntlb[i].Visible == (!lives && !always), "dim cover of " + key);
    }
    for (int i = 0; i < seekKeys::count; ++i) {
        rules.check(face.scntlb[i].Visible == !lives, "dim cover of " + face.scntla[i].spokenName());
    }
}

void checkTransport(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    const bool runs = p.playingFlag == 1 || p.pausedFlag == 1;
    checkCovers(rules, runs, p.playingFlag == 1 ? transport::play : p.pausedFlag == 1 ? transport::pause : -1);
    rules.check(p.pausedPosition == 0 || p.pausedFlag == 1, "a position to resume from is kept only while paused");
    rules.check(p.seekKeyState == 0 || p.playingFlag == 1, "a seek key is held only while playing");
}

void checkModes(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    CDFormFace& face = rules.machine.player().face;
    const int lit = p.introTrack > 0            ? modeKeys::intro
                    : p.playMode == programmed  ? modeKeys::program
                    : p.playMode == singleTrack ? modeKeys::single
                                                : modeKeys::disc;
    for (int i = 0; i < modeKeys::count; ++i) {
        rules.check(face.Image3[i].Visible == (i == lit), "light of " + face.Image4[i].spokenName());
    }
    for (const auto* label : {&face.clearCover, &face.saveCover, &face.recallCover}) {
        rules.check(label->ForeColor == (p.playMode == programmed ? colors::grey : colors::black), label->spokenName());
    }
    rules.check(p.introTrack == 0 || p.playMode == wholeDisc, "an intro scan runs in whole-disc mode");
    rules.check(within(p.introTrack, 0, p.discTrackCount), "the intro scan is on a track of the disc");
}

// An entry into a program under a pause gives up the place: Play then begins the program.
void checkLamps(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    CDFormFace& face = rules.machine.player().face;
    rules.check(face.programLamp.Caption == std::string(p.introTrack > 0 ? "Intro Play" : "Pgm Stored"),
                "words of the program lamp");
    const Color program = face.programLamp.ForeColor;
    rules.check(program == panelColor(3) || (p.introTrack == 0 && program == panelColor(2)), "colour of the program lamp");

    const Color repeat = face.repeatLamp.ForeColor;
    const Color byRepeat = panelColor(p.repeatOn == 1 ? 8 : 9);
    rules.check(face.repeatLamp.Caption == std::string(p.pausedPosition > 0 ? "PAUSE" : "Repeat"), "words of the repeat lamp");
    rules.check(repeat == byRepeat || (p.pausedFlag == 1 && repeat == panelColor(3)), "colour of the repeat lamp");

    const Color ab = face.abLamp.ForeColor;
    rules.check(p.markA > 0 || ab == panelColor(2), "without marks the A-B lamp is off");
    rules.check(p.markB <= 0 || ab == panelColor(0), "with both marks the A-B lamp is on");
    rules.check(p.markA <= 0 || p.markB > 0 || ab == panelColor(2) || ab == panelColor(3), "with one mark the A-B lamp blinks");
    rules.check(p.markA > 0 || face.abText.ForeColor == colors::black, "without marks the A-B text is black");
}

void checkReadout(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    CDFormFace& face = rules.machine.player().face;
    const std::string time = face.timeText.Caption;
    rules.check(within(face.statusBar.FloodPercent, 0, 100), "the bar is 0 to 100 percent");
    rules.check(matches(time, "(-?([0-9]+:[0-5]?)?[0-9]+:[0-5][0-9])?"), "the time is a time: " + time);
    rules.check(matches(face.trackDigits.Caption.get(), "[0-9]+"), "the digits are a number");
    const int digits = rules.machine.digits();
    rules.check(within(digits, 0, p.discTrackCount), "the digits are a track of the disc: " + std::to_string(digits));
    rules.check(p.playingFlag == 0 || digits > 0, "what plays has digits");
    rules.check(p.discFinished == 0 || (digits == 0 && p.playMode == wholeDisc && p.playingFlag == 0 && p.pausedFlag == 0),
                "after the end the digits are 0 and the whole disc is chosen");
    rules.check(p.currentTrack >= 0, "the current track is none below 0");
}

void checkProgram(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    const int last = p.discTrackCount;
    rules.check(std::all_of(p.programList.begin(), p.programList.end(), [last](int t) { return within(t, 0, last); }),
                "a program holds tracks of the disc");
    const auto shown = p.programBackup.begin() + 1;
    rules.check(std::all_of(shown, shown + p.programCount, [last](int t) { return within(t, 1, last); }),
                "each entry of the program can be shown");
    rules.check(p.programIndex == 0 || p.playMode != programmed || mostEntries(p) <= 100, "a program has an end");
}

void checkGrid(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    CDFormFace& face = rules.machine.player().face;
    for (int track = 1; track <= gridCells; ++track) {
        const Color color = face.cellNumbers[track - 1].ForeColor;
        const bool dead = track > p.gridTrackCount;
        const auto cell = "cell " + std::to_string(track);
        rules.check(color == panelColor(0) || color == panelColor(4) || color == panelColor(6), "colours of " + cell);
        rules.check((face.cellCaps[track - 1].ForeColor == colors::grey) == dead, "cap of " + cell);
        rules.check(!dead || color == panelColor(6), "a dead cell is dim: " + cell);
    }
}

void checkNoDisc(Rules& rules) {
    const PlayerState& p = rules.machine.state();
    CDForm& form = rules.machine.player();
    checkCovers(rules, false, -1);
    rules.check(p.playingFlag == 0 && p.pausedFlag == 0, "nothing plays without a disc");
    rules.check(p.introTrack == 0, "no intro scan runs without a disc");
    rules.check(p.markA == 0, "no A-B repeat is set without a disc");
    rules.check(p.seekKeyState == 0, "no seek key is held without a disc");
    rules.check(form.MMControl1.Mode() == mode::notOpen, "the device is given up without a disc");
    rules.check(!form.face.keypadEntry.Visible, "the keypad is shut without a disc");
}

void checkVolume(Rules& rules) {
    CDFormFace& face = rules.machine.player().face;
    if (rules.machine.program.state.volumeMode != 3) {
        rules.check(!face.sliderPanel.Visible && face.mixerButton.Visible, "the mixer's key stands in for the sliders");
        return;
    }
    rules.check(face.sliderPanel.Visible && !face.mixerButton.Visible, "the sliders are there");
    rules.check(face.leftFigure.Caption == std::to_string(100 - face.leftSlider.Value), "the left figure is the slider's");
    rules.check(face.rightFigure.Caption == std::to_string(100 - face.rightSlider.Value), "the right figure is the slider's");
    rules.check(face.Image2[0].Visible != face.Image2[1].Visible, "one of the mute keys shows");
    rules.check(face.Image9[0].Visible != face.Image9[1].Visible, "one of the link keys shows");
    const auto level = rules.machine.world.levels.disc().now.level;
    const auto& volume = rules.machine.program.volume;
    if (rules.machine.program.windows.isLoaded("VolCntl") || rules.machine.world.levels.disc().now.muted) {
        return;  // the small window, or the desktop's mixer, has the say for the time being
    }
    rules.check(level.left == volume.cdVolumeLeft && level.right == volume.cdVolumeRight,
                "the sound has the level that is shown");
    rules.check(!volume.muted || volume.mutedByMixer || (level.left == 0 && level.right == 0), "muted is silent");
}

CellColor wantedCell(const PlayerState& p, int track, int digits) {
    return track > p.gridTrackCount ? CellColor::dim : cellColor(p, track, digits, false);
}

void checkPaintedGrid(Rules& rules) {
    Machine& m = rules.machine;
    const PlayerState& p = m.state();
    if (m.player().Timer2.Interval == 0 || p.playStarted == 0 || p.currentTrack > p.discTrackCount) {
        return;
    }
    for (int track = 1; track <= gridCells; ++track) {
        const Color color = m.player().face.cellNumbers[track - 1].ForeColor;
        const CellColor wanted = wantedCell(p, track, m.digits());
        const Color as = wanted == CellColor::shown ? panelColor(4) : panelColor(6);
        const bool wrapping = p.repeatOn == 1 && color == panelColor(0);  // until the next pulse
        rules.check(wanted == CellColor::keep || color == as || wrapping, "the mode's colour of cell " + std::to_string(track));
    }
}

// While minimised the end of a track is not looked for, and so the end of the sound is not either.
void checkSound(Rules& rules) {
    Machine& m = rules.machine;
    const auto track = static_cast<std::size_t>(std::clamp<int>(m.state().currentTrack, 1, 100));
    const bool blink = m.state().trackLengths.at(track) == "0:00";  // over before it can be looked at
    if (blink || m.player().WindowState == forms::WindowState::minimised) {
        return;
    }
    const int mode = m.player().MMControl1.Mode();
    rules.check((m.state().playingFlag == 1) == (mode == mode::playing), "the device sounds just when the player plays");
    rules.check(mode != mode::paused || m.state().pausedFlag == 1, "the device is held only when the player is");
}

}  // namespace

std::vector<std::string> brokenRules(Machine& machine) {
    Rules rules{machine, {}};
    checkRanges(rules);
    checkWindows(rules);
    checkFiles(rules);
    if (machine.program.windows.isLoaded("CDForm")) {
        checkVolume(rules);
        if (machine.program.state.discDrawerOpen == 1) {
            checkNoDisc(rules);
        }
    }
    if (sameDiscIn(machine)) {
        checkTransport(rules);
        checkModes(rules);
        checkLamps(rules);
        checkReadout(rules);
        checkProgram(rules);
        checkGrid(rules);
    }
    return rules.broken;
}

std::vector<std::string> brokenRulesAtRest(Machine& machine) {
    Rules rules{machine, {}};
    auto& windows = machine.program.windows;
    const bool disc = machine.world.cd.disc != nullptr;
    if (discIn(machine)) {
        rules.check(disc, "a disc that has gone is noticed");
        checkPaintedGrid(rules);
        checkSound(rules);
        const bool there = machine.state().currentTrack <= machine.state().discTrackCount;
        rules.check(there || machine.digits() == 0, "a track that the disc lacks shows as 0");
    } else {
        rules.check(!disc || machine.world.cd.disc->tracks.size() < 2, "a disc of several tracks is taken");
        rules.check(windows.isVisible("CD1st"), "without a disc the waiting window shows");
    }
    return rules.broken;
}

}  // namespace tessarel::scenarios
