#include "audio/track_rules.h"

#include <gtest/gtest.h>

namespace tessarel::audio {
namespace {

PlayerState disc(int tracks, int current, PlayMode mode = wholeDisc) {
    PlayerState player;
    player.discTrackCount = static_cast<std::int16_t>(tracks);
    player.gridTrackCount = static_cast<std::int16_t>(tracks > 20 ? 20 : tracks);
    player.currentTrack = static_cast<std::int16_t>(current);
    player.reportedTrack = player.currentTrack;
    player.playMode = mode;
    player.trackEndSeconds = 100;
    player.positionSeconds = 100;
    player.lastAdvanceTime = 40000;
    return player;
}

constexpr double longAfter = 40100;

TEST(EndSeconds, AreFiveLessAndFourMoreOnTheLastTrackOfTheGrid) {
    EXPECT_EQ(endSecondsOf(disc(12, 5), 200), 195);
    EXPECT_EQ(endSecondsOf(disc(12, 12), 200), 199);
    EXPECT_EQ(endSecondsOf(disc(12, 12, singleTrack), 200), 195);
}

TEST(EndSeconds, OnDiscsOverTwentyTracksTheLaterEndIsAtTrackTwenty) {
    EXPECT_EQ(endSecondsOf(disc(25, 20), 200), 199);
    EXPECT_EQ(endSecondsOf(disc(25, 25), 200), 195);
}

TEST(EndSeconds, ATrackShorterThanFiveSecondsSitsInItsEndWindowFromTheStart) {
    auto player = disc(5, 2);
    player.trackEndSeconds = static_cast<std::int16_t>(endSecondsOf(player, 4));
    player.positionSeconds = 0;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::advance);
}

TEST(TrackEndRule, BeforeTheEndNothingHappens) {
    auto player = disc(12, 3);
    player.positionSeconds = 99;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::nothing);
}

TEST(TrackEndRule, AWholeDiscAdvancesOnceInEightSeconds) {
    EXPECT_EQ(trackEnd(disc(12, 3), 0, 40008), TrackEnd::advance);
    EXPECT_EQ(trackEnd(disc(12, 3), 0, 40007.9), TrackEnd::nothing);
}

TEST(TrackEndRule, MidnightDoesNotHoldTheAdvanceBack) { EXPECT_EQ(trackEnd(disc(12, 3), 0, 5), TrackEnd::advance); }

TEST(TrackEndRule, ADiscWithATimeCorrectionAdvancesAfterItsWait) {
    EXPECT_EQ(trackEnd(disc(12, 3), 2, 40001), TrackEnd::advanceAfterWait);
}

TEST(TrackEndRule, WithRepeatTheLastTrackOfTheGridWraps) {
    auto player = disc(12, 12);
    player.repeatOn = 1;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::wrapToFirst);
    auto many = disc(25, 20);
    many.repeatOn = 1;
    EXPECT_EQ(trackEnd(many, 0, longAfter), TrackEnd::wrapToFirst);
}

TEST(TrackEndRule, WhileTheTrackBeforeStillSoundsNothingWraps) {
    auto player = disc(12, 12);
    player.repeatOn = 1;
    player.reportedTrack = 11;
    EXPECT_EQ(trackEnd(player, 0, 40001), TrackEnd::nothing);
}

TEST(TrackEndRule, WhileTheTrackBeforeStillSoundsACorrectedDiscDoesNotAdvanceAgain) {
    auto player = disc(12, 4);
    player.reportedTrack = 3;
    EXPECT_EQ(trackEnd(player, 2, longAfter), TrackEnd::nothing);
}

TEST(TrackEndRule, BehindTheLastTrackTheDiscIsOverOrWraps) {
    auto player = disc(12, 13);
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::discOver);
    player.repeatOn = 1;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::wrapToFirst);
}

TEST(TrackEndRule, WithoutATrackItWrapsEvenWithRepeatOff) {
    EXPECT_EQ(trackEnd(disc(12, 0), 0, longAfter), TrackEnd::wrapToFirst);
}

TEST(TrackEndRule, ProgrammedAndSingleTracksEndTwoSecondsLaterPlusTheCorrection) {
    auto player = disc(12, 3, singleTrack);
    player.positionSeconds = 101;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::nothing);
    player.positionSeconds = 102;
    EXPECT_EQ(trackEnd(player, 0, longAfter), TrackEnd::programTrackOver);
    EXPECT_EQ(trackEnd(player, 3, longAfter), TrackEnd::nothing);
    player.playMode = programmed;
    player.positionSeconds = 99;
    EXPECT_EQ(trackEnd(player, -3, longAfter), TrackEnd::programTrackOver);
}

TEST(SeekSteps, GrowWhileTheKeyIsHeld) {
    EXPECT_EQ(seekStepPercent(2), 2);
    EXPECT_EQ(seekStepPercent(7), 2);
    EXPECT_EQ(seekStepPercent(8), 6);
    EXPECT_EQ(seekStepPercent(12), 6);
    EXPECT_EQ(seekStepPercent(13), 10);
    EXPECT_EQ(seekStepPercent(-2), -4);
    EXPECT_EQ(seekStepPercent(-5), -4);
    EXPECT_EQ(seekStepPercent(-7), -8);
    EXPECT_EQ(seekStepPercent(-10), -8);
    EXPECT_EQ(seekStepPercent(-11), -12);
    EXPECT_EQ(seekStepPercent(0), 0);
}

TEST(IntroLength, IsTheOptionOrSevenWhenThatIsOutOfRange) {
    EXPECT_EQ(introDuration(10, 200), 10);
    EXPECT_EQ(introDuration(2, 200), 2);
    EXPECT_EQ(introDuration(30, 200), 30);
    EXPECT_EQ(introDuration(1, 200), 7);
    EXPECT_EQ(introDuration(31, 200), 7);
    EXPECT_EQ(introDuration(10, 4), 4);
}

TEST(Cells, InAProgramLightForEntriesStillToCome) {
    auto player = disc(12, 3, programmed);
    player.programList[1] = 0;
    player.programList[2] = 5;
    player.programList[3] = 7;
    player.programIndex = 2;
    EXPECT_EQ(cellColor(player, 5, 5, true), CellColor::lit);
    EXPECT_EQ(cellColor(player, 7, 5, true), CellColor::lit);
    EXPECT_EQ(cellColor(player, 6, 5, true), CellColor::keep);
    EXPECT_EQ(cellColor(player, 7, 5, false), CellColor::keep);
}

TEST(Cells, InSingleTrackModeOnlyTheCurrentOneShows) {
    const auto player = disc(12, 3, singleTrack);
    EXPECT_EQ(cellColor(player, 3, 3, true), CellColor::shown);
    EXPECT_EQ(cellColor(player, 4, 3, true), CellColor::dim);
}

TEST(Cells, OnAWholeDiscShowFromTheDigitsOn) {
    auto player = disc(25, 3);
    EXPECT_EQ(cellColor(player, 2, 3, true), CellColor::dim);
    EXPECT_EQ(cellColor(player, 3, 3, true), CellColor::shown);
    EXPECT_EQ(cellColor(player, 20, 21, true), CellColor::dim);
    player.repeatOn = 1;
    EXPECT_EQ(cellColor(player, 1, 21, true), CellColor::shown);
}

}  // namespace
}  // namespace tessarel::audio
