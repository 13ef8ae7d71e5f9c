#include "audio/device/mm_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audio/device/audio_device.h"
#include "tests/fakes/world.h"

namespace tessarel::audio {
namespace {

using fakes::makeDisc;
using fakes::makeToc;
using testing::ElementsAre;
using namespace std::chrono_literals;

struct Device : testing::Test {
    fakes::World world;
    MMControl control{world.scheduler, world.cd, [] { return 'D'; }};

    void open(std::shared_ptr<const platform::CdToc> disc) {
        world.cd.insert(std::move(disc));
        control.Command("Open");
        control.TimeFormat = timeFormatTmsf;
        world.cd.log.clear();
    }
};

TEST_F(Device, PlayStartsAtTheTrackOfFrom) {
    open(makeDisc(3, 60));
    control.setFrom(2);
    control.Command("Play");
    EXPECT_THAT(world.cd.log, ElementsAre("play 4500"));
}

TEST_F(Device, PlayUsesFromOnceAndThenGoesOnFromWhereItIs) {
    open(makeDisc(3, 60));
    control.setFrom(2);
    control.Command("Play");
    world.scheduler.runFor(10s);
    control.Command("Play");
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{2, 0, 10, 0}));
}

TEST_F(Device, PlayRunsOnIntoTheNextTrackAndToTheEndOfTheDisc) {
    open(makeDisc(3, 60));
    control.setFrom(1);
    control.Command("Play");
    world.scheduler.runFor(61s);
    EXPECT_EQ(unpackTmsf(control.Position()).track, 2);
    world.scheduler.runFor(180s);
    EXPECT_EQ(control.Mode(), mode::stopped);
    EXPECT_THAT(world.cd.heard, ElementsAre(std::pair(0, 13500)));
}

TEST_F(Device, PlayFromATrackThatIsNotThereFailsAndPlaysNothing) {
    open(makeDisc(3, 60));
    control.setFrom(0);
    control.Command("Play");
    EXPECT_EQ(control.Mode(), mode::stopped);
    control.setFrom(4);
    control.Command("Play");
    EXPECT_EQ(control.Mode(), mode::stopped);
}

TEST_F(Device, WordsAreTakenInUpperAndLowerCase) {
    open(makeDisc(1, 60));
    control.setFrom(1);
    control.Command("PLAY");
    EXPECT_EQ(control.Mode(), mode::playing);
    control.Command("PAUSE");
    EXPECT_EQ(control.Mode(), mode::paused);
    control.Command("stop");
    EXPECT_EQ(control.Mode(), mode::stopped);
    control.Command("close");
    EXPECT_EQ(control.Mode(), mode::notOpen);
}

TEST_F(Device, PauseHoldsThePositionAndResumeGoesOnFromIt) {
    open(makeDisc(2, 60));
    control.setFrom(1);
    control.Command("Play");
    world.scheduler.runFor(20s);
    control.Command("Pause");
    world.scheduler.runFor(50s);
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{1, 0, 20, 0}));
    control.Command("Resume");
    world.scheduler.runFor(1s);
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{1, 0, 21, 0}));
}

TEST_F(Device, SeekInsideATrackUnderPauseIsWherePlayGoesOn) {
    open(makeDisc(2, 100));
    control.setFrom(1);
    control.Command("Play");
    control.Command("PAUSE");
    control.setTo(packTmsf({2, 1, 5, 0}));
    control.Command("SEEK");
    control.Command("PLAY");
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{2, 1, 5, 0}));
    EXPECT_EQ(control.Mode(), mode::playing);
}

TEST_F(Device, LengthsArePackedMinutesSecondsFrames) {
    open(makeToc({4521, 75 * 200 + 33}));
    control.setTrack(1);
    EXPECT_EQ(control.TrackLength(), packMsf({1, 0, 21}));
    control.setTrack(2);
    EXPECT_EQ(control.TrackLength(), packMsf({3, 20, 33}));
    EXPECT_EQ(control.Length(), packMsf({4, 20, 54}));
}

TEST_F(Device, TheTrackOfAPositionInTheGapBeforeTheNextIsStillTheTrackBefore) {
    open(makeToc({150, 150}));
    control.setTo(packTmsf({1, 0, 1, 74}));
    control.Command("Seek");
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{1, 0, 1, 74}));
}

TEST_F(Device, ThePositionStringIsTheLeadInBeforeAnythingHasPlayed) {
    for (const Frames start : {0, 32, 33, 182}) {
        open(makeToc({1000}, start));
        control.sendString("set cdaudio time format milliseconds");
        const auto answer = std::stol(control.sendString("status cdaudio position"));
        EXPECT_EQ(answer * 75 / 1000, start + 150) << "disc that starts at frame " << start;
        control.Command("Close");
    }
}

TEST_F(Device, CommandStringsAreAnsweredOnlyWhileOpen) { EXPECT_EQ(control.sendString("status cdaudio position"), ""); }

