// The way of a disc: waiting, taken, loaded, played, pulled out, ejected, replaced.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/cd1st.h"
#include "library/record_files.h"
#include "tests/scenarios/machine.h"
#include "volume/volcntl.h"

namespace tessarel::scenarios {
namespace {

using testing::SizeIs;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace functionKeys = audio::functionKeys;

struct Discs : testing::Test {
    Machine machine;
    shell::SharedState& shared() { return machine.program.state; }
    forms::Windows& windows() { return machine.program.windows; }
    audio::CDFormFace& face() { return machine.player().face; }
    apps::CD1st& waiting() { return *windows().find<apps::CD1st>("CD1st"); }

    void pullOut() { machine.pullOut(); }
    /// Gives the disc in the drive a record.
    void saveRecord(const std::string& artist, const std::string& title, int trackCount) {
        library::DiscRecord record;
        record.discRecordPath = machine.program.record.discRecordPath;
        record.discArtist = artist;
        record.discTitle = title;
        for (int n = 1; n <= trackCount; ++n) {
            record.trackTitles[static_cast<std::size_t>(n)] = "Title " + std::to_string(n);
        }
        record.discInfo[2] = std::to_string(trackCount);
        machine.world.files.putFolder("C:\\Tessarel\\datacd");
        ASSERT_TRUE(library::writeDiscRecord(machine.world.files, shared().dataDir, trackCount, record));
    }
};

// ---- Waiting ----

TEST_F(Discs, TheWaitingWindowAsksForADiscAndTakesItWhenItComes) {
    windows().show("CD1st");
    machine.run(2s);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(waiting().firstLine.Caption.get(), "Please Insert an Audio CD");
    EXPECT_EQ(waiting().secondLine.Caption.get(), "or a CD-ROM into the Drive...");
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(300ms);
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_FALSE(windows().isLoaded("CD1st"));
    EXPECT_EQ(shared().discKey, "Audio CD");
    EXPECT_EQ(machine.digits(), 5);
}

TEST_F(Discs, EachLookLeavesTheDeviceClosed) {
    windows().show("CD1st");
    machine.run(3s);
    EXPECT_EQ(machine.world.cd.opened, 0);
}

TEST_F(Discs, ACdRomOnlySetupTouchesNoAudioDevice) {
    shared().audioCdEnabled = 0;
    windows().show("CD1st");
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(2s);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
    EXPECT_EQ(waiting().firstLine.Caption.get(), "Please Insert a CD-ROM");
    EXPECT_FALSE(windows().isLoaded("CDForm"));
}

TEST_F(Discs, ADataDiscInAnAudioOnlySetupIsNeverTaken) {
    shared().cdRomEnabled = 0;
    windows().show("CD1st");
    machine.world.files.drive('D').ready = true;
    machine.world.files.put("D:\\SETUP.EXE", "MZ");
    machine.world.cd.insert(fakes::makeDisc(1, 60));
    machine.run(2s);
    EXPECT_EQ(waiting().firstLine.Caption.get(), "Please Insert an Audio CD");
    EXPECT_EQ(waiting().secondLine.Caption.get(), "into the Drive...");
    EXPECT_FALSE(windows().isLoaded("CDForm"));
}

TEST_F(Discs, WithoutAnAudioDeviceNoDiscIsTaken) {
    machine.world.cd.openFault = platform::CdOpenFault::noDriver;
    windows().show("CD1st");
    machine.world.files.drive('D').ready = true;
    machine.world.files.put("D:\\SETUP.EXE", "MZ");
    machine.run(2s);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(waiting().firstLine.Caption.get(), "Please Insert an Audio CD");
}

TEST_F(Discs, AMixedDiscGoesToTheAudioWindow) {
    windows().show("CD1st");
    machine.world.files.drive('D').ready = true;
    machine.world.files.put("D:\\SETUP.EXE", "MZ");
    machine.world.cd.insert(fakes::makeDisc(3, 60));
    machine.run(500ms);
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_EQ(face().discLamp.Caption.get(), "Enh-CD");
    EXPECT_EQ(machine.state().enhancedDisc, 1);
    EXPECT_FALSE(face().Image4[modeKeys::intro].Visible);
    EXPECT_TRUE(face().enhancedKey.Visible);
}

TEST_F(Discs, AClickOnTheFirstLineOpensTheTray) {
    windows().show("CD1st");
    waiting().firstLine.click();
    EXPECT_THAT(machine.world.cd.log, testing::ElementsAre("open D", "eject", "close"));
}

TEST_F(Discs, EscapeInTheWaitingWindowPaintsItRedAndEnds) {
    windows().show("CD1st");
    EXPECT_TRUE(fakes::endsProcess([&] { waiting().Form_KeyDown(forms::keys::escape, 0); }));
    EXPECT_EQ(waiting().panel.ForeColor, colors::red);
}

TEST_F(Discs, AnImageDroppedOnTheWaitingWindowGoesIntoTheDrive) {
    windows().show("CD1st");
    waiting().Form_FilesDropped({"Z:\\music\\disc.cue"});
    EXPECT_THAT(machine.world.drives.images, testing::ElementsAre(testing::Pair('D', "Z:\\music\\disc.cue")));
}

TEST_F(Discs, AnImageThatIsRefusedIsToldWithItsReason) {
    windows().show("CD1st");
    machine.world.drives.refuseImages = Error{Fault::invalid, "disc.cue names t.wav, which is not there."};
    waiting().Form_FilesDropped({"Z:\\music\\disc.cue"});
    ASSERT_THAT(machine.world.dialogs.boxes, SizeIs(1));
    EXPECT_EQ(machine.world.dialogs.boxes[0].text, "disc.cue names t.wav, which is not there.");
}

TEST_F(Discs, TheKeyOfTheWaitingWindowAsksForAnImage) {
    windows().show("CD1st");
    machine.world.dialogs.fileAnswers.push_back("Z:\\a.cue");
    waiting().insertImageKey.press();
    EXPECT_THAT(machine.world.drives.images, testing::ElementsAre(testing::Pair('D', "Z:\\a.cue")));
}

TEST_F(Discs, ADecisionThatHasBeenTakenIsNotTakenAgain) {
    windows().show("CD1st");
    shared().discKey = "CD-ROM";
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(2s);
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
    EXPECT_FALSE(windows().isLoaded("CDForm"));
}

TEST_F(Discs, AnUnseenWaitingWindowStillTakesADiscInLiteMode) {
    shared().runMode = "CDLITE";
    windows().load("CD1st");
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(2s);
    ASSERT_TRUE(windows().isLoaded("CDForm"));
    EXPECT_TRUE(machine.sounding());
    EXPECT_FALSE(windows().isVisible("CDForm"));
    EXPECT_TRUE(windows().isVisible("ICONmin"));
}

TEST_F(Discs, ADriveHeldByAnotherProgramIsNoDiscAndTheLinesStand) {
    machine.world.cd.openFault = platform::CdOpenFault::inUse;
    windows().show("CD1st");
    machine.run(2s);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(waiting().firstLine.Caption.get(), "Please Insert an Audio CD");
    EXPECT_TRUE(machine.world.dialogs.boxes.empty());
}

TEST_F(Discs, ADataDiscGivesTheNormalPointerBack) {
    windows().show("CD1st");
    machine.world.system.setPointer(platform::PointerShape::hourglass);
    machine.world.files.drive('D').ready = true;
    machine.world.files.put("D:\\SETUP.EXE", "MZ");
    machine.world.cd.insert(fakes::makeDisc(1, 60));
    machine.run(1s);
    EXPECT_EQ(machine.world.system.pointer, platform::PointerShape::normal);
}

TEST_F(Discs, WhatWasKnownOfTheLastDiscDoesNotShowWithTheNext) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    saveRecord("A", "B", 5);
    windows().unload("CDForm");
    machine.openPlayer();
    machine.program.record.discExtras[3] = "http://a.example";
    machine.program.record.trackTitles[60] = "Old";
    pullOut();
    machine.run(5s);
    machine.insert(fakes::makeDisc(4, 70));
    machine.run(2s);
    EXPECT_EQ(machine.program.record.discArtist, "");
    EXPECT_EQ(machine.program.record.discExtras[3], "");
    EXPECT_EQ(machine.program.record.trackTitles[60], "");
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(face().upperLine.Caption.get(), "");
}

TEST_F(Discs, HelpOfTheWaitingWindowIsTheFirstTopic) {
    windows().show("CD1st");
    shared().helpTopic = 9;
    machine.world.files.put("C:\\Tessarel\\cdhelp.exe", "MZ");
    waiting().Form_KeyDown(forms::keys::f1, 0);
    EXPECT_EQ(machine.world.processes.lastCommand(), "CDHELP.EXE 0");
    waiting().Form_KeyDown(forms::keys::help, 0);
    EXPECT_EQ(machine.world.processes.started.size(), 2U);
}

TEST_F(Discs, HelpOfThePlayerIsTopicFifteen) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.world.files.put("C:\\Tessarel\\cdhelp.exe", "MZ");
    machine.player().Form_KeyDown(forms::keys::f1, 0);
    EXPECT_EQ(machine.world.processes.lastCommand(), "CDHELP.EXE 15");
}

