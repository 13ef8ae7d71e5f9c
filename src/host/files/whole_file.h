#pragma once
#include <filesystem>
#include <string>
#include <string_view>

#include "base/result.h"

/// Files of the real file system, read and written whole. `name` is what a person knows the file by, for errors.
namespace tessarel::host {

inline constexpr std::size_t largestFile = std::size_t{64} << 20U;  ///< bytes

/// The bytes of a plain file of at most `largestFile` bytes. Never blocks on a pipe or a device: those are refused.
Result<std::string> readWhole(const std::filesystem::path& file, std::string_view name);

/// The first `count` bytes from `offset` on; fewer at the end, none if the file can't be read.
std::string readPart(const std::filesystem::path& file, std::size_t offset, std::size_t count);

/// Writes beside the file, flushes, and renames over it, so that either the old bytes or the new ones stand. Links are
/// followed to what they mean, and an old file's permissions stay.
Result<void> replaceWhole(const std::filesystem::path& file, std::string_view bytes, std::string_view name);

/// Writes a file that does not exist yet. Not flushed; what was written stays after an error.
Result<void> createWhole(const std::filesystem::path& file, std::string_view bytes, std::string_view name,
                         unsigned mode = 0666);

/// The file that a chain of links ends in; the path itself when it is no link. Links in a circle are `Fault::invalid`.
Result<std::filesystem::path> linkTarget(std::filesystem::path file, std::string_view name);

}  // namespace tessarel::host
