#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "fake_discs.h"
#include "host/cd/cd_players.h"
#include "host/cd/level_ramp.h"
#include "host/cd/line_levels.h"
#include "host/cd/output_mixer.h"
#include "real_time_scheduler.h"
#include "sound_server.h"

namespace tessarel::tests {
namespace {

using host::LevelRamp;
using platform::Line;
using platform::StereoLevel;
using namespace std::chrono_literals;

std::vector<StereoLevel> way(LevelRamp& ramp) {
    std::vector<StereoLevel> levels;
    while (ramp.moving()) {
        levels.push_back(ramp.step());
    }
    return levels;
}

double swing(std::int32_t level) { return std::pow(level / 65535.0, 3); }

TEST(LevelRamp, ArrivesExactlyAfterItsSteps) {
    for (const auto pace : {LevelRamp::Pace::gentle, LevelRamp::Pace::even}) {
        LevelRamp ramp;
        ramp.aim({12345, 0}, pace);
        const auto levels = way(ramp);
        EXPECT_EQ(levels.size(), pace == LevelRamp::Pace::gentle ? LevelRamp::gentleSteps : LevelRamp::evenSteps);
        EXPECT_EQ(levels.back(), (StereoLevel{12345, 0}));
        EXPECT_EQ(ramp.now(), (StereoLevel{12345, 0}));
        EXPECT_EQ(ramp.step(), (StereoLevel{12345, 0})) << "and stays there";
    }
}

TEST(LevelRamp, SwingsInEqualStepsAtAnEvenPace) {
    LevelRamp ramp;
    ramp.set({0, 65535});
    ramp.aim({65535, 65535}, LevelRamp::Pace::even);
    double before = 0;
    for (const auto& level : way(ramp)) {
        EXPECT_NEAR(swing(level.left) - before, 1.0 / LevelRamp::evenSteps, 0.0002);
        EXPECT_EQ(level.right, 65535) << "a channel that need not move does not";
        before = swing(level.left);
    }
}

TEST(LevelRamp, SetsOutGentlyWhereStepsMayFallTogether) {
    LevelRamp ramp;
    ramp.aim({0, 0}, LevelRamp::Pace::gentle);
    const auto levels = way(ramp);
    EXPECT_LT(levels.front().left, 65535) << "the first step is a change already";
    constexpr int piece = 20 / LevelRamp::stepMs;
    EXPECT_LT(1 - swing(levels[piece - 1].left), 0.12);
    for (std::size_t i = 1; i < levels.size(); ++i) {
        EXPECT_LT(levels[i].left, levels[i - 1].left);
        EXPECT_LT(swing(levels[i - 1].left) - swing(levels[i].left), 0.07);
    }
}

TEST(LevelRamp, TakesANewTargetUpFromWhereItStands) {
    LevelRamp ramp;
    ramp.aim({0, 0}, LevelRamp::Pace::even);
    ramp.step();
    const auto turned = ramp.step();
    ramp.aim({65535, 65535}, LevelRamp::Pace::even);
    EXPECT_GT(ramp.step().left, turned.left);
    EXPECT_EQ(way(ramp).back(), (StereoLevel{65535, 65535}));
}

TEST(LevelRamp, HasNowhereToGoWhenItIsThereAlready) {
    LevelRamp ramp;
    ramp.set({5, 6});
    ramp.aim({5, 6}, LevelRamp::Pace::gentle);
    EXPECT_FALSE(ramp.moving());
}

constexpr std::int16_t loud = 32000;

/// A disc of one steady, loud value: any change of the level is a step in it, and a gap in the sound is a zero.
class SteadyMedium : public FakeMedium {
public:
    SteadyMedium() : FakeMedium(tocOf({{3000}})) {}
    Result<void> readAudio(Frames /*from*/, int count, std::int16_t* samples) override {
        std::fill_n(samples, static_cast<std::size_t>(count) * host::samplesPerFrame * 2, loud);
        return {};
    }
};

class Gliding : public ::testing::Test {
protected:
    void SetUp() override {
        drives.d.disc = std::make_shared<SteadyMedium>();
        ASSERT_FALSE(player->open('D', true));
        server.start();
        player->play(0);
        recording.emplace(server);
        ASSERT_TRUE(scheduler.runUntil([&] { return player->position() > 20 && recording->left().back() == loud; }));
    }
    /// Sets a level, waits until it has arrived, and returns what was recorded meanwhile.
    template <class Set>
    std::vector<std::int16_t> change(Set set) {
        const std::size_t before = recording->left().size();
        set();
        scheduler.runFor(250ms);
        const auto all = recording->left();
        return {all.begin() + static_cast<std::ptrdiff_t>(before) - 1, all.end()};
    }
    std::chrono::milliseconds untilFirstChange(StereoLevel level) {
        const auto all = recording->left();
        const auto steady = all.back();
        const auto began = scheduler.now();
        levels.setLevel(Line::disc, level);
        EXPECT_TRUE(scheduler.runUntil([&] {
            const auto now = recording->left();
            return std::any_of(now.begin() + static_cast<std::ptrdiff_t>(all.size()), now.end(),
                               [steady](std::int16_t value) { return value != steady; });
        }));
        return scheduler.now() - began;
    }

