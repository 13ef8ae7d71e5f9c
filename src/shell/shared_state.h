#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/color.h"
#include "base/sequential_file.h"

namespace tessarel::shell {

/// The Tessarel that is active.
enum class Tessarel : std::int16_t { none = 0, audioCd = 1, cdRom = 2, rd = 3, media = 4 };

struct FontRecord {
    std::string fontName;
    std::int32_t fontSize = 0;  ///< points
    std::int16_t fontBold = 0;  ///< non-zero = on, as the two below
    std::int16_t fontItalic = 0;
    std::int16_t fontUnderline = 0;
    Variant fontColor;
    bool operator==(const FontRecord&) const = default;
};

/// All that the settings files say, in their order. Written at start, by whoever rewrites a file, and by nobody else.
struct Settings {  // NOLINT(clang-analyzer-optin.performance.Padding)
    // TSLWIN.INI
    std::string dataDir;  ///< no trailing back-slash
    std::string cdDrive;  ///< root path; moves while the user cycles through drives
    std::int16_t skipDriveChecks = 0;
    std::int16_t cdRomEnabled = 0;
    std::int16_t audioCdEnabled = 0;
    std::array<std::string, 22> cdDriveList;  ///< 0 to 8 from here, 9 to 21 from TSLWIN5.INI

    // TSLWIN1.INI
    std::string mixerPath;
    std::int16_t startInDiscWindows = 0;
    std::int16_t wallpaperStyle = 0;  ///< 0 to 4; 3 and 4 use `wallpaperImage`
    Variant wallpaperColor;
    std::string wallpaperImage;
    std::int16_t wallpaperMode = 0;  ///< 0 off, 1 with the Audio CD window, 2 with CD-ROM or RD, above 2 from the start
    std::int16_t autoStartMode = 0;  ///< 0 none, 1 every disc, 2 audio discs, 3 CD-ROMs, 4 removable disks
    std::int16_t reserved = 0;
    std::int16_t libraryEntryMade = 0;
    std::int16_t volumeMode = 0;

    // TSLWIN2.INI
    std::string rdDrive;
    std::int16_t rdEnabled = 0;
    std::array<std::string, 22> rdDriveList;  ///< 0 to 8 from here, 9 to 21 from TSLWIN5.INI

    // TSLWIN3.INI
    std::array<FontRecord, 4> fonts;             ///< 0 title, 1 description, 3; 2 is never loaded
    std::array<std::int16_t, 6> audioOptions{};  ///< 1 to 5: eject at end, eject with drawer, mixer, intro seconds, play on
    std::string searchEngine;
    std::array<Variant, 13> displayColors13;

    // TSLWIN4.INI
    std::int16_t defaultPanel = 0;
    std::string realPlayerPath;
    Variant kept3;  ///< not used, written back as read
    Variant kept4;
    std::int16_t soundCuesOff = 0;
    std::int16_t noVolumeOnMinimise = 0;
    std::int16_t noArtOnPlay = 0;
    std::string webBrowserPath;
    std::string mediaGapSeconds;
    std::string quickTipsFlag;
    std::int16_t skinLayout = 0;
    std::string skinImage;
    std::int16_t skinImageOn = 0;
    std::int16_t lcdFontOff = 0;
    float mediaScale = 0;
    std::int16_t screwsOn = 0;
    std::int16_t customColors = 0;
    Variant customForeColor;
    Variant customBackColor;
    std::string mp3PlayerPath;

    // TSLWIN6.INI; elements 1 to 6
    std::array<Variant, 7> menuColors;
    std::array<std::int16_t, 7> menuColorChanged{};

    // modelast.dat
    std::int16_t audioTimeMode = 0;  ///< 0 to 3
    std::int16_t mediaTimeMode = 0;  ///< 0 or 1
    std::int16_t alwaysOnTop = 0;    ///< 0 or 1

    // tsllinks.ini
    std::array<std::string, 10> menuLinkCaptions;
    std::array<std::string, 8> menuLinkImages;
    std::array<std::string, 10> menuLinkUrls;
};

/// The entry of the application library that is on show.
struct LibraryEntry {
    std::int16_t libRecord = 1;
    std::int16_t libEntryCount = 0;
    std::string libProgramPath;
    std::string libDescription;
    std::string libPassword;
    std::string libPasswordActive;  ///< trimmed `libPassword`
    std::string libIconPath;
    std::string libFlag;
    std::string libTitle;
    std::string libSound;
    std::string libDiscId;
};

/// Settings and run state that all windows share. One instance, owned by the program.
struct SharedState : Settings, LibraryEntry {
    std::string runMode;  ///< run-mode word, media path, or track number
    std::int16_t osPlatform = 0;
    std::string systemDir;   ///< capitals, no trailing back-slash
    std::string windowsDir;  ///< the same
    std::int16_t screenWidthPixels = 0;
    std::int16_t screenClass = 1;        ///< 1 to 799 pixels, 2 to 1023, 3 to 1279, 4 above
    std::int16_t smallFontsDisplay = 0;  ///< 1 normal fonts, 0 large ones
    double displayColors = 0;
    std::string cdDrivePrimary;
    std::string rdDrivePrimary;
    std::int16_t lastCdDriveLetter = 'D';
    std::array<std::int16_t, 27> driveTypes{};  ///< by letter, A at 0
    std::int16_t setupRequested = 0;
    std::int16_t driveWarningIgnored = 0;
    std::int16_t menuMaximised = 0;
    std::int16_t openedDirectly = 0;
    std::int16_t cursorHidden = 0;
    Tessarel activeTessarel = Tessarel::none;
    std::int16_t activeDiscKind = 0;               ///< 0 none, 1 audio, 2 CD-ROM or RD, 4 Main Menu
    std::array<std::int16_t, 9> menuWindowOpen{};  ///< elements 1 to 8
    std::int16_t wallpaperShowing = 0;
    std::int16_t returnedToMenu = 0;
    std::int16_t minimisedOnce = 0;
    std::array<Color, 11> panelColors{};  ///< lit and dim colours of every readout

    std::string artImageDir;   ///< folder of the art pictures
    std::int16_t bmpSort = 0;  ///< their order: 0 none, 1 by name, 2 by date
    std::string userDefined1;  ///< what the user calls the first field of his own; empty for the usual name

    // The disc of the moment, reset whenever the waiting window comes up.
    std::string discKey;  ///< empty until a disc is taken
    std::string discFingerprint;
    std::string discFingerprintShown;
    std::int16_t discDrawerOpen = 0;
    std::int16_t discSearchDormant = 0;
    std::int16_t discWindowActive = 0;
    std::int16_t autorunDetected = 0;
    std::int16_t autoStartDone = 0;
    std::int16_t playOpenedDisc = 0;  ///< 1: a person has opened an image, and its disc plays whatever `autoStartMode` says
    std::array<std::int16_t, 3> rcolorPending{};

    // Of `isAppRunning` and `showHelp`.
    std::string appToCheck;
    std::int16_t appAlreadyRunning = 0;
    std::int16_t helpTopic = 0;
};

/// Forgets the disc and the library entry of the moment, and puts the waiting window in charge (`discSearchDormant` 1).
/// `discDrawerOpen` stays as it is: an opened drawer stays open until a disc is taken.
void resetDiscState(SharedState& state);

/// The capital first letter of a drive's root path; a blank for an empty one.
char driveLetter(std::string_view drive);

}  // namespace tessarel::shell
