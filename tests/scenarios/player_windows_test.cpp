// The list of the program, the sizes of the display, and the windows and programs that the player's keys lead to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audio/aplaylst.h"
#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace functionKeys = audio::functionKeys;
namespace programKeys = audio::programKeys;

struct PlayerWindows : testing::Test {
    Machine machine;
    audio::CDFormFace& face() { return machine.player().face; }
    audio::PlayerState& state() { return machine.state(); }
    shell::SharedState& shared() { return machine.program.state; }
    forms::Windows& windows() { return machine.program.windows; }
    audio::aplaylst& list() { return *windows().find<audio::aplaylst>("aplaylst"); }
    bool listUp() { return windows().isVisible("aplaylst"); }
    const std::vector<std::string>& rows() { return list().List1.rows; }

    void open(int tracks) { machine.openPlayer(fakes::makeDisc(tracks, 60)); }
    void program(std::initializer_list<int> tracks) {
        machine.choose(modeKeys::program);
        for (const int track : tracks) {
            machine.pick(track);
        }
    }
};

// ---- The list of the program ----

TEST_F(PlayerWindows, TheFirstPickShowsTheListAndFurtherOnesRefillIt) {
    open(5);
    program({3});
    ASSERT_TRUE(listUp());
    EXPECT_EQ(list().Caption.get(), "CD Playlist");
    EXPECT_EQ(state().programPanelOpen, 1);
    EXPECT_THAT(rows(), ElementsAre("3:\t\t1:00"));
    machine.pick(1);
    EXPECT_THAT(rows(), ElementsAre("3:\t\t1:00", "1:\t\t1:00"));
}

TEST_F(PlayerWindows, TheListLeavesTheKeyboardWithThePlayer) {
    open(5);
    program({3});
    EXPECT_EQ(list().frontRequests.get(), 0);
}

TEST_F(PlayerWindows, AHundredAndFirstPickIsNotEntered) {
    open(5);
    machine.choose(modeKeys::program);
    for (int i = 0; i < 101; ++i) {
        machine.pick(2);
    }
    EXPECT_EQ(state().programCount, 100);
    EXPECT_THAT(rows(), SizeIs(100));
    EXPECT_EQ(state().programList.at(101), 0);
}

TEST_F(PlayerWindows, TheListShowsTheWholeProgramAndSelectsTheRowThatPlays) {
    open(5);
    program({3, 1});
    machine.press(transport::play);
    EXPECT_EQ(list().List1.ListIndex.get(), 0);
    machine.run(62s);
    EXPECT_EQ(list().List1.ListIndex.get(), 1);
    EXPECT_THAT(rows(), SizeIs(2)) << "what has played stays on the list";
}

TEST_F(PlayerWindows, APressOnARowPutsTheSelectionBackOnTheOneThatPlays) {
    open(5);
    program({3, 1, 2});
    machine.press(transport::play);
    list().List1.choose(2);
    EXPECT_EQ(list().List1.ListIndex.get(), 0);
}

TEST_F(PlayerWindows, BeforeThePlayAPressOnARowSelectsIt) {
    open(5);
    program({3, 1, 2});
    list().List1.choose(2);
    EXPECT_EQ(list().List1.ListIndex.get(), 2);
}

TEST_F(PlayerWindows, AListThatIsOpenedDuringThePlaySelectsItsRow) {
    open(5);
    program({3, 1});
    machine.press(transport::play);
    machine.run(62s);
    windows().unload("aplaylst");
    EXPECT_EQ(state().programPanelOpen, 0);
    face().Image16[programKeys::information].press();
    ASSERT_TRUE(listUp());
    EXPECT_EQ(list().List1.ListIndex.get(), 1);
}

TEST_F(PlayerWindows, TheListGoesWhenTheProgramIsOver) {
    open(5);
    program({3});
    machine.press(transport::play);
    machine.run(70s);
    EXPECT_FALSE(listUp());
    EXPECT_EQ(state().programPanelOpen, 0);
}

