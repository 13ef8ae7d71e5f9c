#include "library/record_rules.h"

#include <algorithm>
#include <cstdlib>

#include "base/text.h"

namespace tessarel::library {
namespace {

constexpr int lyricsInExtras = 50;
constexpr int firstLyricsSlot = 13;

bool isBlank(std::string_view s) { return s.find_first_not_of(' ') == std::string_view::npos; }

bool beginsPrintable(std::string_view s) {
    const auto first = s.find_first_not_of(' ');
    return first != std::string_view::npos && s[first] >= ' ' && s[first] <= '~';
}

// Whether the whole of a text, blanks around it aside, is one decimal number.
bool isNumber(const std::string& s) {
    const auto number = text::trim(s);
    if (number.find_first_not_of("0123456789+-.eE") != std::string::npos) {
        return false;
    }
    char* end = nullptr;
    std::strtod(number.c_str(), &end);
    return !number.empty() && *end == '\0';
}

}  // namespace

void encodeRecordText(std::string& text) {
    std::replace(text.begin(), text.end(), '"', '`');
    std::replace(text.begin(), text.end(), ',', '~');
}

void decodeRecordText(std::string& text) {
    std::replace(text.begin(), text.end(), '`', '"');
    std::replace(text.begin(), text.end(), '~', ',');
}

std::string discFileId(std::int32_t discNumber) {
    const auto padded = "00000000" + std::to_string(discNumber);
    return padded.substr(padded.size() - 8);
}

std::string recordFolder(std::string_view dataDir) { return std::string(dataDir) + "\\datacd"; }

std::string discRecordPath(std::string_view dataDir, std::string_view fileId) {
    return recordFolder(dataDir).append("\\").append(fileId).append(".CD");
}

void savetimes(DiscRecord& record, std::string_view totalTime, std::span<const std::string> trackTimes) {
    std::string list = text::trim(totalTime) + ",";
    for (const auto& time : trackTimes) {
        list += text::trim(time) + ",";
    }
    record.discInfo[1] = std::move(list);
}

std::string& storedLyrics(DiscRecord& record, int track) {
    const auto slot = static_cast<std::size_t>(track);
    return track <= lyricsInExtras ? record.discExtras.at(slot + firstLyricsSlot - 1)
                                   : record.lyricsOverflow.at(slot - lyricsInExtras);
}

std::string categoryToStore(std::string_view box) { return isBlank(box) ? "General" : std::string(box); }

ArtistTitle splitArtistTitle(std::string_view text) {
    const auto slash = text.find('/');
    if (slash == std::string_view::npos) {
        return {std::string(text), std::string(text)};
    }
    return {text::trim(text.substr(0, slash)), text::trim(text.substr(slash + 1))};
}

void packImages(DiscRecord& record) {
    record.packedFiles.fill({});
    record.packedRatios.fill(0);
    std::size_t count = 0;
    for (std::size_t i = 0; i < record.imageFiles.size(); ++i) {
        if (!isBlank(record.imageFiles[i])) {
            record.packedFiles[count] = record.imageFiles[i];
            record.packedRatios[count] = record.imageDelays[i];
            ++count;
        }
    }
    record.imageCount = static_cast<std::int16_t>(count);
}

bool needsOverflowFiles(const DiscRecord& record, int discTrackCount) {
    return text::val(record.discInfo[2]) > titlesInMainFile || discTrackCount > titlesInMainFile;
}

bool extrasWorthKeeping(const DiscRecord& record) {
    const auto& extras = record.discExtras;
    return !isBlank(extras[0]) || std::any_of(extras.begin() + 2, extras.end(), beginsPrintable) ||
           text::trim(extras[1]) != defaultMediaType;
}

bool imagesWorthKeeping(const DiscRecord& record) {
    return record.timeCorrection != 0 || std::any_of(record.imageFiles.begin(), record.imageFiles.end(), isNumber);
}

}  // namespace tessarel::library
