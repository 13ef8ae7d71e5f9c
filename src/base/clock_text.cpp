#include "base/clock_text.h"

#include <charconv>
#include <optional>

namespace tessarel {
namespace {

struct MinutesSeconds {
    int minutes;
    int seconds;
};

std::optional<int> wholeNumber(std::string_view digits) {
    int n = 0;
    const auto* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, n);
    if (digits.empty() || error != std::errc{} || stop != end || n < 0) {
        return std::nullopt;
    }
    return n;
}

std::optional<MinutesSeconds> parse(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto minutes = wholeNumber(text.substr(0, colon));
    const auto seconds = wholeNumber(text.substr(colon + 1));
    if (!minutes || !seconds || *seconds > 59) {
        return std::nullopt;
    }
    return MinutesSeconds{*minutes, *seconds};
}

}  // namespace

std::string twoDigits(int n) {
    std::string digits = std::to_string(n);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string clockText(std::string_view text) {
    const auto time = parse(text);
    return time ? twoDigits(time->minutes) + ":" + twoDigits(time->seconds) : std::string(text);
}

int clockSeconds(std::string_view text) {
    const auto time = parse(text);
    return time ? time->minutes * 60 + time->seconds : 0;
}

}  // namespace tessarel
