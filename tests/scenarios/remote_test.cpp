// The player hidden behind its icon, and the small window that stands in for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "audio/cdformbg.h"
#include "audio/iconmin.h"
#include "tests/scenarios/machine.h"
#include "volume/volcntl.h"

namespace tessarel::scenarios {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace functionKeys = audio::functionKeys;

struct Hidden : testing::Test {
    Machine machine;
    shell::SharedState& shared() { return machine.program.state; }
    forms::Windows& windows() { return machine.program.windows; }
    audio::PlayerState& state() { return machine.state(); }
    audio::CDFormFace& face() { return machine.player().face; }
    volume::VolCntl& remote() { return *windows().find<volume::VolCntl>("VolCntl"); }
    volume::VolCntlFace& small() { return remote().face; }
    forms::Form& icon() { return *windows().find<forms::Form>("ICONmin"); }

    void open(int tracks = 5, int seconds = 60) { machine.openPlayer(fakes::makeDisc(tracks, seconds)); }
    void playing(int tracks = 5, int seconds = 60) {
        open(tracks, seconds);
        machine.press(transport::play);
        machine.run(3s);
    }
    void minimise() { face().minimiseKey.press(); }
    void hidden(int tracks = 5, int seconds = 60) {
        playing(tracks, seconds);
        minimise();
    }
    /// As the desktop brings back what it has minimised.
    void restore() {
        icon().dispatch([this] { icon().WindowState = forms::WindowState::normal; });
    }
    void pressRemote(int key) {
        small().Image1[key].press();
        if (windows().isLoaded("VolCntl")) {
            machine.run(2s);
        }
    }
    void program(std::initializer_list<int> tracks) {
        machine.choose(modeKeys::program);
        for (const int track : tracks) {
            machine.pick(track);
        }
    }
    bool lit(int key) { return small().Image2[key].Visible; }
    bool dim(int key) { return small().Image4[key].Visible; }
    bool up(const char* window) { return windows().isVisible(window); }
    bool loaded(const char* window) { return windows().isLoaded(window); }
};

// ---- Minimising ----

TEST_F(Hidden, MinimisingHidesTheWindowBehindItsIconAndOpensTheRemote) {
    open();
    machine.program.record.trackTitles[1] = "Opening";
    machine.press(transport::play);
    machine.run(3s);
    minimise();
    EXPECT_FALSE(up("CDForm"));
    EXPECT_EQ(machine.player().WindowState, forms::WindowState::normal);
    EXPECT_TRUE(up("ICONmin"));
    EXPECT_EQ(icon().WindowState, forms::WindowState::minimised);
    EXPECT_EQ(icon().Caption.get(), "Tessarel [Opening]");
    EXPECT_TRUE(up("VolCntl"));
    EXPECT_TRUE(remote().alwaysInFront);
    EXPECT_EQ(remote().frontRequests, 1);
    EXPECT_EQ(machine.program.remote.sourceKind, volume::SourceKind::disc);
    EXPECT_EQ(shared().minimisedOnce, 1);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Hidden, MinimisingSoundsTheClickCue) {
    open();
    machine.world.files.put("C:\\Tessarel\\click.wav", "RIFF");
    machine.world.sounds.played.clear();
    minimise();
    EXPECT_EQ(machine.world.sounds.played.size(), 1U);
}

TEST_F(Hidden, TheRemoteIsNotOfferedWhileNothingPlays) {
    open();
    minimise();
    EXPECT_FALSE(up("CDForm"));
    EXPECT_TRUE(up("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
}

TEST_F(Hidden, TheRemoteIsOfferedWhileATrackIsHeld) {
    playing();
    machine.press(transport::pause);
    minimise();
    EXPECT_TRUE(up("VolCntl"));
    EXPECT_TRUE(lit(transport::pause));
    EXPECT_FALSE(lit(transport::play));
}

TEST_F(Hidden, TheRemoteIsNotOfferedWhereTheSettingsForbidIt) {
    shared().noVolumeOnMinimise = 1;
    hidden();
    EXPECT_FALSE(loaded("VolCntl"));
    EXPECT_TRUE(up("ICONmin"));
}

TEST_F(Hidden, MinimisingTwiceIsMinimisingOnce) {
    hidden();
    machine.player().Command3D14_Click();
    EXPECT_EQ(remote().frontRequests, 1);
    EXPECT_TRUE(up("ICONmin"));
}

TEST_F(Hidden, TheWallpaperHidesWithThePlayerAndComesBackBehindIt) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 1;
    playing();
    ASSERT_TRUE(up("Form26"));
    minimise();
    EXPECT_FALSE(up("Form26"));
    EXPECT_EQ(shared().wallpaperShowing, 1);
    const int front = machine.player().frontRequests;
    restore();
    EXPECT_TRUE(up("Form26"));
    EXPECT_GT(machine.player().frontRequests, front);
}

TEST_F(Hidden, TheWallpaperComesBackWithThePlayerOfTheNextDisc) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 3;
    shared().wallpaperShowing = 1;
    windows().show("Form26");
    hidden();
    ASSERT_FALSE(up("Form26"));
    machine.pullOut();
    machine.run(5s);
    machine.insert(fakes::makeDisc(3, 60));
    machine.run(2s);
    EXPECT_TRUE(up("Form26"));
    EXPECT_TRUE(up("CDForm"));
}

TEST_F(Hidden, AWallpaperThatWasNotUpStaysAway) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 3;
    hidden();
    restore();
    EXPECT_FALSE(loaded("Form26"));
    shared().wallpaperShowing = 1;
    shared().wallpaperMode = 0;
    minimise();
    restore();
    EXPECT_FALSE(loaded("Form26"));
}

