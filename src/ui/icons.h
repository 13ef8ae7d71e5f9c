#pragma once
#include <QPainterPath>

namespace tessarel::ui {

enum class Icon { none, prev, next, play, pause, stop, eject, rewind, time, forward, minimise, tray, close, power };

/// A drawing around the point 0, 0, about 18 design units across; to be filled, or stroked 2 wide.
struct IconShape {
    QPainterPath path;
    bool stroked = false;
};

IconShape iconShape(Icon icon);

}  // namespace tessarel::ui
