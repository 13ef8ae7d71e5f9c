#include "library/record_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sequential_file.h"
#include "tests/data/golden.h"
#include "tests/fakes/memory_file_system.h"

namespace tessarel::library {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string dataDir = "C:\\Tessarel";
const std::string path = "C:\\Tessarel\\datacd\\00123456.CD";

std::string lines(const std::vector<std::string>& values) {
    SequentialWriter file;
    for (const auto& value : values) {
        file.text(value);
    }
    return file.bytes();
}

class DiscRecordFiles : public testing::Test {
protected:
    DiscRecordFiles() {
        files.putFolder("C:\\Tessarel\\datacd");
        record.discRecordPath = path;
        record.discFileId = "00123456";
        record.discExtras[1] = "Audio CD";
    }

    Result<void> save(int discTrackCount = 0) { return writeDiscRecord(files, dataDir, discTrackCount, record); }
    void load() { readDiscRecord(files, dataDir, record); }
    DiscRecord loaded() {
        DiscRecord other;
        other.discRecordPath = path;
        readDiscRecord(files, dataDir, other);
        return other;
    }
    bool exists(const std::string& digit) const { return files.exists(path + digit); }
    std::string bytes(const std::string& digit) const { return files.bytes(path + digit); }
    long lineCount(const std::string& digit) const {
        const auto text = bytes(digit);
        return std::count(text.begin(), text.end(), '\n');
    }

    void refuse(const std::string& file, Fault fault) { files.failing[text::lower(file)] = fault; }

