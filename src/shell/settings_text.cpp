#include "shell/settings_text.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace tessarel::shell {
namespace {

class Reading {
public:
    explicit Reading(SequentialReader& in) : in_(in) {}

    template <class T>
    void operator()(T& field) {
        complete_ = in_.into(field) && complete_;
    }
    // A line of any form whose value becomes an integer; one that fits no integer leaves the field alone.
    void option(std::int16_t& field) {
        Variant value;
        (*this)(value);
        const double number = std::nearbyint(value.asNumber());
        if (number >= -32768 && number <= 32767) {
            field = static_cast<std::int16_t>(number);
        }
    }
    bool complete() const { return complete_; }

private:
    SequentialReader& in_;
    bool complete_ = true;
};

class Writing {
public:
    void operator()(std::string_view value) { out_.text(value); }
    void operator()(const std::string& value) { (*this)(std::string_view(value)); }
    void operator()(std::int16_t value) { out_.number(value); }
    void operator()(std::int32_t value) { out_.number(value); }
    void operator()(float value) { out_.single(value); }
    void operator()(const Variant& value) { out_.variant(value); }
    void option(std::int16_t value) { out_.number(value); }
    const std::string& bytes() const { return out_.bytes(); }

private:
    SequentialWriter out_;
};

// Each layout stands here once, for both directions: `io` takes the fields in the order of the lines.

template <class Io, class List>
void elements(Io& io, List& list, std::size_t from, std::size_t to) {
    std::for_each(list.begin() + static_cast<std::ptrdiff_t>(from), list.begin() + static_cast<std::ptrdiff_t>(to) + 1,
                  [&](auto& element) { io(element); });
}

constexpr auto tslwinLayout = [](auto& io, auto& s) {
    io(s.dataDir);
    io(s.cdDrive);
    io(s.skipDriveChecks);
    io(s.cdRomEnabled);
    io(s.audioCdEnabled);
    elements(io, s.cdDriveList, 0, 8);
};

constexpr auto tslwin1Layout = [](auto& io, auto& s) {
    io(s.mixerPath);
    io(s.startInDiscWindows);
    io(s.wallpaperStyle);
    io(s.wallpaperColor);
    io(s.wallpaperImage);
    io(s.wallpaperMode);
    io(s.autoStartMode);
    io(s.reserved);
    io(s.libraryEntryMade);
    io(s.volumeMode);
};

constexpr auto tslwin2Layout = [](auto& io, auto& s) {
    io(s.rdDrive);
    io(s.rdEnabled);
    elements(io, s.rdDriveList, 0, 8);
};

constexpr auto fontLayout = [](auto& io, auto& font) {
    io(font.fontName);
    io(font.fontSize);
    io(font.fontBold);
    io(font.fontItalic);
    io(font.fontUnderline);
    io(font.fontColor);
};

constexpr auto tslwin3Layout = [](auto& io, auto& s) {
    fontLayout(io, s.fonts[0]);
    fontLayout(io, s.fonts[1]);
    for (std::size_t i = 1; i <= 5; ++i) {
        io.option(s.audioOptions[i]);
    }
    io(s.searchEngine);
    fontLayout(io, s.fonts[3]);
    elements(io, s.displayColors13, 0, 12);
};

constexpr auto tslwin4Layout = [](auto& io, auto& s) {
    io(s.defaultPanel);
    io(s.realPlayerPath);
    io(s.kept3);
    io(s.kept4);
    io(s.soundCuesOff);
    io(s.noVolumeOnMinimise);
    io(s.noArtOnPlay);
    io(s.webBrowserPath);
    io(s.mediaGapSeconds);
    io(s.quickTipsFlag);
    io(s.skinLayout);
    io(s.skinImage);
    io(s.skinImageOn);
    io(s.lcdFontOff);
    io(s.mediaScale);
    io(s.screwsOn);
    io(s.customColors);
    io(s.customForeColor);
    io(s.customBackColor);
    io(s.mp3PlayerPath);
};

constexpr auto tslwin5Layout = [](auto& io, auto& s) {
    elements(io, s.cdDriveList, 9, 21);
    elements(io, s.rdDriveList, 9, 21);
};

constexpr auto tslwin6Layout = [](auto& io, auto& s) { elements(io, s.menuColors, 1, 6); };

constexpr auto modeLastLayout = [](auto& io, auto& s) {
    io(s.audioTimeMode);
    io(s.mediaTimeMode);
    io(s.alwaysOnTop);
};

constexpr auto tslLinksLayout = [](auto& io, auto& s) {
    elements(io, s.menuLinkCaptions, 0, 9);
    elements(io, s.menuLinkImages, 0, 7);
    elements(io, s.menuLinkUrls, 0, 9);
};

constexpr auto menuFontLayout = [](auto& io, auto& font) {
    io(font.menuFontName);
    io(font.menuFontSize);
    io(font.menuFontBold);
    io(font.menuFontItalic);
    io(font.menuFontUnderline);
    io(font.menuFontColor);
    io(font.menuFontBackColor);
};

constexpr auto artFolderLayout = [](auto& io, auto& folder) {
    io(folder.artImageDir);
    io(folder.bmpSort);
};

constexpr auto placeLayout = [](auto& io, auto& place) {
    io(place.left);
    io(place.top);
};

template <class Layout, class T>
bool readBy(const Layout& layout, SequentialReader& in, T& fields) {
    Reading reading(in);
    layout(reading, fields);
    return reading.complete();
}

template <class Layout, class T>
std::string bytesBy(const Layout& layout, const T& fields) {
    Writing writing;
    layout(writing, fields);
    return writing.bytes();
}

}  // namespace

