#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <thread>

#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using platform::attributeDirectory;
using platform::attributeHidden;
using platform::attributeSystem;
using platform::attributeVolume;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RealFilesTest : public FilesTest {};

TEST_F(RealFilesTest, NamesAreFoundWithoutRegardToCase) {
    put(driveC / "Tessarel" / "TSLWIN1.INI", "one");
    EXPECT_EQ(bytesOf("c:\\TESSAREL\\tslwin1.ini"), "one");
    EXPECT_TRUE(files->exists("C:\\tessarel\\TslWin1.ini"));
    EXPECT_TRUE(files->directoryExists("C:\\tEssarel"));
    EXPECT_FALSE(files->exists("C:\\Tessarel\\TSLWIN9.INI"));
}

TEST_F(RealFilesTest, LettersBeyondAsciiFoldToo) {
    put(driveC / "\xC3\x84pfel.txt", "x");  // capital A with dots
    EXPECT_TRUE(files->exists("C:\\\xC3\xA4PFEL.TXT"));
}

TEST_F(RealFilesTest, OfTwoNamesThatDifferInCaseTheExactOneWins) {
    put(driveC / "a.txt", "small");
    put(driveC / "A.TXT", "capital");
    EXPECT_EQ(bytesOf("C:\\a.txt"), "small");
    EXPECT_EQ(bytesOf("C:\\A.TXT"), "capital");
    EXPECT_EQ(bytesOf("C:\\A.txt"), "capital");  // neither: the first in byte order
    EXPECT_EQ(bytesOf("C:\\A.txt"), bytesOf("C:\\a.TXT"));
}

TEST_F(RealFilesTest, ANameMadeByAnotherProgramIsSeenAtOnce) {
    put(driveC / "first.txt", "");
    EXPECT_FALSE(files->exists("C:\\SECOND.TXT"));
    put(driveC / "second.txt", "");
    EXPECT_TRUE(files->exists("C:\\SECOND.TXT"));
    fs::remove(driveC / "second.txt");
    EXPECT_FALSE(files->exists("C:\\SECOND.TXT"));
}

TEST_F(RealFilesTest, ANameThatIsNotUtf8IsListedAndOpened) {
    put(driveC / "caf\xE9.txt", "coffee");
    EXPECT_THAT(listed("C:\\"), ElementsAre("caf\xC3\xA9.txt"));
    EXPECT_EQ(bytesOf("C:\\CAF\xC3\xA9.TXT"), "coffee");
    EXPECT_FALSE(files->exists("C:\\caf\xFF.txt"));
}

TEST_F(RealFilesTest, TheCurrentDirectoryIsWhereRelativeNamesBegin) {
    put(driveC / "Tessarel" / "datacd" / "1.CD", "disc");
    EXPECT_EQ(files->currentDirectory(), "C:\\");
    EXPECT_TRUE(files->changeDirectory("C:\\Tessarel"));
    EXPECT_TRUE(files->changeDirectory("datacd"));
    EXPECT_EQ(files->currentDirectory(), "C:\\Tessarel\\datacd");
    EXPECT_EQ(bytesOf("1.cd"), "disc");
    EXPECT_FALSE(files->changeDirectory("C:\\nowhere"));
    EXPECT_FALSE(files->changeDirectory("1.CD"));
    EXPECT_FALSE(files->changeDirectory("Q:\\"));
    EXPECT_EQ(files->currentDirectory(), "C:\\Tessarel\\datacd");
}

TEST_F(RealFilesTest, ADriveAloneReturnsToItsDirectory) {
    fs::create_directories(driveC / "Tessarel");
    ASSERT_TRUE(files->changeDirectory("C:\\Tessarel"));
    ASSERT_TRUE(files->changeDirectory("Z:\\"));
    ASSERT_TRUE(files->changeDirectory("C:"));
    EXPECT_EQ(files->currentDirectory(), "C:\\Tessarel");
    ASSERT_TRUE(files->changeDirectory("Z:"));
    fs::remove(driveC / "Tessarel");
    ASSERT_TRUE(files->changeDirectory("c:"));
    EXPECT_EQ(files->currentDirectory(), "C:\\");
}

