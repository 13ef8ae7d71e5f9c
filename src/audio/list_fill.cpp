#include "audio/list_fill.h"

#include <algorithm>
#include <vector>

#include "audio/disc_text.h"

namespace tessarel::audio {
namespace {

constexpr int mostRows = 100;
constexpr int titleStop = 13;
constexpr int lengthStop = 218;
constexpr int lengthStopOfSmallFonts = 231;
constexpr int endStop = 250;

constexpr std::size_t lyricsInExtras = 50;
constexpr std::size_t firstLyricsExtra = 12;  // of track 1 minus one

std::string row(const ListSource& source, const ShownTexts& texts, int track) {
    const auto& length = source.player.trackLengths.at(static_cast<std::size_t>(track));
    return std::to_string(track) + ":\t" + texts.trackTitle(track) + "\t" + length;
}

void show(forms::ListBox& box, std::vector<int> tabStops, std::vector<std::string> rows) {
    box.tabStops = std::move(tabStops);
    box.ListIndex = -1;
    box.rows = std::move(rows);
}

void showTracks(forms::ListBox& box, const ListSource& source, const std::vector<int>& tracks) {
    const ShownTexts texts(source.record, source.player.discText);
    std::vector<std::string> rows;
    rows.reserve(tracks.size());
    for (const int track : tracks) {
        rows.push_back(row(source, texts, track));
    }
    show(box, {titleStop, source.smallFonts ? lengthStopOfSmallFonts : lengthStop, endStop}, std::move(rows));
}

int listedTracks(const ListSource& source) { return std::min<int>(source.player.discTrackCount, mostRows); }

// The words of the first tracks lie among the record's further fields, the others in a list of their own.
const std::string& lyricsOf(const library::DiscRecord& record, int track) {
    const auto at = static_cast<std::size_t>(track);
    return at <= lyricsInExtras ? record.discExtras.at(at + firstLyricsExtra) : record.lyricsOverflow.at(at - lyricsInExtras);
}

std::string withoutControls(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 127; }, ' ');
    return text;
}

}  // namespace

void fillProgramList(forms::ListBox& box, const ListSource& source) {
    if (source.player.discTrackCount < 1) {
        return;
    }
    std::vector<int> tracks;
    for (int entry = 1; entry <= std::min<int>(source.player.programCount, mostRows); ++entry) {
        const int track = source.player.programBackup.at(static_cast<std::size_t>(entry));
        if (track >= 1 && track <= mostRows) {
            tracks.push_back(track);
        }
    }
    showTracks(box, source, tracks);
}

void fillTrackList(forms::ListBox& box, const ListSource& source) {
    if (source.player.discTrackCount < 1) {
        return;
    }
    std::vector<int> tracks;
    for (int track = 1; track <= listedTracks(source); ++track) {
        tracks.push_back(track);
    }
    showTracks(box, source, tracks);
}

void fillLyricsList(forms::ListBox& box, const ListSource& source) {
    if (source.player.discTrackCount < 1) {
        return;
    }
    std::vector<std::string> rows;
    for (int track = 1; track <= listedTracks(source); ++track) {
        rows.push_back(std::to_string(track) + ":\t" + withoutControls(lyricsOf(source.record, track)));
    }
    show(box, {titleStop, lengthStop}, std::move(rows));
}

}  // namespace tessarel::audio
