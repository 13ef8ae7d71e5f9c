#include "ui/keypad_entry.h"

#include <QLineEdit>
#include <QPalette>

#include "ui/ground.h"
#include "ui/theme.h"

namespace tessarel::ui {

QLineEdit* makeKeypadEntry(QWidget& window, const Theme& theme, const QRectF& place) {
    auto* entry = new QLineEdit(&window);
    entry->hide();
    const auto* ground = groundOf(window);
    const QPointF origin = ground != nullptr ? ground->origin() : QPointF();
    entry->setGeometry(QRectF((place.topLeft() + origin) * theme.scale(), place.size() * theme.scale()).toAlignedRect());
    QFont font = theme.font(12);
    font.setPointSizeF(font.pointSizeF() * theme.scale());
    entry->setFont(font);
    entry->setMaxLength(3);
    entry->setFrame(false);
    entry->setAlignment(Qt::AlignCenter);
    entry->setPlaceholderText(QStringLiteral("Track no."));
    QPalette colors;
    colors.setColor(QPalette::Base, theme.glass().cellLit);
    colors.setColor(QPalette::Text, theme.glass().lit);
    colors.setColor(QPalette::PlaceholderText, theme.glass().dim);
    colors.setColor(QPalette::Highlight, theme.glass().lit);
    colors.setColor(QPalette::HighlightedText, theme.glass().ink);
    entry->setPalette(colors);
    return entry;
}

}  // namespace tessarel::ui
