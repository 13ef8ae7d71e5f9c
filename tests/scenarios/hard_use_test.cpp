// What random presses have brought to light, each as a case of its own.
#include <gtest/gtest.h>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using namespace audio;
using fakes::makeDisc;
using fakes::makeToc;

struct HardUse : testing::Test {
    Machine machine;
    CDFormFace& face() { return machine.player().face; }
    PlayerState& state() { return machine.state(); }
    Color cell(int track) { return face().cellNumbers[track - 1].ForeColor; }
    void pickFromProgram(std::initializer_list<int> tracks) {
        machine.choose(modeKeys::program);
        for (const int track : tracks) {
            machine.pick(track);
        }
    }
    /// Runs until the end window of the track has just been seen, before the pulse acts on it.
    bool runIntoEndWindow(platform::Milliseconds limit) {
        return machine.runUntil([this] { return state().playLaunched == 0; }, limit);
    }
    void expectStopped() {
        EXPECT_EQ(state().playingFlag, 0);
        EXPECT_EQ(state().pausedFlag, 0);
        EXPECT_EQ(machine.player().MMControl1.Mode(), mode::stopped);
        EXPECT_FALSE(face().icntlc[transport::play].Visible);
        EXPECT_FALSE(face().icntlc[transport::pause].Visible);
        EXPECT_TRUE(face().icntlb[transport::stop].Visible);
    }
    void expectPlaying(int track) {
        EXPECT_EQ(state().playingFlag, 1);
        EXPECT_TRUE(machine.sounding());
        EXPECT_TRUE(face().icntlc[transport::play].Visible);
        EXPECT_EQ(machine.soundingTrack(), track);
    }
};

TEST_F(HardUse, APickLightsNoCellThatTheDiscLacks) {
    machine.openPlayer(makeDisc(5, 60));
    machine.pick(3);
    EXPECT_EQ(cell(5), panelColor(0));
    EXPECT_EQ(cell(6), panelColor(6));
}

TEST_F(HardUse, ADiscPulledOutEndsIntroScanMarksAndHeldKeysAndShutsTheList) {
    machine.openPlayer(makeDisc(5, 60));
    pickFromProgram({1});
    machine.choose(modeKeys::intro);
    machine.run(15s);
    face().scntla[seekKeys::abRepeat].press();
    face().scntla[seekKeys::forward].mouseDown();
    machine.choose(modeKeys::intro);
    machine.world.cd.pull();
    machine.run(2500ms);
    ASSERT_EQ(machine.program.state.discDrawerOpen, 1);
    EXPECT_EQ(state().introTrack, 0);
    EXPECT_EQ(state().markA, 0);
    EXPECT_EQ(state().seekKeyState, 0);
    EXPECT_FALSE(machine.program.windows.isLoaded("aplaylst"));
}

TEST_F(HardUse, ThePanelOfTheDrawerEjectsTheDiscThatIsIn) {
    machine.openPlayer(makeDisc(5, 60));
    machine.press(transport::play);
    face().drawerPanel.press();
    EXPECT_EQ(state().playingFlag, 0);
    EXPECT_EQ(machine.world.cd.disc, nullptr);
    EXPECT_TRUE(machine.program.windows.isVisible("CD1st"));
}

