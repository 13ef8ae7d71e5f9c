// The player as the desktop sees it: what is told, and what media keys do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/scenarios/machine.h"
#include "volume/volcntl.h"

namespace tessarel::scenarios {
namespace {

using platform::LoopStatus;
using platform::MediaCommand;
using platform::Milliseconds;
using platform::NowPlaying;
using platform::PlaybackStatus;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = MediaCommand::Kind;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace functionKeys = audio::functionKeys;

/// A machine and the desktop around it.
struct Desk {
    Machine machine;
    fakes::FakeMediaSession& media() { return machine.world.media; }
    std::vector<platform::Notice>& notices() { return machine.world.notifications.shown; }
    NowPlaying now() { return media().now(); }
    audio::PlayerState& state() { return machine.state(); }

    void open(int tracks, int seconds = 60) { machine.openPlayer(fakes::makeDisc(tracks, seconds)); }
    void playing(int tracks, int seconds = 60) {
        open(tracks, seconds);
        machine.press(transport::play);
        machine.run(3s);
    }
    void ask(const MediaCommand& command, Milliseconds then = 1s) {
        media().ask(command);
        machine.run(then);
    }
    void ask(Kind kind, Milliseconds then = 1s) { ask({.kind = kind}, then); }
    void loop(LoopStatus wanted) { ask({.kind = Kind::setLoop, .loop = wanted}); }
    void shuffle(bool wanted) { ask({.kind = Kind::setShuffle, .on = wanted}); }
    void volume(double wanted) { ask({.kind = Kind::setVolume, .volume = wanted}); }
    Tmsf position() { return unpackTmsf(machine.player().MMControl1.Position()); }
    Milliseconds askedPosition() { return media().onPosition(); }
};

struct Session : testing::Test, Desk {};

// ---- Telling ----

TEST_F(Session, IsTellingNothingBeforeThereIsADisc) {
    machine.program.windows.show("CD1st");
    machine.run(2s);
    EXPECT_THAT(media().published, IsEmpty()) << "what holds from the start needs no telling";
    EXPECT_EQ(askedPosition(), 0ms);
}

TEST_F(Session, TellsADiscFromItsLoadOn) {
    open(5);
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
    EXPECT_TRUE(now().canPlay);
    EXPECT_EQ(now().title, "Track 1");
    EXPECT_EQ(now().length, 60s);
}

TEST_F(Session, FollowsTheTransportKeys) {
    playing(5);
    EXPECT_EQ(now().status, PlaybackStatus::playing);
    machine.press(transport::pause);
    machine.run(200ms);
    EXPECT_EQ(now().status, PlaybackStatus::paused);
    machine.press(transport::play);
    machine.run(200ms);
    EXPECT_EQ(now().status, PlaybackStatus::playing);
    machine.press(transport::stop);
    machine.run(200ms);
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
}

TEST_F(Session, TellsOnlyWhatHasChanged) {
    playing(5);
    machine.run(5s);
    const auto before = media().published.size();
    machine.run(40s);
    EXPECT_EQ(media().published.size(), before) << "the position is asked for, not told";
    EXPECT_THAT(media().jumps, IsEmpty());
    for (std::size_t i = 1; i < media().published.size(); ++i) {
        EXPECT_NE(media().published[i], media().published[i - 1]);
    }
}

TEST_F(Session, FollowsTheTracksOfTheDiscToItsEnd) {
    playing(3, 20);
    std::vector<int> tracks;
    machine.run(2min);
    for (const auto& told : media().published) {
        if (told.status == PlaybackStatus::playing && (tracks.empty() || tracks.back() != told.trackNumber)) {
            tracks.push_back(told.trackNumber);
        }
    }
    EXPECT_THAT(tracks, ElementsAre(1, 2, 3));
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
    EXPECT_THAT(media().jumps, IsEmpty()) << "a new track begins at 0, which everybody expects";
}

TEST_F(Session, TellsTheTrackThatIsHeardThoughTheWindowIsMinimised) {
    playing(5, 20);
    machine.player().WindowState = forms::WindowState::minimised;
    machine.run(20s);
    EXPECT_EQ(now().trackNumber, 2);
    EXPECT_EQ(machine.digits(), 1) << "the display sleeps";
}

TEST_F(Session, TellsThePositionWhenAsked) {
    playing(5);
    EXPECT_NEAR(static_cast<double>(askedPosition().count()), 3000, 150);
    const auto before = askedPosition();
    machine.run(10s);
    EXPECT_NEAR(static_cast<double>((askedPosition() - before).count()), 10'000, 20);
    machine.press(transport::pause);
    const auto held = askedPosition();
    machine.run(10s);
    EXPECT_EQ(askedPosition(), held);
    machine.press(transport::stop);
    EXPECT_EQ(askedPosition(), 0ms);
}

TEST_F(Session, TellsOfAJumpOnTheBar) {
    playing(5);
    machine.player().face.statusBar.pressAt(500);
    machine.run(200ms);
    ASSERT_THAT(media().jumps, SizeIs(1));
    EXPECT_NEAR(static_cast<double>(media().jumps[0].count()), 30'000, 200);
}

TEST_F(Session, TellsOfATrackThatBeginsAnew) {
    playing(5, 20);
    machine.choose(modeKeys::single);
    machine.player().face.Image10[functionKeys::repeat].press();
    machine.run(2s);
    media().jumps.clear();
    machine.run(21s);
    ASSERT_THAT(media().jumps, SizeIs(1));
    EXPECT_LT(media().jumps[0], 1s);
    EXPECT_EQ(now().trackNumber, 1);
}

TEST_F(Session, ForgetsTheDiscWhenItIsEjected) {
    playing(5);
    machine.press(transport::eject);
    machine.run(1s);
    EXPECT_EQ(now(), NowPlaying());
    EXPECT_EQ(askedPosition(), 0ms);
}

TEST_F(Session, ForgetsTheDiscWhenItIsPulledOut) {
    playing(5);
    machine.world.cd.pull();
    machine.run(5s);
    EXPECT_EQ(now(), NowPlaying());
}

TEST_F(Session, ForgetsTheDiscWhenTheWindowGoes) {
    playing(5);
    machine.program.windows.unload("CDForm");
    EXPECT_EQ(now(), NowPlaying());
}

TEST_F(Session, NamesTracksOfALaterDiscAnew) {
    playing(5);
    const auto first = now().trackId;
    machine.program.windows.unload("CDForm");
    machine.openPlayer();
    EXPECT_EQ(now().trackNumber, 1);
    EXPECT_NE(now().trackId, first);
}

TEST_F(Session, TellsTheEndOfAProgramThoughThePulseRests) {
    open(5, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    ask(Kind::play, 25s);
    EXPECT_EQ(machine.player().Timer2.Interval, 0);
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
}

TEST_F(Session, TellsTheEndOfAProgramThatAKeyHasBroughtAbout) {
    open(5, 20);
    machine.choose(modeKeys::program);
    machine.pick(2);
    machine.press(transport::play);
    machine.run(3s);
    machine.press(transport::next);
    ASSERT_EQ(machine.player().Timer2.Interval, 0) << "the pulse rests";
    machine.run(1500ms);
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
}

// ---- Media keys ----

TEST_F(Session, PlayPauseAndStopPressTheKeys) {
    open(5);
    ask(Kind::play);
    EXPECT_TRUE(machine.sounding());
    EXPECT_TRUE(machine.player().face.icntlc[transport::play].Visible);
    ask(Kind::pause);
    EXPECT_FALSE(machine.sounding());
    EXPECT_EQ(machine.player().face.repeatLamp.Caption.get(), "PAUSE");
    ask(Kind::playPause);
    EXPECT_TRUE(machine.sounding());
    ask(Kind::playPause);
    EXPECT_FALSE(machine.sounding());
    ask(Kind::play);
    EXPECT_TRUE(machine.sounding());
    ask(Kind::stop);
    EXPECT_FALSE(machine.sounding());
    ask(Kind::playPause);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Session, KeysThatAreCoveredStayCovered) {
    open(5);
    machine.world.cd.log.clear();
    for (const auto kind : {Kind::pause, Kind::stop, Kind::next, Kind::previous}) {
        ask(kind, 100ms);
    }
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
    playing(5);
    machine.world.cd.log.clear();
    ask(Kind::play);
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
}

TEST_F(Session, NextAndPreviousMoveByTracks) {
    playing(5);
    ask(Kind::next);
    EXPECT_EQ(machine.soundingTrack(), 2);
    ask(Kind::next);
    EXPECT_EQ(machine.soundingTrack(), 3);
    ask(Kind::previous);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_EQ(now().trackNumber, 2);
}

TEST_F(Session, NextOnTheLastTrackDoesNotEvenInterrupt) {
    playing(2);
    ask(Kind::next);
    machine.run(3s);
    machine.world.cd.log.clear();
    ask(Kind::next);
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
    EXPECT_EQ(machine.soundingTrack(), 2);
}

TEST_F(Session, KeysDoNothingWithoutADisc) {
    machine.program.windows.show("CD1st");
    machine.run(1s);
    for (const auto kind : {Kind::play, Kind::playPause, Kind::pause, Kind::stop, Kind::next, Kind::previous, Kind::seekBy,
                            Kind::setPosition, Kind::setLoop, Kind::setShuffle, Kind::setVolume}) {
        ask(kind, 400ms);
    }
    EXPECT_THAT(media().published, IsEmpty());
    EXPECT_THAT(machine.world.dialogs.boxes, IsEmpty());
}

TEST_F(Session, KeysDoNothingWhileTheDrawerIsOpen) {
    playing(5);
    machine.press(transport::eject);
    machine.run(1s);
    machine.world.cd.log.clear();
    ask(Kind::play, 0ms);
    ask({.kind = Kind::setLoop, .loop = LoopStatus::playlist}, 0ms);
    EXPECT_THAT(machine.world.cd.log, testing::Not(testing::Contains(testing::StartsWith("play"))));
    EXPECT_EQ(state().repeatOn, 0);
}

TEST_F(Session, WhatIsAskedDuringAWaitIsDoneAfterIt) {
    playing(5);
    machine.world.scheduler.post([this] { media().ask(Kind::pause); });
    machine.world.scheduler.wait(300ms);
    EXPECT_TRUE(machine.sounding());
    machine.run(0ms);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Session, ManyWishesAreDoneInOrderAndAFloodIsCut) {
    playing(40, 60);
    for (const auto kind : {Kind::next, Kind::next, Kind::pause}) {
        media().ask(kind);
    }
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 3);
    EXPECT_EQ(now().status, PlaybackStatus::paused);
    ask(Kind::play);
    for (int i = 0; i < 1000; ++i) {
        media().ask(Kind::next);
    }
    machine.run(1min);
    EXPECT_EQ(machine.soundingTrack(), 35);
}

// ---- Position ----

TEST_F(Session, SeekMovesInTheTrackAndTellsSo) {
    playing(5);
    ask({.kind = Kind::seekBy, .time = 20s}, 0ms);
    EXPECT_EQ(position().track, 1);
    EXPECT_NEAR(position().seconds, 23, 1);
    ASSERT_THAT(media().jumps, SizeIs(1));
    EXPECT_NEAR(static_cast<double>(media().jumps[0].count()), 23'000, 600);
    ask({.kind = Kind::seekBy, .time = -10s}, 0ms);
    EXPECT_NEAR(position().seconds, 13, 1);
    ask({.kind = Kind::seekBy, .time = -1min}, 0ms);
    EXPECT_EQ(position().seconds, 0);
    EXPECT_THAT(media().jumps, SizeIs(3));
    machine.run(3s);
    EXPECT_THAT(media().jumps, SizeIs(3)) << "each jump is told once";
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Session, SeekBeyondTheEndIsTheNextTrack) {
    playing(3);
    ask({.kind = Kind::seekBy, .time = 5min});
    EXPECT_EQ(machine.soundingTrack(), 2);
    ask({.kind = Kind::seekBy, .time = 60s});
    EXPECT_EQ(machine.soundingTrack(), 3);
    machine.run(3s);
    machine.world.cd.log.clear();
    ask({.kind = Kind::seekBy, .time = 60s});
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "behind the last track there is none";
}

TEST_F(Session, SetPositionTakesTheTrackByItsName) {
    playing(5);
    const auto id = now().trackId;
    ask({.kind = Kind::setPosition, .time = 40s, .text = id}, 0ms);
    EXPECT_EQ(position().seconds, 40);
    ask(Kind::next);
    machine.run(2s);
    machine.world.cd.log.clear();
    ask({.kind = Kind::setPosition, .time = 40s, .text = id}, 0ms);
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "that track has gone by";
}

TEST_F(Session, SeekBackInTheLastSecondsStaysInTheTrackThatIsHeard) {
    playing(3, 60);
    machine.run(55s);
    ASSERT_EQ(position().track, 1);
    ASSERT_EQ(state().currentTrack, 2) << "the player is ahead of the sound";
    ask({.kind = Kind::seekBy, .time = -30s}, 0ms);
    EXPECT_EQ(position().track, 1);
    EXPECT_NEAR(position().seconds, 28, 2);
    machine.run(40s);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_EQ(machine.digits(), 2);
    machine.run(60s);
    EXPECT_EQ(machine.soundingTrack(), 3);
    EXPECT_EQ(machine.digits(), 3);
}

TEST_F(Session, SeekInsideTheLastSecondsLosesNoTrack) {
    playing(3, 60);
    machine.run(54s);
    ASSERT_EQ(position().track, 1);
    ASSERT_EQ(state().currentTrack, 2);
    ask({.kind = Kind::seekBy, .time = -1s}, 10s);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_EQ(machine.digits(), 2);
}

TEST_F(Session, NextInTheLastSecondsIsTheTrackBehindTheOneThatIsHeard) {
    for (const auto& command : {MediaCommand{.kind = Kind::next}, MediaCommand{.kind = Kind::seekBy, .time = 5min}}) {
        Desk fresh;
        fresh.playing(4, 60);
        fresh.machine.run(54s);
        ASSERT_EQ(fresh.position().track, 1);
        ASSERT_EQ(fresh.state().currentTrack, 2) << "the player is ahead of the sound";
        fresh.ask(command, 2s);
        EXPECT_EQ(fresh.machine.soundingTrack(), 2);
        EXPECT_EQ(fresh.machine.digits(), 2);
    }
}

TEST_F(Session, PreviousInTheLastSecondsIsTheTrackBeforeTheOneThatIsHeard) {
    playing(4, 60);
    ask(Kind::next);
    ask(Kind::next);
    ASSERT_TRUE(machine.runUntil([this] { return state().currentTrack == 4; }, 1min));
    ASSERT_EQ(position().track, 3);
    ask(Kind::previous, 2s);
    EXPECT_EQ(machine.soundingTrack(), 2);
}

TEST_F(Session, NextIsOfferedUntilTheLastTrackIsHeard) {
    playing(2, 60);
    machine.run(54s);
    ASSERT_EQ(state().currentTrack, 2);
    EXPECT_EQ(now().trackNumber, 1);
    EXPECT_TRUE(now().canGoNext);
    EXPECT_FALSE(now().canGoPrevious) << "the first one is heard";
    ask(Kind::next, 2s);
    EXPECT_EQ(machine.soundingTrack(), 2);
    EXPECT_FALSE(now().canGoNext);
}

TEST_F(Session, NextGoesByTheSoundThoughTheWindowIsMinimised) {
    playing(5, 20);
    machine.player().WindowState = forms::WindowState::minimised;
    machine.run(20s);
    ASSERT_EQ(now().trackNumber, 2);
    ask(Kind::next, 2s);
    EXPECT_EQ(machine.soundingTrack(), 3);
}

TEST_F(Session, TheWindowsOwnNextKeyGoesOnFromItsOwnTrack) {
    playing(4, 60);
    machine.run(54s);
    ASSERT_EQ(state().currentTrack, 2);
    machine.press(transport::next);
    machine.run(1s);
    EXPECT_EQ(machine.soundingTrack(), 3);
}

TEST_F(Session, SeekInATrackOfLessThanASecondIsItsStart) {
    machine.openPlayer(fakes::makeToc({60 * 75, 60, 60 * 75}));
    machine.press(transport::play);
    machine.runUntil([this] { return now().trackNumber == 2; }, 2min);
    ASSERT_EQ(now().trackNumber, 2);
    ask({.kind = Kind::setPosition, .time = 500ms, .text = now().trackId}, 0ms);
    EXPECT_EQ(position().track, 2);
    EXPECT_EQ(position().seconds, 0);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 3);
}

TEST_F(Session, SeekDoesNothingWhilePausedOrStopped) {
    playing(5);
    machine.press(transport::pause);
    machine.run(200ms);
    EXPECT_FALSE(now().canSeek);
    machine.world.cd.log.clear();
    ask({.kind = Kind::seekBy, .time = 20s});
    machine.press(transport::stop);
    machine.world.cd.log.clear();
    ask({.kind = Kind::seekBy, .time = 20s});
    EXPECT_THAT(machine.world.cd.log, IsEmpty());
}

// ---- Modes ----

TEST_F(Session, LoopOfAllIsRepeat) {
    playing(5);
    loop(LoopStatus::playlist);
    EXPECT_EQ(state().repeatOn, 1);
    EXPECT_EQ(state().playMode, audio::wholeDisc);
    EXPECT_EQ(now().loop, LoopStatus::playlist);
    loop(LoopStatus::playlist);
    EXPECT_EQ(state().repeatOn, 1);
    loop(LoopStatus::none);
    EXPECT_EQ(state().repeatOn, 0);
    EXPECT_EQ(now().loop, LoopStatus::none);
}

TEST_F(Session, LoopOfATrackIsSingleModeWithRepeatAndTheTrackGoesOn) {
    playing(5, 30);
    ask(Kind::next);
    machine.run(5s);
    machine.world.cd.log.clear();
    loop(LoopStatus::track);
    EXPECT_EQ(state().repeatOn, 1);
    EXPECT_EQ(state().playMode, audio::singleTrack);
    EXPECT_EQ(now().loop, LoopStatus::track);
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "the track is not begun anew";
    machine.run(1min);
    EXPECT_EQ(machine.soundingTrack(), 2) << "it repeats";
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Session, LeavingTheLoopOfATrackGoesOnWithTheDisc) {
    for (const auto to : {LoopStatus::none, LoopStatus::playlist}) {
        Desk fresh;
        fresh.playing(5, 30);
        fresh.loop(LoopStatus::track);
        fresh.machine.world.cd.log.clear();
        fresh.loop(to);
        EXPECT_EQ(fresh.state().playMode, audio::wholeDisc);
        EXPECT_EQ(fresh.state().repeatOn, to == LoopStatus::playlist ? 1 : 0);
        EXPECT_EQ(fresh.now().loop, to);
        EXPECT_THAT(fresh.machine.world.cd.log, IsEmpty());
        fresh.machine.run(31s);
        EXPECT_EQ(fresh.machine.soundingTrack(), 2);
    }
}

TEST_F(Session, LoopWhileStoppedStartsNothing) {
    open(5);
    for (const auto wanted : {LoopStatus::track, LoopStatus::playlist, LoopStatus::none}) {
        loop(wanted);
        EXPECT_EQ(now().loop, wanted);
        EXPECT_FALSE(machine.sounding());
    }
}

TEST_F(Session, ShuffleIsRandomPlay) {
    playing(5, 30);
    EXPECT_FALSE(now().shuffle);
    shuffle(true);
    EXPECT_TRUE(now().shuffle);
    EXPECT_EQ(state().playMode, audio::programmed);
    EXPECT_THAT(std::vector(state().programBackup.begin() + 1, state().programBackup.begin() + 6),
                testing::UnorderedElementsAre(1, 2, 3, 4, 5));
    machine.world.cd.log.clear();
    shuffle(true);
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "it is on";
    shuffle(false);
    EXPECT_FALSE(now().shuffle);
    EXPECT_EQ(state().playMode, audio::wholeDisc);
    EXPECT_TRUE(machine.sounding());
    EXPECT_THAT(machine.world.cd.log, IsEmpty()) << "what sounds goes on";
}

TEST_F(Session, ShuffleShowsThatAPersonHasChosenRandomPlayAndNoOtherProgram) {
    open(5, 30);
    machine.player().face.Image10[functionKeys::random].press();
    machine.run(1s);
    EXPECT_TRUE(now().shuffle);
    machine.choose(modeKeys::disc);
    machine.choose(modeKeys::program);
    machine.pick(3);
    machine.pick(1);
    machine.run(1s);
    EXPECT_FALSE(now().shuffle);
}

TEST_F(Session, ShuffleEndsWithItsProgram) {
    open(3, 10);
    shuffle(true);
    machine.run(2min);
    EXPECT_FALSE(now().shuffle);
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
}

// ---- Volume ----

TEST_F(Session, VolumeMovesTheSlidersAndTheSound) {
    open(5);
    volume(0.4);
    EXPECT_EQ(machine.player().face.leftSlider.Value, 60);
    EXPECT_EQ(machine.player().face.rightSlider.Value, 60);
    EXPECT_DOUBLE_EQ(now().volume, 0.4);
    EXPECT_NEAR(machine.world.levels.disc().now.level.left, 0.4 * 65535, 700);
    volume(0);
    EXPECT_EQ(machine.world.levels.disc().now.level.left, 0);
    volume(7.5);
    EXPECT_DOUBLE_EQ(now().volume, 1.0);
    volume(std::numeric_limits<double>::quiet_NaN());
    volume(-1);
    EXPECT_DOUBLE_EQ(now().volume, 1.0) << "what is no level is passed over";
}

TEST_F(Session, VolumeKeepsTheBalanceOfUnlinkedSliders) {
    open(5);
    auto& face = machine.player().face;
    face.Image9[0].press();
    face.leftSlider.moveTo(30);
    face.rightSlider.moveTo(50);
    machine.run(200ms);
    EXPECT_DOUBLE_EQ(now().volume, 0.7);
    volume(0.9);
    EXPECT_EQ(face.leftSlider.Value, 10);
    EXPECT_EQ(face.rightSlider.Value, 30);
}

TEST_F(Session, VolumeEndsAMute) {
    open(5);
    volume(0.5);
    machine.player().face.Image2[1].press();
    machine.run(200ms);
    EXPECT_DOUBLE_EQ(now().volume, 0);
    volume(0.5);
    EXPECT_FALSE(machine.program.volume.muted);
    EXPECT_DOUBLE_EQ(now().volume, 0.5);
    EXPECT_NEAR(machine.world.levels.disc().now.level.left, 0.5 * 65535, 700);
}

TEST_F(Session, VolumeIsLeftToTheMixerWhereThatIsChosen) {
    machine.program.state.volumeMode = 0;
    open(5);
    const auto before = machine.player().face.leftSlider.Value.get();
    volume(0.5);
    EXPECT_EQ(machine.player().face.leftSlider.Value, before);
}

TEST_F(Session, VolumeIsAWholeGestureWhereTheReleaseSetsTheLevel) {
    machine.program.state.volumeMode = 4;
    open(5);
    volume(0.3);
    EXPECT_EQ(machine.player().face.leftSlider.Value, 70);
    EXPECT_EQ(machine.world.systemMixer.now.step, 75);
    machine.player().face.Image2[1].press();
    volume(0.5);
    EXPECT_EQ(machine.world.systemMixer.now, (platform::OutputLevel{125, false}));
}

TEST_F(Session, VolumeIsThatOfTheSmallWindowWhereThatHasItsOwn) {
    for (const std::int16_t mode : {0, 4}) {
        Desk fresh;
        fresh.machine.program.state.volumeMode = mode;
        fresh.playing(5);
        fresh.machine.player().face.minimiseKey.click();
        fresh.machine.run(1s);
        auto& small = fresh.machine.program.windows.find<volume::VolCntl>("VolCntl")->face;
        fresh.volume(0.3);
        EXPECT_EQ(small.leftSlider.Value, 70) << mode;
        EXPECT_EQ(small.rightSlider.Value, 70) << mode;
        EXPECT_DOUBLE_EQ(fresh.now().volume, 0.3) << mode;
        if (mode == 4) {
            EXPECT_EQ(fresh.machine.world.systemMixer.now.step, 75);
        } else {
            EXPECT_NEAR(fresh.machine.world.levels.disc().now.level.left, 0.3 * 65535, 700);
        }
        small.leftSlider.moveTo(20);
        fresh.machine.run(1s);
        EXPECT_DOUBLE_EQ(fresh.now().volume, 0.8) << mode;
        fresh.volume(0.4);
        fresh.ask(Kind::raise);
        fresh.machine.program.windows.unload("VolCntl");
        EXPECT_EQ(fresh.machine.player().face.leftSlider.Value, 60) << mode;
    }
}

TEST_F(Session, VolumeEndsAMuteOfTheSmallWindow) {
    machine.program.state.volumeMode = 4;
    playing(5);
    machine.player().face.minimiseKey.click();
    machine.program.windows.find<volume::VolCntl>("VolCntl")->face.muteKey.press();
    machine.run(1s);
    EXPECT_DOUBLE_EQ(now().volume, 0);
    volume(0.4);
    EXPECT_EQ(machine.world.systemMixer.now, (platform::OutputLevel{100, false}));
    EXPECT_DOUBLE_EQ(now().volume, 0.4);
}

// ---- The program ----

TEST_F(Session, RaiseBringsTheWindowBackFromBeingMinimised) {
    playing(5);
    machine.player().WindowState = forms::WindowState::minimised;
    const int requests = machine.player().frontRequests;
    ask(Kind::raise);
    EXPECT_EQ(machine.player().WindowState, forms::WindowState::normal);
    EXPECT_GT(machine.player().frontRequests.get(), requests);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Session, RaiseBringsBackAWindowThatIsHiddenBehindItsIcon) {
    playing(5);
    machine.player().face.minimiseKey.click();
    machine.run(1s);
    ASSERT_FALSE(machine.player().Visible);
    ask(Kind::raise);
    EXPECT_TRUE(machine.player().Visible);
    EXPECT_FALSE(machine.program.windows.isLoaded("ICONmin"));
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Session, KeysAndVolumeWorkOnAWindowThatIsHiddenBehindItsIcon) {
    playing(5);
    machine.player().face.minimiseKey.click();
    machine.run(1s);
    ask(Kind::next);
    machine.run(2s);
    EXPECT_EQ(now().trackNumber, 2);
    volume(0.5);
    EXPECT_NEAR(machine.world.levels.disc().now.level.left, 0.5 * 65535, 700);
    EXPECT_DOUBLE_EQ(now().volume, 0.5);
    ask(Kind::pause);
    EXPECT_EQ(now().status, PlaybackStatus::paused);
}

TEST_F(Session, RaiseBringsTheWaitingWindowWithoutADisc) {
    machine.program.windows.show("CD1st");
    auto* waiting = machine.program.windows.find<forms::Form>("CD1st");
    const int requests = waiting->frontRequests;
    ask(Kind::raise);
    EXPECT_GT(waiting->frontRequests.get(), requests);
}

TEST_F(Session, QuitIsTheExitKey) {
    playing(5);
    media().ask(Kind::quit);
    EXPECT_TRUE(fakes::endsProcess([this] { machine.run(5s); }));
    EXPECT_FALSE(machine.sounding());
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Session, QuitLetsADiscPlayOnWhereTheSettingsSaySo) {
    machine.program.state.audioOptions[5] = 1;
    playing(5);
    media().ask(Kind::quit);
    EXPECT_TRUE(machine.ends([this] { machine.run(5s); }));
    EXPECT_TRUE(machine.sounding());
    EXPECT_FALSE(machine.world.files.exists("C:\\Tessarel\\audiocd.tmp"));
}

TEST_F(Session, QuitEndsTheWaitingWindow) {
    machine.program.windows.show("CD1st");
    media().ask(Kind::quit);
    EXPECT_TRUE(fakes::endsProcess([this] { machine.run(1s); }));
}

// ---- Opening a disc image ----

struct OpeningDesk : Desk {
    void openImage(const std::string& image, std::shared_ptr<const platform::CdToc> disc) {
        machine.insert(std::move(disc));
        ask({.kind = Kind::open, .text = image}, 5s);
    }
};
struct Opening : testing::Test, OpeningDesk {};

TEST_F(Opening, FromTheWaitingWindowPlaysTheDisc) {
    machine.program.windows.show("CD1st");
    openImage("/music/new.cue", fakes::makeDisc(4, 60));
    EXPECT_EQ(machine.world.drives.images['D'], "/music/new.cue");
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(now().status, PlaybackStatus::playing);
}

TEST_F(Opening, PlaysThoughDiscsDoNotStartByThemselves) {
    for (const std::int16_t mode : {0, 1, 2, 3, 4}) {
        OpeningDesk fresh;
        fresh.machine.program.state.autoStartMode = mode;
        fresh.machine.program.windows.show("CD1st");
        fresh.openImage("/music/new.cue", fakes::makeDisc(4, 60));
        EXPECT_TRUE(fresh.machine.sounding()) << mode;
        EXPECT_EQ(fresh.machine.program.state.autoStartMode, mode);
    }
}

TEST_F(Opening, CountsForThatDiscAlone) {
    machine.program.windows.show("CD1st");
    openImage("/music/new.cue", fakes::makeDisc(4, 60));
    ASSERT_TRUE(machine.sounding());
    machine.press(transport::eject);
    machine.run(2s);
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(5s);
    ASSERT_EQ(state().discTrackCount, 5);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Opening, OfADataDiscPlaysNoLaterDisc) {
    machine.program.windows.show("CD1st");
    machine.world.files.drive('D').ready = true;
    machine.world.files.put("D:\\SETUP.EXE", "");
    machine.world.cd.insert(fakes::withDataAtTheEnd(fakes::makeDisc(1, 60)));
    ask({.kind = Kind::open, .text = "/discs/data.iso"}, 2s);
    ASSERT_FALSE(machine.program.windows.isLoaded("CDForm"));
    machine.world.files.clear('D');
    machine.insert(fakes::makeDisc(5, 60));
    machine.run(5s);
    ASSERT_TRUE(machine.program.windows.isLoaded("CDForm"));
    EXPECT_FALSE(machine.sounding());
}

TEST_F(Opening, TakesThePlaceOfTheDiscThatPlays) {
    playing(5);
    openImage("/music/new.cue", fakes::makeDisc(4, 60));
    EXPECT_EQ(state().discTrackCount, 4);
    EXPECT_TRUE(machine.sounding());
    EXPECT_TRUE(machine.program.windows.isVisible("CDForm"));
    EXPECT_FALSE(machine.program.windows.isLoaded("CD1st"));
}

TEST_F(Opening, WorksWhileTheDrawerIsOpen) {
    playing(5);
    machine.press(transport::eject);
    machine.run(1s);
    openImage("/music/new.cue", fakes::makeDisc(4, 60));
    EXPECT_EQ(state().discTrackCount, 4);
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Opening, ShowsTheWaitingWindowWhereNoneIsUp) {
    openImage("/music/new.cue", fakes::makeDisc(4, 60));
    EXPECT_TRUE(machine.sounding());
}

TEST_F(Opening, WhatIsNoDiscIsToldAndChangesNothing) {
    playing(5);
    machine.world.drives.refuseImages = Error{Fault::invalid, "\"wrong.cue\" is no disc."};
    ask({.kind = Kind::open, .text = "/music/wrong.cue"});
    EXPECT_EQ(machine.world.dialogs.lastText(), "\"wrong.cue\" is no disc.");
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(machine.program.state.playOpenedDisc, 0);
}

// ---- Notices ----

struct Notices : Session {
    Notices() { machine.world.notifications.inFront = false; }
};

TEST_F(Notices, NameEachNewTrackOnce) {
    playing(3, 20);
    machine.run(1min);
    ASSERT_THAT(notices(), SizeIs(3));
    EXPECT_EQ(notices()[0].title, "Track 1");
    EXPECT_EQ(notices()[1].title, "Track 2");
    EXPECT_EQ(notices()[2].title, "Track 3");
}

TEST_F(Notices, AreNotGivenWhileAWindowOfTheProgramIsInFront) {
    machine.world.notifications.inFront = true;
    playing(3, 20);
    machine.run(10s);
    machine.world.notifications.inFront = false;
    machine.run(5s);
    EXPECT_THAT(notices(), IsEmpty()) << "this track began while a person looked on";
    machine.run(10s);
    EXPECT_THAT(notices(), SizeIs(1));
}

TEST_F(Notices, PassOverTracksThatOnlyGoBy) {
    playing(9);
    notices().clear();
    for (int i = 0; i < 4; ++i) {
        ask(Kind::next, 700ms);
    }
    machine.run(3s);
    ASSERT_THAT(notices(), SizeIs(1));
    EXPECT_EQ(notices()[0].title, "Track 5");
}

TEST_F(Notices, AreNotGivenAnewAfterAPauseOrAJump) {
    playing(3);
    notices().clear();
    ask(Kind::pause);
    ask(Kind::play);
    ask({.kind = Kind::seekBy, .time = 20s});
    ask({.kind = Kind::seekBy, .time = -20s});
    machine.run(5s);
    EXPECT_THAT(notices(), IsEmpty());
}

TEST_F(Notices, AreGivenForTheSameDiscPutInAgain) {
    playing(3);
    machine.program.windows.unload("CDForm");
    notices().clear();
    machine.openPlayer();
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_THAT(notices(), SizeIs(1));
}

}  // namespace
}  // namespace tessarel::scenarios
