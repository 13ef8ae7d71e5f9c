#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "fake_discs.h"
#include "host/cd/physical_drive.h"
#include "host/cd/physical_medium.h"

namespace tessarel::tests {
namespace {

using host::PhysicalDrive;
using host::PhysicalMedium;
using platform::CdOpenFault;

constexpr Frames dataFrames = 300;
constexpr Frames audioFrames = 450;

/// A value that jitter correction can tell from its neighbours, as it can with music.
std::int16_t noise(std::int64_t n) { return static_cast<std::int16_t>(static_cast<std::uint64_t>(n) * 2654435761U >> 7); }

std::byte dataByte(Frames sector, int at) { return static_cast<std::byte>(sector * 7 + at); }

/// An image that libcdio opens in place of a drive: a data track, then two audio tracks.
class DiscImage {
public:
    DiscImage() {
        std::string pattern = (std::filesystem::temp_directory_path() / "disc-image-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        std::ofstream bin(folder_ / "disc.bin", std::ios::binary);
        for (Frames sector = 0; sector < dataFrames; ++sector) {
            writeDataSector(bin, sector);
        }
        for (std::int64_t n = 0; n < static_cast<std::int64_t>(audioFrames) * 588; ++n) {
            const std::int16_t pair[2] = {noise(2 * n), noise(2 * n + 1)};
            bin.write(reinterpret_cast<const char*>(pair), sizeof pair);
        }
        std::ofstream(folder_ / "disc.cue") << "TITLE \"Late Trains\"\nPERFORMER \"The Signals\"\nFILE \"disc.bin\" BINARY\n"
                                               "  TRACK 01 MODE1/2352\n    INDEX 01 00:00:00\n"
                                               "  TRACK 02 AUDIO\n    TITLE \"Platform Nine\"\n    INDEX 01 00:04:00\n"
                                               "  TRACK 03 AUDIO\n    INDEX 01 00:08:00\n";
    }
    ~DiscImage() { std::filesystem::remove_all(folder_); }
    std::string path() const { return (folder_ / "disc.cue").string(); }

private:
    static void writeDataSector(std::ofstream& bin, Frames sector) {
        std::string bytes(2352, '\0');
        std::fill_n(bytes.begin() + 1, 10, '\xFF');
        bytes[15] = 1;
        for (int at = 0; at < 2048; ++at) {
            bytes[static_cast<std::size_t>(16 + at)] = static_cast<char>(dataByte(sector, at));
        }
        bin.write(bytes.data(), 2352);
    }
    std::filesystem::path folder_;
};

class PhysicalMediumTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto opened = PhysicalMedium::open(image.path());
        ASSERT_TRUE(opened) << opened.error().message;
        medium = *opened;
    }
    void expectMusic(Frames from, int count) {
        std::vector<std::int16_t> samples(static_cast<std::size_t>(count) * 588 * 2);
        const auto read = medium->readAudio(from, count, samples.data());
        ASSERT_TRUE(read) << read.error().message;
        const std::int64_t first = static_cast<std::int64_t>(from - dataFrames) * 588 * 2;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            ASSERT_EQ(samples[i], noise(first + static_cast<std::int64_t>(i))) << "value " << i << " from frame " << from;
        }
    }
    Fault faultOfAudio(Frames from, int count) {
        std::vector<std::int16_t> samples(static_cast<std::size_t>(std::clamp(count, 1, 10)) * 588 * 2);
        const auto read = medium->readAudio(from, count, samples.data());
        return read ? Fault::full : read.error().fault;
    }
    DiscImage image;
    std::shared_ptr<host::Medium> medium;
};

TEST_F(PhysicalMediumTest, TheTableOfContentsIsThatOfTheDisc) {
    const platform::CdToc expected{
        {{1, 0, 300, false, "", ""}, {2, 300, 300, true, "Platform Nine", ""}, {3, 600, 150, true, "", ""}},
        750,
        "Late Trains",
        "The Signals"};
    EXPECT_EQ(medium->toc(), expected);
}

TEST_F(PhysicalMediumTest, SoundIsReadToTheSampleInSequenceAndAfterAJump) {
    expectMusic(300, 16);
    expectMusic(316, 75);
    expectMusic(391, 300);
    expectMusic(740, 10);
    expectMusic(500, 40);
    expectMusic(300, 1);
}