TEST_F(Hidden, TheProgramListGoesOutOfSightWithThePlayerAndComesBack) {
    open();
    program({3, 1});
    machine.press(transport::play);
    ASSERT_TRUE(up("aplaylst"));
    minimise();
    EXPECT_FALSE(up("aplaylst"));
    restore();
    EXPECT_TRUE(up("aplaylst"));
    minimise();
    machine.run(150s);
    restore();
    EXPECT_FALSE(loaded("aplaylst")) << "the program has ended";
}

TEST_F(Hidden, MinimisedByTheDesktopNoTimeUpdateRunsAndNoRemoteComes) {
    playing();
    machine.player().dispatch([this] { machine.player().WindowState = forms::WindowState::minimised; });
    const auto before = machine.time();
    machine.run(70s);
    EXPECT_EQ(machine.time(), before);
    EXPECT_EQ(state().currentTrack, 1);
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
}

// ---- While hidden ----

TEST_F(Hidden, TheTimeGoesOnAndTheRemoteShowsIt) {
    hidden();
    machine.run(7500ms);
    EXPECT_EQ(machine.time(), "0:10");
    EXPECT_EQ(small().timeText.Caption.get(), "0:10");
    EXPECT_EQ(small().trackDigits.Caption.get(), "1");
    EXPECT_EQ(small().cellNumbers[0].ForeColor, face().cellNumbers[0].ForeColor);
    EXPECT_EQ(small().statusBar.FloodPercent, face().statusBar.FloodPercent);
    EXPECT_GT(small().statusBar.FloodPercent, 10);
    EXPECT_EQ(small().programLamp.ForeColor, face().programLamp.ForeColor);
}

TEST_F(Hidden, TheIconAndTheRemoteNameEachTrackAsItStarts) {
    playing(3, 20);
    machine.program.record.trackTitles[1] = "One";
    machine.program.record.trackTitles[2] = "Two";
    minimise();
    machine.run(20s);
    EXPECT_EQ(icon().Caption.get(), "Tessarel [Two]");
    EXPECT_EQ(small().lowerLine.Caption.get(), "Two");
    EXPECT_EQ(small().trackDigits.Caption.get(), "2");
}

