#pragma once
#include "shell/context.h"

namespace tessarel::volume {

/// Starts the mixer application of the settings with its cue, or leaves the user with the one that runs already. Tells the
/// user how to get one when none is set, and when it can't be started.
void launchMixer(const shell::Context& context);

}  // namespace tessarel::volume
