#include "ui/focus.h"

#include <QWidget>
#include <cmath>
#include <limits>
#include <optional>

namespace tessarel::ui {
namespace {

QRect inWindow(const QWidget& widget) { return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()}; }

/// How far `to` lies off in a direction: a step aside counts double. Nothing when it lies elsewhere.
std::optional<double> distance(const QRect& from, const QRect& to, Qt::Key arrow) {
    const QPoint step = to.center() - from.center();
    const bool sideways = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
    const int sign = arrow == Qt::Key_Left || arrow == Qt::Key_Up ? -1 : 1;
    const int ahead = sign * (sideways ? step.x() : step.y());
    const int aside = std::abs(sideways ? step.y() : step.x());
    const bool overlaps =
        sideways ? from.top() < to.bottom() && to.top() < from.bottom() : from.left() < to.right() && to.left() < from.right();
    if (ahead <= 0 || (!overlaps && aside > 2 * ahead)) {
        return std::nullopt;
    }
    return ahead + 2.0 * (overlaps && sideways ? 0 : aside);
}

}  // namespace

void focusNeighbour(QWidget& from, Qt::Key arrow) {
    const QRect here = inWindow(from);
    QWidget* nearest = nullptr;
    double least = std::numeric_limits<double>::max();
    for (auto* candidate : from.window()->findChildren<QWidget*>()) {
        if (candidate == &from || !candidate->isVisible() || !candidate->isEnabled() ||
            (candidate->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        const auto far = distance(here, inWindow(*candidate), arrow);
        if (far && *far < least) {
            least = *far;
            nearest = candidate;
        }
    }
    if (nearest != nullptr) {
        nearest->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace tessarel::ui
