#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "base/result.h"
#include "host/image/cue_sheet.h"
#include "host/image/toc_file.h"
#include "platform/cd_player.h"

/// From what a sheet says and how long its files are to where every sample and sector of the disc lies. Pure: no file is
/// touched. Lengths and places are counted in samples, 588 of them to a frame, in data too.
namespace tessarel::host {

/// How much an opened file of an image holds.
struct FileExtent {
    std::string name;       ///< for messages
    bool sound = false;     ///< a WAVE, AIFF or FLAC file
    std::int64_t size = 0;  ///< samples of a sound file, bytes of any other
};

/// A stretch of one track that comes from one place.
struct Piece {
    enum class Kind : std::uint8_t { silence, sound, sectors };
    Kind kind = Kind::silence;
    SectorForm form = SectorForm::audio;
    std::size_t file = 0;
    std::int64_t offset = 0;  ///< where it begins in the file: a sample of a sound file, a byte of any other
    std::int64_t length = 0;  ///< above 0
    bool operator==(const Piece&) const = default;
};

struct PlannedTrack {
    int number = 0;
    bool audio = true;
    Frames sessionGap = 0;    ///< frames before it that no session holds
    std::int64_t pregap = 0;  ///< samples from its first piece to its INDEX 01; whole frames
    std::vector<Piece> pieces;
    std::string title;
    std::string performer;
};

struct DiscPlan {
    std::vector<PlannedTrack> tracks;
    std::string title;
    std::string performer;
};

/// A piece at its place on the disc.
struct PlacedPiece {
    std::int64_t at = 0;
    Piece piece;
};

struct DiscLayout {
    platform::CdToc toc;
    std::vector<PlacedPiece> pieces;  ///< rising; between two sessions lies nothing
};

/// `files` stand in the order of `CueSheet::files`. The errors' messages are reasons, to be put behind the sheet's name.
Result<DiscPlan> planCue(const CueSheet& sheet, const std::vector<FileExtent>& files);

/// `files` has one entry for each piece that names a file, in their order.
Result<DiscPlan> planToc(const TocFile& toc, const std::vector<FileExtent>& files);

/// Fills the tracks up to whole frames and puts them one behind the other, the first at frame 0.
Result<DiscLayout> layOut(const DiscPlan& plan);

}  // namespace tessarel::host
