#include "volume/volume_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "forms/windows.h"
#include "tests/fakes/world.h"
#include "tests/volume/volume_panel.h"

namespace tessarel::volume {
namespace {

using forms::MouseButton;
using platform::StereoLevel;
using testing::ElementsAre;
using testing::IsEmpty;

class VolumeEngineTest : public testing::Test {
protected:
    VolumeEngineTest() {
        world.state.volumeMode = 3;
        world.windows.declare("Panel",
                              [this](forms::Windows& owner) { return std::make_unique<Panel>(owner, world.context, state); });
    }

    // The window opens with a level on the device.
    Panel& open(StereoLevel level = {}) {
        world.levels.disc().now = {level, false};
        auto& panel = dynamic_cast<Panel&>(*world.windows.load("Panel"));
        panel.engine.activate();
        return panel;
    }
    Panel& openUnlinked(StereoLevel level) {
        auto& panel = open(level);
        panel.engine.setLinked(false);
        return panel;
    }

    fakes::World world;
    VolumeState state;
};

TEST_F(VolumeEngineTest, TakesTheLevelsFromTheDeviceWhenTheWindowFirstActivates) {
    auto& panel = open({49151, 32768});
    EXPECT_EQ(panel.leftSlider.Value.get(), 25);
    EXPECT_EQ(panel.rightSlider.Value.get(), 50);
    EXPECT_EQ(panel.leftFigure.Caption.get(), "75");
    EXPECT_EQ(panel.rightFigure.Caption.get(), "50");
    EXPECT_EQ(state.cdVolumeLeft, 49151);
    EXPECT_EQ(state.cdVolumeRight, 32768);
    EXPECT_EQ(state.sliderLastLeft, 25);
    EXPECT_TRUE(panel.panel.Visible);
    EXPECT_FALSE(panel.mixerButton.Visible);
    EXPECT_TRUE(panel.mute[1].Visible);
    EXPECT_FALSE(panel.mute[0].Visible);
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
}

TEST_F(VolumeEngineTest, ReadsTheLevelsOnceAndNotAtEachActivation) {
    auto& panel = open({65535, 65535});
    world.levels.disc().now = {{0, 0}, false};
    panel.engine.activate();
    EXPECT_EQ(panel.leftSlider.Value.get(), 0);
}

TEST_F(VolumeEngineTest, LinksSlidersThatStandLessThanTwoApart) {
    EXPECT_TRUE(open({65535, 65000}).link[0].Visible);
    EXPECT_TRUE(state.linked);
}

TEST_F(VolumeEngineTest, LeavesSlidersUnlinkedThatStandTwoOrMoreApart) {
    auto& panel = open({65535, 64000});
    EXPECT_FALSE(panel.link[0].Visible);
    EXPECT_TRUE(panel.link[1].Visible);
}

TEST_F(VolumeEngineTest, ReadsModesOneAndTwoAsThree) {
    for (const std::int16_t mode : {1, 2}) {
        world.state.volumeMode = mode;
        auto& panel = open();
        EXPECT_EQ(world.state.volumeMode, 3);
        EXPECT_TRUE(panel.panel.Visible);
        world.windows.unload("Panel");
    }
}

TEST_F(VolumeEngineTest, ShowsTheMixerButtonInModeZero) {
    world.state.volumeMode = 0;
    auto& panel = open({0, 0});
    EXPECT_FALSE(panel.panel.Visible);
    EXPECT_TRUE(panel.mixerButton.Visible);
    EXPECT_FALSE(state.levelsRead);
}

TEST_F(VolumeEngineTest, MovesBothChannelsWhileLinked) {
    auto& panel = open();
    panel.leftSlider.moveTo(10);
    EXPECT_EQ(panel.rightSlider.Value.get(), 10);
    EXPECT_EQ(panel.rightFigure.Caption.get(), "90");
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(StereoLevel{58981, 58981}));
    panel.rightSlider.moveTo(0);
    EXPECT_EQ(panel.leftSlider.Value.get(), 0);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{65535, 65535}));
}

