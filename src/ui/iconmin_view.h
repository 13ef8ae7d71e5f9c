#pragma once
#include "ui/form_window.h"

namespace tessarel::ui {

/// A hidden player's small stand-in, which the desktop keeps among its minimised windows. A desktop without those shows it as
/// a tile with the caption.
class IconMinView : public FormWindow {
public:
    IconMinView(forms::Form& form, const Theme& theme);

    static constexpr double designWidth = 300;
    static constexpr double designHeight = 64;

protected:
    void drawBackground(QPainter& painter) override;
};

}  // namespace tessarel::ui
