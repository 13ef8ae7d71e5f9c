// The small volume window in front of a player that only takes notes.
#include "volume/volcntl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/fakes/world.h"

namespace tessarel::volume {
namespace {

using forms::MouseButton;
using platform::Line;
using platform::StereoLevel;
using testing::ElementsAre;
using testing::IsEmpty;

// A player with an engine of its own and nothing else behind its keys.
struct NotingPlayer : forms::Form, RemotePlayer {
    NotingPlayer(forms::Windows& owner, const std::string& name, const shell::Context& context, VolumeState& volumeState,
                 VolumeLine line)
        : Form(owner, name), state(volumeState), engine(context, volumeState, NotingPlayer::volumeControls(), line) {}

    forms::Slider leftSlider{*this, "LSlider", "Volume left"};
    forms::Slider rightSlider{*this, "RSlider", "Volume right"};
    forms::Label leftFigure{*this, "Label24", "Volume left figure"};
    forms::Label rightFigure{*this, "Label33", "Volume right figure"};
    forms::ControlArray<forms::Picture> mute{*this, "Image2", {"Unmute", "Mute"}};
    forms::ControlArray<forms::Picture> link{*this, "Image9", {"Unlink", "Link"}};
    forms::Picture panel{*this, "SSPanel1", "Volume"};
    forms::Picture mixerButton{*this, "Command3D16", "Mixer"};

    VolumeState& state;
    VolumeEngine engine;
    PlayerDisplay shown;
    TransportLights lit = TransportLights::playing;
    std::vector<std::string> calls;

    void Form_Activate() override { engine.activate(); }

    void pressTransport(int index) override { calls.push_back("press " + std::to_string(index)); }
    void jumpTo(float fraction) override { calls.push_back("jump " + std::to_string(static_cast<int>(fraction * 1000))); }
    PlayerDisplay display() const override { return shown; }
    TransportLights lights() const override { return lit; }
    VolumeControls volumeControls() override {
        return {leftSlider, rightSlider, leftFigure, rightFigure, mute[0], mute[1], link[0], link[1], panel, &mixerButton};
    }
    const VolumeState& levels() const override { return state; }
    void takeLevels(const VolumeState& left) override {
        calls.emplace_back("levels");
        engine.takeOver(left);
    }
    void refreshLights() override { calls.emplace_back("lights"); }
    void comeBack() override { calls.emplace_back("back"); }
    void closePlayer() override { calls.emplace_back("close"); }
};

struct RemoteWindow : testing::Test {
    RemoteWindow() {
        world.state.volumeMode = modes::direct;
        world.state.panelColors.fill(0x112233);
        const auto declare = [this](const char* name, VolumeState& state, Line line) {
            world.windows.declare(name, [this, name, &state, line](forms::Windows& owner) {
                return std::make_unique<NotingPlayer>(owner, name, world.context, state, VolumeLine{line, false});
            });
        };
        declare("CDForm", discState, Line::disc);
        declare("animate", mediaState, Line::wave);
        world.windows.declare(
            "VolCntl", [this](forms::Windows& owner) { return std::make_unique<VolCntl>(owner, world.context, remote); });
    }

    NotingPlayer& openPlayer(StereoLevel level = {}) {
        world.levels.disc().now = {level, false};
        world.windows.show("CDForm");
        return player();
    }
    NotingPlayer& player() { return *world.windows.find<NotingPlayer>("CDForm"); }
    VolCntl& open(SourceKind source = SourceKind::disc) {
        openRemote(world.windows, remote, source);
        return window();
    }
    VolCntl& window() { return *world.windows.find<VolCntl>("VolCntl"); }
    VolCntlFace& face() { return window().face; }
    void close() { world.windows.unload("VolCntl"); }

