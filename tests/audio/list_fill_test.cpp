#include "audio/list_fill.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "forms/form.h"
#include "forms/windows.h"
#include "tests/fakes/simulated_scheduler.h"

namespace tessarel::audio {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct Lists : testing::Test {
    Lists() {
        player.discTrackCount = 3;
        for (std::size_t track = 1; track <= 100; ++track) {
            player.trackLengths.at(track) = std::to_string(track) + ":07";
            record.trackTitles.at(track) = "Title " + std::to_string(track);
        }
    }

    void enter(std::initializer_list<std::int16_t> tracks) {
        for (const auto track : tracks) {
            player.programBackup.at(static_cast<std::size_t>(++player.programCount)) = track;
        }
    }
    ListSource source(bool smallFonts = true) const { return {player, record, smallFonts}; }
    const std::vector<std::string>& rows() const { return box.rows; }

    fakes::SimulatedScheduler scheduler;
    forms::Windows windows{scheduler};
    forms::Form form{windows, "aplaylst"};
    forms::ListBox box{form, "List1", "Program"};
    PlayerState player;
    library::DiscRecord record;
};

TEST_F(Lists, TheProgramIsShownAsItWasEntered) {
    enter({3, 1, 3});
    fillProgramList(box, source());
    EXPECT_THAT(rows(), ElementsAre("3:\tTitle 3\t3:07", "1:\tTitle 1\t1:07", "3:\tTitle 3\t3:07"));
}

TEST_F(Lists, EntriesBelowOneAreSkipped) {
    enter({2, 0, -4, 1});
    fillProgramList(box, source());
    EXPECT_THAT(rows(), ElementsAre("2:\tTitle 2\t2:07", "1:\tTitle 1\t1:07"));
}

TEST_F(Lists, OnlyTheEntriesThatCountAreShown) {
    enter({2, 1});
    player.programBackup.at(3) = 3;
    fillProgramList(box, source());
    EXPECT_THAT(rows(), SizeIs(2));
}

TEST_F(Lists, ATrackOfUnknownLengthAndTitleStillHasItsRow) {
    record.trackTitles.at(9).clear();
    player.trackLengths.at(9).clear();
    enter({9});
    fillProgramList(box, source());
    EXPECT_THAT(rows(), ElementsAre("9:\t\t"));
}

TEST_F(Lists, ADiscWithoutARecordIsListedByItsOwnTitles) {
    record = {};
    player.discText.trackTitles.at(2) = "Told by the disc";
    enter({2});
    fillProgramList(box, source());
    EXPECT_THAT(rows(), ElementsAre("2:\tTold by the disc\t2:07"));
}

TEST_F(Lists, TheTracksAreShownInOrder) {
    fillTrackList(box, source());
    EXPECT_THAT(rows(), ElementsAre("1:\tTitle 1\t1:07", "2:\tTitle 2\t2:07", "3:\tTitle 3\t3:07"));
}

TEST_F(Lists, AtMostAHundredRowsAreUsed) {
    player.discTrackCount = 101;
    fillTrackList(box, source());
    EXPECT_THAT(rows(), SizeIs(100));
    fillLyricsList(box, source());
    EXPECT_THAT(rows(), SizeIs(100));
}

TEST_F(Lists, WithoutADiscNothingHappens) {
    enter({1});
    fillProgramList(box, source());
    player.discTrackCount = 0;
    enter({2});
    fillProgramList(box, source());
    fillTrackList(box, source());
    fillLyricsList(box, source());
    EXPECT_THAT(rows(), ElementsAre("1:\tTitle 1\t1:07"));
}

TEST_F(Lists, TheLengthStandsFurtherRightOnADisplayWithNormalFonts) {
    fillTrackList(box, source(true));
    EXPECT_THAT(box.tabStops.get(), ElementsAre(13, 231, 250));
    fillTrackList(box, source(false));
    EXPECT_THAT(box.tabStops.get(), ElementsAre(13, 218, 250));
}

TEST_F(Lists, FillingTakesTheSelectionAway) {
    fillTrackList(box, source());
    box.ListIndex = 2;
    fillTrackList(box, source());
    EXPECT_EQ(box.ListIndex.get(), -1);
}

TEST_F(Lists, TheWordsOfTheFirstFiftyTracksAndOfTheOthersComeFromTwoPlaces) {
    player.discTrackCount = 52;
    record.discExtras.at(13) = "first";
    record.discExtras.at(62) = "fiftieth";
    record.lyricsOverflow.at(1) = "fifty-first";
    record.lyricsOverflow.at(2) = "fifty-second";
    fillLyricsList(box, source());
    ASSERT_THAT(rows(), SizeIs(52));
    EXPECT_EQ(rows().at(0), "1:\tfirst");
    EXPECT_EQ(rows().at(49), "50:\tfiftieth");
    EXPECT_EQ(rows().at(50), "51:\tfifty-first");
    EXPECT_EQ(rows().at(51), "52:\tfifty-second");
    EXPECT_THAT(box.tabStops.get(), ElementsAre(13, 218));
}

TEST_F(Lists, ControlCharactersInWordsAreBlanked) {
    player.discTrackCount = 1;
    record.discExtras.at(13) =
        "one\r\ntwo\tthr\xC3\xA9"
        "e";
    fillLyricsList(box, source());
    EXPECT_THAT(rows(), ElementsAre("1:\tone  two thr\xC3\xA9"
                                    "e"));
}

}  // namespace
}  // namespace tessarel::audio
