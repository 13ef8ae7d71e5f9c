#include <algorithm>
#include <chrono>

#include "audio/cdform.h"
#include "audio/program_list.h"
#include "audio/track_rules.h"
#include "forms/windows.h"
#include "shell/cues.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;

constexpr auto keyDelay = 300ms;
constexpr auto programEndDelay = 500ms;
constexpr int statusIntervalMs = 1000;

}  // namespace

void CDForm::icntla_Click(int index) { pressKey(index, ownNext); }

// `nextCode` tells the Next handler whose key it is.
void CDForm::pressKey(int index, int nextCode) {
    const bool covered = face.icntlc[index].Visible || face.icntlb[index].Visible;
    if (covered || (context_.state.discDrawerOpen == 1 && index != transport::eject)) {
        return;
    }
    switch (index) {
        case transport::prev:
            MMControl1_PrevClick();
            context_.scheduler.wait(keyDelay);
            settleAfterStep();
            break;
        case transport::next:
            pressNext(nextCode);
            break;
        case transport::play:
            setTransport(Transport::playing);
            MMControl1_PlayClick();
            MMControl1.Command("Play");
            break;
        case transport::pause:
            setTransport(Transport::paused);
            MMControl1_PauseClick();
            MMControl1.Command("Pause");
            break;
        case transport::stop:
            setTransport(Transport::stopped);
            MMControl1_StopClick();
            MMControl1.Command("Stop");
            context_.scheduler.wait(keyDelay);
            break;
        default:
            pressEject();
    }
    if (player_.playingFlag == 1 && context_.state.discDrawerOpen != 1) {
        setTransport(Transport::playing);
    }
}

void CDForm::pressNext(int code) {
    MMControl1.Command("Stop");
    face.statusBar.FloodPercent = 0;
    face.timeText.Caption = std::string();
    MMControl1_NextClick(code);
    MMControl1.Command("Play");
    context_.scheduler.wait(keyDelay);
    settleAfterStep();
}

// From the last track there is no step forward, and none back from the first: a pause ends with the press all the same.
void CDForm::settleAfterStep() {
    if (player_.playingFlag == 0 && player_.pausedFlag == 0 && context_.state.discDrawerOpen != 1) {
        player_.pausedPosition = 0;
        leaveAsItSounds();
    }
}

void CDForm::pressEject() {
    if (context_.state.discDrawerOpen == 1) {
        Panel3D7_Click();
        return;
    }
    MMControl1_EjectClick();
    MMControl1.Command("Eject");
}

void CDForm::MMControl1_PlayClick() {
    player_.pausedFlag = 0;
    player_.playingFlag = 1;
    ranOut_ = false;
    if (player_.pausedPosition > 0) {
        colourRepeat();
        MMControl1.Command("Resume");
        player_.pausedPosition = 0;
        face.repeatLamp.Caption = std::string("Repeat");
        return;
    }
    if (player_.currentTrack < 1 || player_.currentTrack > player_.discTrackCount) {
        player_.currentTrack = 1;
    }
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(player_.currentTrack));
    face.trackDigits.Caption = std::to_string(player_.currentTrack);
    forgetShownTime();
    Timer2.Interval = pulseMs;
    player_.discFinished = 0;
    refreshTimeCaption();
    if (player_.playMode > programmed) {
        MMControl1.setUpdateInterval(statusIntervalMs);
        MMControl1.setFrom(player_.currentTrack);
        if (remoteOpen()) {
            MMControl1.Command("Play");
        } else {
            player_.playLaunched = 1;
        }
        return;
    }
    playProgrammed();
}

void CDForm::playProgrammed() {
    if (player_.repeatOn != 1 && !consumeProgramEntry()) {
        endProgram();
        return;
    }
    ++player_.programIndex;
    if (programEntry(player_, player_.programIndex) == 0) {
        player_.programIndex = 1;
    }
    if (auto* list = windows().find<ProgramList>(ProgramList::windowName)) {
        list->selectRow(player_.programIndex - 1);
    }
    launchProgramEntry();
}

