#include "host/image/toc_file.h"

#include <fmt/format.h>

#include <array>

#include "base/text.h"
#include "host/image/cue_sheet.h"
#include "host/image/msf_text.h"
#include "host/image/toc_tokens.h"

namespace tessarel::host {
namespace {

using Kind = TocToken::Kind;

constexpr long long largestNumber = 1LL << 36;

std::optional<SectorForm> sectorForm(std::string_view mode) {
    if (mode == "AUDIO") {
        return SectorForm::audio;
    }
    if (mode == "MODE1" || mode == "MODE2_FORM1") {
        return SectorForm::cooked;
    }
    if (mode == "MODE1_RAW" || mode == "MODE2_RAW") {
        return SectorForm::raw;
    }
    if (mode == "MODE2" || mode == "MODE2_FORM_MIX") {
        return SectorForm::mode2Headless;
    }
    return std::nullopt;
}

class TocReader {
public:
    explicit TocReader(std::vector<TocToken> tokens) : tokens_(std::move(tokens)) {}

    Result<TocFile> read() {
        while (here().kind != Kind::end) {
            if (auto done = readStatement(); !done) {
                return tl::unexpected(done.error());
            }
        }
        if (auto done = endTrack(); !done) {
            return tl::unexpected(done.error());
        }
        if (toc_.tracks.empty()) {
            return failure(Fault::invalid, "it has no tracks.");
        }
        return std::move(toc_);
    }

private:
    const TocToken& here() const { return tokens_[at_]; }
    void next() { at_ += at_ + 1 < tokens_.size() ? 1U : 0U; }
    bool atMark(std::string_view mark) const { return here().kind == Kind::mark && here().value == mark; }
    bool atWord(std::string_view word) const { return here().kind == Kind::word && here().value == word; }
    bool takeMark(std::string_view mark) {
        const bool found = atMark(mark);
        if (found) {
            next();
        }
        return found;
    }
    TocTrack* track() { return toc_.tracks.empty() ? nullptr : &toc_.tracks.back(); }

    tl::unexpected<Error> refuse(std::string reason) const {
        return failure(Fault::invalid, fmt::format("line {}: {}", line_, reason));
    }

    std::optional<std::string> takeText() {
        if (here().kind != Kind::text) {
            return std::nullopt;
        }
        std::string value = here().value;
        next();
        return value;
    }

    std::optional<TocLength> takeLength() {
        if (here().kind != Kind::word) {
            return std::nullopt;
        }
        const auto time = parseMsf(here().value);
        const auto number = time ? std::optional<long long>(*time) : parseNumber(here().value, largestNumber);
        if (!number) {
            return std::nullopt;
        }
        next();
        return TocLength{*number, time.has_value()};
    }

    Result<void> readStatement() {
        line_ = here().line;
        if (here().kind != Kind::word) {
            return refuse(fmt::format("\"{}\" stands where a word should.", here().value.substr(0, 40)));
        }
        const std::string word = here().value;
        if (word == "CD_TEXT") {
            next();
            return readCdText();
        }
        if (word == "TRACK") {
            next();
            return readTrack();
        }
        return track() == nullptr ? readDiscWord(word) : readTrackWord(word);
    }

    Result<void> readDiscWord(const std::string& word) {
        next();
        if (word == "CD_DA" || word == "CD_ROM" || word == "CD_ROM_XA" || word == "CD_I") {
            return {};
        }
        if (word == "CATALOG" && takeText()) {
            return {};
        }
        return refuse(fmt::format("\"{}\" is not known before the first track.", word.substr(0, 40)));
    }

    Result<void> readTrackWord(const std::string& word) {
        if (word == "FILE" || word == "AUDIOFILE" || word == "DATAFILE") {
            next();
            return readFile(word == "DATAFILE");
        }
        if (word == "SILENCE" || word == "ZERO") {
            next();
            return readZeros(word == "SILENCE");
        }
        if (word == "PREGAP" || word == "START") {
            next();
            return word == "START" ? readStart() : readPregap();
        }
        return readPassedOver(word);
    }

    Result<void> readPassedOver(const std::string& word) {
        constexpr std::array flags{"COPY", "PRE_EMPHASIS", "TWO_CHANNEL_AUDIO", "FOUR_CHANNEL_AUDIO", "NO"};
        next();
        for (const std::string_view flag : flags) {
            if (word == flag) {
                return {};
            }
        }
        if (word == "ISRC" && takeText()) {
            return {};
        }
        if (word == "INDEX" && takeLength()) {
            return {};
        }
        if (word == "END") {
            takeLength();
            return {};
        }
        return refuse(fmt::format("\"{}\" is not known, or not complete, in a track.", word.substr(0, 40)));
    }

    Result<void> readTrack() {
        if (auto done = endTrack(); !done) {
            return done;
        }
        const auto form = sectorForm(here().value);
        const std::size_t number = toc_.tracks.size() + 1;
        if (!form) {
            return refuse(fmt::format("track {} is of the unknown type \"{}\".", number, here().value.substr(0, 40)));
        }
        next();
        if (atWord("RW") || atWord("RW_RAW")) {
            return refuse(fmt::format("track {} holds sub-channel data, which is not served.", number));
        }
        if (number > mostTracks) {
            return refuse("a disc has 99 tracks at most.");
        }
        toc_.tracks.emplace_back().form = *form;
        return {};
    }