    fakes::MemoryFileSystem files;
    DiscRecord record;
};

// A disc of 46 tracks with something in every kind of field.
void fill(DiscRecord& record) {
    record.discTitle = "Harbour, at \"Night\"";
    record.discArtist = "Ada Mu\u00f1oz";
    record.linerNotes = "One line,\r\nand \"another\".\r\n";
    for (int track = 1; track <= 46; ++track) {
        record.trackTitles.at(static_cast<std::size_t>(track)) = "Part " + std::to_string(track) + ", first";
    }
    record.discInfo = {"", "48:12,3:55,4:01,", "46", "Anon, the elder", "LQ 10,17", "Jazz, Free"};
    record.discExtras[0] = "9,99";
    record.discExtras[2] = "1997";
    storedLyrics(record, 1) = "La,\r\nla \"la\"";
    storedLyrics(record, 51) = "Too late, too late";
}

TEST_F(DiscRecordFiles, WrittenAreThoseOfTheGoldenFiles) {
    fill(record);
    ASSERT_TRUE(save());
    EXPECT_TRUE(testdata::matchesGolden("records/00123456.CD", bytes("")));
    EXPECT_TRUE(testdata::matchesGolden("records/00123456.CD3", bytes("3")));
    EXPECT_TRUE(testdata::matchesGolden("records/00123456.CD4", bytes("4")));
    EXPECT_TRUE(testdata::matchesGolden("records/00123456.CD5", bytes("5")));
}

TEST_F(DiscRecordFiles, ReadFromTheGoldenFilesAreWhatWasSaved) {
    for (const char* digit : {"", "3", "4", "5"}) {
        files.put(path + digit, testdata::bytesOf(std::string("records/00123456.CD") + digit));
    }
    DiscRecord expected;
    fill(expected);
    const auto read = loaded();
    EXPECT_EQ(read.discTitle, expected.discTitle);
    EXPECT_EQ(read.discArtist, expected.discArtist);
    EXPECT_EQ(read.linerNotes, expected.linerNotes);
    EXPECT_EQ(read.trackTitles, expected.trackTitles);
    EXPECT_EQ(read.discInfo, expected.discInfo);
    expected.discExtras[1] = "Audio CD";
    EXPECT_EQ(read.discExtras, expected.discExtras);
    EXPECT_EQ(read.lyricsOverflow, expected.lyricsOverflow);
}

TEST_F(DiscRecordFiles, InTheCodePageOfOldMachinesAreReadAndSavedAsUtf8) {
    files.put(path, testdata::bytesOf("records/ansi.CD"));
    load();
    EXPECT_EQ(record.discTitle, "Caf\u00e9 \u2013 Encore");
    EXPECT_EQ(record.discArtist, "Bj\u00f6rn \u20ac");
    EXPECT_EQ(record.discInfo[5], "General");
    ASSERT_TRUE(save());
    EXPECT_THAT(bytes(""), StartsWith("\"Caf\u00e9 \u2013 Encore\"\r\n\"Bj\u00f6rn \u20ac\"\r\n"));
}

TEST_F(DiscRecordFiles, OfADiscWith45TracksAreTheMainOneAlone) {
    record.discInfo[2] = "45";
    ASSERT_TRUE(save(45));
    EXPECT_TRUE(exists(""));
    EXPECT_FALSE(exists("4"));
    EXPECT_FALSE(exists("5"));
    EXPECT_EQ(lineCount(""), 53);
}

TEST_F(DiscRecordFiles, OfADiscWith46TracksHoldFurtherTitlesAndLyricsBlankOnesIncluded) {
    record.trackTitles[46] = "Last";
    ASSERT_TRUE(save(46));
    EXPECT_EQ(lineCount("4"), 55);
    EXPECT_EQ(lineCount("5"), 50);
    EXPECT_THAT(bytes("4"), StartsWith("\"Last\"\r\n\"\"\r\n"));
}

TEST_F(DiscRecordFiles, HoldFurtherTitlesWhenOnlyTheStoredCountAsksForIt) {
    record.discInfo[2] = "46";
    ASSERT_TRUE(save(12));
    EXPECT_TRUE(exists("4"));
    EXPECT_TRUE(exists("5"));
}

TEST_F(DiscRecordFiles, ThatAreStaleStayWhenTheRecordShrinks) {
    record.trackTitles[46] = "Stale";
    ASSERT_TRUE(save(46));
    const auto titles = bytes("4");
    const auto lyrics = bytes("5");
    record.trackTitles[46] = "New";
    record.discInfo[2] = "12";
    ASSERT_TRUE(save(12));
    EXPECT_EQ(bytes("4"), titles);
    EXPECT_EQ(bytes("5"), lyrics);
    EXPECT_EQ(loaded().trackTitles[46], "Stale");
}

TEST_F(DiscRecordFiles, StoreACommaInATitleAsATildeThatShowsAsACommaAgain) {
    record.trackTitles[1] = "Last, First";
    ASSERT_TRUE(save());
    EXPECT_THAT(bytes(""), HasSubstr("\"Last~ First\"\r\n"));
    EXPECT_EQ(loaded().trackTitles[1], "Last, First");
}

TEST_F(DiscRecordFiles, BringATitleWithATildeBackWithAComma) {
    record.trackTitles[1] = "5 ~ 6";
    ASSERT_TRUE(save());
    EXPECT_EQ(record.trackTitles[1], "5 ~ 6") << "a title is encoded on a copy";
    EXPECT_EQ(loaded().trackTitles[1], "5 , 6");
}

TEST_F(DiscRecordFiles, KeepTheCommasOfTheTimeListThroughASaveAndARead) {
    record.discInfo[1] = "48:12,3:55,4:01,";
    ASSERT_TRUE(save());
    EXPECT_THAT(bytes(""), HasSubstr("\r\n\"48:12,3:55,4:01,\"\r\n"));
    EXPECT_EQ(loaded().discInfo[1], "48:12,3:55,4:01,");
}

TEST_F(DiscRecordFiles, LeaveTildesInTheTimeListAsTheyAre) {
    record.discInfo[1] = "1~2`";
    ASSERT_TRUE(save());
    EXPECT_EQ(loaded().discInfo[1], "1~2`");
}

TEST_F(DiscRecordFiles, OfARecordWithOnlyTheMediaTypeAudioCdHaveNoExtras) {
    ASSERT_TRUE(save());
    EXPECT_FALSE(exists("3"));
}

TEST_F(DiscRecordFiles, OfARecordWithoutAnyMediaTypeHaveExtras) {
    record.discExtras[1].clear();
    ASSERT_TRUE(save());
    EXPECT_EQ(lineCount("3"), 76);
}

TEST_F(DiscRecordFiles, KeepOldExtrasWhenNoneAreWorthKeepingAnyMore) {
    record.discExtras[2] = "1997";
    ASSERT_TRUE(save());
    record.discExtras[2].clear();
    ASSERT_TRUE(save());
    EXPECT_EQ(loaded().discExtras[2], "1997");
}

TEST_F(DiscRecordFiles, LeaveTheExtrasEncodedInMemoryAfterASave) {
    record.discTitle = "a, b";
    record.discExtras[3] = "one, \"two\"";
    ASSERT_TRUE(save());
    EXPECT_EQ(record.discExtras[3], "one~ `two`");
    EXPECT_EQ(record.discTitle, "a, b");
    EXPECT_EQ(loaded().discExtras[3], "one, \"two\"");
}

TEST_F(DiscRecordFiles, LeaveTheExtrasAloneInMemoryWhenTheyAreNotSaved) {
    record.discExtras[1] = "Audio CD";
    record.discExtras[4] = "\u00e9, \"";
    ASSERT_TRUE(save());
    EXPECT_EQ(record.discExtras[4], "\u00e9, \"");
}

TEST_F(DiscRecordFiles, WithExtrasThatEndEarlyKeepThoseReadSoFarDecoded) {
    record.discExtras.fill("old");
    files.put(path + "3", lines({"9~99", "LP", "`97`"}));
    load();
    EXPECT_EQ(record.discExtras[0], "9,99");
    EXPECT_EQ(record.discExtras[1], "LP");
    EXPECT_EQ(record.discExtras[2], "\"97\"");
    EXPECT_EQ(record.discExtras[3], "");
    EXPECT_EQ(record.discExtras[75], "");
}

TEST_F(DiscRecordFiles, GiveTheDefaultMediaTypeOnlyAfterACompleteReadOfTheExtras) {
    std::vector<std::string> extras(76);
    extras[1] = "  ";
    files.put(path + "3", lines(extras));
    load();
    EXPECT_EQ(record.discExtras[1], "Audio CD");
    extras.pop_back();
    files.put(path + "3", lines(extras));
    load();
    EXPECT_EQ(record.discExtras[1], "  ");
}

TEST_F(DiscRecordFiles, WithoutExtrasLeaveTheMediaTypeEmpty) {
    record.discExtras.fill("old");
    load();
    EXPECT_EQ(record.discExtras[0], "");
    EXPECT_EQ(record.discExtras[1], "");
}

TEST_F(DiscRecordFiles, WithoutFurtherTitlesAndLyricsKeepTheOldOnes) {
    record.trackTitles[46] = "of the disc before";
    record.lyricsOverflow[1] = "of the disc before";
    files.put(path, lines({"T"}));
    load();
    EXPECT_EQ(record.trackTitles[46], "of the disc before");
    EXPECT_EQ(record.lyricsOverflow[1], "of the disc before");
}

TEST_F(DiscRecordFiles, WithFurtherTitlesThatEndEarlyKeepThoseReadWithoutDecoding) {
    record.trackTitles[48] = "old";
    files.put(path + "4", lines({"a~b", "c"}));
    files.put(path + "5", lines({"d~e"}));
    load();
    EXPECT_EQ(record.trackTitles[46], "a~b");
    EXPECT_EQ(record.trackTitles[47], "c");
    EXPECT_EQ(record.trackTitles[48], "old");
    EXPECT_EQ(record.lyricsOverflow[1], "d~e");
}

TEST_F(DiscRecordFiles, WithBrokenExtrasStillGiveFurtherTitlesAndLyrics) {
    files.put(path + "3", "");
    files.put(path + "4", lines(std::vector<std::string>(55, "t~")));
    files.put(path + "5", lines(std::vector<std::string>(50, "l`")));
    load();
    EXPECT_EQ(record.trackTitles[46], "t,");
    EXPECT_EQ(record.trackTitles[100], "t,");
    EXPECT_EQ(record.lyricsOverflow[1], "l\"");
    EXPECT_EQ(record.lyricsOverflow[50], "l\"");
}

TEST_F(DiscRecordFiles, WithoutAMainFileKeepEveryFieldOfIt) {
    fill(record);
    record.trackTitles[3] = "typed ~ never saved";
    const auto before = record;
    load();
    EXPECT_EQ(record.discTitle, before.discTitle);
    EXPECT_EQ(record.trackTitles, before.trackTitles);
    EXPECT_EQ(record.discInfo, before.discInfo);
}

TEST_F(DiscRecordFiles, WithAMainFileThatEndsEarlyKeepTheFieldsBehindItsEnd) {
    fill(record);
    files.put(path, lines({"New~ title", "New artist"}));
    load();
    EXPECT_EQ(record.discTitle, "New, title");
    EXPECT_EQ(record.discArtist, "New artist");
    EXPECT_EQ(record.linerNotes, "One line,\r\nand \"another\".\r\n");
    EXPECT_EQ(record.trackTitles[1], "Part 1, first");
    EXPECT_EQ(record.discInfo[5], "Jazz, Free");
}

TEST_F(DiscRecordFiles, WithAQuoteThatIsNeverClosedAreReadUpToTheEnd) {
    fill(record);
    files.put(path, "\"Title\"\r\n\"Artist\"\r\n\"Notes that~\r\nnever end\r\n\"");
    load();
    EXPECT_EQ(record.discTitle, "Title");
    EXPECT_EQ(record.linerNotes, "Notes that,\r\nnever end\r\n");
    files.put(path, "\"Title two\"\r\n\"Artist two\"\r\n\"Notes\r\n");
    load();
    EXPECT_EQ(record.discTitle, "Title two");
    EXPECT_EQ(record.linerNotes, "Notes\r\n");
    EXPECT_EQ(record.trackTitles[1], "Part 1, first");
}

TEST_F(DiscRecordFiles, TruncatedAtAnyByteAreReadWithoutStopping) {
    const auto whole = testdata::bytesOf("records/00123456.CD");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        files.put(path, whole.substr(0, length));
        const auto read = loaded();
        EXPECT_TRUE(std::string("Harbour, at \"Night\"").starts_with(read.discTitle)) << length << " " << read.discTitle;
    }
}

