#include "volume/mixer_launch.h"

#include <cstdint>
#include <string>

#include "base/text.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "shell/cues.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"

namespace tessarel::volume {
namespace {

constexpr const char* howToGetAMixer =
    "NOTE: to use the Audio Mixer option, you must locate the mixer application written specifically for your sound board.\n\n"
    "This is usually a Windows application named something similar to JAZZPMIX.EXE, SB32WMIX.EXE or AUDIOMIX.EXE. Common "
    "subdirectory names in which the mixer application may be found include: JAZZ, SB32, SBPRO, VOYETRA, etc.\n\n"
    "Once the proper mixer application is located, it will be automatically used by Tessarel to allow you to change the "
    "Volume, Balance, Bass & Treble tone control settings, etc. \n\n"
    "You may also use the standard Windows Volume Control Application SNDVOL32.EXE located in your Windows directory.\n\n"
    "Note:  Access the Tessarel Setup Section to enter or change mixer settings.";

constexpr const char* mixerNotFound =
    "            Audio Mixer Application NOT FOUND!\n\nUse the Setup command to enter the mixer application.";

constexpr std::int16_t mixerCue = 4;

// What names no file is a command line already.
std::string commandLine(const platform::FileSystem& files, const std::string& mixerPath) {
    return files.exists(mixerPath) ? shell::commandWord(mixerPath) : mixerPath;
}

}  // namespace

void launchMixer(const shell::Context& context) {
    const auto mixerPath = text::trim(context.state.mixerPath);
    if (mixerPath.empty()) {
        context.dialogs.message({.text = howToGetAMixer});
        return;
    }
    context.state.appToCheck = mixerPath;
    shell::isAppRunning(context);
    if (context.state.appAlreadyRunning == 1) {
        return;
    }
    shell::playCue(context, mixerCue);
    if (!context.processes.start(commandLine(context.files, mixerPath), platform::WindowStyle::normal)) {
        context.dialogs.message({.text = mixerNotFound});
    }
}

}  // namespace tessarel::volume
