#include "audio/program_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tessarel::audio {
namespace {

using testing::ElementsAre;

PlayerState discOf(int tracks) {
    PlayerState player;
    player.discTrackCount = static_cast<std::int16_t>(tracks);
    player.gridTrackCount = static_cast<std::int16_t>(std::min(tracks, 20));
    return player;
}

void enter(PlayerState& player, const std::vector<std::int16_t>& tracks) {
    std::copy(tracks.begin(), tracks.end(), player.programList.begin() + 1);
    std::copy(tracks.begin(), tracks.end(), player.programBackup.begin() + 1);
    player.programCount = static_cast<std::int16_t>(tracks.size());
}

std::vector<int> entries(const PlayerState& player, int count) {
    return {player.programList.begin() + 1, player.programList.begin() + 1 + count};
}

std::vector<int> shown(const PlayerState& player) {
    return {player.programBackup.begin() + 1, player.programBackup.begin() + 1 + player.programCount};
}

PlayerState recalled(int tracks, std::string_view bytes) {
    PlayerState player = discOf(tracks);
    takeProgramFile(player, bytes);
    return player;
}

std::string repeated(std::string_view line, int times) {
    std::string bytes;
    for (int i = 0; i < times; ++i) {
        bytes += line;
    }
    return bytes;
}

TEST(ProgramFile, LiesBesideTheRecordOfItsDisc) {
    EXPECT_EQ(programPath("C:\\Tessarel\\datacd\\00012345.CD"), "C:\\Tessarel\\datacd\\00012345.CD2");
}

TEST(ProgramFile, IsAHundredLinesOfOneNumberEach) {
    PlayerState player = discOf(5);
    enter(player, {3, 1, 5});
    const auto bytes = programFileBytes(player);
    EXPECT_TRUE(bytes.starts_with("3\r\n1\r\n5\r\n0\r\n"));
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 100);
}

TEST(ProgramFile, KeepsAHundredEntriesAndNotTheOneBehindThem) {
    PlayerState player = discOf(9);
    player.programList.fill(7);
    const auto bytes = programFileBytes(player);
    EXPECT_EQ(bytes, repeated("7\r\n", 100));
}

TEST(ProgramFile, ATrackThatTheDiscLacksIsWrittenAsZeroInItsPlace) {
    PlayerState player = discOf(22);
    enter(player, {22, 23, -1, 1});
    EXPECT_TRUE(programFileBytes(player).starts_with("22\r\n0\r\n0\r\n1\r\n"));
}

TEST(ProgramFile, AllTracksOfTheDiscAreSavedAndOnlyThoseOfTheGridRecalled) {
    PlayerState player = discOf(22);
    std::vector<std::int16_t> all(22);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<std::int16_t>(22 - i);
    }
    enter(player, all);
    const auto back = recalled(22, programFileBytes(player));
    EXPECT_EQ(entries(back, 4), (std::vector{0, 0, 20, 19}));
    EXPECT_EQ(entries(back, 23).back(), 0);
    EXPECT_EQ(back.programCount, 20);
    EXPECT_EQ(shown(back).front(), 20);
}

TEST(ProgramFile, OfATwentyTrackDiscComesBackWhole) {
    PlayerState player = discOf(20);
    enter(player, {20, 1, 20, 19});
    const auto back = recalled(20, programFileBytes(player));
    EXPECT_EQ(back.programList, player.programList);
    EXPECT_THAT(shown(back), ElementsAre(20, 1, 20, 19));
}

TEST(ProgramFile, AShortFileRecallsWhatItHoldsAndNoMore) {
    PlayerState player = discOf(9);
    enter(player, {5, 6, 7, 8});
    takeProgramFile(player, "1\r\n2\r\n");
    EXPECT_EQ(entries(player, 4), (std::vector{1, 2, 0, 0}));
    EXPECT_THAT(shown(player), ElementsAre(1, 2));
}

TEST(ProgramFile, ALineCutOffStillCounts) { EXPECT_EQ(entries(recalled(9, "3\r\n4"), 3), (std::vector{3, 4, 0})); }

TEST(ProgramFile, AnEmptyFileRecallsNothing) {
    const auto player = recalled(9, "");
    EXPECT_EQ(player.programCount, 0);
    EXPECT_EQ(player.programList, PlayerState().programList);
}

TEST(ProgramFile, AnOverlongFileIsReadToItsHundredthEntry) {
    const auto player = recalled(9, repeated("4\r\n", 250));
    EXPECT_EQ(player.programCount, 100);
    EXPECT_EQ(player.programList[100], 4);
    EXPECT_EQ(player.programList[101], 0);
}

TEST(ProgramFile, WhatIsNoTrackIsZeroInItsPlaceAndTheRestIsRead) {
    const auto player = recalled(9, "2\r\ntrack\r\n-3\r\n99999999999999999999\r\n1e300\r\n10\r\n9\r\n");
    EXPECT_EQ(entries(player, 7), (std::vector{2, 0, 0, 0, 0, 0, 9}));
    EXPECT_THAT(shown(player), ElementsAre(2, 9));
}

TEST(ProgramFile, QuotedNumbersAndCommasAreReadAsValues) {
    EXPECT_EQ(entries(recalled(9, "\"2\",3\r\n 4 \n"), 4), (std::vector{2, 3, 4, 0}));
}

TEST(ProgramFile, BytesOfAnyKindAreNoProgram) {
    const std::string bytes("\0\xFF\x1A\r\n2\r\n", 8);
    EXPECT_LE(recalled(9, bytes).programCount, 1);
    EXPECT_EQ(recalled(9, std::string("\x1A") + "2\r\n").programCount, 0);  // the end-of-file mark
}

TEST(ProgramFile, HoldsAProgramWhenItsFirstValueIsAtLeastOne) {
    EXPECT_TRUE(holdsProgram("1\r\n0\r\n"));
    EXPECT_FALSE(holdsProgram("0\r\n5\r\n"));
    EXPECT_FALSE(holdsProgram("-1\r\n"));
    EXPECT_FALSE(holdsProgram(""));
    EXPECT_FALSE(holdsProgram("track\r\n"));
}

}  // namespace
}  // namespace tessarel::audio