TEST_F(Hidden, AtTheEndOfTheDiscTheRemotesLightsGoOutAndPlayBeginsAgain) {
    hidden(2, 20);
    machine.run(60s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(lit(transport::play));
    EXPECT_TRUE(dim(transport::stop));
    EXPECT_EQ(small().trackDigits.Caption.get(), "0");
    EXPECT_EQ(small().statusBar.FloodPercent, 0);
    EXPECT_TRUE(up("VolCntl"));
    EXPECT_TRUE(up("ICONmin"));
    pressRemote(transport::play);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.soundingTrack(), 1);
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Hidden, AtTheEndOfASingleTrackTheRemotesLightsGoOut) {
    open(3, 20);
    machine.choose(modeKeys::single);
    machine.pick(2);
    minimise();
    machine.run(25s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(lit(transport::play));
    EXPECT_EQ(small().trackDigits.Caption.get(), "0");
}

TEST_F(Hidden, AtTheEndOfAProgramTheRemoteShowsTheEnd) {
    open(3, 20);
    program({2});
    machine.press(transport::play);
    minimise();
    EXPECT_TRUE(lit(transport::play));
    machine.run(25s);
    EXPECT_FALSE(lit(transport::play));
    EXPECT_EQ(small().trackDigits.Caption.get(), "0");
    EXPECT_EQ(small().statusBar.FloodPercent, 0);
    EXPECT_EQ(small().cellNumbers[1].ForeColor, panelColor(6));
    EXPECT_EQ(machine.player().Timer2.Interval, 0);
    machine.run(2s);
    EXPECT_EQ(small().timeText.Caption.get(), "00:00");
}

// ---- The remote's keys, in each play mode ----

TEST_F(Hidden, TheRemotePausesAndResumesAtTheSamePlace) {
    hidden();
    pressRemote(transport::pause);
    EXPECT_TRUE(lit(transport::pause));
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(face().repeatLamp.Caption.get(), "PAUSE");
    const auto held = unpackTmsf(machine.player().MMControl1.Position());
    machine.run(30s);
    pressRemote(transport::play);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(unpackTmsf(machine.player().MMControl1.Position()).seconds, held.seconds + 2);
    EXPECT_TRUE(lit(transport::play));
    EXPECT_EQ(face().repeatLamp.Caption.get(), "Repeat");
}

TEST_F(Hidden, TheRemoteStopsAndPlaysAgain) {
    hidden();
    pressRemote(transport::stop);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(lit(transport::play));
    EXPECT_TRUE(dim(transport::next));
    EXPECT_EQ(small().timeText.Caption.get(), "00:00");
    machine.world.cd.log.clear();
    pressRemote(transport::next);
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "a dim key does nothing";
    pressRemote(transport::play);
    EXPECT_TRUE(machine.sounding());
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Hidden, ALitKeyOfTheRemoteDoesNothing) {
    hidden();
    machine.world.cd.log.clear();
    pressRemote(transport::play);
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
}

TEST_F(Hidden, InWholeDiscModeTheRemoteGoesToTheNextAndThePreviousTrack) {
    hidden(3);
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_EQ(small().trackDigits.Caption.get(), "2");
    EXPECT_EQ(unpackTmsf(machine.player().MMControl1.Position()).seconds, 2) << "it is started once";
    pressRemote(transport::next);
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 3) << "Next on the last track stays";
    pressRemote(transport::prev);
    EXPECT_EQ(machine.soundingTrack(), 2);
    pressRemote(transport::prev);
    pressRemote(transport::prev);
    EXPECT_EQ(machine.soundingTrack(), 1);
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Hidden, InSingleTrackModeTheRemoteGoesToTheNextTrackAndStopsAtItsEnd) {
    open(4, 20);
    machine.choose(modeKeys::single);
    machine.press(transport::play);
    machine.run(3s);
    minimise();
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 2);
    machine.run(25s);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(lit(transport::play));
}

TEST_F(Hidden, InProgrammedModeNextFromTheRemoteSkipsToTheNextEntryAtOnce) {
    open(5);
    program({4, 3, 5});
    machine.press(transport::play);
    machine.run(5s);
    minimise();
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 3);
    EXPECT_EQ(small().trackDigits.Caption.get(), "3");
    EXPECT_EQ(state().skipStep, 0);
    machine.world.cd.log.clear();
    pressRemote(transport::prev);
    EXPECT_EQ(machine.soundingTrack(), 3) << "a consumed program cannot go back";
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 5);
    pressRemote(transport::next);
    EXPECT_FALSE(machine.sounding()) << "the program is over";
    EXPECT_FALSE(lit(transport::play));
}

