#include "shell/load1st.h"

#include <gtest/gtest.h>

#include <random>

#include "shell/settings_files.h"
#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

using fakes::StartedProgram;
using Names = std::vector<std::string>;

constexpr const char* directoryPrompt =
    "Location of Tessarel Data File(s) Not Found, Please Enter Full Path:    (e.g. C:\\Program Files\\Tessarel)";

class StartUp : public testing::Test {
protected:
    StartUp() {
        fakes::declarePlain(world.windows, {"cdmenu", "CD1st", "CDForm", "RDtessarel", "animate", "animbg", "Form26"});
        world.windows.onLoaded = [this](forms::Form& form) { opened.push_back(form.name()); };
        world.state = SharedState{};
        world.state.driveWarningIgnored = 0;
        settings.dataDir = "C:\\Tessarel";
        settings.cdDrive = "D:\\";
        settings.cdRomEnabled = 1;
        settings.audioCdEnabled = 1;
        world.files.put("C:\\Tessarel\\cdromlib.grp");
    }

    // Writes the settings files and starts up; true when that ended the process.
    bool start(const std::string& commandLine = {}) {
        world.files.put("C:\\WINDOWS\\SYSTEM\\TSLWIN.INI", tslwinBytes(settings));
        if (hasTslwin1) {
            world.files.put("C:\\Tessarel\\TSLWIN1.INI", tslwin1Bytes(settings));
        }
        world.files.put("C:\\Tessarel\\TSLWIN5.INI", tslwin5Bytes(settings));
        return startAsItIs(commandLine);
    }
    bool startAsItIs(const std::string& commandLine = {}) {
        world.windows.declare("Load1st", [this, commandLine](forms::Windows& windows) {
            return std::make_unique<Load1st>(windows, world.context, commandLine);
        });
        return fakes::endsProcess([this] { world.windows.load("Load1st"); });
    }
    Names visible() const {
        Names names;
        for (const auto& name : world.windows.loadedNames()) {
            if (world.windows.isVisible(name)) {
                names.push_back(name);
            }
        }
        return names;
    }
    bool startUpIsGone() const { return !world.windows.isLoaded("Load1st"); }

    fakes::World world;
    Names opened;  ///< every window, in the order in which they came
    SharedState& state = world.state;
    Settings settings;
    bool hasTslwin1 = true;
};

TEST_F(StartUp, WithoutAnArgumentTheMainMenuOpensAndTheStartUpFormStays) {
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"cdmenu"});
    EXPECT_FALSE(startUpIsGone());
    EXPECT_EQ(world.system.pointers, (std::vector{platform::PointerShape::hourglass, platform::PointerShape::normal}));
    EXPECT_TRUE(world.processes.started.empty());
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(StartUp, AudioCd1TypedAsAnArgumentOpensTheMainMenu) {
    EXPECT_FALSE(start("AUDIOCD1"));
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, TheDiscWindowsOpenAtStartWhenTheSettingsSaySo) {
    settings.startInDiscWindows = 1;
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"CD1st"});
    EXPECT_TRUE(startUpIsGone());
}

TEST_F(StartUp, TheAudioWindowOpensAtStartInAnAudioOnlySetup) {
    settings.startInDiscWindows = 1;
    settings.cdRomEnabled = 0;
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"CDForm"});
    EXPECT_TRUE(startUpIsGone());
}

