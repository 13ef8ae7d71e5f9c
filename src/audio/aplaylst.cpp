#include "audio/aplaylst.h"

#include "audio/help_topic.h"
#include "audio/list_fill.h"
#include "forms/windows.h"
#include "platform/system.h"
#include "shell/panel_colors.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"

namespace tessarel::audio {
namespace {

// Of the settings' fonts and colours, those of lists.
constexpr std::size_t listFont = 3;
constexpr std::size_t displayGlass = 5;

}  // namespace

aplaylst::aplaylst(forms::Windows& windows, const shell::Context& context, PlayerState& player,
                   const library::DiscRecord& record)
    : Form(windows, windowName), context_(context), player_(player), record_(record) {
    Width = 5700;
    Height = 6000;
    Caption = std::string("CD Playlist");
    List1.Click = [this] { List1_Click(); };
}

void aplaylst::Form_Load() {
    placeByPlayer();
    stayWithPlayer();
    refill();
    if (player_.programIndex > 0) {
        selectRow(player_.programIndex - 1);
    }
}

// Beside the player where the screen has room for that, so that the list covers none of its keys.
void aplaylst::placeByPlayer() {
    const auto* player = windows().find<Form>(shell::audioCdWindow);
    if (player == nullptr) {
        shell::centreForm(context_, *this);
        return;
    }
    const shell::WindowPlace wanted{player->Left + player->Width, player->Top};
    const auto place = shell::clampedPlace(wanted, context_.system.screen(), Width, Height);
    Move(place.left, place.top);
}

// The player may lie over it where the screen has no room for both.
void aplaylst::stayWithPlayer() {
    if (auto* player = windows().find<Form>("CDForm")) {
        playerInFront_ = player->alwaysInFront.onChange([this](bool inFront) { alwaysInFront = inFront; });
    }
}

void aplaylst::Form_Activate() {
    player_.programPanelOpen = 1;
    takeListFont();
}

void aplaylst::takeListFont() {
    const auto& font = context_.state.fonts.at(listFont);
    List1.FontName = font.fontName;
    List1.FontSize = font.fontSize;
    List1.FontBold = font.fontBold != 0;
    List1.FontItalic = font.fontItalic != 0;
    List1.FontUnderline = font.fontUnderline != 0;
    const auto& ground = context_.state.displayColors13.at(displayGlass);
    if (!font.fontColor.text.empty()) {
        List1.ForeColor = shell::colorOf(font.fontColor);
    }
    if (!ground.text.empty()) {
        List1.BackColor = shell::colorOf(ground);
    }
}

void aplaylst::Form_KeyDown(int keyCode, int /*shift*/) {
    if (keyCode == forms::keys::escape) {
        windows().unload(name());
    } else {
        shell::helpOnKey(context_, keyCode, playerHelp);
    }
}

void aplaylst::Form_Unload() { player_.programPanelOpen = 0; }

void aplaylst::List1_Click() {
    if (player_.programIndex > 0) {
        selectRow(player_.programIndex - 1);
    }
}

void aplaylst::refill() { fillProgramList(List1, {player_, record_, context_.state.smallFontsDisplay == 1}); }

void aplaylst::selectRow(int row) {
    const bool there = row >= 0 && row < static_cast<int>(List1.rows.get().size());
    List1.ListIndex = there ? row : -1;
}

}  // namespace tessarel::audio
