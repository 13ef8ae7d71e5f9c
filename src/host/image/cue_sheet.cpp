#include "host/image/cue_sheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"
#include "host/image/msf_text.h"

namespace tessarel::host {
namespace {

constexpr std::string_view blanks = " \t\f\v";

/// Words that carry nothing the disc's sound, data or names depend on.
constexpr std::array passedOver{"ARRANGER",   "CATALOG",   "CDTEXTFILE", "COMMENT", "COMPOSER", "DATE",    "DISCID",
                                "DISC_ID",    "FLAGS",     "GENRE",      "ISRC",    "LABEL",    "MESSAGE", "SIZE_INFO",
                                "SONGWRITER", "TOC_INFO1", "TOC_INFO2",  "UPC_EAN", "YEAR"};

std::string_view trimmed(std::string_view s) {
    const auto first = s.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return s.substr(first, s.find_last_not_of(blanks) - first + 1);
}

/// Cuts the first word off.
std::string_view takeWord(std::string_view& rest) {
    rest = trimmed(rest);
    const auto end = std::min(rest.find_first_of(blanks), rest.size());
    const auto word = rest.substr(0, end);
    rest = trimmed(rest.substr(end));
    return word;
}

/// The text of a value; quotes inside a quoted one stay.
std::string valueText(std::string_view rest) {
    rest = trimmed(rest);
    if (!rest.empty() && rest.front() == '"') {
        rest.remove_prefix(1);
        rest = rest.substr(0, std::min(rest.rfind('"'), rest.size()));
    }
    return std::string(rest);
}

std::optional<SectorForm> sectorForm(std::string_view mode) {
    if (mode == "AUDIO") {
        return SectorForm::audio;
    }
    if (mode == "MODE1/2048" || mode == "MODE2/2048") {
        return SectorForm::cooked;
    }
    if (mode == "MODE1/2352" || mode == "MODE2/2352" || mode == "CDI/2352") {
        return SectorForm::raw;
    }
    if (mode == "MODE2/2336" || mode == "CDI/2336") {
        return SectorForm::mode2Headless;
    }
    return std::nullopt;
}

std::optional<CueFileKind> fileKind(std::string_view type) {
    if (type == "BINARY") {
        return CueFileKind::littleEndian;
    }
    if (type == "MOTOROLA") {
        return CueFileKind::bigEndian;
    }
    if (type == "WAVE" || type == "AIFF" || type == "FLAC") {
        return CueFileKind::sound;
    }
    return std::nullopt;
}

class SheetReader {
public:
    Result<CueSheet> read(std::string_view text) {
        while (!text.empty()) {
            const auto end = text.find_first_of("\r\n");
            ++line_;
            if (auto done = readLine(text.substr(0, end)); !done) {
                return tl::unexpected(done.error());
            }
            if (end == std::string_view::npos) {
                break;
            }
            text.remove_prefix(text.substr(end, 2) == "\r\n" ? end + 2 : end + 1);
        }
        if (auto done = endTrack(); !done) {
            return tl::unexpected(done.error());
        }
        if (sheet_.tracks.empty()) {
            return failure(Fault::invalid, "it has no tracks.");
        }
        if (lastIndex_->file + 1 < sheet_.files.size()) {
            return failure(Fault::invalid, fmt::format("no track uses the file \"{}\".", sheet_.files.back().name));
        }
        return std::move(sheet_);
    }

private:
    tl::unexpected<Error> refuse(std::string reason) const {
        return failure(Fault::invalid, fmt::format("line {}: {}", line_, reason));
    }

    CueTrack* track() { return sheet_.tracks.empty() ? nullptr : &sheet_.tracks.back(); }

    Result<void> readLine(std::string_view rest) {
        const std::string keyword = text::upper(takeWord(rest));
        if (keyword.empty()) {
            return {};
        }
        if (keyword == "REM") {
            return readRemark(rest);
        }
        if (keyword == "FILE") {
            return readFile(rest);
        }
        if (keyword == "TRACK") {
            return readTrack(rest);
        }
        if (keyword == "INDEX") {
            return readIndex(rest);
        }
        if (keyword == "PREGAP" || keyword == "POSTGAP") {
            return readGap(keyword, rest);
        }
        if (keyword == "TITLE") {
            (track() != nullptr ? track()->title : sheet_.title) = valueText(rest);
            return {};
        }
        if (keyword == "PERFORMER") {
            (track() != nullptr ? track()->performer : sheet_.performer) = valueText(rest);
            return {};
        }
        if (std::find(passedOver.begin(), passedOver.end(), keyword) != passedOver.end()) {
            return {};
        }
        return refuse(fmt::format("the word \"{}\" is not known.", keyword.substr(0, 40)));
    }

