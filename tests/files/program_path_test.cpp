#include "host/files/program_path.h"

#include <gtest/gtest.h>

namespace tessarel::host {
namespace {

std::string read(const CurrentDirectories& from, std::string_view path) {
    const auto place = from.absolute(path);
    return place ? place->text() : "(none)";
}

TEST(ProgramPath, ARelativePathBeginsInTheCurrentDirectory) {
    CurrentDirectories directories;
    directories.move(*directories.absolute("C:\\Tessarel"));
    EXPECT_EQ(read(directories, "datacd\\1.CD"), "C:\\Tessarel\\datacd\\1.CD");
    EXPECT_EQ(read(directories, "\\WINDOWS"), "C:\\WINDOWS");
    EXPECT_EQ(read(directories, ""), "C:\\Tessarel");
}

TEST(ProgramPath, EachDriveKeepsItsOwnDirectory) {
    CurrentDirectories directories;
    directories.move(*directories.absolute("C:\\Tessarel"));
    directories.move(*directories.absolute("D:\\GAMES"));
    EXPECT_EQ(read(directories, "A.EXE"), "D:\\GAMES\\A.EXE");
    EXPECT_EQ(read(directories, "c:a.txt"), "C:\\Tessarel\\a.txt");
    EXPECT_EQ(read(directories, "C:"), "C:\\Tessarel");
}

TEST(ProgramPath, DotsNeverLeaveTheDrive) {
    const CurrentDirectories directories;
    EXPECT_EQ(read(directories, "C:\\a\\..\\..\\..\\etc\\passwd"), "C:\\etc\\passwd");
    EXPECT_EQ(read(directories, "C:\\.\\a\\.\\b\\"), "C:\\a\\b");
    EXPECT_EQ(read(directories, "C:/../../etc/passwd"), "C:\\etc\\passwd");
    EXPECT_EQ(read(directories, "..\\x/../../y"), "C:\\y");
}

TEST(ProgramPath, ANameWithASlashIsTakenApart) {
    const auto place = CurrentDirectories().absolute("Z:\\home/me\\x.cue");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->parts, (std::vector<std::string>{"home", "me", "x.cue"}));
}

TEST(ProgramPath, KnowsWhetherAFolderIsMeant) {
    const CurrentDirectories directories;
    EXPECT_TRUE(directories.absolute("C:\\a\\")->namesFolder);
    EXPECT_TRUE(directories.absolute("C:\\")->namesFolder);
    EXPECT_TRUE(directories.absolute("C:\\a\\..")->namesFolder);
    EXPECT_FALSE(directories.absolute("C:\\a")->namesFolder);
}

TEST(ProgramPath, TextThatCanNameNoFileIsNoPath) {
    const CurrentDirectories directories;
    EXPECT_EQ(read(directories, std::string_view("C:\\a\0b", 6)), "(none)");
    EXPECT_EQ(read(directories, "C:\\" + std::string(5000, 'x')), "(none)");
}

TEST(ProgramPath, OnlyALetterIsADrive) {
    const CurrentDirectories directories;
    EXPECT_EQ(read(directories, "1:\\a"), "C:\\1:\\a");
    EXPECT_EQ(read(directories, "\xC3\xA4:"), "C:\\\xC3\xA4:");
    EXPECT_TRUE(hasDriveRoot("z:\\"));
    EXPECT_FALSE(hasDriveRoot("z:"));
    EXPECT_FALSE(hasDriveRoot("\\z:\\"));
}

}  // namespace
}  // namespace tessarel::host