TEST_F(VolumeEngineTest, MovesOneChannelWhileUnlinked) {
    auto& panel = openUnlinked({65535, 65535});
    panel.rightSlider.moveTo(10);
    EXPECT_EQ(panel.leftSlider.Value.get(), 0);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{65535, 58981}));
    panel.leftSlider.moveTo(20);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{52428, 58981}));
}

TEST_F(VolumeEngineTest, MovesTheLevelByAsMuchAsTheSliderAndNotToThePosition) {
    auto& panel = openUnlinked({65300, 65300});
    ASSERT_EQ(panel.leftSlider.Value.get(), 0);
    panel.leftSlider.moveTo(10);
    EXPECT_EQ(state.cdVolumeLeft, 65300 - 6554);
    panel.leftSlider.moveTo(0);
    EXPECT_EQ(state.cdVolumeLeft, 65300);
}

TEST_F(VolumeEngineTest, IsSilentWithASliderAtOneHundredThoughNotAtNinetyNine) {
    auto& panel = open();
    panel.leftSlider.moveTo(99);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{655, 655}));
    panel.leftSlider.moveTo(100);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{0, 0}));
    EXPECT_EQ(panel.leftFigure.Caption.get(), "0");
}

TEST_F(VolumeEngineTest, LinksAndUnlinksByTheLinkKeys) {
    auto& panel = open();
    panel.link[0].press();
    EXPECT_FALSE(state.linked);
    EXPECT_TRUE(panel.link[1].Visible);
    panel.link[1].press();
    EXPECT_TRUE(state.linked);
}

TEST_F(VolumeEngineTest, GivesTheOtherChannelTheSameLevelWhenALinkedSliderMoves) {
    auto& panel = openUnlinked({65535, 32768});
    panel.link[1].press();
    panel.leftSlider.moveTo(10);
    EXPECT_EQ(panel.rightSlider.Value.get(), 10);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{58981, 58981}));
}

TEST_F(VolumeEngineTest, MutesAndRestoresBothLevels) {
    auto& panel = open({49151, 32768});
    panel.mute[1].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{0, 0}));
    EXPECT_TRUE(panel.mute[0].Visible);
    EXPECT_FALSE(panel.mute[1].Visible);
    EXPECT_THAT(state.muteMemory, ElementsAre(49151, 32768));
    EXPECT_EQ(panel.leftSlider.Value.get(), 25) << "the sliders stay";
    panel.mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{49151, 32768}));
    EXPECT_TRUE(panel.mute[1].Visible);
}

TEST_F(VolumeEngineTest, RestoresTheLevelsBeforeItMovesASliderWhileMuted) {
    auto& panel = openUnlinked({65535, 32768});
    panel.mute[1].press();
    world.levels.disc().sets.clear();
    panel.leftSlider.moveTo(10);
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(StereoLevel{65535, 32768}, StereoLevel{58981, 32768}));
    EXPECT_TRUE(panel.mute[1].Visible);
}

TEST_F(VolumeEngineTest, DoesNothingToUnmuteWhenNotMuted) {
    auto& panel = open();
    panel.engine.unmute();
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
}

TEST_F(VolumeEngineTest, FollowsTheDesktopsMixerWithoutWritingTheLevelAgain) {
    auto& panel = open();
    world.levels.changeFromOutside({{32768, 32768}, false});
    EXPECT_EQ(panel.leftSlider.Value.get(), 50);
    EXPECT_EQ(panel.rightFigure.Caption.get(), "50");
    EXPECT_EQ(state.cdVolumeLeft, 32768);
    EXPECT_TRUE(state.linked);
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
    panel.leftSlider.moveTo(60);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{26214, 26214}));
}

TEST_F(VolumeEngineTest, UnlinksWhenTheDesktopsMixerMovesTheChannelsApart) {
    auto& panel = open();
    world.levels.changeFromOutside({{65535, 32768}, false});
    EXPECT_FALSE(state.linked);
    EXPECT_TRUE(panel.link[1].Visible);
    world.levels.changeFromOutside({{65535, 65535}, false});
    EXPECT_FALSE(state.linked) << "whoever unlinked them stays unlinked";
}

