#include "sound_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

#include "fake_discs.h"

namespace tessarel::tests {
namespace {

using namespace std::chrono_literals;

template <class Condition>
bool waitUntil(Condition condition) {
    for (int i = 0; i < 1000; ++i) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(5ms);
    }
    return false;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::string& outputFile) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    pid_ = ::fork();
    if (pid_ == 0) {
        const int output = ::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        const int nothing = ::open("/dev/null", O_RDWR);
        ::dup2(nothing, 0);
        ::dup2(output, 1);
        ::dup2(nothing, 2);
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept : pid_(std::exchange(other.pid_, -1)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    std::swap(pid_, other.pid_);
    return *this;
}

void ChildProcess::end(int signal) {
    if (pid_ > 0) {
        ::kill(pid_, signal);
        ::kill(pid_, SIGCONT);
        ::waitpid(pid_, nullptr, 0);
        pid_ = -1;
    }
}

void ChildProcess::send(int signal) const {
    if (pid_ > 0) {
        ::kill(pid_, signal);
    }
}

std::string outputOf(const std::string& command) {
    std::string text;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) {
        return text;
    }
    char piece[512];
    while (const std::size_t count = ::fread(piece, 1, sizeof piece, pipe)) {
        text.append(piece, count);
    }
    ::pclose(pipe);
    return text;
}

SoundServer::SoundServer() {
    std::string pattern = (std::filesystem::temp_directory_path() / "disc-sound-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    ::setenv("PULSE_SERVER", ("unix:" + (folder_ / "native").string()).c_str(), 1);
    ::setenv("PULSE_COOKIE", (folder_ / "cookie").c_str(), 1);
}

SoundServer::~SoundServer() {
    kill();
    std::filesystem::remove_all(folder_);
}

void SoundServer::start() {
    const std::string home = folder_.string();
    const std::string protocol = "module-native-protocol-unix socket=" + home + "/native auth-anonymous=1";
    const std::string sink = std::string("module-null-sink sink_name=disc rate=44100 format=s16le channels=2") +
                             " channel_map=front-left,front-right norewinds=1";
    server_ = ChildProcess({"env", "HOME=" + home, "XDG_RUNTIME_DIR=" + home, "pulseaudio", "-n", "--daemonize=no",
                            "--use-pid-file=no", "--exit-idle-time=-1", "--disallow-exit", "-L", protocol, "-L", sink});
    ASSERT_TRUE(waitUntil([] { return outputOf("pactl list short sinks 2>/dev/null").find("disc") != std::string::npos; }))
        << "the sound server does not start";
}

void SoundServer::kill() {
    server_.end(SIGKILL);
    std::filesystem::remove(folder_ / "native");
}

Recording::Recording(const SoundServer& server)
    : file_(server.folder() / "recording.raw"),
      recorder_(
          ((void)std::filesystem::remove(file_), ChildProcess({"parec", "-d", "disc.monitor", "--rate=44100", "--channels=2",
                                                               "--format=s16le", "--raw", "--latency-msec=20"},
                                                              file_.string()))) {
    EXPECT_TRUE(waitUntil([this] { return std::filesystem::exists(file_) && std::filesystem::file_size(file_) > 0; }))
        << "nothing is recorded";
}

std::vector<std::int16_t> Recording::values() const {
    std::ifstream file(file_, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<std::int16_t> values;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 2) {
        values.push_back(
            static_cast<std::int16_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8));
    }
    return values;
}

std::vector<std::int64_t> Recording::samples() const {
    const auto both = values();
    std::vector<std::int64_t> numbers;
    for (std::size_t at = 0; at + 1 < both.size(); at += 2) {
        numbers.push_back(numberOf(both[at], both[at + 1]));
    }
    return numbers;
}

std::vector<std::int16_t> Recording::left() const {
    const auto both = values();
    std::vector<std::int16_t> left;
    for (std::size_t at = 0; at + 1 < both.size(); at += 2) {
        left.push_back(both[at]);
    }
    return left;
}

std::vector<std::int64_t> Recording::music() const {
    std::vector<std::int64_t> numbers = samples();
    std::erase(numbers, -1);
    return numbers;
}

bool isUnbroken(const std::vector<std::int64_t>& numbers) {
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        if (numbers[i] != numbers[i - 1] + 1) {
            return false;
        }
    }
    return true;
}

}  // namespace tessarel::tests
