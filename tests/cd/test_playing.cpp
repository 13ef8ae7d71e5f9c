#include <gtest/gtest.h>

#include <numeric>

#include "fake_discs.h"
#include "host/cd/cd_players.h"
#include "real_time_scheduler.h"
#include "sound_server.h"

namespace tessarel::tests {
namespace {

using host::DiscPlayers;
using host::SoundOutput;
using platform::CdEnding;
using platform::CdState;
using namespace std::chrono_literals;

std::int64_t sampleOf(Frames frame) { return static_cast<std::int64_t>(frame) * host::samplesPerFrame; }

std::vector<std::int64_t> numbersBetween(Frames from, Frames to) {
    std::vector<std::int64_t> numbers(static_cast<std::size_t>(sampleOf(to - from)));
    std::iota(numbers.begin(), numbers.end(), sampleOf(from));
    return numbers;
}

/// A player at a drive, with a sound server that the test starts or leaves out.
class Playing : public ::testing::Test {
protected:
    void insert(const std::vector<FakeTrack>& tracks) {
        disc = std::make_shared<FakeMedium>(tocOf(tracks));
        drives.d.disc = disc;
    }
    void open() {
        ASSERT_FALSE(player->open('D', false));
        player->onEnded = [this](CdEnding ending) { endings.push_back(ending); };
    }
    bool untilEnded(std::chrono::milliseconds limit = 10s) {
        return scheduler.runUntil([&] { return !endings.empty(); }, limit);
    }
    bool untilPosition(Frames frame) {
        return scheduler.runUntil([&] { return player->position() >= frame; });
    }
    bool untilHeard(const Recording& recording, std::size_t samples) {
        return scheduler.runUntil([&] { return recording.music().size() >= samples; });
    }
    /// The end of a recording lies in the recorder's pipe for a moment.
    std::vector<std::int64_t> musicOnceSettled(const Recording& recording) {
        scheduler.runFor(150ms);
        return recording.music();
    }

