#include "host/files/launcher.h"

#include <csignal>
#include <thread>

#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using platform::stillActive;
using platform::WindowStyle;
using testing::ElementsAre;
using testing::HasSubstr;

/// Commands that write down what they were given, one line an argument, in place of the real ones.
class LauncherTest : public FilesTest {
protected:
    LauncherTest() {
        fs::create_directories(companions);
        fs::create_directories(commands);
        for (const auto* folder : {"Tessarel", "WINDOWS/SYSTEM"}) {
            fs::create_directories(driveC / folder);
        }
        launcher = std::make_unique<Launcher>(
            *files, Launcher::Options{companions, {commands.string(), "/usr/bin", "/bin"}, [](auto name, auto caption) {
                                          return name == "Notepad" || caption == "Help";
                                      }});
        files->changeDirectory("C:\\Tessarel");
    }

    std::string script(std::string_view name) const {
        return "#!/bin/sh\n{ echo " + std::string(name) + "; for each; do printf '%s\\n' \"$each\"; done; } > '" +
               log.string() + "'\n";
    }
    void install(const fs::path& file, std::string_view bytes) const {
        put(file, bytes);
        fs::permissions(file, fs::perms(0755));
    }

    int finished(platform::ProcessId id) const {
        for (int i = 0; i < 5000; ++i) {
            if (const int code = launcher->exitCode(id); code != stillActive) {
                return code;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return stillActive;
    }

    /// What a command line's program wrote down; the error's sentence when it could not be started.
    std::vector<std::string> run(std::string_view commandLine) const {
        fs::remove(log);
        const auto id = launcher->start(commandLine, WindowStyle::normal);
        if (!id) {
            return {id.error().message};
        }
        EXPECT_EQ(finished(*id), 0) << commandLine;
        std::vector<std::string> lines;
        std::ifstream in(log);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    Fault faultOfStarting(std::string_view commandLine) const {
        const auto id = launcher->start(commandLine, WindowStyle::normal);
        return id ? Fault::failed : id.error().fault;
    }
    static std::string windowsProgram(std::string_view mark) {
        std::string bytes(0x80, '\0');
        bytes.replace(0, 2, "MZ");
        bytes[0x3C] = static_cast<char>(0x80);
        return bytes.append(mark).append(100, '\0');
    }

    fs::path companions = temp.path / "companions";
    fs::path commands = temp.path / "bin";
    fs::path log = temp.path / "log";
    std::unique_ptr<Launcher> launcher;
};

TEST_F(LauncherTest, ACompanionComesBeforeEverything) {
    install(companions / "cdsetup", script("companion"));
    install(driveC / "Tessarel" / "cdsetup.exe", script("other"));
    EXPECT_THAT(run("cdsetup.exe INITSETUP"), ElementsAre("companion", "INITSETUP"));
    EXPECT_THAT(run("CDSETUP.EXE"), ElementsAre("companion"));
    EXPECT_THAT(run("C:\\Tessarel\\cdsetup.exe"), ElementsAre("other"));
}

TEST_F(LauncherTest, ABareNameIsFoundInTheCurrentDirectoryThenInTheSystemsOwn) {
    install(driveC / "WINDOWS" / "SYSTEM" / "tool.exe", script("system"));
    EXPECT_THAT(run("TOOL.EXE"), ElementsAre("system"));
    install(driveC / "WINDOWS" / "tool.exe", script("windows"));
    EXPECT_THAT(run("TOOL.EXE"), ElementsAre("windows"));
    install(driveC / "Tessarel" / "tool.exe", script("here"));
    EXPECT_THAT(run("TOOL.EXE"), ElementsAre("here"));
    EXPECT_THAT(run("tool"), ElementsAre("here"));
}

TEST_F(LauncherTest, APathIsNotLookedForElsewhere) {
    install(driveC / "WINDOWS" / "tool.exe", script("windows"));
    EXPECT_EQ(faultOfStarting("C:\\tool.exe"), Fault::notFound);
    EXPECT_THAT(run("c:\\windows\\TOOL"), ElementsAre("windows"));
    EXPECT_THAT(run("..\\windows\\tool.exe"), ElementsAre("windows"));
}

TEST_F(LauncherTest, ACommandOfThisSystemComesLast) {
    install(commands / "player", script("native"));
    EXPECT_THAT(run("player --once song"), ElementsAre("native", "--once", "song"));
    install(driveC / "WINDOWS" / "player.exe", script("windows"));
    EXPECT_THAT(run("player"), ElementsAre("windows"));
    EXPECT_EQ(faultOfStarting("no-such-program-anywhere x"), Fault::notFound);
    EXPECT_EQ(faultOfStarting(""), Fault::notFound);
    EXPECT_EQ(faultOfStarting("\"\" x"), Fault::notFound);
}

TEST_F(LauncherTest, AnUnquotedPathMayHoldBlanks) {
    install(driveC / "Program Files" / "My Tool" / "a.exe", script("tool"));
    EXPECT_THAT(run("C:\\Program Files\\My Tool\\a.exe one two"), ElementsAre("tool", "one", "two"));
    EXPECT_THAT(run("\"C:\\Program Files\\My Tool\\A.EXE\" \"one two\""), ElementsAre("tool", "one two"));
}

TEST_F(LauncherTest, AScriptReceivesRealPaths) {
    install(driveC / "WINDOWS" / "notepad.exe", script("notepad"));
    put(driveC / "Tessarel" / "Read Me.Txt", "");
    put(driveC / "Tessarel" / "word", "");
    const auto data = (driveC / "Tessarel").string();
    EXPECT_THAT(run("C:\\WINDOWS\\notepad.exe \"c:\\tessarel\\read me.txt\""), ElementsAre("notepad", data + "/Read Me.Txt"));
    EXPECT_THAT(run("notepad \"READ ME.TXT\" WORD http://a.b/c.txt"),
                ElementsAre("notepad", data + "/Read Me.Txt", "WORD", "http://a.b/c.txt"));
    EXPECT_THAT(run("notepad C:\\Tessarel\\new.txt gone.txt D:\\TRACK01.CDA"),
                ElementsAre("notepad", data + "/new.txt", "gone.txt", "D:\\TRACK01.CDA"));
}

TEST_F(LauncherTest, AScriptThatIsNotMarkedExecutableRunsAllTheSame) {
    put(driveC / "WINDOWS" / "plain.exe", script("plain"));
    EXPECT_THAT(run("plain x"), ElementsAre("plain", "x"));
}

TEST_F(LauncherTest, AnArgumentIsNeverRunByAShell) {
    install(driveC / "WINDOWS" / "tool.exe", script("tool"));
    EXPECT_THAT(run("tool $(id) `id` ;id|id >x"), ElementsAre("tool", "$(id)", "`id`", ";id|id", ">x"));
}

TEST_F(LauncherTest, AProgramOfThisSystemRunsAsItself) {
    fs::copy_file("/bin/true", driveC / "Tessarel" / "true.exe");
    EXPECT_EQ(finished(launcher->start("true.exe", WindowStyle::normal).value()), 0);
    fs::permissions(driveC / "Tessarel" / "true.exe", fs::perms(0644));
    EXPECT_EQ(faultOfStarting("true.exe"), Fault::denied);
}

TEST_F(LauncherTest, WindowsProgramsRunInWine) {
    put(driveC / "Tessarel" / "game.exe", windowsProgram("PE"));
    put(driveC / "Tessarel" / "old.exe", windowsProgram("NE"));
    install(commands / "wine", script("wine"));
    const auto data = (driveC / "Tessarel").string();
    auto onZ = "Z:" + data + "/game.exe";
    std::replace(onZ.begin(), onZ.end(), '/', '\\');
    EXPECT_THAT(run("game.exe /S C:\\Tessarel\\GAME.EXE"), ElementsAre("wine", data + "/game.exe", "/S", onZ));
    EXPECT_THAT(run("old"), ElementsAre("wine", data + "/old.exe"));
}

TEST_F(LauncherTest, DosProgramsRunInDosbox) {
    put(driveC / "Games" / "quest.exe", "MZ" + std::string(200, '\0'));
    put(driveC / "Games" / "run.bat", "@echo off\r\n");
    install(commands / "dosbox", script("dosbox"));
    const auto mount = "mount c \"" + (driveC / "Games").string() + "\"";
    EXPECT_THAT(run("C:\\Games\\QUEST.EXE /fast 2"),
                ElementsAre("dosbox", "-c", mount, "-c", "c:", "-c", "quest.exe /fast 2", "-c", "exit"));
    EXPECT_THAT(run("C:\\Games\\run"), ElementsAre("dosbox", "-c", mount, "-c", "c:", "-c", "run.bat", "-c", "exit"));
}

TEST_F(LauncherTest, AMissingRuntimeIsNamed) {
    const Launcher::Options bare{{}, {commands.string()}, nullptr};
    Launcher lonely(*files, bare);
    put(driveC / "Tessarel" / "game.exe", windowsProgram("PE"));
    put(driveC / "Tessarel" / "quest.exe", "MZ");
    put(driveC / "Tessarel" / "page.htm", "");
    const std::pair<const char*, const char*> cases[] = {
        {"game.exe", "wine"}, {"quest.exe", "dosbox"}, {"page.htm", "xdg-utils"}, {"http://example.org/", "xdg-utils"}};
    for (const auto& [line, package] : cases) {
        const auto id = lonely.start(line, WindowStyle::normal);
        ASSERT_FALSE(id) << line;
        EXPECT_EQ(id.error().fault, Fault::unavailable) << line;
        EXPECT_THAT(id.error().message, HasSubstr(package));
    }
}

TEST_F(LauncherTest, DocumentsAndAddressesOpenWithTheDesktop) {
    install(commands / "xdg-open", script("xdg-open"));
    put(driveC / "Tessarel" / "Page.htm", "<html>");
    EXPECT_THAT(run("PAGE.HTM"), ElementsAre("xdg-open", (driveC / "Tessarel" / "Page.htm").string()));
    EXPECT_THAT(run("http://example.org/a?b=c d"), ElementsAre("xdg-open", "http://example.org/a?b=c"));
    EXPECT_THAT(run("mailto:me@example.org"), ElementsAre("xdg-open", "mailto:me@example.org"));
}

TEST_F(LauncherTest, AFileThatIsNoProgramIsRefused) {
    put(driveC / "Tessarel" / "fake.exe", "just text");
    put(driveC / "Tessarel" / "empty.exe", "");
    fs::create_directories(driveC / "Tessarel" / "folder.exe");
    EXPECT_EQ(faultOfStarting("fake.exe"), Fault::unsupported);
    EXPECT_EQ(faultOfStarting("empty.exe"), Fault::unsupported);
    EXPECT_EQ(faultOfStarting("folder.exe"), Fault::notFound);
}

TEST_F(LauncherTest, AProgramInsideADiscSaysWhyItCannotStart) {
    volume = std::make_shared<FakeVolume>();
    volume->folders[""] = {{"SETUP.EXE", 0}};
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{false});
    EXPECT_EQ(faultOfStarting("D:\\setup.exe"), Fault::unsupported);
}

TEST_F(LauncherTest, ItBeginsInTheCurrentDirectoryInAGroupOfItsOwnWithoutInput) {
    install(driveC / "WINDOWS" / "where.exe",
            "#!/bin/sh\n{ pwd -P; cut -d' ' -f5 /proc/$$/stat; echo $$; readlink /proc/$$/fd/0; } > '" + log.string() + "'\n");
    const auto lines = run("where");
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], fs::canonical(driveC / "Tessarel"));
    EXPECT_EQ(lines[1], lines[2]);
    EXPECT_EQ(lines[3], "/dev/null");
}

