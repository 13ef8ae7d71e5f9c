#include <gtest/gtest.h>

#include "fake_discs.h"
#include "host/cd/cd_players.h"
#include "host/cd/disc_levels.h"
#include "real_time_scheduler.h"
#include "sound_server.h"

namespace tessarel::tests {
namespace {

using platform::StereoLevel;
using namespace std::chrono_literals;

class Levels : public ::testing::Test {
protected:
    void SetUp() override {
        drives.d.disc = std::make_shared<FakeMedium>(tocOf({{3000}}));
        ASSERT_FALSE(player->open('D', true));
        levels.onDiscLevelChanged = [this](StereoLevel level) { told.push_back(level); };
    }
    bool untilPlaying() {
        return scheduler.runUntil([&] { return player->position() > 10; });
    }
    static std::string shown() { return outputOf("pactl list sink-inputs | grep Volume:"); }
    static std::string index() { return outputOf("pactl list short sink-inputs | cut -f1 | tr -d '\\n'"); }
    bool untilShown(const std::string& text) {
        return scheduler.runUntil([&] { return shown().find(text) != std::string::npos; });
    }

    SoundServer server;
    RealTimeScheduler scheduler;
    FakeDrives drives;
    host::SoundOutput sound;
    host::DiscPlayers players{scheduler, drives, sound};
    host::DiscLevels levels{scheduler, sound};
    std::unique_ptr<platform::CdPlayer> player = players.make();
    std::vector<StereoLevel> told;
};

TEST_F(Levels, ALevelSetWhilePlayingReachesTheMixerAndReadsBack) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_EQ(levels.discLevel(), (StereoLevel{65535, 65535}));
    EXPECT_TRUE(levels.setDiscLevel({32768, 16384}));
    EXPECT_EQ(levels.discLevel(), (StereoLevel{32768, 16384}));
    EXPECT_TRUE(untilShown("front-left: 32768 /  50%")) << shown();
    EXPECT_NE(shown().find("front-right: 16384 /  25%"), std::string::npos) << shown();
    scheduler.runFor(50ms);
    EXPECT_TRUE(told.empty()) << "its own change is no news";
}

TEST_F(Levels, ALevelSetBeforeTheFirstSoundIsTheOneItStartsWith) {
    server.start();
    EXPECT_TRUE(levels.setDiscLevel({0, 65535}));
    EXPECT_EQ(levels.discLevel(), (StereoLevel{0, 65535}));
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_NE(shown().find("front-left: 0 "), std::string::npos) << shown();
    EXPECT_NE(shown().find("front-right: 65536 / 100%"), std::string::npos) << shown();
    EXPECT_EQ(levels.discLevel(), (StereoLevel{0, 65535}));
    EXPECT_TRUE(told.empty());
}

TEST_F(Levels, AChangeInTheDesktopsMixerIsTold) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    outputOf("pactl set-sink-input-volume " + index() + " 50% 25%");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told.back(), (StereoLevel{32768, 16384}));
    EXPECT_EQ(levels.discLevel(), (StereoLevel{32768, 16384}));
}

TEST_F(Levels, ManyQuickChangesOfItsOwnAreNeverTakenForTheMixers) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    for (int i = 0; i < 300; ++i) {
        levels.setDiscLevel({i * 200, 65534 - i * 200});
        if (i % 10 == 0) {
            scheduler.runFor(1ms);
        }
    }
    scheduler.runFor(200ms);
    EXPECT_TRUE(told.empty());
    EXPECT_NE(shown().find("front-left: 59800 "), std::string::npos) << shown();
    EXPECT_EQ(levels.discLevel(), (StereoLevel{59800, 5734}));
}

TEST_F(Levels, WithoutASoundServerThereIsNoLevelButTheOneSetIsKept) {
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_EQ(levels.discLevel(), std::nullopt);
    EXPECT_FALSE(levels.setDiscLevel({1000, 2000}));
    server.start();
    ASSERT_TRUE(untilShown("front-left: 1000 "));
    EXPECT_EQ(levels.discLevel(), (StereoLevel{1000, 2000}));
}

TEST_F(Levels, ALevelOutsideTheScaleIsBroughtIntoIt) {
    levels.setDiscLevel({-5, 99999});
    EXPECT_EQ(levels.discLevel(), (StereoLevel{0, 65535}));
}

TEST_F(Levels, TheStreamBearsTheProgramsName) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    const std::string properties = outputOf("pactl list sink-inputs");
    EXPECT_NE(properties.find("application.name = \"Tessarel\""), std::string::npos);
    EXPECT_NE(properties.find("media.role = \"music\""), std::string::npos);
    EXPECT_NE(properties.find("application.icon_name = \"tessarel\""), std::string::npos);
}

}  // namespace
}  // namespace tessarel::tests
