#pragma once
#include <cstdint>
#include <string>
#include <string_view>

/// Text in memory is UTF-8; positions and lengths count characters, the first at 1.
namespace tessarel::text {

/// File bytes as text: UTF-8 when they are valid UTF-8 (a byte-order mark is dropped), Windows-1252 otherwise.
std::string decode(std::string_view bytes);

/// File bytes that no standard tells the encoding of: UTF-8 when valid, ISO-8859-1 otherwise.
std::string decodeLatin1(std::string_view bytes);

bool isValidUtf8(std::string_view bytes);

/// Adds a character to a text.
void append(std::string& out, char32_t c);

std::size_t length(std::string_view s);
std::string left(std::string_view s, std::size_t count);
std::string mid(std::string_view s, std::size_t start);
std::string mid(std::string_view s, std::size_t start, std::size_t count);
std::string right(std::string_view s, std::size_t count);

/// Without leading and trailing blanks (only blanks, as the files' own rule has it).
std::string trim(std::string_view s);
std::string trimRight(std::string_view s);

/// Capitals and small letters of the Latin, Greek and Cyrillic scripts; all else stays.
std::string upper(std::string_view s);
std::string lower(std::string_view s);
bool sameIgnoringCase(std::string_view a, std::string_view b);

/// The longest numeric prefix, blanks passed over; 0 if there is none.
double val(std::string_view s);

/// `val` rounded half to even and held inside 16 bits.
std::int16_t valInteger(std::string_view s);

std::string replaceAll(std::string_view s, std::string_view from, std::string_view to);

/// Whether `name` matches a pattern of `*` and `?`, without regard to case.
bool matchesPattern(std::string_view name, std::string_view pattern);

/// The directory part of a path: the text before the last back-slash. A back-slash at position 3 or earlier gives none.
std::string splitDirectory(std::string_view path);

/// The part behind the last back-slash.
std::string fileName(std::string_view path);

}  // namespace tessarel::text
