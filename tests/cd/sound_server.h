#pragma once
#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tessarel::tests {

/// A program started in the background, and ended with this object.
class ChildProcess {
public:
    ChildProcess() = default;
    explicit ChildProcess(const std::vector<std::string>& command, const std::string& outputFile = "/dev/null");
    ~ChildProcess() { end(9); }
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;

    void end(int signal);
    void send(int signal) const;
    bool running() const { return pid_ > 0; }

private:
    pid_t pid_ = -1;
};

/// Runs a program and returns what it printed.
std::string outputOf(const std::string& command);

/// A sound server of the test's own, with a silent sink that can be listened to. While it lives PULSE_SERVER names it, whether
/// it runs or not.
class SoundServer {
public:
    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    void start();
    void kill();
    void freeze() const { server_.send(19); }
    void thaw() const { server_.send(18); }
    const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
    ChildProcess server_;
};

/// Records what a server's sink plays.
class Recording {
public:
    explicit Recording(const SoundServer& server);
    /// The numbers of the samples heard so far, silence as -1.
    std::vector<std::int64_t> samples() const;
    /// The left channel heard so far.
    std::vector<std::int16_t> left() const;
    /// The same without silence.
    std::vector<std::int64_t> music() const;

private:
    std::vector<std::int16_t> values() const;

    std::filesystem::path file_;
    ChildProcess recorder_;
};

/// Whether numbers follow each other without a step.
bool isUnbroken(const std::vector<std::int64_t>& numbers);

}  // namespace tessarel::tests
