#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace tessarel::shell {

/// What the program was asked to do.
struct CommandLine {
    std::string runMode;            ///< run-mode word or media path, in capitals; empty for an ordinary start
    std::string programPath;        ///< a program to start in place of this one, if it exists
    std::int16_t commandTrack = 0;  ///< with `runMode` "AUDIOCD1"
    bool operator==(const CommandLine&) const = default;
};

/// Takes the one argument apart by its last three characters. What no rule accepts asks for nothing.
CommandLine parseCommandLine(std::string_view command);

}  // namespace tessarel::shell
