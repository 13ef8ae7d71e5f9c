#include "shell/settings_files.h"

#include <gtest/gtest.h>

#include "shell/panel_colors.h"
#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

class SettingsFiles : public testing::Test {
protected:
    static std::string inData(const char* name) { return std::string("C:\\Tessarel\\") + name; }

    fakes::World world;
    SharedState& state = world.state;
    const Context& context = world.context;
};

std::string fullTslwin4(const char* line9, const char* line10) {
    return std::string("1\r\n\"r\"\r\n5\r\n\"kept\"\r\n0\r\n0\r\n0\r\n\"C:\\old.exe\"\r\n") + line9 + "\r\n" + line10 +
           "\r\n1\r\n\"s\"\r\n0\r\n0\r\n.75\r\n1\r\n0\r\n255\r\n65280\r\n\"m\"\r\n";
}

TEST_F(SettingsFiles, AMissingTslwin4IsMadeAndTheDefaultsOfLinesNineAndTenAreSkipped) {
    loadTslwin4(context);
    EXPECT_EQ(world.files.bytes(inData("TSLWIN4.INI")), emptyTslwin4Bytes());
    EXPECT_EQ(state.mediaGapSeconds, "");
    EXPECT_EQ(state.quickTipsFlag, "");
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(SettingsFiles, TheNextStartAfterThatAppliesTheDefaults) {
    loadTslwin4(context);
    loadTslwin4(context);
    EXPECT_EQ(state.mediaGapSeconds, "1");
    EXPECT_EQ(state.quickTipsFlag, "0");
}

TEST_F(SettingsFiles, EmptyLinesNineAndTenOfTslwin4BecomeOneAndZero) {
    world.files.put(inData("tslwin4.ini"), fullTslwin4("\"\"", "\"\""));
    loadTslwin4(context);
    EXPECT_EQ(state.mediaGapSeconds, "1");
    EXPECT_EQ(state.quickTipsFlag, "0");
    EXPECT_EQ(world.files.writes, 0);
}

TEST_F(SettingsFiles, FilledLinesNineAndTenStay) {
    world.files.put(inData("TSLWIN4.INI"), fullTslwin4("\"3\"", "\"1\""));
    loadTslwin4(context);
    EXPECT_EQ(state.mediaGapSeconds, "3");
    EXPECT_EQ(state.quickTipsFlag, "1");
    EXPECT_FLOAT_EQ(state.mediaScale, 0.75F);
}

TEST_F(SettingsFiles, ABrokenTslwin4IsReplacedAndSetsNoField) {
    world.files.put(inData("TSLWIN4.INI"), "1\r\n\"C:\\real.exe\"\r\n");
    loadTslwin4(context);
    EXPECT_EQ(world.files.bytes(inData("TSLWIN4.INI")), emptyTslwin4Bytes());
    EXPECT_EQ(state.defaultPanel, 0);
    EXPECT_EQ(state.realPlayerPath, "");
    EXPECT_EQ(state.mediaGapSeconds, "");
}

TEST_F(SettingsFiles, ATslwin4ThatCannotBeMadeIsToldAndStartUpGoesOn) {
    world.files.failWrites = Fault::full;
    loadTslwin4(context);
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Tessarel");
    EXPECT_NE(world.dialogs.lastText().find("TSLWIN4.INI"), std::string::npos);
}

TEST_F(SettingsFiles, ARewriteOfTslwin4KeepsAllOtherLines) {
    const auto before = fullTslwin4("\"\"", "\"\"");
    world.files.put(inData("TSLWIN4.INI"), before);
    EXPECT_TRUE(rewriteTslwin4(context, [](Settings& s) { s.webBrowserPath = "C:\\new.exe"; }));
    auto expected = before;
    expected.replace(expected.find("old"), 3, "new");
    EXPECT_EQ(world.files.bytes(inData("TSLWIN4.INI")), expected);
}

TEST_F(SettingsFiles, ARewriteOfALostTslwin4WritesTheSettingsInMemory) {
    state.realPlayerPath = "C:\\real.exe";
    EXPECT_TRUE(rewriteTslwin4(context, [](Settings& s) { s.quickTipsFlag = "1"; }));
    Settings expected = state;
    expected.quickTipsFlag = "1";
    EXPECT_EQ(world.files.bytes(inData("TSLWIN4.INI")), tslwin4Bytes(expected));
    EXPECT_EQ(state.quickTipsFlag, "");
}

TEST_F(SettingsFiles, AMissingTslwin2TurnsRemovableDisksOff) {
    state.rdEnabled = 1;
    state.rdDrive = "F:\\";
    loadTslwin2(context);
    EXPECT_EQ(state.rdEnabled, 0);
    EXPECT_EQ(state.rdDrive, "");
}

TEST_F(SettingsFiles, AShortTslwin2TurnsRemovableDisksOff) {
    world.files.put(inData("TSLWIN2.INI"), "\"F:\\\"\r\n1\r\n\"F:\\\"\r\n");
    loadTslwin2(context);
    EXPECT_EQ(state.rdEnabled, 0);
    EXPECT_EQ(state.rdDrive, "");
}

TEST_F(SettingsFiles, AMissingTslwin6GivesTheTwoTextColours) {
    state.menuColorChanged.fill(1);
    loadTslwin6(context);
    for (std::size_t i = 1; i <= 4; ++i) {
        EXPECT_EQ(state.menuColors.at(i), Variant{});
    }
    EXPECT_EQ(state.menuColors[5], Variant::number(0x80FFFF));
    EXPECT_EQ(state.menuColors[6], Variant::number(255));
    EXPECT_EQ(state.menuColorChanged, (std::array<std::int16_t, 7>{}));
}

TEST_F(SettingsFiles, APresentTslwin6ClearsTheMarksOfChangeToo) {
    state.menuColorChanged.fill(1);
    world.files.put(inData("TSLWIN6.INI"), "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n");
    loadTslwin6(context);
    EXPECT_EQ(state.menuColors[5], Variant::number(5));
    EXPECT_EQ(state.menuColorChanged, (std::array<std::int16_t, 7>{}));
    EXPECT_TRUE(writeTslwin6(context));
    EXPECT_EQ(world.files.bytes(inData("TSLWIN6.INI")), "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n");
}

TEST_F(SettingsFiles, ModeLastIsWrittenWholeFromTheDataDirectory) {
    state.audioTimeMode = 2;
    state.alwaysOnTop = 1;
    EXPECT_TRUE(writeModeLast(context));
    EXPECT_EQ(world.files.bytes(inData("modelast.dat")), "2\r\n0\r\n1\r\n");
    EXPECT_EQ(world.files.currentDirectory(), "C:\\Tessarel");
}

TEST_F(SettingsFiles, WithoutModeLastAllModesAreZero) {
    loadModeLast(context);
    EXPECT_EQ(state.audioTimeMode + state.mediaTimeMode + state.alwaysOnTop, 0);
}

TEST_F(SettingsFiles, ModesOutsideTheirRangeCountAsZero) {
    world.files.put(inData("modelast.dat"), "4\r\n-1\r\n2\r\n");
    loadModeLast(context);
    EXPECT_EQ(state.audioTimeMode, 0);
    EXPECT_EQ(state.mediaTimeMode, 0);
    EXPECT_EQ(state.alwaysOnTop, 0);
}

TEST_F(SettingsFiles, AFailedWriteIsToldAndLeavesTheOldFile) {
    world.files.put(inData("modelast.dat"), "1\r\n1\r\n1\r\n");
    world.files.failWrites = Fault::denied;
    EXPECT_FALSE(writeModeLast(context));
    EXPECT_EQ(world.files.bytes(inData("modelast.dat")), "1\r\n1\r\n1\r\n");
    EXPECT_EQ(world.dialogs.boxes.size(), 1U);
}

TEST_F(SettingsFiles, ThePictureOfTheMenuIsTheProgramsOwnUnlessAFileNamesAnother) {
    EXPECT_EQ(loadMenuBackground(context), "C:\\Tessarel\\tslmain.bmp");
    EXPECT_TRUE(writeMenuBackground(context, "C:\\my.bmp"));
    EXPECT_EQ(loadMenuBackground(context), "C:\\my.bmp");
    EXPECT_EQ(world.files.bytes(inData("TSLBMP.INI")), "\"C:\\my.bmp\"\r\n");
}

TEST_F(SettingsFiles, TheMarkOfAMaximisedMenuComesAndGoes) {
    writeMenuMaximised(context, true);
    EXPECT_EQ(world.files.bytes(inData("cdmmax.dat")), "1\r\n");
    EXPECT_TRUE(isMenuMaximised(context));
    writeMenuMaximised(context, false);
    EXPECT_FALSE(isMenuMaximised(context));
    writeMenuMaximised(context, false);
    EXPECT_EQ(world.files.removed.size(), 1U);
}

TEST_F(SettingsFiles, TheSmallFilesComeBackAsTheyWereWritten) {
    const MenuFont font{"Arial", 14, 1, 0, 0, Variant::number(255), Variant::number(0)};
    EXPECT_FALSE(loadMenuFont(context));
    EXPECT_TRUE(writeMenuFont(context, font));
    EXPECT_EQ(loadMenuFont(context), font);
    EXPECT_FALSE(loadArtFolder(context));
    EXPECT_TRUE(writeArtFolder(context, {"C:\\art", 1}));
    EXPECT_EQ(loadArtFolder(context), (ArtFolder{"C:\\art", 1}));
    EXPECT_FALSE(loadWaveDir(context));
    EXPECT_TRUE(writeWaveDir(context, "C:\\w"));
    EXPECT_EQ(loadWaveDir(context), "C:\\w");
    EXPECT_FALSE(loadMediaDir(context));
    EXPECT_TRUE(writeMediaDir(context, "C:\\m"));
    EXPECT_EQ(loadMediaDir(context), "C:\\m");
    EXPECT_EQ(world.files.bytes(inData("mediadir.dat")), "\"C:\\m\"\r\n");
}

TEST_F(SettingsFiles, APositionFileIsFoundInAnySpelling) {
    world.files.put(inData("cdposn.dat"), "300\r\n450\r\n");
    EXPECT_EQ(loadPlace(context, cdFormPositionFile), (WindowPlace{300, 450}));
    EXPECT_TRUE(writePlace(context, volumePositionFile, {1, 2}));
    EXPECT_EQ(world.files.bytes(inData("vcpos.DAT")), "1\r\n2\r\n");
}

TEST_F(SettingsFiles, ABrokenPositionFileCountsAsMissing) {
    world.files.put(inData("TSLPOS.DAT"), "300\r\n");
    EXPECT_FALSE(loadPlace(context, discFormPositionFile));
}

TEST_F(SettingsFiles, WindowsOneTwoFiveTwoBytesAreReadAsText) {
    world.files.put(inData("mediadir.dat"), "\"C:\\M\xFCller\"\r\n");
    EXPECT_EQ(loadMediaDir(context), "C:\\M\xC3\xBCller");
}

TEST_F(SettingsFiles, OfAnEndlessFileOnlyTheFirstMegabyteIsRead) {
    world.files.put(inData("mediadir.dat"), "\"" + std::string(3 * 1024 * 1024, 'x'));
    EXPECT_EQ(loadMediaDir(context)->size(), 1024U * 1024 - 1);
}

TEST(PanelColors, AreTheProgramsOwnWithoutCustomColours) {
    EXPECT_EQ(panelColorsFor(false, 1, 2),
              (std::array<Color, 11>{65280, 65280, 16448, 65535, 65280, 255, 16384, 255, 0xFFFF00, 0x404000, 0}));
}

TEST(PanelColors, AreMadeOfTheUsersTwoColoursButForTheSecond) {
    EXPECT_EQ(panelColorsFor(true, 1, 2), (std::array<Color, 11>{1, 16384, 2, 1, 1, 2, 2, 1, 1, 2, 2}));
}

TEST(PanelColors, CustomColoursReachThePanelsAndTheFonts) {
    SharedState state;
    state.customColors = 1;
    state.customForeColor = Variant::number(7);
    state.customBackColor = Variant::number(9);
    fillColorTables(state);
    EXPECT_EQ(state.panelColors[0], 7U);
    EXPECT_EQ(state.panelColors[10], 9U);
    for (const std::size_t i : {4U, 9U, 10U}) {
        EXPECT_EQ(state.displayColors13.at(i), Variant::number(7));
    }
    EXPECT_EQ(state.displayColors13[5], Variant{});
    EXPECT_EQ(state.fonts[0].fontColor, Variant::number(7));
    EXPECT_EQ(state.fonts[1].fontColor, Variant::number(7));
    EXPECT_EQ(state.fonts[3].fontColor, Variant{});
}

TEST(PanelColors, TwoEqualCustomColoursBecomeAPairThatCanBeRead) {
    SharedState state;
    state.customColors = 1;
    state.customForeColor = Variant::number(500);
    state.customBackColor = {"500", true};
    fillColorTables(state);
    EXPECT_EQ(state.panelColors[0], 0U);
    EXPECT_EQ(state.panelColors[2], 0x29CF95U);
    EXPECT_EQ(state.customForeColor, Variant::number(0));
    EXPECT_EQ(state.customBackColor, Variant::number(0x29CF95));
}

TEST(PanelColors, EqualColoursStayWhileTheyAreNotUsed) {
    SharedState state;
    state.customForeColor = Variant::number(500);
    state.customBackColor = Variant::number(500);
    fillColorTables(state);
    EXPECT_EQ(state.customForeColor, Variant::number(500));
    EXPECT_EQ(state.panelColors[0], 65280U);
}

TEST(PanelColors, AValueThatIsNoColourIsBlackAndOneBeyondIsCut) {
    EXPECT_EQ(colorOf({"blue", true}), 0U);
    EXPECT_EQ(colorOf({"1e300", false}), 0U);
    EXPECT_EQ(colorOf(Variant::number(-1)), 0xFFFFFFU);
    EXPECT_EQ(colorOf({"65280", true}), 65280U);
}

TEST(DiscState, AResetForgetsTheDiscAndTheEntryButNotTheOpenDrawer) {
    SharedState state;
    state.discKey = "Audio CD";
    state.discFingerprint = state.discFingerprintShown = "X";
    state.libRecord = 9;
    state.libTitle = "T";
    state.autorunDetected = state.autoStartDone = state.discWindowActive = state.activeDiscKind = 1;
    state.rcolorPending.fill(1);
    state.discDrawerOpen = 1;
    resetDiscState(state);
    EXPECT_EQ(state.discKey + state.discFingerprint + state.discFingerprintShown + state.libTitle, "");
    EXPECT_EQ(state.libRecord, 1);
    EXPECT_EQ(state.autorunDetected + state.autoStartDone + state.discWindowActive + state.activeDiscKind, 0);
    EXPECT_EQ(state.rcolorPending, (std::array<std::int16_t, 3>{}));
    EXPECT_EQ(state.discSearchDormant, 1);
    EXPECT_EQ(state.discDrawerOpen, 1);
}

TEST(DiscState, ADrivesLetterIsACapitalAndABlankWithoutADrive) {
    EXPECT_EQ(driveLetter("d:\\"), 'D');
    EXPECT_EQ(driveLetter("E:\\"), 'E');
    EXPECT_EQ(driveLetter(""), ' ');
}

}  // namespace
}  // namespace tessarel::shell
