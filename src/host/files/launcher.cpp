#include "host/files/launcher.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include "base/text.h"
#include "host/files/system_error.h"
#include "host/files/whole_file.h"

namespace tessarel::host {
namespace {

constexpr std::size_t headBytes = 256;
constexpr std::size_t mostRemembered = 1000;
constexpr int unknownProgram = -1;
constexpr std::array<std::string_view, 2> systemFolders = {"C:\\WINDOWS\\", "C:\\WINDOWS\\SYSTEM\\"};

bool isBareName(std::string_view program) { return program.find_first_of("\\/:") == std::string_view::npos; }

bool isExecutable(const std::string& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(file.c_str(), X_OK) == 0;
}

std::vector<std::string> spellings(const std::string& program) {
    std::vector<std::string> names = {program};
    if (text::fileName(program).find('.') == std::string::npos) {
        for (const auto* extension : {".exe", ".com", ".bat"}) {
            names.push_back(program + extension);
        }
    }
    return names;
}

tl::unexpected<Error> missing(std::string_view program, std::string_view kind, std::string_view package) {
    return failure(Fault::unavailable, fmt::format("{} is {}: install the package \"{}\" to open it.", program, kind, package));
}

int exitCodeOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

/// The attributes and file actions of one start.
class SpawnSettings {
public:
    explicit SpawnSettings(const std::string& directory) {
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawn_file_actions_init(&actions_);
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &all);
        ::posix_spawnattr_setpgroup(&attributes_, 0);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addchdir_np(&actions_, directory.c_str());
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    /// 0 or an errno value.
    int spawn(int& pid, std::vector<std::string> command) const {
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (auto& each : command) {
            arguments.push_back(each.data());
        }
        arguments.push_back(nullptr);
        return ::posix_spawn(&pid, arguments[0], &actions_, &attributes_, arguments.data(), environ);
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

std::vector<std::string> commandPathOfEnvironment() {
    std::vector<std::string> folders;
    const char* path = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe)
    std::string_view rest = path ? path : "/usr/local/bin:/usr/bin:/bin";
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            folders.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return folders;
}

Result<platform::ProcessId> Launcher::start(std::string_view commandLine, platform::WindowStyle /*style*/) {
    reap();
    const auto command = commandFor(commandLine);
    if (!command) {
        return tl::unexpected(command.error());
    }
    const auto pid = spawn(*command);
    if (!pid) {
        return tl::unexpected(pid.error());
    }
    children_[++lastId_] = {*pid, std::nullopt};
    return lastId_;
}

int Launcher::exitCode(platform::ProcessId id) {
    reap();
    const auto child = children_.find(id);
    if (child == children_.end()) {
        return unknownProgram;
    }
    return child->second.exitCode.value_or(platform::stillActive);
}

void Launcher::reap() {
    for (auto& [id, child] : children_) {
        int status = 0;
        const int got = child.exitCode ? 0 : ::waitpid(child.pid, &status, WNOHANG);
        if (got == child.pid) {
            child.exitCode = exitCodeOf(status);
        } else if (got < 0 && errno == ECHILD) {
            child.exitCode = unknownProgram;
        }
    }
    for (auto child = children_.begin(); children_.size() > mostRemembered && child != children_.end();) {
        child = child->second.exitCode ? children_.erase(child) : std::next(child);
    }
}

Result<Launcher::Command> Launcher::commandFor(std::string_view commandLine) const {
    const auto calls = programCalls(commandLine);
    if (calls.empty() || calls.front().program.empty()) {
        return failure(Fault::notFound, "There is no program to start: its name is empty.");
    }
    if (isWebAddress(calls.front().program)) {
        return openWithDesktop(calls.front().program);
    }
    for (const auto& call : calls) {
        const auto target = find(call.program);
        if (!target) {
            return tl::unexpected(target.error());
        }
        if (*target) {
            return commandFor(**target, call);
        }
    }
    const auto& first = calls.front();
    if (const auto native = isBareName(first.program) ? command(first.program) : std::string(); !native.empty()) {
        return commandFor(Target{native, ProgramKind::native, {}}, first);
    }
    return failure(Fault::notFound, fmt::format("There is no program {}.", first.program));
}

Result<std::optional<Launcher::Target>> Launcher::find(const std::string& program) const {
    if (auto found = companion(program)) {
        return found;
    }
    std::vector<std::string> places = {std::string()};
    if (isBareName(program)) {
        places.insert(places.end(), systemFolders.begin(), systemFolders.end());
    }
    for (const auto& place : places) {
        for (const auto& name : spellings(program)) {
            auto found = findFile(place + name);
            if (!found || *found) {
                return found;
            }
        }
    }
    return std::nullopt;
}

Result<std::optional<Launcher::Target>> Launcher::findFile(const std::string& path) const {
    if (!files_.exists(path)) {
        return std::nullopt;
    }
    Target target;
    target.file = files_.realPath(path).string();
    if (target.file.empty()) {
        return failure(Fault::unsupported,
                       fmt::format("{} lies on a disc that no folder of this system shows: it can't be started.", path));
    }
    target.head = readPart(target.file, 0, headBytes);
    const auto offset = newHeaderOffset(target.head);
    target.kind = programKind(target.file, target.head, offset > 0 ? readPart(target.file, offset, 2) : std::string());
    return target;
}

std::optional<Launcher::Target> Launcher::companion(const std::string& program) const {
    if (options_.companions.empty() || !isBareName(program) || program.empty()) {
        return std::nullopt;
    }
    auto name = text::lower(program);
    if (name.ends_with(".exe")) {
        name.resize(name.size() - 4);
    }
    const auto file = (options_.companions / name).string();
    return isExecutable(file) ? std::optional(Target{file, ProgramKind::native, {}}) : std::nullopt;
}

std::string Launcher::command(const std::string& name) const {
    for (const auto& folder : options_.commandPath) {
        std::string file = folder;
        file.append("/").append(name);
        if (isExecutable(file)) {
            return file;
        }
    }
    return {};
}

Result<Launcher::Command> Launcher::commandFor(const Target& target, const ProgramCall& call) const {
    switch (target.kind) {
        case ProgramKind::document:
            return openWithDesktop(target.file);
        case ProgramKind::unknown:
            return failure(Fault::unsupported,
                           fmt::format("{} is no program: it has no header of any known kind.", call.program));
        case ProgramKind::dos: {
            const auto dosbox = command("dosbox");
            return dosbox.empty() ? missing(call.program, "a DOS program", "dosbox")
                                  : Result<Command>(dosCommand(dosbox, target, call));
        }
        case ProgramKind::windows:
            if (command("wine").empty()) {
                return missing(call.program, "a Windows program", "wine");
            }
            break;
        case ProgramKind::native:
        case ProgramKind::script:
            break;
    }
    Command command = {target.file};
    if (target.kind == ProgramKind::windows) {
        command.insert(command.begin(), this->command("wine"));
    } else if (target.kind == ProgramKind::script && !isExecutable(target.file)) {
        const auto interpreter = scriptInterpreter(target.head);
        command.insert(command.begin(), interpreter.begin(), interpreter.end());
    }
    const auto arguments = realArguments(call.arguments, target.kind == ProgramKind::windows);
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

Result<Launcher::Command> Launcher::openWithDesktop(const std::string& what) const {
    const auto opener = command("xdg-open");
    return opener.empty() ? missing(what, "for the desktop to open", "xdg-utils") : Result<Command>(Command{opener, what});
}

Launcher::Command Launcher::dosCommand(const std::string& dosbox, const Target& target, const ProgramCall& call) const {
    const std::filesystem::path file(target.file);
    const auto line = file.filename().string() + (call.arguments.empty() ? "" : " " + call.arguments);
    return {dosbox, "-c", fmt::format("mount c \"{}\"", file.parent_path().string()), "-c", "c:", "-c", line, "-c", "exit"};
}

std::vector<std::string> Launcher::realArguments(const std::string& arguments, bool forWine) const {
    auto words = splitArguments(arguments);
    for (auto& word : words) {
        word = realArgument(word, forWine);
    }
    return words;
}

// A relative name is put into its spelling on disk; a bare word without a dot is more likely a word than a file.
std::string Launcher::realArgument(const std::string& argument, bool forWine) const {
    const bool relativeFile =
        argument.find_first_of(".\\") != std::string::npos && !isWebAddress(argument) && files_.exists(argument);
    auto real = hasDriveRoot(argument) || relativeFile ? files_.realPath(argument).string() : std::string();
    if (real.empty()) {
        return argument;
    }
    if (forWine) {
        std::replace(real.begin(), real.end(), '/', '\\');
        return "Z:" + real;
    }
    return real;
}

std::string Launcher::workingDirectory() const {
    const auto real = files_.realPath(files_.currentDirectory());
    return (real.empty() ? files_.realPath("C:\\") : real).string();
}

Result<int> Launcher::spawn(const Command& command) const {
    int pid = 0;
    if (const int code = SpawnSettings(workingDirectory()).spawn(pid, command)) {
        return systemError(code, files_.programPath(command.front()), "started");
    }
    return pid;
}

}  // namespace tessarel::host