TEST_F(HardUse, ASeekKeyHeldOverAStopIsLetGo) {
    machine.openPlayer(makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    face().scntla[seekKeys::forward].mouseDown();
    machine.press(transport::stop);
    machine.run(1s);
    expectStopped();
    EXPECT_EQ(state().seekKeyState, 0);
}

TEST_F(HardUse, ASeekKeyHeldForAnHourGoesOnForward) {
    machine.openPlayer(makeToc({4 * 75, 60 * 75}));
    machine.press(transport::play);
    face().scntla[seekKeys::forward].mouseDown();
    state().seekKeyState = 32767;
    machine.run(20s);
    EXPECT_GE(state().seekKeyState, 0);
    EXPECT_LE(state().seekKeyState, 1000);
}

TEST_F(HardUse, AMarkAtTheHeadOfATrackIsAMark) {
    machine.openPlayer(makeDisc(5, 60));
    machine.press(transport::play);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_EQ(face().abLamp.ForeColor, panelColor(3));
    EXPECT_GT(state().markA, 0);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_GT(state().markB, 0);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_EQ(face().abLamp.ForeColor, panelColor(2));
}

TEST_F(HardUse, PrevOnTheFirstTrackEndsAPauseInAStop) {
    machine.openPlayer(makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(20s);
    machine.press(transport::pause);
    machine.press(transport::prev);
    expectStopped();
    EXPECT_EQ(face().repeatLamp.Caption.get(), "Repeat");
}

TEST_F(HardUse, NextOnTheLastTrackEndsAPauseAndItPlaysOn) {
    machine.openPlayer(makeDisc(5, 60));
    machine.pick(5);
    machine.run(20s);
    machine.press(transport::pause);
    machine.press(transport::next);
    expectPlaying(5);
    EXPECT_EQ(state().pausedPosition, 0);
    EXPECT_FALSE(face().icntlc[transport::pause].Visible);
}

TEST_F(HardUse, NextUnderPauseOnADiscOfTwoTracksStaysOnTheDisc) {
    machine.openPlayer(makeDisc(2, 60));
    machine.press(transport::play);
    machine.run(10s);
    machine.press(transport::pause);
    machine.press(transport::next);
    machine.run(5s);
    EXPECT_EQ(machine.digits(), 2);
    expectPlaying(2);
}

TEST_F(HardUse, ADiscWithoutSoundComesToItsEndThoughRepeatIsOn) {
    auto disc = std::make_shared<platform::CdToc>(*makeDisc(3, 60));
    for (auto& track : disc->tracks) {
        track.audio = false;
    }
    machine.openPlayer(disc);
    state().repeatOn = 1;
    machine.press(transport::play);
    machine.run(2s);
    expectStopped();
    EXPECT_EQ(machine.digits(), 0);
}

TEST_F(HardUse, ASingleDataTrackWithRepeatEnds) {
    machine.openPlayer(fakes::withDataAtTheEnd(makeDisc(3, 60)));
    state().repeatOn = 1;
    machine.choose(modeKeys::single);
    machine.press(transport::stop);
    machine.pick(3);
    machine.run(2s);
    expectStopped();
}

TEST_F(HardUse, ADiscOfTheSameLengthAndOtherTracksIsNoticed) {
    machine.openPlayer(makeDisc(2, 100));
    machine.world.cd.insert(makeDisc(4, 50));
    machine.run(6s);
    EXPECT_EQ(state().discTrackCount, 4);
    EXPECT_EQ(state().gridTrackCount, 4);
    EXPECT_EQ(state().playingFlag, 0);
}

TEST_F(HardUse, AfterTheEndOfAVeryShortTrackTheDigitsStayZero) {
    machine.openPlayer(makeToc({4 * 75, 60 * 75}));
    machine.program.state.audioTimeMode = 1;
    machine.choose(modeKeys::single);
    machine.pick(1);
    machine.run(3s);
    EXPECT_EQ(machine.digits(), 0);
    expectStopped();
}

TEST_F(HardUse, RepeatAfterTheEndOfASingleTrackShowsAndKeepsIt) {
    machine.openPlayer(makeDisc(5, 30));
    machine.choose(modeKeys::single);
    machine.pick(2);
    ASSERT_TRUE(machine.runUntil([this] { return state().playingFlag == 0; }, 40s));
    face().Image10[functionKeys::repeat].press();
    machine.choose(modeKeys::single);
    machine.run(1s);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(5s);
    expectPlaying(2);
}

TEST_F(HardUse, APauseInTheEndWindowHoldsTheProgram) {
    machine.openPlayer(makeDisc(5, 30));
    pickFromProgram({2, 4});
    machine.press(transport::play);
    ASSERT_TRUE(runIntoEndWindow(40s));
    machine.press(transport::pause);
    machine.run(5s);
    EXPECT_EQ(state().pausedFlag, 1);
    EXPECT_EQ(machine.player().MMControl1.Mode(), mode::paused);
    machine.press(transport::play);
    machine.run(3s);
    expectPlaying(4);
}

TEST_F(HardUse, AStopInTheEndWindowStopsTheProgram) {
    machine.openPlayer(makeDisc(5, 30));
    pickFromProgram({2, 4});
    machine.press(transport::play);
    ASSERT_TRUE(runIntoEndWindow(40s));
    machine.press(transport::stop);
    machine.run(5s);
    expectStopped();
}

TEST_F(HardUse, WithRepeatADiscPlayedFromBeyondTrackTwentyBeginsAgainUnderThePlayLight) {
    machine.openPlayer(makeDisc(25, 30));
    state().repeatOn = 1;
    face().Image16[programKeys::keypad].press();
    face().keypadEntry.Text = std::string("23");
    face().keypadEntry.enter();
    ASSERT_EQ(machine.soundingTrack(), 24);
    machine.run(65s);
    EXPECT_EQ(machine.digits(), 1);
    expectPlaying(1);
}

TEST_F(HardUse, ProgrammedModeWithoutAProgramGoesOnAsWholeDiscAfterTheTrack) {
    machine.openPlayer(makeDisc(2, 30));
    machine.pick(2);
    machine.choose(modeKeys::program);
    machine.run(35s);
    EXPECT_EQ(state().playMode, wholeDisc);
    expectPlaying(2);
}

TEST_F(HardUse, ATrackThatTheDiscLacksLeavesAPauseInProgrammedModeAlone) {
    machine.openPlayer(makeDisc(20, 30));
    machine.press(transport::play);
    machine.run(5s);
    machine.choose(modeKeys::program);
    machine.press(transport::pause);
    face().Image16[programKeys::keypad].press();
    face().keypadEntry.Text = std::string("20");
    face().keypadEntry.enter();
    EXPECT_TRUE(face().icntlc[transport::pause].Visible);
    EXPECT_EQ(state().pausedFlag, 1);
    EXPECT_EQ(machine.player().MMControl1.Mode(), mode::paused);
}

}  // namespace
}  // namespace tessarel::scenarios
