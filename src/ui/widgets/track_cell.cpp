#include "ui/widgets/track_cell.h"

namespace tessarel::ui {

TrackCell::TrackCell(const Theme& theme, QWidget* parent, int number) : LabelPad(theme, parent), number_(number) { changed(); }

void TrackCell::setCurrent(bool current) {
    if (current != current_) {
        current_ = current;
        changed();
    }
}

void TrackCell::setDead(bool dead) {
    if (dead != dead_) {
        dead_ = dead;
        changed();
    }
}

void TrackCell::changed() {
    const bool lit = theme().accent(fore()).lit;
    say(dead_      ? QStringLiteral("no such track")
        : current_ ? QStringLiteral("current track")
        : lit      ? QStringLiteral("lit")
                   : QStringLiteral("dim"));
    update();
}

void TrackCell::draw(QPainter& painter) {
    const auto accent = theme().accent(fore());
    QColor fill(0x0e, 0x1d, 0x16);
    QColor edge(0x1d, 0x3a, 0x2c);
    QColor text(palette::glassText);
    if (dead_) {
        fill = Qt::transparent;
        edge = QColor(0x18, 0x21, 0x1d);
        text = QColor(palette::deadText);
    } else if (current_) {
        fill = accent.lit ? accent.color : QColor(palette::green);
        text = contrast(fill, QColor(palette::ink)) >= 4.5 ? QColor(palette::ink) : QColor(Qt::white);
    } else if (accent.lit) {
        fill = QColor(0x12, 0x30, 0x1f);
        text = accent.color;
    }
    if (isHovered() && !dead_) {
        fill = fill.lighter(current_ ? 112 : 140);
        edge = QColor(0x3d, 0x6b, 0x54);
    }
    painter.setBrush(fill);
    painter.setPen(QPen(edge, 1));
    painter.drawRoundedRect(design(), 4, 4);
    const QString shown = caption().isEmpty() ? QString::number(number_) : caption();
    theme().paintText(painter, design().center().x(), design().center().y() + 4.4, shown, theme().font(12, QFont::DemiBold),
                      text, Qt::AlignHCenter);
    if (showsFocus()) {
        theme().paintFocus(painter, design().adjusted(1, 1, -1, -1), 3);
    }
}

}  // namespace tessarel::ui
