#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// A cell of the track grid: its number, lit while the track is still to come, bright while it is the current one.
class TrackCell final : public LabelPad {
public:
    TrackCell(const Theme& theme, QWidget* parent, int number);

    int number() const { return number_; }
    void setCurrent(bool current);
    bool current() const { return current_; }
    /// A cell without a track behind it.
    void setDead(bool dead);
    bool dead() const { return dead_; }

protected:
    void changed() override;
    void draw(QPainter& painter) override;

private:
    int number_;
    bool current_ = false;
    bool dead_ = false;
};

}  // namespace tessarel::ui
