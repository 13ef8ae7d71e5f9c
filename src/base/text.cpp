#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace tessarel::text {
namespace {

constexpr char32_t replacement = 0xFFFD;

// Windows-1252 bytes 0x80 to 0x9F; the five unassigned ones keep their control code.
constexpr std::array<char32_t, 32> windows1252 = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                  0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

struct Decoded {
    char32_t character;
    std::size_t bytes;  // how many were taken, at least 1
    bool valid;
};

Decoded decodeOne(std::string_view s) {
    const auto lead = static_cast<unsigned char>(s[0]);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    const std::size_t count = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || s.size() < count) {
        return {replacement, 1, false};
    }
    char32_t c = lead & (0xFFU >> (count + 1));
    for (std::size_t i = 1; i < count; ++i) {
        if (!isContinuation(s[i])) {
            return {replacement, 1, false};
        }
        c = c << 6U | (static_cast<unsigned char>(s[i]) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    if (c < smallest.at(count) || c > 0x10FFFF || surrogate) {
        return {replacement, 1, false};
    }
    return {c, count, true};
}

bool startsAt(std::string_view s, std::size_t at, std::string_view what) { return s.substr(at, what.size()) == what; }

template <class F>
std::string mapCharacters(std::string_view s, F map) {
    std::string out;
    out.reserve(s.size());
    while (!s.empty()) {
        const auto d = decodeOne(s);
        if (d.valid) {
            append(out, map(d.character));
        } else {
            out += s[0];
        }
        s.remove_prefix(d.bytes);
    }
    return out;
}

char32_t capital(char32_t c) {
    if (c >= 'a' && c <= 'z') {
        return c - 32;
    }
    if ((c >= 0xE0 && c <= 0xFE && c != 0xF7) || (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) || (c >= 0x430 && c <= 0x44F)) {
        return c - 32;
    }
    if (c >= 0x450 && c <= 0x45F) {
        return c - 80;
    }
    const bool evenIsCapital = (c >= 0x100 && c <= 0x137 && c != 0x131) || (c >= 0x14A && c <= 0x177);
    const bool oddIsCapital = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (evenIsCapital) {
        return c & ~1U;
    }
    if (oddIsCapital && c % 2 == 0) {
        return c - 1;
    }
    return c == 0xFF ? 0x178 : c;
}

char32_t small(char32_t c) {
    if (c >= 'A' && c <= 'Z') {
        return c + 32;
    }
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) {
        return c + 32;
    }
    if (c >= 0x400 && c <= 0x40F) {
        return c + 80;
    }
    const bool evenIsCapital = (c >= 0x100 && c <= 0x137 && c != 0x130) || (c >= 0x14A && c <= 0x177);
    const bool oddIsCapital = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (evenIsCapital) {
        return c | 1U;
    }
    if (oddIsCapital && c % 2 == 1) {
        return c + 1;
    }
    return c == 0x178 ? 0xFF : c;
}

std::size_t byteOffset(std::string_view s, std::size_t characters) {
    std::size_t at = 0;
    while (characters > 0 && at < s.size()) {
        ++at;
        while (at < s.size() && isContinuation(s[at])) {
            ++at;
        }
        --characters;
    }
    return at;
}

std::string fromSingleBytes(std::string_view bytes, bool windows) {
    std::string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        append(out, windows && b >= 0x80 && b < 0xA0 ? windows1252.at(b - 0x80U) : b);
    }
    return out;
}

std::string decodeOr(std::string_view bytes, bool windows) {
    if (!isValidUtf8(bytes)) {
        return fromSingleBytes(bytes, windows);
    }
    return std::string(startsAt(bytes, 0, "\xEF\xBB\xBF") ? bytes.substr(3) : bytes);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

void append(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0U | c >> 6U);
        out += static_cast<char>(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0U | c >> 12U);
        out += static_cast<char>(0x80U | (c >> 6U & 0x3FU));
        out += static_cast<char>(0x80U | (c & 0x3FU));
    } else {
        out += static_cast<char>(0xF0U | c >> 18U);
        out += static_cast<char>(0x80U | (c >> 12U & 0x3FU));
        out += static_cast<char>(0x80U | (c >> 6U & 0x3FU));
        out += static_cast<char>(0x80U | (c & 0x3FU));
    }
}