TEST_F(VolumeEngineTest, IsNoLongerMutedWhenTheDesktopsMixerRaisesTheLevel) {
    auto& panel = open();
    panel.mute[1].press();
    world.levels.changeFromOutside({{0, 0}, false});
    EXPECT_TRUE(state.muted);
    world.levels.changeFromOutside({{13107, 13107}, false});
    EXPECT_FALSE(state.muted);
    EXPECT_EQ(panel.leftFigure.Caption.get(), "20");
}

TEST_F(VolumeEngineTest, KeepsSlidersThatTheDevicesOwnEchoWouldRoundAway) {
    auto& panel = open();
    for (int position = 1; position <= 60; ++position) {
        panel.leftSlider.moveTo(position);
        world.levels.changeFromOutside(world.levels.disc().now);
        EXPECT_EQ(panel.leftSlider.Value.get(), position);
    }
}

TEST_F(VolumeEngineTest, TellsAFailedFirstReadAndFallsBackToTheMixerButton) {
    for (const int code : {2, 6}) {
        world.state.volumeMode = 3;
        world.levels.readCode = code;
        auto& panel = open();
        EXPECT_EQ(world.dialogs.lastText(), *volumeErrorText(code));
        EXPECT_EQ(world.state.volumeMode, 0);
        EXPECT_FALSE(panel.panel.Visible);
        EXPECT_TRUE(panel.mixerButton.Visible);
        EXPECT_FALSE(state.levelsRead);
        world.windows.unload("Panel");
    }
    EXPECT_EQ(world.dialogs.boxes.size(), 2U) << "each once";
}

TEST_F(VolumeEngineTest, ShowsTheSlidersOnceADeviceThatFailedAnswers) {
    world.levels.readCode = 6;
    auto& panel = open({32768, 32768});
    panel.mixerButton.mouseDown(MouseButton::right);
    EXPECT_EQ(world.state.volumeMode, 0);
    EXPECT_TRUE(panel.mixerButton.Visible);
    world.levels.readCode = 0;
    panel.mixerButton.mouseDown(MouseButton::right);
    EXPECT_EQ(world.state.volumeMode, 3);
    EXPECT_TRUE(panel.panel.Visible);
    EXPECT_EQ(panel.leftSlider.Value.get(), 50);
}

TEST_F(VolumeEngineTest, TellsTheCodeOfALevelThatCannotBeSet) {
    auto& panel = open();
    world.levels.setCode = 3;
    panel.leftSlider.moveTo(50);
    EXPECT_THAT(world.dialogs.boxes, IsEmpty())
        << "a server that is away has no text: the level holds for the stream that comes";
    EXPECT_EQ(panel.leftFigure.Caption.get(), "50");
    world.levels.setCode = 2;
    panel.leftSlider.moveTo(60);
    EXPECT_EQ(world.dialogs.lastText(), *volumeErrorText(2));
    EXPECT_EQ(panel.leftFigure.Caption.get(), "40");
}

TEST_F(VolumeEngineTest, RemembersSliderValuesOverADiscChange) {
    openUnlinked({65535, 65535}).leftSlider.moveTo(30);
    world.windows.unload("Panel");
    auto& next = dynamic_cast<Panel&>(*world.windows.load("Panel"));
    next.engine.activate();
    EXPECT_EQ(next.leftSlider.Value.get(), 30);
    EXPECT_EQ(next.rightSlider.Value.get(), 0);
    EXPECT_EQ(next.leftFigure.Caption.get(), "70");
    EXPECT_FALSE(state.linked);
}

TEST_F(VolumeEngineTest, ShowsAMuteThatWasLeftOnOverADiscChange) {
    open().mute[1].press();
    world.windows.unload("Panel");
    auto& next = dynamic_cast<Panel&>(*world.windows.load("Panel"));
    next.engine.activate();
    EXPECT_TRUE(next.mute[0].Visible);
    next.mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{65535, 65535}));
}