TEST_F(Discs, TheWaitingWindowShutsTheDrawerOfThePlayerBeforeItOpensItAnew) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::eject);
    ASSERT_EQ(machine.player().drawerPosition, audio::CDForm::drawerSteps);
    machine.world.files.clear('D');
    const auto before = machine.world.scheduler.waited();
    machine.insert(fakes::makeDisc(3, 60));
    machine.run(500ms);
    EXPECT_EQ(machine.world.scheduler.waited() - before, 110ms * audio::CDForm::drawerSteps);
    EXPECT_EQ(machine.player().drawerPosition, 0);
}

// ---- Loading ----

TEST_F(Discs, ADiscWithoutARecordShowsItsTotalTimeAndTrackCountAndAnUnlitLamp) {
    machine.openPlayer(fakes::makeDisc(5, 65));
    EXPECT_EQ(machine.time(), "05:25");
    EXPECT_EQ(face().timeCaption.Caption.get(), "TOTAL");
    EXPECT_EQ(machine.digits(), 5);
    EXPECT_EQ(face().recordLamp.ForeColor, panelColor(2));
    EXPECT_EQ(face().upperLine.Caption.get(), "");
    EXPECT_EQ(face().lowerLine.Caption.get(), "");
    EXPECT_EQ(face().discLamp.Caption.get(), "DISC");
}