// False when the program is over.
bool CDForm::consumeProgramEntry() {
    if (player_.programIndex < 1) {
        return true;
    }
    if (auto* list = windows().find<ProgramList>(ProgramList::windowName)) {
        list->selectRow(player_.programIndex - 1);
    }
    const int finished = programEntry(player_, player_.programIndex);
    setCells(finished, std::max(finished, 0), color(6));
    player_.programList.at(static_cast<std::size_t>(std::min<int>(player_.programIndex, 101))) = 0;
    return programEntry(player_, player_.programIndex + 1) != 0;
}

void CDForm::launchProgramEntry() {
    const int entry = programEntry(player_, player_.programIndex);
    if (entry == 1 && player_.skipStep == 1) {
        player_.currentTrack = 0;
        player_.skipStep = 0;
        face.trackDigits.Caption = std::string("1");
        --player_.programIndex;
        MMControl1.Command("Stop");
        MMControl1.Command("Play");
        player_.playLaunched = 1;
        return;
    }
    if (entry == 0 && player_.programIndex == 1) {
        player_.playMode = wholeDisc;
        setModeLights(modeKeys::disc);
        MMControl1_PlayClick();
        return;
    }
    const int track = entry - player_.skipStep;
    if (track < 1) {
        endProgram();
        return;
    }
    player_.currentTrack = static_cast<std::int16_t>(MMControl1.firstAudioTrackFrom(track));
    face.trackDigits.Caption = std::to_string(std::max(player_.currentTrack + player_.skipStep, 1));
    MMControl1.Command("Stop");
    launch(player_.currentTrack);
}

void CDForm::endProgram() {
    if (player_.repeatOn != 1) {
        clearList();
    }
    windows().unload(ProgramList::windowName);
    MMControl1.Command("Stop");
    context_.scheduler.wait(programEndDelay);
    face.statusBar.FloodPercent = 0;
    setTransport(Transport::stopped);
    player_.playMode = wholeDisc;
    setModeLights(modeKeys::disc);
    player_.playLaunched = 1;
    player_.programIndex = 0;
    player_.currentTrack = 0;
    face.lowerLine.Caption = std::string();
    MMControl1.setUpdateInterval(statusIntervalMs);
    MMControl1.Command("Stop");
    MMControl1.setFrom(0);
    face.trackDigits.Caption = std::string("0");
    if (player_.skipStep != 0) {
        player_.skipStep = 0;
        return;
    }
    player_.discFinished = 1;
    setAllCells(color(6));
    Timer2.Interval = 0;
    MMControl1.Command("Stop");
    player_.playingFlag = 0;
    player_.pausedFlag = 0;
    mirrorToRemote();  // the pulse does it no more
}

void CDForm::MMControl1_PauseClick() {
    player_.pausedFlag = 1;
    player_.playingFlag = 0;
    player_.pausedPosition = MMControl1.Position();
    showPauseText();
}

void CDForm::MMControl1_StopClick() {
    player_.pausedFlag = 0;
    player_.playingFlag = 0;
    player_.lastShownSeconds = 0;
    face.timeText.Caption = std::string("00:00");
    face.statusBar.FloodPercent = 0;
    player_.pausedPosition = 0;  // a stop ends a pause: the next Play begins a track
    if (player_.playLaunched == 0) {
        player_.playLaunched = 1;  // and the end of a track that has just been seen leads to nothing more
    }
    endPauseText();
}

void CDForm::MMControl1_NextClick(int code) {
    clrab();
    context_.scheduler.wait(keyDelay);
    player_.pausedFlag = 0;
    endPauseText();
    if (player_.playMode == programmed) {
        nextInProgram(code);
    } else {
        nextOnDisc();
    }
}

void CDForm::nextInProgram(int code) {
    player_.pausedPosition = 0;
    player_.playingFlag = 1;
    if (player_.discFinished == 1) {
        return;
    }
    const bool atOnce = code == ownNext || (code == remoteNext && remoteOpen());
    player_.skipStep = atOnce ? 0 : 1;
    MMControl1_PlayClick();
    if (auto* list = windows().find<ProgramList>(ProgramList::windowName)) {
        list->selectRow(player_.programIndex - 1);
    }
}