    fakes::World world;
    VolumeState discState;
    VolumeState mediaState;
    RemoteState remote;
};

// ---- The window ----

TEST_F(RemoteWindow, IsTitledAndOnTopAndKnownToBeOpen) {
    openPlayer();
    open();
    EXPECT_EQ(window().Caption.get(), "TSL Volume");
    EXPECT_TRUE(window().alwaysInFront);
    EXPECT_TRUE(window().Visible);
    EXPECT_EQ(window().frontRequests, 1);
    EXPECT_EQ(remote.volumeWindowOpen, 1);
    close();
    EXPECT_EQ(remote.volumeWindowOpen, 0);
}

TEST_F(RemoteWindow, CallsItsKeysMuteAndVolWhereThereAreSliders) {
    openPlayer();
    open();
    EXPECT_EQ(face().muteCaption.Caption.get(), "Mute");
    EXPECT_EQ(face().sideCaption.Caption.get(), "Vol");
    EXPECT_EQ(face().calendarLabel.Caption.get(), "Music Calendar ");
    EXPECT_EQ(face().sourceLabel.Caption.get(), "Disc");
}

TEST_F(RemoteWindow, CallsItsKeysMixAndDspInModeZero) {
    world.state.volumeMode = 0;
    openPlayer();
    open();
    EXPECT_EQ(face().muteCaption.Caption.get(), "Mix");
    EXPECT_EQ(face().sideCaption.Caption.get(), "Dsp");
}

TEST_F(RemoteWindow, NamesTheCalendarOfMediaOtherwise) {
    open(SourceKind::wave);
    EXPECT_EQ(face().calendarLabel.Caption.get(), "Media Calendar ");
    EXPECT_EQ(face().sourceLabel.Caption.get(), "");
}

TEST_F(RemoteWindow, StandsInItsColoursAndReadoutFont) {
    openPlayer();
    open();
    EXPECT_EQ(face().timeText.FontName.get(), "LcdD");
    EXPECT_EQ(face().calendarLabel.ForeColor, Color{0x112233});
    close();
    world.state.lcdFontOff = 1;
    open();
    EXPECT_EQ(face().trackDigits.FontName.get(), "Arial");
}

TEST_F(RemoteWindow, ShowsTheVolumeSideFirstAndTurnsToTheDisplayAndBack) {
    openPlayer();
    open();
    EXPECT_EQ(remote.compactRemote, 0);
    EXPECT_TRUE(face().volumeSide.Visible);
    EXPECT_FALSE(face().displaySide.Visible);
    EXPECT_FALSE(face().toVolumeKey.Visible);
    face().toDisplayKey.press();
    EXPECT_EQ(remote.compactRemote, 1);
    EXPECT_FALSE(face().volumeSide.Visible);
    EXPECT_TRUE(face().displaySide.Visible);
    face().toVolumeKey.press();
    EXPECT_EQ(remote.compactRemote, 0);
    EXPECT_TRUE(face().volumeSide.Visible);
    face().toDisplayKey.press();
    close();
    open();
    EXPECT_EQ(remote.compactRemote, 0);
}

// ---- Place ----

TEST_F(RemoteWindow, OpensInTheMiddleWithoutAPositionFileOrWithABrokenOne) {
    openPlayer();
    open();
    const int middle = (1024 * 15 - window().Width) / 2;
    EXPECT_EQ(window().Left, middle);
    close();
    world.files.put("C:\\Tessarel\\vcpos.DAT", "\x01\xff no");
    open();
    EXPECT_EQ(window().Left, middle);
}

TEST_F(RemoteWindow, WritesItsPlaceWhenItGoesAndComesBackThere) {
    openPlayer();
    open();
    window().Move(300, 450);
    EXPECT_FALSE(world.files.exists("C:\\Tessarel\\vcpos.DAT"));
    close();
    EXPECT_EQ(world.files.bytes("C:\\Tessarel\\vcpos.DAT"), "300\r\n450\r\n");
    open();
    EXPECT_EQ(window().Left, 300);
    EXPECT_EQ(window().Top, 450);
}

TEST_F(RemoteWindow, ComesOntoTheScreenFromAPlaceOffEveryScreen) {
    openPlayer();
    world.files.put("C:\\Tessarel\\vcpos.DAT", "-4000\r\n99999\r\n");
    open();
    EXPECT_EQ(window().Left, 0);
    EXPECT_EQ(window().Top, 768 * 15 - window().Height);
}

TEST_F(RemoteWindow, IsMovedByARightDragOfItsTitlePanelAndKeptOnTheScreen) {
    openPlayer();
    open();
    window().dragBySystem = [this] { window().Move(-500, 900); };
    face().titlePanel.mouseDown(MouseButton::right);
    EXPECT_EQ(window().Left, 0);
    EXPECT_EQ(window().Top, 900);
}

TEST_F(RemoteWindow, IsCentredByARightPressThatDoesNotDrag) {
    openPlayer();
    open();
    window().Move(30, 45);
    int drags = 0;
    window().dragBySystem = [&drags] { ++drags; };
    face().titlePanel.mouseDown(MouseButton::right);
    EXPECT_EQ(drags, 1);
    EXPECT_EQ(window().Left, (1024 * 15 - window().Width) / 2);
}

TEST_F(RemoteWindow, StaysWhereALeftPressThatDoesNotDragFindsIt) {
    openPlayer();
    open();
    window().Move(30, 45);
    face().titlePanel.mouseDown(MouseButton::left);
    EXPECT_EQ(window().Left, 30);
}

// ---- Display and transport ----

TEST_F(RemoteWindow, ShowsWhatThePlayerShows) {
    auto& its = openPlayer();
    its.shown.trackDigits = {"7", 1};
    its.shown.timeText = {"1:23", 2};
    its.shown.upperLine = {"Artist - Disc", 3};
    its.shown.lowerLine = {"Title", 4};
    its.shown.programLamp = {"Pgm Stored", 5};
    its.shown.barPercent = 50;
    for (std::size_t cell = 0; cell < its.shown.cells.size(); ++cell) {
        its.shown.cells.at(cell) = static_cast<Color>(100 + cell);
    }
    open();
    EXPECT_EQ(face().trackDigits.Caption.get(), "7");
    EXPECT_EQ(face().trackDigits.ForeColor, Color{1});
    EXPECT_EQ(face().timeText.Caption.get(), "1:23");
    EXPECT_EQ(face().timeText.ForeColor, Color{2});
    EXPECT_EQ(face().upperLine.Caption.get(), "Artist - Disc");
    EXPECT_EQ(face().upperLine.ForeColor, Color{3});
    EXPECT_EQ(face().lowerLine.Caption.get(), "Title");
    EXPECT_EQ(face().lowerLine.ForeColor, Color{4});
    EXPECT_EQ(face().programLamp.ForeColor, Color{5});
    EXPECT_EQ(face().cellNumbers[0].ForeColor, Color{100});
    EXPECT_EQ(face().cellNumbers[19].ForeColor, Color{119});
    EXPECT_EQ(face().cellNumbers[19].Caption.get(), "20");
    EXPECT_EQ(face().statusBar.FloodPercent, 50);
    EXPECT_EQ(face().statusBar.ForeColor, colors::white);
    its.shown.barPercent = 49;
    window().mirror(its.shown);
    EXPECT_EQ(face().statusBar.ForeColor, colors::black);
}

TEST_F(RemoteWindow, WearsThePlayersLights) {
    openPlayer().lit = TransportLights::paused;
    open();
    EXPECT_TRUE(face().Image2[transport::pause].Visible);
    EXPECT_FALSE(face().Image2[transport::play].Visible);
    EXPECT_FALSE(face().Image4[transport::stop].Visible);
    window().resetLights();
    EXPECT_FALSE(face().Image2[transport::pause].Visible);
    EXPECT_TRUE(face().Image4[transport::stop].Visible);
    EXPECT_FALSE(face().Image4[transport::play].Visible);
}

TEST_F(RemoteWindow, HandsEachTransportKeyToThePlayer) {
    auto& its = openPlayer();
    open();
    for (auto& key : face().Image1) {
        key.press();
    }
    EXPECT_THAT(its.calls, ElementsAre("press 0", "press 1", "press 2", "press 3", "press 4", "press 5"));
}

TEST_F(RemoteWindow, JumpsByTheBarScaledToItsOwnWidthWhilePlayIsLit) {
    auto& its = openPlayer();
    open();
    face().statusBar.Width = 400;
    face().statusBar.pressAt(100);
    EXPECT_THAT(its.calls, ElementsAre("jump 250"));
}

TEST_F(RemoteWindow, DoesNothingOnAPressOfTheBarWhileStoppedOrPaused) {
    auto& its = openPlayer();
    for (const auto lights : {TransportLights::stopped, TransportLights::paused, TransportLights::noDisc}) {
        its.lit = lights;
        open();
        face().statusBar.pressAt(100);
    }
    EXPECT_THAT(its.calls, IsEmpty());
}

// ---- Levels in direct control ----

TEST_F(RemoteWindow, TakesOverThePlayersSlidersFiguresMuteAndLink) {
    openPlayer({49151, 32768}).engine.mute();
    open();
    EXPECT_EQ(face().leftSlider.Value, 25);
    EXPECT_EQ(face().rightSlider.Value, 50);
    EXPECT_EQ(face().leftFigure.Caption.get(), "75");
    EXPECT_EQ(face().rightFigure.Caption.get(), "50");
    EXPECT_TRUE(face().restoreKey.Visible);
    EXPECT_FALSE(face().muteKey.Visible);
    EXPECT_FALSE(face().link[0].Visible);
    EXPECT_TRUE(face().link[1].Visible);
    EXPECT_THAT(remote.words.muteMemory, ElementsAre(49151, 32768));
    EXPECT_EQ(remote.remoteLeft(), 0);
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(StereoLevel{0, 0})) << "only the player's mute";
}

TEST_F(RemoteWindow, HandsASliderMoveToThePlayersSlider) {
    auto& its = openPlayer({65535, 32768});
    open();
    face().leftSlider.moveTo(10);
    EXPECT_EQ(its.leftSlider.Value, 10);
    EXPECT_EQ(its.leftFigure.Caption.get(), "90");
    EXPECT_THAT(world.levels.disc().sets, ElementsAre(StereoLevel{58981, 32768}));
    EXPECT_EQ(remote.remoteLeft(), 58981);
    EXPECT_EQ(face().leftFigure.Caption.get(), "90");
    face().rightSlider.moveTo(60);
    EXPECT_EQ(its.rightSlider.Value, 60);
}

TEST_F(RemoteWindow, MovesBothOfItsSlidersWhereThePlayersAreLinked) {
    auto& its = openPlayer();
    open();
    face().rightSlider.moveTo(20);
    EXPECT_EQ(its.leftSlider.Value, 20);
    EXPECT_EQ(face().leftSlider.Value, 20);
    EXPECT_EQ(face().leftFigure.Caption.get(), "80");
}

TEST_F(RemoteWindow, HandsMuteAndLinkToThePlayer) {
    auto& its = openPlayer();
    open();
    face().muteKey.press();
    EXPECT_TRUE(its.state.muted);
    EXPECT_TRUE(face().restoreKey.Visible);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{0, 0}));
    face().restoreKey.press();
    EXPECT_FALSE(its.state.muted);
    EXPECT_TRUE(face().muteKey.Visible);
    face().link[0].press();
    EXPECT_FALSE(its.state.linked);
    EXPECT_TRUE(face().link[1].Visible);
    face().link[1].press();
    EXPECT_TRUE(its.state.linked);
}

