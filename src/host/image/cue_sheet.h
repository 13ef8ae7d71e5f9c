#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/packed_time.h"
#include "base/result.h"
#include "host/image/sector_form.h"

namespace tessarel::host {

/// A longer sheet is no sheet.
inline constexpr std::size_t largestSheetBytes = std::size_t{1024} * 1024;
inline constexpr int mostTracks = 99;

/// What a FILE line says of its file. Whether a sample file is WAVE, AIFF or FLAC is told by its content, not by this word.
enum class CueFileKind {
    littleEndian,  ///< BINARY
    bigEndian,     ///< MOTOROLA
    sound,         ///< WAVE, AIFF, FLAC
};

struct CueFile {
    std::string name;  ///< as it is written in the sheet
    CueFileKind kind = CueFileKind::littleEndian;
    bool operator==(const CueFile&) const = default;
};

struct CueIndex {
    int number = 0;
    std::size_t file = 0;  ///< in `CueSheet::files`
    Frames at = 0;         ///< in sectors from the start of that file
    bool operator==(const CueIndex&) const = default;
};

struct CueTrack {
    int number = 0;
    SectorForm form = SectorForm::audio;
    Frames pregap = 0;   ///< silence before its first index that no file stores
    Frames postgap = 0;  ///< silence at its end that no file stores
    int session = 1;
    std::vector<CueIndex> indexes;  ///< numbers rise by one, from 0 or 1; there is always an INDEX 01
    std::string title;
    std::string performer;
};

/// What a cue sheet says, and nothing of the files that it names.
struct CueSheet {
    std::vector<CueFile> files;
    std::vector<CueTrack> tracks;  ///< 1 to 99, numbers rise by one
    std::string title;
    std::string performer;
};

/// Reads a sheet: UTF-8 or Latin-1, any line ends, keywords in any case. Does not touch the file system. An error's message is
/// the reason alone, to be put behind the sheet's name.
Result<CueSheet> parseCueSheet(std::string_view bytes);

}  // namespace tessarel::host
