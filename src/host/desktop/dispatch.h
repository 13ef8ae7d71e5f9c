#pragma once
#include <functional>

namespace tessarel::host {

/// Every entry from Qt into the program (a gesture, a timer, a notifier) runs in here, since no exception may fly through Qt.
/// A `ProcessEnd` marks the process as ending and leaves all event loops, nested ones too. Any other exception is reported on
/// stderr and ends the process the same way, with status 1. Once the process is ending, `code` no longer runs.
void guard(const std::function<void()>& code);

/// As `guard`, for deliveries of adapters: they run to the very end, so that a disc may still sound when the windows have gone.
void deliver(const std::function<void()>& code);

/// Whether the program has ended itself. The caller of the application's event loop asks before it enters it.
bool processEnding();

/// What the process shall return: 0, or 1 after a fault of its own.
int exitStatus();

/// For whoever has run a nested event loop (a wait, a dialog), once that has returned: throws `ProcessEnd` on to the code that
/// called it if the process is ending, and does nothing otherwise.
void rethrowEnd();

}  // namespace tessarel::host