TEST_F(RemoteWindow, FollowsThePlayersSlidersWhateverMovesThem) {
    auto& its = openPlayer();
    open();
    its.leftSlider.moveTo(40);
    EXPECT_EQ(face().leftSlider.Value, 40);
    EXPECT_EQ(face().rightFigure.Caption.get(), "60");
    world.levels.changeFromOutside({{32768, 32768}, false});
    EXPECT_EQ(face().leftSlider.Value, 50);
    its.engine.mute();
    EXPECT_TRUE(face().restoreKey.Visible);
}

TEST_F(RemoteWindow, LeavesNothingToHandBackWhereThePlayersSlidersDidTheWork) {
    auto& its = openPlayer();
    open();
    face().leftSlider.moveTo(30);
    close();
    EXPECT_THAT(its.calls, ElementsAre("lights"));
    EXPECT_EQ(its.leftSlider.Value, 30);
}

TEST_F(RemoteWindow, KeepsItsWordWithoutASoundServer) {
    world.levels.setCode = platform::deviceCodes::notEnabled;
    openPlayer();
    open();
    face().leftSlider.moveTo(50);
    EXPECT_EQ(face().leftFigure.Caption.get(), "50");
    EXPECT_THAT(world.dialogs.boxes, IsEmpty());
}

// ---- Levels of its own ----

