#include "shell/web_page.h"

#include <gtest/gtest.h>

#include "shell/settings_files.h"
#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

using fakes::StartedProgram;

constexpr const char* url = "https://tessarel.example/";
constexpr const char* browserQuestion =
    "Unable to identify Web Browser or more than one Web Browser detected on your system! Do you wish to enter it now?";

class WebPage : public testing::Test {
protected:
    WebPage() { world.files.put("C:\\Tessarel\\TSLWIN4.INI", emptyTslwin4Bytes()); }

    // What line 8 of the stored settings says now.
    std::string storedBrowser() {
        SharedState read;
        const auto bytes = world.files.bytes("C:\\Tessarel\\TSLWIN4.INI");
        SequentialReader in(bytes);
        EXPECT_TRUE(readTslwin4(in, read));
        return read.webBrowserPath;
    }

    fakes::World world;
    SharedState& state = world.state;
    const Context& context = world.context;
};

TEST_F(WebPage, AKnownBrowserIsStartedFromItsOwnFolder) {
    state.webBrowserPath = "C:\\Web\\browse.exe";
    world.files.put(state.webBrowserPath);
    openWebPage(context, url);
    EXPECT_EQ(world.processes.started, (std::vector{StartedProgram{"C:\\Web\\browse.exe https://tessarel.example/", "C:\\Web",
                                                                   platform::WindowStyle::normal}}));
    EXPECT_EQ(storedBrowser(), "");
}

TEST_F(WebPage, ABrowserThatIsNoLongerThereIsLookedForAgain) {
    state.webBrowserPath = "C:\\Web\\gone.exe";
    world.files.put("C:\\Program Files\\Internet Explorer\\Iexplore.exe");
    openWebPage(context, url);
    EXPECT_EQ(world.processes.lastCommand(),
              "\"C:\\Program Files\\Internet Explorer\\Iexplore.exe\" https://tessarel.example/");
    EXPECT_EQ(storedBrowser(), "C:\\Program Files\\Internet Explorer\\Iexplore.exe");
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(WebPage, CandidatesAreTriedInTheirOrder) {
    const std::vector<std::string> candidates = {"C:\\Program Files\\NETSCAPE\\NAVIGATOR\\PROGRAM\\NETSCAPE.EXE",
                                                 "D:\\Program Files\\NETSCAPE\\NAVIGATOR\\PROGRAM\\NETSCAPE.EXE",
                                                 "C:\\Program Files\\Netscape\\Communicator\\Program\\netscape.exe",
                                                 "D:\\Program Files\\Netscape\\Communicator\\Program\\netscape.exe",
                                                 "C:\\Netscape\\Communicator\\Program\\netscape.exe",
                                                 "C:\\Program Files\\Internet Explorer\\Iexplore.exe",
                                                 "C:\\Program Files\\Microsoft Internet\\Iexplore.exe",
                                                 "C:\\Program Files\\Plus!\\Microsoft Internet\\Iexplore.exe",
                                                 "D:\\Program Files\\Internet Explorer\\Iexplore.exe",
                                                 "D:\\Program Files\\Microsoft Internet\\Iexplore.exe"};
    world.files.drive('D').ready = true;
    for (auto candidate = candidates.rbegin(); candidate != candidates.rend(); ++candidate) {
        world.files.put(*candidate);
        openWebPage(context, findInstalledBrowser);
        EXPECT_EQ(state.webBrowserPath, *candidate);
    }
    EXPECT_TRUE(world.processes.started.empty());
}

TEST_F(WebPage, TheSystemsOwnFileGoesBeforeTheCandidates) {
    world.files.put("C:\\WINDOWS\\WIN.INI", "[programs]\r\nnetscape.exe = C:\\Net\\NETSCAPE.EXE\r\n");
    world.files.put("C:\\Program Files\\Internet Explorer\\Iexplore.exe");
    openWebPage(context, findBrowser);
    EXPECT_EQ(state.webBrowserPath, "C:\\Net\\NETSCAPE.EXE");
}

TEST(WinIni, TheFirstKindOfLineGivesTheTextFromTheFifteenthCharacter) {
    EXPECT_EQ(browserFromWinIni("NETSCAPE.EXE= C:\\N\\NETSCAPE.EXE"), "C:\\N\\NETSCAPE.EXE");
    EXPECT_EQ(browserFromWinIni("NETSCAPE.EXE=C:\\N\\NETSCAPE.EXE"), ":\\N\\NETSCAPE.EXE");
}

TEST(WinIni, TheSecondKindGivesThePathUpToExe) {
    EXPECT_EQ(browserFromWinIni("[x]\n  Netscape=open D:\\Net\\netscape.exe %1\n"), "D:\\Net\\netscape.exe");
    EXPECT_EQ(browserFromWinIni("NETSCAPE=netscape.exe C:\\x"), "");
    EXPECT_EQ(browserFromWinIni("NETSCAPE=C:\\x.com"), "");
}

TEST(WinIni, AFileWithoutSuchALineNamesNone) {
    EXPECT_EQ(browserFromWinIni(""), "");
    EXPECT_EQ(browserFromWinIni("[windows]\r\nload=\r\n\xFF\xFE"), "");
    EXPECT_EQ(browserFromWinIni("NETSCAPE.EXE"), "");
}

TEST_F(WebPage, WithoutAnyBrowserTheUserIsAskedAndMayChooseOne) {
    world.dialogs.answers = {platform::Answer::yes};
    world.dialogs.fileAnswers = {"C:\\Web\\mine.exe"};
    world.files.put("C:\\Web\\mine.exe");
    openWebPage(context, url);
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].text, browserQuestion);
    EXPECT_EQ(world.dialogs.boxes[0].buttons, platform::Buttons::yesNo);
    EXPECT_EQ(
        world.dialogs.fileDialogs,
        (std::vector{platform::FileDialog{"Select Web Browser",
                                          "All Executable Files (*.exe;*.com)|*.exe;*.com|EXE Files Only (*.exe)|*.exe|COM "
                                          "Files Only (*.com)|*.com",
                                          "C:\\"}}));
    EXPECT_EQ(world.processes.lastCommand(), "C:\\Web\\mine.exe https://tessarel.example/");
    EXPECT_EQ(storedBrowser(), "C:\\Web\\mine.exe");
}

