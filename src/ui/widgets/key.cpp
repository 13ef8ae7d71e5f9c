#include "ui/widgets/key.h"

#include <QFontMetricsF>
#include <QLinearGradient>

namespace tessarel::ui {
namespace {

constexpr double iconRise = 5;      ///< an icon lies above the middle of its key
constexpr double captionDrop = 20;  ///< and its caption's baseline under it
constexpr double captionSpacing = 0.3;

}  // namespace

Key::Key(const Theme& theme, QWidget* parent, Shape shape) : Pad(theme, parent), shape_(std::move(shape)) {}

void Key::setCaption(const QString& caption) {
    shape_.caption = caption;
    update();
}

void Key::setLit(bool lit) {
    if (lit != lit_) {
        lit_ = lit;
        tell();
    }
}

void Key::setDim(bool dim) {
    if (dim != dim_) {
        dim_ = dim;
        tell();
    }
}

void Key::setAccent(Ink accent) {
    accent_ = accent;
    update();
}

void Key::tell() {
    say(lit_ ? QStringLiteral("lit") : dim_ ? QStringLiteral("dim") : QString());
    update();
}

bool Key::captionFits() const {
    const QFontMetricsF metrics(theme().font(shape_.textSize, QFont::Normal, captionSpacing));
    return metrics.horizontalAdvance(shape_.caption) <= design().width() - 8;
}

void Key::draw(QPainter& painter) {
    if (shape_.round) {
        drawRound(painter);
        return;
    }
    const auto& rect = design();
    const bool dead = dim_ || !isEnabled();
    const bool down = isDown() && !dead;
    const bool hovered = isHovered() && !dead && !down;
    const KeyFace lit = hovered ? KeyFace::downHovered : KeyFace::down;
    theme().paintKey(painter, rect, down || lit_ ? lit : hovered ? KeyFace::hovered : KeyFace::up);
    const bool iconic = shape_.icon != Icon::none || !shape_.sign.isEmpty();
    const QColor sign = lit_ ? theme().ink(accent_) : QColor(dead ? palette::keyDim : palette::keyText);
    const QColor text = iconic ? QColor(dead ? palette::keyDim : palette::keyCaption) : sign;
    const double drop = down ? 1 : 0;
    const QPointF middle = rect.center() + QPointF(0, drop);
    const auto font = theme().font(shape_.textSize, QFont::Normal, captionSpacing);
    if (iconic) {
        drawIcon(painter, middle - QPointF(0, shape_.caption.isEmpty() ? 0 : iconRise), sign);
        theme().paintText(painter, middle.x(), middle.y() + captionDrop, shape_.caption, font, text, Qt::AlignHCenter);
    } else {
        theme().paintText(painter, middle.x(), middle.y() + shape_.textSize * 0.37, shape_.caption, font, text,
                          Qt::AlignHCenter);
    }
    if (showsFocus()) {
        theme().paintFocus(painter, rect.adjusted(-2, -2, 2, 2), 8);
    }
}

void Key::drawIcon(QPainter& painter, const QPointF& middle, const QColor& color) const {
    if (shape_.icon == Icon::none) {
        theme().paintText(painter, middle.x(), middle.y() + 5, shape_.sign, theme().font(13, QFont::DemiBold), color,
                          Qt::AlignHCenter);
        return;
    }
    const auto icon = iconShape(shape_.icon);
    painter.save();
    painter.translate(middle);
    if (lit_) {
        theme().paintGlow(painter, icon.path, color, QStringLiteral("icon%1").arg(static_cast<int>(shape_.icon)));
    }
    if (icon.stroked) {
        painter.strokePath(icon.path, QPen(color, 2));
    } else {
        painter.fillPath(icon.path, color);
    }
    painter.restore();
}

void Key::drawRound(QPainter& painter) {
    const auto& rect = design();
    QLinearGradient fill(rect.topLeft(), rect.bottomLeft());
    const bool hovered = isHovered();
    fill.setColorAt(0, QColor(isDown() ? palette::keyDownTop : hovered ? palette::keyHoverTop : palette::keyTop));
    fill.setColorAt(1, QColor(isDown() ? palette::keyDownBottom : hovered ? palette::keyHoverBottom : palette::keyBottom));
    painter.setBrush(fill);
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.drawEllipse(rect);
    drawIcon(
        painter, rect.center(),
        lit_ || shape_.icon == Icon::power ? theme().ink(accent_) : QColor(isEnabled() ? palette::keyText : palette::keyDim));
    if (showsFocus()) {
        theme().paintFocus(painter, rect.adjusted(-2, -2, 2, 2), rect.width() / 2 + 2);
    }
}

}  // namespace tessarel::ui
