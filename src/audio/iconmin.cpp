#include "audio/iconmin.h"

#include "audio/help_topic.h"
#include "forms/windows.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"
#include "volume/remote.h"

namespace tessarel::audio {
namespace {

constexpr const char* player = volume::playerWindow(volume::SourceKind::disc);

}  // namespace

ICONmin::ICONmin(forms::Windows& windows, shell::Context context) : Form(windows, windowName), context_(context) {
    Width = 3600;
    Height = 900;
    stateWatch_ = WindowState.onChange([this](forms::WindowState state) {
        if (state == forms::WindowState::minimised) {
            wasMinimised_ = true;
        } else if (wasMinimised_) {
            restore();
        }
    });
}

void ICONmin::Form_Activate() {
    if (WindowState != forms::WindowState::minimised) {
        restore();
    }
}

void ICONmin::Form_KeyDown(int keyCode, int /*shift*/) {
    if (keyCode == forms::keys::enter || keyCode == forms::keys::escape) {
        restore();
    } else {
        shell::helpOnKey(context_, keyCode, playerHelp);
    }
}

void ICONmin::Form_MouseDown(forms::MouseButton button) {
    if (button == forms::MouseButton::left) {
        restore();
    }
}

void ICONmin::restore() {
    if (restoring_) {
        return;
    }
    restoring_ = true;
    showWallpaper();
    windows().show(player);
    windows().unload(volume::Remote::windowName);
    windows().unload(windowName);
}

void ICONmin::showWallpaper() {
    if (context_.state.wallpaperMode > 0 && context_.state.wallpaperShowing == 1) {
        windows().showBeside(shell::wallpaperForm);
    }
}

}  // namespace tessarel::audio
