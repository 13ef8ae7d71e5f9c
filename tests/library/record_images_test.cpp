#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sequential_file.h"
#include "library/record_files.h"
#include "tests/data/golden.h"
#include "tests/fakes/memory_file_system.h"

namespace tessarel::library {
namespace {

using testing::ElementsAre;

const std::string dataDir = "C:\\Tessarel";
const std::string path = "C:\\Tessarel\\datacd\\00123456.CD";
const std::string ownSet = path + "1";
const std::string defaultSet = "C:\\Tessarel\\datacd\\default.cd1";

struct Entry {
    std::size_t index;
    std::string file;
    std::int16_t delay;
};

std::string setText(const std::vector<Entry>& entries, int timeCorrection) {
    DiscRecord record;
    for (const auto& entry : entries) {
        record.imageFiles.at(entry.index) = entry.file;
        record.imageDelays.at(entry.index) = entry.delay;
    }
    SequentialWriter file;
    for (std::size_t i = 0; i < record.imageFiles.size(); ++i) {
        file.text(record.imageFiles[i]).number(record.imageDelays[i]);
    }
    return file.number(timeCorrection).bytes();
}

class DiscImages : public testing::Test {
protected:
    DiscImages() {
        files.putFolder("C:\\Tessarel\\datacd");
        record.discRecordPath = path;
        record.timeCorrection = 4;
    }
    void read() { readDiscImages(files, dataDir, record); }
    Result<void> write() { return writeDiscImages(files, dataDir, record); }

    void refuse(const std::string& file, Fault fault) { files.failing[text::lower(file)] = fault; }

