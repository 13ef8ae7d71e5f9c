#include <gtest/gtest.h>

#include "fake_discs.h"
#include "host/cd/cd_players.h"
#include "host/cd/line_levels.h"
#include "real_time_scheduler.h"
#include "sound_server.h"

namespace tessarel::tests {
namespace {

using platform::Line;
using platform::LineLevel;
using platform::StereoLevel;
namespace deviceCodes = platform::deviceCodes;
using namespace std::chrono_literals;

class Levels : public ::testing::Test {
protected:
    void SetUp() override {
        drives.d.disc = std::make_shared<FakeMedium>(tocOf({{3000}}));
        ASSERT_FALSE(player->open('D', true));
        news = levels.watch(Line::disc, [this](const LineLevel& level) { told.push_back(level); });
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
    host::LineLevels levels{scheduler, sound};
    std::unique_ptr<platform::CdPlayer> player = players.make();
    std::vector<LineLevel> told;
    Subscription news;
};

TEST_F(Levels, ALevelSetWhilePlayingReachesTheMixerAndReadsBack) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{65535, 65535}));
    EXPECT_EQ(levels.setLevel(Line::disc, {32768, 16384}), deviceCodes::success);
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{32768, 16384}));
    EXPECT_TRUE(untilShown("front-left: 32768 /  50%")) << shown();
    EXPECT_NE(shown().find("front-right: 16384 /  25%"), std::string::npos) << shown();
    scheduler.runFor(50ms);
    EXPECT_TRUE(told.empty()) << "its own change is no news";
}

TEST_F(Levels, ALevelSetBeforeTheFirstSoundIsTheOneItStartsWith) {
    server.start();
    EXPECT_EQ(levels.setLevel(Line::disc, {0, 65535}), deviceCodes::success);
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{0, 65535}));
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_NE(shown().find("front-left: 0 "), std::string::npos) << shown();
    EXPECT_NE(shown().find("front-right: 65536 / 100%"), std::string::npos) << shown();
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{0, 65535}));
    EXPECT_TRUE(told.empty());
}

TEST_F(Levels, AChangeInTheDesktopsMixerIsTold) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    outputOf("pactl set-sink-input-volume " + index() + " 50% 25%");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told.back(), (LineLevel{{32768, 16384}, false}));
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{32768, 16384}));
}

TEST_F(Levels, AMuteInTheDesktopsMixerIsToldAndLiftedByALevel) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    ASSERT_EQ(levels.setLevel(Line::disc, {40000, 30000}), deviceCodes::success);
    scheduler.runFor(150ms);
    outputOf("pactl set-sink-input-mute " + index() + " 1");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told.back(), (LineLevel{{40000, 30000}, true}));
    EXPECT_EQ(levels.level(Line::disc), (LineLevel{{40000, 30000}, true}));
    levels.setLevel(Line::disc, {40000, 30000});
    EXPECT_TRUE(scheduler.runUntil([] { return outputOf("pactl list sink-inputs").find("Mute: no") != std::string::npos; }));
    EXPECT_TRUE(untilShown("front-left: 40000 "));
    scheduler.runFor(150ms);
    EXPECT_EQ(told.size(), 1U) << "its own change is no news";
    EXPECT_EQ(levels.level(Line::disc), (LineLevel{{40000, 30000}, false}));
}

TEST_F(Levels, AStreamThatIsKilledComesBackAtTheLevelAndMuteThatTheMixerGaveIt) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    const std::string before = index();
    outputOf("pactl set-sink-input-volume " + before + " 50% 25%; pactl set-sink-input-mute " + before + " 1");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty() && told.back().muted; }));
    outputOf("pactl unload-module module-null-sink");
    ASSERT_EQ(index(), "") << "the stream is gone with its sink";
    outputOf("pactl load-module module-null-sink sink_name=disc rate=44100 format=s16le channels=2 norewinds=1");
    ASSERT_TRUE(scheduler.runUntil([&] { return !index().empty() && index() != before; }));
    EXPECT_TRUE(untilShown("front-left: 32768 /  50%")) << shown();
    EXPECT_NE(outputOf("pactl list sink-inputs").find("Mute: yes"), std::string::npos);
    EXPECT_EQ(levels.level(Line::disc), (LineLevel{{32768, 16384}, true}));
}

