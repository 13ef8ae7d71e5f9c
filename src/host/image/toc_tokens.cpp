#include "host/image/toc_tokens.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace tessarel::host {
namespace {

constexpr std::string_view blanks = " \t\f\v\r\n";
constexpr std::string_view marks = "{},#";

bool isOctal(char c) { return c >= '0' && c <= '7'; }

class Cutter {
public:
    explicit Cutter(std::string_view bytes) : rest_(bytes) {}

    Result<std::vector<TocToken>> cut() {
        while (skipToToken()) {
            if (rest_.front() == '"') {
                if (!cutText()) {
                    return failure(Fault::invalid, fmt::format("line {}: a quote is not closed.", line_));
                }
            } else if (marks.find(rest_.front()) != std::string_view::npos || rest_.front() == ':') {
                add(TocToken::Kind::mark, std::string(1, rest_.front()));
                rest_.remove_prefix(1);
            } else {
                cutWord();
            }
        }
        add(TocToken::Kind::end, {});
        return std::move(tokens_);
    }

private:
    void add(TocToken::Kind kind, std::string value) { tokens_.push_back({kind, std::move(value), line_}); }

    bool skipToToken() {
        while (!rest_.empty()) {
            if (rest_.substr(0, 2) == "//") {
                rest_.remove_prefix(std::min(rest_.find_first_of("\r\n"), rest_.size()));
            } else if (blanks.find(rest_.front()) != std::string_view::npos) {
                line_ += rest_.front() == '\n' ? 1 : 0;
                rest_.remove_prefix(1);
            } else {
                return true;
            }
        }
        return false;
    }

    void cutWord() {
        std::size_t end = 0;
        const auto goesOn = [&] {
            const char c = rest_[end];
            return blanks.find(c) == std::string_view::npos && marks.find(c) == std::string_view::npos && c != '"' &&
                   rest_.substr(end, 2) != "//" && (c != ':' || isTimeColon(end));
        };
        while (end < rest_.size() && goesOn()) {
            ++end;
        }
        add(TocToken::Kind::word, std::string(rest_.substr(0, end)));
        rest_.remove_prefix(end);
    }

    /// A colon with a digit right on both sides belongs to a time.
    bool isTimeColon(std::size_t at) const {
        const auto isDigit = [&](std::size_t i) { return i < rest_.size() && rest_[i] >= '0' && rest_[i] <= '9'; };
        return at > 0 && isDigit(at - 1) && isDigit(at + 1);
    }

    bool cutText() {
        std::string value;
        std::size_t at = 1;
        while (at < rest_.size() && rest_[at] != '"') {
            line_ += rest_[at] == '\n' ? 1 : 0;
            at += rest_[at] == '\\' ? takeEscape(at, value) : takePlain(at, value);
        }
        if (at >= rest_.size()) {
            return false;
        }
        add(TocToken::Kind::text, text::decodeLatin1(value));
        rest_.remove_prefix(at + 1);
        return true;
    }

    std::size_t takePlain(std::size_t at, std::string& value) const {
        value += rest_[at];
        return 1;
    }

    /// Three octal digits are one byte; a quote or back-slash stands for itself; any other back-slash is only that.
    std::size_t takeEscape(std::size_t at, std::string& value) const {
        const auto next = rest_.substr(at + 1, 3);
        if (next.size() == 3 && next[0] <= '3' && std::all_of(next.begin(), next.end(), isOctal)) {
            value += static_cast<char>((next[0] - '0') * 64 + (next[1] - '0') * 8 + (next[2] - '0'));
            return 4;
        }
        if (!next.empty() && (next[0] == '"' || next[0] == '\\')) {
            value += next[0];
            return 2;
        }
        value += '\\';
        return 1;
    }

    std::string_view rest_;
    std::vector<TocToken> tokens_;
    int line_ = 1;
};

}  // namespace

Result<std::vector<TocToken>> tocTokens(std::string_view bytes) { return Cutter(bytes).cut(); }

}  // namespace tessarel::host
