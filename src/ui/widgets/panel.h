#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A ground for other widgets that come and go with it. It has no drawing of its own.
class Panel : public Pad {
public:
    using Pad::Pad;

protected:
    void draw(QPainter& painter) override {
        if (showsFocus()) {
            theme().paintFocus(painter, design(), 6);
        }
    }
};

}  // namespace tessarel::ui
