// Whole discs of many sizes, played through in each mode on the simulated clock.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <set>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using audio::PlayMode;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;

constexpr int trackSeconds = 30;

struct WholeDiscs : testing::TestWithParam<int> {
    Machine machine;
    int tracks() const { return GetParam(); }
    int gridTracks() const { return std::min(tracks(), 20); }

    audio::CDForm& open() {
        machine.insert(fakes::makeDisc(tracks(), trackSeconds));
        return machine.openPlayer();
    }
    /// The tracks that sound during a span, each as it begins; a restart of the same track is a new beginning.
    std::vector<int> listen(platform::Milliseconds span) {
        std::vector<int> order;
        int last = 0;
        int lastSeconds = 0;
        for (auto passed = 0ms; passed < span; passed += 500ms) {
            machine.run(500ms);
            const Tmsf at = unpackTmsf(machine.player().MMControl1.Position());
            const int seconds = at.minutes * 60 + at.seconds;
            if (machine.sounding() && (at.track != last || seconds < lastSeconds)) {
                order.push_back(at.track);
            }
            last = machine.sounding() ? at.track : 0;
            lastSeconds = seconds;
        }
        return order;
    }
    static std::vector<int> upTo(int n) {
        std::vector<int> all(static_cast<std::size_t>(n));
        std::iota(all.begin(), all.end(), 1);
        return all;
    }
    platform::Milliseconds discTime() const { return std::chrono::seconds(tracks() * trackSeconds); }
};

TEST_P(WholeDiscs, PlayThroughFromTheFirstFrameToTheLastWithoutABreak) {
    open();
    machine.press(transport::play);
    EXPECT_EQ(listen(discTime() + 10s), upTo(tracks()));
    EXPECT_THAT(machine.world.cd.heard, testing::ElementsAre(std::pair(0, tracks() * trackSeconds * 75)));
    EXPECT_EQ(machine.digits(), 0);
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(machine.player().face.icntlc[transport::play].Visible);
}

TEST_P(WholeDiscs, ShowTheDigitsOfTheTrackThatSounds) {
    open();
    machine.press(transport::play);
    for (int track = 1; track <= tracks(); ++track) {
        machine.run(15s);
        EXPECT_EQ(machine.digits(), track);
        EXPECT_EQ(machine.soundingTrack(), track);
        machine.run(15s);
    }
}

TEST_P(WholeDiscs, WithRepeatWrapAfterTheLastTrackOfTheGrid) {
    open();
    machine.player().face.Image10[audio::functionKeys::repeat].press();
    machine.press(transport::play);
    auto expected = upTo(gridTracks());
    expected.push_back(1);
    EXPECT_EQ(listen(std::chrono::seconds(gridTracks() * trackSeconds + 10)), expected);
    EXPECT_EQ(machine.digits(), 1);
}

TEST_P(WholeDiscs, ASingleTrackStopsBeforeItsEndAndGoesBackToWholeDisc) {
    open();
    machine.choose(modeKeys::single);
    const int track = gridTracks();
    machine.pick(track);
    EXPECT_EQ(listen(60s), std::vector{track});
    EXPECT_EQ(machine.digits(), 0);
    EXPECT_EQ(machine.state().playMode, PlayMode::wholeDisc);
    const auto heard = machine.world.cd.heard.back();
    const Frames start = (track - 1) * trackSeconds * 75;
    EXPECT_EQ(heard.first, start);
    EXPECT_GE(heard.second, start + (trackSeconds - 3) * 75) << "the track's end window begins 3 seconds before its end";
    EXPECT_LT(heard.second, start + (trackSeconds - 1) * 75);
}

TEST_P(WholeDiscs, ASingleTrackWithRepeatBeginsAgain) {
    open();
    machine.player().face.Image10[audio::functionKeys::repeat].press();
    machine.choose(modeKeys::single);
    machine.run(200ms);
    machine.pick(1);
    const auto order = listen(std::chrono::seconds(trackSeconds * 3));
    EXPECT_THAT(order, testing::Each(1));
    EXPECT_GE(order.size(), 3U);
}

TEST_P(WholeDiscs, AProgramPlaysItsEntriesInOrderAndEnds) {
    open();
    machine.choose(modeKeys::program);
    std::vector<int> program = upTo(gridTracks());
    std::reverse(program.begin(), program.end());
    for (const int track : program) {
        machine.pick(track);
    }
    EXPECT_FALSE(machine.sounding()) << "entering a program plays nothing";
    machine.press(transport::play);
    EXPECT_EQ(listen(std::chrono::seconds(gridTracks() * trackSeconds + 30)), program);
    EXPECT_EQ(machine.state().discFinished, 1);
    EXPECT_EQ(machine.state().programCount, 0);
    EXPECT_EQ(machine.state().playMode, PlayMode::wholeDisc);
    EXPECT_EQ(machine.digits(), 0);
}

TEST_P(WholeDiscs, AProgramWithRepeatBeginsAgainAndKeepsItsEntries) {
    open();
    machine.player().face.Image10[audio::functionKeys::repeat].press();
    machine.choose(modeKeys::program);
    machine.pick(gridTracks());
    machine.pick(1);
    machine.press(transport::play);
    auto order = listen(std::chrono::seconds(4 * trackSeconds));
    order.resize(4);
    EXPECT_EQ(order, (std::vector{gridTracks(), 1, gridTracks(), 1}));
    EXPECT_EQ(machine.state().programCount, 2);
    EXPECT_EQ(machine.state().playMode, PlayMode::programmed);
}

TEST_P(WholeDiscs, RandomPlayQueuesEveryTrackOnceAndPlaysThemInThatOrder) {
    open();
    machine.player().face.Image10[audio::functionKeys::random].press();
    const auto& list = machine.state().programBackup;
    const std::vector<int> queued(list.begin() + 1, list.begin() + 1 + tracks());
    EXPECT_EQ(std::set<int>(queued.begin(), queued.end()).size(), static_cast<std::size_t>(tracks()));
    EXPECT_EQ(machine.state().programCount, gridTracks());
    EXPECT_EQ(listen(discTime() + 30s), queued);
    EXPECT_EQ(machine.state().discFinished, 1);
}

TEST_P(WholeDiscs, TheIntroScanPlaysTheHeadOfEachTrackAndBeginsAgain) {
    open();
    machine.choose(modeKeys::intro);
    const auto perTrack = 12100ms;  // ten seconds by a beat of 1.1 seconds, and the beat that starts the next
    const auto order = listen(perTrack * tracks() + 6s);
    auto expected = upTo(tracks());
    expected.push_back(1);
    EXPECT_EQ(order, expected);
}

INSTANTIATE_TEST_SUITE_P(Sizes, WholeDiscs, testing::Values(1, 5, 12, 20, 21, 25, 99),
                         [](const auto& size) { return "Of" + std::to_string(size.param) + "Tracks"; });

}  // namespace
}  // namespace tessarel::scenarios