TEST_F(RemoteWindow, InModeZeroSetsTheLineFromSlidersOfItsOwnAndHandsThemBack) {
    world.state.volumeMode = 0;
    auto& its = openPlayer({32768, 32768});
    open();
    EXPECT_TRUE(face().sliderPanel.Visible);
    EXPECT_EQ(face().leftSlider.Value, 50);
    face().leftSlider.moveTo(40);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{39322, 39322}));
    EXPECT_NE(its.state.cdVolumeLeft, 39322) << "the player hears of it when the window goes";
    close();
    EXPECT_THAT(its.calls, ElementsAre("levels", "lights"));
    EXPECT_EQ(its.state.cdVolumeLeft, 39322);
    EXPECT_EQ(its.leftSlider.Value, 40);
}

TEST_F(RemoteWindow, InModeZeroTheMuteKeyStartsTheMixer) {
    world.state.volumeMode = 0;
    world.state.mixerPath = "C:\\MIXER.EXE";
    openPlayer();
    open();
    face().muteKey.press();
    EXPECT_EQ(world.processes.lastCommand(), "C:\\MIXER.EXE");
    EXPECT_FALSE(remote.words.muted);
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
}

TEST_F(RemoteWindow, InModeZeroTheWayToTheMixerStaysThoughTheLineIsMuted) {
    world.state.volumeMode = 0;
    world.state.mixerPath = "C:\\MIXER.EXE";
    openPlayer();
    open();
    world.levels.changeFromOutside({{65535, 65535}, true});
    EXPECT_TRUE(remote.words.muted);
    EXPECT_TRUE(face().muteKey.Visible);
    EXPECT_FALSE(face().restoreKey.Visible);
    face().muteKey.press();
    EXPECT_EQ(world.processes.lastCommand(), "C:\\MIXER.EXE");
}

