#include "ui/widgets/lamp.h"

namespace tessarel::ui {

Lamp::Lamp(const Theme& theme, QWidget* parent, const QString& text) : LabelPad(theme, parent), text_(text) { changed(); }

bool Lamp::lit() const { return theme().accent(fore()).lit; }

QString Lamp::shownText() const { return text_.isEmpty() ? caption().toUpper() : text_; }

void Lamp::changed() {
    const QString state = lit() ? QStringLiteral("lit") : QStringLiteral("dim");
    say(caption().isEmpty() ? state : caption() + QStringLiteral(", ") + state);
    update();
}

KeyFace Lamp::lampFace() const { return isDown() ? KeyFace::down : isHovered() ? KeyFace::hovered : KeyFace::up; }

void Lamp::draw(QPainter& painter) {
    theme().paintLamp(painter, design(), shownText(), theme().accent(fore()), lampFace());
    if (showsFocus()) {
        theme().paintFocus(painter, design().adjusted(-2, -2, 2, 2), 6);
    }
}

}  // namespace tessarel::ui