TEST_F(PlayerWindows, ClearEmptiesTheList) {
    open(5);
    program({3, 1});
    face().Image16[programKeys::clear].press();
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_TRUE(listUp());
}

TEST_F(PlayerWindows, RandomPlayOfATwentyFiveTrackDiscListsTwenty) {
    open(25);
    program({3});
    face().Image10[functionKeys::random].press();
    EXPECT_THAT(rows(), SizeIs(20));
}

TEST_F(PlayerWindows, EscapeClosesTheListAlone) {
    open(5);
    program({3});
    list().dispatch([this] { list().Form_KeyDown(forms::keys::escape, 0); });
    EXPECT_FALSE(listUp());
    EXPECT_TRUE(windows().isVisible("CDForm"));
    EXPECT_EQ(state().programCount, 1);
}

TEST_F(PlayerWindows, F1OnTheListOpensThePlayersHelp) {
    machine.world.files.put("C:\\Tessarel\\cdhelp.exe");
    open(5);
    program({3});
    list().dispatch([this] { list().Form_KeyDown(forms::keys::f1, 0); });
    EXPECT_EQ(shared().helpTopic, 15);
    EXPECT_EQ(machine.world.processes.lastCommand(), "CDHELP.EXE 15");
}

TEST_F(PlayerWindows, TheListTakesItsFontAndColoursFromTheSettings) {
    shared().fonts[3] = {"Gothic", 12, 1, 0, 1, Variant::number(0x123456)};
    shared().displayColors13[5] = Variant::number(0x654321);
    open(5);
    program({3});
    const auto& box = list().List1;
    EXPECT_EQ(box.FontName.get(), "Gothic");
    EXPECT_EQ(box.FontSize.get(), 12);
    EXPECT_TRUE(box.FontBold);
    EXPECT_FALSE(box.FontItalic);
    EXPECT_TRUE(box.FontUnderline);
    EXPECT_EQ(box.ForeColor.get(), 0x123456U);
    EXPECT_EQ(box.BackColor.get(), 0x654321U);
}

TEST_F(PlayerWindows, TheListStandsBesideThePlayerAndWhollyOnTheScreen) {
    open(5);
    program({3});
    const auto screen = machine.world.system.screen();
    EXPECT_EQ(list().Left.get(), std::min(machine.player().Left + machine.player().Width, screen.widthTwips - list().Width));
    EXPECT_LE(list().Top + list().Height, screen.heightTwips);
}

// ---- The art text window ----

TEST_F(PlayerWindows, TheFirstPickShowsTheArtTextToo) {
    fakes::declarePlain(windows(), {"cdartext"});
    open(5);
    program({3});
    EXPECT_TRUE(windows().isVisible("cdartext"));
}

TEST_F(PlayerWindows, TheSettingKeepsTheArtTextAwayFromThePicks) {
    fakes::declarePlain(windows(), {"cdartext"});
    shared().noArtOnPlay = 1;
    open(5);
    program({3});
    EXPECT_TRUE(listUp());
    EXPECT_FALSE(windows().isVisible("cdartext"));
}

TEST_F(PlayerWindows, ProgrammedModeShowsTheArtTextOfADiscWithTitles) {
    fakes::declarePlain(windows(), {"cdartext"});
    open(5);
    machine.choose(modeKeys::program);
    EXPECT_FALSE(windows().isVisible("cdartext"));
    machine.program.record.trackTitles[2] = "Song";
    machine.choose(modeKeys::program);
    EXPECT_TRUE(windows().isVisible("cdartext"));
}

TEST_F(PlayerWindows, InformationShowsTheListInProgrammedModeAndThePlayerComesBackToTheFront) {
    fakes::declarePlain(windows(), {"cdartext"});
    open(5);
    face().Image16[programKeys::information].press();
    EXPECT_TRUE(windows().isVisible("cdartext"));
    EXPECT_FALSE(listUp());
    machine.choose(modeKeys::program);
    const int before = machine.player().frontRequests;
    face().Image16[programKeys::information].press();
    EXPECT_TRUE(listUp());
    EXPECT_EQ(machine.player().frontRequests.get(), before + 1);
}

