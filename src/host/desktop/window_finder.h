#pragma once
#include <string_view>

namespace tessarel::host {

/// Whether a window of the X session has this class (either part of its class property) or, when the class is empty, exactly
/// this caption. False for two empty texts, without an X server, and when it does not answer within half a second.
bool findWindow(std::string_view windowClass, std::string_view caption);

}  // namespace tessarel::host
