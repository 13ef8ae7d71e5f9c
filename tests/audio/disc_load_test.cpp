#include "audio/disc_load.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/world.h"

namespace tessarel::audio {
namespace {

using fakes::makeDisc;
using fakes::makeToc;

struct DiscLoad : testing::Test {
    fakes::World world;
    MMControl control{world.scheduler, world.cd, [] { return 'D'; }};
    PlayerState player;

    void open(std::shared_ptr<const platform::CdToc> disc) {
        world.cd.insert(disc);
        control.Command("Open");
        player.discTrackCount = static_cast<std::int16_t>(control.Tracks());
        player.discLengthMinutes = static_cast<std::int16_t>(unpackMsf(control.Length()).minutes);
    }
};

TEST_F(DiscLoad, TheDiscNumberAddsTheTrackCountEachLengthAndTheDiscLengthOncePerTrack) {
    open(makeToc({4521, 15033}));
    const std::int32_t first = 1 + 0 * 256 + 21 * 65536;
    const std::int32_t second = 3 + 20 * 256 + 33 * 65536;
    const std::int32_t whole = 4 + 20 * 256 + 54 * 65536;
    EXPECT_EQ(computeDiscNumber(control, 2), 2 + first + second + 2 * whole);
}

TEST_F(DiscLoad, TheNumberOfAFullDiscStaysInside32Bits) {
    open(makeToc(std::vector<Frames>(99, 44 * 75 + 74)));
    std::int64_t expected = 99;
    for (int n = 0; n < 99; ++n) {
        expected += packMsf({0, 44, 74}) + control.Length();
    }
    EXPECT_EQ(computeDiscNumber(control, 99), expected);
}

TEST_F(DiscLoad, NoDiscHasTheNumberZero) {
    control.Command("Open");
    EXPECT_EQ(computeDiscNumber(control, 0), 0);
}

TEST(DiscLength, UnderAnHourReadsMinutesAndSeconds) {
    EXPECT_EQ(discLengthText(packMsf({4, 7, 60})), "04:07");
    EXPECT_EQ(discLengthText(packMsf({59, 59, 74})), "59:59");
    EXPECT_EQ(discLengthText(packMsf({0, 5, 0})), "00:05");
}

TEST(DiscLength, AnHourAndMoreReadsHoursMinutesAndSeconds) {
    EXPECT_EQ(discLengthText(packMsf({60, 0, 0})), "1:00:00");
    EXPECT_EQ(discLengthText(packMsf({74, 3, 12})), "1:14:03");
}

TEST_F(DiscLoad, TrackLengthsCarryNoLeadingZeroInTheMinutes) {
    open(makeToc({75 * 65 + 12, 75 * 600 + 3, 75 * 59}));
    buildTrackLengths(control, player);
    EXPECT_EQ(player.trackLengths[1], "1:05");
    EXPECT_EQ(player.trackLengths[2], "10:00");
    EXPECT_EQ(player.trackLengths[3], "0:59");
    EXPECT_EQ(player.trackTimesReady, 1);
}

TEST_F(DiscLoad, TheFramesPartOfEachLengthIsKept) {
    open(makeToc({75 * 65 + 12, 75 * 600 + 3, 75 * 59 + 74}));
    buildTrackLengths(control, player);
    EXPECT_THAT(std::vector<int>(player.trackFrames.begin() + 1, player.trackFrames.begin() + 4),
                testing::ElementsAre(12, 3, 74));
}

// A drive that answers, for each track, with the length up to the end of the disc.
TEST_F(DiscLoad, ADriveThatReportsLengthsToTheDiscsEndIsCorrectedButForItsLastTrack) {
    auto toc = std::make_shared<platform::CdToc>(*makeToc({75 * 200, 75 * 185, 75 * 100}));
    toc->tracks[0].length = 75 * 485;
    toc->tracks[1].length = 75 * 285;
    open(toc);
    player.trackFrames[1] = 55;
    EXPECT_EQ(trackLengthText(control, player, 1), "3:20");
    EXPECT_EQ(player.trackFrames[1], 55) << "the frames part stays as it was";
    EXPECT_EQ(trackLengthText(control, player, 2), "3:05");
    EXPECT_EQ(trackLengthText(control, player, 3), "1:40");
}

TEST_F(DiscLoad, AFirstTrackAsManyMinutesLongAsTheDiscIsTakenAsItIs) {
    open(makeToc({75 * 190, 75 * 40}));
    buildTrackLengths(control, player);
    EXPECT_EQ(player.trackLengths[1], "3:10");
    EXPECT_EQ(player.trackLengths[2], "0:40");
}

TEST_F(DiscLoad, TheLeadInIsMeasuredInFrames) {
    open(makeToc({1000}, 33));
    EXPECT_EQ(measureLeadIn(control), 183);
    EXPECT_EQ(control.TimeFormat, 10);
}

TEST_F(DiscLoad, TheSummedLengthAddsThreeSeconds) {
    player.discTrackCount = 2;
    player.trackLengths[1] = "0:20";
    player.trackLengths[2] = "0:15";
    EXPECT_EQ(summedLengthText(player), "00:38");
    player.trackLengths[1] = "59:50";
    EXPECT_EQ(summedLengthText(player), "1:00:08");
}

}  // namespace
}  // namespace tessarel::audio
