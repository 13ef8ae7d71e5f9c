#pragma once
#include "ui/icons.h"
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A key with an icon over a caption, or with a caption alone; or a round one of a window's title row.
class Key : public Pad {
public:
    struct Shape {
        QString caption = {};
        Icon icon = Icon::none;
        QString sign = {};  ///< text in the icon's place
        double textSize = 10;
        bool round = false;
    };

    Key(const Theme& theme, QWidget* parent, Shape shape);

    void setCaption(const QString& caption);
    /// On: the function it stands for is going on.
    void setLit(bool lit);
    /// Its function can't be had now. It still takes the focus, so that the order of keys stays.
    void setDim(bool dim);
    /// The colour of its text while lit.
    void setAccent(Ink accent);
    /// For an on-off key even while it is off.
    void setCheckable() { checkable_ = true; }

    bool lit() const { return lit_; }
    bool dim() const { return dim_; }
    bool checkable() const override { return checkable_; }
    bool checked() const override { return lit_; }
    /// Whether the caption fits the key.
    bool captionFits() const;

protected:
    void draw(QPainter& painter) override;

private:
    void tell();
    void drawIcon(QPainter& painter, const QPointF& middle, const QColor& color) const;
    void drawRound(QPainter& painter);

    Shape shape_;
    Ink accent_ = Ink::keyLit;
    bool lit_ = false;
    bool dim_ = false;
    bool checkable_ = false;
};

}  // namespace tessarel::ui