bool isValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto d = decodeOne(bytes);
        if (!d.valid) {
            return false;
        }
        bytes.remove_prefix(d.bytes);
    }
    return true;
}

std::string decode(std::string_view bytes) { return decodeOr(bytes, true); }

std::string decodeLatin1(std::string_view bytes) { return decodeOr(bytes, false); }

std::size_t length(std::string_view s) {
    return static_cast<std::size_t>(std::count_if(s.begin(), s.end(), [](char c) { return !isContinuation(c); }));
}

std::string left(std::string_view s, std::size_t count) { return std::string(s.substr(0, byteOffset(s, count))); }

std::string mid(std::string_view s, std::size_t start) {
    return std::string(s.substr(byteOffset(s, start > 0 ? start - 1 : 0)));
}

std::string mid(std::string_view s, std::size_t start, std::size_t count) { return left(mid(s, start), count); }

std::string right(std::string_view s, std::size_t count) {
    const auto all = length(s);
    return mid(s, all > count ? all - count + 1 : 1);
}

std::string trimRight(std::string_view s) {
    const auto last = s.find_last_not_of(' ');
    return std::string(last == std::string_view::npos ? std::string_view{} : s.substr(0, last + 1));
}

std::string trim(std::string_view s) {
    const auto first = s.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string{} : trimRight(s.substr(first));
}

std::string upper(std::string_view s) { return mapCharacters(s, capital); }

std::string lower(std::string_view s) { return mapCharacters(s, small); }

bool sameIgnoringCase(std::string_view a, std::string_view b) { return lower(a) == lower(b); }

double val(std::string_view s) {
    std::string number;
    for (const char c : s) {
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
            number += c;
        }
    }
    std::size_t at = number.starts_with('-') || number.starts_with('+') ? 1 : 0;
    const auto skipDigits = [&] {
        const auto from = at;
        while (at < number.size() && isDigit(number[at])) {
            ++at;
        }
        return at > from;
    };
    bool some = skipDigits();
    if (at < number.size() && number[at] == '.') {
        ++at;
        some = skipDigits() || some;
    }
    if (!some) {
        return 0;
    }
    const auto mantissaEnd = at;
    if (at < number.size() && (number[at] == 'e' || number[at] == 'E')) {
        ++at;
        if (at < number.size() && (number[at] == '-' || number[at] == '+')) {
            ++at;
        }
        if (!skipDigits()) {
            at = mantissaEnd;
        }
    }
    number.resize(at);
    const double value = std::strtod(number.c_str(), nullptr);
    return std::isfinite(value) ? value : 0;
}

std::int16_t valInteger(std::string_view s) {
    return static_cast<std::int16_t>(std::clamp(std::nearbyint(val(s)), -32768.0, 32767.0));
}

std::string replaceAll(std::string_view s, std::string_view from, std::string_view to) {
    std::string out;
    for (std::size_t at = 0; at < s.size();) {
        if (!from.empty() && startsAt(s, at, from)) {
            out += to;
            at += from.size();
        } else {
            out += s[at++];
        }
    }
    return out;
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
    const auto n = lower(name);
    const auto p = lower(pattern) == "*.*" ? std::string("*") : lower(pattern);
    // Greedy match with one remembered star to come back to.
    std::size_t ni = 0;
    std::size_t pi = 0;
    std::size_t starAt = std::string::npos;
    std::size_t starFrom = 0;
    while (ni < n.size()) {
        if (pi < p.size() && (p[pi] == '?' || (p[pi] == n[ni] && p[pi] != '*'))) {
            const bool wholeCharacter = p[pi] == '?';
            ++pi;
            ++ni;
            while (wholeCharacter && ni < n.size() && isContinuation(n[ni])) {
                ++ni;
            }
        } else if (pi < p.size() && p[pi] == '*') {
            starAt = pi++;
            starFrom = ni;
        } else if (starAt != std::string::npos) {
            pi = starAt + 1;
            ni = ++starFrom;
        } else {
            return false;
        }
    }
    return p.find_first_not_of('*', pi) == std::string::npos;
}

std::string splitDirectory(std::string_view path) {
    const auto slash = path.rfind('\\');
    return std::string(slash == std::string_view::npos || slash < 3 ? std::string_view{} : path.substr(0, slash));
}

std::string fileName(std::string_view path) {
    const auto slash = path.rfind('\\');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace tessarel::text
