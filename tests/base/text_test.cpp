#include "base/text.h"

#include <gtest/gtest.h>

namespace tessarel::text {
namespace {

TEST(Text, ValidUtf8StaysAndItsByteOrderMarkGoes) {
    EXPECT_EQ(decode("M\xC3\xBCller"), "M\xC3\xBCller");
    EXPECT_EQ(decode("\xEF\xBB\xBFx"), "x");
    EXPECT_EQ(decode(""), "");
}

TEST(Text, OtherBytesAreWindows1252) {
    EXPECT_EQ(decode("M\xFCller"), "M\xC3\xBCller");
    EXPECT_EQ(decode("\x80 \x93x\x94"), "\xE2\x82\xAC \xE2\x80\x9Cx\xE2\x80\x9D");
    EXPECT_EQ(decode("\x81"), "\xC2\x81");
}

TEST(Text, WithoutAnEncodingOtherBytesAreLatin1) {
    EXPECT_EQ(decodeLatin1("\x80"), "\xC2\x80");
    EXPECT_EQ(decodeLatin1("caf\xE9"), "caf\xC3\xA9");
}

TEST(Text, TruncatedOverlongSurrogateAndTooLargeSequencesAreNoUtf8) {
    for (const auto* bytes : {"\xC3", "\xE2\x82", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF8\x88\x80\x80", "\x80", "a\xFF"}) {
        EXPECT_FALSE(isValidUtf8(bytes));
    }
    EXPECT_TRUE(isValidUtf8("\xF0\x9F\x98\x80\xE2\x82\xAC\xC3\xA9z"));
}

TEST(Text, PositionsAndLengthsCountCharacters) {
    const std::string word = "M\xC3\xBCller";
    EXPECT_EQ(length(word), 6U);
    EXPECT_EQ(left(word, 2), "M\xC3\xBC");
    EXPECT_EQ(mid(word, 3), "ller");
    EXPECT_EQ(mid(word, 2, 1), "\xC3\xBC");
    EXPECT_EQ(right(word, 5), "\xC3\xBCller");
    EXPECT_EQ(left(word, 99), word);
    EXPECT_EQ(mid(word, 99), "");
    EXPECT_EQ(mid(word, 0), word);
    EXPECT_EQ(right(word, 99), word);
    EXPECT_EQ(right(word, 0), "");
}

TEST(Text, OnlyBlanksAreTrimmed) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("\ta\t"), "\ta\t");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trimRight("  a "), "  a");
}

TEST(Text, CapitalsAreMadeOfLatinGreekAndCyrillicLetters) {
    EXPECT_EQ(upper("stra\xC3\x9F"
                    "e \xC3\xBC\xC3\xBF"),
              "STRA\xC3\x9F"
              "E \xC3\x9C\xC5\xB8");
    EXPECT_EQ(upper("\xCE\xB1\xD0\xB6\xD1\x91\xC5\x82\xC5\xBE"), "\xCE\x91\xD0\x96\xD0\x81\xC5\x81\xC5\xBD");
    EXPECT_EQ(lower("\xCE\x91\xD0\x96\xD0\x81\xC5\x81\xC5\xBD \xC3\x9C"), "\xCE\xB1\xD0\xB6\xD1\x91\xC5\x82\xC5\xBE \xC3\xBC");
    EXPECT_EQ(upper("a\xFF"
                    "b"),
              "A\xFF"
              "B");
    EXPECT_TRUE(sameIgnoringCase("TSLWIN1.INI", "tslwin1.ini"));
    EXPECT_FALSE(sameIgnoringCase("a", "ab"));
}

TEST(Text, ValTakesTheLongestNumericPrefix) {
    EXPECT_EQ(val("07.CDA"), 7);
    EXPECT_EQ(val("  12abc"), 12);
    EXPECT_EQ(val("1 2 3"), 123);
    EXPECT_EQ(val("-3.5x"), -3.5);
    EXPECT_EQ(val(".5"), 0.5);
    EXPECT_EQ(val("1e3z"), 1000);
    EXPECT_EQ(val("1e+"), 1);
    for (const auto* none : {"", "abc", "-", ".", "e5", "+.e1"}) {
        EXPECT_EQ(val(none), 0) << none;
    }
    EXPECT_EQ(val("1e999"), 0);
}

TEST(Text, AnIntegerOfATextIsRoundedHalfToEvenAndHeldInSixteenBits) {
    EXPECT_EQ(valInteger("2.5"), 2);
    EXPECT_EQ(valInteger("3.5"), 4);
    EXPECT_EQ(valInteger("99999"), 32767);
    EXPECT_EQ(valInteger("-99999"), -32768);
}

TEST(Text, ReplacementGoesFromLeftToRight) {
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("a~b", "~", ","), "a,b");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
}

TEST(Text, PatternsMatchWithoutRegardToCase) {
    EXPECT_TRUE(matchesPattern("SETUP.EXE", "*.exe"));
    EXPECT_TRUE(matchesPattern("README", "*.*"));
    EXPECT_TRUE(matchesPattern("Track01.cda", "track??.CDA"));
    EXPECT_TRUE(matchesPattern("a.b.exe", "*.exe"));
    EXPECT_TRUE(matchesPattern("M\xC3\xBC", "m?"));
    EXPECT_TRUE(matchesPattern("", "*"));
    EXPECT_FALSE(matchesPattern("SETUP.EX", "*.exe"));
    EXPECT_FALSE(matchesPattern("a", ""));
    EXPECT_FALSE(matchesPattern("a", "a?"));
    EXPECT_FALSE(matchesPattern(std::string(5000, 'a'), "*a*a*a*a*a*a*b"));
}

TEST(Text, TheDirectoryOfAPathEndsBeforeItsLastBackSlash) {
    EXPECT_EQ(splitDirectory("C:\\Games\\x.exe"), "C:\\Games");
    EXPECT_EQ(splitDirectory("C:\\a\\b\\x.exe"), "C:\\a\\b");
    EXPECT_EQ(splitDirectory("C:\\x.exe"), "");
    EXPECT_EQ(splitDirectory("x.exe"), "");
    EXPECT_EQ(splitDirectory("abc\\x.exe"), "abc");
    EXPECT_EQ(fileName("C:\\Games\\x.exe"), "x.exe");
    EXPECT_EQ(fileName("x.exe"), "x.exe");
    EXPECT_EQ(fileName("C:\\"), "");
}

}  // namespace
}  // namespace tessarel::text
