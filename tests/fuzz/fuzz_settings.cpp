// links: tessarel_shell
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "shell/command_line.h"
#include "shell/panel_colors.h"
#include "shell/settings_text.h"
#include "shell/web_page.h"

namespace {

using namespace tessarel;
using namespace tessarel::shell;

// Reads the same text into fresh fields; what has been written from them must read back whole and be written the same.
template <class Fields>
void readAndWrite(const std::string& text, bool (*read)(SequentialReader&, Fields&), std::string (*write)(const Fields&)) {
    Fields fields;
    SequentialReader in(text);
    read(in, fields);
    const auto bytes = write(fields);
    Fields again;
    SequentialReader back(bytes);
    const bool whole = read(back, again);
    if (!whole || !back.atEnd() || write(again) != bytes) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto text = text::decode(bytes);
    if (!text::isValidUtf8(text)) {
        std::abort();
    }
    readAndWrite<Settings>(text, readTslwin, tslwinBytes);
    readAndWrite<Settings>(text, readTslwin1, tslwin1Bytes);
    readAndWrite<Settings>(text, readTslwin2, tslwin2Bytes);
    readAndWrite<Settings>(text, readTslwin3, tslwin3Bytes);
    readAndWrite<Settings>(text, readTslwin4, tslwin4Bytes);
    readAndWrite<Settings>(text, readTslwin5, tslwin5Bytes);
    readAndWrite<Settings>(text, readTslwin6, tslwin6Bytes);
    readAndWrite<Settings>(text, readModeLast, modeLastBytes);
    readAndWrite<Settings>(text, readTslLinks, tslLinksBytes);
    readAndWrite<MenuFont>(text, readMenuFont, menuFontBytes);
    readAndWrite<ArtFolder>(text, readArtFolder, artFolderBytes);
    readAndWrite<WindowPlace>(text, readPlace, placeBytes);

    SharedState state;
    SequentialReader in(text);
    readTslwin4(in, state);
    fillColorTables(state);
    parseCommandLine(text);
    browserFromWinIni(text);
    return 0;
}