TEST_F(Device, NoDiscIsNoTracks) {
    control.Command("Open");
    EXPECT_EQ(control.Tracks(), 0);
    EXPECT_EQ(control.Length(), 0);
    control.Command("Play");
    EXPECT_EQ(control.Mode(), mode::stopped);
}

TEST_F(Device, StatusComesOnceAnIntervalWhileOpen) {
    int updates = 0;
    control.StatusUpdate = [&] { ++updates; };
    control.setUpdateInterval(1000);
    world.scheduler.runFor(3500ms);
    EXPECT_EQ(updates, 0) << "the device is not open";
    open(makeDisc(1, 60));
    world.scheduler.runFor(3s);
    EXPECT_EQ(updates, 3);
    control.setUpdateInterval(0);
    world.scheduler.runFor(3s);
    EXPECT_EQ(updates, 3);
}

TEST_F(Device, SettingTheIntervalThatStandsLeavesTheBeatAlone) {
    int updates = 0;
    control.StatusUpdate = [&] { ++updates; };
    open(makeDisc(1, 60));
    control.setUpdateInterval(1000);
    world.scheduler.runFor(900ms);
    control.setUpdateInterval(1000);
    world.scheduler.runFor(100ms);
    EXPECT_EQ(updates, 1);
}

TEST_F(Device, ADiscPulledOutWhilePlayingCompletesWithCode262) {
    int code = -1;
    control.PlayCompleted = [&](int c) { code = c; };
    open(makeDisc(2, 60));
    control.setFrom(1);
    control.Command("Play");
    world.scheduler.runFor(5s);
    world.cd.pull();
    world.scheduler.runFor(1s);
    EXPECT_EQ(code, deviceError::hardware);
    EXPECT_EQ(control.Tracks(), 0);
}

TEST_F(Device, TheDiscsOwnEndCompletesWithoutAnErrorCode) {
    int code = -1;
    control.PlayCompleted = [&](int c) { code = c; };
    open(makeDisc(1, 10));
    control.setFrom(1);
    control.Command("Play");
    world.scheduler.runFor(11s);
    EXPECT_EQ(code, deviceError::none);
}

TEST_F(Device, AStopAtTheDiscsEndLetsTheRestSound) {
    open(makeDisc(1, 10));
    control.setFrom(1);
    control.Command("Play");
    world.scheduler.runFor(9s);
    control.stopAtDiscEnd();
    EXPECT_EQ(control.Mode(), mode::stopped);
    control.stopAtDiscEnd();
    EXPECT_THAT(world.cd.heard, ElementsAre(std::pair(0, 750)));
}

TEST_F(Device, OpeningOnAFreeDriveReturnsTrue) {
    EXPECT_TRUE(openAudioDevice(control, world.dialogs));
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(Device, ADriveHeldByAnotherProgramEndsTheProcessAfterTheMessage) {
    world.cd.openFault = platform::CdOpenFault::inUse;
    EXPECT_TRUE(fakes::endsProcess([&] { openAudioDevice(control, world.dialogs); }));
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Attention!");
    EXPECT_EQ(world.dialogs.boxes[0].text,
              "The MCI CD Device is in use by another application.  Wait until it is finished, and then\ntry again!");
}

TEST_F(Device, ADriveThatCannotPlayAudioGetsTheDriverMessageAndEnds) {
    world.cd.openFault = platform::CdOpenFault::cannotPlay;
    EXPECT_TRUE(fakes::endsProcess([&] { openAudioDevice(control, world.dialogs); }));
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Driver Not Installed!");
    EXPECT_EQ(world.dialogs.boxes[0].text,
              "(MCI)Audio CD Driver is not installed!\nCheck the Control Panel Settings Under\n"
              "Drivers for Audio CD Driver installation.\n");
}

TEST_F(Device, ADriverThatCannotBeLoadedIsSparedTheMessage) {
    world.cd.openFault = platform::CdOpenFault::noDriver;
    EXPECT_FALSE(openAudioDevice(control, world.dialogs));
    EXPECT_EQ(control.Error(), 266);
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(Device, ASeekToAPointOfTheBarRoundsToSecondsOfTheTrack) {
    open(makeDisc(3, 200));
    control.setFrom(2);
    control.Command("Play");
    seekInTrack(control, "03:20", 333, 1000, 2);
    EXPECT_EQ(unpackTmsf(control.Position()), (Tmsf{2, 1, 7, 0}));  // 66.6 seconds
    EXPECT_EQ(control.Mode(), mode::playing);
}

TEST(SecondsAtPoint, ReadTheLengthAsMinutesAndSeconds) {
    EXPECT_EQ(secondsAtPoint("03:20", 500, 1000), 100);
    EXPECT_EQ(secondsAtPoint("", 500, 1000), 0);
    EXPECT_EQ(secondsAtPoint("62:00", 1000, 1000), 3720);
    EXPECT_EQ(secondsAtPoint("03:20", 500, 0), 0);
}

}  // namespace
}  // namespace tessarel::audio