TEST_F(RealFilesTest, NoPathLeavesTheDrive) {
    put(temp.path / "secret.txt", "secret");
    for (const auto* path : {"C:\\..\\..\\secret.txt", "C:\\../../secret.txt", "..\\..\\secret.txt", "C:/..\\../secret.txt"}) {
        EXPECT_FALSE(files->exists(path)) << path;
        EXPECT_FALSE(files->read(path)) << path;
        EXPECT_TRUE(files->write(path, "mine")) << path;
        EXPECT_EQ(get(temp.path / "secret.txt"), "secret") << path;
        EXPECT_TRUE(fs::remove(driveC / "secret.txt")) << path;
    }
}

TEST_F(RealFilesTest, ListsSortedWithoutRegardToCase) {
    for (const auto* name : {"b.txt", "A.txt", "C.TXT", ".dot", "sub/x"}) {
        put(driveC / name, "");
    }
    EXPECT_THAT(listed("C:\\"), ElementsAre("A.txt", "b.txt", "C.TXT"));
    EXPECT_THAT(listed("C:\\*.TXT"), ElementsAre("A.txt", "b.txt", "C.TXT"));
    EXPECT_THAT(listed("C:\\?.txt"), ElementsAre("A.txt", "b.txt", "C.TXT"));
    EXPECT_THAT(listed("C:\\", attributeHidden), ElementsAre(".dot", "A.txt", "b.txt", "C.TXT"));
    EXPECT_THAT(listed("C:\\", attributeDirectory), ElementsAre("A.txt", "b.txt", "C.TXT", "sub"));
    EXPECT_THAT(listed("C:\\", attributeDirectory | attributeHidden | attributeSystem),
                ElementsAre(".dot", "A.txt", "b.txt", "C.TXT", "sub"));
    EXPECT_THAT(listed("C:\\nowhere\\"), IsEmpty());
    EXPECT_THAT(listed("C:\\a.txt\\"), IsEmpty());
    EXPECT_THAT(listed("C:\\", attributeVolume), IsEmpty());
}

TEST_F(RealFilesTest, AFolderNamedWithoutABackSlashIsOneName) {
    fs::create_directories(driveC / "Tessarel");
    EXPECT_THAT(listed("C:\\tessarel", attributeDirectory), ElementsAre("Tessarel"));
    EXPECT_THAT(listed("C:\\tessarel"), IsEmpty());
    EXPECT_EQ(files->first("C:\\TESSAREL", attributeDirectory), "Tessarel");
    EXPECT_THAT(listed("C:", attributeDirectory), ElementsAre("Tessarel"));
}