TEST_F(Discs, ADiscWithARecordShowsItAndLightsItsLamp) {
    machine.openPlayer(fakes::makeDisc(5, 65));
    saveRecord("Erik Satie", "Gymnopédies", 5);
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(face().upperLine.Caption.get(), "Erik Satie - Gymnopédies");
    EXPECT_EQ(face().recordLamp.ForeColor, panelColor(0));
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(face().lowerLine.Caption.get(), "Title 1");
    EXPECT_EQ(machine.player().Caption.get(), "Tessarel [Title 1]");
    machine.run(65s);
    EXPECT_EQ(face().lowerLine.Caption.get(), "Title 2");
}

TEST_F(Discs, ACountOnFileThatIsTooSmallIsReplacedByTheDrives) {
    machine.openPlayer(fakes::makeDisc(5, 65));
    saveRecord("A", "B", 3);
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(machine.program.record.discInfo[2], "5");
    machine.press(transport::play);
    machine.run(2s);
    machine.pick(5);
    machine.run(2s);
    EXPECT_EQ(face().lowerLine.Caption.get(), "") << "a track that the record lacks has an empty title";
}

TEST_F(Discs, ALongDiscReadsHoursAsSoonAsItPassesOne) {
    machine.openPlayer(fakes::makeToc({59 * 60 * 75 + 59 * 75 + 74}));
    EXPECT_EQ(machine.time(), "59:59");
    windows().unload("CDForm");
    machine.openPlayer(fakes::makeToc({60 * 60 * 75}));
    EXPECT_EQ(machine.time(), "1:00:00");
}

TEST_F(Discs, ADiscOfMoreThanTwentyTracksFillsTheGridAndLightsItsMarker) {
    machine.insert(fakes::makeDisc(25, 60));
    windows().show("CDForm");
    EXPECT_EQ(machine.digits(), 25);
    EXPECT_EQ(machine.state().gridTrackCount, 20);
    EXPECT_EQ(face().cellNumbers[19].ForeColor, panelColor(0));
    EXPECT_EQ(face().cellNumbers[audio::moreTracksMarker].ForeColor, panelColor(0));
    EXPECT_EQ(face().cellCaps[19].ForeColor, colors::black);
}

