#include <gmock/gmock.h>

#include "host/image/cue_sheet.h"

namespace tessarel::host {
namespace {

CueSheet parsed(std::string_view text) {
    auto sheet = parseCueSheet(text);
    EXPECT_TRUE(sheet) << sheet.error().message;
    return sheet.value_or(CueSheet{});
}

constexpr std::string_view plain =
    "REM GENRE Rock\nCATALOG 1234567890123\nCDTEXTFILE \"x.cdt\"\nPERFORMER \"The Band\"\nTITLE \"The Disc\"\n"
    "FILE \"a b.bin\" BINARY\n"
    "  TRACK 01 AUDIO\n    FLAGS DCP PRE\n    ISRC ABCDE1234567\n    TITLE \"One\"\n    PERFORMER \"Singer\"\n"
    "    SONGWRITER \"Writer\"\n    INDEX 01 00:00:00\n"
    "  TRACK 02 AUDIO\n    TITLE \"Two\"\n    PREGAP 00:02:00\n    INDEX 00 01:02:03\n    INDEX 01 01:02:04\n    POSTGAP "
    "00:00:10\n";

void expectPlain(const CueSheet& sheet) {
    EXPECT_EQ(sheet.title, "The Disc");
    EXPECT_EQ(sheet.performer, "The Band");
    ASSERT_EQ(sheet.files, (std::vector<CueFile>{{"a b.bin", CueFileKind::littleEndian}}));
    ASSERT_EQ(sheet.tracks.size(), 2U);
    EXPECT_EQ(sheet.tracks[0].title, "One");
    EXPECT_EQ(sheet.tracks[0].performer, "Singer");
    EXPECT_EQ(sheet.tracks[1].title, "Two");
    EXPECT_EQ(sheet.tracks[1].pregap, 150);
    EXPECT_EQ(sheet.tracks[1].postgap, 10);
    EXPECT_EQ(sheet.tracks[1].indexes, (std::vector<CueIndex>{{0, 0, 4653}, {1, 0, 4654}}));
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string out(text);
    for (std::size_t at = 0; (at = out.find(from, at)) != std::string::npos; at += to.size()) {
        out.replace(at, from.size(), to);
    }
    return out;
}

TEST(CueSheet, TellsTracksTimesAndNames) { expectPlain(parsed(plain)); }

TEST(CueSheet, TakesEveryLineEnd) {
    expectPlain(parsed(replaced(plain, "\n", "\r\n")));
    expectPlain(parsed(replaced(plain, "\n", "\r")));
    expectPlain(parsed(plain.substr(0, plain.size() - 1)));
}

TEST(CueSheet, TakesTabsAndBlanksAtLineEnds) { expectPlain(parsed(replaced(replaced(plain, "  ", "\t"), "\n", " \t\n"))); }

TEST(CueSheet, TakesAByteOrderMark) { expectPlain(parsed("\xEF\xBB\xBF" + std::string(plain))); }

TEST(CueSheet, TakesKeywordsInAnyCase) {
    const auto sheet = parsed("file x.bin Binary\ntrack 01 audio\npregap 00:00:01\nIndex 01 00:00:00\nTitle t\n");
    ASSERT_EQ(sheet.tracks.size(), 1U);
    EXPECT_EQ(sheet.tracks[0].pregap, 1);
    EXPECT_EQ(sheet.tracks[0].title, "t");
}

TEST(CueSheet, TakesNamesWithQuotesBlanksAndNoQuotes) {
    const auto sheet = parsed(
        "TITLE \"Best of \"Quotes\" ever\"\nPERFORMER Some One\nFILE my old rip.wav WAVE\nTRACK 01 AUDIO\nTITLE \"open\nINDEX "
        "01 "
        "00:00:00\n");
    EXPECT_EQ(sheet.title, "Best of \"Quotes\" ever");
    EXPECT_EQ(sheet.performer, "Some One");
    EXPECT_EQ(sheet.files[0].name, "my old rip.wav");
    EXPECT_EQ(sheet.tracks[0].title, "open");
}

TEST(CueSheet, TakesUtf8AndLatinOne) {
    EXPECT_EQ(parsed("TITLE \"M\xC3\xBCsli\"\nFILE a BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n").title, "Müsli");
    EXPECT_EQ(parsed("TITLE \"M\xFCsli\"\nFILE a BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n").title, "Müsli");
}

TEST(CueSheet, ADiscOfNinetyNineTracksIsTaken) {
    std::string text = "FILE a BINARY\n";
    for (int n = 1; n <= 99; ++n) {
        text += "TRACK " + std::to_string(n) + " AUDIO\nINDEX 01 " + std::to_string(n) + ":00:00\n";
    }
    EXPECT_EQ(parsed(text).tracks.size(), 99U);
}

TEST(CueSheet, AFileNamedAgainForTheNextTrackIsTheSameFile) {
    const auto sheet =
        parsed("FILE a BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE a BINARY\nTRACK 02 AUDIO\nINDEX 01 00:01:00\n");
    EXPECT_EQ(sheet.files.size(), 1U);
    EXPECT_EQ(sheet.tracks[1].indexes[0], (CueIndex{1, 0, 75}));
}

}  // namespace
}  // namespace tessarel::host