TEST_F(PlayerWindows, WithoutTheArtTextInformationIsDeadOutsideProgrammedMode) {
    open(5);
    auto& key = face().Image16[programKeys::information];
    EXPECT_FALSE(key.Enabled);
    EXPECT_THAT(key.ToolTipText.get(), HasSubstr("not part of this version"));
    machine.choose(modeKeys::program);
    EXPECT_TRUE(key.Enabled);
    EXPECT_EQ(key.ToolTipText.get(), "Information");
    machine.choose(modeKeys::disc);
    EXPECT_FALSE(key.Enabled);
}

TEST_F(PlayerWindows, EjectTakesTheJacketAndArtWindowsAway) {
    const std::initializer_list<const char*> names{"cdartext", "cdjacket", "cdjkimgs", "cdart", "CDViewer", "cdartsss"};
    fakes::declarePlain(windows(), names);
    open(5);
    for (const auto* name : names) {
        windows().show(name);
    }
    machine.press(transport::eject);
    for (const auto* name : names) {
        EXPECT_FALSE(windows().isLoaded(name)) << name;
    }
}

TEST_F(PlayerWindows, LeavingForTheMainMenuTakesTheArtWindowsAway) {
    fakes::declarePlain(windows(), {"cdmenu", "cdartext", "cdjacket"});
    open(5);
    windows().show("cdartext");
    windows().show("cdjacket");
    face().Image10[functionKeys::mainMenu].press();
    EXPECT_FALSE(windows().isLoaded("cdartext"));
    EXPECT_FALSE(windows().isLoaded("cdjacket"));
    EXPECT_FALSE(windows().isLoaded("CDForm"));
    EXPECT_TRUE(windows().isVisible("cdmenu"));
    EXPECT_EQ(shared().returnedToMenu, 1);
}

TEST_F(PlayerWindows, ADiscThatGoesTakesOnlyTheArtTextAlong) {
    fakes::declarePlain(windows(), {"cdartext", "cdart"});
    open(5);
    windows().show("cdartext");
    windows().show("cdart");
    machine.world.cd.pull();
    machine.run(5s);
    EXPECT_FALSE(windows().isLoaded("cdartext"));
    EXPECT_TRUE(windows().isLoaded("cdart"));
}

// ---- Disc information and web desktop ----

TEST_F(PlayerWindows, DiscInformationOpensTheLibraryOnThisDisc) {
    fakes::declarePlain(windows(), {"acdtabs", "cdinfbg"});
    open(7);
    face().Image10[functionKeys::discInfo].press();
    EXPECT_TRUE(windows().isVisible("cdinfbg"));
    EXPECT_TRUE(windows().isVisible("acdtabs"));
    EXPECT_EQ(machine.program.record.discInfo[2], "7");
    EXPECT_EQ(machine.world.system.pointer, platform::PointerShape::hourglass);
}

TEST_F(PlayerWindows, AMinimisedLibraryIsOpenedAnew) {
    fakes::declarePlain(windows(), {"acdtabs", "cdinfbg"});
    open(7);
    windows().show("acdtabs");
    auto* former = windows().find<forms::Form>("acdtabs");
    former->WindowState = forms::WindowState::minimised;
    former->Caption = std::string("the former one");
    face().Image10[functionKeys::discInfo].press();
    EXPECT_EQ(windows().find<forms::Form>("acdtabs")->Caption.get(), "");
}

TEST_F(PlayerWindows, TheWebDesktopStopsTheIntroAndTakesThePlayerForTheActiveOne) {
    fakes::declarePlain(windows(), {"wwwdtop"});
    open(5);
    machine.choose(modeKeys::intro);
    shared().activeTessarel = shell::Tessarel::none;
    face().webKey.press();
    EXPECT_TRUE(windows().isVisible("wwwdtop"));
    EXPECT_EQ(state().introTrack, 0);
    EXPECT_EQ(shared().activeTessarel, shell::Tessarel::audioCd);
}

// ---- Wallpaper ----