TEST_F(StartUp, SomeoneWhoReturnedToTheMenuGetsTheMenu) {
    settings.startInDiscWindows = 1;
    state.returnedToMenu = 1;
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

struct RunModeCase {
    const char* argument;
    const char* window;
    const char* runMode;
};

TEST_F(StartUp, EachRunModeWordOpensItsWindow) {
    for (const auto& c : {RunModeCase{"CDROMLIB", "CD1st", ""}, RunModeCase{" rdlib ", "RDtessarel", ""},
                          RunModeCase{"audiocd", "CDForm", ""}, RunModeCase{"MEDIA", "animate", ""},
                          RunModeCase{"D:\\TRACK07.CDA", "CDForm", "7"}, RunModeCase{"D:\\TRACK00.CDA", "CDForm", ""}}) {
        world.windows.unloadAll();
        settings.startInDiscWindows = 1;
        EXPECT_FALSE(start(c.argument));
        EXPECT_EQ(visible(), Names{c.window}) << c.argument;
        EXPECT_EQ(state.runMode, c.runMode) << c.argument;
        EXPECT_TRUE(startUpIsGone());
        EXPECT_EQ(world.system.pointer, platform::PointerShape::hourglass);
        EXPECT_EQ(state.openedDirectly, 0);
    }
}

TEST_F(StartUp, InTheUnseenModeTheWaitingWindowAndTheWallpaperAreLoadedButNotShown) {
    EXPECT_FALSE(start("CDLITE"));
    EXPECT_EQ(visible(), Names{});
    EXPECT_EQ(world.windows.loadedNames(), (Names{"CD1st", "Form26"}));
    EXPECT_EQ(world.windows.find<forms::Form>("Form26")->frontRequests.get(), 1);
    EXPECT_EQ(state.runMode, "CDLITE");
}

TEST_F(StartUp, AMediaFileOpensTheMediaWindowOverItsBackground) {
    EXPECT_FALSE(start("c:\\My Films\\a.avi"));
    EXPECT_EQ(visible(), (Names{"animate", "animbg"}));
    EXPECT_EQ(opened, (Names{"Load1st", "animbg", "animate"}));
    EXPECT_EQ(state.runMode, "C:\\MY FILMS\\A.AVI");
    EXPECT_EQ(state.openedDirectly, 1);
    EXPECT_TRUE(startUpIsGone());
}

TEST_F(StartUp, AnyOtherWordEndingInLibIsTakenForAMediaPath) {
    EXPECT_FALSE(start("C:\\CDROMLIB"));
    EXPECT_EQ(visible(), (Names{"animate", "animbg"}));
    EXPECT_EQ(state.runMode, "C:\\CDROMLIB");
}

TEST_F(StartUp, AProgramInARootStartsWithoutAChangeOfDirectoryAndNoWindowOpens) {
    world.files.put("C:\\GAME.EXE");
    EXPECT_TRUE(start("C:\\game.exe"));
    EXPECT_EQ(world.processes.started, (std::vector{StartedProgram{"C:\\game.exe", "C:\\", platform::WindowStyle::normal}}));
    EXPECT_TRUE(world.files.directories.empty());
    EXPECT_EQ(visible(), Names{});
}

TEST_F(StartUp, AProgramInAFolderStartsThere) {
    world.files.put("C:\\Old Games\\GAME.EXE");
    EXPECT_TRUE(start("C:\\Old Games\\game.exe"));
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"\"C:\\Old Games\\game.exe\"", "C:\\Old Games", platform::WindowStyle::normal}}));
}

TEST_F(StartUp, AProgramThatDoesNotExistIsIgnored) {
    EXPECT_FALSE(start("C:\\nowhere\\game.exe"));
    EXPECT_EQ(visible(), Names{"cdmenu"});
    EXPECT_TRUE(world.processes.started.empty());
    EXPECT_EQ(state.runMode, "");
}

TEST_F(StartUp, TheMachineAndTheScreenAreTakenDown) {
    world.system.platform = 2;
    world.system.screenInfo = {1024 * 15 + 7, 768 * 15, 15, 8, 2};
    world.system.windows = "C:\\Windows";
    EXPECT_FALSE(start());
    EXPECT_EQ(state.osPlatform, 2);
    EXPECT_EQ(state.screenWidthPixels, 1024);
    EXPECT_EQ(state.screenClass, 3);
    EXPECT_EQ(state.smallFontsDisplay, 1);
    EXPECT_EQ(state.displayColors, 65536);
    EXPECT_EQ(state.systemDir, "C:\\WINDOWS\\SYSTEM");
    EXPECT_EQ(state.windowsDir, "C:\\WINDOWS");
}

