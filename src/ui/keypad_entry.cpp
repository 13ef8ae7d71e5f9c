#include "ui/keypad_entry.h"

#include <QLineEdit>
#include <QPalette>

#include "ui/theme.h"

namespace tessarel::ui {

QLineEdit* makeKeypadEntry(QWidget& window, const Theme& theme, const QRectF& place) {
    auto* entry = new QLineEdit(&window);
    entry->hide();
    entry->setGeometry(QRectF(place.topLeft() * theme.scale(), place.size() * theme.scale()).toAlignedRect());
    QFont font = theme.font(12);
    font.setPointSizeF(font.pointSizeF() * theme.scale());
    entry->setFont(font);
    entry->setMaxLength(3);
    entry->setFrame(false);
    entry->setAlignment(Qt::AlignCenter);
    entry->setPlaceholderText(QStringLiteral("Track no."));
    QPalette colors;
    colors.setColor(QPalette::Base, QColor(0x12, 0x30, 0x1f));
    colors.setColor(QPalette::Text, QColor(palette::green));
    colors.setColor(QPalette::PlaceholderText, QColor(palette::softGreen));
    colors.setColor(QPalette::Highlight, QColor(palette::green));
    colors.setColor(QPalette::HighlightedText, QColor(palette::ink));
    entry->setPalette(colors);
    return entry;
}

}  // namespace tessarel::ui
