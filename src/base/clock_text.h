#pragma once
#include <string>
#include <string_view>

namespace tessarel {

/// Two-digit decimal text of a number from 0 on ("07", "62", "100").
std::string twoDigits(int n);

/// "m:ss" normalised to "mm:ss". A text that is no such time comes back as it is, an empty one empty.
std::string clockText(std::string_view text);

/// Seconds of a "m:ss" or "mm:ss" text; 0 for a text that is no such time.
int clockSeconds(std::string_view text);

}  // namespace tessarel
