#include "host/files/fresh_settings.h"

#include <array>
#include <string_view>

#include "base/color.h"
#include "base/sequential_file.h"

namespace tessarel::host {
namespace {

/// 0xRRGGBB, as colours are drawn, to the order that the files keep.
constexpr Color fromRgb(std::uint32_t rgb) { return (rgb & 0xFFU) << 16U | (rgb & 0xFF00U) | rgb >> 16U; }

constexpr Color accent = fromRgb(0x5DF29B);
constexpr Color softAccent = fromRgb(0x9FE9C2);
constexpr Color dimAccent = fromRgb(0x1D3A2C);

// Face, frame, side panel, lit lamp, title, display glass, key, key's edge, caption, small text, time, heading, slot.
constexpr std::array<Color, 13> panelAndFrameColors = {
    fromRgb(0x2A2D32), fromRgb(0x14161A), fromRgb(0x24272C), accent,     accent, fromRgb(0x0D1412),
    fromRgb(0x33373D), fromRgb(0x17191D), fromRgb(0x8B929C), softAccent, accent, fromRgb(0xC9CED6),
    fromRgb(0x121417)};

void addTexts(SequentialWriter& out, int count) {
    for (int i = 0; i < count; ++i) {
        out.text("");
    }
}

void addFont(SequentialWriter& out, int points, bool bold, Color color) {
    out.text("Inter").number(points).number(bold ? 1 : 0).number(0).number(0).number(color);
}

std::string mainSettings() {
    SequentialWriter out;
    out.text("C:\\Tessarel").text("D:\\").number(0).number(1).number(1);
    addTexts(out, 9);
    return out.bytes();
}

std::string startSettings() {
    constexpr int openDiscWindows = 1;
    constexpr int startAudioDiscs = 2;
    constexpr int directVolume = 3;
    SequentialWriter out;
    out.text("").number(openDiscWindows).number(0).number(colors::black).text("").number(0);
    out.number(startAudioDiscs).number(0).number(0).number(directVolume);
    return out.bytes();
}

std::string removableSettings() {
    SequentialWriter out;
    out.text("").number(0);
    addTexts(out, 9);
    return out.bytes();
}

std::string fontsAndColors() {
    constexpr std::array<int, 5> audioOptions = {0, 0, 0, 10, 0};
    SequentialWriter out;
    addFont(out, 14, true, accent);
    addFont(out, 11, false, softAccent);
    for (const int option : audioOptions) {
        out.number(option);
    }
    out.text("CDDB");
    addFont(out, 11, false, softAccent);
    for (const Color color : panelAndFrameColors) {
        out.number(color);
    }
    return out.bytes();
}

std::string generalSettings() {
    SequentialWriter out;
    out.number(0).text("").text("").text("");    // panel, Real player, two lines that are only kept
    out.number(0).number(0).number(0).text("");  // cues, small volume window, art window, browser
    out.text("1").text("0");                     // seconds between media, tips
    out.number(0).text("").number(0).number(0);  // layout, skin, skin on, digits on
    out.single(1).number(1).number(0);           // media scale, screws, custom colours
    out.number(accent).number(dimAccent).text("");
    return out.bytes();
}

std::string moreDrives() {
    SequentialWriter out;
    addTexts(out, 26);
    return out.bytes();
}

std::string menuColors() {
    SequentialWriter out;
    for (const Color color : {softAccent, softAccent, softAccent, softAccent, accent, fromRgb(0xFFD75E)}) {
        out.number(color);
    }
    return out.bytes();
}

std::string menuFont() {
    SequentialWriter out;
    addFont(out, 14, true, accent);
    out.number(fromRgb(0x0D1412));
    return out.bytes();
}

/// A library's first record, which no disc has: it keeps the place that an empty list would lose its first entry in.
std::string reservedLibrary() {
    constexpr std::size_t recordBytes = 442;
    constexpr std::string_view reserved = "RESERVED";
    std::string record(recordBytes, '\0');
    const auto put = [&](std::size_t offset, std::string_view value) {
        record[offset] = 8;  // the mark of a text
        record[offset + 2] = static_cast<char>(value.size());
        record.replace(offset + 4, value.size(), value);
    };
    constexpr std::size_t programPath = 0;
    constexpr std::size_t title = 247;
    for (const std::size_t empty : {75U, 150U, 170U, 321U, 381U}) {  // description, password, icon, sound, disc
        put(empty, {});
    }
    put(programPath, reserved);
    put(title, reserved);
    return record;
}

}  // namespace

std::vector<FreshFile> freshFiles() {
    return {
        {"WINDOWS/SYSTEM/TSLWIN.INI", mainSettings()}, {"Tessarel/TSLWIN1.INI", startSettings()},
        {"Tessarel/TSLWIN2.INI", removableSettings()}, {"Tessarel/TSLWIN3.INI", fontsAndColors()},
        {"Tessarel/TSLWIN4.INI", generalSettings()},   {"Tessarel/TSLWIN5.INI", moreDrives()},
        {"Tessarel/TSLWIN6.INI", menuColors()},        {"Tessarel/CDMAIN.INI", menuFont()},
        {"Tessarel/cdromlib.grp", reservedLibrary()},  {"Tessarel/removlib.grp", reservedLibrary()},
    };
}

}  // namespace tessarel::host
