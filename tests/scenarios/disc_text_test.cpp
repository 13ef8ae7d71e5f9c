// A disc that says what it is: shown as long as it has no record, and never written.
#include "audio/disc_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "library/record_files.h"
#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

namespace transport = audio::transport;

std::shared_ptr<const platform::CdToc> speakingDisc() {
    auto disc = std::make_shared<platform::CdToc>(*fakes::makeDisc(3, 60));
    disc->performer = "The Players";
    disc->title = "Their Songs";
    disc->tracks[0].title = "One";
    disc->tracks[1].title = "Two";
    return disc;
}

struct SpeakingDisc : testing::Test {
    Machine machine;
    std::string upper() { return machine.player().face.upperLine.Caption.get(); }
    std::string lower() { return machine.player().face.lowerLine.Caption.get(); }
    void writeRecord() {
        machine.world.files.putFolder("C:\\Tessarel\\datacd");
        auto& record = machine.program.record;
        record.discRecordPath = "C:\\Tessarel\\datacd\\" + idOfDisc() + ".CD";
        record.discArtist = "Kept Artist";
        record.discTitle = "Kept Title";
        record.trackTitles[1] = "Kept One";
        ASSERT_TRUE(library::writeDiscRecord(machine.world.files, "C:\\Tessarel", 3, record));
        record = {};
    }
    static std::string idOfDisc() {
        Machine other;
        other.openPlayer(speakingDisc());
        return other.program.record.discFileId;
    }
};

TEST_F(SpeakingDisc, IsNamedFromItsLoadOnAndItsTracksAsTheyPlay) {
    machine.openPlayer(speakingDisc());
    EXPECT_EQ(upper(), "The Players - Their Songs");
    EXPECT_EQ(lower(), "");
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_EQ(lower(), "One");
    EXPECT_EQ(machine.player().Caption.get(), "Tessarel [One]");
    machine.press(transport::next);
    machine.run(3s);
    EXPECT_EQ(lower(), "Two");
    machine.press(transport::next);
    machine.run(3s);
    EXPECT_EQ(lower(), "") << "the third track has no title of its own";
    EXPECT_EQ(upper(), "The Players - Their Songs");
}

TEST_F(SpeakingDisc, StillHasNoRecordAndNothingIsWritten) {
    machine.openPlayer(speakingDisc());
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_EQ(machine.player().face.recordLamp.ForeColor, panelColor(2));
    EXPECT_EQ(machine.program.record.discArtist, "");
    EXPECT_EQ(machine.program.record.discTitle, "");
    EXPECT_EQ(machine.program.record.trackTitles[1], "");
    EXPECT_FALSE(machine.world.files.exists(machine.program.record.discRecordPath));
    EXPECT_THAT(machine.world.files.written, testing::Each("C:\\Tessarel\\audiocd.tmp")) << "but for the running mark";
}

TEST_F(SpeakingDisc, IsShownByItsRecordAloneWhereThereIsOne) {
    writeRecord();
    machine.openPlayer(speakingDisc());
    EXPECT_EQ(upper(), "Kept Artist - Kept Title");
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_EQ(lower(), "Kept One");
    machine.press(transport::next);
    machine.run(3s);
    EXPECT_EQ(lower(), "") << "a title that the record lacks is not taken from the disc";
}

TEST_F(SpeakingDisc, IsShownByItsRecordAsSoonAsThatIsFilledIn) {
    machine.openPlayer(speakingDisc());
    machine.press(transport::play);
    machine.run(3s);
    machine.program.record.discArtist = "Found Artist";
    machine.program.record.discTitle = "Found Title";
    machine.program.record.trackTitles[1] = "Found One";
    machine.run(2s);
    EXPECT_EQ(upper(), "Found Artist - Found Title");
    EXPECT_EQ(lower(), "Found One");
}

TEST_F(SpeakingDisc, DoesNotKeepALookUpFromItsEmptyLine) {
    machine.openPlayer(speakingDisc());
    EXPECT_TRUE(audio::holdsNoRecord(upper(), machine.state().discText));
    EXPECT_EQ(machine.program.record.trackTitles[1], "");
}

TEST_F(SpeakingDisc, LeavesNothingToTheNextDisc) {
    machine.openPlayer(speakingDisc());
    machine.program.windows.unload("CDForm");
    machine.openPlayer(fakes::makeDisc(5, 60));
    EXPECT_EQ(upper(), "");
    machine.press(transport::play);
    machine.run(3s);
    EXPECT_EQ(lower(), "");
    EXPECT_EQ(machine.state().discText, audio::DiscText());
}

TEST_F(SpeakingDisc, EmptiesItsLinesWhenItIsEjected) {
    machine.openPlayer(speakingDisc());
    machine.press(transport::play);
    machine.run(3s);
    machine.press(transport::eject);
    machine.run(1s);
    EXPECT_EQ(upper(), "");
    EXPECT_EQ(lower(), "");
}

}  // namespace
}  // namespace tessarel::scenarios
