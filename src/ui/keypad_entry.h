#pragma once
#include <QRectF>

class QLineEdit;
class QWidget;

namespace tessarel::ui {

class Theme;

/// A small box on the glass for a track number, hidden at first. It belongs to `window`.
QLineEdit* makeKeypadEntry(QWidget& window, const Theme& theme, const QRectF& place);

}  // namespace tessarel::ui
