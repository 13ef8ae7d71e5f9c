#include "host/image/msf_text.h"

#include <charconv>

namespace tessarel::host {

std::optional<long long> parseNumber(std::string_view digits, long long most) {
    long long n = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, n);
    if (digits.empty() || digits.front() == '-' || error != std::errc{} || stop != end || n > most) {
        return std::nullopt;
    }
    return n;
}

std::optional<Frames> parseMsf(std::string_view text) {
    const auto first = text.find(':');
    const auto second = first == std::string_view::npos ? first : text.find(':', first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    const auto minutes = parseNumber(text.substr(0, first), 999);
    const auto seconds = parseNumber(text.substr(first + 1, second - first - 1), 59);
    const auto frames = parseNumber(text.substr(second + 1), framesPerSecond - 1);
    if (!minutes || !seconds || !frames) {
        return std::nullopt;
    }
    return toFrames({static_cast<int>(*minutes), static_cast<int>(*seconds), static_cast<int>(*frames)});
}

}  // namespace tessarel::host
