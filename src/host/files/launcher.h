#pragma once
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/files/command_line.h"
#include "host/files/real_files.h"
#include "platform/processes.h"

namespace tessarel::host {

/// Starts programs by the names that the program knows them by. A bare name is looked for among the companions (there in
/// small letters and without ".exe"), in the current directory, in C:\WINDOWS and C:\WINDOWS\SYSTEM, and at last among the
/// commands of this system; ".exe", ".com" and ".bat" may be left out. Windows and DOS programs run in Wine and DOSBox,
/// documents and web addresses open with the desktop's own programs. Window styles are each program's own affair here.
/// Arguments that are program paths reach programs of this system as real paths, and Wine as paths on its own Z:.
/// A program runs in a process group of its own, in the real current directory (that of C: when it has none).
class Launcher : public platform::Processes {
public:
    struct Options {
        std::filesystem::path companions;      ///< folder of the companion programs; empty for none
        std::vector<std::string> commandPath;  ///< folders of this system's commands, in order
        std::function<bool(std::string_view windowClass, std::string_view caption)> findWindow;
    };

    /// The files must outlive this.
    Launcher(const RealFiles& files, Options options) : files_(files), options_(std::move(options)) {}

    Result<platform::ProcessId> start(std::string_view commandLine, platform::WindowStyle style) override;

    /// The exit code, 128 + the signal for a program that one ended, -1 for an id that `start` never gave or gave more than
    /// 1000 programs ago.
    int exitCode(platform::ProcessId id) override;

    bool findWindow(std::string_view windowClass, std::string_view caption) const override {
        return options_.findWindow && options_.findWindow(windowClass, caption);
    }

    /// Takes the exit codes of programs that have ended, so that the system can forget them. `start` and `exitCode` do so too.
    void reap();

private:
    struct Target {
        std::string file;  // real path
        ProgramKind kind = ProgramKind::unknown;
        std::string head;  // its first bytes
    };
    struct Child {
        int pid = 0;
        std::optional<int> exitCode;
    };
    using Command = std::vector<std::string>;

    Result<std::optional<Target>> find(const std::string& program) const;
    Result<std::optional<Target>> findFile(const std::string& path) const;
    std::optional<Target> companion(const std::string& program) const;
    std::string command(const std::string& name) const;
    Result<Command> commandFor(std::string_view commandLine) const;
    Result<Command> commandFor(const Target& target, const ProgramCall& call) const;
    Result<Command> openWithDesktop(const std::string& what) const;
    Command dosCommand(const std::string& dosbox, const Target& target, const ProgramCall& call) const;
    std::vector<std::string> realArguments(const std::string& arguments, bool forWine) const;
    std::string realArgument(const std::string& argument, bool forWine) const;
    Result<int> spawn(const Command& command) const;
    std::string workingDirectory() const;

    const RealFiles& files_;
    Options options_;
    platform::ProcessId lastId_ = 0;
    std::map<platform::ProcessId, Child> children_;
};

/// The folders of the PATH variable.
std::vector<std::string> commandPathOfEnvironment();

}  // namespace tessarel::host
