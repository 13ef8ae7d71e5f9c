#include "ui/widgets/level_slider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/focus.h"

namespace tessarel::ui {
namespace {

constexpr double thumbHeight = 16;
constexpr double thumbWidth = 30;
constexpr int wheelStep = 120;

}  // namespace

LevelSlider::LevelSlider(const Theme& theme, QWidget* parent) : Drawn(theme, parent) {
    setOrientation(Qt::Vertical);
    setInvertedAppearance(true);
    setInvertedControls(true);
    setFocusPolicy(Qt::StrongFocus);
    setSingleStep(2);
    setPageStep(10);
    setRange(0, 100);
    speak();
}

void LevelSlider::showValue(int value) {
    byProgram_ = true;
    setValue(value);
    byProgram_ = false;
}

void LevelSlider::showRange(int least, int greatest) {
    byProgram_ = true;
    setRange(least, std::max(least, greatest));
    byProgram_ = false;
}

int LevelSlider::loudness() const {
    const int span = std::max(1, maximum() - minimum());
    return (maximum() - value()) * loudest / span;
}

void LevelSlider::setLoudness(int loudness) {
    const double quiet = 1 - static_cast<double>(std::clamp(loudness, 0, loudest)) / loudest;
    gesture(minimum() + static_cast<int>(std::lround(quiet * (maximum() - minimum()))));
}

void LevelSlider::speak() { setAccessibleDescription(QStringLiteral("%1 %").arg(loudness())); }

void LevelSlider::sliderChange(SliderChange change) {
    Drawn::sliderChange(change);
    if (change == SliderValueChange || change == SliderRangeChange) {
        speak();
    }
    if (change == SliderValueChange && !byProgram_ && onMoved) {
        onMoved(value());
        // What assistive technology sets has neither been pressed nor will it be let go.
        if (!held_ && onHeld) {
            onHeld(false);
        }
    }
}

void LevelSlider::hold(bool down) {
    held_ = down;
    if (onHeld) {
        onHeld(down);
    }
}

double LevelSlider::thumbAt() const {
    const double share = static_cast<double>(value() - minimum()) / std::max(1, maximum() - minimum());
    return design().top() + share * design().height();
}

int LevelSlider::valueAt(double y) const {
    const double share = (y - design().top()) / design().height();
    return minimum() + static_cast<int>(std::lround(share * (maximum() - minimum())));
}

void LevelSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const double y = designPoint(event->position()).y();
    const bool onThumb = std::abs(y - thumbAt()) <= thumbHeight / 2;
    grip_ = onThumb ? y - thumbAt() : 0;
    setSliderDown(true);
    hold(true);
    setValue(valueAt(y - grip_));
}

void LevelSlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) {
        setValue(valueAt(designPoint(event->position()).y() - grip_));
    }
}

void LevelSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isSliderDown()) {
        setSliderDown(false);
        update();
        hold(false);
    }
}

// A move by key or wheel is a whole gesture: the release is what some levels are set on.
void LevelSlider::gesture(int target) {
    const int before = value();
    hold(true);
    setValue(target);
    hold(false);
    if (value() != before) {
        update();
    }
}

void LevelSlider::keyPressEvent(QKeyEvent* event) {
    const auto* ground = groundOf(*this);
    const bool forWindow = !showsFocus() && ground != nullptr && ground->takesKey(*event);
    if (forWindow || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        event->ignore();
        return;
    }
    switch (event->key()) {
        case Qt::Key_Up:
            gesture(value() - singleStep());
            break;
        case Qt::Key_Down:
            gesture(value() + singleStep());
            break;
        case Qt::Key_PageUp:
            gesture(value() - pageStep());
            break;
        case Qt::Key_PageDown:
            gesture(value() + pageStep());
            break;
        case Qt::Key_Home:
            gesture(minimum());
            break;
        case Qt::Key_End:
            gesture(maximum());
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            focusNeighbour(*this, static_cast<Qt::Key>(event->key()));
            break;
        default:
            event->ignore();
    }
}

void LevelSlider::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y();
    gesture(value() - static_cast<int>(std::lround(static_cast<double>(steps) * singleStep() / wheelStep)));
    event->accept();
}

void LevelSlider::draw(QPainter& painter) {
    const double middle = design().center().x();
    const double y = thumbAt();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(palette::slot));
    painter.drawRoundedRect(QRectF(middle - 3, design().top(), 6, design().height()), 3, 3);
    painter.setBrush(theme().glass().keyLit);
    painter.drawRoundedRect(QRectF(middle - 3, y, 6, design().bottom() - y), 3, 3);
    const QRectF thumb(middle - thumbWidth / 2, y - thumbHeight / 2, thumbWidth, thumbHeight);
    painter.setBrush(isSliderDown() ? QColor(0xee, 0xf1, 0xf4)
                     : underMouse() ? QColor(0xdf, 0xe3, 0xe8)
                                    : QColor(0xcf, 0xd4, 0xda));
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.drawRoundedRect(thumb, 4, 4);
    painter.fillRect(QRectF(thumb.left(), y - 1, thumbWidth, 2), QColor(0x6b, 0x71, 0x79));
    if (showsFocus()) {
        theme().paintFocus(painter, thumb.adjusted(-2, -2, 2, 2), 6);
    }
}

}  // namespace tessarel::ui