TEST_F(RealFilesTest, ListsNothingThatIsNeitherFileNorFolder) {
    put(driveC / "back\\slash.txt", "");
    ASSERT_EQ(::mkfifo((driveC / "pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", driveC / "dangling");
    put(driveC / "file.txt", "");
    fs::create_symlink("file.txt", driveC / "link.txt");
    EXPECT_THAT(listed("C:\\", attributeDirectory), ElementsAre("file.txt", "link.txt"));
    EXPECT_FALSE(files->exists("C:\\pipe"));
    EXPECT_FALSE(files->exists("C:\\dangling"));
}

TEST_F(RealFilesTest, ADriveThatIsNotThereIsNotFound) {
    const auto names = files->list("Q:\\", 0);
    ASSERT_FALSE(names);
    EXPECT_EQ(names.error().fault, Fault::notFound);
    EXPECT_EQ(faultOfReading("Q:\\a.txt"), Fault::notFound);
    EXPECT_FALSE(files->write("Q:\\a.txt", ""));
    EXPECT_FALSE(files->remove("Q:\\a.txt"));
    EXPECT_EQ(files->first("Q:\\"), "");
}

TEST_F(RealFilesTest, WritingKeepsTheSpellingAndThePermissionsOfTheOldFile) {
    put(driveC / "TslWin4.Ini", "old");
    fs::permissions(driveC / "TslWin4.Ini", fs::perms(0640));
    ASSERT_TRUE(files->write("C:\\TSLWIN4.INI", "new"));
    EXPECT_THAT(namesIn(driveC), ElementsAre("TslWin4.Ini"));
    EXPECT_EQ(get(driveC / "TslWin4.Ini"), "new");
    EXPECT_EQ(fs::status(driveC / "TslWin4.Ini").permissions(), fs::perms(0640));
}

TEST_F(RealFilesTest, AnyBytesComeBackAsTheyWereWritten) {
    const std::string bytes("\0\x1A\xFF\r\n,\"", 7);
    ASSERT_TRUE(files->write("C:\\a.bin", bytes));
    EXPECT_EQ(bytesOf("C:\\a.bin"), bytes);
    ASSERT_TRUE(files->write("C:\\a.bin", ""));
    EXPECT_EQ(bytesOf("C:\\a.bin"), "");
}

TEST_F(RealFilesTest, WritingGoesThroughALinkToItsTarget) {
    put(temp.path / "elsewhere" / "real.ini", "old");
    fs::create_symlink(temp.path / "elsewhere" / "real.ini", driveC / "LINK.INI");
    fs::create_symlink("made.ini", driveC / "dangling.ini");
    ASSERT_TRUE(files->write("C:\\link.ini", "new"));
    ASSERT_TRUE(files->write("C:\\dangling.ini", "made"));
    EXPECT_TRUE(fs::is_symlink(driveC / "LINK.INI"));
    EXPECT_EQ(get(temp.path / "elsewhere" / "real.ini"), "new");
    EXPECT_EQ(get(driveC / "made.ini"), "made");
    EXPECT_TRUE(fs::is_symlink(driveC / "dangling.ini"));
}

TEST_F(RealFilesTest, LinksInACircleAreRefused) {
    fs::create_symlink("b.ini", driveC / "a.ini");
    fs::create_symlink("a.ini", driveC / "b.ini");
    fs::create_directory_symlink(".", driveC / "self");
    EXPECT_EQ(faultOfReading("C:\\a.ini"), Fault::invalid);
    EXPECT_FALSE(files->exists("C:\\a.ini"));
    EXPECT_FALSE(files->directoryExists("C:\\A.INI\\x"));
    const auto written = files->write("C:\\a.ini", "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::invalid);
    put(driveC / "file.txt", "x");
    EXPECT_EQ(bytesOf("C:\\self\\SELF\\self\\file.txt"), "x");
    EXPECT_THAT(listed("C:\\self\\"), ElementsAre("file.txt"));
}

TEST_F(RealFilesTest, AFolderIsNoFileToReadOrWriteOrDelete) {
    fs::create_directories(driveC / "sub");
    EXPECT_EQ(faultOfReading("C:\\sub"), Fault::invalid);
    const auto written = files->write("C:\\sub", "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::invalid);
    EXPECT_FALSE(files->write("C:\\new\\", "x"));
    EXPECT_FALSE(files->remove("C:\\sub"));
    EXPECT_TRUE(fs::is_directory(driveC / "sub"));
    EXPECT_EQ(files->write("C:\\gone\\a.txt", "x").error().fault, Fault::notFound);
    put(driveC / "file.txt", "");
    EXPECT_EQ(files->write("C:\\file.txt\\a.txt", "x").error().fault, Fault::notFound);
    EXPECT_FALSE(files->exists("C:\\file.txt\\"));
}

TEST_F(RealFilesTest, APipeOrADeviceIsRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo((driveC / "TSLWIN4.INI").c_str(), 0600), 0);
    EXPECT_EQ(faultOfReading("C:\\TSLWIN4.INI"), Fault::invalid);
    const auto written = files->write("C:\\tslwin4.ini", "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::invalid);
    EXPECT_THAT(written.error().message, HasSubstr("C:\\tslwin4.ini"));
    EXPECT_FALSE(files->remove("C:\\TSLWIN4.INI"));
    EXPECT_TRUE(fs::is_fifo(driveC / "TSLWIN4.INI"));
    EXPECT_EQ(faultOfReading("Z:\\dev\\zero"), Fault::invalid);
    EXPECT_FALSE(files->write("Z:\\dev\\null", "x"));
}

TEST_F(RealFilesTest, AFileBeyondTheLimitIsRefused) {
    put(driveC / "large.bin", "");
    fs::resize_file(driveC / "large.bin", (64U << 20U) + 1);
    EXPECT_EQ(faultOfReading("C:\\large.bin"), Fault::unsupported);
    fs::resize_file(driveC / "large.bin", 64U << 20U);
    EXPECT_EQ(files->read("C:\\large.bin").value().size(), std::size_t{64} << 20U);
}

TEST_F(RealFilesTest, AFileWithoutALengthIsReadToItsEnd) {
    EXPECT_THAT(files->read("Z:\\proc\\self\\status").value(), HasSubstr("Pid:"));
}

TEST_F(RealFilesTest, DeletesAFileByAnySpelling) {
    put(driveC / "Tsl.Dat", "");
    ASSERT_TRUE(files->remove("C:\\TSL.DAT"));
    EXPECT_THAT(namesIn(driveC), IsEmpty());
    EXPECT_EQ(files->remove("C:\\TSL.DAT").error().fault, Fault::notFound);
}

TEST_F(RealFilesTest, TellsWhenAFileWasWritten) {
    put(driveC / "a.CD", "");
    std::tm local{};
    local.tm_year = 1999 - 1900;
    local.tm_mon = 11;
    local.tm_mday = 31;
    local.tm_hour = 23;
    local.tm_min = 59;
    local.tm_sec = 58;
    local.tm_isdst = -1;
    const timespec time{::mktime(&local), 250'000'000};
    const timespec both[] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, (driveC / "a.CD").c_str(), both, 0), 0);
    const platform::WallTime expected{1999, 12, 31, std::chrono::milliseconds((23 * 3600 + 59 * 60 + 58) * 1000 + 250)};
    EXPECT_EQ(files->modified("C:\\A.cd"), expected);
    EXPECT_EQ(files->modified("C:\\b.cd"), std::nullopt);
    EXPECT_EQ(files->modified("D:\\TRACK01.CDA"), std::nullopt);
}

TEST_F(RealFilesTest, PathsTranslateBothWays) {
    put(driveC / "Tessarel" / "a.txt", "");
    EXPECT_EQ(files->realPath("c:\\tessarel\\A.TXT"), driveC / "Tessarel" / "a.txt");
    EXPECT_EQ(files->realPath("c:\\tessarel\\New\\b.txt"), driveC / "Tessarel" / "New" / "b.txt");
    EXPECT_EQ(files->realPath("Z:\\ETC\\Passwd"), "/etc/passwd");
    EXPECT_EQ(files->realPath("Z:\\"), "/");
    EXPECT_EQ(files->realPath("D:\\x"), "");
    EXPECT_EQ(files->realPath("Q:\\x"), "");
    EXPECT_EQ(files->programPath(driveC / "Tessarel" / "a.txt"), "C:\\Tessarel\\a.txt");
    EXPECT_EQ(files->programPath(driveC), "C:\\");
    EXPECT_EQ(
        files->programPath(driveC.string() + "X/a"), "Z:" + [&] {
            auto path = driveC.string() + "X/a";
            std::replace(path.begin(), path.end(), '/', '\\');
            return path;
        }());
    EXPECT_EQ(files->programPath("/"), "Z:\\");
    EXPECT_EQ(files->programPath("/home/me/../x.cue"), "Z:\\home\\x.cue");
}

TEST_F(RealFilesTest, ADriveWithoutADiscIsNotReady) {
    for (const int attributes : {0, 8, 22}) {
        const auto names = files->list("D:\\", attributes);
        ASSERT_FALSE(names);
        EXPECT_EQ(names.error().fault, Fault::notReady);
    }
    EXPECT_EQ(faultOfReading("D:\\a.txt"), Fault::notReady);
    EXPECT_FALSE(files->exists("D:\\TRACK01.CDA"));
    EXPECT_FALSE(files->directoryExists("D:\\"));
    EXPECT_FALSE(files->changeDirectory("D:\\"));
    EXPECT_EQ(files->first("D:\\"), "");
}

TEST_F(RealFilesTest, AnAudioDiscListsItsTracks) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>(12, true));
    EXPECT_EQ(listed("D:\\").size(), 12U);
    EXPECT_EQ(files->first("D:\\"), "TRACK01.CDA");
    EXPECT_EQ(listed("D:\\").back(), "TRACK12.CDA");
    EXPECT_THAT(listed("D:\\track03.*"), ElementsAre("TRACK03.CDA"));
    EXPECT_THAT(listed("D:\\*.exe"), IsEmpty());
    EXPECT_THAT(listed("D:\\sub\\"), IsEmpty());
    EXPECT_TRUE(files->exists("D:\\track12.cda"));
    EXPECT_FALSE(files->exists("D:\\track13.cda"));
    EXPECT_EQ(faultOfReading("D:\\TRACK01.CDA"), Fault::unsupported);
    EXPECT_THAT(listed("D:\\", attributeVolume), IsEmpty());
    EXPECT_TRUE(files->changeDirectory("D:\\"));
    EXPECT_EQ(volumesOpened, 0);
}

