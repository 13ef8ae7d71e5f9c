#pragma once

namespace tessarel::ui {

/// Tells Qt how pads appear to assistive technology: as buttons with a press action when they take presses, as text when not.
void installPadAccessibility();

}  // namespace tessarel::ui