TEST_F(PhysicalMediumTest, FramesOutsideTheMusicAreRefused) {
    EXPECT_EQ(faultOfAudio(0, 1), Fault::invalid) << "a data track";
    EXPECT_EQ(faultOfAudio(299, 2), Fault::invalid);
    EXPECT_EQ(faultOfAudio(749, 2), Fault::invalid) << "across the lead-out";
    EXPECT_EQ(faultOfAudio(750, 1), Fault::invalid);
    EXPECT_EQ(faultOfAudio(-1, 1), Fault::invalid);
    EXPECT_EQ(faultOfAudio(300, 0), Fault::invalid);
    EXPECT_EQ(faultOfAudio(300, 1 << 20), Fault::invalid);
}

TEST_F(PhysicalMediumTest, DataIsReadFromDataTracksOnly) {
    std::vector<std::byte> bytes(2 * 2048);
    ASSERT_TRUE(medium->readData(298, 2, bytes.data()));
    for (int at = 0; at < 2048; ++at) {
        ASSERT_EQ(bytes[static_cast<std::size_t>(at)], dataByte(298, at));
        ASSERT_EQ(bytes[static_cast<std::size_t>(2048 + at)], dataByte(299, at));
    }
    EXPECT_EQ(medium->readData(299, 2, bytes.data()).error().fault, Fault::invalid);
    EXPECT_EQ(medium->readData(300, 1, bytes.data()).error().fault, Fault::invalid);
    EXPECT_EQ(medium->readData(-1, 1, bytes.data()).error().fault, Fault::invalid);
    EXPECT_EQ(medium->readData(2147483647, 2, bytes.data()).error().fault, Fault::invalid);
}

TEST(PhysicalMedium, WhatIsNoDiscIsToldAsNone) {
    const auto opened = PhysicalMedium::open("/nonexistent/drive");
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().fault, Fault::notReady);
}

TEST(SessionGap, TheTrackInFrontOfASecondSessionsDataEndsWithItsOwnSession) {
    auto toc = tocOf({{20000}, {30000}, {5000, false}});
    host::trimSessionGap(toc, 50000);
    EXPECT_EQ(toc.tracks[0].length, 20000);
    EXPECT_EQ(toc.tracks[1].length, 30000 - 11400);
    EXPECT_EQ(toc.leadOut, 55000);
}

TEST(SessionGap, WithinOneSessionNothingIsCutOff) {
    const auto mixed = tocOf({{20000, false}, {30000}, {5000, false}});
    auto toc = mixed;
    host::trimSessionGap(toc, 0);
    EXPECT_EQ(toc, mixed);
    auto shortTrack = tocOf({{11400}, {500, false}});
    host::trimSessionGap(shortTrack, 11400);
    EXPECT_EQ(shortTrack.tracks[0].length, 11400) << "a track is never cut to nothing";
    auto audioSessions = tocOf({{20000}, {30000}});
    host::trimSessionGap(audioSessions, 20000);
    EXPECT_EQ(audioSessions, tocOf({{20000}, {30000}}));
}

struct FakeControlState {
    std::int64_t mark = 0;
    int marksAsked = 0;
    std::optional<CdOpenFault> fault;
    bool claimed = false;
    bool exclusive = false;
    int ejected = 0;
    bool stuck = false;
};

class FakeControl : public host::DriveControl {
public:
    explicit FakeControl(FakeControlState& state) : state_(state) {}
    std::int64_t discMark() override {
        ++state_.marksAsked;
        return state_.mark;
    }
    std::optional<CdOpenFault> claim(bool exclusive) override {
        state_.claimed = !state_.fault;
        state_.exclusive = exclusive;
        return state_.fault;
    }
    void unclaim() override { state_.claimed = false; }
    void eject() override {
        ++state_.ejected;
        state_.mark = state_.stuck ? state_.mark : 0;
    }

private:
    FakeControlState& state_;
};

class PhysicalDriveTest : public ::testing::Test {
protected:
    void letAskIntervalPass() { std::this_thread::sleep_for(std::chrono::milliseconds(110)); }
    DiscImage image;
    FakeControlState control;
    PhysicalDrive drive{image.path(), std::make_unique<FakeControl>(control)};
};