TEST_F(RemoteWindow, InModeZeroKeepsTheLevelBehindAMuteAndHandsItBack) {
    auto& its = openPlayer({49151, 49151});
    its.engine.mute();
    its.panel.mouseDown(MouseButton::right);
    ASSERT_EQ(world.state.volumeMode, 0);
    open();
    EXPECT_EQ(face().leftSlider.Value, 25);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{0, 0})) << "opening a window makes no sound";
    close();
    its.engine.unmute();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{49151, 49151}));
}

TEST_F(RemoteWindow, InModeFourDrivesTheOutputOnItsOwnAndHandsTheStepBack) {
    world.state.volumeMode = modes::output;
    auto& its = openPlayer();
    world.systemMixer.steps.clear();
    open();
    EXPECT_THAT(world.systemMixer.steps, IsEmpty()) << "what the player has brought to its middle stays";
    EXPECT_EQ(face().leftSlider.Value, 50);
    face().rightSlider.moveTo(20);
    EXPECT_EQ(face().leftSlider.Value, 20) << "the two cannot differ";
    EXPECT_THAT(world.systemMixer.steps, IsEmpty());
    face().rightSlider.mouseUp();
    EXPECT_THAT(world.systemMixer.steps, ElementsAre(200));
    face().muteKey.press();
    EXPECT_THAT(world.systemMixer.mutes.back(), true);
    face().link[0].press();
    EXPECT_EQ(world.system.beeps, 1);
    close();
    EXPECT_EQ(its.state.muteMemory[0], 200);
    EXPECT_TRUE(its.state.muted);
    EXPECT_EQ(its.rightSlider.Value, 20);
}