TEST_F(WebPage, WithNoBrowserAtAllThePointerIsRestoredAndNothingElseHappens) {
    world.system.pointer = platform::PointerShape::hourglass;
    openWebPage(context, url);
    EXPECT_TRUE(world.processes.started.empty());
    EXPECT_EQ(world.system.pointer, platform::PointerShape::normal);
    EXPECT_EQ(world.files.writes, 0);
}

TEST_F(WebPage, ASearchForAnInstalledBrowserNeverAsks) {
    openWebPage(context, findInstalledBrowser);
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(WebPage, ASearchKeepsAKnownBrowserWhenItFindsNoOther) {
    state.webBrowserPath = "C:\\Web\\browse.exe";
    world.files.put(state.webBrowserPath);
    openWebPage(context, findBrowser);
    EXPECT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(state.webBrowserPath, "C:\\Web\\browse.exe");
}

TEST_F(WebPage, AfterSetUpWasChosenNothingIsStored) {
    state.setupRequested = 1;
    world.files.put("C:\\Netscape\\Communicator\\Program\\netscape.exe");
    openWebPage(context, findBrowser);
    EXPECT_EQ(state.webBrowserPath, "C:\\Netscape\\Communicator\\Program\\netscape.exe");
    EXPECT_EQ(world.files.writes, 0);
}

TEST_F(WebPage, ABrowserThatCannotBeStartedIsNotReported) {
    state.webBrowserPath = "C:\\Web\\browse.exe";
    world.files.put(state.webBrowserPath);
    world.processes.failAll = Fault::notFound;
    openWebPage(context, url);
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

}  // namespace
}  // namespace tessarel::shell
