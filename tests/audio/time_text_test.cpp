#include "audio/time_text.h"

#include <gtest/gtest.h>

namespace tessarel::audio {
namespace {

struct Reading : testing::Test {
    PlayerState player;
    Reading() {
        player.discTrackCount = 3;
        player.playMode = wholeDisc;
        player.trackLengths[1] = "3:20";
        player.trackLengths[2] = "4:00";
        player.trackLengths[3] = "59:30";
        player.currentTrack = 2;
        player.trackEndSeconds = 235;
        player.positionSeconds = 61;
    }
    TimeReadout read(int timeMode) const { return readTime(player, {timeMode, 2, "01:01"}); }
    void last(double seconds) {
        player.lastShownTrack = 2;
        player.lastShownSeconds = seconds;
    }
};

TEST_F(Reading, ElapsedInTheTrack) {
    EXPECT_EQ(read(0).text, "1:01");
    EXPECT_EQ(read(0).shownSeconds, 61);
}

TEST_F(Reading, LeftInTheTrack) { EXPECT_EQ(read(1).text, "-2:59"); }

TEST_F(Reading, LeftInTheTrackNeverFallsBelowZero) {
    player.positionSeconds = 300;
    EXPECT_EQ(read(1).text, "-0:00");
}

TEST_F(Reading, ElapsedOnTheDiscInWholeDiscMode) { EXPECT_EQ(read(2).text, "04:21"); }

TEST_F(Reading, ElapsedOnTheDiscGoesOnInTheLongFormPastTheHour) {
    player.currentTrack = 4;
    player.positionSeconds = 30;
    EXPECT_EQ(read(2).text, "1:07:20");
}

TEST_F(Reading, TotalShowsThePositionUnchangedInTheOtherModes) {
    player.playMode = programmed;
    EXPECT_EQ(read(2).text, "01:01");
    EXPECT_FALSE(read(2).shownSeconds.has_value());
    player.playMode = singleTrack;
    EXPECT_EQ(readTime(player, {2, 2, "-0:05"}).text, "00:00");
}

TEST_F(Reading, LeftOnTheDisc) { EXPECT_EQ(read(3).text, "-1:02:29"); }

TEST_F(Reading, LeftInASingleTrack) {
    player.playMode = singleTrack;
    EXPECT_EQ(read(3).text, "-2:59");
}

TEST_F(Reading, LeftInAProgramUpToItsFirstGap) {
    player.playMode = programmed;
    player.programIndex = 1;
    player.programList[1] = 2;
    player.programList[2] = 1;
    player.programList[3] = 1;
    player.programList[5] = 3;
    EXPECT_EQ(read(3).text, "-09:39");
}

TEST_F(Reading, DigitsDoNotRunBackwardInElapsedTime) {
    last(70);
    EXPECT_EQ(read(0).text, "1:11");
    player.positionSeconds = 75;
    EXPECT_EQ(read(0).text, "1:15");
}

TEST_F(Reading, TheRestOfTheTrackDoesNotRise) {
    last(100);
    EXPECT_EQ(read(1).text, "-1:39");
    last(200);
    EXPECT_EQ(read(1).text, "-2:59");
}

TEST_F(Reading, TheRestOfTheDiscStepsByOneWhenThePositionHasJumpedAhead) {
    last(3800);
    EXPECT_EQ(read(3).text, "-1:03:19");
    last(3700);
    EXPECT_EQ(read(3).text, "-1:02:29") << "a rise is shown as it is: this guard is not symmetric";
}

TEST_F(Reading, TheDiscTotalAdvancesByOneAtMostWhileTheDeviceIsAhead) {
    last(200);
    EXPECT_EQ(read(2).text, "03:21");
    EXPECT_EQ(read(2).shownSeconds, 201);
}

TEST_F(Reading, TheDiscTotalFollowsTheDeviceBack) {
    last(300);
    EXPECT_EQ(read(2).text, "04:21");
}

TEST_F(Reading, AnotherTrackIsNotGuarded) {
    player.lastShownTrack = 1;
    player.lastShownSeconds = 200;
    EXPECT_EQ(read(0).text, "1:01");
    player.lastShownTrack = 0;
    EXPECT_EQ(read(0).text, "1:01");
}

TEST_F(Reading, NothingIsGuardedBelowOneSecond) {
    player.positionSeconds = 0;
    last(0);
    EXPECT_EQ(read(0).text, "0:00");
}

TEST(TimeModes, StepRoundAndHaveTheirCaptions) {
    EXPECT_EQ(nextTimeMode(0), 1);
    EXPECT_EQ(nextTimeMode(2), 3);
    EXPECT_EQ(nextTimeMode(3), 0);
    EXPECT_STREQ(timeCaption(0), "Time");
    EXPECT_STREQ(timeCaption(1), "Rem");
    EXPECT_STREQ(timeCaption(2), "TOTAL");
    EXPECT_STREQ(timeCaption(3), "Totrem");
}

TEST(Bar, ShowsTheRoundedShareOfTheTrack) {
    EXPECT_EQ(barPercent("03:20", "01:40"), 50);
    EXPECT_EQ(barPercent("03:20", "00:01"), 1);
    EXPECT_EQ(barPercent("03:20", "03:20"), 100);
}

TEST(Bar, GoesToZeroAtTheStart) {
    EXPECT_EQ(barPercent("03:20", "00:00"), 0);
    EXPECT_EQ(barPercent("03:20", ""), 0);
}

TEST(Bar, StaysBeyondTheEndOfTheTrack) { EXPECT_EQ(barPercent("03:20", "03:21"), std::nullopt); }

TEST(Bar, StaysForATrackOfUnknownLength) { EXPECT_EQ(barPercent("", "00:10"), std::nullopt); }

}  // namespace
}  // namespace tessarel::audio