TEST_F(PlayerWindows, TheWallpaperLampTellsHowToTurnTheWallpaperOn) {
    open(5);
    face().wallpaperLamp.press();
    EXPECT_EQ(machine.world.dialogs.lastText(),
              "Wallpaper option is currently turned off!\n\nAccess the Tessarel Setup section to select wallpaper options.");
}

TEST_F(PlayerWindows, TheWallpaperLampShowsAndTakesTheWallpaperAway) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 3;
    shared().wallpaperStyle = 4;
    shared().wallpaperImage = "C:\\sea.bmp";
    open(5);
    EXPECT_EQ(face().wallpaperLamp.Caption.get(), "WP off");
    EXPECT_EQ(face().wallpaperLamp.ForeColor.get(), panelColor(7));
    face().wallpaperLamp.press();
    EXPECT_TRUE(windows().isVisible("Form26"));
    EXPECT_EQ(shared().wallpaperShowing, 1);
    EXPECT_EQ(face().wallpaperLamp.Caption.get(), "WP on");
    EXPECT_EQ(face().wallpaperLamp.ForeColor.get(), panelColor(0));
    face().wallpaperLamp.press();
    EXPECT_FALSE(windows().isLoaded("Form26"));
    EXPECT_EQ(shared().wallpaperShowing, 0);
    EXPECT_EQ(face().wallpaperLamp.Caption.get(), "WP off");
}

TEST_F(PlayerWindows, AWallpaperInAColourNeedsNoPictureAndOneOfNoStyleNeverComes) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 3;
    open(5);
    for (const auto style : {0, 1, 2}) {
        shared().wallpaperStyle = static_cast<std::int16_t>(style);
        windows().unload("Form26");
        face().wallpaperLamp.press();
        EXPECT_EQ(windows().isVisible("Form26"), style > 0) << style;
    }
}

TEST_F(PlayerWindows, AWallpaperWithoutItsPictureIsNotAvailable) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 1;
    shared().wallpaperStyle = 3;
    open(5);
    windows().unload("Form26");
    face().wallpaperLamp.press();
    EXPECT_FALSE(windows().isLoaded("Form26"));
    EXPECT_EQ(face().wallpaperLamp.Caption.get(), "WP n/a");
    EXPECT_EQ(face().wallpaperLamp.ForeColor.get(), panelColor(6));
}

TEST_F(PlayerWindows, AVersionWithoutWallpaperSaysSoOnItsLamp) {
    shared().wallpaperMode = 3;
    open(5);
    EXPECT_FALSE(face().wallpaperLamp.Enabled);
    EXPECT_THAT(face().wallpaperLamp.ToolTipText.get(), HasSubstr("not part of this version"));
}

TEST_F(PlayerWindows, WallpaperModeOneComesWithTheWindow) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 1;
    shared().wallpaperStyle = 1;
    open(5);
    EXPECT_TRUE(windows().isVisible("Form26"));
    EXPECT_EQ(shared().wallpaperShowing, 1);
    EXPECT_EQ(face().wallpaperLamp.Caption.get(), "WP on");
}

TEST_F(PlayerWindows, WallpaperModeTwoWaitsForOtherWindows) {
    fakes::declarePlain(windows(), {"Form26"});
    shared().wallpaperMode = 2;
    open(5);
    EXPECT_FALSE(windows().isLoaded("Form26"));
}

// ---- The enhanced disc ----

struct EnhancedPlayer : PlayerWindows {
    void openEnhanced(std::initializer_list<const char*> files) {
        auto& drive = machine.world.files.drive('D');
        drive.ready = true;
        for (const auto* file : files) {
            machine.world.files.put(std::string("D:\\") + file, "");
        }
        machine.world.cd.insert(fakes::withDataAtTheEnd(fakes::makeDisc(4, 60)));
        machine.openPlayer();
        machine.world.dialogs.boxes.clear();
    }
    auto& started() { return machine.world.processes.started; }
};