TEST_F(VolumeEngineTest, TakesOverWhatTheDesktopsMixerDidBetweenTwoWindows) {
    open();
    world.windows.unload("Panel");
    world.levels.changeFromOutside({{32768, 32768}, false});
    auto& next = dynamic_cast<Panel&>(*world.windows.load("Panel"));
    next.engine.activate();
    EXPECT_EQ(next.leftSlider.Value.get(), 50);
}

TEST_F(VolumeEngineTest, OfAWindowThatIsGoneLeavesTheNextWindowsListening) {
    auto first = std::make_unique<Panel>(world.windows, world.context, state);
    auto second = std::make_unique<Panel>(world.windows, world.context, state);
    second->engine.activate();
    first.reset();
    world.levels.changeFromOutside({{32768, 32768}, false});
    EXPECT_EQ(second->leftSlider.Value.get(), 50);
}

TEST_F(VolumeEngineTest, ShowsTheSlidersAfterARightPressOnTheMixerButton) {
    world.state.volumeMode = 0;
    auto& panel = open({32768, 32768});
    panel.mixerButton.mouseDown(MouseButton::right);
    EXPECT_EQ(world.state.volumeMode, 3);
    EXPECT_TRUE(panel.panel.Visible);
    EXPECT_FALSE(panel.mixerButton.Visible);
    EXPECT_EQ(panel.leftSlider.Value.get(), 50);
    EXPECT_THAT(world.dialogs.boxes, IsEmpty());
}

TEST_F(VolumeEngineTest, ShowsTheMixerButtonAfterARightPressOnThePanel) {
    auto& panel = open();
    panel.panel.mouseDown(MouseButton::left);
    EXPECT_EQ(world.state.volumeMode, 3);
    panel.panel.mouseDown(MouseButton::right);
    EXPECT_EQ(world.state.volumeMode, 0);
    EXPECT_FALSE(panel.panel.Visible);
    EXPECT_TRUE(panel.mixerButton.Visible);
    EXPECT_EQ(world.system.beeps, 0);
}

TEST_F(VolumeEngineTest, KeepsTheLevelFromBeforeAMuteWhileTheMixerButtonShows) {
    auto& panel = open({49151, 32768});
    panel.mute[1].press();
    panel.panel.mouseDown(MouseButton::right);
    panel.mixerButton.mouseDown(MouseButton::right);
    EXPECT_TRUE(panel.mute[0].Visible) << "it is silent still";
    EXPECT_EQ(panel.leftSlider.Value.get(), 25);
    panel.mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{49151, 32768}));
    EXPECT_EQ(panel.rightFigure.Caption.get(), "50");
}

TEST_F(VolumeEngineTest, LaunchesTheMixerAfterALeftPressOnTheMixerButton) {
    world.state.volumeMode = 0;
    world.state.mixerPath = "C:\\MIXER.EXE";
    open().mixerButton.press();
    EXPECT_EQ(world.processes.lastCommand(), "C:\\MIXER.EXE");
    EXPECT_EQ(world.state.volumeMode, 0);
}

TEST_F(VolumeEngineTest, DoesNotDriveTheLevelOutsideOfDirectControl) {
    world.state.volumeMode = 0;
    auto& panel = open();
    panel.leftSlider.moveTo(50);
    panel.engine.mute();
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
}

TEST_F(VolumeEngineTest, ShowsAMuteOfTheDesktopsMixerAndLiftsIt) {
    auto& panel = open({49151, 32768});
    world.levels.changeFromOutside({{49151, 32768}, true});
    EXPECT_TRUE(panel.mute[0].Visible);
    EXPECT_EQ(panel.leftFigure.Caption.get(), "75") << "the sliders stay";
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
    panel.mute[0].press();
    EXPECT_EQ(world.levels.disc().now, (platform::LineLevel{{49151, 32768}, false}));
    EXPECT_TRUE(panel.mute[1].Visible);
}

