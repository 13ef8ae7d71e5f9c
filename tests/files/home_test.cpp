#include "host/files/home.h"

#include <sys/mount.h>
#include <unistd.h>

#include "base/sequential_file.h"
#include "host/files/launcher.h"
#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HomeTest : public testing::Test {
protected:
    HomeTest() {
        fs::create_directories(data);
        fs::copy(fs::path(TESSAREL_SOURCE_DIR) / "data" / "home", data / "home", fs::copy_options::recursive);
        put(data / "cues" / "click.wav", "RIFF");
        put(data / "cues" / "make_cues.txt", "not a cue");
        put(data / "help" / "TESSAREL.TXT", "welcome");
        put(data / "help" / "CDPUSE.TXT", "use");
    }

    std::vector<std::string> values(const std::string& file) const {
        const auto bytes = get(home / "drive_c" / file);
        SequentialReader reader(bytes);
        std::vector<std::string> out;
        while (const auto value = reader.variant()) {
            out.push_back(value->quoted ? '"' + value->text + '"' : value->text);
        }
        return out;
    }

    TempFolder temp;
    fs::path data = temp.path / "data";
    fs::path home = temp.path / "share" / "tessarel";
};

TEST_F(HomeTest, AFreshHomeHasAllFilesOfTheFamily) {
    ASSERT_TRUE(provisionHome(home, data));
    EXPECT_THAT(namesIn(home), ElementsAre("drive_c"));
    EXPECT_THAT(namesIn(home / "drive_c"), ElementsAre("Tessarel", "WINDOWS"));
    EXPECT_THAT(namesIn(home / "drive_c" / "WINDOWS"),
                ElementsAre("SYSTEM", "WIN.INI", "browser.exe", "notepad.exe", "sndrec32.exe", "sndvol32.exe"));
    EXPECT_THAT(namesIn(home / "drive_c" / "WINDOWS" / "SYSTEM"), ElementsAre("TSLWIN.INI"));
    EXPECT_THAT(
        namesIn(home / "drive_c" / "Tessarel"),
        testing::IsSupersetOf({"CDMAIN.INI", "TESSAREL.TXT", "TSLWIN1.INI", "TSLWIN2.INI", "TSLWIN3.INI", "TSLWIN4.INI",
                               "TSLWIN5.INI", "TSLWIN6.INI", "cdromlib.grp", "datacd", "removlib.grp", "system", "tslhelp"}));
    EXPECT_FALSE(fs::exists(home / "drive_c" / "Tessarel" / "modelast.dat"));
    EXPECT_THAT(namesIn(home / "drive_c" / "Tessarel" / "system"), ElementsAre("click.wav"));
    EXPECT_THAT(namesIn(home / "drive_c" / "Tessarel" / "tslhelp"), ElementsAre("CDPUSE.TXT"));
    EXPECT_THAT(namesIn(home / "drive_c" / "Tessarel" / "datacd"), IsEmpty());
    EXPECT_EQ(fs::status(home / "drive_c").permissions(), fs::perms(0755));
}

TEST_F(HomeTest, TheMainSettingsTellWhereTheOthersLive) {
    ASSERT_TRUE(provisionHome(home, data));
    const auto bytes = get(home / "drive_c" / "WINDOWS" / "SYSTEM" / "TSLWIN.INI");
    EXPECT_THAT(bytes, testing::StartsWith("\"C:\\Tessarel\"\r\n\"D:\\\"\r\n0\r\n1\r\n1\r\n\"\"\r\n"));
    EXPECT_EQ(values("WINDOWS/SYSTEM/TSLWIN.INI").size(), 14U);
}

TEST_F(HomeTest, EverySettingsFileHasItsValuesInOrder) {
    ASSERT_TRUE(provisionHome(home, data));
    EXPECT_THAT(values("Tessarel/TSLWIN1.INI"), ElementsAre("\"\"", "1", "0", "0", "\"\"", "0", "2", "0", "0", "3"));
    EXPECT_EQ(values("Tessarel/TSLWIN2.INI").size(), 11U);
    EXPECT_EQ(values("Tessarel/TSLWIN2.INI")[1], "0");
    EXPECT_EQ(values("Tessarel/TSLWIN5.INI"), std::vector<std::string>(26, "\"\""));
    EXPECT_EQ(values("Tessarel/TSLWIN6.INI").size(), 6U);
    EXPECT_EQ(values("Tessarel/CDMAIN.INI").size(), 7U);
    const auto fonts = values("Tessarel/TSLWIN3.INI");
    ASSERT_EQ(fonts.size(), 37U);
    EXPECT_EQ(fonts[0], "\"Inter\"");
    EXPECT_EQ(fonts[6], "\"Inter\"");
    EXPECT_EQ(fonts[18], "\"Inter\"");
    EXPECT_THAT(std::vector(fonts.begin() + 12, fonts.begin() + 18), ElementsAre("0", "0", "0", "10", "0", "\"CDDB\""));
    const std::string accent = std::to_string(0x9BF25D);
    EXPECT_EQ(fonts[5], accent);
    const auto general = values("Tessarel/TSLWIN4.INI");
    EXPECT_THAT(general, ElementsAre("0", "\"\"", "\"\"", "\"\"", "0", "0", "0", "\"\"", "\"1\"", "\"0\"", "0", "\"\"", "0",
                                     "0", "1", "1", "0", accent, std::to_string(0x2C3A1D), "\"\""));
}

