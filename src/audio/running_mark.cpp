#include "audio/running_mark.h"

#include "base/sequential_file.h"
#include "platform/file_system.h"
#include "shell/shared_state.h"

namespace tessarel::audio {
namespace {

std::string pathOf(const shell::Context& context) { return context.state.dataDir + "\\audiocd.tmp"; }

}  // namespace

void writeRunningMark(const shell::Context& context) {
    context.files.write(pathOf(context), SequentialWriter().number(0).bytes());
}

void deleteRunningMark(const shell::Context& context) {
    if (context.files.exists(pathOf(context))) {
        context.files.remove(pathOf(context));
    }
}

}  // namespace tessarel::audio
