#include "app/program.h"

#include <memory>

#include "apps/cd1st.h"
#include "audio/cdform.h"
#include "shell/load1st.h"

namespace tessarel::app {

Program::Program(const Platform& p)
    : windows(p.scheduler),
      context_{p.scheduler, p.files,  p.drives,    p.processes, p.dialogs, p.system,
               p.sounds,    p.cdPlayers, p.levels, windows,     state} {
    declareWindows();
}

void Program::declareWindows() {
    windows.declare("Load1st",
                    [this](forms::Windows& w) { return std::make_unique<shell::Load1st>(w, context_, commandLine_); });
    windows.declare("CD1st", [this](forms::Windows& w) { return std::make_unique<apps::CD1st>(w, context_, player); });
    windows.declare("CDForm", [this](forms::Windows& w) {
        return std::make_unique<audio::CDForm>(w, context_, player, record, volume);
    });
}

void Program::start(const std::string& commandLine) {
    commandLine_ = commandLine;
    windows.load("Load1st");
}

}  // namespace tessarel::app
