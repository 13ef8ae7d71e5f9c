#pragma once
#include <optional>
#include <string_view>

#include "base/packed_time.h"

namespace tessarel::host {

/// Frames of a "mm:ss:ff" text; nothing when it is none, or when its seconds are above 59 or its frames above 74.
std::optional<Frames> parseMsf(std::string_view text);

/// A number from 0 on, in digits alone; nothing when it is none, or above `most`.
std::optional<long long> parseNumber(std::string_view digits, long long most);

}  // namespace tessarel::host
