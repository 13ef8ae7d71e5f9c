#include "host/files/command_line.h"

#include <gmock/gmock.h>

namespace tessarel::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CommandLine, AQuotedProgramHasOneReading) {
    EXPECT_THAT(programCalls("\"C:\\Program Files\\a.exe\"  b \"c d\" "),
                ElementsAre(ProgramCall{"C:\\Program Files\\a.exe", "b \"c d\""}));
    EXPECT_THAT(programCalls("\"C:\\a.exe"), ElementsAre(ProgramCall{"C:\\a.exe", ""}));
    EXPECT_THAT(programCalls("\"\""), ElementsAre(ProgramCall{"", ""}));
    EXPECT_THAT(programCalls("\""), ElementsAre(ProgramCall{"", ""}));
}

TEST(CommandLine, AnUnquotedProgramMayEndAtAnyBlank) {
    EXPECT_THAT(programCalls(" C:\\My Files\\a.exe  x"),
                ElementsAre(ProgramCall{"C:\\My", "Files\\a.exe  x"}, ProgramCall{"C:\\My Files\\a.exe", "x"},
                            ProgramCall{"C:\\My Files\\a.exe  x", ""}));
    EXPECT_THAT(programCalls("  "), IsEmpty());
    EXPECT_THAT(programCalls(""), IsEmpty());
    EXPECT_LT(programCalls(std::string(100'000, ' ') + "a" + std::string(1000, ' ') + "b").size(), 3U);
}

TEST(CommandLine, ManyWordsDoNotMakeManyReadings) {
    std::string line;
    for (int i = 0; i < 10'000; ++i) {
        line += "w ";
    }
    EXPECT_LT(programCalls(line).size(), 70U);
}

TEST(CommandLine, QuotesKeepAnArgumentTogether) {
    EXPECT_THAT(splitArguments("a  \"b c\" d\"e f\"g \"\""), ElementsAre("a", "b c", "de fg", ""));
    EXPECT_THAT(splitArguments(""), IsEmpty());
    EXPECT_THAT(splitArguments(" \t "), IsEmpty());
    EXPECT_THAT(splitArguments("\"open end"), ElementsAre("open end"));
}

TEST(CommandLine, TellsAddressesFromPaths) {
    EXPECT_TRUE(isWebAddress("http://example.org/"));
    EXPECT_TRUE(isWebAddress("MAILTO:me@example.org"));
    EXPECT_FALSE(isWebAddress("C:\\a.exe"));
    EXPECT_FALSE(isWebAddress("a.exe"));
    EXPECT_FALSE(isWebAddress(""));
}

std::string header(std::string_view newHeader) {
    std::string bytes(64, '\0');
    bytes.replace(0, 2, "MZ");
    bytes[0x3C] = static_cast<char>(0x80);
    bytes.resize(0x80);
    return bytes.append(newHeader);
}

TEST(ProgramKind, AnMzFileWithANewerHeaderIsAWindowsProgram) {
    for (const auto* mark : {"PE", "NE"}) {
        const auto bytes = header(mark);
        ASSERT_EQ(newHeaderOffset(bytes.substr(0, 64)), 0x80U);
        EXPECT_EQ(programKind("a.exe", bytes, bytes.substr(0x80, 2)), ProgramKind::windows);
    }
}

TEST(ProgramKind, AnMzFileWithoutOneIsADosProgram) {
    EXPECT_EQ(programKind("a.exe", header("LE"), "LE"), ProgramKind::dos);
    EXPECT_EQ(programKind("a.exe", "MZ", ""), ProgramKind::dos);
    EXPECT_EQ(newHeaderOffset("MZ"), 0U);
    EXPECT_EQ(newHeaderOffset(""), 0U);
    EXPECT_EQ(newHeaderOffset(std::string(64, 'x')), 0U);
}

TEST(ProgramKind, TheHeaderCountsForMoreThanTheName) {
    EXPECT_EQ(programKind("notepad.exe", "#!/bin/sh\n", ""), ProgramKind::script);
    EXPECT_EQ(programKind("a.com",
                          "\x7F"
                          "ELF",
                          ""),
              ProgramKind::native);
    EXPECT_EQ(programKind("readme.txt", "MZ", "PE"), ProgramKind::windows);
}

TEST(ProgramKind, WithoutAHeaderTheNameDecides) {
    EXPECT_EQ(programKind("A.COM", "\xE9", ""), ProgramKind::dos);
    EXPECT_EQ(programKind("a.Bat", "@echo off", ""), ProgramKind::dos);
    EXPECT_EQ(programKind("a.exe", "hello", ""), ProgramKind::unknown);
    EXPECT_EQ(programKind("a.htm", "<html>", ""), ProgramKind::document);
    EXPECT_EQ(programKind("a.txt", "", ""), ProgramKind::document);
    EXPECT_EQ(programKind("a", "", ""), ProgramKind::document);
}

TEST(ProgramKind, AScriptNamesItsInterpreterAndOneArgument) {
    EXPECT_THAT(scriptInterpreter("#!/bin/sh\nrest"), ElementsAre("/bin/sh"));
    EXPECT_THAT(scriptInterpreter("#! /usr/bin/env  python3 -u\r\n"), ElementsAre("/usr/bin/env", "python3 -u"));
    EXPECT_THAT(scriptInterpreter("#!"), IsEmpty());
    EXPECT_THAT(scriptInterpreter("no"), IsEmpty());
}

}  // namespace
}  // namespace tessarel::host
