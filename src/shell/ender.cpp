#include "shell/ender.h"

#include "base/text.h"
#include "forms/windows.h"
#include "platform/process_end.h"
#include "platform/system.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"

namespace tessarel::shell {

Ender::Ender(forms::Windows& windows, Context context) : Form(windows, "ender"), context_(context) {
    Caption = std::string("End...");
}

void Ender::Form_Load() {
    showCursor(context_);
    removeDataFile(context_, "TSL.DAT");
    for (const auto* window : {"VolCntl", "frmTray", "ender"}) {
        windows().unload(window);
    }
    platform::endProcess();
}

Form16::Form16(forms::Windows& windows, Context context) : Form(windows, "Form16"), context_(context) {
    Caption = std::string("Password Entry");
    Width = 4200;
    Height = 1800;
    prompt.Caption = std::string("Password");
    accept.Caption = std::string("OK");
    accept.Click = [this] { Command1_Click(); };
    password.EnterPressed = [this] { Command1_Click(); };
}

void Form16::Form_Load() {
    centreForm(context_, *this);
    password.SetFocus();
}

void Form16::Command1_Click() {
    if (text::trim(password.Text.get()) != text::trim(context_.state.libPassword)) {
        context_.system.beep();
        platform::endProcess();
    }
    windows().show("CDROMer");
    windows().unload(name());
}

}  // namespace tessarel::shell
