#pragma once
#include <string>
#include <string_view>

#include "base/result.h"

namespace tessarel::platform {

enum class WindowStyle { hidden = 0, normal = 1, minimised = 2, maximised = 3 };

using ProcessId = long;

/// `exitCode` while a program still runs.
inline constexpr int stillActive = 259;

/// Other programs, started by the names that the program knows them by.
class Processes {
public:
    virtual ~Processes() = default;

    /// Starts a command line (a program's name or path, in double quotes if it holds blanks, and its arguments) in the
    /// current directory, without waiting. A name that resolves to nothing is `Fault::notFound`, a missing runtime for it
    /// `Fault::unavailable`.
    virtual Result<ProcessId> start(std::string_view commandLine, WindowStyle style) = 0;

    /// The program's exit code, or `stillActive`.
    virtual int exitCode(ProcessId id) = 0;

    /// Whether a window exists with this class or, when the class is empty, with exactly this caption.
    virtual bool findWindow(std::string_view windowClass, std::string_view caption) const = 0;
};

}  // namespace tessarel::platform