TEST_F(DiscRecordFiles, KeepLineBreaksInNotesAndLyrics) {
    record.linerNotes = "a\r\nb\r\n\r\nc";
    storedLyrics(record, 7) = "x\r\ny";
    ASSERT_TRUE(save());
    auto read = loaded();
    EXPECT_EQ(read.linerNotes, "a\r\nb\r\n\r\nc");
    EXPECT_EQ(storedLyrics(read, 7), "x\r\ny");
}

TEST_F(DiscRecordFiles, MoveTheCurrentDirectoryToTheRecordFolderAndBackToTheDataDirectory) {
    load();
    EXPECT_THAT(files.directories, ElementsAre("C:\\Tessarel\\datacd", "C:\\Tessarel"));
    files.directories.clear();
    ASSERT_TRUE(save());
    EXPECT_THAT(files.directories, ElementsAre("C:\\Tessarel\\datacd", "C:\\Tessarel"));
}

TEST_F(DiscRecordFiles, AreWrittenInTheirOrderMainTitlesLyricsExtras) {
    record.discExtras[2] = "1997";
    ASSERT_TRUE(save(46));
    EXPECT_THAT(files.written, ElementsAre(path, path + "4", path + "5", path + "3"));
}

TEST_F(DiscRecordFiles, AreEachOpenedOnceWhenARecordIsRead) {
    load();
    EXPECT_EQ(files.reads, 4);
}