TEST_F(StartUp, LargeFontsAndAnUnknownPlatformCountAsZero) {
    world.system.platform = std::nullopt;
    world.system.screenInfo = {1024 * 12, 768 * 12, 12, 32, 1};
    EXPECT_FALSE(start());
    EXPECT_EQ(state.osPlatform, 0);
    EXPECT_EQ(state.smallFontsDisplay, 0);
    EXPECT_EQ(state.screenWidthPixels, 1024);
    EXPECT_EQ(state.displayColors, 4294967296.0);
}

TEST_F(StartUp, AScreenWithoutAScaleIsNoWiderThanNothing) {
    world.system.screenInfo = {0, 0, 0, 24, 1};
    EXPECT_FALSE(start());
    EXPECT_EQ(state.screenWidthPixels, 0);
    EXPECT_EQ(state.screenClass, 1);
}

TEST(ScreenClass, ChangesAboveSevenNinetyNineTenTwentyThreeAndTwelveSeventyNine) {
    EXPECT_EQ(screenClassFor(799), 1);
    EXPECT_EQ(screenClassFor(800), 2);
    EXPECT_EQ(screenClassFor(1023), 2);
    EXPECT_EQ(screenClassFor(1024), 3);
    EXPECT_EQ(screenClassFor(1279), 3);
    EXPECT_EQ(screenClassFor(1280), 4);
}

TEST_F(StartUp, OnAFirstRunSetUpIsStartedAndTheProcessEnds) {
    hasTslwin1 = false;
    EXPECT_TRUE(start());
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"cdsetup.exe INITSETUP", "C:\\Tessarel", platform::WindowStyle::normal}}));
    EXPECT_EQ(visible(), Names{});
}

TEST_F(StartUp, ASetUpThatCannotBeStartedIsToldBeforeTheProcessEnds) {
    hasTslwin1 = false;
    world.processes.failAll = Fault::notFound;
    EXPECT_TRUE(start());
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_NE(world.dialogs.lastText().find("cdsetup.exe INITSETUP"), std::string::npos);
}

TEST_F(StartUp, DriveTypesAreKeptAndTheHighestCdRomLetterIsTheLast) {
    world.drives.types['F'] = platform::DriveType::cdRom;
    world.drives.types['E'] = platform::DriveType::removable;
    EXPECT_FALSE(start());
    EXPECT_EQ(state.lastCdDriveLetter, 'F');
    EXPECT_EQ(state.driveTypes[2], 3);
    EXPECT_EQ(state.driveTypes[3], 5);
    EXPECT_EQ(state.driveTypes[4], 2);
    EXPECT_EQ(state.driveTypes[25], 1);
    EXPECT_EQ(world.drives.typeCalls, 26);
}

TEST_F(StartUp, WithoutAnyCdRomDriveTheLastLetterIsD) {
    world.drives.types.erase('D');
    settings.cdRomEnabled = 0;
    EXPECT_FALSE(start());
    EXPECT_EQ(state.lastCdDriveLetter, 'D');
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, ADriveThatIsNoCdRomIsWarnedOfAndYesLeadsToSetUp) {
    world.drives.types['D'] = platform::DriveType::fixed;
    settings.cdDrive = "d:\\";
    world.dialogs.answers = {platform::Answer::yes};
    EXPECT_TRUE(start());
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(
        world.dialogs.boxes[0],
        (platform::MessageBox{"Tessarel",
                              "NOTE: the Primary CD-ROM drive selected does not appear to be a CD-ROM drive. Please verify "
                              "that the D drive currently selected is in fact a CD-ROM drive. If the selected drive is a "
                              "CD-ROM drive but does not operate properly, you may have to obtain an updated CD-ROM "
                              "driver.\n\nDo You Wish to Access the Setup Section?",
                              platform::Buttons::yesNo, platform::Icon::exclamation}));
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"cdsetup.exe", "C:\\Tessarel", platform::WindowStyle::normal}}));
    EXPECT_EQ(state.setupRequested, 1);
    EXPECT_EQ(state.discSearchDormant, 1);
    EXPECT_EQ(world.system.pointer, platform::PointerShape::normal);
    EXPECT_EQ(visible(), Names{});
}

