// Transport, modes, marks and keypad of the Audio CD window, on the simulated clock.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using audio::PlayMode;
using testing::ElementsAre;
using testing::SizeIs;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace seekKeys = audio::seekKeys;
namespace functionKeys = audio::functionKeys;
namespace programKeys = audio::programKeys;

struct Player : testing::Test {
    Machine machine;
    audio::CDFormFace& face() { return machine.player().face; }
    audio::PlayerState& state() { return machine.state(); }

    void open(int tracks, int seconds = 60) { machine.openPlayer(fakes::makeDisc(tracks, seconds)); }
    void playing(int tracks, int seconds = 60) {
        open(tracks, seconds);
        machine.press(transport::play);
        machine.run(3s);
    }
    Tmsf position() { return unpackTmsf(machine.player().MMControl1.Position()); }
    bool dim(int key) { return face().icntlb[key].Visible; }
    bool lit(int key) { return face().icntlc[key].Visible; }
    void repeatOn() { face().Image10[functionKeys::repeat].press(); }
    void keypad(const std::string& number) {
        face().Image16[programKeys::keypad].press();
        face().keypadEntry.Text = number;
        face().keypadEntry.enter();
    }
};

// ---- Transport ----

TEST_F(Player, PlayStartsTheFirstTrack) {
    playing(5);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.digits(), 1);
    EXPECT_EQ(machine.time(), "0:03");
    EXPECT_EQ(face().timeCaption.Caption.get(), "Time");
}

TEST_F(Player, AfterPlayThePlayKeyIsLitAndTheOthersLive) {
    playing(5);
    EXPECT_TRUE(lit(transport::play));
    for (const int key : {transport::prev, transport::next, transport::pause, transport::stop, transport::eject}) {
        EXPECT_FALSE(dim(key)) << key;
        EXPECT_FALSE(lit(key)) << key;
    }
    EXPECT_FALSE(face().scntlb[seekKeys::forward].Visible);
}

TEST_F(Player, AfterStopAllButPlayAndEjectAreDim) {
    playing(5);
    machine.press(transport::stop);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(lit(transport::play));
    EXPECT_FALSE(dim(transport::play));
    EXPECT_FALSE(dim(transport::eject));
    for (const int key : {transport::prev, transport::next, transport::pause, transport::stop}) {
        EXPECT_TRUE(dim(key)) << key;
    }
    EXPECT_EQ(machine.time(), "00:00");
    EXPECT_EQ(face().statusBar.FloodPercent, 0);
}

TEST_F(Player, ALitKeyDoesNothing) {
    playing(5);
    machine.world.cd.log.clear();
    machine.press(transport::play);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
}

TEST_F(Player, ADimKeyDoesNothing) {
    open(5);
    machine.world.cd.log.clear();
    machine.press(transport::next);
    machine.press(transport::pause);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
    EXPECT_EQ(state().pausedPosition, 0);
}

TEST_F(Player, PauseHoldsAndPlayGoesOnFromTheSamePlace) {
    playing(5);
    machine.press(transport::pause);
    EXPECT_TRUE(lit(transport::pause));
    EXPECT_FALSE(lit(transport::play));
    EXPECT_EQ(face().repeatLamp.Caption.get(), "PAUSE");
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(3));
    const auto held = position();
    machine.run(30s);
    EXPECT_EQ(position(), held);
    machine.press(transport::play);
    machine.run(1s);
    EXPECT_EQ(position().track, held.track);
    EXPECT_EQ(position().seconds, held.seconds + 1);
    EXPECT_EQ(face().repeatLamp.Caption.get(), "Repeat");
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(9));
    EXPECT_EQ(state().pausedPosition, 0);
}

TEST_F(Player, PlayAfterStopBeginsTheCurrentTrackAgain) {
    playing(5);
    machine.pick(3);
    machine.run(10s);
    machine.press(transport::stop);
    machine.run(5s);
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(position().track, 3);
    EXPECT_EQ(position().seconds, 2);
}

TEST_F(Player, NextPlaysTheNextTrack) {
    playing(5);
    machine.press(transport::next);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(2s);
    EXPECT_EQ(position().track, 2);
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Player, NextWaitsThreeTenthsOfASecondBeforeAndAfter) {
    playing(5);
    const auto before = machine.world.scheduler.waited();
    machine.press(transport::next);
    EXPECT_EQ(machine.world.scheduler.waited() - before, 600ms);
}