    SoundServer server;
    RealTimeScheduler scheduler;
    FakeDrives drives;
    std::shared_ptr<FakeMedium> disc;
    SoundOutput sound;
    DiscPlayers players{scheduler, drives, sound};
    std::unique_ptr<platform::CdPlayer> player = players.make();
    std::vector<CdEnding> endings;
};

class PlayingAloud : public Playing {
protected:
    void SetUp() override { server.start(); }
};

TEST_F(PlayingAloud, AWholeDiscIsHeardToTheSampleAcrossItsTracks) {
    const Recording recording(server);
    insert({{40}, {1}, {30}, {29}});
    open();
    player->play(0);
    EXPECT_EQ(player->state(), CdState::playing);
    ASSERT_TRUE(untilEnded());
    EXPECT_EQ(endings, std::vector{CdEnding::endOfDisc});
    EXPECT_EQ(player->state(), CdState::stopped);
    EXPECT_EQ(player->position(), 100);
    EXPECT_EQ(musicOnceSettled(recording), numbersBetween(0, 100));
    EXPECT_EQ(endings.size(), 1U);
}

TEST_F(PlayingAloud, TheEndIsToldOnlyWhenTheLastSampleHasBeenHeard) {
    const Recording recording(server);
    insert({{60}});
    open();
    const auto start = scheduler.now();
    player->play(0);
    ASSERT_TRUE(untilEnded());
    EXPECT_GE(scheduler.now() - start, 780ms);
    EXPECT_EQ(musicOnceSettled(recording).size(), static_cast<std::size_t>(sampleOf(60)));
}

TEST_F(PlayingAloud, DataTracksAreSkippedWithoutAGapAndNeverSound) {
    const Recording recording(server);
    insert({{500, false}, {40}, {30, false}, {35}, {20, false}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(505));
    ASSERT_TRUE(untilEnded());
    auto expected = numbersBetween(500, 540);
    const auto second = numbersBetween(570, 605);
    expected.insert(expected.end(), second.begin(), second.end());
    const auto heard = recording.samples();
    EXPECT_EQ(musicOnceSettled(recording), expected);
    const auto jump = std::find(heard.begin(), heard.end(), sampleOf(540) - 1);
    ASSERT_NE(jump, heard.end());
    EXPECT_EQ(*(jump + 1), sampleOf(570)) << "no silence in between";
    EXPECT_EQ(player->position(), 605);
}

TEST_F(PlayingAloud, ADiscOfDataAloneEndsAtOnce) {
    insert({{500, false}});
    open();
    player->play(0);
    ASSERT_TRUE(untilEnded());
    EXPECT_EQ(endings, std::vector{CdEnding::endOfDisc});
}

TEST_F(PlayingAloud, AHeldDiscGoesOnAtTheVeryNextSample) {
    const Recording recording(server);
    insert({{80}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(40));
    player->pause();
    EXPECT_EQ(player->state(), CdState::paused);
    const Frames held = player->position();
    scheduler.runFor(200ms);
    EXPECT_EQ(player->position(), held);
    const auto before = recording.music().size();
    scheduler.runFor(150ms);
    EXPECT_EQ(recording.music().size(), before) << "silent while held";
    player->resume();
    EXPECT_EQ(player->state(), CdState::playing);
    ASSERT_TRUE(untilEnded());
    EXPECT_EQ(musicOnceSettled(recording), numbersBetween(0, 80));
}

TEST_F(PlayingAloud, PlayWhilePlayingStartsElsewhereAtOnce) {
    const Recording recording(server);
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilHeard(recording, 30000));
    player->play(2000);
    ASSERT_TRUE(scheduler.runUntil([&] {
        const auto music = recording.music();
        return !music.empty() && music.back() >= sampleOf(2010);
    }));
    const auto music = recording.music();
    const auto jump = std::find(music.begin(), music.end(), sampleOf(2000));
    ASSERT_NE(jump, music.end()) << "from its first sample";
    EXPECT_TRUE(isUnbroken({music.begin(), jump}));
    EXPECT_TRUE(isUnbroken({jump, music.end()}));
    EXPECT_LT(*(jump - 1), sampleOf(150)) << "what was still to come has been dropped";
    EXPECT_GE(player->position(), 2000);
    EXPECT_LT(player->position(), 2200);
}

TEST_F(PlayingAloud, ThePositionIsThatOfTheFrameBeingHeard) {
    const Recording recording(server);
    insert({{3000}});
    open();
    for (const Frames from : {0, 1500, 700}) {
        player->play(from);
        scheduler.runFor(400ms);
        const Frames told = player->position();
        const auto music = recording.music();
        ASSERT_FALSE(music.empty());
        const auto heard = static_cast<Frames>(music.back() / host::samplesPerFrame);
        EXPECT_NEAR(told, heard, 12) << "the recorder itself lags some hundredths of a second";
    }
}

TEST_F(PlayingAloud, StopIsSilentAtOnceAndKeepsThePosition) {
    const Recording recording(server);
    insert({{3000}});
    open();
    player->play(100);
    ASSERT_TRUE(untilPosition(130));
    player->stop();
    EXPECT_EQ(player->state(), CdState::stopped);
    const Frames where = player->position();
    EXPECT_GE(where, 130);
    scheduler.runFor(200ms);
    const auto heard = recording.music().size();
    EXPECT_LT(heard, static_cast<std::size_t>(sampleOf(60)));
    scheduler.runFor(300ms);
    EXPECT_EQ(recording.music().size(), heard);
    EXPECT_EQ(player->position(), where);
    EXPECT_TRUE(endings.empty());
}

TEST_F(PlayingAloud, SeekMovesWithoutPlayingAndResumeGoesOnFromThere) {
    const Recording recording(server);
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(20));
    player->seek(1000);
    EXPECT_EQ(player->state(), CdState::paused);
    EXPECT_EQ(player->position(), 1000);
    scheduler.runFor(200ms);
    EXPECT_EQ(player->position(), 1000);
    player->resume();
    ASSERT_TRUE(untilPosition(1010));
    scheduler.runFor(200ms);
    const auto music = recording.music();
    EXPECT_NE(std::find(music.begin(), music.end(), sampleOf(1000)), music.end());
    player->stop();
    player->seek(500);
    EXPECT_EQ(player->state(), CdState::stopped);
    player->resume();
    EXPECT_EQ(player->state(), CdState::playing);
    EXPECT_LT(player->position(), 600);
}

TEST_F(PlayingAloud, ARunOutSoundsOnWhileThePlayerCountsAsStopped) {
    const Recording recording(server);
    insert({{90}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(40));
    player->runOut();
    EXPECT_EQ(player->state(), CdState::stopped);
    const Frames where = player->position();
    EXPECT_TRUE(players.sounding());
    scheduler.runFor(200ms);
    EXPECT_EQ(player->position(), where);
    ASSERT_TRUE(scheduler.runUntil([&] { return !players.sounding(); }));
    EXPECT_EQ(musicOnceSettled(recording), numbersBetween(0, 90));
    EXPECT_TRUE(endings.empty()) << "the caller has ended it itself";
    EXPECT_EQ(player->position(), where);
}

TEST_F(PlayingAloud, AnyLaterCallCutsARunOut) {
    insert({{3000}});
    open();
    const auto cutBy = [&](auto call) {
        player->play(0);
        EXPECT_TRUE(untilPosition(5));
        player->runOut();
        EXPECT_TRUE(players.sounding());
        call();
        EXPECT_FALSE(players.sounding());
    };
    cutBy([&] { player->stop(); });
    cutBy([&] { player->pause(); });
    cutBy([&] { player->seek(7); });
    cutBy([&] {
        player->close();
        open();
    });
    cutBy([&] { player->eject(); });
}

TEST_F(PlayingAloud, PlayCutsARunOutAndIsHeardFromItsOwnStart) {
    const Recording recording(server);
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(20));
    player->runOut();
    player->play(2950);
    EXPECT_EQ(player->state(), CdState::playing);
    ASSERT_TRUE(untilEnded());
    const auto music = musicOnceSettled(recording);
    const auto start = std::find(music.begin(), music.end(), sampleOf(2950));
    EXPECT_EQ(std::vector<std::int64_t>(start, music.end()), numbersBetween(2950, 3000));
}

TEST_F(PlayingAloud, ADiscPulledOutWhilePlayingEndsThePlay) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(20));
    drives.d.disc.reset();
    ASSERT_TRUE(untilEnded(3s));
    EXPECT_EQ(endings, std::vector{CdEnding::hardware});
    EXPECT_EQ(player->state(), CdState::stopped);
    EXPECT_EQ(player->toc(), nullptr);
    EXPECT_FALSE(players.sounding());
}

