#include "app/playing_on.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <chrono>
#include <string>
#include <system_error>
#include <thread>

namespace tessarel::app {
namespace {

using namespace std::chrono_literals;

std::filesystem::path markOf(const std::filesystem::path& home) { return home / "playing-on"; }

// The process number in a mark; 0 when there is none that could be another process of the user.
pid_t bearer(int file) {
    std::array<char, 32> text{};
    const auto length = pread(file, text.data(), text.size(), 0);
    pid_t id = 0;
    if (length > 0) {
        std::from_chars(text.data(), text.data() + length, id);
    }
    return id > 1 && id != getpid() ? id : 0;
}

}  // namespace

PlayingOn::PlayingOn(const std::filesystem::path& home) : mark_(markOf(home)) {
    file_ = open(mark_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    const auto id = std::to_string(getpid());
    const bool marked = file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) == 0 && ftruncate(file_, 0) == 0 &&
                        pwrite(file_, id.data(), id.size(), 0) == static_cast<ssize_t>(id.size());
    if (!marked && file_ >= 0) {
        close(file_);
        file_ = -1;
    }
}

PlayingOn::~PlayingOn() {
    if (file_ >= 0) {
        unlink(mark_.c_str());
        close(file_);
    }
}

void endPlayingOn(const std::filesystem::path& home) {
    const int file = open(markOf(home).c_str(), O_RDWR | O_CLOEXEC);
    if (file < 0) {
        return;
    }
    // Only a living process holds the lock, so the number in the mark is its own.
    bool held = flock(file, LOCK_SH | LOCK_NB) != 0;
    if (const auto id = bearer(file); held && id != 0 && kill(id, SIGTERM) == 0) {
        const auto end = std::chrono::steady_clock::now() + 2s;
        while (held && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(10ms);
            held = flock(file, LOCK_SH | LOCK_NB) != 0;
        }
    }
    close(file);
}

}  // namespace tessarel::app
