#include "app/playing_on.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>

#include "tests/desktop/servers.h"

namespace tessarel::app {
namespace {

using namespace std::chrono_literals;

class PlayingOnTest : public ::testing::Test {
protected:
    std::filesystem::path home() const { return folder_.file(""); }
    std::filesystem::path mark() const { return home() / "playing-on"; }

    /// A process that bears the mark until it is told to end.
    pid_t startBearer() const {
        const pid_t child = fork();
        if (child == 0) {
            const auto marked = std::make_unique<PlayingOn>(home());
            for (;;) {
                pause();
            }
        }
        while (!std::filesystem::exists(mark()) || std::filesystem::file_size(mark()) == 0) {
            usleep(1000);
        }
        return child;
    }

    host::TemporaryFolder folder_;
};

TEST_F(PlayingOnTest, AProcessThatPlaysOnIsToldToEnd) {
    const auto bearer = startBearer();
    endPlayingOn(home());
    int status = 0;
    ASSERT_EQ(waitpid(bearer, &status, 0), bearer);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
}

TEST_F(PlayingOnTest, WithoutAMarkNothingHappens) {
    endPlayingOn(home());
    EXPECT_FALSE(std::filesystem::exists(mark()));
}

TEST_F(PlayingOnTest, AMarkThatWasLeftBehindKillsNobody) {
    const pid_t bystander = fork();
    if (bystander == 0) {
        for (;;) {
            pause();
        }
    }
    std::ofstream(mark()) << bystander;
    endPlayingOn(home());
    EXPECT_EQ(waitpid(bystander, nullptr, WNOHANG), 0);
    kill(bystander, SIGKILL);
    waitpid(bystander, nullptr, 0);
}

TEST_F(PlayingOnTest, AMarkOfNonsenseIsPassedOver) {
    // Held by a living process, so that its number would be taken if it were one.
    const int held = ::open(mark().c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::write(held, "-1 nobody", 9), 9);
    ASSERT_EQ(::flock(held, LOCK_EX | LOCK_NB), 0);
    const auto before = std::chrono::steady_clock::now();
    endPlayingOn(home());
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(4)) << "nobody to wait for";
    EXPECT_TRUE(std::filesystem::exists(mark()));
    ::close(held);
}

TEST_F(PlayingOnTest, TheMarkGoesWithItsObject) {
    { const PlayingOn marked(home()); }
    EXPECT_FALSE(std::filesystem::exists(mark()));
}

TEST_F(PlayingOnTest, AHomeThatIsNotThereBearsNoMark) {
    const PlayingOn marked(home() / "missing");
    EXPECT_FALSE(std::filesystem::exists(home() / "missing"));
}

}  // namespace
}  // namespace tessarel::app
