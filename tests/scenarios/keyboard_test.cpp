// The player worked by the keyboard alone.
#include <gtest/gtest.h>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

namespace keys = forms::keys;
namespace with = forms::modifiers;

class Keyboard : public ::testing::Test {
protected:
    void down(int key, int modifiers = with::none) { player.Form_KeyDown(key, modifiers); }
    void up(int key) { player.Form_KeyUp(key, with::none); }
    void type(int key, int modifiers = with::none) {
        down(key, modifiers);
        up(key);
    }
    bool lit(int transportKey) { return player.face.icntlc[transportKey].Visible; }

    Machine machine;
    audio::CDForm& player = machine.openPlayer(fakes::makeDisc(14, 60));
};

TEST_F(Keyboard, SpacePlaysPausesAndGoesOn) {
    type(keys::space);
    machine.run(3s);
    EXPECT_TRUE(machine.sounding());
    type(keys::space);
    machine.run(1s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_TRUE(lit(audio::transport::pause));
    type(keys::space);
    machine.run(1s);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Keyboard, ControlAndArrowsSkipTracksAndSStops) {
    type(keys::space);
    machine.run(3s);
    type(keys::right, with::control);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 2);
    type(keys::left, with::control);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 1);
    type('S');
    machine.run(1s);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Keyboard, AStoppedPlayersDimKeysAreDeadToTheKeyboardToo) {
    type(keys::right, with::control);
    machine.run(3s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.state().currentTrack, 1);
    down(keys::right, with::shift);
    EXPECT_EQ(machine.state().seekKeyState, 0);
}

TEST_F(Keyboard, ForwardRunsAsLongAsItsKeyIsHeld) {
    type(keys::space);
    machine.run(3s);
    down(keys::right);
    EXPECT_EQ(machine.state().seekKeyState, 1);
    machine.run(500ms);
    EXPECT_GT(machine.state().seekKeyState, 1);
    EXPECT_GT(player.face.statusBar.FloodPercent, 8);
    up(keys::right);
    EXPECT_EQ(machine.state().seekKeyState, 0);
}

TEST_F(Keyboard, AHoldEndsWithItsArrowWhicheverModifierIsLeft) {
    type(keys::space);
    machine.run(3s);
    down(keys::left, with::shift);
    EXPECT_EQ(machine.state().seekKeyState, -1);
    up(keys::left);
    EXPECT_EQ(machine.state().seekKeyState, 0);
}

TEST_F(Keyboard, OfTwoArrowsTheLaterOneCounts) {
    type(keys::space);
    machine.run(3s);
    down(keys::right);
    down(keys::left);
    EXPECT_EQ(machine.state().seekKeyState, -1);
    up(keys::right);
    EXPECT_EQ(machine.state().seekKeyState, -1) << "that one was let go of before";
    up(keys::left);
    EXPECT_EQ(machine.state().seekKeyState, 0);
}

TEST_F(Keyboard, DigitsPickTracksAndThoseOfDeadCellsNothing) {
    type('5');
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 5);
    type('2', with::shift);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 12);
    type('9', with::shift);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 12) << "the disc has no track 19";
}

TEST_F(Keyboard, DigitsEnterAProgramInProgrammedMode) {
    type('P');
    type('3');
    type('7');
    EXPECT_EQ(machine.state().programCount, 2);
    EXPECT_EQ(machine.state().programBackup[2], 7);
}

TEST_F(Keyboard, LettersPressModesRepeatTimeAndDisplay) {
    type('O');
    EXPECT_EQ(machine.state().playMode, audio::singleTrack);
    type('W');
    EXPECT_EQ(machine.state().playMode, audio::wholeDisc);
    type('R');
    EXPECT_EQ(machine.state().repeatOn, 1);
    type(keys::space);
    const auto mode = machine.program.state.audioTimeMode;
    type('T');
    EXPECT_EQ(machine.program.state.audioTimeMode, (mode + 1) % 4);
    type('D');
    EXPECT_TRUE(player.expandedDisplay);
    type('K');
    EXPECT_TRUE(player.face.keypadEntry.Visible);
}

TEST_F(Keyboard, ArrowsStepBothLevelsAndMTakesTheSoundAwayAndGivesItBack) {
    const int before = player.face.leftSlider.Value;
    down(keys::down);
    down(keys::down);
    up(keys::down);
    EXPECT_EQ(player.face.leftSlider.Value, before + 4);
    EXPECT_EQ(player.face.rightSlider.Value, before + 4);
    type(keys::up, with::control);
    EXPECT_EQ(player.face.leftSlider.Value, before + 2);
    type('M');
    EXPECT_TRUE(player.face.Image2[0].Visible) << "the lit key is on show while muted";
    type('M');
    EXPECT_FALSE(player.face.Image2[0].Visible);
}

TEST_F(Keyboard, LevelsThatAreNotLinkedKeepTheirDistance) {
    type('L');
    if (player.face.Image9[0].Visible) {
        type('L');
    }
    player.face.leftSlider.moveTo(20);
    player.face.rightSlider.moveTo(50);
    type(keys::down, with::control);
    EXPECT_EQ(player.face.leftSlider.Value, 22);
    EXPECT_EQ(player.face.rightSlider.Value, 52);
}

TEST_F(Keyboard, WithoutADiscOnlyEjectActs) {
    type(keys::space);
    machine.run(2s);
    type('E');
    machine.run(3s);
    EXPECT_EQ(machine.program.state.discDrawerOpen, 1);
    EXPECT_TRUE(machine.program.windows.isVisible("CD1st"));
}

TEST_F(Keyboard, TheTipsOfTheKeysNameTheirShortcuts) {
    EXPECT_EQ(player.face.icntla[audio::transport::play].ToolTipText, "Play (Space)");
    EXPECT_EQ(player.face.icntla[audio::transport::pause].ToolTipText, "Pause (Space)");
    EXPECT_EQ(player.face.scntla[audio::seekKeys::rewind].ToolTipText, "Rewind (Shift+Left)");
    EXPECT_EQ(player.face.cellNumbers[19].ToolTipText, "Track 20 (Shift+0)");
    EXPECT_EQ(player.face.exitKey.ToolTipText, "Exit (Esc)");
}

TEST_F(Keyboard, OnlyKeysWithAUseAreAskedFor) {
    EXPECT_EQ(player.keyUse('S', with::none), forms::KeyUse::once);
    EXPECT_EQ(player.keyUse(keys::up, with::control), forms::KeyUse::repeated);
    EXPECT_EQ(player.keyUse('X', with::none), forms::KeyUse::none);
}

}  // namespace
}  // namespace tessarel::scenarios
