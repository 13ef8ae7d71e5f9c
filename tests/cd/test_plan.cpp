#include <gtest/gtest.h>

#include <numeric>

#include "fake_discs.h"
#include "host/cd/frame_reader.h"
#include "host/cd/play_plan.h"
#include "host/cd/sample_clock.h"
#include "host/cd/sample_ring.h"
#include "host/level_words.h"

namespace tessarel::tests {
namespace {

using host::FrameReader;
using host::PlayPlan;
using host::SampleClock;
using host::SampleRing;
using namespace std::chrono_literals;

TEST(PlayPlan, APureAudioDiscRunsOnInOnePieceToTheLeadOut) {
    const PlayPlan plan(tocOf({{100}, {50}, {25}}), 120);
    EXPECT_EQ(plan.total(), 55);
    EXPECT_EQ(plan.runFrom(0), 55);
    EXPECT_EQ(plan.addressAt(0), 120);
    EXPECT_EQ(plan.addressAt(54), 174);
    EXPECT_EQ(plan.addressAt(55), 175) << "behind the last frame comes the lead-out";
    EXPECT_EQ(plan.addressAt(1000), 175);
}

TEST(PlayPlan, DataTracksAreLeftOutWhereverTheyLie) {
    const PlayPlan plan(tocOf({{100, false}, {50}, {30, false}, {20}, {40, false}}), 0);
    EXPECT_EQ(plan.total(), 70);
    EXPECT_EQ(plan.addressAt(0), 100);
    EXPECT_EQ(plan.runFrom(0), 50);
    EXPECT_EQ(plan.addressAt(49), 149);
    EXPECT_EQ(plan.addressAt(50), 180);
    EXPECT_EQ(plan.runFrom(60), 10);
    EXPECT_EQ(plan.addressAt(70), 200) << "the end is where the last audio track ends";
}

TEST(PlayPlan, AnAddressInsideADataTrackStandsForTheNextAudioTrack) {
    const PlayPlan plan(tocOf({{50}, {30, false}, {20}}), 60);
    EXPECT_EQ(plan.addressAt(0), 80);
    EXPECT_EQ(plan.total(), 20);
}

TEST(PlayPlan, NothingSoundsBehindTheLastAudioTrack) {
    EXPECT_EQ(PlayPlan(tocOf({{50}, {30, false}}), 60).total(), 0);
    EXPECT_EQ(PlayPlan(tocOf({{50, false}}), 0).total(), 0);
    EXPECT_EQ(PlayPlan(tocOf({{50}}), 50).total(), 0);
    EXPECT_EQ(PlayPlan(tocOf({{50}}), 5000).total(), 0);
    EXPECT_EQ(PlayPlan({}, 0).total(), 0);
    EXPECT_EQ(PlayPlan({}, 0).runFrom(0), 0);
}

TEST(PlayPlan, MusicHiddenInFrontOfTheFirstTrackCanBePlayed) {
    const auto toc = tocOf({{50}}, 40);
    EXPECT_EQ(PlayPlan(toc, -3).total(), 90);
    EXPECT_EQ(PlayPlan(toc, 40).total(), 50);
    EXPECT_EQ(PlayPlan(tocOf({{50, false}, {10}}, 40), 0).addressAt(0), 90) << "in front of a data track there is none";
}

TEST(PlayPlan, ATrackThatEndsBeforeTheNextOneBeginsIsFollowedByAJump) {
    auto toc = tocOf({{50}, {30}});
    toc.tracks[0].length = 40;
    const PlayPlan plan(toc, 0);
    EXPECT_EQ(plan.total(), 70);
    EXPECT_EQ(plan.runFrom(0), 40);
    EXPECT_EQ(plan.addressAt(40), 50);
    EXPECT_EQ(PlayPlan(toc, 45).addressAt(0), 50);
}

TEST(PlayPlan, ABrokenTableOfContentsNeverPlaysAFrameTwiceOrOutsideTheDisc) {
    auto toc = tocOf({{50}, {30}, {20}});
    toc.tracks[1].start = 10;
    toc.tracks[2].length = 100000;
    toc.tracks[0].length = -5;
    const PlayPlan plan(toc, 0);
    Frames before = -1;
    for (Frames i = 0; i < plan.total(); ++i) {
        ASSERT_GT(plan.addressAt(i), before);
        before = plan.addressAt(i);
    }
    EXPECT_LT(before, toc.leadOut);
}

std::vector<std::int16_t> samplesFrom(std::int16_t first, std::size_t count) {
    std::vector<std::int16_t> samples(count * 2);
    std::iota(samples.begin(), samples.end(), first);
    return samples;
}

TEST(SampleRing, GivesBackWhatItWasGivenInOrderAcrossTheWrap) {
    SampleRing ring(10);
    std::int16_t next = 0;
    std::int16_t expected = 0;
    std::vector<std::int16_t> taken(20);
    for (int round = 0; round < 50; ++round) {
        ASSERT_EQ(ring.push(samplesFrom(next, 7).data(), 7), 7U);
        next = static_cast<std::int16_t>(next + 14);
        ASSERT_EQ(ring.pop(taken.data(), 10), 7U);
        for (std::size_t i = 0; i < 14; ++i) {
            ASSERT_EQ(taken[i], expected++);
        }
    }
}

TEST(SampleRing, TakesNoMoreThanItHasRoomForAndGivesNoMoreThanItHolds) {
    SampleRing ring(10);
    EXPECT_EQ(ring.push(samplesFrom(0, 12).data(), 12), 10U);
    EXPECT_EQ(ring.room(), 0U);
    std::vector<std::int16_t> taken(40);
    EXPECT_EQ(ring.pop(taken.data(), 20), 10U);
    EXPECT_EQ(ring.pop(taken.data(), 20), 0U);
    ring.push(samplesFrom(0, 4).data(), 4);
    ring.clear();
    EXPECT_EQ(ring.size(), 0U);
    SampleRing none(0);
    EXPECT_EQ(none.push(taken.data(), 3), 0U);
    EXPECT_EQ(none.pop(taken.data(), 3), 0U);
}

TEST(SampleClock, CountsOnlyWhileItRuns) {
    const SampleClock::Time start{};
    SampleClock clock;
    clock.set(1000, start);
    EXPECT_EQ(clock.at(start + 1s), 1000);
    clock.run(start + 1s);
    EXPECT_EQ(clock.at(start + 3s), 1000 + 2 * 44100);
    clock.freeze(start + 3s);
    EXPECT_EQ(clock.at(start + 9s), 1000 + 2 * 44100);
    clock.run(start + 10s);
    EXPECT_EQ(clock.at(start + 10500ms), 1000 + 2 * 44100 + 22050);
}

TEST(SampleClock, IsSetRightByADeviceThatKnowsBetter) {
    const SampleClock::Time start{};
    SampleClock clock;
    clock.run(start);
    clock.set(5, start + 1s);
    EXPECT_EQ(clock.at(start + 2s), 5 + 44100);
    EXPECT_EQ(clock.at(start), 5) << "a look back never gives less than was set";
}

TEST(LevelWords, EveryWordComesBackAndFullIsExactlyFull) {
    for (std::int32_t word = 0; word <= 65535; ++word) {
        ASSERT_EQ(host::wordOfVolume(host::volumeOfWord(word)), word);
    }
    EXPECT_EQ(host::volumeOfWord(65535), PA_VOLUME_NORM);
    EXPECT_EQ(host::volumeOfWord(0), PA_VOLUME_MUTED);
    EXPECT_EQ(host::volumeOfWord(70000), PA_VOLUME_NORM);
    EXPECT_EQ(host::volumeOfWord(-1), PA_VOLUME_MUTED);
    EXPECT_EQ(host::wordOfVolume(PA_VOLUME_NORM * 3 / 2), 65535) << "a mixer may go beyond full";
}

class FrameReaderTest : public ::testing::Test {
protected:
    FrameReader::Outcome read(Frames from, Frames count) {
        samples.assign(static_cast<std::size_t>(count) * 588 * 2, 99);
        return reader.read(disc, from, count, samples.data(), [] { return false; });
    }
    std::int64_t firstNumber(Frames frame) const {
        const auto at = static_cast<std::size_t>(frame) * 588 * 2;
        return numberOf(samples[at], samples[at + 1]);
    }
    FakeMedium disc{tocOf({{1000}})};
    FrameReader reader;
    std::vector<std::int16_t> samples;
};

TEST_F(FrameReaderTest, AScratchBecomesSilenceOfItsOwnLengthAndNothingElseIsLost) {
    disc.badFrom = 12;
    disc.badTo = 14;
    EXPECT_EQ(read(10, 6), FrameReader::Outcome::good);
    EXPECT_EQ(firstNumber(1), 11 * 588);
    EXPECT_EQ(firstNumber(2), -1);
    EXPECT_EQ(firstNumber(3), -1);
    EXPECT_EQ(firstNumber(4), 14 * 588);
}

TEST_F(FrameReaderTest, ThreeSecondsOfNothingButErrorsAreHopeless) {
    disc.badTo = 1000;
    for (Frames at = 0; at < 200; at += 25) {
        ASSERT_EQ(read(at, 25), FrameReader::Outcome::good);
    }
    EXPECT_EQ(read(200, 25), FrameReader::Outcome::hopeless);
}

TEST_F(FrameReaderTest, OneGoodFrameBetweenErrorsKeepsHopeUp) {
    disc.badTo = 220;
    for (Frames at = 0; at < 200; at += 50) {
        ASSERT_EQ(read(at, 50), FrameReader::Outcome::good);
    }
    ASSERT_EQ(read(200, 50), FrameReader::Outcome::good);
    disc.badFrom = 250;
    disc.badTo = 470;
    for (Frames at = 250; at < 450; at += 50) {
        ASSERT_EQ(read(at, 50), FrameReader::Outcome::good);
    }
}

TEST_F(FrameReaderTest, ADiscThatHasGoneIsToldAtOnce) {
    disc.gone = true;
    EXPECT_EQ(read(0, 5), FrameReader::Outcome::gone);
}

TEST_F(FrameReaderTest, ADamagedSpotIsLeftWhenItIsNoLongerWanted) {
    disc.badTo = 1000;
    int asked = 0;
    samples.resize(100 * 588 * 2);
    reader.read(disc, 0, 100, samples.data(), [&] { return ++asked > 3; });
    EXPECT_EQ(disc.reads, 4) << "the whole, then three frames";
}

TEST(ReadErrors, TenSecondsOfWaitingForOneSpotAreHopelessToo) {
    host::ReadErrors errors;
    const host::ReadErrors::Time start{};
    EXPECT_FALSE(errors.bad(start));
    EXPECT_FALSE(errors.bad(start + 9s));
    EXPECT_TRUE(errors.bad(start + 10s));
}

}  // namespace
}  // namespace tessarel::tests
