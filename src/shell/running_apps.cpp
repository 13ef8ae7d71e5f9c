#include <fmt/format.h>

#include <array>

#include "base/text.h"
#include "platform/dialogs.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"

namespace tessarel::shell {
namespace {

struct KnownClass {
    std::string_view windowClass;
    std::string_view executable;
};

// In the order in which they are searched. "#32770" is the class of every dialog.
constexpr std::array<KnownClass, 23> knownClasses = {
    {{"SciCalc", "CALC.EXE"},        {"CalWndMain", "CALENDAR.EXE"}, {"Cardfile", "CARDFILE.EXE"},
     {"Clipboard", "CLIPBOARD.EXE"}, {"Clock", "CLOCK.EXE"},         {"CtlPanelClass", "CONTROL.EXE"},
     {"XLMain", "EXCEL.EXE"},        {"Session", "MS-DOS.EXE"},      {"Notepad", "NOTEPAD.EXE"},
     {"pbParent", "PBRUSH.EXE"},     {"Pif", "PIFEDIT.EXE"},         {"PrintManager", "PRINTMAN.EXE"},
     {"Progman", "PROGMAN.EXE"},     {"Recorder", "RECORDER.EXE"},   {"Reversi", "REVERSI.EXE"},
     {"#32770", "SETUP.EXE"},        {"Solitaire", "SOL.EXE"},       {"Terminal", "TERMINAL.EXE"},
     {"WFS_Frame", "WINFILE.EXE"},   {"MW_WINHELP", "WINHELP.EXE"},  {"#32770", "WINVER.EXE"},
     {"OpusApp", "WINWORD.EXE"},     {"MSWRITE_MENU", "WRITE.EXE"}}};

struct KnownCaption {
    std::string_view caption;
    std::string executable;
    bool namedByCaption = false;  // in the message
};

std::array<KnownCaption, 10> knownCaptions(const std::string& windowsDir) {
    return {{{"Tessarel", "TESSAREL.EXE"},
             {"Gearline Calculator", "GL1.EXE"},
             {"Print Artist", "PAWIN.EXE"},
             {"Sound Blaster 16 Mixer Control", "SB16WMIX.EXE"},
             {"Jazz Pocket Mixer", "JAZZPMIX.EXE"},
             {"PROCOMM PLUS for Windows", "PW2.EXE"},
             {"Tessarel Help", "CDHELP.EXE"},
             {"Music Library", "MUSICLIB.EXE"},
             {"Volume Control", windowsDir + "\\SNDVOL32.EXE", true},
             {"Sound - Sound Recorder", windowsDir + "\\SNDREC32.EXE"}}};
}

// The name under which a running program is told to the user; empty when it doesn't run.
std::string runningName(const platform::Processes& processes, const std::string& wanted, const std::string& windowsDir) {
    for (const auto& known : knownClasses) {
        if (known.executable == wanted) {
            if (processes.findWindow(known.windowClass, {})) {
                return std::string(known.executable);
            }
            break;
        }
    }
    for (const auto& known : knownCaptions(windowsDir)) {
        if (text::upper(known.executable) == wanted && processes.findWindow({}, known.caption)) {
            return known.namedByCaption ? std::string(known.caption) : known.executable;
        }
    }
    return {};
}

}  // namespace

void isAppRunning(const Context& context) {
    auto& state = context.state;
    const auto name = runningName(context.processes, text::upper(text::trim(state.appToCheck)), state.windowsDir);
    state.appAlreadyRunning = name.empty() ? 0 : 1;
    if (!name.empty()) {
        context.dialogs.message(
            {.text = fmt::format("{} Application Already Running! Use the Taskbar to Activate.\n\nPress Ctrl + Esc to access "
                                 "Taskbar, then click on {}, or press Alt + Esc to change window displayed.",
                                 name, name),
             .icon = platform::Icon::exclamation});
    }
}

}  // namespace tessarel::shell