TEST_F(Discs, BeforeTheFirstPlayAllTracksOfTheDiscAreLit) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.run(1s);
    for (int track = 1; track <= 5; ++track) {
        EXPECT_EQ(face().cellNumbers[track - 1].ForeColor, panelColor(0)) << track;
    }
    EXPECT_EQ(face().cellNumbers[5].ForeColor, panelColor(6));
}

TEST_F(Discs, ADiscOfTwentyTracksLeavesTheMarkerDim) {
    machine.openPlayer(fakes::makeDisc(20, 60));
    EXPECT_EQ(face().cellNumbers[audio::moreTracksMarker].ForeColor, panelColor(6));
}

TEST_F(Discs, ADiscUnderAMinuteShowsTheSumOfItsTracksPlusThree) {
    machine.openPlayer(fakes::makeDisc(2, 20));
    EXPECT_EQ(machine.time(), "00:43");
}

TEST_F(Discs, TheRunningMarkLiesThereWhileTheWindowIsLoaded) {
    machine.openPlayer(fakes::makeDisc(2, 60));
    EXPECT_EQ(machine.world.files.bytes("C:\\Tessarel\\audiocd.tmp"), "0\r\n");
    windows().unload("CDForm");
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Discs, ATrackInTheRunModePlaysAtOnce) {
    shared().runMode = "3";
    shared().autoStartMode = 2;
    machine.openPlayer(fakes::makeDisc(5, 60));
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.soundingTrack(), 3);
    EXPECT_EQ(shared().runMode, "");
    EXPECT_EQ(shared().autoStartMode, 0);
    EXPECT_EQ(machine.state().trackLengths[3], "1:00");
}

TEST_F(Discs, AutoPlayStartsTheFirstTrackOnce) {
    shared().autoStartMode = 2;
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.run(1500ms);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.digits(), 1);
    EXPECT_EQ(shared().autoStartDone, 1);
    machine.press(transport::stop);
    machine.run(2s);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Discs, AutoPlayIsForAudioDiscsAndEveryDiscOnly) {
    for (const std::int16_t mode : {0, 3, 4}) {
        shared().autoStartMode = mode;
        shared().autoStartDone = 0;
        machine.openPlayer(fakes::makeDisc(5, 60));
        machine.run(1s);
        EXPECT_FALSE(machine.sounding()) << mode;
        windows().unload("CDForm");
    }
}

TEST_F(Discs, AutoPlayPrefersTheStoredProgram) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.choose(modeKeys::program);
    machine.pick(4);
    machine.pick(2);
    machine.world.files.putFolder("C:\\Tessarel\\datacd");
    face().Image16[audio::programKeys::save].press();
    windows().unload("CDForm");
    shared().autoStartMode = 1;
    machine.openPlayer();
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(3));
    machine.run(2s);
    EXPECT_EQ(machine.soundingTrack(), 4);
    EXPECT_EQ(machine.state().playMode, audio::programmed);
    machine.run(60s);
    EXPECT_EQ(machine.soundingTrack(), 2);
}

TEST_F(Discs, InLiteModeTheWindowMinimisesItselfWhenPlayBegins) {
    shared().runMode = "CDLITE";
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.run(1s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_FALSE(windows().isVisible("CDForm"));
    EXPECT_EQ(machine.player().WindowState, forms::WindowState::normal) << "so that the time updates go on";
    EXPECT_EQ(windows().find<forms::Form>("ICONmin")->WindowState, forms::WindowState::minimised);
    EXPECT_TRUE(windows().isVisible("VolCntl"));
    EXPECT_EQ(shared().runMode, "");
}

TEST_F(Discs, ADriveThatIsNotThereLeavesTheWindowUpWithoutADisc) {
    machine.world.cd.openFault = platform::CdOpenFault::noDriver;
    windows().show("CDForm");
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_TRUE(machine.world.dialogs.boxes.empty());
    EXPECT_EQ(machine.state().discTrackCount, 0);
}

// ---- Leaving ----

TEST_F(Discs, ADiscPulledOutWhilePlayingBringsTheWaitingWindow) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(10s);
    pullOut();
    machine.run(5s);
    EXPECT_EQ(shared().discDrawerOpen, 1);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(machine.digits(), 0);
    EXPECT_EQ(machine.time(), "00:00");
    EXPECT_EQ(face().discLamp.ForeColor, panelColor(5));
    EXPECT_EQ(machine.world.cd.opened, 0) << "the device is closed";
}

