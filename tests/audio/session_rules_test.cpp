// What the desktop is told of the player, and what its wishes mean.
#include "audio/session_rules.h"

#include <gtest/gtest.h>

#include <chrono>

#include "audio/device/mm_control.h"

namespace tessarel::audio {
namespace {

using namespace std::chrono_literals;
using platform::LoopStatus;
using platform::MediaCommand;
using platform::Milliseconds;
using platform::NowPlaying;
using platform::PlaybackStatus;

struct Session : testing::Test {
    Session() {
        player.discTrackCount = 3;
        player.currentTrack = 2;
        player.playStarted = 1;
        player.trackLengths[1] = "3:00";
        player.trackLengths[2] = "4:05";
        player.trackFrames[0] = 150;
        player.trackFrames[2] = 30;
        record.discArtist = "The Players";
        record.discTitle = "Their Songs";
        record.trackTitles[2] = "Second Song";
    }
    PlayerState player;
    library::DiscRecord record;
    volume::VolumeState volume;
    DeviceReading device{mode::playing, {2, 1, 2, 15}, 1};
    NowPlaying now() const { return nowPlaying({player, record, volume, 7}, device); }
};

TEST_F(Session, TellsTheTrackThatIsHeard) {
    const auto told = now();
    EXPECT_EQ(told.status, PlaybackStatus::playing);
    EXPECT_EQ(told.trackId, "/org/tessarel/Disc7/Track2");
    EXPECT_EQ(told.trackNumber, 2);
    EXPECT_EQ(told.title, "Second Song");
    EXPECT_EQ(told.artist, "The Players");
    EXPECT_EQ(told.album, "Their Songs");
    EXPECT_EQ(told.albumArtist, "The Players");
    EXPECT_EQ(told.length, 245s + 400ms);
    EXPECT_EQ(sessionPosition(device), 62s + 200ms);
}

TEST_F(Session, GoesByTheSoundWhenThePlayerIsAheadOfIt) {
    player.currentTrack = 3;
    EXPECT_EQ(now().trackNumber, 2);
}

TEST_F(Session, NamesWhenStoppedTheTrackThatPlayWouldBeginWith) {
    device.mode = mode::stopped;
    EXPECT_EQ(now().status, PlaybackStatus::stopped);
    EXPECT_EQ(now().trackNumber, 2);
    EXPECT_EQ(sessionPosition(device), 0ms);
    for (const int none : {0, -1, 4}) {
        player.currentTrack = static_cast<std::int16_t>(none);
        EXPECT_EQ(now().trackId, "") << none;
        EXPECT_EQ(now().title, "") << none;
    }
}

TEST_F(Session, KeepsThePositionOverAPause) {
    device.mode = mode::paused;
    EXPECT_EQ(now().status, PlaybackStatus::paused);
    EXPECT_EQ(sessionPosition(device), 62s + 200ms);
}

TEST_F(Session, CallsATrackWithoutATitleByItsNumber) {
    record.trackTitles[2] = "  ";
    EXPECT_EQ(now().title, "Track 2");
}

TEST_F(Session, TellsWhatTheDiscSaysOfItselfWithoutARecord) {
    record = {};
    player.discText.artist = "Own Artist";
    player.discText.discTitle = "Own Title";
    player.discText.trackTitles[2] = "Own Song";
    player.discText.trackArtists[2] = "A Guest";
    EXPECT_EQ(now().title, "Own Song");
    EXPECT_EQ(now().artist, "A Guest");
    EXPECT_EQ(now().album, "Own Title");
    EXPECT_EQ(now().albumArtist, "Own Artist");
}

TEST_F(Session, TellsNoLengthBeforeTheTableOfTracksIsBuilt) {
    player.trackLengths.fill({});
    player.trackFrames[2] = 0;
    EXPECT_EQ(now().length, 0ms);
    EXPECT_FALSE(now().canSeek);
}

TEST_F(Session, TellsTheFirstImageOfTheDiscsOwnSet) {
    record.imageFiles[0] = "4";
    EXPECT_EQ(now().image, "");
    record.imageFiles[3] = "C:\\Pictures\\front.jpg";
    record.imageFiles[4] = "C:\\Pictures\\back.jpg";
    EXPECT_EQ(now().image, "C:\\Pictures\\front.jpg");
    record.noStoredImages = 1;
    EXPECT_EQ(now().image, "") << "images that stand in for a set are not this disc's";
}

TEST_F(Session, KnowsWhichKeysWouldDoAnything) {
    struct Case {
        const char* what;
        int mode, playMode, repeat, track, before;
        bool next, previous, seek;
    };
    const Case cases[] = {
        {"in the middle", mode::playing, wholeDisc, 0, 2, 1, true, true, true},
        {"on the first track", mode::playing, wholeDisc, 0, 1, 0, true, false, true},
        {"on the last track", mode::playing, wholeDisc, 0, 3, 2, false, true, true},
        {"on the last track with repeat", mode::playing, wholeDisc, 1, 3, 2, false, true, true},
        {"in single mode", mode::playing, singleTrack, 0, 2, 1, true, true, true},
        {"in a program", mode::playing, programmed, 0, 3, 2, true, false, true},
        {"in a program with repeat", mode::playing, programmed, 1, 1, 0, true, true, true},
        {"paused", mode::paused, wholeDisc, 0, 2, 1, true, true, false},
        {"stopped", mode::stopped, wholeDisc, 0, 2, 1, false, false, false},
    };
    for (const auto& each : cases) {
        device = {each.mode, {each.track, 0, 5, 0}, each.before};
        player.playMode = static_cast<std::int16_t>(each.playMode);
        player.repeatOn = static_cast<std::int16_t>(each.repeat);
        player.currentTrack = static_cast<std::int16_t>(each.track);
        player.trackLengths[3] = "1:00";
        EXPECT_EQ(now().canGoNext, each.next) << each.what;
        EXPECT_EQ(now().canGoPrevious, each.previous) << each.what;
        EXPECT_EQ(now().canSeek, each.seek) << each.what;
        EXPECT_TRUE(now().canPlay && now().canPause) << each.what;
    }
    player.playStarted = 0;
    player.playMode = wholeDisc;
    device = {mode::playing, {2, 0, 5, 0}, 1};
    EXPECT_FALSE(now().canGoNext || now().canGoPrevious) << "before the first time update the keys do nothing";
}

TEST_F(Session, WithoutADiscHasNeitherTrackNorKeys) {
    player.repeatOn = 1;
    const auto told = nothingPlaying({player, record, volume, 7});
    NowPlaying wanted;
    wanted.loop = LoopStatus::playlist;
    EXPECT_EQ(told, wanted);
}

TEST_F(Session, RepeatsATrackInSingleModeAndElseAll) {
    const auto loop = [this](int repeat, int playMode) {
        player.repeatOn = static_cast<std::int16_t>(repeat);
        player.playMode = static_cast<std::int16_t>(playMode);
        return now().loop;
    };
    EXPECT_EQ(loop(0, singleTrack), LoopStatus::none);
    EXPECT_EQ(loop(0, wholeDisc), LoopStatus::none);
    EXPECT_EQ(loop(1, singleTrack), LoopStatus::track);
    EXPECT_EQ(loop(1, wholeDisc), LoopStatus::playlist);
    EXPECT_EQ(loop(1, programmed), LoopStatus::playlist);
}

TEST_F(Session, ShufflesWhileAProgramOfRandomPlayRuns) {
    EXPECT_FALSE(now().shuffle);
    player.randomProgram = 1;
    EXPECT_FALSE(now().shuffle);
    player.playMode = programmed;
    EXPECT_TRUE(now().shuffle);
    player.randomProgram = 0;
    EXPECT_FALSE(now().shuffle);
}

TEST_F(Session, VolumeIsThatOfTheLouderSlider) {
    EXPECT_DOUBLE_EQ(sessionVolume(volume), 1.0);
    volume.sliderLastLeft = 60;
    volume.sliderLastRight = 25;
    EXPECT_DOUBLE_EQ(sessionVolume(volume), 0.75);
    volume.muted = true;
    EXPECT_DOUBLE_EQ(sessionVolume(volume), 0.0);
    volume = {};
    volume.sliderLastLeft = 100;
    volume.sliderLastRight = 100;
    EXPECT_DOUBLE_EQ(sessionVolume(volume), 0.0);
}

// ---- Wishes for a position ----

struct Seeking : Session {
    SeekPlan by(Milliseconds time, Milliseconds from = 60s) const {
        return planSeek(now(), from, {.kind = MediaCommand::Kind::seekBy, .time = time});
    }
    SeekPlan to(Milliseconds time, const std::string& track = "/org/tessarel/Disc7/Track2") const {
        return planSeek(now(), 60s, {.kind = MediaCommand::Kind::setPosition, .time = time, .text = track});
    }
    static SeekPlan jump(int seconds) { return {SeekPlan::Kind::jump, seconds}; }
};

TEST_F(Seeking, MovesByWholeSeconds) {
    EXPECT_EQ(by(5s), jump(65));
    EXPECT_EQ(by(-5s), jump(55));
    EXPECT_EQ(by(1499ms), jump(61));
    EXPECT_EQ(by(1500ms), jump(62));
    EXPECT_EQ(to(100s), jump(100));
    EXPECT_EQ(to(0s), jump(0));
}

TEST_F(Seeking, BeforeTheStartIsTheStart) {
    EXPECT_EQ(by(-61s), jump(0));
    EXPECT_EQ(by(Milliseconds::min()), jump(0));
}

TEST_F(Seeking, BehindTheEndIsTheNextTrack) {
    const SeekPlan next{SeekPlan::Kind::next, 0};
    EXPECT_EQ(by(185'400ms), next) << "the very end";
    EXPECT_EQ(by(10min), next);
    EXPECT_EQ(by(Milliseconds::max()), next);
}

TEST_F(Seeking, StaysInsideTheTrack) {
    EXPECT_EQ(by(185'300ms), jump(244));
    EXPECT_EQ(to(245'400ms), jump(244));
}

TEST_F(Seeking, PassesOverPositionsOutsideTheTrack) {
    EXPECT_EQ(to(-1ms), SeekPlan());
    EXPECT_EQ(to(245'401ms), SeekPlan());
    EXPECT_EQ(to(Milliseconds::max()), SeekPlan());
}

TEST_F(Seeking, PassesOverTracksOfAFormerMoment) {
    EXPECT_EQ(to(100s, "/org/tessarel/Disc7/Track1"), SeekPlan());
    EXPECT_EQ(to(100s, "/org/tessarel/Disc6/Track2"), SeekPlan());
    EXPECT_EQ(to(100s, ""), SeekPlan());
}

TEST_F(Seeking, DoesNothingUnlessPlayRuns) {
    for (const int still : {mode::paused, mode::stopped, mode::notOpen}) {
        device.mode = still;
        EXPECT_EQ(by(5s), SeekPlan()) << still;
        EXPECT_EQ(to(5s), SeekPlan()) << still;
    }
}

// ---- The words of a notice ----

TEST(BarShare, IsTheSecondsShareOfTheTrack) {
    EXPECT_FLOAT_EQ(shareOfBar(0, 60), 0);
    EXPECT_FLOAT_EQ(shareOfBar(15, 60), 0.25F);
    EXPECT_FLOAT_EQ(shareOfBar(59, 60), 59.0F / 60);
    EXPECT_FLOAT_EQ(shareOfBar(0, 0), 0) << "a track of less than a second";
}

TEST_F(Session, NoticeNamesTrackArtistAndDisc) {
    record.imageFiles[1] = "C:\\front.jpg";
    EXPECT_EQ(noticeOf(now()), (platform::Notice{"Second Song", "The Players - Their Songs", "C:\\front.jpg"}));
    record.discTitle.clear();
    EXPECT_EQ(noticeOf(now()).text, "The Players");
    record.discArtist.clear();
    EXPECT_EQ(noticeOf(now()).text, "");
}

}  // namespace
}  // namespace tessarel::audio
