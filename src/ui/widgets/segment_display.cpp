#include "ui/widgets/segment_display.h"

#include <QFontMetricsF>
#include <algorithm>

namespace tessarel::ui {
namespace {

bool hasSegmentForm(QChar c) { return c.isDigit() || c == u':' || c == u'-' || c == u' '; }

}  // namespace

SegmentDisplay::SegmentDisplay(const Theme& theme, QWidget* parent, const QString& ghost, double size)
    : LabelPad(theme, parent), ghost_(ghost), size_(size) {}

bool SegmentDisplay::usesSegments() const {
    const bool asked = fontName().isEmpty() || fontName() == QLatin1String(segmentFontName);
    return asked && theme().hasSegments() && std::all_of(caption().begin(), caption().end(), hasSegmentForm);
}

void SegmentDisplay::setSize(double size) {
    if (size != size_) {
        size_ = size;
        glyphs_.clear();
        update();
    }
}

void SegmentDisplay::changed() {
    say(caption());
    update();
}

const SegmentDisplay::Glyph& SegmentDisplay::glyph(QChar character) {
    auto found = glyphs_.find(character);
    if (found == glyphs_.end()) {
        const QFont font = theme().segmentFont(size_, true);
        const QString text(character == u' ' ? QChar(u'!') : character);  // the font's blank digit
        Glyph made;
        made.path.addText(0, 0, font, text);
        made.advance = QFontMetricsF(font).horizontalAdvance(text);
        found = glyphs_.insert(character, made);
    }
    return *found;
}

double SegmentDisplay::width(const QString& text) {
    double sum = 0;
    for (const QChar c : text) {
        sum += glyph(c).advance;
    }
    return sum;
}

QString SegmentDisplay::ghostFor(const QString& text) const {
    if (text.size() <= ghost_.size()) {
        return ghost_;
    }
    QString ghost = text;
    std::replace_if(
        ghost.begin(), ghost.end(), [](QChar c) { return c != u':'; }, u'8');
    return ghost;
}

void SegmentDisplay::drawSegments(QPainter& painter, const QString& text) {
    const QString ghost = ghostFor(text);
    const double fit = std::min(1.0, design().width() / std::max(1.0, std::max(width(ghost), width(text))));
    const QColor lit = theme().accent(fore()).color;
    painter.translate(design().right(), design().bottom());
    painter.scale(fit, fit);
    double x = -width(ghost);
    for (const QChar c : ghost) {
        painter.fillPath(glyph(c).path.translated(x, 0), theme().glass().ghost);
        x += glyph(c).advance;
    }
    x = -width(text);
    for (const QChar c : text) {
        const auto& shape = glyph(c);
        painter.save();
        painter.translate(x, 0);
        if (c != u' ') {
            theme().paintGlow(painter, shape.path, lit, QStringLiteral("digit%1 %2").arg(c).arg(size_));
        }
        painter.fillPath(shape.path, lit);
        painter.restore();
        x += shape.advance;
    }
}

void SegmentDisplay::draw(QPainter& painter) {
    painter.save();
    if (usesSegments()) {
        drawSegments(painter, caption());
    } else {
        const QFont font = theme().segmentFont(size_, false);
        const double wide = std::max(1.0, QFontMetricsF(font).horizontalAdvance(caption()));
        const double fit = std::min(1.0, design().width() / wide);
        painter.translate(design().right(), design().bottom());
        painter.scale(fit, fit);
        theme().paintText(painter, 0, 0, caption(), font, theme().accent(fore()).color, Qt::AlignRight);
    }
    painter.restore();
    if (showsFocus()) {
        theme().paintFocus(painter, design().adjusted(-6, -5, 6, 6), 6);
    }
}

}  // namespace tessarel::ui
