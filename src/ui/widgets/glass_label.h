#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A line of text. Text too long for its place ends in an ellipsis, and a tip shows it whole.
class GlassLabel : public LabelPad {
public:
    struct Style {
        double size = 15;
        int weight = QFont::Normal;
        double spacing = 0;
        Ink ink = Ink::soft;  ///< while the label has its plain colour
        Qt::AlignmentFlag anchor = Qt::AlignLeft;
        bool upperCase = false;
        bool ownColor = false;  ///< whatever colour the label has
    };

    GlassLabel(const Theme& theme, QWidget* parent, Style style);

    /// Height of the text in design units that the label asks for: its own font size, or the style's.
    double askedSize() const;
    /// The height that it is drawn in.
    double textSize() const { return askedSize() * shrink_; }
    /// Draws the text smaller than asked, by a factor up to 1, where the place is too low for it.
    void setShrink(double factor);
    QString shownText() const;
    /// Whether the text is shown whole.
    bool whole() const;
    /// The tip that is shown while the text is whole.
    void setPlainTip(const QString& tip);
    /// Called when the label asks for another font size.
    std::function<void()> onResize;

protected:
    void changed() override;
    void draw(QPainter& painter) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QFont textFont() const;
    QColor textColor() const;
    void tip();

    Style style_;
    QString plainTip_;
    double laidOutSize_;
    double shrink_ = 1;
};

}  // namespace tessarel::ui