class DataDiscTest : public FilesTest {
protected:
    DataDiscTest() {
        volume = std::make_shared<FakeVolume>();
        volume->folders[""] = {
            {"ZEBRA.EXE", 0}, {"DATA", attributeDirectory}, {"AUTORUN.INF", attributeHidden}, {"apple.txt", 0}};
        volume->folders["DATA"] = {{"Deep.Txt", 0}};
        volume->files["DATA/Deep.Txt"] = "deep";
        volume->files["AUTORUN.INF"] = "[autorun]";
    }
};

TEST_F(DataDiscTest, ADataDiscListsLabelAndNamesInItsOwnOrder) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    EXPECT_THAT(listed("D:\\", attributeVolume), ElementsAre("LABEL"));
    EXPECT_THAT(listed("D:\\", 22), ElementsAre("ZEBRA.EXE", "DATA", "AUTORUN.INF", "apple.txt"));
    EXPECT_THAT(listed("D:\\"), ElementsAre("ZEBRA.EXE", "apple.txt"));
    EXPECT_THAT(listed("D:\\data\\*.*"), ElementsAre("Deep.Txt"));
    EXPECT_EQ(openedAt, 0);
    EXPECT_EQ(volumesOpened, 1);
}

TEST_F(DataDiscTest, ADiscWithoutALabelHasNone) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    volume->name.clear();
    EXPECT_THAT(listed("D:\\", attributeVolume), IsEmpty());
}

