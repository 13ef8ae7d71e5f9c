#pragma once
#include "ui/form_window.h"

namespace tessarel::ui {

/// A plain face behind another window, in the size that its form takes.
class CdFormBgView : public FormWindow {
public:
    CdFormBgView(forms::Form& form, const Theme& theme);

protected:
    void drawBackground(QPainter& /*painter*/) override {}
};

}  // namespace tessarel::ui