    SoundServer server;
    RealTimeScheduler scheduler;
    FakeDrives drives;
    host::SoundOutput sound;
    host::DiscPlayers players{scheduler, drives, sound};
    host::LineLevels levels{scheduler, sound};
    std::unique_ptr<platform::CdPlayer> player = players.make();
    std::optional<Recording> recording;
};

int largestJump(const std::vector<std::int16_t>& values) {
    int largest = 0;
    for (std::size_t i = 1; i < values.size(); ++i) {
        largest = std::max(largest, std::abs(values[i] - values[i - 1]));
    }
    return largest;
}

TEST_F(Gliding, AChangeIsHeardWithinFiftyMilliseconds) {
    std::vector<std::chrono::milliseconds> took;
    for (const std::int32_t level : {20000, 65535, 0, 40000, 65535}) {
        took.push_back(untilFirstChange({level, level}));
        scheduler.runFor(500ms);
    }
    std::sort(took.begin(), took.end());
    EXPECT_LT(took[took.size() / 2], 50ms) << "the longest took " << took.back().count() << " ms";
}

TEST_F(Gliding, AChangeHasNoJumpAsAChangeInTheServerHas) {
    std::vector<int> jumps;
    for (int i = 0; i < 3; ++i) {
        jumps.push_back(largestJump(change([&] { levels.setLevel(Line::disc, {0, 0}); })));
        jumps.push_back(largestJump(change([&] { levels.setLevel(Line::disc, {65535, 65535}); })));
    }
    std::sort(jumps.begin(), jumps.end());
    const auto abrupt = change([&] { outputOf("pactl set-sink-input-volume 0 0%"); });
    EXPECT_EQ(largestJump(abrupt), loud) << "what it is measured against";
    EXPECT_LT(jumps[jumps.size() / 2], loud / 5) << "of the full swing";
    EXPECT_LT(jumps.back(), loud / 2);
}

TEST_F(Gliding, AChangeOfTheDefaultOutputHasNoJumpEither) {
    host::OutputMixer mixer(scheduler, sound);
    std::vector<int> jumps;
    for (int i = 0; i < 2; ++i) {
        jumps.push_back(largestJump(change([&] { mixer.setStep(50); })));
        jumps.push_back(largestJump(change([&] { mixer.setStep(250); })));
    }
    std::sort(jumps.begin(), jumps.end());
    EXPECT_LT(jumps[1], loud / 4);
    EXPECT_LT(jumps.back(), loud / 2);
    EXPECT_EQ(recording->left().back(), loud);
}

TEST_F(Gliding, AHandOnTheSliderIsFollowedWithoutAGapInTheSound) {
    const auto began = scheduler.now();
    const auto from = player->position();
    const auto heard = change([&] {
        for (int i = 0; i < 250; ++i) {
            const std::int32_t level = 65535 - 32768 * std::abs(i % 100 - 50) / 50;
            levels.setLevel(Line::disc, {level, level});
            scheduler.runFor(12ms);
        }
        levels.setLevel(Line::disc, {65535, 65535});
    });
    EXPECT_NEAR(player->position() - from, std::chrono::duration<double>(scheduler.now() - began).count() * 75, 8);
    EXPECT_EQ(heard.back(), loud);
    EXPECT_LT(*std::min_element(heard.begin(), heard.end()), loud / 4) << "it has followed down";
    EXPECT_GE(*std::min_element(heard.begin(), heard.end()), loud / 8 - 50) << "and was never silent";
    EXPECT_LT(largestJump(heard), loud / 3);
}

/// One run of the program, from its first sound to its end.
struct ProgramRun {
    explicit ProgramRun(FakeDrives& drives) : players(scheduler, drives, sound) {
        EXPECT_FALSE(player->open('D', true));
        player->play(0);
        EXPECT_TRUE(scheduler.runUntil([&] { return player->position() > 20; }));
    }

    RealTimeScheduler scheduler;
    host::SoundOutput sound;
    host::DiscPlayers players;
    host::LineLevels levels{scheduler, sound};
    std::unique_ptr<platform::CdPlayer> player = players.make();
};

TEST_F(Gliding, ALevelSetWhileTheProgramEndsIsWhatTheServerRemembers) {
    player.reset();
    scheduler.runFor(400ms);
    ASSERT_FALSE(outputOf("pactl load-module module-stream-restore").empty());
    {
        ProgramRun muted(drives);
        muted.levels.setLevel(Line::disc, {0, 0});
        muted.scheduler.runFor(400ms);
        muted.player->close();
        muted.levels.setLevel(Line::disc, {60000, 50000});
    }
    ProgramRun next(drives);
    EXPECT_TRUE(next.scheduler.runUntil(
        [&] {
            return next.levels.level(Line::disc)->level == StereoLevel{60000, 50000};
        },
        2s))
        << next.levels.level(Line::disc)->level.left;
}

}  // namespace
}  // namespace tessarel::tests