TEST_F(StartUp, AnIgnoredDriveWarningIsRememberedAndTheMenuOpens) {
    world.drives.types['D'] = platform::DriveType::fixed;
    world.dialogs.answers = {platform::Answer::no};
    EXPECT_FALSE(start());
    EXPECT_EQ(state.driveWarningIgnored, 1);
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, AfterAnIgnoredWarningADriveBeyondTheLastOneDoesNotLeadToSetUp) {
    settings.cdDrive = "Q:\\";
    world.dialogs.answers = {platform::Answer::no};
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, AfterAnIgnoredWarningAnEmptyDriveDoesNotLeadToSetUp) {
    settings.cdDrive = "";
    EXPECT_FALSE(start());
    EXPECT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, AfterAnIgnoredWarningANewDataDirectoryIsUsedAtOnce) {
    world.drives.types['D'] = platform::DriveType::fixed;
    world.files.remove("C:\\Tessarel\\cdromlib.grp");
    world.files.putFolder("C:\\Other");
    world.dialogs.inputAnswers = {"C:\\Other"};
    EXPECT_FALSE(start());
    EXPECT_EQ(state.dataDir, "C:\\Other");
    EXPECT_EQ(world.files.bytes("C:\\Other\\TSLWIN4.INI"), emptyTslwin4Bytes());
    EXPECT_EQ(visible(), Names{"cdmenu"});
    EXPECT_TRUE(world.processes.started.empty());
}

TEST_F(StartUp, ADriveLetterBeyondTheHighestCdRomDriveLeadsToSetUpWithoutAMessage) {
    settings.cdDrive = "E:\\";
    settings.cdRomEnabled = 0;
    EXPECT_TRUE(start());
    EXPECT_TRUE(world.dialogs.boxes.empty());
    EXPECT_EQ(world.processes.lastCommand(), "cdsetup.exe");
    EXPECT_EQ(visible(), Names{});
}

TEST_F(StartUp, SkippedDriveChecksAskForNoDriveTypeAndLeaveTheAsymmetry) {
    settings.skipDriveChecks = 1;
    world.drives.types.clear();
    world.files.put("C:\\Tessarel\\TSL.DAT");
    world.files.remove("C:\\Tessarel\\cdromlib.grp");
    EXPECT_FALSE(start());
    EXPECT_EQ(world.drives.typeCalls, 0);
    EXPECT_TRUE(world.dialogs.boxes.empty());
    EXPECT_TRUE(world.dialogs.prompts.empty());
    EXPECT_EQ(state.cdDrivePrimary, "");
    EXPECT_TRUE(world.files.exists("C:\\Tessarel\\TSL.DAT"));
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, AStaleHandOverFileIsDeletedAndThePrimaryDriveKept) {
    world.files.put("C:\\Tessarel\\tsl.dat");
    EXPECT_FALSE(start());
    EXPECT_FALSE(world.files.exists("C:\\Tessarel\\TSL.DAT"));
    EXPECT_EQ(state.cdDrivePrimary, "D:\\");
}

TEST_F(StartUp, AnEmptyDriveWithALibraryLeadsToSetUp) {
    settings.cdDrive = "";
    settings.cdRomEnabled = 0;
    EXPECT_TRUE(start());
    EXPECT_EQ(world.processes.lastCommand(), "cdsetup.exe");
    EXPECT_TRUE(world.dialogs.prompts.empty());
}

TEST_F(StartUp, AMissingLibraryAsksForTheDataDirectoryAndThenSetsUp) {
    world.files.remove("C:\\Tessarel\\cdromlib.grp");
    world.files.putFolder("C:\\Other");
    world.dialogs.inputAnswers = {"C:\\Other"};
    EXPECT_TRUE(start());
    EXPECT_EQ(world.dialogs.prompts, (std::vector<std::pair<std::string, std::string>>{{"Tessarel", directoryPrompt}}));
    EXPECT_EQ(state.dataDir, "C:\\Other");
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"cdsetup.exe", "C:\\Other", platform::WindowStyle::normal}}));
    EXPECT_EQ(world.files.bytes("C:\\WINDOWS\\SYSTEM\\TSLWIN.INI"), tslwinBytes(settings));
}

