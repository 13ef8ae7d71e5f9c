#include "app/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tessarel::app {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const Surroundings surroundings{"", "/home/ada", "/desk"};

Options parsed(const std::vector<std::string>& arguments) { return parseOptions(arguments, surroundings).value(); }
std::string refused(const std::vector<std::string>& arguments) {
    const auto options = parseOptions(arguments, surroundings);
    return options ? "accepted" : options.error().message;
}

TEST(Options, WithoutAnyTheHomeLiesInTheUsersDataFolder) {
    EXPECT_EQ(parsed({}).home, "/home/ada/.local/share/tessarel");
    EXPECT_THAT(parsed({}).words, IsEmpty());
}

TEST(Options, TheDesktopsDataFolderTakesPrecedenceUnlessItIsRelative) {
    EXPECT_EQ(parseOptions({}, {"/data", "/home/ada", "/desk"}).value().home, "/data/tessarel");
    EXPECT_EQ(parseOptions({}, {"data", "/home/ada", "/desk"}).value().home, "/home/ada/.local/share/tessarel");
}

TEST(Options, AHomeIsTakenFromTheNextArgumentOrFromBehindAnEqualsSign) {
    EXPECT_EQ(parsed({"--home", "/a b"}).home, "/a b");
    EXPECT_EQ(parsed({"--home=/a=b"}).home, "/a=b");
    EXPECT_EQ(parsed({"--home", "there/../here"}).home, "/desk/here");
}

TEST(Options, ImagesAreInsertedInTheOrderGiven) {
    const auto options = parsed({"--insert", "e=a.cue", "--insert=D=/discs/b.iso"});
    EXPECT_THAT(options.insertions, ElementsAre(Insertion{'E', "/desk/a.cue"}, Insertion{'D', "/discs/b.iso"}));
}

TEST(Options, AnImagesNameMayHoldAnEqualsSign) {
    EXPECT_THAT(parsed({"--insert", "E=a=b.cue"}).insertions, ElementsAre(Insertion{'E', "/desk/a=b.cue"}));
}

TEST(Options, SwitchesAreSeen) {
    EXPECT_TRUE(parsed({"--help"}).help);
    EXPECT_TRUE(parsed({"--version"}).version);
    EXPECT_TRUE(parsed({"--list-drives"}).listDrives);
    EXPECT_FALSE(parsed({}).help || parsed({}).version || parsed({}).listDrives);
}

TEST(Options, WhatIsLeftOverBelongsToTheProgram) {
    EXPECT_THAT(parsed({"AUDIOCD", "--home=/x", "-y", "more"}).words, ElementsAre("AUDIOCD", "-y", "more"));
}

TEST(Options, TwoHyphensAloneEndTheOptions) {
    EXPECT_THAT(parsed({"a", "--", "--help", "--"}).words, ElementsAre("a", "--help", "--"));
    EXPECT_FALSE(parsed({"--", "--help"}).help);
}

TEST(Options, AnUnknownOneIsRefusedByItsName) {
    EXPECT_THAT(refused({"--frobnicate"}), HasSubstr("--frobnicate"));
    EXPECT_THAT(refused({"--frobnicate=3"}), HasSubstr("no option --frobnicate."));
    EXPECT_THAT(refused({"--="}), HasSubstr("no option"));
}

TEST(Options, AMissingValueIsRefused) {
    EXPECT_THAT(refused({"--home"}), HasSubstr("--home wants a value"));
    EXPECT_THAT(refused({"--home="}), HasSubstr("--home wants a value"));
    EXPECT_THAT(refused({"--home", ""}), HasSubstr("--home wants a value"));
    EXPECT_THAT(refused({"--insert"}), HasSubstr("--insert wants a value"));
}

TEST(Options, ASwitchTakesNoValue) { EXPECT_THAT(refused({"--help=yes"}), HasSubstr("takes no value")); }

TEST(Options, AnInsertionNeedsALetterAndAFile) {
    for (const char* wrong : {"E", "E=", "EE=a.cue", "1=a.cue", "=a.cue", "a.cue", "{=a.cue"}) {
        EXPECT_THAT(refused({"--insert", wrong}), HasSubstr("drive letter")) << wrong;
    }
}

TEST(Options, TheHelpTextNamesEveryOption) {
    for (const char* option : {"--home DIR", "--insert LETTER=IMAGE", "--list-drives", "--help", "--version", "\n  -- "}) {
        EXPECT_THAT(helpText(), HasSubstr(option));
    }
}