TEST_F(DiscRecordFiles, ThatDontFitOnTheDiskLeaveTheOldOnesAndAreTold) {
    record.discTitle = "Old";
    ASSERT_TRUE(save());
    const auto old = bytes("");
    record.discTitle = "New";
    refuse(path, Fault::full);
    const auto saved = save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().fault, Fault::full);
    EXPECT_EQ(bytes(""), old);
    EXPECT_EQ(files.currentDirectory(), "C:\\Tessarel");
}

TEST_F(DiscRecordFiles, AreWrittenOnAfterAFailureAndTheFirstFailureIsTold) {
    record.discExtras[2] = "1997";
    refuse(path, Fault::denied);
    refuse(path + "4", Fault::full);
    const auto saved = save(46);
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().fault, Fault::denied);
    EXPECT_FALSE(exists("4"));
    EXPECT_TRUE(exists("5"));
    EXPECT_TRUE(exists("3"));
}

TEST_F(DiscRecordFiles, AreNotWrittenWithoutADisc) {
    record.discRecordPath.clear();
    record.discExtras[2] = "1997";
    const auto saved = save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().fault, Fault::invalid);
    EXPECT_TRUE(files.written.empty());
}

TEST_F(DiscRecordFiles, OfBlankFieldsAreABlankRecord) {
    record = {};
    record.discRecordPath = path;
    record.discExtras[1] = "Audio CD";
    ASSERT_TRUE(save());
    EXPECT_EQ(bytes(""), lines(std::vector<std::string>(53)));
}

TEST_F(DiscRecordFiles, OfOneHundredTracksComeBackWithEveryTitleAndEveryLyric) {
    for (int track = 1; track <= 100; ++track) {
        record.trackTitles.at(static_cast<std::size_t>(track)) = "T" + std::to_string(track);
        storedLyrics(record, track) = "L" + std::to_string(track);
    }
    ASSERT_TRUE(save(100));
    auto read = loaded();
    EXPECT_EQ(read.trackTitles, record.trackTitles);
    for (int track = 1; track <= 100; ++track) {
        EXPECT_EQ(storedLyrics(read, track), "L" + std::to_string(track));
    }
}

}  // namespace
}  // namespace tessarel::library