TEST_F(RemoteWindow, WithAnOpenDrawerGoesWithoutAWordToThePlayer) {
    world.state.volumeMode = modes::output;
    auto& its = openPlayer();
    open();
    face().rightSlider.moveTo(20);
    world.state.discDrawerOpen = 1;
    close();
    EXPECT_THAT(its.calls, IsEmpty());
    EXPECT_EQ(its.rightSlider.Value, 50);
}

TEST_F(RemoteWindow, GoesOnWithItsOwnLevelsWhenThePlayerIsUnloadedUnderIt) {
    openPlayer({32768, 32768});
    open();
    world.windows.unload("CDForm");
    face().leftSlider.moveTo(40);
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{39322, 39322}));
    face().muteKey.press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{0, 0}));
    face().restoreKey.press();
    EXPECT_EQ(world.levels.disc().now.level, (StereoLevel{39322, 39322}));
    face().Image1[transport::play].press();
    face().statusBar.pressAt(10);
    close();
    EXPECT_EQ(remote.volumeWindowOpen, 0);
}

TEST_F(RemoteWindow, SetsTheLineOfItsSource) {
    world.levels.line(Line::wave).now = {{32768, 32768}, false};
    open(SourceKind::wave);
    EXPECT_EQ(face().leftSlider.Value, 50);
    face().leftSlider.moveTo(40);
    EXPECT_EQ(world.levels.line(Line::wave).now.level, (StereoLevel{39322, 39322}));
    EXPECT_THAT(world.levels.disc().sets, IsEmpty());
    EXPECT_EQ(remote.remoteStereo, 1);
}

TEST_F(RemoteWindow, OfAMidiDeviceWithAnEmptyRightWordMovesBothChannelsAsOne) {
    world.state.volumeMode = 0;
    world.levels.line(Line::midi).now = {{32768, 0}, false};
    open(SourceKind::midi);
    EXPECT_EQ(remote.remoteStereo, 0);
    EXPECT_EQ(remote.remoteRight(), 32768);
    EXPECT_EQ(face().rightSlider.Value, 50);
    EXPECT_TRUE(face().link[0].Visible);
    face().link[0].press();
    EXPECT_TRUE(face().link[0].Visible) << "the link is forced on";
    EXPECT_EQ(world.system.beeps, 1);
    face().rightSlider.moveTo(40);
    EXPECT_EQ(world.levels.line(Line::midi).now.level, (StereoLevel{39322, 39322}));
}

TEST_F(RemoteWindow, OfAMidiDeviceWithTwoChannelsIsStereo) {
    world.levels.line(Line::midi).now = {{32768, 1}, false};
    open(SourceKind::midi);
    EXPECT_EQ(remote.remoteStereo, 1);
    EXPECT_EQ(remote.remoteRight(), 1);
    EXPECT_TRUE(face().link[1].Visible);
}

TEST_F(RemoteWindow, TellsADeviceThatCannotBeAskedAndFallsBackToTheMixer) {
    world.levels.readCode = platform::deviceCodes::noDriver;
    open();
    EXPECT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.lastText(), "The driver failed to install.");
    EXPECT_EQ(world.state.volumeMode, 0);
    EXPECT_EQ(face().muteCaption.Caption.get(), "Mix");
}

