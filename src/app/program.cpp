#include "app/program.h"

#include <memory>

#include "apps/cd1st.h"
#include "audio/aplaylst.h"
#include "audio/cdform.h"
#include "audio/cdformbg.h"
#include "audio/iconmin.h"
#include "audio/running_mark.h"
#include "base/text.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/system.h"
#include "shell/ender.h"
#include "shell/load1st.h"
#include "shell/settings_text.h"
#include "volume/volcntl.h"

namespace tessarel::app {

Program::Program(const Platform& p)
    : windows(p.scheduler),
      context_{p.scheduler, p.files,     p.drives, p.processes,   p.dialogs, p.system,
               p.sounds,    p.cdPlayers, p.levels, p.systemMixer, windows,   state},
      session_(context_, p.media, p.notifications, player, record, volume, remote) {
    declareWindows();
}

void Program::declareWindows() {
    windows.declare("Load1st",
                    [this](forms::Windows& w) { return std::make_unique<shell::Load1st>(w, context_, commandLine_); });
    windows.declare("ender", [this](forms::Windows& w) { return std::make_unique<shell::Ender>(w, context_); });
    windows.declare("Form16", [this](forms::Windows& w) { return std::make_unique<shell::Form16>(w, context_); });
    windows.declare("CD1st", [this](forms::Windows& w) { return std::make_unique<apps::CD1st>(w, context_, player, record); });
    windows.declare("aplaylst",
                    [this](forms::Windows& w) { return std::make_unique<audio::aplaylst>(w, context_, player, record); });
    windows.declare("CDForm", [this](forms::Windows& w) {
        return std::make_unique<audio::CDForm>(w, context_, player, record, volume, remote, session_);
    });
    windows.declare("cdformbg", [this](forms::Windows& w) { return std::make_unique<audio::CdFormBg>(w, context_); });
    windows.declare("ICONmin", [this](forms::Windows& w) { return std::make_unique<audio::ICONmin>(w, context_); });
    windows.declare("VolCntl", [this](forms::Windows& w) { return std::make_unique<volume::VolCntl>(w, context_, remote); });
}

void Program::start(const std::string& commandLine) {
    commandLine_ = commandLine;
    windows.load("Load1st");
    if (!windows.anyVisible() && state.runMode != "CDLITE") {
        openWaitingWindow();
    }
}

void Program::end() {
    auto& levels = volume::hasDiscLevels(remote, state.volumeMode) ? remote.words : volume;
    (void)volume::liftMute(context_, levels, platform::Line::disc);
    audio::deleteRunningMark(context_);
}

// The window that the settings or the command line ask for is not built: the program still opens where discs are taken.
void Program::openWaitingWindow() {
    if (!commandLine_.empty()) {
        context_.dialogs.message(
            {.text = "This version of Tessarel has no window for \"" + commandLine_ + "\" yet. It plays audio CDs."});
    }
    state.runMode.clear();
    windows.show("CD1st");
}

char Program::discDrive(char otherwise) const {
    const auto bytes = context_.files.read(context_.system.systemDirectory() + "\\TSLWIN.INI");
    if (!bytes) {
        return otherwise;
    }
    const auto text = text::decode(*bytes);
    shell::Settings settings;
    SequentialReader reader(text);
    shell::readTslwin(reader, settings);
    const char letter = shell::driveLetter(settings.cdDrive);
    return letter == ' ' ? otherwise : letter;
}

}  // namespace tessarel::app