TEST_F(Hidden, InARepeatedProgramTheRemoteGoesBack) {
    open(5);
    face().Image10[functionKeys::repeat].press();
    program({4, 3});
    machine.press(transport::play);
    machine.run(5s);
    minimise();
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 3);
    pressRemote(transport::prev);
    EXPECT_EQ(machine.soundingTrack(), 4);
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Hidden, TheRemotePressesDoNotHoldUpTheRemotesOwnPlayAfterAFullStop) {
    hidden();
    pressRemote(transport::stop);
    machine.run(10s);
    pressRemote(transport::play);
    machine.run(5s);
    EXPECT_EQ(small().timeText.Caption.get(), machine.time());
    EXPECT_NE(machine.time(), "00:00") << "the time updates run";
}

TEST_F(Hidden, ARemoteThatOpensBesideAFreshPlayerStartsItsTimeToo) {
    open();
    windows().show("VolCntl");
    EXPECT_TRUE(up("CDForm"));
    pressRemote(transport::play);
    machine.run(3500ms);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.time(), "0:05");
    EXPECT_EQ(small().timeText.Caption.get(), "0:05");
    EXPECT_TRUE(lit(transport::play));
}

TEST_F(Hidden, APressOnTheRemotesBarJumpsByItsOwnWidth) {
    hidden(3, 100);
    small().statusBar.Width = 200;
    small().statusBar.pressAt(100);
    machine.run(1500ms);
    EXPECT_NEAR(unpackTmsf(machine.player().MMControl1.Position()).seconds, 51, 1);
    EXPECT_EQ(small().statusBar.FloodPercent, face().statusBar.FloodPercent);
}

TEST_F(Hidden, APressOnTheRemotesBarForgetsTheShownSeconds) {
    hidden(3, 100);
    machine.run(30s);
    small().statusBar.pressAt(10);
    EXPECT_EQ(state().lastShownSeconds, 0);
}

TEST_F(Hidden, APressOnTheRemotesBarDoesNothingWhileStopped) {
    hidden();
    pressRemote(transport::stop);
    machine.world.cd.log.clear();
    small().statusBar.pressAt(500);
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
}

// ---- The disc goes ----

TEST_F(Hidden, EjectFromTheRemoteOpensTheWaitingWindowAndTheRemoteGoes) {
    hidden();
    small().Image1[transport::eject].press();
    EXPECT_EQ(shared().discDrawerOpen, 1);
    EXPECT_FALSE(machine.world.cd.disc);
    EXPECT_TRUE(up("CD1st"));
    EXPECT_FALSE(loaded("VolCntl"));
    EXPECT_TRUE(up("ICONmin")) << "the way to the player, which is still hidden";
    EXPECT_EQ(icon().Caption.get(), "Tessarel");
}

TEST_F(Hidden, ADiscPulledOutBringsTheWaitingWindowAndTheRemoteGoes) {
    hidden();
    machine.pullOut();
    machine.run(5s);
    EXPECT_TRUE(up("CD1st"));
    EXPECT_FALSE(loaded("VolCntl"));
    EXPECT_TRUE(up("ICONmin"));
    restore();
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
}

TEST_F(Hidden, TheNextDiscOpensAPlayerWithNothingLeftOfTheLast) {
    hidden();
    machine.pullOut();
    machine.run(5s);
    machine.insert(fakes::makeDisc(3, 60));
    machine.run(2s);
    EXPECT_TRUE(up("CDForm"));
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
    EXPECT_FALSE(loaded("CD1st"));
    EXPECT_FALSE(loaded("cdformbg"));
}

