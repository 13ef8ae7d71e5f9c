#pragma once
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/options.h"
#include "base/result.h"

namespace tessarel::app {

/// Where the parts of the installed program lie.
struct Installation {
    std::filesystem::path data;        ///< the folder of home/, cues/ and help/
    std::filesystem::path companions;  ///< the folder of the programs that are started by name; empty for none
};

/// Looks for the parts beside the program's own file, so that a build runs where it lies, and then where they are installed.
Installation findInstallation(const std::filesystem::path& program);

/// The answer to --list-drives. An error names the images that could not be inserted.
Result<std::string> listDrives(const Options& options);

/// Builds the program on the desktop's adapters and runs it to its end, which may come after that of its windows when a disc
/// plays on. `beforeFirstText` is called just before anything is written on a window. Returns the exit status. There is an
/// application object; the home need not exist.
int runProgram(const Options& options, const Installation& installation, const std::string& workingDirectory,
               const std::function<void()>& beforeFirstText);

}  // namespace tessarel::app