TEST_F(DataDiscTest, FilesOnADiscAreReadByAnySpellingAndNeverWritten) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    EXPECT_EQ(bytesOf("D:\\Data\\DEEP.TXT"), "deep");
    EXPECT_TRUE(files->exists("d:\\autorun.inf"));
    EXPECT_TRUE(files->directoryExists("D:\\data"));
    EXPECT_FALSE(files->exists("D:\\data"));
    EXPECT_TRUE(files->changeDirectory("D:\\data"));
    EXPECT_EQ(bytesOf("deep.txt"), "deep");
    EXPECT_EQ(faultOfReading("D:\\data"), Fault::invalid);
    EXPECT_EQ(faultOfReading("D:\\data\\gone"), Fault::notFound);
    EXPECT_EQ(faultOfReading("D:\\apple.txt\\gone"), Fault::notFound);
    EXPECT_EQ(files->write("D:\\new.txt", "x").error().fault, Fault::denied);
    EXPECT_EQ(files->remove("D:\\apple.txt").error().fault, Fault::denied);
}

TEST_F(DataDiscTest, AMixedDiscWhoseFirstTrackIsDataShowsItsFiles) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false, true, true});
    EXPECT_EQ(files->first("D:\\"), "ZEBRA.EXE");
    EXPECT_EQ(openedAt, 0);
}

TEST_F(DataDiscTest, AnEnhancedDiscShowsTheFilesOfItsLastTrack) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true, true, false});
    EXPECT_EQ(files->first("D:\\"), "ZEBRA.EXE");
    EXPECT_EQ(openedAt, 2000);
}

TEST_F(DataDiscTest, DataInTheMiddleOfADiscIsNotShown) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true, false, true});
    EXPECT_THAT(listed("D:\\"), ElementsAre("TRACK01.CDA", "TRACK03.CDA"));
}

TEST_F(DataDiscTest, ADiscWhoseDataCannotBeReadShowsItsSound) {
    volume = nullptr;
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true, false});
    EXPECT_THAT(listed("D:\\"), ElementsAre("TRACK01.CDA"));
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    const auto names = files->list("D:\\", 0);
    ASSERT_FALSE(names);
    EXPECT_EQ(names.error().fault, Fault::invalid);
}

TEST_F(DataDiscTest, AnotherDiscIsReadAnew) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    EXPECT_EQ(files->first("D:\\"), "ZEBRA.EXE");
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true});
    EXPECT_EQ(files->first("D:\\"), "TRACK01.CDA");
    d->disc = nullptr;
    EXPECT_EQ(faultOfReading("D:\\a"), Fault::notReady);
}

TEST_F(DataDiscTest, DotsOnADiscEndAtItsRoot) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    EXPECT_EQ(bytesOf("D:\\data\\..\\..\\..\\AUTORUN.INF"), "[autorun]");
}

TEST_F(DataDiscTest, ALetterOfAnImageServesItsFiles) {
    put(temp.path / "audio.cue", "");
    EXPECT_FALSE(files->exists("G:\\TRACK01.CDA"));
    ASSERT_TRUE(drives->insertImage('G', (temp.path / "audio.cue").string()));
    EXPECT_THAT(listed("G:\\"), ElementsAre("TRACK01.CDA", "TRACK02.CDA"));
}

}  // namespace
}  // namespace tessarel::host
