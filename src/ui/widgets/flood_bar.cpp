#include "ui/widgets/flood_bar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>

#include "ui/focus.h"

namespace tessarel::ui {
namespace {

constexpr int keyStep = 5;

void drawGlowingBar(QPainter& painter, const QRectF& rect) {
    painter.setPen(Qt::NoPen);
    for (const auto& [reach, alpha] : {std::pair(5.0, 10), std::pair(3.5, 16), std::pair(2.0, 28), std::pair(1.0, 44)}) {
        painter.setBrush(QColor(0x5d, 0xf2, 0x9b, alpha));
        const double radius = rect.height() / 2 + reach;
        painter.drawRoundedRect(rect.adjusted(-reach, -reach, reach, reach), radius, radius);
    }
    painter.setBrush(QColor(palette::green));
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
}

}  // namespace

FloodBar::FloodBar(const Theme& theme, QWidget* parent) : Drawn(theme, parent) {
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::StrongFocus);
    setSingleStep(keyStep);
    setPageStep(2 * keyStep);
    setRange(0, 100);
    setAccessibleDescription(QStringLiteral("0 %"));
}

void FloodBar::showPercent(int percent) {
    programPercent_ = percent;
    byProgram_ = true;
    setValue(percent);
    byProgram_ = false;
}

// The bar's value is the program's alone: what a person or assistive technology asks for is told, and comes back as percent.
void FloodBar::sliderChange(SliderChange change) {
    Drawn::sliderChange(change);
    if (change != SliderValueChange) {
        return;
    }
    setAccessibleDescription(QStringLiteral("%1 %").arg(value()));
    if (!byProgram_ && onPressed) {
        onPressed(forms::MouseButton::left, value() / 100.0);
        showPercent(programPercent_);
    }
}

void FloodBar::mousePressEvent(QMouseEvent* event) {
    const bool known = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    if (!known) {
        event->ignore();
        return;
    }
    const double x = mapTo(window(), event->position()).x() / theme().scale();
    const double share = std::clamp((x - design().left()) / design().width(), 0.0, 1.0);
    if (onPressed) {
        onPressed(event->button() == Qt::LeftButton ? forms::MouseButton::left : forms::MouseButton::right, share);
    }
}

void FloodBar::keyPressEvent(QKeyEvent* event) {
    revealFocus();
    const bool left = event->key() == Qt::Key_Left;
    if (left || event->key() == Qt::Key_Right) {
        const int target = std::clamp(value() + (left ? -keyStep : keyStep), 0, 100);
        if (onPressed) {
            onPressed(forms::MouseButton::left, target / 100.0);
        }
    } else if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        focusNeighbour(*this, static_cast<Qt::Key>(event->key()));
    } else {
        event->ignore();
    }
}

void FloodBar::draw(QPainter& painter) {
    const auto& rect = design();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x10, 0x24, 0x1b));
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    const double x = rect.left() + rect.width() * value() / 100.0;
    if (value() > 0) {
        drawGlowingBar(painter, QRectF(rect.topLeft(), QPointF(std::max(x, rect.left() + rect.height()), rect.bottom())));
        painter.setBrush(QColor(0xea, 0xff, 0xf3));
        painter.drawEllipse(QPointF(x, rect.center().y()), 7, 7);
    }
    const auto [a, b] = marks ? marks() : std::pair(0.0, 0.0);
    for (const double mark : {a, b}) {
        if (mark > 0) {
            const double at = rect.left() + rect.width() * std::min(mark, 1.0);
            painter.fillRect(QRectF(at - 1, rect.top() - 4, 2, rect.height() + 8), QColor(palette::yellow));
        }
    }
    if (showsFocus()) {
        theme().paintFocus(painter, rect.adjusted(-5, -6, 5, 6), 8);
    }
}

}  // namespace tessarel::ui