TEST_F(Player, NextOnTheLastTrackOfAWholeDiscStaysOnIt) {
    playing(5);
    machine.pick(5);
    machine.run(10s);
    machine.press(transport::next);
    machine.run(1s);
    EXPECT_EQ(machine.digits(), 5);
    EXPECT_EQ(state().currentTrack, 5);
    EXPECT_EQ(position().track, 5);
    EXPECT_GE(position().seconds, 10);
}

TEST_F(Player, NextUnderPausePlaysOneTrackBelowTheDigits) {
    playing(5);
    machine.pick(3);
    machine.run(5s);
    machine.press(transport::pause);
    machine.player().icntla_Click(transport::next);
    EXPECT_EQ(machine.digits(), 4);
    EXPECT_EQ(position().track, 3);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Player, NextUnderPauseOnTheFirstTrackPlaysTheSecondUnderTheDigitsThree) {
    playing(5);
    machine.press(transport::pause);
    machine.press(transport::next);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_EQ(position().track, 2);
}

TEST_F(Player, PrevPlaysTheTrackBefore) {
    playing(5);
    machine.pick(3);
    machine.run(10s);
    machine.press(transport::prev);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(1s);
    EXPECT_EQ(position().track, 2);
}

TEST_F(Player, PrevOnTheFirstTrackDoesNothing) {
    playing(5);
    machine.run(10s);
    machine.press(transport::prev);
    EXPECT_EQ(machine.digits(), 1);
    EXPECT_GE(position().seconds, 12);
}

TEST_F(Player, PrevInAProgramWithoutRepeatDoesNothing) {
    open(5);
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(70s);
    EXPECT_EQ(position().track, 2);
    machine.press(transport::prev);
    machine.run(2s);
    EXPECT_EQ(position().track, 2);
}