class CommandLineTest : public ::testing::Test {
protected:
    CommandLine line(const std::vector<std::string>& words) {
        return commandLine(
            words, "/desk",
            {[](const std::string& path) {
                 return std::set<std::string>{"/desk/disc.cue", "/desk/two.iso", "/bin/tool.exe", "/desk/a b.exe",
                                              "/desk/AUDIOCD"}
                     .contains(path);
             },
             [](const std::string& path) { return path.ends_with(".cue") || path.ends_with(".iso"); },
             [](const std::string& path) { return "Z:" + path; },
             [](const std::string& folder) { return std::string(folder == "/media/stick" ? "/media/stick/a.cue" : ""); }});
    }
};

TEST_F(CommandLineTest, WordsAreJoinedByBlanks) {
    EXPECT_EQ(line({}).text, "");
    EXPECT_EQ(line({"CDROMLIB"}).text, "CDROMLIB");
    EXPECT_EQ(line({"C:\\my", "file.mid"}).text, "C:\\my file.mid");
}

TEST_F(CommandLineTest, ARealFileBecomesAPathOfTheProgram) {
    EXPECT_EQ(line({"/bin/tool.exe"}).text, "Z:/bin/tool.exe");
    EXPECT_EQ(line({"../bin/tool.exe"}).text, "Z:/bin/tool.exe");
    EXPECT_EQ(line({"a b.exe"}).text, "Z:/desk/a b.exe");
}

TEST_F(CommandLineTest, AFileThatIsNotThereIsPassedOnAsItStands) {
    EXPECT_EQ(line({"/bin/other.exe"}).text, "/bin/other.exe");
    EXPECT_EQ(line({"missing.cue"}).text, "missing.cue");
    EXPECT_EQ(line({""}).text, "");
}

TEST_F(CommandLineTest, ADiscImageIsTakenOut) {
    const auto result = line({"disc.cue", "AUDIO"});
    EXPECT_EQ(result.text, "AUDIO");
    EXPECT_THAT(result.images, ElementsAre("/desk/disc.cue"));
    EXPECT_THAT(line({"AUDIO"}).images, IsEmpty());
}

TEST_F(CommandLineTest, AllDiscImagesAreTakenOutInTheirOrder) {
    const auto result = line({"disc.cue", "two.iso"});
    EXPECT_THAT(result.images, ElementsAre("/desk/disc.cue", "/desk/two.iso"));
    EXPECT_EQ(result.text, "");
}

TEST_F(CommandLineTest, AnAddressOfAFileIsItsPath) {
    for (const auto* address : {"file:///desk/disc.cue", "file://localhost/desk/disc.cue", "file:/desk/disc.cue",
                                "file:///desk/d%69sc%2Ecue", "file:///desk/dis%63.cu%65"}) {
        EXPECT_THAT(line({address}).images, ElementsAre("/desk/disc.cue")) << address;
    }
    EXPECT_EQ(line({"file:///desk/a%20b.exe"}).text, "Z:/desk/a b.exe");
}

TEST_F(CommandLineTest, AnAddressOfNothingHereIsPassedOnAsItStands) {
    for (const auto* address : {"file:///desk/none.cue", "file://elsewhere/desk/disc.cue", "http://localhost/desk/disc.cue",
                                "file:///desk/disc.cue%", "file:///desk/disc.cue%2", "file:///desk/disc.cue%zz", "file:"}) {
        EXPECT_THAT(line({address}).images, IsEmpty()) << address;
        EXPECT_EQ(line({address}).text, address);
    }
}

TEST_F(CommandLineTest, AFolderIsTheFirstImageInIt) {
    EXPECT_THAT(line({"/media/stick"}).images, ElementsAre("/media/stick/a.cue"));
    EXPECT_THAT(line({"../media/stick"}).images, ElementsAre("/media/stick/a.cue"));
    EXPECT_THAT(line({"file:///media/stick"}).images, ElementsAre("/media/stick/a.cue"));
    EXPECT_EQ(line({"/media/other"}).text, "/media/other");
    EXPECT_EQ(line({"AUDIO"}).text, "AUDIO") << "a word is never taken for a folder";
}

TEST_F(CommandLineTest, TheDiscInADriveIsAskedForByItsAddress) {
    EXPECT_TRUE(line({"cdda://sr0/"}).discInDrive);
    EXPECT_EQ(line({"cdda://sr0/"}).text, "");
    EXPECT_FALSE(line({"disc.cue"}).discInDrive);
}

}  // namespace
}  // namespace tessarel::app