TEST_F(PlayingAloud, ADiscPulledOutWhileHeldEndsThePlayToo) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(5));
    player->pause();
    insert({{3000}});
    ASSERT_TRUE(untilEnded(3s)) << "another disc is not the one that was held";
    EXPECT_EQ(endings, std::vector{CdEnding::hardware});
    EXPECT_EQ(player->state(), CdState::stopped);
}

TEST_F(PlayingAloud, AReadThatFindsNoDiscEndsThePlay) {
    insert({{3000}});
    disc->gone = true;
    open();
    player->play(0);
    ASSERT_TRUE(untilEnded(3s));
    EXPECT_EQ(endings, std::vector{CdEnding::hardware});
}

TEST_F(PlayingAloud, AScratchIsSilentAndTheMusicStaysInTime) {
    const Recording recording(server);
    insert({{60}});
    disc->badFrom = 30;
    disc->badTo = 33;
    open();
    player->play(0);
    ASSERT_TRUE(untilEnded());
    scheduler.runFor(150ms);
    const auto heard = recording.samples();
    const auto before = std::find(heard.begin(), heard.end(), sampleOf(30) - 1);
    const auto after = std::find(heard.begin(), heard.end(), sampleOf(33));
    ASSERT_NE(before, heard.end());
    EXPECT_EQ(after - before, sampleOf(3) + 1);
    EXPECT_EQ(endings, std::vector{CdEnding::endOfDisc});
}

TEST_F(PlayingAloud, ADiscThatCanNoLongerBeReadEndsAfterWhatWasRead) {
    const Recording recording(server);
    insert({{3000}});
    disc->badFrom = 20;
    disc->badTo = 3000;
    open();
    player->play(0);
    ASSERT_TRUE(untilEnded(8s));
    EXPECT_EQ(endings, std::vector{CdEnding::hardware});
    EXPECT_EQ(musicOnceSettled(recording), numbersBetween(0, 20));
}

TEST_F(PlayingAloud, TheWindowMayCloseThePlayerInsideTheEndingItself) {
    insert({{20}});
    open();
    player->onEnded = [&](CdEnding ending) {
        endings.push_back(ending);
        player.reset();
    };
    player->play(0);
    ASSERT_TRUE(untilEnded());
    scheduler.runFor(50ms);
}

