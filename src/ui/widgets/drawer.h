#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// The disc drawer, which slides up over the lower part of the glass. A press on it closes it.
class Drawer : public Pad {
public:
    Drawer(const Theme& theme, QWidget* parent);

    /// 0 shut and out of sight, 1 open.
    void setOpen(double share);

protected:
    void draw(QPainter& painter) override;

private:
    double open_ = 0;
};

/// A disc seen from above, `radius` wide from its middle.
void paintDisc(QPainter& painter, const QPointF& middle, double radius);

}  // namespace tessarel::ui
