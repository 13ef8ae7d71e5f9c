#include "library/record_rules.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tessarel::library {
namespace {

std::string encoded(std::string text) {
    encodeRecordText(text);
    return text;
}

std::string decoded(std::string text) {
    decodeRecordText(text);
    return text;
}

TEST(RecordText, ACommaIsStoredAsATildeAndADoubleQuoteAsABackQuote) {
    EXPECT_EQ(encoded("Last, First"), "Last~ First");
    EXPECT_EQ(encoded("The \"Great\" One"), "The `Great` One");
}

TEST(RecordText, AStoredTildeShowsAsACommaAndABackQuoteAsADoubleQuote) {
    EXPECT_EQ(decoded("Last~ First"), "Last, First");
    EXPECT_EQ(decoded("The `Great` One"), "The \"Great\" One");
}

TEST(RecordText, ATypedTildeOrBackQuoteDoesNotSurviveTheRoundTrip) {
    EXPECT_EQ(decoded(encoded("1 ~ 2")), "1 , 2");
    EXPECT_EQ(decoded(encoded("`tick`")), "\"tick\"");
}

TEST(RecordText, AnEmptyTextIsLeftAlone) {
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(decoded(""), "");
}

TEST(RecordText, CharactersBeyondAsciiAndLineBreaksPassThrough) {
    EXPECT_EQ(encoded("Mu\u00f1oz\r\n\u4e2d"), "Mu\u00f1oz\r\n\u4e2d");
    EXPECT_EQ(decoded("Mu\u00f1oz\r\n\u4e2d"), "Mu\u00f1oz\r\n\u4e2d");
}

TEST(RecordPath, TheFileNameIsTheNumbersLastEightCharactersWithZerosInFront) {
    EXPECT_EQ(discFileId(123456), "00123456");
    EXPECT_EQ(discFileId(0), "00000000");
    EXPECT_EQ(discFileId(12345678), "12345678");
    EXPECT_EQ(discFileId(1234567890), "34567890");
    EXPECT_EQ(discFileId(-5), "000000-5");
    EXPECT_EQ(discFileId(std::numeric_limits<std::int32_t>::min()), "47483648");
}

TEST(RecordPath, TheMainFileLiesInTheRecordFolderOfTheDataDirectory) {
    EXPECT_EQ(discRecordPath("C:\\Tessarel", "00123456"), "C:\\Tessarel\\datacd\\00123456.CD");
}

TEST(TimeList, HoldsTheTotalAndEachTrackTrimmedWithACommaBehind) {
    DiscRecord record;
    savetimes(record, " 48:12 ", std::vector<std::string>{"3:55", " 4:01"});
    EXPECT_EQ(record.discInfo[1], "48:12,3:55,4:01,");
}

TEST(TimeList, OfADiscWithoutTracksIsTheTotalAlone) {
    DiscRecord record;
    savetimes(record, "48:12", {});
    EXPECT_EQ(record.discInfo[1], "48:12,");
}

TEST(StoredLyrics, OfTracksUpToFiftyLieInTheExtras) {
    DiscRecord record;
    EXPECT_EQ(&storedLyrics(record, 1), &record.discExtras[13]);
    EXPECT_EQ(&storedLyrics(record, 50), &record.discExtras[62]);
}

TEST(StoredLyrics, OfTracksFromFiftyOneLieInTheOverflow) {
    DiscRecord record;
    EXPECT_EQ(&storedLyrics(record, 51), &record.lyricsOverflow[1]);
    EXPECT_EQ(&storedLyrics(record, 100), &record.lyricsOverflow[50]);
}

TEST(Category, ABlankBoxSavesTheCategoryGeneral) {
    EXPECT_EQ(categoryToStore(""), "General");
    EXPECT_EQ(categoryToStore("  "), "General");
}

TEST(Category, TypedByTheUserIsStoredAsTyped) { EXPECT_EQ(categoryToStore("Steel  drums"), "Steel  drums"); }

TEST(ArtistAndTitle, AreTakenApartAtTheFirstSlash) {
    EXPECT_EQ(splitArtistTitle("Ada Vell / Night / Day"), (ArtistTitle{"Ada Vell", "Night / Day"}));
    EXPECT_EQ(splitArtistTitle("AV/ND"), (ArtistTitle{"AV", "ND"}));
    EXPECT_EQ(splitArtistTitle("/ Untitled"), (ArtistTitle{"", "Untitled"}));
}

TEST(ArtistAndTitle, WithoutASlashTheWholeTextIsBoth) {
    EXPECT_EQ(splitArtistTitle(" Sampler "), (ArtistTitle{" Sampler ", " Sampler "}));
}

TEST(PackedImages, AreTheEntriesThatAreNotBlankWithTheDisplayTypeFirst) {
    DiscRecord record;
    record.imageFiles[0] = "4";
    record.imageDelays[0] = 10;
    record.imageFiles[2] = "C:\\a.bmp";
    record.imageDelays[2] = 7;
    record.imageFiles[3] = "  ";
    record.imageFiles[20] = "C:\\b.bmp";
    packImages(record);
    EXPECT_EQ(record.imageCount, 3);
    EXPECT_EQ(record.packedFiles[0], "4");
    EXPECT_EQ(record.packedRatios[0], 10);
    EXPECT_EQ(record.packedFiles[1], "C:\\a.bmp");
    EXPECT_EQ(record.packedRatios[1], 7);
    EXPECT_EQ(record.packedFiles[2], "C:\\b.bmp");
    EXPECT_EQ(record.packedFiles[3], "");
}

TEST(PackedImages, AreForgottenWhenTheSetBecomesEmpty) {
    DiscRecord record;
    record.imageFiles[1] = "C:\\a.bmp";
    packImages(record);
    record.imageFiles[1].clear();
    packImages(record);
    EXPECT_EQ(record.imageCount, 0);
    EXPECT_EQ(record.packedFiles[0], "");
}

TEST(OverflowFiles, AreNeededFromTheFortySixthTrackOnByEitherCount) {
    DiscRecord record;
    record.discInfo[2] = "45";
    EXPECT_FALSE(needsOverflowFiles(record, 45));
    EXPECT_TRUE(needsOverflowFiles(record, 46));
    record.discInfo[2] = "46";
    EXPECT_TRUE(needsOverflowFiles(record, 0));
    record.discInfo[2] = "many";
    EXPECT_FALSE(needsOverflowFiles(record, 0));
}

struct Extras {
    std::size_t slot;
    std::string text;
    bool kept;
};

TEST(ExtrasWorthKeeping, BesideTheDefaultMediaType) {
    const std::vector<Extras> cases = {
        {1, "Audio CD", false}, {1, "  Audio CD ", false}, {1, "audio cd", true},   {1, "LP", true},        {1, "", true},
        {0, "9.99", true},      {0, "   ", false},         {0, "\u20ac9", true},    {2, "1997", true},      {2, "  ", false},
        {75, "x", true},        {40, "  ~", true},         {2, "\u00c9ric", false}, {2, "\r\nline", false}, {2, "\x7f", false},
    };
    for (const auto& c : cases) {
        DiscRecord record;
        record.discExtras[1] = "Audio CD";
        record.discExtras[c.slot] = c.text;
        EXPECT_EQ(extrasWorthKeeping(record), c.kept) << c.slot << " " << c.text;
    }
}

TEST(ImagesWorthKeeping, NeedATimeCorrectionOrAnEntryThatIsANumber) {
    DiscRecord record;
    EXPECT_FALSE(imagesWorthKeeping(record));
    record.imageFiles[1] = "C:\\a.bmp";
    record.imageDelays[1] = 5;
    EXPECT_FALSE(imagesWorthKeeping(record)) << "pictures alone don't count";
    record.imageFiles[0] = "0";
    EXPECT_TRUE(imagesWorthKeeping(record)) << "the display type 0 is one character";
    record.imageFiles[0] = " 10 ";
    EXPECT_TRUE(imagesWorthKeeping(record));
    for (const auto* text : {"", " ", "4 x", "x4", "-", ".", "e", "nan", "inf", "0x4"}) {
        record.imageFiles[0] = text;
        EXPECT_FALSE(imagesWorthKeeping(record)) << text;
    }
    record.timeCorrection = -3;
    EXPECT_TRUE(imagesWorthKeeping(record));
}

}  // namespace
}  // namespace tessarel::library
