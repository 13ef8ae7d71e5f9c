#include "shell/settings_files.h"

#include <fmt/format.h>

#include "base/text.h"
#include "platform/dialogs.h"

namespace tessarel::shell {
namespace {

constexpr std::size_t longestText = std::size_t{1024} * 1024;

// Fills fields from a file of `dataDir`; false when it is missing, unreadable or too short.
template <class Fields>
bool load(const Context& context, std::string_view name, bool (*read)(SequentialReader&, Fields&), Fields& fields) {
    moveToDataDir(context);
    const auto content = settingsText(context.files, dataPath(context.state, name));
    if (!content) {
        return false;
    }
    SequentialReader in(*content);
    return read(in, fields);
}

template <class Fields>
std::optional<Fields> loadWhole(const Context& context, std::string_view name, bool (*read)(SequentialReader&, Fields&)) {
    Fields fields;
    return load(context, name, read, fields) ? std::optional(fields) : std::nullopt;
}

bool readText(SequentialReader& in, std::string& value) { return in.into(value); }

std::int16_t inRange(std::int16_t value, std::int16_t most) { return value < 0 || value > most ? std::int16_t{0} : value; }

}  // namespace

std::string dataPath(const SharedState& state, std::string_view name) { return fmt::format("{}\\{}", state.dataDir, name); }

void moveToDataDir(const Context& context) { context.files.changeDirectory(context.state.dataDir); }

std::optional<std::string> settingsText(const platform::FileSystem& files, std::string_view path) {
    auto bytes = files.read(path);
    if (!bytes) {
        return std::nullopt;
    }
    if (bytes->size() > longestText) {
        bytes->resize(longestText);
    }
    return text::decode(*bytes);
}

void removeDataFile(const Context& context, std::string_view name) {
    moveToDataDir(context);
    const auto path = dataPath(context.state, name);
    if (context.files.exists(path)) {
        (void)context.files.remove(path);
    }
}

bool saveDataFile(const Context& context, std::string_view name, std::string_view bytes) {
    moveToDataDir(context);
    const auto path = dataPath(context.state, name);
    const auto done = context.files.write(path, bytes);
    if (!done) {
        context.dialogs.message(
            {.text = fmt::format("Unable to save {}. {}", path, done.error().message), .icon = platform::Icon::exclamation});
    }
    return done.has_value();
}

bool loadTslwin(const Context& context) {
    if (!context.files.changeDirectory(context.state.systemDir)) {
        return false;
    }
    const auto content = settingsText(context.files, "TSLWIN.INI");
    if (!content) {
        return false;
    }
    SequentialReader in(*content);
    return readTslwin(in, context.state);
}

void loadTslwin1(const Context& context) { load<Settings>(context, "TSLWIN1.INI", readTslwin1, context.state); }

void loadTslwin2(const Context& context) {
    if (!load<Settings>(context, "TSLWIN2.INI", readTslwin2, context.state)) {
        context.state.rdEnabled = 0;
        context.state.rdDrive.clear();
    }
}

void loadTslwin3(const Context& context) { load<Settings>(context, "TSLWIN3.INI", readTslwin3, context.state); }

namespace {
// What a person may want back of a file that is about to be replaced.
void keepBrokenTslwin4(const Context& context) {
    const auto path = dataPath(context.state, "TSLWIN4.INI");
    if (const auto bytes = context.files.read(path); bytes && !bytes->empty()) {
        context.files.write(dataPath(context.state, "TSLWIN4.BAK"), *bytes);
    }
}
}  // namespace

void loadTslwin4(const Context& context) {
    Settings& settings = context.state;
    Settings read = settings;
    if (!load(context, "TSLWIN4.INI", readTslwin4, read)) {
        keepBrokenTslwin4(context);
        saveDataFile(context, "TSLWIN4.INI", emptyTslwin4Bytes());
        return;
    }
    settings = std::move(read);
    if (settings.mediaGapSeconds.empty()) {
        settings.mediaGapSeconds = "1";
    }
    if (settings.quickTipsFlag.empty()) {
        settings.quickTipsFlag = "0";
    }
}

void loadTslwin5(const Context& context) { load<Settings>(context, "TSLWIN5.INI", readTslwin5, context.state); }

void loadTslwin6(const Context& context) {
    auto& state = context.state;
    state.menuColorChanged.fill(0);
    if (context.files.exists(dataPath(state, "TSLWIN6.INI"))) {
        load<Settings>(context, "TSLWIN6.INI", readTslwin6, state);
        return;
    }
    state.menuColors.fill({});
    state.menuColors[5] = Variant::number(0x80FFFF);
    state.menuColors[6] = Variant::number(255);
}

void loadModeLast(const Context& context) {
    auto& state = context.state;
    load<Settings>(context, "modelast.dat", readModeLast, state);
    state.audioTimeMode = inRange(state.audioTimeMode, 3);
    state.mediaTimeMode = inRange(state.mediaTimeMode, 1);
    state.alwaysOnTop = inRange(state.alwaysOnTop, 1);
}

void loadTslLinks(const Context& context) { load<Settings>(context, "tsllinks.ini", readTslLinks, context.state); }

bool rewriteTslwin4(const Context& context, const std::function<void(Settings&)>& edit) {
    Settings settings;
    if (!load(context, "TSLWIN4.INI", readTslwin4, settings)) {
        settings = context.state;
    }
    edit(settings);
    return saveDataFile(context, "TSLWIN4.INI", tslwin4Bytes(settings));
}

bool writeTslwin6(const Context& context) { return saveDataFile(context, "TSLWIN6.INI", tslwin6Bytes(context.state)); }

bool writeModeLast(const Context& context) { return saveDataFile(context, "modelast.dat", modeLastBytes(context.state)); }

std::optional<MenuFont> loadMenuFont(const Context& context) {
    return loadWhole<MenuFont>(context, "CDMAIN.INI", readMenuFont);
}

bool writeMenuFont(const Context& context, const MenuFont& font) {
    return saveDataFile(context, "CDMAIN.INI", menuFontBytes(font));
}

std::string loadMenuBackground(const Context& context) {
    return loadWhole<std::string>(context, "TSLBMP.INI", readText).value_or(dataPath(context.state, "tslmain.bmp"));
}

bool writeMenuBackground(const Context& context, std::string_view menuBackground) {
    return saveDataFile(context, "TSLBMP.INI", oneTextBytes(menuBackground));
}

bool isMenuMaximised(const Context& context) { return context.files.exists(dataPath(context.state, "cdmmax.dat")); }

void writeMenuMaximised(const Context& context, bool maximised) {
    if (maximised) {
        saveDataFile(context, "cdmmax.dat", SequentialWriter().number(1).bytes());
    } else {
        removeDataFile(context, "cdmmax.dat");
    }
}

std::optional<ArtFolder> loadArtFolder(const Context& context) {
    return loadWhole<ArtFolder>(context, "bmpdir.dat", readArtFolder);
}

bool writeArtFolder(const Context& context, const ArtFolder& folder) {
    return saveDataFile(context, "bmpdir.dat", artFolderBytes(folder));
}

std::optional<std::string> loadWaveDir(const Context& context) {
    return loadWhole<std::string>(context, "wavdir.dat", readText);
}

bool writeWaveDir(const Context& context, std::string_view directory) {
    return saveDataFile(context, "wavdir.dat", oneTextBytes(directory));
}

std::optional<std::string> loadMediaDir(const Context& context) {
    return loadWhole<std::string>(context, "mediadir.dat", readText);
}

bool writeMediaDir(const Context& context, std::string_view directory) {
    return saveDataFile(context, "mediadir.dat", oneTextBytes(directory));
}

std::optional<WindowPlace> loadPlace(const Context& context, std::string_view positionFile) {
    return loadWhole<WindowPlace>(context, positionFile, readPlace);
}

bool writePlace(const Context& context, std::string_view positionFile, const WindowPlace& place) {
    return saveDataFile(context, positionFile, placeBytes(place));
}

void removePlace(const Context& context, std::string_view positionFile) { removeDataFile(context, positionFile); }

}  // namespace tessarel::shell