TEST_F(Player, PrevInAProgramWithRepeatGoesBackAnEntry) {
    open(5);
    repeatOn();
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(70s);
    EXPECT_EQ(position().track, 2);
    machine.press(transport::prev);
    machine.run(2s);
    EXPECT_EQ(position().track, 4);
    machine.press(transport::prev);
    machine.run(2s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(position().track, 4) << "before the first entry it wraps to the first";
}

TEST_F(Player, NextInAProgramConsumesTheEntryAtOnce) {
    open(5);
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(5s);
    machine.press(transport::next);
    machine.run(2s);
    EXPECT_EQ(position().track, 2);
    EXPECT_EQ(machine.digits(), 2);
    EXPECT_EQ(state().programList[1], 0);
    machine.press(transport::next);
    machine.run(2s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(state().discFinished, 1);
}

TEST_F(Player, NextFromAnotherWindowShowsOneTrackAboveTheOneThatItPlays) {
    open(5);
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(3);
    machine.press(transport::play);
    machine.run(5s);
    machine.player().MMControl1_NextClick(0);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_EQ(position().track, 2);
}

TEST_F(Player, TheEndOfAProgramStopsThePulseUntilPlay) {
    open(3, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(30s);
    EXPECT_EQ(machine.player().Timer2.Interval, 0);
    machine.press(transport::play);
    EXPECT_EQ(machine.player().Timer2.Interval, 100);
    machine.run(2s);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Player, PlayInProgrammedModeWithoutAProgramPlaysTheWholeDisc) {
    open(5);
    machine.choose(modeKeys::program);
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(state().playMode, PlayMode::wholeDisc);
    EXPECT_TRUE(face().Image3[modeKeys::disc].Visible);
    EXPECT_TRUE(machine.sounding());
}

// ---- Modes ----

TEST_F(Player, ChoosingSingleTrackMarksTheLaunchWithNinetyNine) {
    open(5);
    machine.choose(modeKeys::single);
    EXPECT_EQ(state().playLaunched, 99);
    EXPECT_EQ(state().playMode, PlayMode::singleTrack);
}

TEST_F(Player, SingleTrackWithRepeatStartsTheCurrentTrackAgainAtOnce) {
    playing(5);
    machine.run(20s);
    repeatOn();
    machine.choose(modeKeys::single);
    machine.run(1s);
    EXPECT_EQ(position().track, 1);
    EXPECT_LE(position().seconds, 1);
}

TEST_F(Player, ProgramLabelsLiveOnlyInProgrammedMode) {
    open(5);
    EXPECT_EQ(face().saveCover.ForeColor, colors::black);
    machine.choose(modeKeys::program);
    EXPECT_EQ(face().clearCover.ForeColor, colors::grey);
    EXPECT_EQ(face().saveCover.ForeColor, colors::grey);
    EXPECT_EQ(face().recallCover.ForeColor, colors::grey);
    machine.choose(modeKeys::disc);
    EXPECT_EQ(face().recallCover.ForeColor, colors::black);
}

TEST_F(Player, TracksCannotBeEnteredWhileAProgramIsPartlyPlayed) {
    open(5, 20);
    machine.choose(modeKeys::program);
    machine.pick(1);
    machine.pick(2);
    machine.pick(3);
    machine.press(transport::play);
    machine.run(25s);
    ASSERT_EQ(state().programIndex, 2);
    machine.pick(5);
    ASSERT_THAT(machine.world.dialogs.boxes, SizeIs(1));
    EXPECT_EQ(machine.world.dialogs.boxes[0].title, "Tessarel");
    EXPECT_EQ(machine.world.dialogs.boxes[0].text, "Unable to enter new tracks while current program partially complete!");
    EXPECT_EQ(state().programCount, 3);
}

TEST_F(Player, AProgramTakesAHundredEntriesAndNoMore) {
    open(5);
    machine.choose(modeKeys::program);
    for (int i = 0; i < 101; ++i) {
        machine.pick(i % 5 + 1);
    }
    EXPECT_EQ(state().programCount, 100);
    EXPECT_EQ(state().programList[100], 5);
    EXPECT_EQ(state().programList[101], 0);
}

TEST_F(Player, APickPlaysTheTrackAndDimsTheCellsBeforeIt) {
    open(5);
    machine.pick(3);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(position().track, 3);
    EXPECT_EQ(face().cellNumbers[1].ForeColor, panelColor(6));
    EXPECT_EQ(face().cellNumbers[2].ForeColor, panelColor(0));
}

TEST_F(Player, ADeadCellDoesNothing) {
    open(5);
    machine.world.cd.log.clear();
    machine.pick(6);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
    EXPECT_EQ(face().cellCaps[5].ForeColor, colors::grey);
    EXPECT_EQ(face().cellCaps[4].ForeColor, colors::black);
}

TEST_F(Player, RandomIsNotTakenWhilePaused) {
    playing(5);
    machine.press(transport::pause);
    face().Image10[functionKeys::random].press();
    EXPECT_EQ(state().playMode, PlayMode::wholeDisc);
}

TEST_F(Player, RandomOnTwentyFiveTracksQueuesAllAndCountsTwenty) {
    open(25);
    face().Image10[functionKeys::random].press();
    EXPECT_EQ(state().programCount, 20);
    const auto& list = state().programList;
    std::set<int> queued(list.begin() + 1, list.begin() + 26);
    EXPECT_THAT(queued, SizeIs(25));
    EXPECT_EQ(*queued.begin(), 1);
    EXPECT_EQ(*queued.rbegin(), 25);
    EXPECT_EQ(list[26], 0);
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Player, RepeatFlipsItsLampAndOutlivesTheDisc) {
    open(5);
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(9));
    repeatOn();
    EXPECT_EQ(state().repeatOn, 1);
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(8));
    machine.program.windows.unload("CDForm");
    open(7);
    EXPECT_EQ(state().repeatOn, 1);
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(8));
}

TEST_F(Player, RepeatIsDeadWhileItsLabelIsDimmed) {
    open(5);
    face().repeatCover.ForeColor = colors::black;
    repeatOn();
    EXPECT_EQ(state().repeatOn, 0);
}

// ---- Keypad ----

TEST_F(Player, TheKeypadTakesItsNumberAsZeroBased) {
    open(25);
    keypad("20");
    EXPECT_EQ(position().track, 21);
    EXPECT_FALSE(face().keypadEntry.Visible);
    EXPECT_EQ(face().keypadEntry.Text.get(), "");
}

