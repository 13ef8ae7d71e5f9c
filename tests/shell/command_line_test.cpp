#include "shell/command_line.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace tessarel::shell {
namespace {

TEST(CommandLine, EveryMediaEndingAndEveryRunModeWordBecomesTheRunModeInCapitals) {
    for (const auto* ending : {"avi", "mmm", "mov", "dat", "m1v", "mpa", "mpe", "mp1", "mp2", "mp3", "mpg",
                               "wav", "mid", "rmi", "lib", "ocd", "ite", "dia", ".au", "iff", ".qt", "snd"}) {
        const auto path = std::string("C:\\My Music\\file") + ending;
        EXPECT_EQ(parseCommandLine(path), (CommandLine{text::upper(path), "", 0})) << ending;
    }
    for (const auto* word : {"CDROMLIB", "RDLIB", "AUDIOCD", "CDLITE", "MEDIA"}) {
        EXPECT_EQ(parseCommandLine(word).runMode, word);
    }
}

TEST(CommandLine, AProgramIsToBeStartedInstead) {
    for (const auto* path : {"C:\\run.exe", "D:\\A B\\x.COM", "go.bat"}) {
        EXPECT_EQ(parseCommandLine(std::string("  ") + path + " "), (CommandLine{"", path, 0}));
    }
}

TEST(CommandLine, WithoutAnArgumentNothingIsAskedFor) {
    EXPECT_EQ(parseCommandLine(""), CommandLine{});
    EXPECT_EQ(parseCommandLine("    "), CommandLine{});
}

TEST(CommandLine, AnyOtherEndingIsIgnored) {
    for (const auto* text : {"AUDIOCD1", "MAINMENU", "C:\\notes.txt", "au", "a.qtx", "x", "LIB ARY", "\xFF\xFE\xFD"}) {
        EXPECT_EQ(parseCommandLine(text), CommandLine{}) << text;
    }
}

TEST(CommandLine, TheTrackFileOfTrackSevenIsTrackSeven) {
    EXPECT_EQ(parseCommandLine("D:\\TRACK07.CDA"), (CommandLine{"AUDIOCD1", "", 7}));
    EXPECT_EQ(parseCommandLine("d:\\track12.cda"), (CommandLine{"AUDIOCD1", "", 12}));
}

TEST(CommandLine, ATrackFileElsewhereHasItsNumberAtTheSeventeenthCharacter) {
    EXPECT_EQ(parseCommandLine("C:\\AUDIO\\DISC_A.11.CDA").commandTrack, 11);
    EXPECT_EQ(parseCommandLine("C:\\DESKTOP\\TRACK05.CDA").commandTrack, 5);
    EXPECT_EQ(parseCommandLine("C:\\MUSIC\\TRACK05.CDA").commandTrack, 0);
}

TEST(CommandLine, BlanksBeforeATrackFileShiftItsNumberAway) {
    EXPECT_EQ(parseCommandLine(" D:\\TRACK07.CDA"), (CommandLine{"AUDIOCD1", "", 0}));
}

TEST(CommandLine, ATrackFileTooShortForANumberIsTrackZero) {
    EXPECT_EQ(parseCommandLine("CDA"), (CommandLine{"AUDIOCD1", "", 0}));
    EXPECT_EQ(parseCommandLine("D:\\TRACK99999999.CDA").commandTrack, 32767);
}

}  // namespace
}  // namespace tessarel::shell
