#pragma once
#include <QAbstractSlider>
#include <functional>

#include "ui/widgets/drawn.h"

namespace tessarel::ui {

/// A vertical fader; the smaller value is at the top. Arrows, page keys, the wheel and the mouse move it.
class LevelSlider : public Drawn<QAbstractSlider> {
public:
    LevelSlider(const Theme& theme, QWidget* parent);

    /// The program's value, which is not told back.
    void showValue(int value);
    void showRange(int least, int greatest);

    /// What a screen reader tells and sets: 0 to `loudest`, rising with the sound.
    int loudness() const;
    void setLoudness(int loudness);
    static constexpr int loudest = 100;

    /// A person has moved it; pressed and let go with the mouse.
    std::function<void(int value)> onMoved;
    std::function<void(bool down)> onHeld;

protected:
    void draw(QPainter& painter) override;
    void sliderChange(SliderChange change) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    double thumbAt() const;
    int valueAt(double y) const;
    void gesture(int value);
    void hold(bool down);
    void speak();

    bool byProgram_ = false;
    bool held_ = false;  ///< by the mouse, or while a key or the wheel moves it
    double grip_ = 0;    ///< from the thumb's middle to the pointer, in design units
};

}  // namespace tessarel::ui
