#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"

/// What the sectors of an ISO 9660 volume say. Pure: bytes in, values out.
namespace tessarel::host {

/// Sectors from a session's start to its first volume descriptor.
inline constexpr int volumeDescriptorSector = 16;

/// One piece of a file.
struct IsoExtent {
    std::uint32_t sector = 0;
    std::uint32_t bytes = 0;
    bool operator==(const IsoExtent&) const = default;
};

struct IsoRecord {
    std::string identifier;  ///< the bytes as they stand; "\0" and "\1" are the directory itself and its parent
    bool directory = false;
    bool hidden = false;
    bool associated = false;   ///< a side stream of another file
    bool interleaved = false;  ///< its sectors do not lie one behind the other
    std::vector<IsoExtent> extents;
    std::vector<std::byte> systemUse;
};

struct IsoDescriptor {
    enum class Kind : std::uint8_t { primary, joliet, terminator, other };
    Kind kind = Kind::other;
    std::string label;          ///< trimmed, UTF-8
    std::uint32_t sectors = 0;  ///< of the whole volume
    IsoRecord root;
};

/// Reads a volume descriptor from the first bytes of a sector; nothing when it is none, or its root lies.
std::optional<IsoDescriptor> parseVolumeDescriptor(std::span<const std::byte> sector);

/// Reads a directory's whole extent, in its order. Pieces of one file are joined. A record that crosses its sector or whose
/// lengths lie makes the directory invalid.
Result<std::vector<IsoRecord>> parseDirectory(std::span<const std::byte> extent);

/// The name of a plain or Joliet identifier without its version; nothing for one that no file may bear.
std::optional<std::string> isoName(const std::string& identifier, bool joliet);

/// Whether a name can be shown and used in a path: not empty, no ".", "..", slashes or control characters.
bool isUsableName(std::string_view name);

/// Where more system use entries lie.
struct IsoContinuation {
    std::uint32_t sector = 0;
    std::uint32_t offset = 0;
    std::uint32_t bytes = 0;
};

/// What the system use entries of Rock Ridge say.
struct RockRidge {
    std::string name;         ///< the parts found so far, in order
    std::optional<int> skip;  ///< bytes before each record's own entries, as the root tells
    std::optional<IsoContinuation> more;
};

/// Adds what these entries say to `found`.
void readSystemUse(std::span<const std::byte> entries, RockRidge& found);

}  // namespace tessarel::host