TEST_F(Levels, AStreamThatIsMovedToAnotherOutputKeepsItsLevelAndFollowsFurtherOnes) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    levels.setLevel(Line::disc, {40000, 40000});
    ASSERT_TRUE(untilShown("front-left: 40000 "));
    outputOf("pactl load-module module-null-sink sink_name=other; pactl move-sink-input " + index() + " other");
    scheduler.runFor(100ms);
    EXPECT_TRUE(untilShown("front-left: 40000 "));
    levels.setLevel(Line::disc, {20000, 65535});
    EXPECT_TRUE(untilShown("front-left: 20000 "));
    outputOf("pactl set-sink-input-volume " + index() + " 50%");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty(); }));
    EXPECT_EQ(told, (std::vector<LineLevel>{{{32768, 32768}, false}}));
}

TEST_F(Levels, AServerThatStartsAnewPlaysAtTheLevelThatWasSetWhileItWasAway) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    server.kill();
    ASSERT_TRUE(scheduler.runUntil([&] { return !levels.level(Line::disc); }));
    EXPECT_EQ(levels.setLevel(Line::disc, {1234, 4321}), deviceCodes::notEnabled);
    server.start();
    EXPECT_TRUE(untilShown("front-left: 1234 "));
    EXPECT_EQ(levels.level(Line::disc), (LineLevel{{1234, 4321}, false}));
    EXPECT_TRUE(told.empty());
}

TEST_F(Levels, EachLineHasALevelAndListenersOfItsOwn) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    levels.setLevel(Line::wave, {1000, 1000});
    EXPECT_EQ(levels.streams(Line::wave).startLevel(), (LineLevel{{1000, 1000}, false}));
    EXPECT_EQ(levels.streams(Line::midi).startLevel(), std::nullopt);
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{65535, 65535}));
    std::vector<LineLevel> toldToo;
    const auto second = levels.watch(Line::disc, [&](const LineLevel& level) { toldToo.push_back(level); });
    const auto wave = levels.watch(Line::wave, [&](const LineLevel&) { FAIL() << "nothing has changed there"; });
    outputOf("pactl set-sink-input-volume " + index() + " 50%");
    ASSERT_TRUE(scheduler.runUntil([&] { return !told.empty() && !toldToo.empty(); }));
    EXPECT_EQ(told, toldToo);
}

TEST_F(Levels, AStreamOnAnotherConnectionFollowsItsLine) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    const auto number = static_cast<std::uint32_t>(std::stoul(index()));
    player->pause();
    levels.streams(Line::wave).streamStarted(number, 2);
    levels.setLevel(Line::wave, {20000, 10000});
    EXPECT_TRUE(untilShown("front-left: 20000 ")) << shown();
    levels.streams(Line::wave).streamGone(number);
}

TEST_F(Levels, ManyQuickChangesOfItsOwnAreNeverTakenForTheMixers) {
    server.start();
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    for (int i = 0; i < 300; ++i) {
        levels.setLevel(Line::disc, {i * 200, 65534 - i * 200});
        if (i % 10 == 0) {
            scheduler.runFor(1ms);
        }
    }
    scheduler.runFor(200ms);
    EXPECT_TRUE(told.empty());
    EXPECT_NE(shown().find("front-left: 59800 "), std::string::npos) << shown();
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{59800, 5734}));
}

TEST_F(Levels, WithoutASoundServerThereIsNoLevelButTheOneSetIsKept) {
    player->play(0);
    ASSERT_TRUE(untilPlaying());
    EXPECT_EQ(levels.level(Line::disc), tl::unexpected(deviceCodes::noDriver));
    EXPECT_EQ(levels.setLevel(Line::disc, {1000, 2000}), deviceCodes::notEnabled);
    server.start();
    ASSERT_TRUE(untilShown("front-left: 1000 "));
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{1000, 2000}));
}

TEST_F(Levels, ALevelOutsideTheScaleIsBroughtIntoIt) {
    levels.setLevel(Line::disc, {-5, 99999});
    EXPECT_EQ(levels.level(Line::disc)->level, (StereoLevel{0, 65535}));
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
