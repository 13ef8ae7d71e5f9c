#include "ui/standard_views.h"

#include "apps/cd1st.h"
#include "audio/cdform.h"
#include "ui/cd1st_view.h"
#include "ui/cdform_view.h"

namespace tessarel::ui {

void knowStandardViews(Views& views, const Theme& theme, const audio::PlayerState& player, const library::DiscRecord& record) {
    views.know("CDForm", [&](forms::Form& form) -> std::unique_ptr<FormWindow> {
        auto* window = dynamic_cast<audio::CDForm*>(&form);
        if (window == nullptr) {
            return nullptr;
        }
        return std::make_unique<CdFormView>(
            CdFormParts{form, window->face, player, record, window->drawerPosition, audio::CDForm::drawerSteps}, theme);
    });
    views.know("CD1st", [&](forms::Form& form) -> std::unique_ptr<FormWindow> {
        auto* window = dynamic_cast<apps::CD1st*>(&form);
        if (window == nullptr) {
            return nullptr;
        }
        return std::make_unique<Cd1stView>(Cd1stParts{form, window->firstLine, window->secondLine, window->insertImageKey},
                                           theme);
    });
}

}  // namespace tessarel::ui
