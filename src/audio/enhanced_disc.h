#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

/// The program on the data part of an enhanced disc.
namespace tessarel::audio {

/// What the first OPEN= line behind the [AUTORUN] line of an autorun file names, in any case of letters; its arguments come
/// along. Nothing without such a line.
std::optional<std::string> autorunProgram(std::string_view text);

/// The path of the program that a disc starts with, `root` being the drive's root path: the one of its autorun file, one of
/// the usual names, or the first program in the root. Nothing when the disc holds none there.
std::optional<std::string> enhancedProgram(const platform::FileSystem& files, std::string_view root);

}  // namespace tessarel::audio