    Result<void> readFile(bool dataFile) {
        TocPiece piece;
        const auto name = takeText();
        if (!name || name->empty()) {
            return refuse("a file's name is missing.");
        }
        if (dataFile == (track()->form == SectorForm::audio)) {
            return refuse(dataFile ? "DATAFILE stands in an audio track." : "a sound file stands in a data track.");
        }
        piece.file = *name;
        if (auto done = readOffset(piece); !done) {
            return done;
        }
        if (!dataFile) {
            piece.start = takeLength().value_or(TocLength{});
        }
        piece.length = takeLength();
        if (piece.length && piece.length->count == 0) {
            piece.length.reset();
        }
        track()->pieces.push_back(std::move(piece));
        return {};
    }

    Result<void> readOffset(TocPiece& piece) {
        while (atWord("SWAP") || atMark("#")) {
            if (atWord("SWAP")) {
                piece.swap = true;
                next();
                continue;
            }
            next();
            const auto offset = takeLength();
            if (!offset || offset->isTime) {
                return refuse("# needs a number of bytes.");
            }
            piece.byteOffset = offset->count;
        }
        return {};
    }

    Result<void> readZeros(bool silence) {
        while (!silence && here().kind == Kind::word && (atWord("RW") || atWord("RW_RAW") || sectorForm(here().value))) {
            next();
        }
        const auto length = takeLength();
        if (!length) {
            return refuse("a length of silence is missing.");
        }
        if (silence && track()->form != SectorForm::audio) {
            return refuse("SILENCE stands in a data track.");
        }
        if (!silence && track()->form == SectorForm::audio && !length->isTime) {
            return refuse("ZERO in an audio track needs a time.");
        }
        track()->pieces.emplace_back().length = length;
        return {};
    }

    Result<void> readPregap() {
        const auto length = takeLength();
        if (!length || !length->isTime || !track()->pieces.empty()) {
            return refuse("PREGAP needs a time, and has to stand before all else in its track.");
        }
        track()->pieces.emplace_back().length = length;
        return setStart({}, 1);
    }

    Result<void> readStart() {
        if (const auto length = takeLength()) {
            return setStart(*length, 0);
        }
        return setStart({}, track()->pieces.size());
    }

    Result<void> setStart(TocLength start, std::size_t after) {
        if (started_) {
            return refuse("a track has two starts.");
        }
        started_ = true;
        track()->start = start;
        track()->startAfter = after;
        return {};
    }

    Result<void> endTrack() {
        if (track() != nullptr && track()->pieces.empty()) {
            return refuse(fmt::format("track {} is empty.", toc_.tracks.size()));
        }
        started_ = false;
        return {};
    }

    /// CD_TEXT { LANGUAGE_MAP {...} LANGUAGE n { ITEM "..." ITEM {...} } }
    Result<void> readCdText() {
        if (!takeMark("{")) {
            return refuse("CD_TEXT has no opening bracket.");
        }
        while (!takeMark("}")) {
            if (atWord("LANGUAGE")) {
                next();
                const bool first = atWord("0");
                next();
                if (!takeMark("{")) {
                    return refuse("LANGUAGE has no opening bracket.");
                }
                if (auto done = readItems(first); !done) {
                    return done;
                }
            } else if (auto done = skipItem(); !done) {
                return done;
            }
        }
        return {};
    }

    Result<void> readItems(bool keep) {
        while (!takeMark("}")) {
            std::string& title = track() != nullptr ? track()->title : toc_.title;
            std::string& performer = track() != nullptr ? track()->performer : toc_.performer;
            std::string* field = atWord("TITLE") ? &title : atWord("PERFORMER") ? &performer : nullptr;
            if (keep && field != nullptr && tokens_[at_ + 1].kind == Kind::text) {
                next();
                *field = *takeText();
            } else if (auto done = skipItem(); !done) {
                return done;
            }
        }
        return {};
    }

    /// One token, or a whole bracket with all it holds.
    Result<void> skipItem() {
        int depth = 0;
        do {
            if (here().kind == Kind::end) {
                return refuse("a bracket is not closed.");
            }
            depth += atMark("{") ? 1 : atMark("}") ? -1 : 0;
            next();
        } while (depth > 0);
        return {};
    }

    std::vector<TocToken> tokens_;
    std::size_t at_ = 0;
    int line_ = 0;  ///< where the statement begins that is being read
    TocFile toc_;
    bool started_ = false;
};

}  // namespace

Result<TocFile> parseTocFile(std::string_view bytes) {
    if (bytes.size() > largestSheetBytes) {
        return failure(Fault::invalid, "it is longer than any TOC file.");
    }
    if (bytes.find('\0') != std::string_view::npos) {
        return failure(Fault::invalid, "it is no text.");
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        bytes.remove_prefix(3);
    }
    auto tokens = tocTokens(bytes);
    if (!tokens) {
        return tl::unexpected(tokens.error());
    }
    return TocReader(std::move(*tokens)).read();
}

}  // namespace tessarel::host