bool readTslwin(SequentialReader& in, Settings& settings) { return readBy(tslwinLayout, in, settings); }
bool readTslwin1(SequentialReader& in, Settings& settings) { return readBy(tslwin1Layout, in, settings); }
bool readTslwin2(SequentialReader& in, Settings& settings) { return readBy(tslwin2Layout, in, settings); }
bool readTslwin3(SequentialReader& in, Settings& settings) { return readBy(tslwin3Layout, in, settings); }
bool readTslwin4(SequentialReader& in, Settings& settings) { return readBy(tslwin4Layout, in, settings); }
bool readTslwin5(SequentialReader& in, Settings& settings) { return readBy(tslwin5Layout, in, settings); }
bool readTslwin6(SequentialReader& in, Settings& settings) { return readBy(tslwin6Layout, in, settings); }
bool readModeLast(SequentialReader& in, Settings& settings) { return readBy(modeLastLayout, in, settings); }
bool readTslLinks(SequentialReader& in, Settings& settings) { return readBy(tslLinksLayout, in, settings); }
bool readMenuFont(SequentialReader& in, MenuFont& font) { return readBy(menuFontLayout, in, font); }
bool readArtFolder(SequentialReader& in, ArtFolder& folder) { return readBy(artFolderLayout, in, folder); }
bool readPlace(SequentialReader& in, WindowPlace& place) { return readBy(placeLayout, in, place); }

std::string tslwinBytes(const Settings& settings) { return bytesBy(tslwinLayout, settings); }
std::string tslwin1Bytes(const Settings& settings) { return bytesBy(tslwin1Layout, settings); }
std::string tslwin2Bytes(const Settings& settings) { return bytesBy(tslwin2Layout, settings); }
std::string tslwin3Bytes(const Settings& settings) { return bytesBy(tslwin3Layout, settings); }
std::string tslwin4Bytes(const Settings& settings) { return bytesBy(tslwin4Layout, settings); }
std::string tslwin5Bytes(const Settings& settings) { return bytesBy(tslwin5Layout, settings); }
std::string tslwin6Bytes(const Settings& settings) { return bytesBy(tslwin6Layout, settings); }
std::string modeLastBytes(const Settings& settings) { return bytesBy(modeLastLayout, settings); }
std::string tslLinksBytes(const Settings& settings) { return bytesBy(tslLinksLayout, settings); }
std::string menuFontBytes(const MenuFont& font) { return bytesBy(menuFontLayout, font); }
std::string artFolderBytes(const ArtFolder& folder) { return bytesBy(artFolderLayout, folder); }
std::string placeBytes(const WindowPlace& place) { return bytesBy(placeLayout, place); }

std::string oneTextBytes(std::string_view value) {
    Writing writing;
    writing(value);
    return writing.bytes();
}

std::string emptyTslwin4Bytes() {
    constexpr int emptyLines = 19;
    SequentialWriter out;
    out.number(0);
    for (int i = 0; i < emptyLines; ++i) {
        out.text("");
    }
    return out.bytes();
}

}  // namespace tessarel::shell