TEST_F(Hidden, AtTheEndOfTheDiscTheEjectOptionBringsTheWaitingWindow) {
    shared().audioOptions[1] = 1;
    hidden(2, 20);
    machine.run(60s);
    EXPECT_TRUE(up("CD1st"));
    EXPECT_FALSE(loaded("VolCntl"));
}

TEST_F(Hidden, AnImagePutInPlaceOfTheHiddenDiscOpensAPlayerForIt) {
    hidden();
    machine.player().Form_FilesDropped({"Z:\\other.cue"});
    EXPECT_FALSE(loaded("VolCntl"));
    machine.world.files.clear('D');
    machine.insert(fakes::makeDisc(2, 90));
    machine.run(600ms);
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_EQ(state().discTrackCount, 2);
}

// ---- Coming back ----

TEST_F(Hidden, TheIconBringsThePlayerBackAndAllThatStoodInGoes) {
    hidden();
    restore();
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
    EXPECT_TRUE(machine.sounding());
    machine.run(5s);
    EXPECT_EQ(machine.time(), "0:08");
}

TEST_F(Hidden, TheIconBringsThePlayerBackWhenItIsActivatedOrPressed) {
    hidden();
    windows().show("ICONmin");
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
    minimise();
    icon().dispatch([this] { icon().Form_MouseDown(forms::MouseButton::left); });
    EXPECT_TRUE(up("CDForm"));
    minimise();
    icon().dispatch([this] { icon().Form_KeyDown(forms::keys::escape, 0); });
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
}

TEST_F(Hidden, WhoeverShowsThePlayerBringsItBackWhole) {
    hidden();
    windows().show("CDForm");
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
}

TEST_F(Hidden, EscapeInTheRemoteBringsThePlayerBack) {
    hidden();
    remote().dispatch([this] { remote().Form_KeyDown(forms::keys::escape, 0); });
    EXPECT_TRUE(up("CDForm"));
    EXPECT_FALSE(loaded("ICONmin"));
    EXPECT_FALSE(loaded("VolCntl"));
}

TEST_F(Hidden, TheRemotesCloseKeyEndsThePlayerToo) {
    hidden();
    remote().Move(150, 300);
    EXPECT_TRUE(fakes::endsProcess([this] { small().closeKey.press(); }));
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
    EXPECT_EQ(machine.world.files.bytes("C:\\Tessarel\\vcpos.DAT"), "150\r\n300\r\n");
}

TEST_F(Hidden, ThePlayerComesBackWithTheStateThatTheRemoteLeft) {
    hidden();
    pressRemote(transport::pause);
    restore();
    EXPECT_TRUE(face().icntlc[transport::pause].Visible);
    EXPECT_EQ(face().repeatLamp.Caption.get(), "PAUSE");
    EXPECT_EQ(face().repeatLamp.ForeColor, panelColor(3));
    machine.press(transport::play);
    minimise();
    pressRemote(transport::stop);
    restore();
    EXPECT_FALSE(face().icntlc[transport::play].Visible);
    EXPECT_TRUE(face().icntlb[transport::stop].Visible);
    EXPECT_EQ(face().repeatLamp.Caption.get(), "Repeat");
}

TEST_F(Hidden, ThePlayersKeysPressItselfAgainAfterTheRemoteHasGone) {
    hidden();
    restore();
    machine.press(transport::stop);
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(state().playLaunched, 1);
}

// ---- Levels ----

TEST_F(Hidden, InDirectControlTheRemotesSlidersMoveThePlayers) {
    hidden();
    small().leftSlider.moveTo(25);
    EXPECT_EQ(face().leftSlider.Value, 25);
    EXPECT_EQ(face().rightSlider.Value, 25) << "the two are linked";
    EXPECT_EQ(machine.world.levels.disc().now.level.left, 49151);
    restore();
    EXPECT_EQ(face().leftFigure.Caption.get(), "75");
    EXPECT_EQ(machine.program.volume.cdVolumeLeft, 49151);
}

TEST_F(Hidden, WithoutSlidersOfThePlayerTheRemoteHasItsOwn) {
    shared().volumeMode = 0;
    hidden();
    small().leftSlider.moveTo(25);
    EXPECT_EQ(machine.world.levels.disc().now.level.left, 49151);
    restore();
    EXPECT_EQ(machine.program.volume.cdVolumeLeft, 49151);
    EXPECT_TRUE(face().mixerButton.Visible);
}