TEST_F(Player, TheKeypadCannotReachTrackTwenty) {
    open(25);
    keypad("19");
    EXPECT_FALSE(machine.sounding());
    keypad("20");
    EXPECT_EQ(position().track, 21);
}

TEST_F(Player, TheKeypadsLastNumberPlaysNothing) {
    open(25);
    keypad("25");
    EXPECT_FALSE(machine.sounding());
    keypad("26");
    EXPECT_FALSE(machine.sounding());
    keypad("x");
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Player, AfterTheKeypadTheCellsAreDimUnlessRepeatIsOn) {
    playing(25);
    keypad("3");
    EXPECT_EQ(face().cellNumbers[0].ForeColor, panelColor(6));
    machine.run(200ms);
    repeatOn();
    machine.run(200ms);
    keypad("3");
    EXPECT_EQ(face().cellNumbers[0].ForeColor, panelColor(4));
}

TEST_F(Player, EscapeLeavesTheKeypadAndNotTheProgram) {
    open(25);
    face().Image16[programKeys::keypad].press();
    face().keypadEntry.Text = std::string("2");
    EXPECT_FALSE(fakes::endsProcess([this] { machine.player().Form_KeyDown(forms::keys::escape, 0); }));
    EXPECT_FALSE(face().keypadEntry.Visible);
    EXPECT_EQ(face().keypadEntry.Text.get(), "");
}

// ---- Seeking and marks ----

TEST_F(Player, APressOnTheBarJumpsInsideTheTrack) {
    playing(3, 100);
    face().statusBar.pressAt(500);
    EXPECT_EQ(position(), (Tmsf{1, 0, 50, 0}));
    EXPECT_EQ(machine.time(), "0:50");
    EXPECT_EQ(face().statusBar.FloodPercent, 50);
    EXPECT_EQ(face().statusBar.ForeColor, colors::white);
}

TEST_F(Player, APressOnTheBarWhileStoppedDoesNothing) {
    open(3, 100);
    machine.world.cd.log.clear();
    face().statusBar.pressAt(500);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
}

TEST_F(Player, HoldingForwardStepsThroughTheTrack) {
    playing(3, 200);
    face().scntla[seekKeys::forward].mouseDown();
    machine.run(1s);
    face().scntla[seekKeys::forward].mouseUp();
    const auto at = position();
    EXPECT_EQ(at.track, 1);
    EXPECT_GT(at.minutes * 60 + at.seconds, 40);
    machine.run(1s);
    EXPECT_EQ(state().seekKeyState, 0);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Player, ForwardIntoAHundredPercentEndsTheHoldAndTheTrackGoesOnFromWhereItWas) {
    playing(3, 200);
    face().statusBar.pressAt(980);
    const auto before = position();
    face().scntla[seekKeys::forward].mouseDown();
    machine.run(300ms);
    EXPECT_EQ(state().seekKeyState, 0);
    EXPECT_EQ(position().minutes, before.minutes);
    EXPECT_LE(position().seconds, before.seconds + 1);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Player, HoldingRewindStepsBack) {
    playing(3, 200);
    face().statusBar.pressAt(800);
    face().scntla[seekKeys::rewind].mouseDown();
    machine.run(500ms);
    face().scntla[seekKeys::rewind].mouseUp();
    EXPECT_LT(position().minutes * 60 + position().seconds, 140);
}

TEST_F(Player, SeekKeysDoNothingWhilePaused) {
    playing(3, 200);
    machine.press(transport::pause);
    face().scntla[seekKeys::forward].mouseDown();
    EXPECT_EQ(state().seekKeyState, 0);
}

TEST_F(Player, NoTimeUpdateComesWhileASeekKeyIsHeld) {
    playing(3, 200);
    state().seekKeyState = 5;
    face().timeText.Caption = std::string("held");
    machine.player().MMControl1_StatusUpdate();
    EXPECT_EQ(machine.time(), "held");
}

