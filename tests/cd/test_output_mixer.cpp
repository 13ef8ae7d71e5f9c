#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_discs.h"
#include "host/cd/cd_players.h"
#include "host/cd/output_mixer.h"
#include "real_time_scheduler.h"
#include "sound_server.h"

namespace tessarel::tests {
namespace {

using host::OutputMixer;
using platform::OutputLevel;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

TEST(StepWords, EveryStepComesBackAndTheEndsAndTheMiddleAreExact) {
    EXPECT_EQ(host::volumeOfStep(0), PA_VOLUME_MUTED);
    EXPECT_EQ(host::volumeOfStep(125), PA_VOLUME_NORM / 2);
    EXPECT_EQ(host::volumeOfStep(250), PA_VOLUME_NORM);
    EXPECT_EQ(host::volumeOfStep(251), PA_VOLUME_NORM);
    EXPECT_EQ(host::stepOfVolume(PA_VOLUME_NORM * 3 / 2), 250) << "louder than full is full";
    for (int step = 0; step <= 250; ++step) {
        EXPECT_EQ(host::stepOfVolume(host::volumeOfStep(step)), step);
    }
}

class Output : public ::testing::Test {
protected:
    static std::string shown(const std::string& what = "volume") {
        return outputOf("pactl get-sink-" + what + " @DEFAULT_SINK@");
    }
    bool untilShown(const std::string& text, const std::string& what = "volume") {
        return scheduler.runUntil([&] { return shown(what).find(text) != std::string::npos; });
    }
    bool untilTold(std::size_t count) {
        return scheduler.runUntil([&] { return told.size() >= count; });
    }

    SoundServer server;
    RealTimeScheduler scheduler;
    host::SoundOutput sound;
    OutputMixer mixer{scheduler, sound};
    std::vector<OutputLevel> told;
    Subscription news = mixer.watch([this](const OutputLevel& level) { told.push_back(level); });
};

TEST_F(Output, TakesItsStepWithoutNewsOfItsOwnChange) {
    server.start();
    mixer.setStep(125);
    EXPECT_TRUE(untilShown("front-left: 32768 /  50%")) << shown();
    for (int step = 0; step < 200; ++step) {
        mixer.setStep(step);
    }
    EXPECT_TRUE(untilShown("front-left: 52167 ")) << shown();
    scheduler.runFor(100ms);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Output, KeepsTheBalanceAtAStepUntilItIsCentred) {
    server.start();
    outputOf("pactl set-sink-volume disc 80% 40%");
    mixer.setStep(125);
    EXPECT_TRUE(untilShown("front-left: 32768 /  50%"));
    EXPECT_NE(shown().find("front-right: 16384 /  25%"), std::string::npos) << shown();
    mixer.centreBalance();
    EXPECT_TRUE(untilShown("front-right: 32768 /  50%")) << shown();
    EXPECT_NE(shown().find("front-left: 32768 /  50%"), std::string::npos) << shown();
}

TEST_F(Output, ComesDownToFullFromBeyondIt) {
    server.start();
    outputOf("pactl set-sink-volume disc 140%");
    mixer.setStep(250);
    EXPECT_TRUE(untilShown("front-left: 65536 / 100%")) << shown();
}

TEST_F(Output, IsMutedAndHeardAgain) {
    server.start();
    mixer.setMuted(true);
    EXPECT_TRUE(untilShown("Mute: yes", "mute"));
    mixer.setMuted(false);
    EXPECT_TRUE(untilShown("Mute: no", "mute"));
    scheduler.runFor(100ms);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Output, TellsWhatTheDesktopsOwnControlDoes) {
    server.start();
    mixer.setStep(250);
    mixer.setMuted(false);
    ASSERT_TRUE(untilShown("100%"));
    scheduler.runFor(50ms);
    outputOf("pactl set-sink-volume disc 50% 10%");
    ASSERT_TRUE(untilTold(1));
    outputOf("pactl set-sink-mute disc 1");
    ASSERT_TRUE(untilTold(2));
    EXPECT_THAT(told, ElementsAre(OutputLevel{125, false}, OutputLevel{125, true}));
}

TEST_F(Output, FollowsTheDefaultToAnotherOutput) {
    server.start();
    mixer.setStep(200);
    ASSERT_TRUE(untilShown("80%"));
    outputOf("pactl load-module module-null-sink sink_name=other; pactl set-sink-volume other 40%");
    scheduler.runFor(100ms);
    EXPECT_THAT(told, IsEmpty()) << "that is not the default one";
    outputOf("pactl set-default-sink other");
    ASSERT_TRUE(untilTold(1));
    EXPECT_THAT(told, ElementsAre(OutputLevel{100, false}));
    mixer.setStep(50);
    EXPECT_TRUE(untilShown("20%"));
    EXPECT_NE(outputOf("pactl get-sink-volume disc").find("80%"), std::string::npos) << "the old one is left alone";
}

TEST_F(Output, WithoutAServerForgetsWhatWasAsked) {
    mixer.setStep(25);
    ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::missing; }));
    server.start();
    sound.connect();
    ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::ready; }));
    ASSERT_TRUE(untilTold(1));
    EXPECT_THAT(told, ElementsAre(OutputLevel{250, false})) << "the server's own level, which the sliders then show";
    EXPECT_NE(shown().find("100%"), std::string::npos);
}