TEST_F(Hidden, WhereTheOutputIsDrivenTheRemoteHandsItsStepBack) {
    shared().volumeMode = 4;
    hidden();
    small().rightSlider.moveTo(20);
    small().rightSlider.mouseUp();
    EXPECT_EQ(machine.world.systemMixer.now.step, 200);
    restore();
    EXPECT_EQ(face().leftSlider.Value, 20);
    EXPECT_EQ(machine.program.volume.muteMemory[0], 200);
}

TEST_F(Hidden, AMuteInTheRemoteIsThePlayersAndLiftedAtTheEnd) {
    hidden();
    small().muteKey.press();
    EXPECT_EQ(machine.world.levels.disc().now.level.left, 0);
    restore();
    EXPECT_TRUE(face().Image2[0].Visible);
    EXPECT_TRUE(fakes::endsProcess([this] { machine.player().Image5_MouseUp(); }));
    EXPECT_EQ(machine.world.levels.disc().now.level.left, 65535);
}

TEST_F(Hidden, WithoutASoundServerTheRemoteStandsInAllTheSame) {
    machine.world.levels.setCode = platform::deviceCodes::notEnabled;
    machine.world.levels.readCode = platform::deviceCodes::notEnabled;
    hidden();
    EXPECT_TRUE(up("VolCntl"));
    small().leftSlider.moveTo(25);
    pressRemote(transport::next);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_THAT(machine.world.dialogs.boxes, IsEmpty());
}

// ---- The form behind ----

TEST_F(Hidden, TheBackingFormLiesExactlyBehindTheActiveTessarel) {
    open();
    machine.player().Move(450, 600);
    windows().show("cdformbg");
    const auto& backing = *windows().find<audio::CdFormBg>("cdformbg");
    EXPECT_EQ(backing.Left, 450);
    EXPECT_EQ(backing.Top, 600);
    EXPECT_EQ(backing.Width, machine.player().Width);
    EXPECT_EQ(backing.Height, machine.player().Height);
}

TEST_F(Hidden, TheBackingFormLiesBehindTheCdRomWindowWhereThatIsActive) {
    fakes::declarePlain(windows(), {"CDROMer"});
    windows().load("CDROMer")->Move(150, 75);
    open();
    shared().activeTessarel = shell::Tessarel::cdRom;
    windows().show("cdformbg");
    EXPECT_EQ(windows().find<forms::Form>("cdformbg")->Left, 150);
}

TEST_F(Hidden, WithoutAnActiveTessarelTheBackingFormHasNoPlace) {
    windows().show("cdformbg");
    EXPECT_EQ(windows().find<forms::Form>("cdformbg")->Width, 0);
}

// ---- The player's keys ----

TEST_F(Hidden, ThePlayersShortcutsWorkInTheSmallWindow) {
    hidden();
    auto& window = remote();
    EXPECT_EQ(window.keyUse('S', 0), forms::KeyUse::once);
    window.dispatch([&window] { window.Form_KeyDown('S', 0); });
    EXPECT_FALSE(machine.sounding());
    window.dispatch([&window] { window.Form_KeyDown('4', 0); });
    machine.run(1s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.soundingTrack(), 4);
    window.dispatch([&window] { window.Form_KeyDown('M', 0); });
    EXPECT_TRUE(small().restoreKey.Visible);
    EXPECT_TRUE(face().Image2[0].Visible);
}

TEST_F(Hidden, WhereTheSlidersAreItsOwnTheSmallWindowLeavesTheKeysAlone) {
    machine.program.state.volumeMode = 0;
    hidden();
    EXPECT_EQ(remote().keyUse('S', 0), forms::KeyUse::none);
    remote().dispatch([this] { remote().Form_KeyDown('S', 0); });
    EXPECT_TRUE(machine.sounding());
}

}  // namespace
}  // namespace tessarel::scenarios
