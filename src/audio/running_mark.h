#pragma once
#include "shell/context.h"

/// `audiocd.tmp` in the data directory: there while the player has a disc. Every way out deletes it.
namespace tessarel::audio {

void writeRunningMark(const shell::Context& context);
/// Nothing when there is none.
void deleteRunningMark(const shell::Context& context);

}  // namespace tessarel::audio