TEST_F(Output, OfAServerThatHangsHoldsUpNoCall) {
    server.start();
    mixer.setStep(125);
    ASSERT_TRUE(untilShown("50%"));
    server.freeze();
    const auto began = scheduler.now();
    for (int step = 0; step < 50; ++step) {
        mixer.setStep(step);
        mixer.setMuted(step % 2 == 0);
    }
    EXPECT_LT(scheduler.now() - began, 200ms);
    server.thaw();
    EXPECT_TRUE(untilShown("20%")) << shown();
    EXPECT_TRUE(untilShown("Mute: no", "mute"));
}

TEST_F(Output, KnowsHowItStands) {
    server.start();
    EXPECT_EQ(mixer.level(), (OutputLevel{250, false})) << "before a first change nothing is known";
    mixer.setStep(125);
    mixer.setMuted(true);
    EXPECT_EQ(mixer.level(), (OutputLevel{125, true})) << "what is set counts at once";
    ASSERT_TRUE(untilShown("50%"));
    scheduler.runFor(100ms);
    outputOf("pactl set-sink-volume disc 20%");
    ASSERT_TRUE(untilTold(1));
    EXPECT_EQ(mixer.level(), (OutputLevel{50, true}));
}

TEST(OutputAtTheEnd, LeavesANewServersOutputAloneThoughItGlidedOnAnOldOne) {
    SoundServer server;
    server.start();
    {
        RealTimeScheduler scheduler;
        host::SoundOutput sound;
        OutputMixer mixer(scheduler, sound);
        mixer.setStep(250);
        ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::ready; }));
        scheduler.runFor(100ms);
        server.freeze();  // the glide is under way when the server goes
        mixer.setStep(25);
        server.thaw();
        scheduler.runFor(10ms);
        server.kill();
        ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::missing; }));
        server.start();
        sound.connect();
        ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::ready; }));
    }
    EXPECT_NE(outputOf("pactl get-sink-volume disc").find("100%"), std::string::npos);
}

TEST_F(Output, IsNotAskedForBeforeAFirstChange) {
    server.start();
    scheduler.runFor(50ms);
    EXPECT_EQ(sound.server(), host::SoundOutput::Server::untried);
}

TEST(OutputAtTheEnd, TakesTheLastChangesOfAProgramThatEnds) {
    SoundServer server;
    server.start();
    outputOf("pactl set-sink-mute disc 1");
    {
        RealTimeScheduler scheduler;
        host::SoundOutput sound;
        OutputMixer mixer(scheduler, sound);
        mixer.setStep(125);
        ASSERT_TRUE(scheduler.runUntil([&] { return sound.server() == host::SoundOutput::Server::ready; }));
        mixer.setMuted(false);
        mixer.setStep(50);
    }
    EXPECT_NE(outputOf("pactl get-sink-volume disc").find("13107 /  20%"), std::string::npos);
    EXPECT_NE(outputOf("pactl get-sink-mute disc").find("no"), std::string::npos);
}

}  // namespace
}  // namespace tessarel::tests