TEST_F(Discs, ADiscPulledOutWhilePausedBringsTheWaitingWindow) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(10s);
    machine.press(transport::pause);
    pullOut();
    machine.run(5s);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(machine.state().pausedFlag, 0);
}

TEST_F(Discs, ADiscPulledOutBeforeItsTracksAreReadBringsTheWaitingWindow) {
    machine.insert(fakes::makeDisc(5, 60));
    windows().show("CDForm");
    pullOut();
    machine.run(5s);
    EXPECT_TRUE(windows().isVisible("CD1st"));
}

TEST_F(Discs, ANewDiscAfterThatIsLoadedAfresh) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(10s);
    pullOut();
    machine.run(5s);
    machine.insert(fakes::makeDisc(3, 100));
    machine.run(2s);
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_FALSE(windows().isLoaded("CD1st"));
    EXPECT_EQ(shared().discDrawerOpen, 0);
    EXPECT_EQ(machine.digits(), 3);
    EXPECT_EQ(machine.state().trackLengths[1], "1:40");
    machine.press(transport::play);
    machine.run(2s);
    EXPECT_EQ(machine.soundingTrack(), 1);
}

TEST_F(Discs, ADiscThatIsExchangedBetweenTwoLooksIsNoticed) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    machine.world.files.clear('D');
    machine.insert(fakes::makeDisc(5, 70));
    machine.run(6s);
    EXPECT_EQ(machine.time(), "05:50");
}

TEST_F(Discs, EjectEmptiesTheDriveAndBringsTheWaitingWindow) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(10s);
    machine.press(transport::eject);
    EXPECT_EQ(machine.world.cd.disc, nullptr);
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(shared().discDrawerOpen, 1);
    EXPECT_EQ(machine.state().discTrackCount, 0);
    EXPECT_EQ(machine.world.cd.opened, 0);
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Discs, WithTheDrawerOpenPressesDoNothingExceptEject) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::eject);
    machine.world.cd.log.clear();
    for (const int key : {transport::prev, transport::next, transport::play, transport::pause, transport::stop}) {
        machine.player().icntla_Click(key);
    }
    machine.choose(modeKeys::single);
    machine.pick(2);
    face().Image10[functionKeys::random].press();
    face().statusBar.pressAt(500);
    for (int key = 0; key < audio::seekKeys::count; ++key) {
        machine.player().scntla_MouseDown(key);
        machine.player().scntla_MouseUp(key);
    }
    for (int key = 0; key < audio::programKeys::count; ++key) {
        machine.player().Image16_Click(key);
    }
    machine.player().Text1_Enter();
    machine.player().Label30_Click();
    machine.player().Image20_Click();
    machine.player().Command3D14_Click();
    face().mixerKey.press();
    face().leftSlider.moveTo(90);
    face().Image2[1].press();
    face().wallpaperLamp.press();
    face().upperLine.mouseDown();
    machine.player().Timer2_Timer();
    machine.player().Timer3_Timer();
    EXPECT_THAT(machine.world.cd.log, testing::IsEmpty());
    EXPECT_EQ(machine.state().playMode, audio::wholeDisc);
    EXPECT_EQ(shared().alwaysOnTop, 0);
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_THAT(machine.world.dialogs.boxes, testing::IsEmpty());
    EXPECT_EQ(face().leftSlider.Value, 0);
    EXPECT_FALSE(face().Image2[0].Visible);
    EXPECT_EQ(machine.state().titleLetters, 0);
    machine.press(transport::eject);
    EXPECT_THAT(machine.world.cd.log, testing::ElementsAre("open D", "eject", "close")) << "Eject goes to the panel";
}

TEST_F(Discs, EjectWithTheDrawerTakesTheTrayOutWhenTheOptionSaysSo) {
    shared().audioOptions[2] = 1;
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.world.cd.log.clear();
    machine.player().opendrawer();
    EXPECT_THAT(machine.world.cd.log, testing::Contains("eject"));
    EXPECT_TRUE(windows().isVisible("CD1st"));
    EXPECT_EQ(shared().discDrawerOpen, 1);
}

