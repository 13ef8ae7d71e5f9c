#pragma once
#include <QPointF>

class QKeyEvent;
class QWidget;

namespace tessarel::ui {

/// What a window tells the widgets on it.
class Ground {
public:
    virtual ~Ground() = default;
    /// Where the point 0, 0 of its design lies, in design units.
    virtual QPointF origin() const = 0;
    /// Whether the program has a use for a key that no widget shows the focus for.
    virtual bool takesKey(const QKeyEvent& event) const = 0;
};

/// The ground of a widget's window; nullptr for a plain window.
const Ground* groundOf(const QWidget& widget);

}  // namespace tessarel::ui
