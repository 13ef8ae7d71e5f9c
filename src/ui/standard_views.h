#pragma once
#include "audio/player_state.h"
#include "library/disc_record.h"
#include "shell/shared_state.h"
#include "ui/main_windows.h"
#include "ui/theme.h"

namespace tessarel::ui {

/// The skin that the settings ask for. One with a picture that cannot be read has the plain face.
Skin skinOf(const shell::Settings& settings);

/// Makes every view of this version known. All but `views` must outlive it.
void knowStandardViews(Views& views, const Theme& theme, const audio::PlayerState& player, const library::DiscRecord& record);

}  // namespace tessarel::ui
