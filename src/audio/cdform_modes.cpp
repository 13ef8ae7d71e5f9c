#include <algorithm>
#include <cmath>

#include "audio/cdform.h"
#include "audio/program_file.h"
#include "audio/program_list.h"
#include "audio/track_rules.h"
#include "base/text.h"
#include "forms/windows.h"
#include "library/record_rules.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

constexpr int maxProgramEntries = 100;

}  // namespace

void CDForm::Image17_Click(int cell) {
    if (context_.state.discDrawerOpen == 1 || face.cellCaps[cell].ForeColor == colors::grey) {
        return;
    }
    stopintro();
    clrab();
    player_.pickedTrackIndex = static_cast<std::int16_t>(cell);
    startTrack();
}

void CDForm::startTrack() {
    player_.keepTrackDigits = 1;
    ranOut_ = false;
    if (player_.playMode != programmed) {
        player_.pausedFlag = 0;
        player_.playingFlag = 1;
        face.statusBar.FloodPercent = 0;
        setTransport(Transport::playing);
    } else if ((player_.playingFlag == 1 || player_.pausedFlag == 1) && player_.programIndex >= 2) {
        context_.dialogs.message({"Tessarel", "Unable to enter new tracks while current program partially complete!"});
        return;
    }
    endPauseText();
    player_.pausedPosition = 0;
    player_.playStarted = 1;
    refreshTimeCaption();
    if (player_.pickedTrackIndex < 0 || player_.pickedTrackIndex >= player_.discTrackCount) {
        if (player_.playMode != programmed) {
            leaveAsItSounds();
        }
        return;
    }
    const int track = MMControl1.firstAudioTrackFrom(player_.pickedTrackIndex + 1);
    face.timeText.Caption = std::string("00:00");
    player_.programIndex = 0;
    if (player_.playMode == programmed) {
        enterIntoProgram(track);
        return;
    }
    clearList();
    if (player_.playMode == wholeDisc) {
        setCells(1, track - 1, color(6));
        setCells(track, player_.gridTrackCount, color(0));
    }
    player_.currentTrack = static_cast<std::int16_t>(track);
    player_.discFinished = 0;
    Timer2.Interval = pulseMs;
    MMControl1.setTo(track);
    MMControl1.Command("Seek");
    startSequence(track);
}

// A track that is not there has been asked for: the keys go back to what the device does. A pause has ended with that.
void CDForm::leaveAsItSounds() {
    const bool sounds = MMControl1.Mode() == mode::playing;
    if (MMControl1.Mode() == mode::paused) {
        MMControl1.Command("Stop");
    }
    player_.playingFlag = sounds ? 1 : 0;
    setTransport(sounds ? Transport::playing : Transport::stopped);
}

void CDForm::enterIntoProgram(int track) {
    if (player_.programCount >= maxProgramEntries) {
        return;
    }
    const auto entry = static_cast<std::size_t>(++player_.programCount);
    player_.programList.at(entry) = static_cast<std::int16_t>(track);
    player_.programBackup.at(entry) = static_cast<std::int16_t>(track);
    if (!windows().isLoaded(ProgramList::windowName) && context_.state.noArtOnPlay != 1) {
        showArtText();
    }
    refillProgramList();
    windows().showBeside(ProgramList::windowName);
}

void CDForm::clearList() {
    player_.programList.fill(0);
    player_.programCount = 0;
    player_.randomProgram = 0;
}

void CDForm::Image4_Click(int index) {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    stopintro();
    player_.discFinished = 0;
    Timer2.Interval = pulseMs;
    switch (index) {
        case modeKeys::program:
            chooseProgrammed();
            break;
        case modeKeys::single:
            chooseSingle();
            break;
        case modeKeys::disc:
            chooseWholeDisc();
            break;
        default:
            chooseIntro();
    }
}

void CDForm::chooseProgrammed() {
    player_.playStarted = 1;
    player_.playMode = programmed;
    setModeLights(modeKeys::program);
    setAllCells(color(6));
    const auto& titles = record_.trackTitles;
    if (std::any_of(titles.begin(), titles.end(), [](const auto& title) { return !text::trim(title).empty(); })) {
        showArtText();
    }
}

void CDForm::chooseSingle() {
    player_.playLaunched = singleTrackChosen;
    player_.playStarted = 1;
    clearList();
    player_.playMode = singleTrack;
    setModeLights(modeKeys::single);
    const int last = std::max<int>(player_.discTrackCount, 1);
    player_.currentTrack = static_cast<std::int16_t>(std::clamp<int>(player_.currentTrack, 1, last));
}

void CDForm::chooseWholeDisc() {
    clearList();
    player_.playMode = wholeDisc;
    setModeLights(modeKeys::disc);
    setAllCells(color(6));
}

void CDForm::chooseIntro() {
    player_.introClock = 0;
    player_.introTrack = 1;
    face.programLamp.Caption = std::string("Intro Play");
    face.programLamp.ForeColor = color(3);
    clearList();
    player_.playMode = wholeDisc;
    setModeLights(modeKeys::intro);
    setAllCells(color(6));
}

