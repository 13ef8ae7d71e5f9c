#include "shell/command_line.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace tessarel::shell {
namespace {

constexpr std::array<std::string_view, 3> programEndings = {"EXE", "COM", "BAT"};

// LIB, OCD, ITE and DIA are how the run-mode words end: CDROMLIB and RDLIB, AUDIOCD, CDLITE, MEDIA.
constexpr std::array<std::string_view, 22> runModeEndings = {"AVI", "MMM", "MOV", "DAT", "M1V", "MPA", "MPE", "MP1",
                                                             "MP2", "MP3", "MPG", "WAV", "MID", "RMI", "LIB", "OCD",
                                                             "ITE", "DIA", ".AU", "IFF", ".QT", "SND"};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

// Where the number begins in "D:\TRACK07.CDA", and in a longer path.
constexpr std::size_t rootTrackColumn = 9;
constexpr std::size_t folderTrackColumn = 17;

}  // namespace

CommandLine parseCommandLine(std::string_view command) {
    const auto trimmed = text::trim(command);
    const auto capitals = text::upper(trimmed);
    const auto ending = text::right(capitals, 3);
    CommandLine parsed;
    if (contains(programEndings, ending)) {
        parsed.programPath = trimmed;
    } else if (contains(runModeEndings, ending)) {
        parsed.runMode = capitals;
    } else if (ending == "CDA") {
        const bool inRoot = text::mid(capitals, 4, 5) == "TRACK";
        // The number is taken from the untrimmed argument: blanks before it shift the column.
        parsed.commandTrack = text::valInteger(text::mid(command, inRoot ? rootTrackColumn : folderTrackColumn));
        parsed.runMode = "AUDIOCD1";
    }
    return parsed;
}

}  // namespace tessarel::shell
