#include "volume/volume_levels.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessarel::volume {
namespace {

TEST(VolumeMode, OneAndTwoAreReadAsDirectControl) {
    EXPECT_EQ(effectiveMode(0), 0);
    EXPECT_EQ(effectiveMode(1), 3);
    EXPECT_EQ(effectiveMode(2), 3);
    EXPECT_EQ(effectiveMode(3), 3);
    EXPECT_EQ(effectiveMode(4), 4);
}

TEST(VolumeWord, HoldsTheLeftLevelBelowAndTheRightAbove) {
    EXPECT_EQ(packVolume(0x1234, 0x5678), 0x56781234U);
    EXPECT_EQ(packVolume(0, 0), 0U);
}

TEST(VolumeWord, LevelsAbove32767PassWithoutOverflow) {
    EXPECT_EQ(packVolume(65535, 0), 0x0000FFFFU);
    EXPECT_EQ(packVolume(0, 65535), 0xFFFF0000U);
    EXPECT_EQ(packVolume(32768, 65535), 0xFFFF8000U);
}

TEST(VolumeWord, ComesApartAsItWasPacked) {
    for (const std::int32_t left : {0, 1, 32767, 32768, 65535}) {
        for (const std::int32_t right : {0, 1, 32767, 32768, 65535}) {
            EXPECT_EQ(unpackVolume(packVolume(left, right)), (platform::StereoLevel{left, right}));
        }
    }
}

TEST(SliderPosition, ThatAFullLevelInTheHighHalfReadsAsIsZero) {
    EXPECT_EQ(sliderPosition(unpackVolume(0xFFFF0000U).right), 0);
}

TEST(SliderPosition, RunsFromLoudestAtTheTopToSilentAtTheBottom) {
    struct Row {
        std::int32_t level;
        int position;
    };
    for (const auto& row : std::vector<Row>{
             {65535, 0}, {65207, 1}, {65208, 0}, {49151, 25}, {32768, 50}, {655, 99}, {328, 99}, {327, 100}, {0, 100}}) {
        EXPECT_EQ(sliderPosition(row.level), row.position) << row.level;
    }
}

TEST(LevelAfterMove, AtPositionOneHundredIsSilentThoughNinetyNineIsNot) {
    EXPECT_EQ(levelAfterMove(65535, 0, 100), 0);
    EXPECT_EQ(levelAfterMove(65535, 99, 100), 0);
    EXPECT_EQ(levelAfterMove(65535, 0, 99), 655);
}

TEST(LevelAfterMove, MovesByAsMuchAsTheSliderDid) {
    struct Row {
        std::int32_t level;
        int from;
        int to;
        std::int32_t after;
    };
    const std::vector<Row> rows = {
        {65535, 0, 1, 64880},   // 655.35 down
        {65535, 0, 10, 58981},  // 6553.5, a half goes to the even number
        {65535, 0, 30, 45875},  // 19660.5, the same
        {30000, 50, 49, 30655}, {30000, 50, 50, 30000}, {0, 100, 0, 65535},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(levelAfterMove(row.level, row.from, row.to), row.after) << row.from << " to " << row.to;
    }
}

TEST(LevelAfterMove, StaysBetweenSilentAndFull) {
    EXPECT_EQ(levelAfterMove(65000, 5, 0), 65535);
    EXPECT_EQ(levelAfterMove(300, 40, 50), 0);
}

TEST(SliderFigure, IsOneHundredMinusThePosition) {
    EXPECT_EQ(sliderFigure(0), 100);
    EXPECT_EQ(sliderFigure(100), 0);
    EXPECT_EQ(sliderFigure(37), 63);
}

TEST(Sliders, StandTogetherWhenTheyDifferByLessThanTwo) {
    EXPECT_TRUE(standTogether(50, 50));
    EXPECT_TRUE(standTogether(50, 51));
    EXPECT_TRUE(standTogether(51, 50));
    EXPECT_FALSE(standTogether(50, 52));
}

TEST(OutputStep, FallsByTwoAndAHalfAPositionFromTwoHundredAndFifty) {
    struct Row {
        int position;
        int step;
    };
    for (const auto& row : std::vector<Row>{{0, 250},
                                            {1, 248},
                                            {2, 245},
                                            {3, 242},
                                            {10, 225},
                                            {49, 128},
                                            {50, 125},
                                            {51, 122},
                                            {60, 100},
                                            {98, 5},
                                            {99, 2},
                                            {100, 0},
                                            {-1, 250},
                                            {101, 0}}) {
        EXPECT_EQ(stepOfPosition(row.position), row.step) << row.position;
    }
}

TEST(OutputStep, OfEachPositionComesBackToIt) {
    for (int position = 0; position <= 100; ++position) {
        EXPECT_EQ(positionOfStep(stepOfPosition(position)), position);
    }
    EXPECT_EQ(positionOfStep(249), 0);
    EXPECT_EQ(positionOfStep(1), 100);
    EXPECT_EQ(positionOfStep(124), 50);
}

TEST(VolumeError, OnlyTheCodesTwoAndSixAreTold) {
    EXPECT_EQ(
        volumeErrorText(2),
        "Specified sound board device ID is out of range; you may need to install an updated driver for your sound board, "
        "or use the Force Windows Compatible sound mode or disable the internal volume sliders in the Tessarel Setup "
        "Section.");
    EXPECT_EQ(volumeErrorText(6), "The driver failed to install.");
    for (const int code : {0, 1, 3, 4, 5, 7, 11}) {
        EXPECT_EQ(volumeErrorText(code), std::nullopt) << code;
    }
}

}  // namespace
}  // namespace tessarel::volume
