#pragma once
#include <QAbstractSlider>
#include <functional>
#include <utility>

#include "forms/control.h"
#include "ui/widgets/drawn.h"

namespace tessarel::ui {

/// A bar filled from the left. A press anywhere on it, or an arrow key, is told as a point of the bar.
class FloodBar : public Drawn<QAbstractSlider> {
public:
    FloodBar(const Theme& theme, QWidget* parent);

    void showPercent(int percent);
    int percent() const { return value(); }

    /// Marks on the bar, each 0 to 1 of its width; 0 is none. Asked when the bar is painted.
    std::function<std::pair<double, double>()> marks;
    /// A press at 0 to 1 of the width.
    std::function<void(forms::MouseButton, double share)> onPressed;

protected:
    void draw(QPainter& painter) override;
    void sliderChange(SliderChange change) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    bool byProgram_ = false;
    int programPercent_ = 0;
};

}  // namespace tessarel::ui
