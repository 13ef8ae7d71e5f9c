#pragma once
#include "forms/control.h"
#include "ui/form_window.h"

namespace tessarel::ui {

/// The list of the program on the screen.
class AplaylstView : public FormWindow {
public:
    AplaylstView(forms::Form& form, forms::ListBox& list, const Theme& theme);

    static constexpr double designWidth = 420;
    static constexpr double designHeight = 452;

protected:
    void drawBackground(QPainter& painter) override;
};

}  // namespace tessarel::ui
