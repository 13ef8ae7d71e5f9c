#pragma once
#include "forms/control.h"
#include "ui/form_window.h"

namespace tessarel::ui {

/// What the view of the waiting window shows.
struct Cd1stParts {
    forms::Form& form;
    forms::Label& firstLine;
    forms::Label& secondLine;
    forms::Button& insertImageKey;
};

/// The waiting window on the screen.
class Cd1stView : public FormWindow {
public:
    Cd1stView(const Cd1stParts& parts, const Theme& theme);

    static constexpr double designWidth = 520;
    static constexpr double designHeight = 240;

protected:
    void drawBackground(QPainter& painter) override;
};

}  // namespace tessarel::ui
