#include "audio/enhanced_disc.h"

#include <gtest/gtest.h>

#include "tests/fakes/memory_file_system.h"

namespace tessarel::audio {
namespace {

using Found = std::optional<std::string>;

TEST(AutorunFile, NamesTheProgramOfTheFirstOpenLineBehindItsSection) {
    EXPECT_EQ(autorunProgram("[AUTORUN]\r\nICON=a.ico\r\nOPEN=menu.exe\r\nOPEN=other.exe\r\n"), Found("menu.exe"));
    EXPECT_EQ(autorunProgram("[autorun]\nopen=Menu.exe"), Found("Menu.exe"));
    EXPECT_EQ(autorunProgram("  [AutoRun]  \r\n  Open= menu.exe \r\n"), Found("menu.exe"));
}

TEST(AutorunFile, AnOpenLineBeforeTheSectionDoesNotCount) {
    EXPECT_EQ(autorunProgram("OPEN=early.exe\r\n[AUTORUN]\r\n"), Found());
    EXPECT_EQ(autorunProgram("OPEN=early.exe\r\n"), Found());
    EXPECT_EQ(autorunProgram("[AUTORUN.ALPHA]\r\nOPEN=early.exe\r\n"), Found());
}

TEST(AutorunFile, WithoutTextThereIsNoProgram) {
    EXPECT_EQ(autorunProgram(""), Found());
    EXPECT_EQ(autorunProgram("[AUTORUN]\r\nOPEN=\r\n"), Found(""));
}

struct EnhancedDisc : testing::Test {
    fakes::MemoryFileSystem files;
    Found program() { return enhancedProgram(files, "D:\\"); }
};

TEST_F(EnhancedDisc, TheProgramOfItsAutorunFileComesFirst) {
    files.put("D:\\AUTORUN.INF", "[AUTORUN]\r\nOPEN=DATA\\SHOW.EXE\r\n");
    files.put("D:\\DATA\\SHOW.EXE");
    files.put("D:\\PROGRAM.EXE");
    EXPECT_EQ(program(), Found("D:\\DATA\\SHOW.EXE"));
}

TEST_F(EnhancedDisc, AnAutorunFileThatNamesAMissingFileMovesOnToTheUsualNames) {
    files.put("D:\\AUTORUN.INF", "[AUTORUN]\r\nOPEN=gone.exe\r\n");
    files.put("D:\\PLAY.EXE");
    EXPECT_EQ(program(), Found("D:\\play.exe"));
}

TEST_F(EnhancedDisc, AnAutorunFileThatNamesNothingMovesOn) {
    files.put("D:\\AUTORUN.INF", "[AUTORUN]\r\nOPEN=\r\n");
    files.put("D:\\RUN.EXE");
    EXPECT_EQ(program(), Found("D:\\run.exe"));
}

TEST_F(EnhancedDisc, TheUsualNamesAreTriedInTheirOrder) {
    for (const auto* name : {"launch.exe", "runme32.exe", "start.exe", "play.exe", "run.exe", "program.exe"}) {
        files.put(std::string("D:\\") + name);
        EXPECT_EQ(program(), Found(std::string("D:\\") + name));
    }
}

TEST_F(EnhancedDisc, OtherwiseTheFirstProgramInTheRootIsTaken) {
    files.put("D:\\README.TXT");
    files.put("D:\\ZEBRA.EXE");
    files.put("D:\\APPLE.EXE");
    EXPECT_EQ(program(), Found("D:\\ZEBRA.EXE")) << "in the disc's own order";
}

TEST_F(EnhancedDisc, ADiscWithoutAProgramHasNone) {
    files.put("D:\\README.TXT");
    files.put("D:\\DATA\\SHOW.EXE");
    EXPECT_EQ(program(), Found());
}

TEST_F(EnhancedDisc, AnUnreadyDriveHasNone) {
    files.drive('D').ready = false;
    EXPECT_EQ(program(), Found());
}

}  // namespace
}  // namespace tessarel::audio