TEST_F(EnhancedPlayer, TheKeyStartsTheDiscsProgramFromItsRootAndStopsThePlay) {
    openEnhanced({"README.TXT", "START.EXE"});
    EXPECT_EQ(face().discLamp.Caption.get(), "Enh-CD");
    machine.choose(modeKeys::single);
    machine.press(transport::play);
    machine.run(2s);
    face().enhancedKey.press();
    ASSERT_THAT(started(), SizeIs(1));
    EXPECT_EQ(started()[0].commandLine, "D:\\start.exe");
    EXPECT_EQ(started()[0].directory, "D:\\");
    EXPECT_EQ(started()[0].style, platform::WindowStyle::normal);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(state().playMode, audio::wholeDisc);
    EXPECT_TRUE(face().Image3[modeKeys::disc].Visible);
}

TEST_F(EnhancedPlayer, TheDiscLampIsTheSameKey) {
    openEnhanced({"START.EXE"});
    face().discLamp.press();
    EXPECT_THAT(started(), SizeIs(1));
}

TEST_F(EnhancedPlayer, OnAPureAudioDiscTheLampStartsNothing) {
    open(4);
    face().discLamp.press();
    EXPECT_THAT(started(), IsEmpty());
    EXPECT_THAT(machine.world.dialogs.boxes, IsEmpty());
}

TEST_F(EnhancedPlayer, ADiscWithoutAProgramGetsTheQuestion) {
    openEnhanced({"README.TXT"});
    machine.world.dialogs.answers = {platform::Answer::yes};
    machine.world.dialogs.fileAnswers = {"D:\\DATA\\GO.BAT"};
    face().enhancedKey.press();
    ASSERT_THAT(machine.world.dialogs.boxes, SizeIs(1));
    const auto& box = machine.world.dialogs.boxes[0];
    EXPECT_EQ(box.title, "Tessarel Enhanced CD Menu");
    EXPECT_EQ(box.text, "Enhanced CD Startup File Not Found! Do you wish to search for the program file on the CD?");
    EXPECT_EQ(box.buttons, platform::Buttons::yesNo);
    ASSERT_THAT(machine.world.dialogs.fileDialogs, SizeIs(1));
    const auto& dialog = machine.world.dialogs.fileDialogs[0];
    EXPECT_EQ(dialog.title, "Find Enhanced CD Startup File...");
    EXPECT_EQ(dialog.filter,
              "All Executable Files (*.exe; *.com; *.bat)|*.exe; *.com; *.bat|EXE Files Only (*.exe)|*.exe|COM Files Only "
              "(*.com)|*.com|BAT Files Only (*.bat)|*.bat");
    EXPECT_EQ(dialog.startDirectory, "D:\\");
    ASSERT_THAT(started(), SizeIs(1));
    EXPECT_EQ(started()[0].commandLine, "D:\\DATA\\GO.BAT");
}

TEST_F(EnhancedPlayer, CancelLeavesTheWindowAsItWas) {
    openEnhanced({"README.TXT"});
    machine.choose(modeKeys::single);
    machine.press(transport::play);
    machine.run(2s);
    for (const auto answer : {platform::Answer::no, platform::Answer::yes}) {
        machine.world.dialogs.answers = {answer};
        machine.world.dialogs.fileAnswers = {std::nullopt};
        face().enhancedKey.press();
        EXPECT_THAT(started(), IsEmpty());
        EXPECT_TRUE(machine.sounding());
        EXPECT_EQ(state().playMode, audio::singleTrack);
    }
}

TEST_F(EnhancedPlayer, AProgramThatCannotBeStartedIsTold) {
    openEnhanced({"START.EXE"});
    machine.world.processes.failAll = Fault::unavailable;
    face().enhancedKey.press();
    ASSERT_THAT(machine.world.dialogs.boxes, SizeIs(1));
    EXPECT_THAT(machine.world.dialogs.lastText(), HasSubstr("start.exe"));
    EXPECT_EQ(state().playMode, audio::wholeDisc);
}

// ---- Display ----

TEST_F(PlayerWindows, ColoursOfTheSettingsComeWhenTheWindowIsActivated) {
    open(5);
    shared().panelColors[0] = 0x0A0B0C;
    windows().show("CDForm");
    EXPECT_EQ(face().timeText.ForeColor.get(), 0x0A0B0CU);
    EXPECT_EQ(face().upperLine.ForeColor.get(), 0x0A0B0CU);
}