TEST_F(VolumeEngineTest, ShowsAMuteThatTheDesktopsMixerHasSetBeforeTheFirstRead) {
    world.levels.disc().now.muted = true;
    auto& panel = dynamic_cast<Panel&>(*world.windows.load("Panel"));
    panel.engine.activate();
    EXPECT_TRUE(panel.mute[0].Visible);
    EXPECT_EQ(panel.leftFigure.Caption.get(), "100");
    panel.leftSlider.moveTo(50);
    EXPECT_EQ(world.levels.disc().now, (platform::LineLevel{{32767, 32767}, false}));
}

TEST_F(VolumeEngineTest, IsHeardAgainWhenTheDesktopsMixerLiftsItsMute) {
    auto& panel = open();
    world.levels.changeFromOutside({{65535, 65535}, true});
    world.levels.changeFromOutside({{65535, 65535}, false});
    EXPECT_TRUE(panel.mute[1].Visible);
    EXPECT_EQ(state.cdVolumeLeft, 65535);
}

TEST_F(VolumeEngineTest, KeepsItsOwnMuteWhateverTheMixersMuteDoes) {
    auto& panel = open({49151, 49151});
    panel.mute[1].press();
    world.levels.changeFromOutside({{0, 0}, true});
    world.levels.changeFromOutside({{0, 0}, false});
    EXPECT_TRUE(panel.mute[0].Visible);
    panel.mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{49151, 49151}));
}

TEST_F(VolumeEngineTest, HandsItsLevelsOverToAnotherWindow) {
    auto& panel = openUnlinked({65535, 65535});
    VolumeState other;
    other.sliderLastLeft = 30;
    other.cdVolumeLeft = 45875;
    other.muted = true;
    other.muteMemory = {45875, 65535};
    panel.engine.takeOver(other);
    EXPECT_EQ(panel.leftFigure.Caption.get(), "70");
    EXPECT_TRUE(panel.mute[0].Visible);
    EXPECT_TRUE(panel.link[0].Visible);
    panel.mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{45875, 65535}));
}

TEST_F(VolumeEngineTest, OfAnotherLineWorksOnThatLineAlone) {
    VolumeState own;
    world.levels.line(platform::Line::wave).now = {{32768, 32768}, false};
    Panel panel(world.windows, world.context, own, {.line = platform::Line::wave});
    panel.engine.activate();
    EXPECT_EQ(own.sliderLastLeft, 50);
    panel.engine.mute();
    EXPECT_THAT(world.levels.line(platform::Line::wave).sets, ElementsAre(StereoLevel{0, 0}));
    world.levels.changeFromOutside({{1, 1}, false});
    EXPECT_TRUE(own.muted) << "the disc's news are not its own";
    world.levels.changeFromOutside({{13107, 13107}, false}, platform::Line::wave);
    EXPECT_EQ(own.sliderLastLeft, 80);
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
}

TEST_F(VolumeEngineTest, OfAWindowThatAlwaysShowsSlidersSetsItsLineInTheMixerButtonsModeToo) {
    world.state.volumeMode = 0;
    Panel panel(world.windows, world.context, state, {.inEveryMode = true});
    panel.engine.activate();
    EXPECT_TRUE(state.levelsRead);
    panel.engine.mute();
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(StereoLevel{0, 0}));
    EXPECT_EQ(world.state.volumeMode, 0);
}

TEST_F(VolumeEngineTest, TellsDeviceErrorsOfTheTwoCodesThatHaveATextAndNoOthers) {
    auto& panel = open();
    for (const int code : {0, 2, 3, 6}) {
        panel.engine.reportVolumeError(code);
    }
    ASSERT_EQ(world.dialogs.boxes.size(), 2U);
    EXPECT_EQ(world.dialogs.boxes[0].text, *volumeErrorText(2));
    EXPECT_EQ(world.dialogs.boxes[1].text, "The driver failed to install.");
    EXPECT_EQ(world.dialogs.boxes[1].title, "Tessarel");
}

}  // namespace
}  // namespace tessarel::volume
