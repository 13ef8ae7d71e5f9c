#include "audio/cdformbg.h"

#include "forms/windows.h"
#include "shell/shared_state.h"
#include "shell/window_names.h"

namespace tessarel::audio {
namespace {

const char* windowOf(shell::Tessarel active) {
    switch (active) {
        case shell::Tessarel::audioCd:
            return shell::audioCdWindow;
        case shell::Tessarel::cdRom:
            return "CDROMer";
        default:
            return "";
    }
}

}  // namespace

CdFormBg::CdFormBg(forms::Windows& windows, shell::Context context) : Form(windows, windowName), context_(context) {}

void CdFormBg::Form_Load() {
    if (const auto* active = windows().find<Form>(windowOf(context_.state.activeTessarel))) {
        Move(active->Left, active->Top);
        Width = active->Width.get();
        Height = active->Height.get();
    }
}

}  // namespace tessarel::audio