    fakes::MemoryFileSystem files;
    DiscRecord record;
};

TEST_F(DiscImages, OfTheDiscsOwnFileComeWithItsTimeCorrection) {
    files.put(ownSet, setText({{0, "4", 10}, {1, "C:\\art\\front, left.bmp", 4}, {20, "C:\\art\\~back.jpg", 8}}, -2));
    read();
    EXPECT_EQ(record.imageFiles[0], "4");
    EXPECT_EQ(record.imageDelays[0], 10);
    EXPECT_EQ(record.imageFiles[1], "C:\\art\\front, left.bmp") << "image paths are not encoded";
    EXPECT_EQ(record.imageFiles[20], "C:\\art\\~back.jpg");
    EXPECT_EQ(record.imageDelays[20], 8);
    EXPECT_EQ(record.timeCorrection, -2);
    EXPECT_EQ(record.noStoredImages, 0);
    EXPECT_EQ(record.imageCount, 3);
    EXPECT_EQ(record.packedFiles[2], "C:\\art\\~back.jpg");
    EXPECT_EQ(record.packedRatios[2], 8);
}

TEST_F(DiscImages, WrittenAreThoseOfTheGoldenFile) {
    record.imageFiles[0] = "1";
    record.imageDelays[0] = 15;
    record.imageFiles[1] = "C:\\art\\front, \u00fcber.bmp";
    record.imageDelays[1] = 4;
    record.imageFiles[3] = "C:\\art\\~back.jpg";
    record.timeCorrection = -3;
    ASSERT_TRUE(write());
    EXPECT_TRUE(testdata::matchesGolden("records/00123456.CD1", files.bytes(ownSet)));
}

TEST_F(DiscImages, ReadFromTheGoldenFileAreWhatWasSaved) {
    files.put(ownSet, testdata::bytesOf("records/00123456.CD1"));
    read();
    EXPECT_EQ(record.imageFiles[1], "C:\\art\\front, \u00fcber.bmp");
    EXPECT_EQ(record.imageFiles[2], "");
    EXPECT_EQ(record.imageFiles[3], "C:\\art\\~back.jpg");
    EXPECT_EQ(record.timeCorrection, -3);
}

TEST_F(DiscImages, OfTheDefaultFileLeaveTheTimeCorrectionAndReadDisplayTypeTen) {
    files.put(defaultSet, setText({{0, "2", 10}, {1, "C:\\d.bmp", 1}}, 1));
    read();
    EXPECT_EQ(record.imageFiles[0], "10");
    EXPECT_EQ(record.imageFiles[1], "C:\\d.bmp");
    EXPECT_EQ(record.timeCorrection, 4);
    EXPECT_EQ(record.imageCount, 2);
}

TEST_F(DiscImages, ThatStandInForADiscWithoutOnesAreNotWrittenBack) {
    files.put(defaultSet, setText({{0, "2", 10}, {1, "C:\\d.bmp", 1}}, 0));
    read();
    EXPECT_EQ(record.noStoredImages, 1);
    ASSERT_TRUE(write());
    EXPECT_TRUE(files.written.empty());
}

TEST_F(DiscImages, OfTheDefaultFileThatWasAskedForMayBeWrittenToTheDisc) {
    files.put(ownSet, setText({{0, "4", 10}, {1, "C:\\own.bmp", 1}}, 2));
    files.put(defaultSet, setText({{0, "2", 10}, {1, "C:\\d.bmp", 1}}, 1));
    record.defaultImageSet = 1;
    read();
    EXPECT_EQ(record.imageFiles[0], "10");
    EXPECT_EQ(record.imageFiles[1], "C:\\d.bmp");
    EXPECT_EQ(record.timeCorrection, 4);
    EXPECT_EQ(record.noStoredImages, 0);
    ASSERT_TRUE(write());
    EXPECT_THAT(files.written, ElementsAre(ownSet));
}

TEST_F(DiscImages, AreTakenFromTheDefaultFileForOneReadOnly) {
    files.put(ownSet, setText({{0, "4", 10}, {1, "C:\\own.bmp", 1}}, 2));
    files.put(defaultSet, setText({{0, "2", 10}, {1, "C:\\d.bmp", 1}}, 1));
    record.defaultImageSet = 1;
    read();
    EXPECT_EQ(record.defaultImageSet, 0);
    read();
    EXPECT_EQ(record.imageFiles[1], "C:\\own.bmp");
}

TEST_F(DiscImages, AreWrittenToTheDefaultFileOnce) {
    record.imageFiles[0] = "1";
    record.defaultImageSet = 1;
    ASSERT_TRUE(write());
    EXPECT_EQ(record.defaultImageSet, 0);
    ASSERT_TRUE(write());
    EXPECT_THAT(files.written, ElementsAre(defaultSet, ownSet));
}

TEST_F(DiscImages, AllBlankInTheDiscsFileAreReplacedByTheDefaultOnesWithItsTimeCorrectionIgnored) {
    files.put(ownSet, setText({{3, "  ", 5}}, -1));
    files.put(defaultSet, setText({{1, "C:\\d.bmp", 1}}, 1));
    read();
    EXPECT_EQ(record.imageFiles[1], "C:\\d.bmp");
    EXPECT_EQ(record.timeCorrection, 4);
    EXPECT_EQ(record.noStoredImages, 1);
}

TEST_F(DiscImages, OfTheArtFolderStandInWhenNothingIsStored) {
    files.put("C:\\Tessarel\\bmpdir.dat", "\"C:\\Art\"\r\n1\r\n");
    files.put("C:\\Art\\one.bmp", "x");
    files.put("C:\\Art\\two.BMP", "x");
    files.put("C:\\Art\\three.jpg", "x");
    read();
    const auto listed = files.list("C:\\Art\\*.bmp", platform::attributeNone).value();
    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(record.imageFiles[0], "10");
    EXPECT_EQ(record.imageFiles[1], "C:\\Art\\" + listed[0]);
    EXPECT_EQ(record.imageFiles[2], "C:\\Art\\" + listed[1]);
    EXPECT_EQ(record.imageFiles[3], "");
    EXPECT_EQ(record.imageCount, 3);
    EXPECT_EQ(record.packedFiles[1], record.imageFiles[1]);
    EXPECT_EQ(record.noStoredImages, 1);
    EXPECT_EQ(record.timeCorrection, 4);
}

TEST_F(DiscImages, OfTheDataDirectoryStandInWhenTheArtFolderIsBlankOrGone) {
    files.put("C:\\Tessarel\\here.bmp", "x");
    for (const auto* folder : {"\"\"\r\n0\r\n", "\"  \"\r\n0\r\n", "\"C:\\Gone\"\r\n0\r\n", ""}) {
        files.put("C:\\Tessarel\\bmpdir.dat", folder);
        read();
        EXPECT_EQ(record.imageFiles[1], "C:\\Tessarel\\here.bmp") << folder;
    }
}

TEST_F(DiscImages, FromTheRootOfADriveHaveOneBackSlash) {
    files.put("C:\\Tessarel\\bmpdir.dat", "\"C:\\\"\r\n0\r\n");
    files.put("C:\\top.bmp", "x");
    read();
    EXPECT_EQ(record.imageFiles[1], "C:\\top.bmp");
}

TEST_F(DiscImages, OfAFullArtFolderStopAtTwenty) {
    for (int i = 0; i < 30; ++i) {
        files.put("C:\\Tessarel\\" + std::to_string(100 + i) + ".bmp", "x");
    }
    read();
    EXPECT_NE(record.imageFiles[20], "");
    EXPECT_EQ(record.imageCount, 21);
}

TEST_F(DiscImages, OfAFileThatEndsEarlyKeepWhatWasReadAndTheOldTimeCorrection) {
    files.put(ownSet, "\"4\"\r\n10\r\n\"C:\\a.bmp\"\r\n");
    record.imageFiles[5] = "old";
    read();
    EXPECT_EQ(record.imageFiles[1], "C:\\a.bmp");
    EXPECT_EQ(record.imageDelays[1], 0);
    EXPECT_EQ(record.imageFiles[5], "");
    EXPECT_EQ(record.imageCount, 2);
    EXPECT_EQ(record.timeCorrection, 4);
}

TEST_F(DiscImages, AreNotWrittenWhenNoEntryIsANumberAndTheTimeCorrectionIsZero) {
    record.timeCorrection = 0;
    record.imageFiles[1] = "C:\\a.bmp";
    record.imageDelays[0] = 30;
    ASSERT_TRUE(write());
    EXPECT_TRUE(files.written.empty());
    record.imageFiles[0] = "0";
    ASSERT_TRUE(write());
    EXPECT_THAT(files.written, ElementsAre(ownSet));
}

TEST_F(DiscImages, AreWrittenForATimeCorrectionAlone) {
    ASSERT_TRUE(write());
    EXPECT_EQ(files.bytes(ownSet), setText({}, 4));
}

TEST_F(DiscImages, MoveTheCurrentDirectoryToTheRecordFolderAndBackToTheDataDirectory) {
    read();
    EXPECT_THAT(files.directories, ElementsAre("C:\\Tessarel\\datacd", "C:\\Tessarel"));
    files.directories.clear();
    record.noStoredImages = 0;
    ASSERT_TRUE(write());
    EXPECT_THAT(files.directories, ElementsAre("C:\\Tessarel\\datacd", "C:\\Tessarel"));
}

TEST_F(DiscImages, ThatDontFitOnTheDiskLeaveTheOldFileAndAreTold) {
    record.imageFiles[0] = "1";
    ASSERT_TRUE(write());
    const auto old = files.bytes(ownSet);
    refuse(ownSet, Fault::full);
    record.imageFiles[0] = "2";
    const auto written = write();
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::full);
    EXPECT_EQ(files.bytes(ownSet), old);
}

TEST_F(DiscImages, OfARecordPathWithBlanksAroundItAreFoundByTheTrimmedPath) {
    record.discRecordPath = " " + path + "  ";
    files.put(ownSet, setText({{0, "4", 10}}, 0));
    read();
    EXPECT_EQ(record.imageFiles[0], "4");
}

}  // namespace
}  // namespace tessarel::library
