#pragma once
#include <functional>

#include "host/desktop/dispatch.h"

namespace tessarel::ui {

/// The one door from Qt's events into the program.
inline void enter(const std::function<void()>& code) { host::guard(code); }

}  // namespace tessarel::ui
