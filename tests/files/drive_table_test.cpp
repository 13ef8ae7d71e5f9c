#include "host/files/drive_table.h"

#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using platform::CdOpenFault;
using platform::DriveType;

class DriveTableTest : public FilesTest {};

TEST_F(DriveTableTest, LettersHaveTheirKinds) {
    EXPECT_EQ(drives->type('C'), DriveType::fixed);
    EXPECT_EQ(drives->type('z'), DriveType::fixed);
    EXPECT_EQ(drives->type('D'), DriveType::cdRom);
    EXPECT_EQ(drives->type('e'), DriveType::cdRom);
    EXPECT_EQ(drives->type('F'), DriveType::noRoot);
    EXPECT_EQ(drives->type('A'), DriveType::noRoot);
    EXPECT_EQ(drives->type('1'), DriveType::noRoot);
    EXPECT_EQ(drives->drive('C'), nullptr);
    EXPECT_EQ(drives->drive('F'), nullptr);
}

TEST_F(DriveTableTest, AMachineWithoutAnOpticalDriveHasAnEmptyD) {
    DriveTable bare(driveC, {nullptr, openImage()});
    EXPECT_EQ(bare.type('D'), DriveType::cdRom);
    EXPECT_EQ(bare.type('E'), DriveType::noRoot);
    ASSERT_NE(bare.drive('D'), nullptr);
    EXPECT_EQ(bare.drive('D')->medium(), nullptr);
    EXPECT_EQ(bare.drive('D')->acquire(false), std::nullopt);
    bare.drive('D')->eject();
}

TEST_F(DriveTableTest, MoreDrivesThanLettersLeaveTheRootItsLetter) {
    DriveTable many(driveC, {[] {
                                 std::vector<std::unique_ptr<DiscDrive>> real;
                                 for (int i = 0; i < 30; ++i) {
                                     real.push_back(std::make_unique<FakeDiscDrive>());
                                 }
                                 return real;
                             },
                             openImage()});
    EXPECT_EQ(many.type('Y'), DriveType::cdRom);
    EXPECT_EQ(many.type('Z'), DriveType::fixed);
}

TEST_F(DriveTableTest, AnImageHidesTheDrivesOwnDiscUntilItIsEjected) {
    d->disc = std::make_shared<FakeMedium>(std::vector<bool>{true});
    put(temp.path / "audio.cue", "");
    ASSERT_TRUE(drives->insertImage('d', (temp.path / "audio.cue").string()));
    const auto image = drives->drive('D')->medium();
    ASSERT_NE(image, nullptr);
    EXPECT_NE(image, d->disc);
    EXPECT_EQ(drives->drive('D')->medium(), image);

    drives->drive('D')->eject();
    EXPECT_EQ(drives->drive('D')->medium(), d->disc);
    EXPECT_EQ(d->ejected, 0);
    drives->drive('D')->eject();
    EXPECT_EQ(d->ejected, 1);
}

TEST_F(DriveTableTest, AnotherImageTakesThePlaceAsANewMedium) {
    put(temp.path / "audio.cue", "");
    ASSERT_TRUE(drives->insertImage('D', (temp.path / "audio.cue").string()));
    const auto first = drives->drive('D')->medium();
    ASSERT_TRUE(drives->insertImage('D', (temp.path / "audio.cue").string()));
    EXPECT_NE(drives->drive('D')->medium(), first);
}

TEST_F(DriveTableTest, AnImageMakesACdRomDriveOfAFreeLetter) {
    put(driveC / "Images" / "audio.cue", "");
    ASSERT_TRUE(drives->insertImage('G', "c:\\images\\AUDIO.CUE"));
    EXPECT_EQ(drives->type('G'), DriveType::cdRom);
    drives->drive('G')->eject();
    EXPECT_EQ(drives->type('G'), DriveType::cdRom);
    EXPECT_EQ(drives->drive('G')->medium(), nullptr);
}

