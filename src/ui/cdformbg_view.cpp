#include "ui/cdformbg_view.h"

namespace tessarel::ui {

CdFormBgView::CdFormBgView(forms::Form& form, const Theme& theme) : FormWindow(form, theme, QSizeF(1040, 452), {}) {
    setFocusPolicy(Qt::NoFocus);
    stayBehind();
    keep(form.Width.onChange([this](int) { takeFormSize(); }));
    keep(form.Height.onChange([this](int) { takeFormSize(); }));
}

}  // namespace tessarel::ui