void CDForm::stopintro() {
    if (player_.introTrack == 0) {
        return;
    }
    player_.introClock = 0;
    player_.introTrack = 0;
    face.programLamp.Caption = std::string("Pgm Stored");
    showStoredProgramLamp();
    context_.system.setPointer(platform::PointerShape::normal);
    if (player_.playMode == programmed) {
        icntla_Click(transport::stop);
        Image4_Click(modeKeys::disc);
    } else {
        setModeLights(modeKeys::disc);
    }
}

void CDForm::Image10_Click(int index) {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    stopintro();
    switch (index) {
        case functionKeys::mainMenu:
            leaveForMainMenu();
            break;
        case functionKeys::discInfo:
            showDiscInformation();
            break;
        case functionKeys::random:
            playRandom();
            break;
        default:
            flipRepeat();
    }
}

void CDForm::playRandom() {
    if (player_.pausedFlag == 1) {
        return;
    }
    player_.playStarted = 1;
    setModeLights(modeKeys::program);
    const int count = std::min<int>(player_.discTrackCount, maxProgramEntries);
    std::fill_n(player_.programList.begin() + 1, count, std::int16_t{0});
    setCells(1, player_.gridTrackCount, color(4));
    const auto drawn = [this](int n) {
        const auto end = player_.programList.begin() + n;
        const auto draw = [&] {
            random_.randomize(context_.scheduler.secondsSinceMidnight());
            return static_cast<std::int16_t>(std::floor(random_.rnd() * player_.discTrackCount + 1));
        };
        std::int16_t track = draw();
        while (std::find(player_.programList.begin() + 1, end, track) != end) {
            track = draw();
        }
        return track;
    };
    for (int n = 1; n <= count; ++n) {
        const auto at = static_cast<std::size_t>(n);
        player_.programList.at(at) = drawn(n);
        player_.programBackup.at(at) = player_.programList.at(at);
    }
    player_.playMode = programmed;
    player_.programIndex = 0;
    player_.programCount = player_.gridTrackCount;
    refillProgramList();
    player_.randomProgram = 1;
    MMControl1_PlayClick();
    if (player_.playingFlag == 1) {
        setTransport(Transport::playing);
    }
}

void CDForm::flipRepeat() {
    if (face.repeatCover.ForeColor == colors::black) {
        return;
    }
    player_.repeatOn = player_.repeatOn == 1 ? 0 : 1;
    colourRepeat();
}

void CDForm::Image16_Click(int index) {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    switch (index) {
        case programKeys::keypad:
            face.keypadEntry.Visible = true;
            face.keypadEntry.SetFocus();
            break;
        case programKeys::clear:
            if (programLabelLive(face.clearCover)) {
                clearProgram();
            }
            break;
        case programKeys::save:
            if (programLabelLive(face.saveCover) && player_.playMode == programmed) {
                saveProgram();
            }
            break;
        case programKeys::recall:
            if (programLabelLive(face.recallCover) && player_.playMode == programmed) {
                recallProgram();
            }
            break;
        default:
            cinfo();
    }
}

// Serves tracks beyond the grid: the number is taken as zero-based, so that "20" plays track 21 and the last track's own
// number plays nothing.
void CDForm::Text1_Enter() {
    if (context_.state.discDrawerOpen == 1) {
        return;
    }
    const int value = text::valInteger(face.keypadEntry.Text.get());
    if (value > 19 && value <= player_.discTrackCount) {
        player_.pickedTrackIndex = static_cast<std::int16_t>(value);
        clrab();
        startTrack();
    }
    hideKeypad();
    if (player_.repeatOn != 1) {
        setAllCells(color(6));
    }
}

void CDForm::clearProgram() {
    clearList();
    player_.programBackup.fill(0);
    setAllCells(color(6));
    refillProgramList();
}

void CDForm::saveProgram() {
    context_.files.changeDirectory(library::recordFolder(context_.state.dataDir));
    const auto path = programPath(record_.discRecordPath);
    if (programEntry(player_, 1) == 0) {
        face.programLamp.ForeColor = color(2);
        context_.files.remove(path);
        return;
    }
    const auto saved = context_.files.write(path, programFileBytes(player_));
    if (!saved) {
        context_.dialogs.message({"Tessarel", saved.error().message});
    }
    face.programLamp.ForeColor = color(3);
}

void CDForm::recallProgram() {
    player_.programCount = 0;
    const auto bytes = context_.files.read(programPath(record_.discRecordPath));
    if (!bytes) {
        return;
    }
    takeProgramFile(player_, *bytes);
    player_.randomProgram = 0;
    if (player_.programCount < 1) {
        face.programLamp.ForeColor = color(2);
        return;
    }
    player_.playMode = programmed;
    player_.programIndex = 0;
    refillProgramList();
}

void CDForm::Label30_Click() {
    if (context_.state.discDrawerOpen == 1 || face.programLamp.ForeColor == color(2)) {
        return;
    }
    context_.system.setPointer(platform::PointerShape::hourglass);
    Image4_Click(modeKeys::program);
    player_.playStarted = 1;
    Image16_Click(programKeys::recall);
    MMControl1_PlayClick();
    setTransport(Transport::playing);
    MMControl1.Command("Play");  // for a program without an entry that can be recalled: the whole disc plays
    context_.system.setPointer(platform::PointerShape::normal);
}

}  // namespace tessarel::audio