TEST_F(DriveTableTest, AnImageIsFoundByItsPathOnZ) {
    put(temp.path / "audio.cue", "");
    std::string path = "Z:" + (temp.path / "audio.cue").string();
    std::replace(path.begin(), path.end(), '/', '\\');
    EXPECT_TRUE(drives->insertImage('D', path));
}

TEST_F(DriveTableTest, ABadImageLeavesTheDriveAsItWas) {
    put(temp.path / "audio.cue", "");
    put(temp.path / "broken.cue", "");
    ASSERT_TRUE(drives->insertImage('D', (temp.path / "audio.cue").string()));
    const auto before = drives->drive('D')->medium();
    const auto inserted = drives->insertImage('D', (temp.path / "broken.cue").string());
    ASSERT_FALSE(inserted);
    EXPECT_THAT(inserted.error().message, testing::HasSubstr("broken.cue"));
    EXPECT_EQ(drives->drive('D')->medium(), before);
    EXPECT_FALSE(drives->insertImage('H', (temp.path / "broken.cue").string()));
    EXPECT_EQ(drives->type('H'), DriveType::noRoot);
}

TEST_F(DriveTableTest, ImagesGoIntoCdRomDrivesOnly) {
    put(temp.path / "audio.cue", "");
    for (const char letter : {'C', 'z', '?'}) {
        const auto inserted = drives->insertImage(letter, (temp.path / "audio.cue").string());
        ASSERT_FALSE(inserted);
        EXPECT_EQ(inserted.error().fault, Fault::invalid);
    }
}

TEST_F(DriveTableTest, APathThatLeadsNowhereIsNotFound) {
    for (const auto* path : {"C:\\gone.cue", "audio.cue", "Q:\\audio.cue", ""}) {
        const auto inserted = drives->insertImage('D', path);
        ASSERT_FALSE(inserted) << path;
        EXPECT_EQ(inserted.error().fault, Fault::notFound) << path;
    }
    const auto onDisc = drives->insertImage('D', "E:\\audio.cue");
    ASSERT_FALSE(onDisc);
    EXPECT_EQ(onDisc.error().fault, Fault::unsupported);
}

TEST_F(DriveTableTest, ADriveHeldAloneIsInUseForOthers) {
    auto& drive = *drives->drive('D');
    EXPECT_EQ(drive.acquire(false), std::nullopt);
    EXPECT_EQ(drive.acquire(false), CdOpenFault::inUse);
    EXPECT_EQ(drive.acquire(true), CdOpenFault::inUse);
    drive.release();
    EXPECT_EQ(d->released, 1);
    EXPECT_EQ(drive.acquire(true), std::nullopt);
    EXPECT_TRUE(d->lastShareable);
    EXPECT_EQ(drive.acquire(true), std::nullopt);
    EXPECT_EQ(drive.acquire(false), CdOpenFault::inUse);
    drive.release();
    EXPECT_EQ(d->released, 1);
    drive.release();
    EXPECT_EQ(d->released, 2);
}

TEST_F(DriveTableTest, ARealDriveTellsItsOwnFault) {
    d->fault = CdOpenFault::cannotPlay;
    EXPECT_EQ(drives->drive('D')->acquire(false), CdOpenFault::cannotPlay);
    d->fault = std::nullopt;
    EXPECT_EQ(drives->drive('D')->acquire(false), std::nullopt);
}

TEST_F(DriveTableTest, AnImagePlaysInADriveThatCannot) {
    d->fault = CdOpenFault::cannotPlay;
    put(temp.path / "audio.cue", "");
    ASSERT_TRUE(drives->insertImage('D', (temp.path / "audio.cue").string()));
    EXPECT_EQ(drives->drive('D')->acquire(false), std::nullopt);
    drives->drive('D')->release();
    EXPECT_EQ(d->released, 0);
}

}  // namespace
}  // namespace tessarel::host
