#include "ui/widgets/glass_label.h"

#include <QFontMetricsF>

namespace tessarel::ui {
namespace {

constexpr double pixelsPerPoint = 4.0 / 3.0;

}  // namespace

GlassLabel::GlassLabel(const Theme& theme, QWidget* parent, Style style)
    : LabelPad(theme, parent), style_(style), laidOutSize_(style.size) {}

double GlassLabel::askedSize() const { return fontSize() > 0 ? fontSize() * pixelsPerPoint : style_.size; }

void GlassLabel::setShrink(double factor) {
    if (shrink_ != factor) {
        shrink_ = factor;
        tip();
        update();
    }
}

QFont GlassLabel::textFont() const { return theme().font(textSize(), style_.weight, style_.spacing); }

QColor GlassLabel::textColor() const {
    return style_.ownColor || fore() == colors::white ? theme().ink(style_.ink) : theme().accent(fore()).color;
}

QString GlassLabel::shownText() const {
    const QString line = caption().simplified();
    const QString text = style_.upperCase ? line.toUpper() : line;
    return QFontMetricsF(textFont()).elidedText(text, Qt::ElideRight, design().width());
}

bool GlassLabel::whole() const {
    const QString shown = shownText();
    const QString line = caption().simplified();
    return shown == line || shown == line.toUpper();
}

void GlassLabel::setPlainTip(const QString& text) {
    plainTip_ = text;
    tip();
}

void GlassLabel::tip() {
    const QString text = whole() ? plainTip_ : caption();
    if (toolTip() != text) {
        setToolTip(text);
    }
}

void GlassLabel::changed() {
    say(caption());
    if (laidOutSize_ != askedSize()) {
        laidOutSize_ = askedSize();
        if (onResize) {
            onResize();
        }
    }
    tip();
    update();
}

void GlassLabel::resizeEvent(QResizeEvent* event) {
    LabelPad::resizeEvent(event);
    tip();
}

void GlassLabel::draw(QPainter& painter) {
    const auto& rect = design();
    const double x = style_.anchor == Qt::AlignLeft    ? rect.left()
                     : style_.anchor == Qt::AlignRight ? rect.right()
                                                       : rect.center().x();
    const QColor color = isHovered() ? textColor().lighter(112) : textColor();
    theme().paintText(painter, x, rect.center().y() + textSize() * 0.36, shownText(), textFont(), color, style_.anchor);
    if (showsFocus()) {
        theme().paintFocus(painter, rect.adjusted(-3, 1, 3, -1), 4);
    }
}

}  // namespace tessarel::ui
