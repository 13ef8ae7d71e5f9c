#include "tests/desktop/servers.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace tessarel::host {

ScopedVariable::ScopedVariable(const char* name, const std::string& value) : name_(name) {
    const char* old = std::getenv(name);
    wasSet_ = old != nullptr;
    old_ = wasSet_ ? old : "";
    setenv(name, value.c_str(), 1);
}

ScopedVariable::~ScopedVariable() {
    if (wasSet_) {
        setenv(name_, old_.c_str(), 1);
    } else {
        unsetenv(name_);
    }
}

Child::Child(const std::vector<std::string>& command, const std::string& outputFile) : pid_(0) {
    std::vector<char*> arguments;
    for (const auto& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int failed = posix_spawnp(&pid_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot start " + command.front());
    }
}

void Child::stop() {
    if (pid_ > 0) {
        kill(pid_, SIGTERM);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }
}

TemporaryFolder::TemporaryFolder() : path_("/tmp/desktop-test-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) {
        throw std::runtime_error("cannot make a folder");
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace tessarel::host