TEST_F(Discs, WithoutThatOptionTheDrawerLeavesTheTrayAlone) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.world.cd.log.clear();
    machine.player().opendrawer();
    EXPECT_THAT(machine.world.cd.log, testing::Not(testing::Contains("eject")));
}

TEST_F(Discs, TheDrawerOpensInStepsOfElevenHundredths) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    const auto before = machine.world.scheduler.waited();
    machine.player().opendrawer();
    EXPECT_EQ(machine.world.scheduler.waited() - before, 110ms * audio::CDForm::drawerSteps);
    EXPECT_EQ(machine.player().drawerPosition, audio::CDForm::drawerSteps);
}

TEST_F(Discs, AHardwareErrorClosesTheDeviceWithoutAWord) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.player().MMControl1_PlayCompleted(262);
    EXPECT_EQ(machine.player().MMControl1.Mode(), audio::mode::notOpen);
    EXPECT_TRUE(machine.world.dialogs.boxes.empty());
}

TEST_F(Discs, OtherErrorCodesOfCompletionAreIgnored) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.player().MMControl1_PlayCompleted(282);
    machine.player().MMControl1_PlayCompleted(277);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Discs, ADriveHeldByAnotherProgramEndsTheWholeProgramFromThePlayer) {
    machine.insert(fakes::makeDisc(5, 60));
    machine.world.cd.openFault = platform::CdOpenFault::inUse;
    EXPECT_TRUE(machine.ends([this] { windows().show("CDForm"); }));
    EXPECT_EQ(machine.world.dialogs.boxes.back().title, "Attention!");
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Discs, TwoDrivesThatReportLengthsDifferentlyGiveTwoRecords) {
    machine.openPlayer(fakes::makeToc({60 * 75, 60 * 75}));
    const auto first = machine.program.record.discFileId;
    windows().unload("CDForm");
    machine.openPlayer(fakes::makeToc({60 * 75 + 1, 60 * 75 - 1}));
    EXPECT_NE(machine.program.record.discFileId, first);
}

TEST_F(Discs, TheMixerStartsWithTheWindowOncePerRun) {
    shared().audioOptions[3] = 1;
    shared().mixerPath = "C:\\WINDOWS\\sndvol32.exe";
    machine.openPlayer(fakes::makeDisc(5, 60));
    EXPECT_EQ(machine.world.processes.started.size(), 1U);
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(machine.world.processes.started.size(), 1U);
}

TEST_F(Discs, OtherCompletionCodesLeaveAStoppedPlayerAlone) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.player().MMControl1_PlayCompleted(0);
    machine.player().MMControl1_PlayCompleted(277);
    EXPECT_EQ(machine.player().MMControl1.Mode(), audio::mode::stopped);
}

TEST_F(Discs, AnImageDroppedOnThePlayerReplacesItsDisc) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    machine.player().Form_FilesDropped({"Z:\\other.cue"});
    machine.world.files.clear('D');
    machine.insert(fakes::makeDisc(2, 90));
    machine.run(600ms);
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_FALSE(windows().isLoaded("CD1st"));
    EXPECT_EQ(machine.state().discTrackCount, 2);
}

TEST_F(Discs, AnImageThatIsRefusedLeavesThePlayerPlaying) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    machine.world.drives.refuseImages = Error{Fault::invalid, "other.cue holds no track."};
    machine.player().Form_FilesDropped({"Z:\\other.cue"});
    EXPECT_EQ(machine.world.dialogs.lastText(), "other.cue holds no track.");
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Discs, ExitStopsTheDiscDeletesTheMarkAndEnds) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    EXPECT_TRUE(fakes::endsProcess([&] { machine.player().Form_KeyDown(forms::keys::escape, 0); }));
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.world.cd.opened, 0);
    EXPECT_EQ(face().exitLabel.ForeColor, Color{192});
    EXPECT_EQ(face().exitPanel.ForeColor, Color{255});
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
    EXPECT_EQ(machine.world.files.currentDirectory(), "C:\\Tessarel");
}