TEST_F(HomeTest, AnEmptyLibraryIsOneReservedRecord) {
    ASSERT_TRUE(provisionHome(home, data));
    for (const auto* name : {"cdromlib.grp", "removlib.grp"}) {
        const auto record = get(home / "drive_c" / "Tessarel" / name);
        ASSERT_EQ(record.size(), 442U);
        EXPECT_EQ(record.substr(0, 12), std::string("\x08\0\x08\0RESERVED", 12));
        EXPECT_EQ(record.substr(247, 12), std::string("\x08\0\x08\0RESERVED", 12));
        EXPECT_EQ(record.substr(245, 2), std::string(2, '\0'));
        for (const std::size_t empty : {75U, 150U, 170U, 321U, 381U}) {
            EXPECT_EQ(record.substr(empty, 4), std::string("\x08\0\0\0", 4)) << empty;
        }
    }
}

TEST_F(HomeTest, TheBrowserStandsAtTheFifteenthCharacter) {
    ASSERT_TRUE(provisionHome(home, data));
    const auto line = get(home / "drive_c" / "WINDOWS" / "WIN.INI");
    EXPECT_TRUE(line.starts_with("NETSCAPE.EXE"));
    EXPECT_EQ(line.substr(14), "C:\\WINDOWS\\browser.exe\r\n");
}

TEST_F(HomeTest, TheScriptsOfAFreshHomeStart) {
    ASSERT_TRUE(provisionHome(home, data));
    DriveTable drives(driveCOf(home), {});
    RealFiles files(drives, nullptr);
    const auto log = temp.path / "log";
    for (const auto* tool : {"xdg-open", "pavucontrol", "audacity"}) {
        put(temp.path / "bin" / tool, "#!/bin/sh\necho $0 \"$@\" > " + log.string() + "\n");
        fs::permissions(temp.path / "bin" / tool, fs::perms(0755));
    }
    const std::string oldPath = ::getenv("PATH");
    ::setenv("PATH", ((temp.path / "bin").string() + ":" + oldPath).c_str(), 1);
    ::setenv("DISPLAY", ":none", 1);
    Launcher launcher(files, {{}, commandPathOfEnvironment(), nullptr});
    const auto said = [&](std::string_view line) {
        const auto id = launcher.start(line, platform::WindowStyle::normal);
        while (id && launcher.exitCode(*id) == platform::stillActive) {
            ::usleep(1000);
        }
        return id ? get(log) : id.error().message;
    };
    const auto bin = (temp.path / "bin").string();
    EXPECT_EQ(said("C:\\WINDOWS\\browser.exe http://example.org/?a&b"), bin + "/xdg-open http://example.org/?a&b\n");
    EXPECT_EQ(said("C:\\WINDOWS\\notepad.exe C:\\Tessarel\\tessarel.txt"),
              bin + "/xdg-open " + (home / "drive_c/Tessarel/TESSAREL.TXT").string() + "\n");
    EXPECT_THAT(said("c:\\windows\\SNDVOL32.EXE"), HasSubstr("pavucontrol"));
    EXPECT_THAT(said("sndrec32"), Not(HasSubstr("pavucontrol"))) << "another program than the mixer";
    ::setenv("PATH", oldPath.c_str(), 1);
    ::unsetenv("DISPLAY");
}

TEST_F(HomeTest, ASecondStartChangesNothing) {
    ASSERT_TRUE(provisionHome(home, data));
    put(home / "drive_c" / "Tessarel" / "TSLWIN1.INI", "mine");
    fs::remove(home / "drive_c" / "WINDOWS" / "WIN.INI");
    ASSERT_TRUE(provisionHome(home, data));
    EXPECT_EQ(get(home / "drive_c" / "Tessarel" / "TSLWIN1.INI"), "mine");
    EXPECT_FALSE(fs::exists(home / "drive_c" / "WINDOWS" / "WIN.INI"));
    EXPECT_THAT(namesIn(home), ElementsAre("drive_c"));
}

TEST_F(HomeTest, AHomeThatExistsIsNeverTouched) {
    fs::create_directories(home / "drive_c");
    put(home / "keep.txt", "x");
    ASSERT_TRUE(provisionHome(home, data));
    EXPECT_THAT(namesIn(home / "drive_c"), IsEmpty());
    EXPECT_THAT(namesIn(home), ElementsAre("drive_c", "keep.txt"));
}

TEST_F(HomeTest, WithoutTheProgramsDataNothingIsLeftBehind) {
    const auto made = provisionHome(home, temp.path / "nowhere");
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().fault, Fault::notFound);
    EXPECT_THAT(made.error().message, HasSubstr("nowhere"));
    EXPECT_FALSE(fs::exists(temp.path / "share"));
}

TEST_F(HomeTest, AHomeThatIsAFileIsAnError) {
    put(home, "a file");
    const auto made = provisionHome(home, data);
    ASSERT_FALSE(made);
    EXPECT_EQ(get(home), "a file");
}

TEST_F(HomeTest, AnUnwritableHomeIsDenied) {
    fs::create_directories(home);
    fs::permissions(temp.path, fs::perms(0755));
    fs::permissions(home, fs::perms(0555));
    const bool root = ::geteuid() == 0 && ::seteuid(65534) == 0;
    const auto made = provisionHome(home, data);
    if (root) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().fault, Fault::denied);
    EXPECT_THAT(namesIn(home), IsEmpty());
    fs::permissions(home, fs::perms(0755));
}

TEST_F(HomeTest, AFullDiskLeavesNothingBehind) {
    fs::create_directories(home);
    if (::mount("none", home.c_str(), "tmpfs", 0, "size=16k") != 0) {
        GTEST_SKIP() << "only who may mount can fill a disk";
    }
    const auto made = provisionHome(home, data);
    const auto left = namesIn(home);
    ::umount(home.c_str());
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().fault, Fault::full);
    EXPECT_THAT(left, IsEmpty());
}

}  // namespace
}  // namespace tessarel::host
