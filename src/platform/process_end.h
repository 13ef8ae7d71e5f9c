#pragma once

namespace tessarel::platform {

/// Thrown by `endProcess`, caught only by the dispatcher that called into the program. Not a std::exception, so that no
/// handler of errors takes it for one.
struct ProcessEnd {};

/// Ends the process at once: unwinds to the dispatcher, which closes files and sound and leaves the event loop. An adapter
/// that ran the program's code from inside a nested loop throws it on when that loop returns.
[[noreturn]] inline void endProcess() { throw ProcessEnd{}; }

}  // namespace tessarel::platform
