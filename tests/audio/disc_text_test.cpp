// What a disc says of itself, and when it is shown.
#include "audio/disc_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"

namespace tessarel::audio {
namespace {

platform::CdToc toc(std::string performer, std::string title, std::vector<std::string> tracks = {}) {
    platform::CdToc disc;
    disc.performer = std::move(performer);
    disc.title = std::move(title);
    for (auto& name : tracks) {
        disc.tracks.push_back({static_cast<int>(disc.tracks.size()) + 1, 0, 75, true, std::move(name), {}});
    }
    return disc;
}

std::string fit(const std::string& raw) { return discTextOf(toc("", raw)).discTitle; }

TEST(DiscText, GivesTheTextsOfTheDiscAndOfEachTrack) {
    auto disc = toc("The Players", "Their Songs", {"One", "Two"});
    disc.tracks[1].performer = "A Guest";
    const auto text = discTextOf(disc);
    EXPECT_EQ(text.artist, "The Players");
    EXPECT_EQ(text.discTitle, "Their Songs");
    EXPECT_EQ(text.trackTitles[1], "One");
    EXPECT_EQ(text.trackTitles[2], "Two");
    EXPECT_EQ(text.trackArtists[1], "");
    EXPECT_EQ(text.trackArtists[2], "A Guest");
}

TEST(DiscText, OfADiscThatSaysNothingIsEmpty) {
    EXPECT_EQ(discTextOf(toc("", "", {"", ""})), DiscText());
    EXPECT_EQ(discLine(DiscText()), "");
}

TEST(DiscText, FollowsTheNumbersOfTheTracks) {
    auto disc = toc("", "", {"Five", "Hundred", "Out of bounds", "Below"});
    disc.tracks[0].number = 5;
    disc.tracks[1].number = 100;
    disc.tracks[2].number = 101;
    disc.tracks[3].number = 0;
    const auto text = discTextOf(disc);
    EXPECT_EQ(text.trackTitles[5], "Five");
    EXPECT_EQ(text.trackTitles[100], "Hundred");
    EXPECT_EQ(text.trackTitles[0], "");
    EXPECT_EQ(text.trackTitles[1], "");
}

TEST(DiscText, IsOneLineWithoutControlCharacters) {
    EXPECT_EQ(fit("A\nB\r\n\tC"), "A B C");
    EXPECT_EQ(fit(std::string("nul\0inside", 10)), "nul inside");
    EXPECT_EQ(fit("bell\x07\x1b[31mred\x7f"), "bell [31mred");
    EXPECT_EQ(fit("next\xC2\x85line\xE2\x80\xA8"
                  "and\xE2\x80\xA9paragraph"),
              "next line and paragraph");
    EXPECT_EQ(fit("\x01\x02\x03"), "");
    EXPECT_EQ(fit("   much    space   "), "much space");
}

TEST(DiscText, KeepsTheLettersOfAllLanguages) {
    EXPECT_EQ(fit("Dvořák – Rusálka “Měsíčku” 月"), "Dvořák – Rusálka “Měsíčku” 月");
}

TEST(DiscText, ReadsBytesThatAreNoUtf8AsLatin1) { EXPECT_EQ(fit("Bj\xF6rk"), "Björk"); }

TEST(DiscText, CutsAnEnormousTextBetweenCharacters) {
    std::string many;
    for (int i = 0; i < 200'000; ++i) {
        many += "ä";
    }
    const auto cut = fit(many);
    EXPECT_EQ(text::length(cut), 160U);
    EXPECT_TRUE(text::isValidUtf8(cut));
    EXPECT_EQ(fit(std::string(1'000'000, '\n') + "x"), "");
}

TEST(DiscText, JoinsArtistAndTitleAndLeavesOutWhatIsMissing) {
    EXPECT_EQ(discLine(discTextOf(toc("A", "B"))), "A - B");
    EXPECT_EQ(discLine(discTextOf(toc("A", ""))), "A");
    EXPECT_EQ(discLine(discTextOf(toc("", "B"))), "B");
    EXPECT_EQ(discLine(discTextOf(toc(" \t", "B"))), "B");
}

// ---- What is shown ----

struct Shown : testing::Test {
    library::DiscRecord record;
    DiscText own = discTextOf(toc("Own Artist", "Own Title", {"Own One", "Own Two"}));
    ShownTexts texts() { return {record, own}; }
};

TEST_F(Shown, TextsAreTheDiscsOwnWhileTheRecordIsBlank) {
    record.discTitle = "  ";
    EXPECT_FALSE(namesDisc(record));
    EXPECT_EQ(texts().artist(), "Own Artist");
    EXPECT_EQ(texts().discTitle(), "Own Title");
    EXPECT_EQ(texts().discLine(), "Own Artist - Own Title");
    EXPECT_EQ(texts().trackTitle(2), "Own Two");
}

TEST_F(Shown, TextsAreTheRecordsAloneAsSoonAsItNamesAnything) {
    record.trackTitles[1] = "Kept One";
    EXPECT_TRUE(namesDisc(record));
    EXPECT_EQ(texts().artist(), "");
    EXPECT_EQ(texts().discLine(), "");
    EXPECT_EQ(texts().trackTitle(1), "Kept One");
    EXPECT_EQ(texts().trackTitle(2), "");

    record.discArtist = "Kept Artist";
    EXPECT_EQ(texts().discLine(), "Kept Artist - ");
    record.discTitle = "Kept Title";
    EXPECT_EQ(texts().discLine(), "Kept Artist - Kept Title");
}

TEST_F(Shown, TextsFollowTheRecordAsItIsFilledAndEmptied) {
    const auto shown = [this] { return texts().discLine(); };
    record.discArtist = "Searching CDDB Online";
    record.discTitle = "Please Wait...";
    EXPECT_EQ(shown(), "Searching CDDB Online - Please Wait...");
    record.discArtist.clear();
    record.discTitle.clear();
    EXPECT_EQ(shown(), "Own Artist - Own Title");
}

TEST_F(Shown, ArtistOfATrackIsItsOwnOrTheDiscs) {
    own.trackArtists[2] = "A Guest";
    EXPECT_EQ(texts().trackArtist(1), "Own Artist");
    EXPECT_EQ(texts().trackArtist(2), "A Guest");
    record.discArtist = "Kept Artist";
    EXPECT_EQ(texts().trackArtist(2), "Kept Artist");
}

TEST_F(Shown, TextsOfTracksOutsideTheDiscAreEmpty) {
    for (const int track : {-1, 0, 3, 100, 101, 32767}) {
        EXPECT_EQ(texts().trackTitle(track), "") << track;
    }
}

TEST_F(Shown, LineOfTheDiscItselfCountsAsEmptyForALookUp) {
    EXPECT_TRUE(holdsNoRecord("", own));
    EXPECT_TRUE(holdsNoRecord("Own Artist - Own Title", own));
    EXPECT_FALSE(holdsNoRecord("Kept Artist - Kept Title", own));
    EXPECT_FALSE(holdsNoRecord(" - ", own));
    EXPECT_FALSE(holdsNoRecord(" - ", DiscText()));
}

}  // namespace
}  // namespace tessarel::audio
