#pragma once
#include <array>

#include "ui/form_window.h"
#include "volume/volcntl_face.h"

namespace tessarel::ui {

class Key;
class Panel;
class TrackCell;

/// The small volume window on the screen: a side of sliders or a side of display, and the transport under both.
class VolCntlView : public FormWindow {
public:
    VolCntlView(forms::Form& form, volume::VolCntlFace& face, const Theme& theme);

    static constexpr double designWidth = 336;
    static constexpr double designHeight = 284;

protected:
    void drawBackground(QPainter& painter) override;

private:
    void addVolumeSide();
    void addDisplaySide();
    void addReadout(Panel& side);
    void addCalendar(Panel& side);
    void addTransport();
    void addTitleRow();
    void showCurrentCell();

    volume::VolCntlFace& face_;
    std::array<TrackCell*, volume::calendarCells> cells_{};
};

}  // namespace tessarel::ui
