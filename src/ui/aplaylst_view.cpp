#include "ui/aplaylst_view.h"

#include "ui/bind.h"
#include "ui/widgets/key.h"
#include "ui/widgets/row_list.h"

namespace tessarel::ui {
namespace {

const QRectF glass(28, 50, 364, 374);

}  // namespace

AplaylstView::AplaylstView(forms::Form& form, forms::ListBox& list, const Theme& theme)
    : FormWindow(form, theme, QSizeF(designWidth, designHeight), QStringLiteral("Playlist")) {
    auto* rows = new RowList(theme, this);
    rows->place(glass.adjusted(8, 8, -8, -8));
    rows->setHint(QStringLiteral("No tracks yet.\nPress a number of the player's grid to enter its track."));
    bind(*rows, list);
    addTitleKeys({TitleKey::close});
}

void AplaylstView::drawBackground(QPainter& painter) { theme().paintGlass(painter, glass); }

}  // namespace tessarel::ui
