#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "forms/windows.h"
#include "tests/fakes/world.h"
#include "tests/volume/volume_panel.h"

namespace tessarel::volume {
namespace {

using forms::MouseButton;
using platform::OutputLevel;
using testing::ElementsAre;
using testing::IsEmpty;

// The sliders drive the desktop's output.
class OutputMode : public testing::Test {
protected:
    OutputMode() {
        world.state.volumeMode = 4;
        world.systemMixer.now = {200, true};
        world.systemMixer.balance = -3;
        world.windows.declare("Panel",
                              [this](forms::Windows& owner) { return std::make_unique<Panel>(owner, world.context, state); });
        panel = &open();
    }
    Panel& open() {
        auto& opened = dynamic_cast<Panel&>(*world.windows.load("Panel"));
        opened.engine.activate();
        return opened;
    }
    // A person takes a slider, moves it and lets it go.
    static void drag(forms::Slider& slider, int to) {
        slider.mouseDown();
        slider.moveTo(to);
        slider.mouseUp();
    }

    fakes::World world;
    VolumeState state;
    Panel* panel = nullptr;
};

TEST_F(OutputMode, FirstBringsSlidersAndOutputToTheMiddle) {
    EXPECT_TRUE(panel->panel.Visible);
    EXPECT_FALSE(panel->mixerButton.Visible);
    EXPECT_EQ(panel->leftSlider.Value.get(), 50);
    EXPECT_EQ(panel->rightSlider.Value.get(), 50);
    EXPECT_EQ(panel->leftFigure.Caption.get(), "50");
    EXPECT_EQ(panel->rightFigure.Caption.get(), "50");
    EXPECT_TRUE(panel->link[0].Visible);
    EXPECT_TRUE(panel->mute[1].Visible);
    EXPECT_EQ(state.muteMemory[0], 125);
    EXPECT_EQ(world.systemMixer.now, (OutputLevel{125, false}));
    EXPECT_EQ(world.systemMixer.balance, 0);
}

TEST_F(OutputMode, LeavesTheDiscsOwnLevelFullSoThatTheSlidersAloneTellIt) {
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(platform::StereoLevel{65535, 65535}));
    drag(panel->leftSlider, 80);
    panel->mute[1].press();
    EXPECT_EQ(world.levels.disc().sets.size(), 1U);
    world.levels.changeFromOutside({{20000, 10000}, true});
    EXPECT_EQ(panel->leftFigure.Caption.get(), "20") << "the stream's own control is another one";
}

TEST_F(OutputMode, BringsTheOutputToTheMiddleOnlyOnce) {
    drag(panel->leftSlider, 80);
    panel->engine.activate();
    world.windows.unload("Panel");
    panel = &open();
    EXPECT_EQ(panel->leftSlider.Value.get(), 80);
    EXPECT_EQ(panel->rightFigure.Caption.get(), "20");
    EXPECT_THAT(world.systemMixer.steps, ElementsAre(125, 50));
}

TEST_F(OutputMode, MovesBothSlidersTogetherAndTheOutputOnRelease) {
    panel->leftSlider.mouseDown();
    panel->leftSlider.moveTo(20);
    EXPECT_EQ(panel->rightSlider.Value.get(), 20);
    EXPECT_EQ(panel->leftFigure.Caption.get(), "80");
    EXPECT_EQ(panel->rightFigure.Caption.get(), "80");
    EXPECT_EQ(world.systemMixer.now.step, 125) << "still held";
    panel->leftSlider.mouseUp();
    EXPECT_EQ(world.systemMixer.now.step, 200);
    EXPECT_EQ(state.muteMemory[0], 200);
    drag(panel->rightSlider, 60);
    EXPECT_EQ(panel->leftSlider.Value.get(), 60);
    EXPECT_EQ(world.systemMixer.now.step, 100);
}

TEST_F(OutputMode, TheTwoChannelsCannotDiffer) {
    panel->link[0].press();
    EXPECT_EQ(world.system.beeps, 1);
    EXPECT_TRUE(panel->link[0].Visible);
    drag(panel->rightSlider, 10);
    EXPECT_EQ(panel->leftSlider.Value.get(), 10);
}

TEST_F(OutputMode, ReachesTheEndsAtTheSlidersEnds) {
    drag(panel->rightSlider, 100);
    EXPECT_EQ(world.systemMixer.now.step, 0);
    drag(panel->rightSlider, 0);
    EXPECT_EQ(world.systemMixer.now.step, 250);
    drag(panel->rightSlider, 99);
    EXPECT_EQ(world.systemMixer.now.step, 2);
}

TEST_F(OutputMode, MutesTheOutputAndGivesItsSoundBack) {
    panel->mute[1].press();
    EXPECT_EQ(world.systemMixer.now, (OutputLevel{125, true}));
    EXPECT_TRUE(panel->mute[0].Visible);
    EXPECT_EQ(state.muteMemory[0], 125) << "it holds the step, and no level";
    panel->mute[0].press();
    EXPECT_EQ(world.systemMixer.now, (OutputLevel{125, false}));
    EXPECT_TRUE(panel->mute[1].Visible);
}

TEST_F(OutputMode, ARightPressOnThePanelBeepsAndStays) {
    panel->panel.mouseDown(MouseButton::right);
    EXPECT_EQ(world.system.beeps, 1);
    EXPECT_EQ(world.state.volumeMode, 4);
    EXPECT_TRUE(panel->panel.Visible);
}

TEST_F(OutputMode, FollowsTheDesktopsOwnControl) {
    world.systemMixer.steps.clear();
    world.systemMixer.changeFromOutside({50, true});
    EXPECT_EQ(panel->leftSlider.Value.get(), 80);
    EXPECT_EQ(panel->rightFigure.Caption.get(), "20");
    EXPECT_TRUE(panel->mute[0].Visible);
    EXPECT_EQ(state.muteMemory[0], 50);
    world.systemMixer.changeFromOutside({50, false});
    EXPECT_TRUE(panel->mute[1].Visible);
    EXPECT_THAT(world.systemMixer.steps, IsEmpty());
}

TEST_F(OutputMode, UndoesTheMuteAtTheEndOfTheProgramWhoeverMutedIt) {
    world.systemMixer.mutes.clear();
    panel->engine.closeVolumeApp();
    EXPECT_THAT(world.systemMixer.mutes, ElementsAre(false));
    panel->mute[1].press();
    panel->engine.closeVolumeApp();
    EXPECT_TRUE(panel->mute[1].Visible);
    EXPECT_THAT(world.systemMixer.mutes, ElementsAre(false, true, false));
}

TEST_F(OutputMode, TakenUpUnderAWindowBringsTheOutputToItsMiddle) {
    for (const std::int16_t before : {0, 3}) {
        world.windows.unload("Panel");
        state = {};
        world.state.volumeMode = before;
        world.systemMixer.now = {200, true};
        world.levels.disc().now = {{32768, 32768}, false};
        panel = &open();
        panel->engine.mute();
        world.state.volumeMode = 4;
        panel->engine.activate();
        EXPECT_EQ(world.systemMixer.now, (OutputLevel{125, false})) << before;
        EXPECT_EQ(world.levels.disc().now.level, (platform::StereoLevel{65535, 65535})) << before;
        EXPECT_EQ(panel->leftSlider.Value.get(), 50) << before;
        EXPECT_TRUE(panel->mute[1].Visible) << before;
    }
}

TEST_F(OutputMode, LeftUnderAWindowGivesTheOutputItsSoundBackAndReadsTheLine) {
    panel->mute[1].press();
    world.levels.disc().now = {{49151, 49151}, false};
    world.state.volumeMode = 3;
    panel->engine.activate();
    EXPECT_FALSE(world.systemMixer.now.muted);
    EXPECT_EQ(panel->leftSlider.Value.get(), 25);
    EXPECT_TRUE(panel->mute[1].Visible);
    panel->mute[1].press();
    panel->mute[0].press();
    EXPECT_EQ(world.levels.disc().now.level, (platform::StereoLevel{49151, 49151}));
    EXPECT_EQ(world.systemMixer.now.step, 125);
}

TEST_F(OutputMode, LeftForTheMixerButtonGivesTheOutputItsSoundBack) {
    panel->mute[1].press();
    world.state.volumeMode = 0;
    panel->engine.activate();
    EXPECT_FALSE(world.systemMixer.now.muted);
    world.levels.changeFromOutside({{100, 100}, true});
    EXPECT_FALSE(state.muted) << "the line's news do not count before it is read";
    panel->mixerButton.mouseDown(MouseButton::right);
    EXPECT_TRUE(panel->mute[0].Visible);
}

TEST_F(OutputMode, TakenUpASecondTimeShowsHowTheOutputStandsAndFillsTheLine) {
    world.state.volumeMode = 3;
    panel->engine.activate();
    panel->leftSlider.moveTo(60);
    world.systemMixer.changeFromOutside({50, true});
    world.systemMixer.steps.clear();
    world.state.volumeMode = 4;
    panel->engine.activate();
    EXPECT_EQ(panel->leftSlider.Value.get(), 80);
    EXPECT_TRUE(panel->mute[0].Visible);
    EXPECT_EQ(world.levels.disc().now.level, (platform::StereoLevel{65535, 65535}));
    EXPECT_THAT(world.systemMixer.steps, IsEmpty());
}

TEST_F(OutputMode, TheNextWindowShowsWhatStands) {
    world.windows.unload("Panel");
    world.systemMixer.now = {50, true};
    panel = &open();
    EXPECT_EQ(panel->leftSlider.Value.get(), 80);
    EXPECT_EQ(panel->rightFigure.Caption.get(), "20");
    EXPECT_TRUE(panel->mute[0].Visible);
    EXPECT_EQ(state.muteMemory[0], 50);
}

TEST_F(OutputMode, TellsTheCodeOfALineThatCannotBeFilled) {
    world.levels.setCode = 2;
    panel->engine.prepareVolumeApp();
    EXPECT_EQ(world.dialogs.lastText(), *volumeErrorText(2));
    world.dialogs.boxes.clear();
    world.levels.setCode = 3;
    panel->engine.prepareVolumeApp();
    EXPECT_THAT(world.dialogs.boxes, IsEmpty());
}

TEST_F(OutputMode, OtherModesNeverTouchTheOutput) {
    world.windows.unload("Panel");
    for (const std::int16_t mode : {0, 3}) {
        world.state.volumeMode = mode;
        world.systemMixer.now = {200, true};
        world.systemMixer.steps.clear();
        world.systemMixer.mutes.clear();
        auto& other = open();
        const int before = other.leftSlider.Value;
        world.systemMixer.changeFromOutside({10, true});
        EXPECT_EQ(other.leftSlider.Value.get(), before);
        drag(other.leftSlider, 40);
        other.engine.mute();
        other.engine.closeVolumeApp();
        EXPECT_THAT(world.systemMixer.steps, IsEmpty());
        EXPECT_THAT(world.systemMixer.mutes, IsEmpty());
        world.windows.unload("Panel");
    }
}

}  // namespace
}  // namespace tessarel::volume
