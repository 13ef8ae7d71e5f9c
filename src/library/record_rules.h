#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "library/disc_record.h"

/// What a disc's record means and how its files are named, without touching any file.
namespace tessarel::library {

/// Titles that the main file holds; those of the tracks behind them lie in a file of their own.
inline constexpr int titlesInMainFile = 45;
inline constexpr int mostTracks = 100;
/// The media type of a record that tells none.
inline constexpr std::string_view defaultMediaType = "Audio CD";

/// Makes a text fit for a record file, in place: a double quote becomes a back quote and a comma a tilde.
void encodeRecordText(std::string& text);

/// The way back, in place. A back quote or tilde that a user typed comes back as a double quote or comma as well.
void decodeRecordText(std::string& text);

/// The name of a disc's files: the number's last eight characters, filled with zeros in front.
std::string discFileId(std::int32_t discNumber);

/// Full path of the main file of a disc in the data directory.
std::string discRecordPath(std::string_view dataDir, std::string_view fileId);

/// The folder of the record files in the data directory.
std::string recordFolder(std::string_view dataDir);

/// Rebuilds the time list `discInfo[1]` from the total and the tracks' times in order, each a text as it is shown.
void savetimes(DiscRecord& record, std::string_view totalTime, std::span<const std::string> trackTimes);

/// Where the lyrics of a track of 1 to 100 are stored: in `discExtras` up to track 50, in `lyricsOverflow` from 51 on.
std::string& storedLyrics(DiscRecord& record, int track);

/// The category to store for what stands in the category box: "General" when that is blank.
std::string categoryToStore(std::string_view box);

struct ArtistTitle {
    std::string artist;
    std::string title;
    bool operator==(const ArtistTitle&) const = default;
};

/// Takes "Artist / Title" apart at the first slash. A text without one is both.
ArtistTitle splitArtistTitle(std::string_view text);

/// Rebuilds `packedFiles`, `packedRatios` and `imageCount` from `imageFiles` and `imageDelays`.
void packImages(DiscRecord& record);

/// Whether titles or lyrics beyond the main file are to be saved, by the stored count or the one of the disc in the drive.
bool needsOverflowFiles(const DiscRecord& record, int discTrackCount);

/// Whether the extras say more than that this is an audio CD. A text that does not begin with a printable ASCII character
/// does not count.
bool extrasWorthKeeping(const DiscRecord& record);

/// Whether there is an image set to save: a time correction, or an entry whose text is a number, as the display type is.
bool imagesWorthKeeping(const DiscRecord& record);

}  // namespace tessarel::library
