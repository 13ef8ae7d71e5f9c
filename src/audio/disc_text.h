#pragma once
#include <array>
#include <string>

#include "library/disc_record.h"
#include "platform/cd_player.h"

/// What a disc says of itself, in the CD-TEXT that it carries, and when that is shown: as long as the disc has no record, in
/// place of the record's texts. It is never written anywhere.
namespace tessarel::audio {

/// A disc's own texts, fit to be shown. All are empty for a disc that says nothing, and for one that had a record at its load.
struct DiscText {
    std::string artist;
    std::string discTitle;
    std::array<std::string, 101> trackTitles;   ///< 1 to 100
    std::array<std::string, 101> trackArtists;  ///< 1 to 100; empty where the disc's artist stands for the track's
    bool operator==(const DiscText&) const = default;
};

/// The texts of a table of contents, made fit: one line each, without control characters, of a length that a person reads.
DiscText discTextOf(const platform::CdToc& toc);

/// Artist and title as the disc tells them, in one line; of half a pair, the half.
std::string discLine(const DiscText& text);

/// Whether a record names its disc or any track of it. From then on the disc's own texts are not shown, not even for what
/// the record leaves empty.
bool namesDisc(const library::DiscRecord& record);

/// The texts that are shown for the disc of the moment, wherever they are shown. Refers to what it was made from.
class ShownTexts {
public:
    ShownTexts(const library::DiscRecord& record, const DiscText& discText)
        : record_(record), discText_(discText), fromRecord_(namesDisc(record)) {}

    const std::string& artist() const { return fromRecord_ ? record_.discArtist : discText_.artist; }
    const std::string& discTitle() const { return fromRecord_ ? record_.discTitle : discText_.discTitle; }
    /// Empty for a track outside 1 to 100.
    const std::string& trackTitle(int track) const;
    /// The track's own artist, or else the disc's.
    const std::string& trackArtist(int track) const;
    /// Artist and title of the disc in one line; empty when there is neither.
    std::string discLine() const;

private:
    const library::DiscRecord& record_;
    const DiscText& discText_;
    bool fromRecord_;
};

/// Whether the line of artist and title holds nothing, or nothing but what the disc says of itself. A look-up of the disc that
/// wants an empty line asks this instead, so that a disc's own texts don't keep it from being looked up.
bool holdsNoRecord(const std::string& upperLine, const DiscText& discText);

}  // namespace tessarel::audio