TEST_F(Player, ABRepeatLoopsBetweenItsMarks) {
    playing(3, 200);
    face().statusBar.pressAt(200);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_EQ(face().abLamp.ForeColor, panelColor(3));
    machine.run(10s);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_EQ(face().abLamp.ForeColor, panelColor(0));
    EXPECT_EQ(position(), (Tmsf{1, 0, 40, 0})) << "the second press jumps to A";
    int highest = 0;
    for (int i = 0; i < 60; ++i) {
        machine.run(1s);
        highest = std::max(highest, position().minutes * 60 + position().seconds);
    }
    EXPECT_LE(highest, 53);
    EXPECT_GE(highest, 49);
    face().scntla[seekKeys::abRepeat].press();
    EXPECT_EQ(state().markA, 0);
    EXPECT_EQ(state().markB, 0);
    EXPECT_EQ(face().abLamp.ForeColor, panelColor(2));
}

TEST_F(Player, TheAMarkBlinksUntilBIsSet) {
    playing(3, 200);
    face().statusBar.pressAt(200);
    face().scntla[seekKeys::abRepeat].press();
    std::set<Color> seen;
    for (int i = 0; i < 20; ++i) {
        machine.run(100ms);
        seen.insert(face().abLamp.ForeColor);
    }
    EXPECT_THAT(seen, ElementsAre(panelColor(2), panelColor(3)));
    EXPECT_EQ(face().abText.ForeColor, face().abLamp.ForeColor.get());
}

TEST_F(Player, TheAMarkIsCancelledWhenItsTrackIsLeft) {
    playing(3, 20);
    face().statusBar.pressAt(500);
    face().scntla[seekKeys::abRepeat].press();
    machine.run(15s);
    EXPECT_EQ(state().markA, 0);
}

TEST_F(Player, ABRepeatNeedsThePlayLight) {
    playing(3, 200);
    machine.press(transport::stop);
    machine.player().scntla_MouseUp(seekKeys::abRepeat);
    EXPECT_EQ(state().markA, 0);
}

TEST_F(Player, NextPrevPicksAndEjectClearTheMarks) {
    const auto mark = [this] {
        face().statusBar.pressAt(300);
        face().scntla[seekKeys::abRepeat].press();
        ASSERT_GT(state().markA, 0);
    };
    playing(5, 200);
    mark();
    machine.press(transport::next);
    EXPECT_EQ(state().markA, 0);
    mark();
    machine.press(transport::prev);
    EXPECT_EQ(state().markA, 0);
    mark();
    machine.pick(4);
    EXPECT_EQ(state().markA, 0);
    machine.run(1s);
    mark();
    machine.press(transport::eject);
    EXPECT_EQ(state().markA, 0);
}

// ---- Time modes ----

TEST_F(Player, TheReadoutStepsThroughItsModesAndRemembersThem) {
    playing(3, 100);
    face().timeText.click();
    EXPECT_EQ(face().timeCaption.Caption.get(), "Rem");
    EXPECT_EQ(machine.time(), "");
    machine.run(1s);
    EXPECT_TRUE(machine.time().starts_with("-1:3")) << machine.time();
    face().timeCaption.click();
    machine.run(1s);
    EXPECT_EQ(machine.time(), "00:05");
    face().recordLamp.click();
    machine.run(1s);
    EXPECT_TRUE(machine.time().starts_with("-04:5")) << machine.time();
    face().timeColon.click();
    EXPECT_EQ(face().timeCaption.Caption.get(), "Time");
    EXPECT_NE(machine.world.files.bytes("C:\\Tessarel\\modelast.dat"), "(no such file)");
}

TEST_F(Player, TheTimeModeStaysWhilePaused) {
    playing(3, 100);
    machine.press(transport::pause);
    face().timeText.click();
    EXPECT_EQ(face().timeCaption.Caption.get(), "Time");
}

TEST_F(Player, AJumpBackShowsOneSecondMoreAndThenTheNewTime) {
    playing(3, 100);
    face().statusBar.pressAt(800);
    machine.run(3s);
    ASSERT_EQ(machine.time(), "1:23");
    face().statusBar.pressAt(100);
    EXPECT_EQ(machine.time(), "1:24");
    machine.run(1s);
    EXPECT_TRUE(machine.time() == "0:10" || machine.time() == "0:11") << machine.time();
}

TEST_F(Player, ANewDiscStartsItsReadoutAnew) {
    playing(3, 200);
    machine.run(150s);
    machine.program.windows.unload("CDForm");
    playing(4, 200);
    EXPECT_EQ(machine.time(), "0:03");
}

