#include "base/sequential_file.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tessarel {
namespace {

TEST(SequentialReading, TakesTextInQuotesAndNumbersBare) {
    SequentialReader in("\"a, b\"\r\n12\r\n-7\r\n.5\r\n");
    EXPECT_EQ(in.text(), "a, b");
    EXPECT_EQ(in.integer(), 12);
    EXPECT_EQ(in.longInteger(), -7);
    EXPECT_EQ(in.single(), 0.5F);
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(in.text(), std::nullopt);
}

TEST(SequentialReading, TextNeedsNoQuotes) {
    SequentialReader in("C:\\My Files \r\nnext,third\n");
    EXPECT_EQ(in.text(), "C:\\My Files");
    EXPECT_EQ(in.text(), "next");
    EXPECT_EQ(in.text(), "third");
}

TEST(SequentialReading, QuotedTextMayHoldLineBreaks) {
    SequentialReader in("\"one\r\ntwo\"\r\n\"three\"");
    EXPECT_EQ(in.text(), "one\r\ntwo");
    EXPECT_EQ(in.text(), "three");
}

TEST(SequentialReading, AQuoteLeftOpenRunsToTheEnd) {
    SequentialReader in("\"one\r\n2\r\n");
    EXPECT_EQ(in.text(), "one\r\n2\r\n");
    EXPECT_TRUE(in.atEnd());
}

TEST(SequentialReading, EmptyLinesAreEmptyValues) {
    SequentialReader in("\r\n\"\"\r\n\r\n");
    EXPECT_EQ(in.variant(), (Variant{"", false}));
    EXPECT_EQ(in.variant(), (Variant{"", true}));
    EXPECT_EQ(in.integer(), 0);
    EXPECT_TRUE(in.atEnd());
}

TEST(SequentialReading, LineEndsOfAnyKindDoAndTheOldEndMarkEndsTheFile) {
    SequentialReader in(
        "1\n2\r3\r\n4\x1A"
        "5\r\n");
    for (const int expected : {1, 2, 3, 4}) {
        EXPECT_EQ(in.integer(), expected);
    }
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(in.integer(), std::nullopt);
}

TEST(SequentialReading, AWordIsZeroWhereANumberBelongs) {
    SequentialReader in("word\r\n\"5\"\r\n");
    EXPECT_EQ(in.integer(), 0);
    EXPECT_EQ(in.integer(), 5);
}

TEST(SequentialReading, AfterANumberOutsideItsTypeNothingMoreIsRead) {
    SequentialReader in("32767\r\n-32768\r\n32768\r\n1\r\n");
    EXPECT_EQ(in.integer(), 32767);
    EXPECT_EQ(in.integer(), -32768);
    EXPECT_EQ(in.integer(), std::nullopt);
    EXPECT_EQ(in.text(), std::nullopt);
    SequentialReader longs("2147483647\r\n2147483648\r\n1\r\n");
    EXPECT_EQ(longs.longInteger(), 2147483647);
    EXPECT_EQ(longs.longInteger(), std::nullopt);
    EXPECT_EQ(longs.integer(), std::nullopt);
}

TEST(SequentialReading, IntegersAreRoundedHalfToEven) {
    SequentialReader in("2.5\r\n3.5\r\n-2.5\r\n");
    EXPECT_EQ(in.integer(), 2);
    EXPECT_EQ(in.integer(), 4);
    EXPECT_EQ(in.integer(), -2);
}

TEST(SequentialReading, AFieldKeepsItsValueOnceTheFileHasEnded) {
    SequentialReader in("1\r\n");
    std::int16_t first = 9;
    std::string second = "old";
    EXPECT_TRUE(in.into(first));
    EXPECT_FALSE(in.into(second));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, "old");
}

TEST(SequentialWriting, PutsEachValueOnALineOfItsOwn) {
    SequentialWriter out;
    out.text("a, b").number(-5).variant(Variant::number(7)).variant({"x", true}).text("");
    EXPECT_EQ(out.bytes(), "\"a, b\"\r\n-5\r\n7\r\n\"x\"\r\n\"\"\r\n");
}

TEST(SequentialWriting, FractionsStandWithoutTheirLeadingZero) {
    SequentialWriter out;
    out.single(1).single(1.5F).single(0.5F).single(-0.25F).single(0).single(-2);
    EXPECT_EQ(out.bytes(), "1\r\n1.5\r\n.5\r\n-.25\r\n0\r\n-2\r\n");
}

TEST(SequentialWriting, WhatIsWrittenIsReadBack) {
    SequentialWriter out;
    out.text("line\r\nbreak").single(0.1F).number(2147483647);
    SequentialReader in(out.bytes());
    EXPECT_EQ(in.text(), "line\r\nbreak");
    EXPECT_EQ(in.single(), 0.1F);
    EXPECT_EQ(in.longInteger(), 2147483647);
}

}  // namespace
}  // namespace tessarel
