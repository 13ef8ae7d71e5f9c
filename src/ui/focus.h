#pragma once
#include <Qt>

class QWidget;

namespace tessarel::ui {

/// Gives the focus to the widget that lies next in the direction of an arrow key, if there is one.
void focusNeighbour(QWidget& from, Qt::Key arrow);

}  // namespace tessarel::ui
