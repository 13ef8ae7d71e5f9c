#include "ui/ground.h"

#include <QWidget>

namespace tessarel::ui {

const Ground* groundOf(const QWidget& widget) { return dynamic_cast<const Ground*>(widget.window()); }

}  // namespace tessarel::ui
