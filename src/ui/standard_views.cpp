#include "ui/standard_views.h"

#include "apps/cd1st.h"
#include "audio/aplaylst.h"
#include "audio/cdform.h"
#include "ui/aplaylst_view.h"
#include "ui/cd1st_view.h"
#include "ui/cdform_view.h"
#include "ui/cdformbg_view.h"
#include "ui/iconmin_view.h"
#include "ui/volcntl_view.h"
#include "volume/volcntl.h"

namespace tessarel::ui {

Skin skinOf(const shell::Settings& settings) {
    return {settings.skinLayout == 1 ? 1 : 0, settings.screwsOn != 0,
            settings.skinImageOn > 0 ? settings.skinImage : std::string()};
}

void knowStandardViews(Views& views, const Theme& theme, const audio::PlayerState& player, const library::DiscRecord& record) {
    views.know("VolCntl", [&](forms::Form& form) -> std::unique_ptr<FormWindow> {
        auto* window = dynamic_cast<volume::VolCntl*>(&form);
        return window == nullptr ? nullptr : std::make_unique<VolCntlView>(form, window->face, theme);
    });
    views.know("ICONmin", [&](forms::Form& form) { return std::make_unique<IconMinView>(form, theme); });
    views.know("cdformbg", [&](forms::Form& form) { return std::make_unique<CdFormBgView>(form, theme); });
    views.know("CDForm", [&](forms::Form& form) -> std::unique_ptr<FormWindow> {
        auto* window = dynamic_cast<audio::CDForm*>(&form);
        if (window == nullptr) {
            return nullptr;
        }
        return std::make_unique<CdFormView>(CdFormParts{form, window->face, player, record, window->drawerPosition,
                                                        audio::CDForm::drawerSteps, window->expandedDisplay, window->repeating},
                                            theme);
    });
    views.know("aplaylst", [&](forms::Form& form) -> std::unique_ptr<FormWindow> {
        auto* window = dynamic_cast<audio::aplaylst*>(&form);
        return window == nullptr ? nullptr : std::make_unique<AplaylstView>(form, window->List1, theme);
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