TEST_F(Discs, ExitLeavesTheDiscPlayingWhenTheOptionSaysSo) {
    shared().audioOptions[5] = 1;
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(5s);
    EXPECT_TRUE(machine.ends([&] { machine.player().Image5_MouseUp(); }));
    EXPECT_TRUE(machine.sounding());
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Discs, ExitLiftsAMute) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    face().leftSlider.moveTo(25);
    face().Image2[1].press();
    EXPECT_TRUE(fakes::endsProcess([&] { machine.player().Image5_MouseUp(); }));
    EXPECT_EQ(machine.world.levels.disc().now.level, (platform::StereoLevel{49151, 49151}));
}

TEST_F(Discs, AnEndThatNoKeyOfThePlayerHasBroughtLiftsAMuteAndDeletesTheMark) {
    for (const std::int16_t mode : {0, 3, 4}) {
        Machine other;
        other.program.state.volumeMode = mode == 4 ? mode : 3;
        other.openPlayer(fakes::makeDisc(5, 60));
        other.press(transport::play);
        other.run(3s);
        other.player().face.leftSlider.moveTo(25);
        other.player().face.Image2[1].press();
        other.program.state.volumeMode = mode;
        EXPECT_TRUE(other.ends([] { platform::endProcess(); }));
        EXPECT_FALSE(other.world.systemMixer.now.muted) << mode;
        EXPECT_EQ(other.world.levels.disc().now.level.left, mode == 4 ? 65535 : 49151) << mode;
        EXPECT_FALSE(other.world.files.exists("C:\\Tessarel\\audiocd.tmp")) << mode;
        EXPECT_TRUE(other.sounding()) << "what sounds goes on until the player is gone";
    }
}

TEST_F(Discs, AnEndInTheWaitingWindowAfterAnEjectLiftsAMute) {
    for (const std::int16_t mode : {3, 4}) {
        Machine other;
        other.program.state.volumeMode = mode;
        other.openPlayer(fakes::makeDisc(5, 60));
        other.player().face.Image2[1].press();
        other.press(transport::eject);
        other.run(2s);
        auto& waiting = *other.program.windows.find<apps::CD1st>("CD1st");
        EXPECT_TRUE(other.ends([&] { waiting.Form_KeyDown(forms::keys::escape, 0); }));
        EXPECT_FALSE(other.world.systemMixer.now.muted) << mode;
        EXPECT_EQ(other.world.levels.disc().now.level, (platform::StereoLevel{65535, 65535})) << mode;
    }
}

TEST_F(Discs, AnEndWithTheSmallWindowUpLiftsItsMute) {
    shared().volumeMode = 4;
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(1s);
    face().minimiseKey.press();
    windows().find<volume::VolCntl>("VolCntl")->face.muteKey.press();
    ASSERT_TRUE(machine.world.systemMixer.now.muted);
    EXPECT_TRUE(machine.ends([] { platform::endProcess(); }));
    EXPECT_FALSE(machine.world.systemMixer.now.muted);
}

TEST_F(Discs, AnEndWithoutAMuteTouchesNoLevel) {
    for (const std::int16_t mode : {0, 3, 4}) {
        Machine other;
        other.program.state.volumeMode = mode;
        other.openPlayer(fakes::makeDisc(5, 60));
        other.world.systemMixer.mutes.clear();
        other.world.levels.disc().sets.clear();
        EXPECT_TRUE(other.ends([] { platform::endProcess(); }));
        EXPECT_THAT(other.world.systemMixer.mutes, testing::IsEmpty()) << mode;
        EXPECT_THAT(other.world.levels.disc().sets, testing::IsEmpty()) << mode;
    }
}