TEST_F(StartUp, ASetUpThatCannotBeStartedIsToldAndWhatWasReadStillServes) {
    settings.cdDrive = "Q:\\";
    settings.cdRomEnabled = 0;
    world.processes.failAll = Fault::notFound;
    EXPECT_FALSE(start());
    EXPECT_NE(world.dialogs.lastText().find("cdsetup.exe"), std::string::npos);
    EXPECT_EQ(visible(), Names{"cdmenu"});
    EXPECT_EQ(state.setupRequested, 0);
}

TEST_F(StartUp, ASetUpThatCannotBeStartedFromThereIsToldToo) {
    world.files.remove("C:\\Tessarel\\cdromlib.grp");
    world.dialogs.inputAnswers = {"C:\\Tessarel"};
    world.processes.failAll = Fault::notFound;
    EXPECT_TRUE(start());
    EXPECT_NE(world.dialogs.lastText().find("cdsetup.exe"), std::string::npos);
}

TEST_F(StartUp, AnAnswerThatIsNoFullPathEndsTheProcess) {
    for (const auto& answer :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("Tessarel"),
          std::optional<std::string>("C:Tessarel"), std::optional<std::string>("\\\\server\\x")}) {
        world.dialogs.inputAnswers = {answer};
        EXPECT_TRUE(startAsItIs());
        EXPECT_TRUE(world.processes.started.empty());
        EXPECT_EQ(world.system.pointer, platform::PointerShape::normal);
        world.windows.unloadAll();
    }
    EXPECT_EQ(world.dialogs.prompts.size(), 5U);
}

TEST_F(StartUp, AMissingOrBrokenTslwinAsksForTheDataDirectory) {
    for (const auto& content : {std::string(), std::string("\"C:\\Tessarel\"\r\n\"D:\\\"\r\n0\r\n1\r\n1\r\n"),
                                std::string("\"C:\\Tessarel\r\n"), std::string("\"C:\\Tessarel\"\r\n\"D:\\\"\r\n99999\r\n")}) {
        world.files.put("C:\\WINDOWS\\SYSTEM\\TSLWIN.INI", content);
        world.dialogs.inputAnswers = {"C:\\Tessarel"};
        EXPECT_TRUE(startAsItIs());
        EXPECT_EQ(world.processes.lastCommand(), "cdsetup.exe");
        world.windows.unloadAll();
    }
    EXPECT_EQ(world.dialogs.prompts.size(), 4U);
}

TEST_F(StartUp, AMissingSystemDirectoryAsksForTheDataDirectory) {
    world.system.system = "C:\\NOWHERE";
    EXPECT_TRUE(start());
    EXPECT_EQ(world.dialogs.prompts.size(), 1U);
}

TEST_F(StartUp, LaterSettingsFillTheColoursTheMixerTheRemovableDriveAndTheMenusSize) {
    settings.rdDrive = "R:\\";
    settings.rdEnabled = 1;
    world.files.put("C:\\Tessarel\\TSLWIN2.INI", tslwin2Bytes(settings));
    world.files.put("C:\\Tessarel\\CDMMAX.DAT", "1\r\n");
    world.files.put("C:\\WINDOWS\\sndvol32.exe");
    EXPECT_FALSE(start());
    EXPECT_EQ(state.panelColors[0], 65280U);
    EXPECT_EQ(state.mixerPath, "C:\\WINDOWS\\sndvol32.exe");
    EXPECT_EQ(state.rdDrivePrimary, "R:\\");
    EXPECT_EQ(state.rdEnabled, 1);
    EXPECT_EQ(state.menuMaximised, 1);
    EXPECT_EQ(state.setupRequested, 0);
}

TEST_F(StartUp, AChosenMixerIsKept) {
    settings.mixerPath = "C:\\MIX.EXE";
    world.files.put("C:\\WINDOWS\\sndvol32.exe");
    EXPECT_FALSE(start());
    EXPECT_EQ(state.mixerPath, "C:\\MIX.EXE");
    EXPECT_EQ(state.menuMaximised, 0);
}

