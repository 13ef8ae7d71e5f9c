#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tessarel::host {

/// A program as a command line names it, and the text behind it.
struct ProgramCall {
    std::string program;
    std::string arguments;
    bool operator==(const ProgramCall&) const = default;
};

/// The ways to read a command line, likeliest first: a program in double quotes is one; without them it ends at the first
/// blank, or at the second, and so on, since a path may hold blanks. Empty for an empty line.
std::vector<ProgramCall> programCalls(std::string_view commandLine);

/// Arguments apart: blanks separate them, but not between double quotes, which are dropped.
std::vector<std::string> splitArguments(std::string_view arguments);

/// Whether a text is an address for the desktop, such as `http://...` or `mailto:...`.
bool isWebAddress(std::string_view text);

/// What it takes to run a file.
enum class ProgramKind {
    native,  ///< a program of this system
    script,  ///< text that names its interpreter
    windows,
    dos,
    document,  ///< nothing to run: the desktop's program for it shows it
    unknown,   ///< named as a program, but none of the above
};

/// Where an MZ header says that the newer header lies; 0 for none. `head` is the file's first 64 bytes.
std::size_t newHeaderOffset(std::string_view head);

/// Judges a file by its name, its first bytes and the two at `newHeaderOffset`.
ProgramKind programKind(std::string_view name, std::string_view head, std::string_view newHeader);

/// The interpreter of a script and the one argument that its first line may give.
std::vector<std::string> scriptInterpreter(std::string_view head);

}  // namespace tessarel::host