TEST_F(PhysicalDriveTest, TheSameDiscIsTheSameMediumAndAChangedDiscIsAnother) {
    EXPECT_EQ(drive.medium(), nullptr);
    control.mark = 7;
    letAskIntervalPass();
    const auto first = drive.medium();
    ASSERT_NE(first, nullptr);
    letAskIntervalPass();
    EXPECT_EQ(drive.medium(), first);
    control.mark = 8;
    letAskIntervalPass();
    const auto second = drive.medium();
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first);
    control.mark = 0;
    letAskIntervalPass();
    EXPECT_EQ(drive.medium(), nullptr);
}

TEST_F(PhysicalDriveTest, AskingManyTimesInARowBothersTheDriveOnce) {
    control.mark = 1;
    for (int i = 0; i < 1000; ++i) {
        drive.medium();
    }
    EXPECT_LE(control.marksAsked, 3);
}

TEST_F(PhysicalDriveTest, AnEjectedDiscIsGoneAtTheNextLook) {
    control.mark = 1;
    ASSERT_NE(drive.medium(), nullptr);
    drive.eject();
    EXPECT_EQ(control.ejected, 1);
    EXPECT_EQ(drive.medium(), nullptr);
}

TEST_F(PhysicalDriveTest, ADiscThatTheTrayWillNotGiveOutIsStillThere) {
    control.mark = 1;
    ASSERT_NE(drive.medium(), nullptr);
    control.stuck = true;
    drive.eject();
    EXPECT_NE(drive.medium(), nullptr);
}

TEST_F(PhysicalDriveTest, ADiscThatCanNotBeReadIsTriedOnce) {
    PhysicalDrive blank("/nonexistent/drive", std::make_unique<FakeControl>(control));
    control.mark = 3;
    EXPECT_EQ(blank.medium(), nullptr);
}

TEST_F(PhysicalDriveTest, AnUnsharedHolderKeepsTheOthersOut) {
    EXPECT_FALSE(drive.acquire(false));
    EXPECT_TRUE(control.exclusive);
    EXPECT_EQ(drive.acquire(true), CdOpenFault::inUse);
    EXPECT_EQ(drive.acquire(false), CdOpenFault::inUse);
    drive.release();
    EXPECT_FALSE(control.claimed);
    EXPECT_FALSE(drive.acquire(true));
    EXPECT_FALSE(control.exclusive);
    EXPECT_FALSE(drive.acquire(true));
    EXPECT_EQ(drive.acquire(false), CdOpenFault::inUse);
    drive.release();
    EXPECT_TRUE(control.claimed) << "one holder is left";
    drive.release();
    EXPECT_FALSE(control.claimed);
}

TEST_F(PhysicalDriveTest, AFaultOfTheDriveIsPassedOnAndHoldsNothing) {
    control.fault = CdOpenFault::inUse;
    EXPECT_EQ(drive.acquire(false), CdOpenFault::inUse);
    control.fault.reset();
    EXPECT_FALSE(drive.acquire(false));
}

TEST(DriveControl, ADriveThatDoesNotExistSaysSo) {
    const auto control = host::makeDriveControl("/nonexistent/drive");
    EXPECT_EQ(control->discMark(), 0);
    EXPECT_EQ(control->claim(false), CdOpenFault::noDriver);
    EXPECT_EQ(control->claim(true), CdOpenFault::noDriver);
    control->eject();
    control->unclaim();
}

TEST(DriveControl, AFileThatIsNoDriveHasNoDisc) { EXPECT_EQ(host::makeDriveControl("/dev/null")->discMark(), 0); }

TEST(OpticalDevices, AreReadFromTheKernelsList) {
    EXPECT_EQ(
        host::opticalDevicesListed("CD-ROM information, Id: cdrom.c 3.20\n\ndrive name:\t\tsr1\tsr0\ndrive speed:\t\t48\t24\n"),
        (std::vector<std::string>{"/dev/sr0", "/dev/sr1"}));
    EXPECT_TRUE(host::opticalDevicesListed("drive name:\n").empty());
    EXPECT_TRUE(host::opticalDevicesListed("").empty());
}

}  // namespace
}  // namespace tessarel::tests
