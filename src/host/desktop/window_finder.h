#pragma once
#include <memory>
#include <string_view>

namespace tessarel::host {

/// A connection to the X server of the session, held for as long as the pointer; null when there is none, or it does not
/// answer. A Qt program that starts without one does not come back, and a server may begin anew when its last client leaves:
/// whoever asks before Qt connects holds on until it has.
std::shared_ptr<void> holdDisplay();

/// Whether a window of the X session has this class (either part of its class property) or, when the class is empty, exactly
/// this caption. False for two empty texts, without an X server, and when it does not answer within half a second.
bool findWindow(std::string_view windowClass, std::string_view caption);

}  // namespace tessarel::host