TEST_F(Player, ATrackThatRepeatsStartsItsReadoutAnew) {
    open(3, 20);
    repeatOn();
    machine.choose(modeKeys::single);
    machine.pick(2);
    machine.run(22s);
    EXPECT_LE(machine.time(), "0:06") << "the track began again some seconds ago";
}

TEST_F(Player, ATrackTwiceInAProgramStartsItsReadoutAnew) {
    open(3, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(22s);
    EXPECT_EQ(position().track, 2);
    EXPECT_LE(machine.time(), "0:06");
}

TEST_F(Player, PlayAfterPauseAndStopBeginsTheTrackOfTheDigits) {
    playing(5);
    machine.pick(3);
    machine.run(10s);
    machine.press(transport::pause);
    machine.press(transport::stop);
    EXPECT_EQ(face().repeatLamp.Caption.get(), "Repeat");
    machine.run(3s);
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_EQ(position().track, 3);
}

TEST_F(Player, APickAfterTheEndOfASingleTrackPlays) {
    machine.program.state.audioTimeMode = 1;
    open(5, 20);
    machine.choose(modeKeys::single);
    machine.pick(2);
    machine.run(30s);
    ASSERT_FALSE(machine.sounding());
    machine.pick(4);
    machine.run(3s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(position().track, 4);
}

TEST_F(Player, APickAfterTheEndOfAProgramRunsThePulseAgain) {
    open(5, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(30s);
    ASSERT_EQ(machine.player().Timer2.Interval, 0);
    for (int track = 1; track <= 5; ++track) {
        EXPECT_EQ(face().cellNumbers[track - 1].ForeColor, panelColor(6)) << track;
    }
    EXPECT_EQ(state().playingFlag, 0);
    machine.pick(3);
    machine.run(22s);
    EXPECT_EQ(machine.digits(), 4);
}

TEST_F(Player, AProgramCanBeEnteredAfterOneHasEndedAndTheDiscPlays) {
    open(5, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    machine.pick(3);
    machine.press(transport::play);
    machine.run(60s);
    machine.press(transport::play);
    machine.run(3s);
    machine.choose(modeKeys::program);
    machine.pick(4);
    EXPECT_THAT(machine.world.dialogs.boxes, SizeIs(0));
    EXPECT_EQ(state().programCount, 1);
}

TEST_F(Player, ADimTimeKeyDoesNothing) {
    open(5);
    face().scntla[seekKeys::timeMode].press();
    EXPECT_EQ(face().timeCaption.Caption.get(), "TOTAL");
    EXPECT_EQ(machine.program.state.audioTimeMode, 0);
}

TEST_F(Player, AClickOnTheReadoutStopsTheIntroScan) {
    open(5);
    machine.choose(modeKeys::intro);
    machine.run(2s);
    face().timeText.click();
    EXPECT_EQ(state().introTrack, 0);
}

TEST_F(Player, EveryOtherRowOfKeysStopsTheIntroScan) {
    open(5);
    const auto scan = [this] {
        machine.choose(modeKeys::intro);
        machine.run(2s);
        ASSERT_EQ(state().introTrack, 1);
    };
    scan();
    face().scntla[seekKeys::forward].mouseDown();
    EXPECT_EQ(state().introTrack, 0);
    face().scntla[seekKeys::forward].mouseUp();
    scan();
    machine.choose(modeKeys::single);
    EXPECT_EQ(state().introTrack, 0);
    scan();
    machine.pick(3);
    EXPECT_EQ(state().introTrack, 0);
    scan();
    machine.press(transport::eject);
    EXPECT_EQ(state().introTrack, 0);
}

TEST_F(Player, DisplayStaysOnTopIsRememberedAndIsClearedByTheDrawer) {
    open(5);
    face().expandKey.press();
    EXPECT_TRUE(machine.player().alwaysInFront);
    EXPECT_EQ(machine.world.files.bytes("C:\\Tessarel\\modelast.dat"), "0\r\n0\r\n1\r\n");
    machine.program.windows.unload("CDForm");
    machine.openPlayer();
    EXPECT_TRUE(machine.player().alwaysInFront);
    machine.player().opendrawer();
    EXPECT_FALSE(machine.player().alwaysInFront);
    EXPECT_EQ(machine.program.state.alwaysOnTop, 0);
}

TEST_F(Player, WhileMinimisedTheEndOfTheSoundWaitsToo) {
    open(2, 20);
    repeatOn();
    machine.press(transport::play);
    machine.player().WindowState = forms::WindowState::minimised;
    machine.run(60s);
    EXPECT_FALSE(machine.sounding());
    machine.player().WindowState = forms::WindowState::normal;
    machine.run(2s);
    EXPECT_TRUE(machine.sounding()) << "with repeat it begins again once the window is back";
    EXPECT_EQ(machine.digits(), 1);
}

TEST_F(Player, PrevPassesOverDataTracksAndStaysWhenNoSoundLiesBefore) {
    auto disc = std::make_shared<platform::CdToc>(*fakes::makeDisc(4, 60));
    disc->tracks[0].audio = false;
    machine.openPlayer(disc);
    machine.press(transport::play);
    machine.run(10s);
    machine.press(transport::prev);
    EXPECT_EQ(machine.digits(), 2);
    EXPECT_GE(position().seconds, 10);
}

TEST_F(Player, ATrackShorterThanFiveSecondsAdvancesTheDigitsFromItsStart) {
    machine.openPlayer(fakes::makeToc({4 * 75, 60 * 75, 60 * 75}));
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(state().currentTrack, 2);
    EXPECT_EQ(position().track, 1);
    machine.run(20s);
    EXPECT_EQ(machine.digits(), 2);
}

TEST_F(Player, TheKeypadsLastNumberLeavesTheKeysAsTheyWere) {
    open(25);
    keypad("25");
    EXPECT_FALSE(lit(transport::play));
    EXPECT_EQ(state().playingFlag, 0);
    machine.press(transport::play);
    machine.run(2s);
    keypad("25");
    EXPECT_TRUE(lit(transport::play));
    EXPECT_EQ(state().playingFlag, 1);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Player, DuringTheDeliberateWaitsNoTimerRuns) {
    playing(5);
    int updates = 0;
    machine.player().MMControl1.StatusUpdate = [&] { ++updates; };
    machine.world.scheduler.wait(3s);
    EXPECT_EQ(updates, 0);
    machine.run(0s);
    EXPECT_EQ(updates, 1) << "late timers fire once";
}

TEST_F(Player, NextFromTheRemoteSkipsAtOnceOnlyWhileTheRemoteIsOpen) {
    open(5);
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(3);
    machine.press(transport::play);
    machine.run(5s);
    machine.player().MMControl1_NextClick(99);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_EQ(position().track, 2) << "no remote is open";
}

TEST_F(Player, AnEntryOfTrackOneAfterANextFromElsewhereShowsOneAndStepsBack) {
    open(5);
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(1);
    machine.press(transport::play);
    machine.run(5s);
    machine.player().MMControl1_NextClick(0);
    EXPECT_EQ(machine.digits(), 1);
    EXPECT_EQ(state().currentTrack, 0);
    EXPECT_EQ(state().skipStep, 0);
    EXPECT_EQ(state().programIndex, 1);
}

TEST_F(Player, TheStatusWordsShowWhatTheyAreFor) {
    open(5);
    machine.program.record.discArtist = "A";
    machine.program.record.discTitle = "B";
    machine.player().showStatus(1, "None");
    EXPECT_EQ(face().lowerLine.Caption.get(), "Please Insert a CD");
    machine.player().showStatus(1, "Stopped");
    EXPECT_EQ(face().lowerLine.Caption.get(), "Stopped");
    machine.player().showStatus(1, "Paused");
    EXPECT_EQ(face().lowerLine.Caption.get(), "Paused");
    machine.player().showStatus(6, "Play");
    EXPECT_EQ(face().upperLine.Caption.get(), "") << "a track that the disc lacks changes nothing";
    machine.player().showStatus(1, "Play");
    EXPECT_EQ(face().upperLine.Caption.get(), "A - B");
    machine.player().showStatus(1, "Stopped");
    EXPECT_NE(face().lowerLine.Caption.get(), "Stopped") << "nothing changes while the line stands";
}

TEST_F(Player, BelowHalfTheBarsTextIsBlack) {
    playing(3, 100);
    face().statusBar.pressAt(490);
    EXPECT_EQ(face().statusBar.ForeColor, colors::black);
}

TEST_F(Player, WhileMinimisedNoTimeUpdateRunsAndTheEndTestSleeps) {
    playing(3, 20);
    machine.player().WindowState = forms::WindowState::minimised;
    const auto before = machine.time();
    machine.run(19s);
    EXPECT_EQ(machine.time(), before);
    EXPECT_EQ(state().currentTrack, 1);
    EXPECT_EQ(machine.soundingTrack(), 2);
}

// ---- The ends ----

TEST_F(Player, InElapsedTimeTheEndOfTheDiscEjectsWhenTheOptionSaysSo) {
    machine.program.state.audioOptions[1] = 1;
    playing(2, 20);
    machine.run(50s);
    EXPECT_EQ(machine.program.state.discDrawerOpen, 1);
    EXPECT_TRUE(machine.program.windows.isVisible("CD1st"));
}

TEST_F(Player, InTheOtherTimeModesTheEndOfTheDiscDoesNotEject) {
    machine.program.state.audioOptions[1] = 1;
    machine.program.state.audioTimeMode = 2;
    playing(2, 20);
    machine.run(50s);
    EXPECT_EQ(machine.program.state.discDrawerOpen, 0);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Player, ADiscWhoseLastTrackIsDataEndsWithItsLastSound) {
    machine.openPlayer(fakes::withDataAtTheEnd(fakes::makeDisc(4, 20)));
    machine.press(transport::play);
    machine.run(70s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.digits(), 0);
    EXPECT_FALSE(lit(transport::play));
    EXPECT_EQ(machine.world.cd.heard.back().second, 60 * 75);
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(position().track, 1);
}

TEST_F(Player, ADiscWhoseFirstTrackIsDataBeginsWithItsFirstSound) {
    auto disc = std::make_shared<platform::CdToc>(*fakes::makeDisc(4, 20));
    disc->tracks[0].audio = false;
    machine.openPlayer(disc);
    machine.press(transport::play);
    machine.run(5s);
    EXPECT_EQ(position().track, 2);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(20s);
    EXPECT_EQ(machine.digits(), 3);
    machine.pick(1);
    EXPECT_EQ(machine.digits(), 2);
    EXPECT_EQ(position().track, 2);
}

TEST_F(Player, WithRepeatADiscWhoseLastTrackIsDataBeginsAgainAfterItsLastSound) {
    machine.openPlayer(fakes::withDataAtTheEnd(fakes::makeDisc(4, 20)));
    repeatOn();
    machine.press(transport::play);
    machine.run(65s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(position().track, 1);
    EXPECT_EQ(machine.digits(), 1);
}

TEST_F(Player, ASingleTrackWhoseCorrectedEndLiesBehindTheDiscsEndStillEnds) {
    open(2, 20);
    machine.program.record.timeCorrection = 5;
    machine.choose(modeKeys::single);
    machine.pick(2);
    machine.run(30s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.digits(), 0);
}

TEST_F(Player, ADiscWithATimeCorrectionWaitsThreeSecondsAtEachBoundary) {
    open(4, 30);
    machine.program.record.timeCorrection = 1;
    machine.press(transport::play);
    const auto before = machine.world.scheduler.waited();
    machine.run(31s);
    EXPECT_EQ(machine.world.scheduler.waited() - before, 3s);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(100s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.world.cd.heard.back().second, 4 * 30 * 75);
}

TEST_F(Player, TheIntroScanShowsItsLampAndStopsOnAnyFunctionKey) {
    open(5);
    machine.choose(modeKeys::intro);
    machine.run(2s);
    EXPECT_EQ(face().programLamp.Caption.get(), "Intro Play");
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(3));
    EXPECT_TRUE(machine.sounding());
    repeatOn();
    EXPECT_EQ(state().introTrack, 0);
    EXPECT_EQ(face().programLamp.Caption.get(), "Pgm Stored");
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(2));
    EXPECT_TRUE(face().Image3[modeKeys::disc].Visible);
    EXPECT_TRUE(machine.sounding()) << "the track goes on";
}

}  // namespace
}  // namespace tessarel::scenarios