TEST_F(PlayingAloud, ClosingDoesNotWaitForASlowDrive) {
    insert({{3000}});
    disc->readDelayMs = 700;
    open();
    player->play(0);
    ASSERT_TRUE(scheduler.runUntil([&] { return disc->reads > 0; }));
    const auto start = scheduler.now();
    player->close();
    EXPECT_LT(scheduler.now() - start, 300ms);
    EXPECT_EQ(player->state(), CdState::closed);
}

TEST_F(PlayingAloud, PlayersComeAndGoWithoutAThreadOrAConnection) {
    insert({{100}});
    for (int i = 0; i < 1000; ++i) {
        const auto other = players.make();
        ASSERT_FALSE(other->open('D', true));
        ASSERT_NE(other->toc(), nullptr);
        other->close();
    }
    EXPECT_EQ(sound.server(), SoundOutput::Server::untried);
}

TEST_F(PlayingAloud, PressesInQuickSuccessionLeaveTheLastOne) {
    const Recording recording(server);
    insert({{3000}});
    open();
    for (int i = 0; i < 60; ++i) {
        player->play(i * 20);
        if (i % 3 == 1) {
            player->pause();
            player->resume();
        }
        if (i % 5 == 4) {
            player->stop();
        }
        scheduler.runFor(std::chrono::milliseconds(i % 7));
    }
    player->play(2950);
    ASSERT_TRUE(untilEnded());
    const auto music = musicOnceSettled(recording);
    const auto last = std::find(music.begin(), music.end(), sampleOf(2950));
    EXPECT_EQ(std::vector<std::int64_t>(last, music.end()), numbersBetween(2950, 3000));
    EXPECT_EQ(endings.size(), 1U);
}

TEST_F(Playing, WithoutASoundServerTheDiscPlaysOnASilentClock) {
    insert({{10}, {500, false}, {65}});
    open();
    const auto start = scheduler.now();
    player->play(0);
    ASSERT_TRUE(untilPosition(515));
    const int reads = disc->reads;
    scheduler.runFor(150ms);
    EXPECT_EQ(disc->reads, reads) << "nothing is read for nobody to hear";
    player->pause();
    const Frames held = player->position();
    scheduler.runFor(200ms);
    EXPECT_EQ(player->position(), held);
    player->resume();
    ASSERT_TRUE(untilEnded());
    EXPECT_GE(scheduler.now() - start, 1150ms);
    EXPECT_LE(scheduler.now() - start, 2500ms);
    EXPECT_EQ(endings, std::vector{CdEnding::endOfDisc});
    EXPECT_EQ(player->position(), 575);
}

TEST_F(Playing, WithoutASoundServerARunOutIsOverAtOnce) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(5));
    player->runOut();
    EXPECT_FALSE(players.sounding());
    EXPECT_EQ(player->state(), CdState::stopped);
}

TEST_F(Playing, ASoundServerThatComesLaterIsJoinedAtTheRightPlace) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(30));
    server.start();
    const Recording recording(server);
    ASSERT_TRUE(untilHeard(recording, 20000));
    const auto music = recording.music();
    EXPECT_TRUE(isUnbroken(music));
    EXPECT_GT(music.front(), sampleOf(30));
    EXPECT_NEAR(player->position(), static_cast<double>(music.back()) / host::samplesPerFrame, 12);
}

TEST_F(PlayingAloud, AServerThatDiesIsJoinedAgainAtTheRightPlace) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(40));
    const auto before = scheduler.now();
    const Frames from = player->position();
    server.kill();
    scheduler.runFor(500ms);
    const auto expected = [&] { return from + static_cast<double>((scheduler.now() - before).count()) * 75 / 1000; };
    EXPECT_NEAR(player->position(), expected(), 5) << "on the silent clock";
    EXPECT_EQ(player->state(), CdState::playing);
    server.start();
    const Recording recording(server);
    ASSERT_TRUE(untilHeard(recording, 20000));
    EXPECT_TRUE(isUnbroken(recording.music()));
    EXPECT_NEAR(player->position(), expected(), 15);
}

