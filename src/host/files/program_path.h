#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessarel::host {

/// A place as the program names it, made absolute: `.` and `..` are gone, and no part holds a separator.
struct ProgramPath {
    char drive = 'C';                ///< a capital letter
    std::vector<std::string> parts;  ///< below the drive's root
    bool namesFolder = false;        ///< it was written with a separator at its end, or names a root

    /// `C:\A\B`; a root keeps its back-slash.
    std::string text() const;
    bool operator==(const ProgramPath&) const = default;
};

/// A current drive, and on each drive a current directory.
class CurrentDirectories {
public:
    /// Reads a path against the current directories. Slashes of both kinds separate; `..` ends at the drive's root. Nothing
    /// for a text that can name no file: one with a zero byte, or longer than 4096 bytes.
    std::optional<ProgramPath> absolute(std::string_view path) const;

    /// Makes the path's drive and directory the current ones.
    void move(const ProgramPath& to);

    ProgramPath current() const { return {drive_, directories_.at(indexOf(drive_)), true}; }

private:
    static std::size_t indexOf(char letter) { return static_cast<std::size_t>(letter - 'A'); }

    char drive_ = 'C';
    std::array<std::vector<std::string>, 26> directories_;
};

/// The capital of a drive letter; nothing for any other character.
std::optional<char> driveLetter(char c);

/// Whether a text begins with a letter, a colon and a separator.
bool hasDriveRoot(std::string_view path);

}  // namespace tessarel::host
