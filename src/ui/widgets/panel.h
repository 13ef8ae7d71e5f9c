#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A ground for other widgets that come and go with it. It has no drawing of its own, and no focus.
class Panel : public Pad {
public:
    using Pad::Pad;

    bool isGround() const override { return true; }

protected:
    void draw(QPainter& /*painter*/) override {}
};

}  // namespace tessarel::ui
