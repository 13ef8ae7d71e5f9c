#include "app/drive_list.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace tessarel::app {
namespace {

struct FakeMedium : host::Medium {
    explicit FakeMedium(platform::CdToc contents) : contents_(std::move(contents)) {}
    const platform::CdToc& toc() const override { return contents_; }
    Result<void> readAudio(Frames /*from*/, int /*count*/, std::int16_t* /*samples*/) override { return {}; }
    Result<void> readData(Frames /*from*/, int /*count*/, std::byte* /*bytes*/) override { return {}; }
    platform::CdToc contents_;
};

struct FakeVolume : host::DiscVolume {
    std::string label() const override { return "TITLE"; }
    Result<std::vector<host::DiscEntry>> list(std::span<const std::string> /*folder*/) const override { return {}; }
    Result<std::string> read(std::span<const std::string> /*file*/, std::size_t /*mostBytes*/) const override { return {}; }
};

Result<std::shared_ptr<host::DiscVolume>> labelled(const std::shared_ptr<host::Medium>& /*medium*/, Frames /*start*/) {
    return std::make_shared<FakeVolume>();
}
Result<std::shared_ptr<host::DiscVolume>> unreadable(const std::shared_ptr<host::Medium>& /*medium*/, Frames /*start*/) {
    return failure(Fault::invalid, "no file system");
}

platform::CdTrack track(int number, Frames length, bool audio) {
    platform::CdTrack made;
    made.number = number;
    made.length = length;
    made.audio = audio;
    return made;
}
std::shared_ptr<host::Medium> disc(std::vector<platform::CdTrack> tracks, const std::string& title = "") {
    platform::CdToc toc;
    toc.tracks = std::move(tracks);
    toc.title = title;
    return std::make_shared<FakeMedium>(toc);
}

TEST(DescribeDisc, AnEmptyDriveHoldsNoDisc) { EXPECT_EQ(describeDisc(nullptr, labelled), "no disc"); }

TEST(DescribeDisc, AnAudioDiscTellsTracksAndLength) {
    EXPECT_EQ(describeDisc(disc({track(1, 75 * 61, true), track(2, 75 * 5, true)}), labelled), "audio disc, 2 tracks, 01:06");
    EXPECT_EQ(describeDisc(disc({track(1, 75 * 60 * 61, true)}), labelled), "audio disc, 1 track, 61:00");
}

TEST(DescribeDisc, TheTitleOfTheDiscItselfIsTold) {
    EXPECT_EQ(describeDisc(disc({track(1, 75, true)}, "Night Music"), labelled), "audio disc, 1 track, 00:01, \"Night Music\"");
}

TEST(DescribeDisc, ADataDiscTellsItsLabelIfThereIsOne) {
    EXPECT_EQ(describeDisc(disc({track(1, 75, false)}), labelled), "data disc \"TITLE\"");
    EXPECT_EQ(describeDisc(disc({track(1, 75, false)}), unreadable), "data disc");
}

TEST(DescribeDisc, AMixedDiscTellsBoth) {
    EXPECT_EQ(describeDisc(disc({track(1, 75, true), track(2, 750, false)}), labelled),
              "audio disc, 1 track, 00:01, and data \"TITLE\"");
}

struct FakeDrives : platform::Drives {
    platform::DriveType type(char letter) const override {
        return letter == 'C' || letter == 'Z' ? platform::DriveType::fixed
               : letter == 'D'                ? platform::DriveType::cdRom
                                              : platform::DriveType::noRoot;
    }
    Result<void> insertImage(char /*letter*/, std::string_view /*path*/) override { return {}; }
};
struct FakeDrive : host::DiscDrive {
    std::shared_ptr<host::Medium> medium() override { return nullptr; }
    std::optional<platform::CdOpenFault> acquire(bool /*shareable*/) override { return {}; }
    void release() override {}
    void eject() override {}
};
struct FakeDiscs : host::DiscDrives {
    host::DiscDrive* drive(char letter) override { return letter == 'D' ? &only : nullptr; }
    FakeDrive only;
};

TEST(DriveList, EachDriveHasALineInTheOrderOfLetters) {
    FakeDiscs discs;
    EXPECT_EQ(driveList(FakeDrives(), discs, "/home/ada/drive_c", labelled),
              "C:  fixed      /home/ada/drive_c\n"
              "D:  CD-ROM     no disc\n"
              "Z:  fixed      /\n");
}

}  // namespace
}  // namespace tessarel::app