TEST_F(Discs, TheMarkGoesWithTheDiscHoweverThatGoes) {
    const auto marked = [this] { return machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"); };
    machine.openPlayer(fakes::makeDisc(5, 60));
    ASSERT_TRUE(marked());
    machine.pullOut();
    machine.run(5s);
    EXPECT_FALSE(marked()) << "pulled out";
    machine.insert(fakes::makeDisc(4, 60));
    machine.run(5s);
    ASSERT_TRUE(marked());
    machine.player().discReplaced();
    EXPECT_FALSE(marked()) << "replaced";
}

TEST_F(Discs, AMuteInTheSmallWindowBeforeAnEjectShowsWithTheNextDisc) {
    shared().volumeMode = 4;
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.press(transport::play);
    machine.run(1s);
    face().minimiseKey.press();
    auto& small = windows().find<volume::VolCntl>("VolCntl")->face;
    small.leftSlider.mouseDown();
    small.leftSlider.moveTo(20);
    small.leftSlider.mouseUp();
    small.muteKey.press();
    small.Image1[transport::eject].press();
    machine.run(3s);
    machine.pullOut();
    machine.insert(fakes::makeDisc(4, 60));
    machine.run(5s);
    ASSERT_EQ(machine.state().discTrackCount, 4);
    EXPECT_EQ(face().leftSlider.Value, 20);
    EXPECT_TRUE(face().Image2[0].Visible);
    EXPECT_EQ(machine.world.systemMixer.now, (platform::OutputLevel{200, true}));
}

TEST_F(Discs, ExitGivesTheDesktopsOutputItsSoundBackWhereTheSlidersDriveIt) {
    shared().volumeMode = 4;
    machine.openPlayer(fakes::makeDisc(5, 60));
    EXPECT_EQ(machine.world.systemMixer.now, (platform::OutputLevel{125, false}));
    face().Image2[1].press();
    EXPECT_TRUE(machine.world.systemMixer.now.muted);
    EXPECT_TRUE(fakes::endsProcess([&] { machine.player().Image5_MouseUp(); }));
    EXPECT_FALSE(machine.world.systemMixer.now.muted);
}

TEST_F(Discs, TheSlidersStandAsTheyDidWhenANewDiscComes) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    face().leftSlider.moveTo(25);
    machine.player().MMControl1_EjectClick();
    machine.world.levels.disc().now.level = {49151, 49151};
    machine.insert(fakes::makeDisc(3, 60));
    machine.openPlayer();
    EXPECT_EQ(face().leftSlider.Value, 25);
    EXPECT_EQ(face().rightFigure.Caption.get(), "75");
}

TEST_F(Discs, KeysWhoseWindowsAreNotBuiltAreDeadAndSaySo) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    EXPECT_FALSE(face().Image10[functionKeys::mainMenu].Enabled);
    EXPECT_FALSE(face().Image10[functionKeys::mainMenu].ToolTipText.get().empty());
    EXPECT_FALSE(face().webKey.Enabled);
}

// ---- Stored programs ----

TEST_F(Discs, AProgramSavedOnADiscOfTwentyTwoTracksLosesItsEntriesAboveTwenty) {
    machine.openPlayer(fakes::makeDisc(22, 60));
    machine.world.files.putFolder("C:\\Tessarel\\datacd");
    machine.choose(modeKeys::program);
    for (const int track : {3, 21, 5, 22}) {
        machine.state().pickedTrackIndex = static_cast<std::int16_t>(track - 1);
        machine.player().startTrack();
    }
    face().Image16[audio::programKeys::save].press();
    const auto path = machine.program.record.discRecordPath + "2";
    EXPECT_TRUE(machine.world.files.bytes(path).starts_with("3\r\n21\r\n5\r\n22\r\n0\r\n"));
    face().Image16[audio::programKeys::clear].press();
    EXPECT_EQ(machine.state().programCount, 0);
    face().Image16[audio::programKeys::recall].press();
    const auto& list = machine.state().programList;
    EXPECT_EQ(std::vector<int>(list.begin() + 1, list.begin() + 5), (std::vector{3, 0, 5, 0}));
    EXPECT_EQ(machine.state().programCount, 2);
}

TEST_F(Discs, AnEmptyProgramSavesByDeletingTheFile) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    const auto path = machine.program.record.discRecordPath + "2";
    machine.world.files.put(path, "3\r\n");
    machine.choose(modeKeys::program);
    face().Image16[audio::programKeys::save].press();
    EXPECT_FALSE(machine.world.files.exists(path));
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(2));
}

TEST_F(Discs, AFullDiskWhileSavingAProgramIsToldAndTheStepAfterItRuns) {
    machine.openPlayer(fakes::makeDisc(5, 60));
    machine.choose(modeKeys::program);
    machine.pick(1);
    machine.world.files.failWrites = Fault::full;
    face().Image16[audio::programKeys::save].press();
    EXPECT_THAT(machine.world.dialogs.boxes, SizeIs(1));
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(3));
    EXPECT_FALSE(machine.world.files.exists(machine.program.record.discRecordPath + "2"));
}

}  // namespace
}  // namespace tessarel::scenarios
