#include "ui/iconmin_view.h"

#include "ui/widgets/drawer.h"
#include "ui/widgets/glass_label.h"

namespace tessarel::ui {

IconMinView::IconMinView(forms::Form& form, const Theme& theme)
    : FormWindow(form, theme, QSizeF(designWidth, designHeight), {}) {
    auto* caption = new GlassLabel(theme, this, {.size = 13, .weight = QFont::DemiBold, .ink = Ink::face, .ownColor = true});
    caption->place(QRectF(76, 12, designWidth - 92, 22));
    caption->setObjectName(QStringLiteral("caption"));
    caption->setAccessibleName(QStringLiteral("Player"));
    keep(form.Caption.onChange([caption](const std::string& text) { caption->setCaption(QString::fromStdString(text)); }));
}

void IconMinView::drawBackground(QPainter& painter) {
    paintDisc(painter, QPointF(42, designHeight / 2), 22);
    theme().paintText(painter, 76, 48, QStringLiteral("Press to bring the player back"), theme().font(11),
                      QColor(palette::caption));
}

}  // namespace tessarel::ui
