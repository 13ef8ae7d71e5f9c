#pragma once
#include <array>
#include <cstdint>
#include <string>

namespace tessarel::library {

/// All that is known of the one disc that is current. Filled at a disc's load and by the library; it stays after the disc
/// has left. Text fields have no length limit.
struct DiscRecord {
    std::string discRecordPath;  ///< full path of the .CD file
    std::string discFileId;      ///< eight characters: its name without extension
    std::string discTitle;
    std::string discArtist;
    std::string linerNotes;                      ///< may hold line breaks
    std::array<std::string, 101> trackTitles;    ///< 1 to 100
    std::array<std::string, 101> trackLyrics;    ///< 1 to 100, in memory only
    std::array<std::string, 6> discInfo;         ///< 1 time list, 2 track count, 3 composer, 4 label and number, 5 category
    std::array<std::string, 76> discExtras;      ///< 0 cost, 1 media type, ... 13 to 62 lyrics of tracks 1 to 50, ...
    std::array<std::string, 51> lyricsOverflow;  ///< 1 to 50: lyrics of tracks 51 to 100
    std::array<std::string, 21> imageFiles;      ///< 0 the display type as text, 1 to 20 the images
    std::array<std::int16_t, 21> imageDelays{};  ///< 0 the interval in seconds, 1 to 20 the aspect ratio's index
    std::int16_t timeCorrection = 0;             ///< seconds, -3 to 5

    // The entries of `imageFiles` that are not blank, closed up, with theirs of `imageDelays`, for the art displays. The
    // display type is one of them and comes first.
    std::array<std::string, 21> packedFiles;  ///< 0 to `imageCount` - 1
    std::array<std::int16_t, 21> packedRatios{};
    std::int16_t imageCount = 0;
    std::int16_t defaultImageSet = 0;  ///< 1: the next read or write of the images, and only that, uses default.cd1
    std::int16_t noStoredImages = 0;   ///< 1: the disc has no images of its own, and none are written
};

}  // namespace tessarel::library
