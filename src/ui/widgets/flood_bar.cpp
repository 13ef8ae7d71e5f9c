#include "ui/widgets/flood_bar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>

#include "ui/focus.h"

namespace tessarel::ui {
namespace {

constexpr int keyStep = 5;

void drawGlowingBar(QPainter& painter, const QRectF& rect, QColor color) {
    painter.setPen(Qt::NoPen);
    for (const auto& [reach, alpha] : {std::pair(5.0, 10), std::pair(3.5, 16), std::pair(2.0, 28), std::pair(1.0, 44)}) {
        color.setAlpha(alpha);
        painter.setBrush(color);
        const double radius = rect.height() / 2 + reach;
        painter.drawRoundedRect(rect.adjusted(-reach, -reach, reach, reach), radius, radius);
    }
    color.setAlpha(255);
    painter.setBrush(color);
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
    const double x = designPoint(event->position()).x();
    const double share = std::clamp((x - design().left()) / design().width(), 0.0, 1.0);
    if (onPressed) {
        onPressed(event->button() == Qt::LeftButton ? forms::MouseButton::left : forms::MouseButton::right, share);
    }
}

void FloodBar::keyPressEvent(QKeyEvent* event) {
    const auto* ground = groundOf(*this);
    const bool forWindow = !showsFocus() && ground != nullptr && ground->takesKey(*event);
    if (forWindow || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        event->ignore();
        return;
    }
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
    const auto& glass = theme().glass();
    painter.setPen(Qt::NoPen);
    painter.setBrush(glass.trough);
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    const double x = rect.left() + rect.width() * value() / 100.0;
    if (value() > 0) {
        drawGlowingBar(painter, QRectF(rect.topLeft(), QPointF(std::max(x, rect.left() + rect.height()), rect.bottom())),
                       glass.lit);
        painter.setBrush(glass.knob);
        const double radius = underMouse() && isEnabled() ? 8 : 7;
        painter.drawEllipse(QPointF(x, rect.center().y()), radius, radius);
    }
    const auto [a, b] = marks ? marks() : std::pair(0.0, 0.0);
    for (const double mark : {a, b}) {
        if (mark > 0) {
            const double at = rect.left() + rect.width() * std::min(mark, 1.0);
            painter.fillRect(QRectF(at - 1, rect.top() - 4, 2, rect.height() + 8), glass.mark);
        }
    }
    if (showsFocus()) {
        theme().paintFocus(painter, rect.adjusted(-5, -6, 5, 6), 8);
    }
}

}  // namespace tessarel::ui
