#include <gtest/gtest.h>

#include "base/clock_text.h"
#include "base/color.h"
#include "base/packed_time.h"

namespace tessarel {
namespace {

TEST(ClockText, BringsMinutesAndSecondsToTwoDigits) {
    EXPECT_EQ(clockText("3:05"), "03:05");
    EXPECT_EQ(clockText("3:5"), "03:05");
    EXPECT_EQ(clockText("12:34"), "12:34");
    EXPECT_EQ(clockText("103:00"), "103:00");
}

TEST(ClockText, LeavesATextThatIsNoTimeAsItIs) {
    for (const auto* text : {"", "abc", "3", "3:", ":30", "3:60", "-1:00", "1:-5", "1:2:3", "99999999999:00", "3:0x"}) {
        EXPECT_EQ(clockText(text), text);
        EXPECT_EQ(clockSeconds(text), 0);
    }
}

TEST(ClockText, CountsSeconds) {
    EXPECT_EQ(clockSeconds("3:05"), 185);
    EXPECT_EQ(clockSeconds("74:59"), 4499);
    EXPECT_EQ(clockSeconds("0:00"), 0);
}

TEST(ClockText, NumbersHaveAtLeastTwoDigits) {
    EXPECT_EQ(twoDigits(0), "00");
    EXPECT_EQ(twoDigits(7), "07");
    EXPECT_EQ(twoDigits(62), "62");
    EXPECT_EQ(twoDigits(100), "100");
}

TEST(PackedTime, MinutesSecondsAndFramesLieFromTheLowByteUp) {
    EXPECT_EQ(packMsf({74, 59, 12}), 74 + 59 * 256 + 12 * 65536);
    EXPECT_EQ(unpackMsf(packMsf({74, 59, 12})), (Msf{74, 59, 12}));
}

TEST(PackedTime, ATracksPositionHasItsTrackInTheLowByteAndItsFramesInTheHighOne) {
    EXPECT_EQ(packTmsf({7, 0, 0, 0}), 7);
    EXPECT_EQ(packTmsf({1, 2, 3, 4}), 0x04030201);
    EXPECT_EQ(unpackTmsf(0x04030201), (Tmsf{1, 2, 3, 4}));
}

TEST(PackedTime, BytesAboveHalfDontSpoilTheirNeighbours) {
    EXPECT_EQ(unpackTmsf(packTmsf({99, 255, 59, 200})), (Tmsf{99, 255, 59, 200}));
    EXPECT_LT(packTmsf({1, 0, 0, 200}), 0);
}

TEST(PackedTime, FramesAndTimesAreTheSame) {
    EXPECT_EQ(toFrames({2, 3, 4}), (2 * 60 + 3) * 75 + 4);
    EXPECT_EQ(fromFrames(toFrames({74, 59, 74})), (Msf{74, 59, 74}));
    EXPECT_EQ(fromFrames(0), Msf{});
}

TEST(Colour, RedIsTheLowByte) {
    EXPECT_EQ(redOf(0x102030), 0x30);
    EXPECT_EQ(greenOf(0x102030), 0x20);
    EXPECT_EQ(blueOf(0x102030), 0x10);
}

}  // namespace
}  // namespace tessarel
