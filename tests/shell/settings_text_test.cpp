#include "shell/settings_text.h"

#include <gtest/gtest.h>

namespace tessarel::shell {
namespace {

// Lines as a file has them.
std::string lines(std::initializer_list<const char*> values) {
    std::string bytes;
    for (const auto* value : values) {
        bytes += std::string(value) + "\r\n";
    }
    return bytes;
}

template <class Fields>
Fields readAll(bool (*read)(SequentialReader&, Fields&), const std::string& text) {
    Fields fields;
    SequentialReader in(text);
    EXPECT_TRUE(read(in, fields));
    EXPECT_TRUE(in.atEnd());
    return fields;
}

const std::string tslwin = lines({R"("C:\Tessarel")", R"("D:\")", "1", "-1", "2", R"("D:\")", R"("E:\")", R"("")", R"("")",
                                  R"("")", R"("")", R"("")", R"("")", R"("L:\")"});

TEST(SettingsText, TslwinHoldsFourteenLines) {
    const auto s = readAll(readTslwin, tslwin);
    EXPECT_EQ(s.dataDir, "C:\\Tessarel");
    EXPECT_EQ(s.cdDrive, "D:\\");
    EXPECT_EQ(s.skipDriveChecks, 1);
    EXPECT_EQ(s.cdRomEnabled, -1);
    EXPECT_EQ(s.audioCdEnabled, 2);
    EXPECT_EQ(s.cdDriveList[0], "D:\\");
    EXPECT_EQ(s.cdDriveList[1], "E:\\");
    EXPECT_EQ(s.cdDriveList[8], "L:\\");
    EXPECT_EQ(tslwinBytes(s), tslwin);
}

const std::string tslwin1 = lines({R"("C:\WINDOWS\MIX.EXE")", "1", "3", "16711680", R"("C:\a.bmp")", "2", "4", "7", "1", "5"});

TEST(SettingsText, Tslwin1HoldsTenLines) {
    const auto s = readAll(readTslwin1, tslwin1);
    EXPECT_EQ(s.mixerPath, "C:\\WINDOWS\\MIX.EXE");
    EXPECT_EQ(s.startInDiscWindows, 1);
    EXPECT_EQ(s.wallpaperStyle, 3);
    EXPECT_EQ(s.wallpaperColor, Variant::number(16711680));
    EXPECT_EQ(s.wallpaperImage, "C:\\a.bmp");
    EXPECT_EQ(s.wallpaperMode, 2);
    EXPECT_EQ(s.autoStartMode, 4);
    EXPECT_EQ(s.reserved, 7);
    EXPECT_EQ(s.libraryEntryMade, 1);
    EXPECT_EQ(s.volumeMode, 5);
    EXPECT_EQ(tslwin1Bytes(s), tslwin1);
}

TEST(SettingsText, AColourThatWasTextStaysTextAndOneThatWasANumberStaysANumber) {
    auto text = tslwin1;
    text.replace(text.find("16711680"), 8, "\"16711680\"");
    const auto s = readAll(readTslwin1, text);
    EXPECT_TRUE(s.wallpaperColor.quoted);
    EXPECT_EQ(tslwin1Bytes(s), text);
}

const std::string tslwin2 =
    lines({R"("F:\")", "1", R"("F:\")", R"("G:\")", R"("")", R"("")", R"("")", R"("")", R"("")", R"("")", R"("N:\")"});

TEST(SettingsText, Tslwin2HoldsElevenLines) {
    const auto s = readAll(readTslwin2, tslwin2);
    EXPECT_EQ(s.rdDrive, "F:\\");
    EXPECT_EQ(s.rdEnabled, 1);
    EXPECT_EQ(s.rdDriveList[1], "G:\\");
    EXPECT_EQ(s.rdDriveList[8], "N:\\");
    EXPECT_EQ(tslwin2Bytes(s), tslwin2);
}

const std::string tslwin3 = lines({"\"Arial\"", "12",  "1",   "0",   "0",   "255",                       //
                                   "\"Times\"", "8",   "0",   "1",   "1",   "\"65280\"",                 //
                                   "1",         "0",   "1",   "10",  "1",   "\"https://find.example\"",  //
                                   "\"Mono\"",  "9",   "0",   "0",   "1",   "0",                         //
                                   "100",       "101", "102", "103", "104", "105",
                                   "106",       "107", "108", "109", "110", "111",
                                   "112"});

TEST(SettingsText, Tslwin3HoldsThirtySevenLinesAndNoFontOfIndexTwo) {
    const auto s = readAll(readTslwin3, tslwin3);
    EXPECT_EQ(s.fonts[0], (FontRecord{"Arial", 12, 1, 0, 0, Variant::number(255)}));
    EXPECT_EQ(s.fonts[1], (FontRecord{"Times", 8, 0, 1, 1, Variant{"65280", true}}));
    EXPECT_EQ(s.fonts[2], FontRecord{});
    EXPECT_EQ(s.fonts[3], (FontRecord{"Mono", 9, 0, 0, 1, Variant::number(0)}));
    EXPECT_EQ(s.audioOptions, (std::array<std::int16_t, 6>{0, 1, 0, 1, 10, 1}));
    EXPECT_EQ(s.searchEngine, "https://find.example");
    EXPECT_EQ(s.displayColors13[0], Variant::number(100));
    EXPECT_EQ(s.displayColors13[12], Variant::number(112));
    EXPECT_EQ(tslwin3Bytes(s), tslwin3);
}

TEST(SettingsText, OptionsInQuotesAreConvertedAndOneBeyondSixteenBitsIsLeftOut) {
    auto text = tslwin3;
    const auto at = text.find("1\r\n0\r\n1\r\n10\r\n1\r\n\"https");
    text.replace(at, 16, "\"1\"\r\n\"x\"\r\n99999\r\n\"10\"\r\n1\r\n");
    SequentialReader in(text);
    Settings s;
    EXPECT_TRUE(readTslwin3(in, s));
    EXPECT_EQ(s.audioOptions, (std::array<std::int16_t, 6>{0, 1, 0, 0, 10, 1}));
    EXPECT_EQ(s.searchEngine, "https://find.example");
}

const std::string tslwin4 =
    lines({"1", R"("C:\real.exe")", "5", "\"kept\"", "1",   "0", "1", R"("C:\b.exe")", "\"2\"", "\"1\"",
           "1", R"("C:\s.bmp")",    "3", "1",        "1.5", "0", "1", "255",           "\"0\"", R"("C:\mp3.exe")"});

TEST(SettingsText, Tslwin4HoldsTwentyLines) {
    const auto s = readAll(readTslwin4, tslwin4);
    EXPECT_EQ(s.defaultPanel, 1);
    EXPECT_EQ(s.realPlayerPath, "C:\\real.exe");
    EXPECT_EQ(s.kept3, Variant::number(5));
    EXPECT_EQ(s.kept4, (Variant{"kept", true}));
    EXPECT_EQ(s.soundCuesOff, 1);
    EXPECT_EQ(s.noVolumeOnMinimise, 0);
    EXPECT_EQ(s.noArtOnPlay, 1);
    EXPECT_EQ(s.webBrowserPath, "C:\\b.exe");
    EXPECT_EQ(s.mediaGapSeconds, "2");
    EXPECT_EQ(s.quickTipsFlag, "1");
    EXPECT_EQ(s.skinLayout, 1);
    EXPECT_EQ(s.skinImage, "C:\\s.bmp");
    EXPECT_EQ(s.skinImageOn, 3);
    EXPECT_EQ(s.lcdFontOff, 1);
    EXPECT_FLOAT_EQ(s.mediaScale, 1.5F);
    EXPECT_EQ(s.screwsOn, 0);
    EXPECT_EQ(s.customColors, 1);
    EXPECT_EQ(s.customForeColor, Variant::number(255));
    EXPECT_EQ(s.customBackColor, (Variant{"0", true}));
    EXPECT_EQ(s.mp3PlayerPath, "C:\\mp3.exe");
    EXPECT_EQ(tslwin4Bytes(s), tslwin4);
}

TEST(SettingsText, TheEmptyTslwin4IsAZeroAndNineteenEmptyStrings) {
    std::string expected = "0\r\n";
    for (int i = 0; i < 19; ++i) {
        expected += "\"\"\r\n";
    }
    EXPECT_EQ(emptyTslwin4Bytes(), expected);
    EXPECT_EQ(readAll(readTslwin4, expected).mediaScale, 0.0F);
}

TEST(SettingsText, Tslwin5HoldsTheLastThirteenEntriesOfBothLists) {
    std::string text;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        text += std::string("\"") + letter + ":\\\"\r\n";
    }
    const auto s = readAll(readTslwin5, text);
    EXPECT_EQ(s.cdDriveList[8], "");
    EXPECT_EQ(s.cdDriveList[9], "A:\\");
    EXPECT_EQ(s.cdDriveList[21], "M:\\");
    EXPECT_EQ(s.rdDriveList[9], "N:\\");
    EXPECT_EQ(s.rdDriveList[21], "Z:\\");
    EXPECT_EQ(tslwin5Bytes(s), text);
}

TEST(SettingsText, Tslwin6HoldsColoursOneToSix) {
    const auto text = lines({"1", "2", "\"3\"", "\"\"", "8454143", "255"});
    const auto s = readAll(readTslwin6, text);
    EXPECT_EQ(s.menuColors[0], Variant{});
    EXPECT_EQ(s.menuColors[1], Variant::number(1));
    EXPECT_EQ(s.menuColors[6], Variant::number(255));
    EXPECT_EQ(tslwin6Bytes(s), text);
}

TEST(SettingsText, ModeLastHoldsThreeIntegers) {
    const auto s = readAll(readModeLast, "3\r\n1\r\n1\r\n");
    EXPECT_EQ(s.audioTimeMode, 3);
    EXPECT_EQ(s.mediaTimeMode, 1);
    EXPECT_EQ(s.alwaysOnTop, 1);
    EXPECT_EQ(modeLastBytes(s), "3\r\n1\r\n1\r\n");
}

TEST(SettingsText, TslLinksHoldsTenCaptionsEightImagesAndTenAddresses) {
    std::string text;
    for (int i = 0; i < 28; ++i) {
        text += "\"" + std::to_string(i) + "\"\r\n";
    }
    const auto s = readAll(readTslLinks, text);
    EXPECT_EQ(s.menuLinkCaptions[9], "9");
    EXPECT_EQ(s.menuLinkImages[0], "10");
    EXPECT_EQ(s.menuLinkImages[7], "17");
    EXPECT_EQ(s.menuLinkUrls[0], "18");
    EXPECT_EQ(s.menuLinkUrls[9], "27");
    EXPECT_EQ(tslLinksBytes(s), text);
}

TEST(SettingsText, TheSmallFilesAreWrittenByteForByte) {
    const auto font = lines({"\"Arial\"", "14", "1", "0", "1", "255", "\"0\""});
    EXPECT_EQ(menuFontBytes(readAll(readMenuFont, font)), font);
    EXPECT_EQ(readAll(readMenuFont, font).menuFontSize, 14);
    EXPECT_EQ(artFolderBytes({"C:\\art", 2}), "\"C:\\art\"\r\n2\r\n");
    EXPECT_EQ(readAll(readArtFolder, "\"C:\\art\"\r\n2\r\n"), (ArtFolder{"C:\\art", 2}));
    EXPECT_EQ(placeBytes({-15, 70000}), "-15\r\n70000\r\n");
    EXPECT_EQ(readAll(readPlace, "-15\r\n70000\r\n"), (WindowPlace{-15, 70000}));
    EXPECT_EQ(oneTextBytes("C:\\media"), "\"C:\\media\"\r\n");
}

TEST(SettingsText, AShortFileLeavesTheMissedFieldsCleared) {
    SequentialReader in("\"C:\\MIX.EXE\"\r\n1\r\n");
    Settings s;
    EXPECT_FALSE(readTslwin1(in, s));
    EXPECT_EQ(s.mixerPath, "C:\\MIX.EXE");
    EXPECT_EQ(s.startInDiscWindows, 1);
    EXPECT_EQ(s.wallpaperStyle, 0);
    EXPECT_EQ(s.volumeMode, 0);
}

TEST(SettingsText, ANumberBeyondItsTypeLeavesItAndTheRestCleared) {
    SequentialReader in("\"C:\\MIX.EXE\"\r\n1\r\n70000\r\n5\r\n\"w\"\r\n3\r\n1\r\n0\r\n0\r\n2\r\n");
    Settings s;
    EXPECT_FALSE(readTslwin1(in, s));
    EXPECT_EQ(s.startInDiscWindows, 1);
    EXPECT_EQ(s.wallpaperStyle, 0);
    EXPECT_EQ(s.wallpaperMode, 0);
}

TEST(SettingsText, AWordInPlaceOfANumberReadsAsZero) {
    SequentialReader in("\"\"\r\nyes\r\n2\r\n0\r\n\"\"\r\n3\r\n1\r\n0\r\n0\r\n2\r\n");
    Settings s;
    EXPECT_TRUE(readTslwin1(in, s));
    EXPECT_EQ(s.startInDiscWindows, 0);
    EXPECT_EQ(s.wallpaperStyle, 2);
}

TEST(SettingsText, AQuoteLeftOpenTakesTheRestOfTheFile) {
    SequentialReader in("\"C:\\MIX.EXE\r\n1\r\n2\r\n");
    Settings s;
    EXPECT_FALSE(readTslwin1(in, s));
    EXPECT_EQ(s.mixerPath, "C:\\MIX.EXE\r\n1\r\n2\r\n");
    EXPECT_EQ(s.startInDiscWindows, 0);
}

TEST(SettingsText, LinesBeyondTheLastAreNotLookedAt) {
    const auto longer = tslwin1 + "\"more\"\r\n1\r\n";
    SequentialReader in(longer);
    Settings s;
    EXPECT_TRUE(readTslwin1(in, s));
    EXPECT_EQ(s.volumeMode, 5);
}

TEST(SettingsText, StringsWithoutQuotesAndValuesDividedByCommasAreRead) {
    SequentialReader in("C:\\WINDOWS\\MIX.EXE,1,3\r\n16711680,C:\\a.bmp,2,4,7,1,5");
    Settings s;
    EXPECT_TRUE(readTslwin1(in, s));
    EXPECT_EQ(tslwin1Bytes(s), tslwin1);
}

TEST(SettingsText, AQuoteInsideATextCannotShiftTheLinesBehindIt) {
    Settings s;
    s.webBrowserPath = "Z:\\my \"best\" browser";
    const auto again = readAll(readTslwin4, tslwin4Bytes(s));
    EXPECT_EQ(again.webBrowserPath, "Z:\\my 'best' browser");
    EXPECT_EQ(again.mp3PlayerPath, "");
}

}  // namespace
}  // namespace tessarel::shell