TEST_F(RemoteWindow, MakesWayForTheOneOfAnotherSource) {
    auto& its = openPlayer();
    open();
    world.windows.show("animate");
    open(SourceKind::wave);
    EXPECT_THAT(its.calls, ElementsAre("lights"));
    EXPECT_EQ(remote.volumeWindowOpen, 1);
    EXPECT_EQ(face().calendarLabel.Caption.get(), "Media Calendar ");
    face().Image1[transport::stop].press();
    EXPECT_THAT(its.calls, ElementsAre("lights"));
    EXPECT_THAT(world.windows.find<NotingPlayer>("animate")->calls, ElementsAre("press 4"));
}

TEST_F(RemoteWindow, TakesThePlayersLevelsAnewEachTimeItStandsIn) {
    world.state.volumeMode = modes::output;
    auto& its = openPlayer();
    open();
    world.windows.hide("VolCntl");
    its.rightSlider.moveTo(30);
    its.rightSlider.mouseUp();
    open();
    EXPECT_TRUE(window().Visible);
    EXPECT_EQ(face().leftSlider.Value, 30);
    EXPECT_EQ(remote.words.muteMemory[0], 175);
}

// ---- Ways out ----

TEST_F(RemoteWindow, GoesOnEscapeAndBringsThePlayerBack) {
    auto& its = openPlayer();
    open();
    window().dispatch([this] { window().Form_KeyDown(forms::keys::escape, 0); });
    EXPECT_FALSE(world.windows.isLoaded("VolCntl"));
    EXPECT_THAT(its.calls, ElementsAre("lights", "back"));
}

TEST_F(RemoteWindow, ClosesThePlayerWithItself) {
    auto& its = openPlayer();
    open();
    face().closeKey.press();
    EXPECT_FALSE(world.windows.isLoaded("VolCntl"));
    EXPECT_THAT(its.calls, ElementsAre("lights", "close"));
    EXPECT_TRUE(world.files.exists("C:\\Tessarel\\vcpos.DAT"));
}

TEST_F(RemoteWindow, WithoutAPlayerOrAnyOtherWindowLeavesTheWaitingWindow) {
    fakes::declarePlain(world.windows, {"CD1st"});
    open();
    face().closeKey.press();
    EXPECT_TRUE(world.windows.isVisible("CD1st"));
    open();
    window().dispatch([this] { window().Form_KeyDown(forms::keys::escape, 0); });
    EXPECT_FALSE(world.windows.isLoaded("VolCntl"));
}

TEST_F(RemoteWindow, GoesToTheTrayWhereThereIsOne) {
    openPlayer();
    open();
    EXPECT_FALSE(face().trayKey.Enabled);
    EXPECT_EQ(face().trayKey.ToolTipText.get(), "This window is not part of this version yet.");
    close();
    fakes::declarePlain(world.windows, {"frmTray"});
    open();
    EXPECT_TRUE(face().trayKey.Enabled);
    face().trayKey.press();
    EXPECT_TRUE(world.windows.isLoaded("frmTray"));
    EXPECT_FALSE(world.windows.isVisible("frmTray"));
    EXPECT_FALSE(world.windows.isVisible("VolCntl"));
    EXPECT_EQ(remote.volumeWindowOpen, 1);
}

TEST_F(RemoteWindow, OpensTheHelpOfWhatItServes) {
    world.files.put("C:\\Tessarel\\cdhelp.exe", "MZ");
    openPlayer();
    open().Form_KeyDown(forms::keys::f1, 0);
    EXPECT_EQ(world.processes.lastCommand(), "CDHELP.EXE 15");
    open(SourceKind::wave).Form_KeyDown(forms::keys::help, 0);
    EXPECT_EQ(world.processes.lastCommand(), "CDHELP.EXE 5");
}

}  // namespace
}  // namespace tessarel::volume