TEST_F(StartUp, WithoutTheSystemsMixerNoneIsChosen) {
    EXPECT_FALSE(start());
    EXPECT_EQ(state.mixerPath, "");
}

TEST_F(StartUp, WallpaperModeThreeShowsTheWallpaperUnderTheFirstWindow) {
    settings.wallpaperMode = 3;
    settings.startInDiscWindows = 1;
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), (Names{"CD1st", "Form26"}));
    EXPECT_EQ(opened, (Names{"Load1st", "Form26", "CD1st"}));
}

TEST_F(StartUp, WallpaperModeTwoWaitsForAWindowOfItsOwn) {
    settings.wallpaperMode = 2;
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"cdmenu"});
}

TEST_F(StartUp, StateLeftFromBeforeIsCleared) {
    state.discDrawerOpen = 1;
    state.menuWindowOpen.fill(1);
    state.discKey = "Audio CD";
    state.cursorHidden = 7;
    state.driveWarningIgnored = 1;
    state.setupRequested = 1;
    EXPECT_FALSE(start());
    EXPECT_EQ(state.discDrawerOpen, 0);
    EXPECT_EQ(state.menuWindowOpen, (std::array<std::int16_t, 9>{}));
    EXPECT_EQ(state.discKey, "");
    EXPECT_EQ(state.cursorHidden, 0);
    EXPECT_EQ(state.driveWarningIgnored, 0);
    EXPECT_EQ(state.setupRequested, 0);
    EXPECT_EQ(state.discSearchDormant, 0);
}

TEST_F(StartUp, AHiddenCursorStaysHidden) {
    state.cursorHidden = 1;
    EXPECT_FALSE(start());
    EXPECT_EQ(state.cursorHidden, 1);
}

TEST_F(StartUp, TheCurrentDirectoryIsTheDataDirectoryAfterwards) {
    EXPECT_FALSE(start());
    EXPECT_EQ(world.files.currentDirectory(), "C:\\Tessarel");
}

TEST_F(StartUp, WithBrokenOrMissingSettingsAWindowOpensAllTheSame) {
    std::mt19937 random(7);
    std::string noise(5000, ' ');
    for (auto& c : noise) {
        c = static_cast<char>(random() & 0xFFU);
    }
    const std::vector<std::string> contents = {"",
                                               "\"",
                                               "\x1A",
                                               "\"open\r\n1\r\n",
                                               "-\r\n1e999\r\n99999999999\r\n",
                                               noise,
                                               std::string(4096, '\0'),
                                               std::string(200000, ','),
                                               "\xEF\xBB\xBF\"\xC3\"\r\n",
                                               std::string(2 * 1024 * 1024, '9')};
    for (const auto& content : contents) {
        for (const auto* name : {"TSLWIN2.INI", "TSLWIN3.INI", "TSLWIN4.INI", "TSLWIN6.INI", "modelast.dat", "tsllinks.ini"}) {
            world.files.put(std::string("C:\\Tessarel\\") + name, content);
        }
        settings.mixerPath.clear();
        world.files.put("C:\\WINDOWS\\SYSTEM\\TSLWIN.INI", tslwinBytes(settings));
        world.files.put("C:\\Tessarel\\TSLWIN1.INI", content);
        world.files.put("C:\\Tessarel\\TSLWIN5.INI", content);
        state = SharedState{};
        EXPECT_FALSE(startAsItIs());
        EXPECT_FALSE(visible().empty());
        world.windows.unloadAll();
    }
}

TEST_F(StartUp, WithoutAnySettingsFileButTheFirstTwoTheMenuOpens) {
    EXPECT_FALSE(start());
    EXPECT_EQ(visible(), Names{"cdmenu"});
    EXPECT_EQ(state.rdEnabled, 0);
    EXPECT_EQ(state.menuColors[5], Variant::number(0x80FFFF));
}

}  // namespace
}  // namespace tessarel::shell