TEST_F(LauncherTest, FromADiscItBeginsAtTheRootOfC) {
    install(driveC / "WINDOWS" / "where.exe", "#!/bin/sh\npwd -P > '" + log.string() + "'\n");
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true});
    ASSERT_TRUE(files->changeDirectory("D:\\"));
    EXPECT_THAT(run("where"), ElementsAre(fs::canonical(driveC).string()));
}

TEST_F(LauncherTest, TellsExitCodesAndThatAProgramStillRuns) {
    install(commands / "seven", "#!/bin/sh\nexit 7\n");
    install(commands / "killed", "#!/bin/sh\nkill -9 $$\n");
    EXPECT_EQ(finished(launcher->start("seven", WindowStyle::normal).value()), 7);
    EXPECT_EQ(finished(launcher->start("killed", WindowStyle::normal).value()), 128 + SIGKILL);
    const auto sleeping = launcher->start("sleep 600", WindowStyle::normal).value();
    EXPECT_EQ(launcher->exitCode(sleeping), stillActive);
    EXPECT_EQ(launcher->exitCode(12345), -1);
    std::ifstream children("/proc/self/task/" + std::to_string(::getpid()) + "/children");
    int pid = 0;
    ASSERT_TRUE(children >> pid);
    ::kill(pid, SIGTERM);
    EXPECT_EQ(finished(sleeping), 128 + SIGTERM);
    EXPECT_EQ(launcher->exitCode(sleeping), 128 + SIGTERM);
}

TEST_F(LauncherTest, ProgramsNobodyAsksAboutLeaveNoZombies) {
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(launcher->start("true", WindowStyle::normal));
    }
    const auto children = [] {
        std::ifstream in("/proc/self/task/" + std::to_string(::getpid()) + "/children");
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    for (int i = 0; i < 5000 && !children().empty(); ++i) {
        launcher->reap();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(children(), "");
}

TEST_F(LauncherTest, WindowsAreLookedForByTheDesktop) {
    EXPECT_TRUE(launcher->findWindow("Notepad", ""));
    EXPECT_TRUE(launcher->findWindow("", "Help"));
    EXPECT_FALSE(launcher->findWindow("Write", ""));
    EXPECT_FALSE(Launcher(*files, {}).findWindow("Notepad", ""));
}

}  // namespace
}  // namespace tessarel::host