// While nothing plays, play starts one track below the digits.
void CDForm::nextOnDisc() {
    if (player_.currentTrack + 1 > player_.discTrackCount || player_.playStarted == 0) {
        return;
    }
    const auto show = [this](int track) {
        player_.currentTrack = static_cast<std::int16_t>(std::min<int>(track, player_.discTrackCount));
        face.trackDigits.Caption = std::to_string(player_.currentTrack);
    };
    show(std::max(player_.currentTrack + 1, 2));
    face.timeText.Caption = std::string();
    player_.pausedPosition = 0;
    if (player_.playingFlag == 1) {
        MMControl1_PlayClick();
        return;
    }
    player_.currentTrack = static_cast<std::int16_t>(std::max(player_.currentTrack - 1, 2));
    MMControl1_PlayClick();
    MMControl1.Command("Play");
    show(player_.currentTrack + 1);
}

void CDForm::MMControl1_PrevClick() {
    clrab();
    if (player_.playMode == programmed && player_.repeatOn != 1) {
        return;
    }
    player_.pausedPosition = 0;
    context_.scheduler.wait(keyDelay);
    player_.pausedFlag = 0;
    endPauseText();
    if (player_.playMode == programmed) {
        player_.playingFlag = 1;
        player_.programIndex = static_cast<std::int16_t>(player_.programIndex - 2);
        MMControl1_PlayClick();
        MMControl1.Command("Play");
        if (auto* list = windows().find<ProgramList>(ProgramList::windowName)) {
            list->selectRow(player_.programIndex - 1);
        }
        return;
    }
    const int target = MMControl1.lastAudioTrackUpTo(player_.currentTrack - 1);
    if (target < 1 || player_.playStarted == 0) {
        return;
    }
    player_.playingFlag = 1;
    player_.currentTrack = static_cast<std::int16_t>(target);
    forgetShownTime();
    face.trackDigits.Caption = std::to_string(player_.currentTrack);
    face.timeText.Caption = std::string();
    MMControl1.Command("Pause");
    MMControl1.setTo(player_.currentTrack);
    MMControl1.Command("Seek");
    MMControl1.setTrack(player_.currentTrack);
    MMControl1.Command("Play");
}

// Play from the head of a track, as every pick of one ends.
void CDForm::startSequence(int track) {
    MMControl1.Command("Pause");
    MMControl1.setTo(track);
    MMControl1.Command("Seek");
    MMControl1.setTrack(track);
    face.trackDigits.Caption = std::to_string(MMControl1.Track());
    launch(track);
}

void CDForm::launch(int track) {
    player_.playLaunched = 1;
    ranOut_ = false;
    forgetShownTime();
    MMControl1.setUpdateInterval(statusIntervalMs);
    MMControl1.setFrom(track);
    MMControl1.Command("Play");
}

// The guards of the readout are for a position that stutters, not for a jump.
void CDForm::forgetShownTime() {
    player_.lastShownTrack = 0;
    player_.lastShownSeconds = 0;
}

void CDForm::MMControl1_PlayCompleted(int code) {
    if (code == deviceError::hardware) {
        MMControl1.Command("Close");
    } else if (code == deviceError::none && player_.playingFlag == 1) {
        soundsEnded_ = true;
        takeSoundsEnd();
    }
}

// A key may have been pressed between the end of the sound and what follows from it.
void CDForm::noticeSilence() {
    if (player_.playingFlag == 1 && MMControl1.Mode() == mode::stopped && MMControl1.Tracks() > 0) {
        soundsEnded_ = true;
    }
}

bool CDForm::soundsFrom(int track) const { return MMControl1.lastAudioTrackUpTo(player_.discTrackCount) >= track; }

// The device has no more sound to play, and the time updates have not seen it: the last tracks are data, or a correction has
// put the end of the track behind it. While the window is minimised this waits, as all end detection does.
void CDForm::takeSoundsEnd() {
    if (!soundsEnded_ || WindowState == forms::WindowState::minimised) {
        return;
    }
    soundsEnded_ = false;
    if (player_.playingFlag != 1) {
        return;  // Pause or Stop has come first
    }
    const bool anySound = soundsFrom(1);
    if (anySound && player_.playMode != wholeDisc) {
        player_.playLaunched = 0;
    } else if (anySound && player_.repeatOn == 1) {
        wrapToFirst();
    } else {
        player_.currentTrack = static_cast<std::int16_t>(player_.discTrackCount + 1);
    }
}

}  // namespace tessarel::audio
