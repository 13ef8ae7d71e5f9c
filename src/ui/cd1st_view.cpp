#include "ui/cd1st_view.h"

#include <QPainter>

#include "ui/bind.h"
#include "ui/widgets/drawer.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"

namespace tessarel::ui {
namespace {

const QRectF glass(28, 50, 464, 118);

}  // namespace

Cd1stView::Cd1stView(const Cd1stParts& parts, const Theme& theme)
    : FormWindow(parts.form, theme, QSizeF(designWidth, designHeight), QStringLiteral("Waiting for a disc")) {
    auto* insert = new Key(theme, this, {.caption = QStringLiteral("Insert disc image..."), .textSize = 11});
    insert->place(QRectF(322, 186, 170, 34), 4);
    bind(*insert, parts.insertImageKey);

    auto* first = new GlassLabel(theme, this, {.size = 17, .weight = QFont::DemiBold, .ink = Ink::lit});
    first->place(QRectF(160, 84, 312, 24), 3);
    bind(*first, parts.firstLine);
    auto* second = new GlassLabel(theme, this, {.size = 13});  // few sizes of type: each takes time at the start
    second->place(QRectF(160, 111, 312, 21), 3);
    bind(*second, parts.secondLine);

    addTitleKeys({TitleKey::minimise, TitleKey::exit});
}

void Cd1stView::drawBackground(QPainter& painter) {
    theme().paintGlass(painter, glass);
    paintDisc(painter, QPointF(95, 109), 42);
    const auto hint = theme().font(11);
    theme().paintText(painter, 28, 200, QStringLiteral("You may also drop an image of a disc"), hint, QColor(palette::title));
    theme().paintText(painter, 28, 216, QStringLiteral("(CUE, TOC, NRG, ISO) on this window."), hint, QColor(palette::title));
}

}  // namespace tessarel::ui
