#include "ui/widgets/track_cell.h"

namespace tessarel::ui {
namespace {

constexpr double lowCell = 20;

}  // namespace

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
    const auto& glass = theme().glass();
    QColor fill = glass.cell;
    QColor edge = glass.cellEdge;
    QColor text = glass.dim;
    if (dead_) {
        fill = Qt::transparent;
        edge = glass.deadEdge;
        text = glass.dead;
    } else if (current_) {
        fill = accent.lit ? accent.color : glass.lit;
        text = contrast(fill, glass.ink) >= readable ? glass.ink : QColor(Qt::white);
    } else if (accent.lit) {
        fill = glass.cellLit;
        text = accent.color;
    }
    const bool down = isDown() && !dead_;
    if (down) {
        fill = current_ ? fill.darker(118) : glass.bottom;
        edge = glass.lit;
    } else if (isHovered() && !dead_) {
        fill = current_ ? fill.lighter(112) : mixed(fill, glass.lit, 0.1);
        edge = glass.hoverEdge;
    }
    painter.setBrush(fill);
    painter.setPen(QPen(edge, 1));
    painter.drawRoundedRect(design(), 4, 4);
    const QString shown = caption().isEmpty() ? QString::number(number_) : caption();
    const double size = design().height() < lowCell ? 10 : 12;
    const double drop = down ? 1 : 0;
    theme().paintText(painter, design().center().x(), design().center().y() + size * 0.367 + drop, shown,
                      theme().font(size, QFont::DemiBold), text, Qt::AlignHCenter);
    if (showsFocus()) {
        theme().paintFocus(painter, design().adjusted(1, 1, -1, -1), 3);
    }
}

}  // namespace tessarel::ui
