#pragma once
#include <QHash>
#include <QPainterPath>

#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// Lit segment digits over unlit ones. Text that is too long for its place is drawn smaller.
class SegmentDisplay : public LabelPad {
public:
    /// `ghost` are the unlit segments that are always to be seen, as "88:88"; longer texts bring their own.
    SegmentDisplay(const Theme& theme, QWidget* parent, const QString& ghost, double size);

    /// The height of the digits, in design units.
    void setSize(double size);
    double size() const { return size_; }

protected:
    void changed() override;
    void draw(QPainter& painter) override;

private:
    struct Glyph {
        QPainterPath path;
        double advance = 0;
    };

    bool usesSegments() const;
    const Glyph& glyph(QChar character);
    double width(const QString& text);
    QString ghostFor(const QString& text) const;
    void drawSegments(QPainter& painter, const QString& text);

    QString ghost_;
    double size_;
    QHash<QChar, Glyph> glyphs_;
};

}  // namespace tessarel::ui
