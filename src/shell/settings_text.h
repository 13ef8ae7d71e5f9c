#pragma once
#include <cstdint>
#include <string>

#include "base/sequential_file.h"
#include "shell/shared_state.h"

/// The settings files as values: readers fill fields from a file's text, writers give a file's bytes. A reader leaves the
/// fields that the text does not reach as they were, and tells whether it reached all.
namespace tessarel::shell {

/// The title font of the Main Menu, `CDMAIN.INI`.
struct MenuFont {
    std::string menuFontName;
    std::int32_t menuFontSize = 0;  ///< points
    std::int16_t menuFontBold = 0;  ///< non-zero = on, as the two below
    std::int16_t menuFontItalic = 0;
    std::int16_t menuFontUnderline = 0;
    Variant menuFontColor;
    Variant menuFontBackColor;
    bool operator==(const MenuFont&) const = default;
};

/// The folder of the art pictures, `bmpdir.dat`.
struct ArtFolder {
    std::string artImageDir;
    std::int16_t bmpSort = 0;
    bool operator==(const ArtFolder&) const = default;
};

/// Left and top of a window in twips, as the position files hold them.
struct WindowPlace {
    std::int32_t left = 0;
    std::int32_t top = 0;
    bool operator==(const WindowPlace&) const = default;
};

bool readTslwin(SequentialReader& in, Settings& settings);
bool readTslwin1(SequentialReader& in, Settings& settings);
bool readTslwin2(SequentialReader& in, Settings& settings);
bool readTslwin3(SequentialReader& in, Settings& settings);
/// Without the defaults for empty lines, so that what is read can be written back.
bool readTslwin4(SequentialReader& in, Settings& settings);
bool readTslwin5(SequentialReader& in, Settings& settings);
bool readTslwin6(SequentialReader& in, Settings& settings);
bool readModeLast(SequentialReader& in, Settings& settings);
bool readTslLinks(SequentialReader& in, Settings& settings);
bool readMenuFont(SequentialReader& in, MenuFont& font);
bool readArtFolder(SequentialReader& in, ArtFolder& folder);
bool readPlace(SequentialReader& in, WindowPlace& place);

/// A double quote inside a text, which the form of the files has no room for, is written as a single one.
std::string tslwinBytes(const Settings& settings);
std::string tslwin1Bytes(const Settings& settings);
std::string tslwin2Bytes(const Settings& settings);
std::string tslwin3Bytes(const Settings& settings);
std::string tslwin4Bytes(const Settings& settings);
std::string tslwin5Bytes(const Settings& settings);
std::string tslwin6Bytes(const Settings& settings);
std::string modeLastBytes(const Settings& settings);
std::string tslLinksBytes(const Settings& settings);
std::string menuFontBytes(const MenuFont& font);
std::string artFolderBytes(const ArtFolder& folder);
std::string placeBytes(const WindowPlace& place);
/// A file of one string: `TSLBMP.INI`, `wavdir.dat`, `mediadir.dat`.
std::string oneTextBytes(std::string_view value);

/// The `TSLWIN4.INI` that stands in for a missing one: 0, then 19 empty strings.
std::string emptyTslwin4Bytes();

}  // namespace tessarel::shell