    Result<void> readRemark(std::string_view rest) {
        if (!text::sameIgnoringCase(takeWord(rest), "SESSION")) {
            return {};
        }
        const auto number = parseNumber(rest, mostTracks);
        if (!number || *number < session_ || *number > session_ + 1) {
            return refuse("the session numbers do not rise by one.");
        }
        session_ = static_cast<int>(*number);
        return {};
    }

    Result<void> readFile(std::string_view rest) {
        const auto cut = rest.find_last_of(blanks);
        const auto quote = rest.rfind('"');
        const auto split = quote != std::string_view::npos && quote > 0 ? quote + 1 : std::min(cut, rest.size());
        const std::string name = valueText(rest.substr(0, split));
        const std::string type = text::upper(trimmed(rest.substr(split)));
        if (name.empty()) {
            return refuse("FILE does not name a file.");
        }
        const auto kind = fileKind(type);
        if (!kind) {
            return refuse(fmt::format("files of type \"{}\" are not served.", type.substr(0, 40)));
        }
        CueFile file{name, *kind};
        if (sheet_.files.empty() || sheet_.files.back() != file) {
            sheet_.files.push_back(std::move(file));
        }
        return {};
    }

    Result<void> readTrack(std::string_view rest) {
        if (auto done = endTrack(); !done) {
            return done;
        }
        const auto number = parseNumber(takeWord(rest), 999);
        if (!number || *number < 1) {
            return refuse("TRACK has no number.");
        }
        if (*number > mostTracks) {
            return refuse("a disc has 99 tracks at most.");
        }
        if (track() != nullptr && *number != track()->number + 1) {
            return refuse(fmt::format("track {} follows track {}; the numbers have to rise by one.", *number, track()->number));
        }
        const std::string mode = text::upper(rest);
        if (mode == "CDG") {
            return refuse(fmt::format("track {} is a graphics (CDG) track, which is not served.", *number));
        }
        const auto form = sectorForm(mode);
        if (!form) {
            return refuse(fmt::format("track {} is of the unknown type \"{}\".", *number, mode.substr(0, 40)));
        }
        CueTrack next;
        next.number = static_cast<int>(*number);
        next.form = *form;
        next.session = session_;
        sheet_.tracks.push_back(std::move(next));
        return {};
    }

    Result<void> readIndex(std::string_view rest) {
        if (track() == nullptr || sheet_.files.empty()) {
            return refuse(sheet_.files.empty() ? "INDEX stands before any FILE." : "INDEX stands before any TRACK.");
        }
        const auto number = parseNumber(takeWord(rest), mostTracks);
        const auto at = parseMsf(rest);
        if (!number || !at) {
            return refuse("INDEX needs a number and a time as in 01 00:00:00.");
        }
        auto& indexes = track()->indexes;
        const bool inOrder = indexes.empty() ? *number <= 1 : *number == indexes.back().number + 1;
        if (!inOrder) {
            return refuse(fmt::format("INDEX {:02} of track {} is out of order.", *number, track()->number));
        }
        const CueIndex index{static_cast<int>(*number), sheet_.files.size() - 1, *at};
        if (lastIndex_ && lastIndex_->file == index.file && index.at < lastIndex_->at) {
            return refuse(fmt::format("INDEX {:02} of track {} goes backwards.", *number, track()->number));
        }
        if (index.file > (lastIndex_ ? lastIndex_->file + 1 : 0)) {
            return refuse(fmt::format("no track uses the file \"{}\".", sheet_.files[index.file - 1].name));
        }
        lastIndex_ = index;
        indexes.push_back(index);
        return {};
    }

    Result<void> readGap(std::string_view keyword, std::string_view rest) {
        const auto length = parseMsf(rest);
        if (track() == nullptr || !length) {
            return refuse(fmt::format("{} needs a track and a time as in 00:02:00.", keyword));
        }
        if (keyword == "PREGAP" && !track()->indexes.empty()) {
            return refuse(fmt::format("PREGAP of track {} stands behind its INDEX.", track()->number));
        }
        (keyword == "PREGAP" ? track()->pregap : track()->postgap) = *length;
        return {};
    }

    /// Before the next track, and at the end.
    Result<void> endTrack() {
        if (track() == nullptr) {
            return {};
        }
        if (track()->indexes.empty() || track()->indexes.back().number < 1) {
            return failure(Fault::invalid, fmt::format("track {} has no INDEX 01.", track()->number));
        }
        return {};
    }

    CueSheet sheet_;
    int line_ = 0;
    int session_ = 1;
    std::optional<CueIndex> lastIndex_;
};

}  // namespace

Result<CueSheet> parseCueSheet(std::string_view bytes) {
    if (bytes.size() > largestSheetBytes) {
        return failure(Fault::invalid, "it is longer than any cue sheet.");
    }
    if (bytes.find('\0') != std::string_view::npos) {
        return failure(Fault::invalid, "it is no text.");
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        bytes.remove_prefix(3);
    }
    return SheetReader().read(text::decodeLatin1(bytes));
}

}  // namespace tessarel::host
