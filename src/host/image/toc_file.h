#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "host/image/sector_form.h"

namespace tessarel::host {

/// A length or position in a TOC file: a time, or a bare number, which counts samples in sound and bytes in data.
struct TocLength {
    std::int64_t count = 0;  ///< frames when `isTime`
    bool isTime = false;
    bool operator==(const TocLength&) const = default;
};

/// One stretch of a track, in the order in which they follow each other.
struct TocPiece {
    std::string file;   ///< as it is written; empty for silence, or zero data
    bool swap = false;  ///< samples in the other byte order than is usual for the file's kind
    std::int64_t byteOffset = 0;
    TocLength start;                  ///< in the file, behind `byteOffset`; always 0 in data
    std::optional<TocLength> length;  ///< nothing: up to the file's end
};

struct TocTrack {
    SectorForm form = SectorForm::audio;
    std::vector<TocPiece> pieces;  ///< at least one
    /// Where INDEX 01 lies inside the track. Counts the pieces when it lies behind the first `startAfter` of them.
    TocLength start;
    std::size_t startAfter = 0;
    std::string title;
    std::string performer;
};

/// What a cdrdao TOC file says, and nothing of the files that it names.
struct TocFile {
    std::vector<TocTrack> tracks;  ///< 1 to 99
    std::string title;
    std::string performer;
};

/// Reads a TOC file. Does not touch the file system. An error's message is the reason alone, to be put behind the file's name.
Result<TocFile> parseTocFile(std::string_view bytes);

}  // namespace tessarel::host
