#include "ui/widgets/drawer.h"

#include <QPainterPath>
#include <QRadialGradient>

namespace tessarel::ui {

Drawer::Drawer(const Theme& theme, QWidget* parent) : Pad(theme, parent) {
    setAccessibleDescription(QStringLiteral("press to close"));
    hide();
}

void Drawer::setOpen(double share) {
    open_ = share;
    setVisible(share > 0);
    update();
}

void Drawer::draw(QPainter& painter) {
    painter.save();
    QPainterPath slot;
    slot.addRoundedRect(design(), 8, 8);
    painter.setClipPath(slot);
    const QRectF tray = design().translated(0, design().height() * (1 - open_)).adjusted(12, 6, -12, 8);
    theme().paintKey(painter, tray, isHovered() ? KeyFace::hovered : KeyFace::up);
    const QPointF hollow(tray.left() + 76, tray.top() + 46);
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.setBrush(QColor(0x24, 0x27, 0x2b));
    painter.drawEllipse(hollow, 39, 39);
    painter.setBrush(QColor(0x3a, 0x3f, 0x46));
    painter.drawEllipse(hollow, 9, 9);
    const double left = tray.left() + 136;
    theme().paintText(painter, left, tray.top() + 42, QStringLiteral("The drawer is open"), theme().font(15, QFont::DemiBold),
                      QColor(palette::keyText));
    theme().paintText(painter, left, tray.top() + 62, QStringLiteral("Press here, or Eject, to close it"), theme().font(12),
                      QColor(palette::keyCaption));
    painter.restore();
    if (showsFocus()) {
        theme().paintFocus(painter, design().adjusted(4, 3, -4, -3), 6);
    }
}

void paintDisc(QPainter& painter, const QPointF& middle, double radius) {
    QRadialGradient sheen(middle, radius);
    sheen.setColorAt(0, QColor(0x20, 0x24, 0x2a));
    sheen.setColorAt(0.16, QColor(0x20, 0x24, 0x2a));
    sheen.setColorAt(0.17, QColor(0xdf, 0xe6, 0xee));
    sheen.setColorAt(0.5, QColor(0xae, 0xb9, 0xc8));
    sheen.setColorAt(0.75, QColor(0xd8, 0xcf, 0xe6));
    sheen.setColorAt(1, QColor(0x8c, 0x96, 0xa6));
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.setBrush(sheen);
    painter.drawEllipse(middle, radius, radius);
    painter.setPen(QPen(QColor(255, 255, 255, 70), 0.8));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(middle, radius * 0.3, radius * 0.3);
    painter.setPen(QPen(QColor(0x4b, 0x51, 0x5a), 1));
    painter.setBrush(QColor(0x14, 0x17, 0x1a));
    painter.drawEllipse(middle, radius * 0.1, radius * 0.1);
}

}  // namespace tessarel::ui