TEST_F(PlayerWindows, TheExpandedDisplayComesWithTheWindowThatStaysInFront) {
    open(5);
    EXPECT_FALSE(machine.player().expandedDisplay);
    face().expandKey.press();
    EXPECT_TRUE(machine.player().expandedDisplay);
    EXPECT_TRUE(machine.player().alwaysInFront);
    face().expandKey.press();
    EXPECT_FALSE(machine.player().expandedDisplay);
}

TEST_F(PlayerWindows, TheDisplaySizeOutlivesTheWindowAndTheDrawerMakesItNormal) {
    open(5);
    face().expandKey.press();
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_TRUE(machine.player().expandedDisplay);
    machine.player().opendrawer();
    EXPECT_FALSE(machine.player().expandedDisplay);
}

TEST_F(PlayerWindows, PressesOnTheUpperLineStepTheLettersOfBothLinesUpAndDown) {
    open(5);
    face().upperLine.mouseDown(forms::MouseButton::left);
    const int upper = face().upperLine.FontSize;
    const int lower = face().lowerLine.FontSize;
    face().upperLine.mouseDown(forms::MouseButton::left);
    EXPECT_EQ(face().upperLine.FontSize.get(), upper + 1);
    EXPECT_EQ(face().lowerLine.FontSize.get(), lower + 1);
    face().upperLine.mouseDown(forms::MouseButton::right);
    face().upperLine.mouseDown(forms::MouseButton::right);
    EXPECT_EQ(face().upperLine.FontSize.get(), upper - 1);
    EXPECT_EQ(face().lowerLine.FontSize.get(), lower - 1);
}

TEST_F(PlayerWindows, TheLettersStayBetweenTheirBounds) {
    open(5);
    for (int i = 0; i < 40; ++i) {
        face().upperLine.mouseDown(forms::MouseButton::left);
    }
    const int largest = face().upperLine.FontSize;
    EXPECT_LE(largest, 26);
    for (int i = 0; i < 40; ++i) {
        face().upperLine.mouseDown(forms::MouseButton::right);
    }
    EXPECT_GT(face().lowerLine.FontSize.get(), 0);
    EXPECT_LT(face().upperLine.FontSize.get(), largest);
}

TEST_F(PlayerWindows, TheLettersOutliveADisc) {
    open(5);
    face().upperLine.mouseDown(forms::MouseButton::left);
    const int upper = face().upperLine.FontSize;
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(face().upperLine.FontSize.get(), upper);
}

// ---- What the window takes from the user's files ----

TEST_F(PlayerWindows, TheFolderOfTheArtPicturesComesFromItsFile) {
    machine.world.files.putFolder("C:\\PICTURES");
    machine.world.files.put("C:\\Tessarel\\bmpdir.dat", "\"C:\\PICTURES\"\r\n2\r\n");
    open(5);
    EXPECT_EQ(shared().artImageDir, "C:\\PICTURES");
    EXPECT_EQ(shared().bmpSort, 2);
}

TEST_F(PlayerWindows, AnEmptyOrMissingPictureFolderBecomesTheWindowsFolder) {
    for (const auto* folder : {"", "C:\\GONE"}) {
        machine.world.files.put("C:\\Tessarel\\bmpdir.dat", std::string("\"") + folder + "\"\r\n0\r\n");
        windows().unload("CDForm");
        open(5);
        EXPECT_EQ(shared().artImageDir, "C:\\WINDOWS");
    }
}

TEST_F(PlayerWindows, TheFirstFieldOfTheUsersOwnHasTheNameOfItsFile) {
    open(5);
    EXPECT_EQ(shared().userDefined1, "");
    machine.world.files.put("C:\\Tessarel\\userdef.dat", "\"Shelf:\"\r\n\"Mood:\"\r\n");
    windows().unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(shared().userDefined1, "Shelf:");
}

}  // namespace
}  // namespace tessarel::scenarios