TEST_F(PlayingAloud, AServerThatDiesWhileHeldIsJoinedByResume) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(40));
    player->pause();
    const Frames held = player->position();
    server.kill();
    scheduler.runFor(100ms);
    EXPECT_EQ(player->position(), held);
    server.start();
    const Recording recording(server);
    player->resume();
    ASSERT_TRUE(untilHeard(recording, 5000));
    const auto music = recording.music();
    EXPECT_TRUE(isUnbroken(music));
    EXPECT_NEAR(static_cast<double>(music.front()) / host::samplesPerFrame, held, 2);
}

TEST_F(PlayingAloud, AStreamKilledByTheServerComesBackAtTheRightPlace) {
    insert({{3000}});
    open();
    player->play(0);
    ASSERT_TRUE(untilPosition(100));
    outputOf("pactl unload-module module-null-sink");
    ASSERT_EQ(outputOf("pactl list short sink-inputs"), "") << "the stream is gone with its sink";
    scheduler.runFor(300ms);
    EXPECT_EQ(player->state(), CdState::playing);
    outputOf("pactl load-module module-null-sink sink_name=disc rate=44100 format=s16le channels=2 norewinds=1");
    const Recording recording(server);
    ASSERT_TRUE(untilHeard(recording, 10000));
    const auto music = recording.music();
    EXPECT_TRUE(isUnbroken(music));
    EXPECT_NEAR(player->position(), static_cast<double>(music.back()) / host::samplesPerFrame, 15);
}

TEST_F(PlayingAloud, AServerThatHangsHoldsUpNoCall) {
    insert({{3000}});
    open();
    server.freeze();
    const auto start = scheduler.now();
    player->play(0);
    player->pause();
    player->resume();
    player->play(100);
    player->position();
    EXPECT_LT(scheduler.now() - start, 200ms);
    ASSERT_TRUE(untilPosition(130)) << "after a while the disc plays on the silent clock";
    server.thaw();
    const Recording recording(server);
    ASSERT_TRUE(untilHeard(recording, 5000));
    EXPECT_TRUE(isUnbroken(recording.music()));
}

TEST_F(PlayingAloud, AProgramMayEndInTheMiddleOfEverything) {
    insert({{3000}});
    disc->readDelayMs = 5;
    for (int i = 0; i < 20; ++i) {
        SoundOutput ownSound;
        DiscPlayers ownPlayers(scheduler, drives, ownSound);
        const auto own = ownPlayers.make();
        ASSERT_FALSE(own->open('D', true));
        own->play(0);
        std::this_thread::sleep_for(std::chrono::milliseconds(i * 3));
    }
}

TEST_F(Playing, AClosedPlayerDoesNothing) {
    insert({{100}});
    EXPECT_EQ(player->state(), CdState::closed);
    player->play(0);
    player->seek(5);
    player->pause();
    player->resume();
    player->stop();
    player->runOut();
    player->eject();
    EXPECT_EQ(player->state(), CdState::closed);
    EXPECT_EQ(player->position(), 0);
    EXPECT_EQ(player->toc(), nullptr);
    EXPECT_NE(drives.d.disc, nullptr);
}

TEST_F(Playing, ADriveHeldByAnotherPlayerIsInUseUnlessBothShare) {
    insert({{100}});
    const auto other = players.make();
    ASSERT_FALSE(player->open('D', false));
    EXPECT_EQ(other->open('D', true), platform::CdOpenFault::inUse);
    EXPECT_EQ(other->open('D', false), platform::CdOpenFault::inUse);
    player->close();
    ASSERT_FALSE(other->open('D', true));
    EXPECT_FALSE(player->open('D', true));
    player->close();
    EXPECT_EQ(player->open('D', false), platform::CdOpenFault::inUse);
    EXPECT_EQ(player->open('E', false), platform::CdOpenFault::noDriver);
}

TEST_F(Playing, PlayWithoutADiscStaysStopped) {
    open();
    player->play(0);
    EXPECT_EQ(player->state(), CdState::stopped);
    scheduler.runFor(20ms);
    EXPECT_TRUE(endings.empty());
}

TEST_F(Playing, TheTableOfContentsOutlivesTheDisc) {
    insert({{100}, {50}});
    open();
    const auto toc = player->toc();
    disc.reset();
    player->eject();
    EXPECT_EQ(player->toc(), nullptr);
    EXPECT_EQ(toc->tracks.size(), 2U);
}

}  // namespace
}  // namespace tessarel::tests
