#include "tests/fakes/world.h"

#include <gtest/gtest.h>

namespace tessarel::fakes {
namespace {

using Names = std::vector<std::string>;

TEST(MemoryFiles, NamesAreFoundInAnyCaseAndKeepTheirSpelling) {
    MemoryFileSystem files;
    files.put("C:\\Tessarel\\TslWin1.INI", "x");
    EXPECT_TRUE(files.exists("c:\\TESSAREL\\tslwin1.ini"));
    EXPECT_TRUE(files.write("c:\\tessarel\\TSLWIN1.ini", "y"));
    EXPECT_EQ(files.spelling("C:\\Tessarel\\tslwin1.ini"), "C:\\Tessarel\\TslWin1.INI");
    EXPECT_EQ(files.bytes("C:\\Tessarel\\tslwin1.ini"), "y");
}

TEST(MemoryFiles, ARelativePathStartsInTheCurrentDirectory) {
    MemoryFileSystem files;
    EXPECT_TRUE(files.changeDirectory("c:\\tessarel"));
    EXPECT_TRUE(files.write("a.txt", "1"));
    EXPECT_EQ(files.bytes("C:\\Tessarel\\a.txt"), "1");
    EXPECT_FALSE(files.changeDirectory("C:\\nowhere"));
    EXPECT_EQ(files.currentDirectory(), "C:\\Tessarel");
}

TEST(MemoryFiles, AListingKeepsTheOrderAndObeysTheAttributes) {
    MemoryFileSystem files;
    files.put("E:\\zeta.txt");
    files.put("E:\\secret.txt", "", platform::attributeHidden);
    files.putFolder("E:\\FOLDER");
    files.put("E:\\alpha.txt");
    files.drive('E').label = "LABEL";
    EXPECT_EQ(*files.list("E:\\*.*", 0), (Names{"zeta.txt", "alpha.txt"}));
    EXPECT_EQ(*files.list("E:\\", 22), (Names{"zeta.txt", "secret.txt", "FOLDER", "alpha.txt"}));
    EXPECT_EQ(files.first("E:\\", platform::attributeVolume), "LABEL");
    files.drive('E').ready = false;
    EXPECT_EQ(files.list("E:\\", 0).error().fault, Fault::notReady);
    EXPECT_EQ(files.list("Q:\\", 0).error().fault, Fault::notReady);
}

TEST(MemoryFiles, AFailedWriteLeavesTheOldFile) {
    MemoryFileSystem files;
    files.put("C:\\Tessarel\\a", "old");
    files.failWrites = Fault::full;
    EXPECT_EQ(files.write("C:\\Tessarel\\a", "new").error().fault, Fault::full);
    EXPECT_EQ(files.bytes("C:\\Tessarel\\a"), "old");
}

TEST(FakeWorld, StartedProgramsBeginInTheCurrentDirectory) {
    World world;
    world.files.changeDirectory("C:\\Tessarel");
    ASSERT_TRUE(world.context.processes.start("cdsetup.exe", platform::WindowStyle::normal));
    EXPECT_EQ(world.processes.started.front(), (StartedProgram{"cdsetup.exe", "C:\\Tessarel", platform::WindowStyle::normal}));
}

}  // namespace
}  // namespace tessarel::fakes
