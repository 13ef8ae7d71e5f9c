#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A lamp that tells a state in words: filled and bright when lit, an outline when not.
class Lamp final : public LabelPad {
public:
    /// `text` stands on it for good; an empty one gives way to the label's caption.
    Lamp(const Theme& theme, QWidget* parent, const QString& text);

    bool lit() const;
    QString shownText() const;
    /// Its press switches what it tells of.
    void setCheckable() { checkable_ = true; }
    bool checkable() const override { return checkable_; }
    bool checked() const override { return lit(); }

protected:
    void changed() override;
    void draw(QPainter& painter) override;

private:
    KeyFace lampFace() const;

    QString text_;
    bool checkable_ = false;
};

}  // namespace tessarel::ui
