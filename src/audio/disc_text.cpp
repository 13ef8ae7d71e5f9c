#include "audio/disc_text.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace tessarel::audio {
namespace {

constexpr std::size_t longestText = 160;   // characters
constexpr std::size_t longestRead = 4096;  // characters, before blanks are closed up
constexpr int mostTracks = 100;

bool isControl(unsigned char byte) { return byte < 0x20 || byte == 0x7F; }

// Bytes of the control character that a text goes on with: the C1 controls and the two separators of lines take several.
std::size_t controlBytes(std::string_view text) {
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    if (isControl(static_cast<unsigned char>(text.front()))) {
        return 1;
    }
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) <= 0x9F) {
        return 2;
    }
    return byte(0) == 0xE2 && byte(1) == 0x80 && (byte(2) == 0xA8 || byte(2) == 0xA9) ? 3 : 0;
}

std::string fitText(std::string_view raw) {
    const auto decoded = text::left(text::decodeLatin1(raw), longestRead);
    std::string line;
    for (std::string_view rest = decoded; !rest.empty();) {
        const auto control = controlBytes(rest);
        const char next = control > 0 ? ' ' : rest.front();
        if (next != ' ' || !line.ends_with(' ')) {
            line += next;
        }
        rest.remove_prefix(std::max<std::size_t>(control, 1));
    }
    return text::trim(text::left(text::trim(line), longestText));
}

const std::string& element(const std::array<std::string, 101>& texts, int track) {
    static const std::string none;
    return track >= 1 && track <= mostTracks ? texts.at(static_cast<std::size_t>(track)) : none;
}

}  // namespace

DiscText discTextOf(const platform::CdToc& toc) {
    DiscText text;
    text.artist = fitText(toc.performer);
    text.discTitle = fitText(toc.title);
    for (const auto& track : toc.tracks) {
        if (track.number >= 1 && track.number <= mostTracks) {
            const auto at = static_cast<std::size_t>(track.number);
            text.trackTitles.at(at) = fitText(track.title);
            text.trackArtists.at(at) = fitText(track.performer);
        }
    }
    return text;
}

std::string discLine(const DiscText& text) {
    const bool whole = !text.artist.empty() && !text.discTitle.empty();
    return text.artist + (whole ? " - " : "") + text.discTitle;
}

bool namesDisc(const library::DiscRecord& record) {
    const auto speaks = [](const std::string& text) { return !text::trim(text).empty(); };
    return speaks(record.discArtist) || speaks(record.discTitle) ||
           std::any_of(record.trackTitles.begin(), record.trackTitles.end(), speaks);
}

const std::string& ShownTexts::trackTitle(int track) const {
    return element(fromRecord_ ? record_.trackTitles : discText_.trackTitles, track);
}

const std::string& ShownTexts::trackArtist(int track) const {
    const auto& own = element(discText_.trackArtists, track);
    return own.empty() || fromRecord_ ? artist() : own;
}

std::string ShownTexts::discLine() const {
    if (!fromRecord_) {
        return audio::discLine(discText_);
    }
    const bool bothBlank = text::trim(record_.discArtist).empty() && text::trim(record_.discTitle).empty();
    auto line = record_.discArtist + " - " + record_.discTitle;
    return bothBlank || line == "N/A" ? std::string() : line;
}

bool holdsNoRecord(const std::string& upperLine, const DiscText& discText) {
    return upperLine.empty() || upperLine == discLine(discText);
}

}  // namespace tessarel::audio
