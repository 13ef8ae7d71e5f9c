#pragma once
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/file_system.h"
#include "platform/processes.h"

namespace tessarel::fakes {

struct StartedProgram {
    std::string commandLine;
    std::string directory;  ///< the current directory at that moment
    platform::WindowStyle style = platform::WindowStyle::normal;
    bool operator==(const StartedProgram&) const = default;
};

/// Keeps the command lines that it is given. Programs run until they have been asked for their exit code `pollsWhileActive`
/// times, and then report `exitCodeOf`, or 0.
class FakeProcesses : public platform::Processes {
public:
    explicit FakeProcesses(const platform::FileSystem& files) : files_(files) {}

    std::vector<StartedProgram> started;  ///< what could be started, in order; the first has id 1
    std::vector<std::string> refused;     ///< command lines that failed
    std::optional<Fault> failAll;
    std::map<std::string, Fault> failing;  ///< by the beginning of the command line, in small letters
    int pollsWhileActive = 0;
    std::map<platform::ProcessId, int> exitCodeOf;
    int polls = 0;
    /// Called when a program has been started.
    std::function<void(const StartedProgram&)> onStarted;

    struct Window {
        std::string windowClass;
        std::string caption;
    };
    std::vector<Window> openWindows;

    Result<platform::ProcessId> start(std::string_view commandLine, platform::WindowStyle style) override {
        if (const auto fault = faultFor(commandLine)) {
            refused.emplace_back(commandLine);
            return failure(*fault, "The program could not be started.");
        }
        started.push_back({std::string(commandLine), files_.currentDirectory(), style});
        if (onStarted) {
            onStarted(started.back());
        }
        return static_cast<platform::ProcessId>(started.size());
    }
    int exitCode(platform::ProcessId id) override {
        ++polls;
        if (pollsDone_[id]++ < pollsWhileActive) {
            return platform::stillActive;
        }
        const auto it = exitCodeOf.find(id);
        return it == exitCodeOf.end() ? 0 : it->second;
    }
    bool findWindow(std::string_view windowClass, std::string_view caption) const override {
        for (const auto& window : openWindows) {
            if (windowClass.empty() ? window.caption == caption : window.windowClass == windowClass) {
                return true;
            }
        }
        return false;
    }

    /// The last command line started; empty when there was none.
    std::string lastCommand() const { return started.empty() ? std::string() : started.back().commandLine; }

private:
    std::optional<Fault> faultFor(std::string_view commandLine) const {
        for (const auto& [beginning, fault] : failing) {
            if (text::lower(commandLine).starts_with(beginning)) {
                return fault;
            }
        }
        return failAll;
    }

    const platform::FileSystem& files_;
    std::map<platform::ProcessId, int> pollsDone_;
};

}  // namespace tessarel::fakes
