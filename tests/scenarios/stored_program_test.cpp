// Programs that are kept with a disc, and the ways out of the window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audio/aplaylst.h"
#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace transport = audio::transport;
namespace modeKeys = audio::modeKeys;
namespace functionKeys = audio::functionKeys;
namespace programKeys = audio::programKeys;

struct StoredProgram : testing::Test {
    Machine machine;
    audio::CDFormFace& face() { return machine.player().face; }
    audio::PlayerState& state() { return machine.state(); }
    shell::SharedState& shared() { return machine.program.state; }
    forms::Windows& windows() { return machine.program.windows; }

    void open(int tracks, int seconds = 60) {
        machine.openPlayer(fakes::makeDisc(tracks, seconds));
        machine.world.files.putFolder("C:\\Tessarel\\datacd");
    }
    void enter(std::initializer_list<int> tracks) {
        machine.choose(modeKeys::program);
        for (const int track : tracks) {
            machine.pick(track);
        }
    }
    void key(int index) { face().Image16[index].press(); }
    std::string path() { return machine.program.record.discRecordPath + "2"; }
    void store(const std::string& bytes) { machine.world.files.put(path(), bytes); }
    /// Another disc in place of this one, by the waiting window.
    void change(int tracks) {
        machine.press(transport::eject);
        machine.insert(fakes::makeDisc(tracks, 60));
        machine.run(5s);
    }
    std::vector<int> entries(int count) {
        const auto& list = state().programList;
        return {list.begin() + 1, list.begin() + 1 + count};
    }
    std::vector<int> tracksHeard(platform::Milliseconds span) {
        std::vector<int> heard;
        for (auto left = span; left > 0s; left -= 1s) {
            machine.run(1s);
            const int now = machine.sounding() ? machine.soundingTrack() : 0;
            if (heard.empty() || heard.back() != now) {
                heard.push_back(now);
            }
        }
        return heard;
    }
};

TEST_F(StoredProgram, SavingLightsTheLampAndWritesAHundredLines) {
    open(5);
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(2));
    enter({4, 2});
    key(programKeys::save);
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(3));
    const auto bytes = machine.world.files.bytes(path());
    EXPECT_TRUE(bytes.starts_with("4\r\n2\r\n0\r\n"));
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 100);
}

TEST_F(StoredProgram, SavingMovesToTheFolderOfTheRecords) {
    open(5);
    enter({4});
    key(programKeys::save);
    EXPECT_EQ(machine.world.files.currentDirectory(), "C:\\Tessarel\\datacd");
}

TEST_F(StoredProgram, ANewDiscHasAFileOfItsOwnAndProgramsDoNotCarryOver) {
    open(5);
    enter({4, 2});
    key(programKeys::save);
    const auto first = path();
    change(6);
    EXPECT_NE(path(), first);
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(2));
    EXPECT_THAT(entries(2), ElementsAre(0, 0));
    enter({});
    key(programKeys::recall);
    EXPECT_EQ(state().programCount, 0);
    EXPECT_TRUE(machine.world.files.exists(first));
    change(5);
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(3));
}

TEST_F(StoredProgram, ARecalledProgramEndsAtItsFirstGap) {
    open(22, 20);
    store("3\r\n21\r\n5\r\n0\r\n");
    enter({});
    key(programKeys::recall);
    EXPECT_THAT(entries(4), ElementsAre(3, 0, 5, 0));
    machine.press(transport::play);
    EXPECT_THAT(tracksHeard(70s), ElementsAre(3, 0)) << "track 5 lies behind the gap";
    EXPECT_EQ(state().playMode, audio::wholeDisc);
}

TEST_F(StoredProgram, RecallWithoutAFileOnlyForgetsTheCount) {
    open(5);
    enter({4, 2});
    key(programKeys::recall);
    EXPECT_EQ(state().programCount, 0);
    EXPECT_THAT(entries(2), ElementsAre(4, 2));
}

TEST_F(StoredProgram, AFileWithoutAnyTrackOfTheDiscPutsTheLampOut) {
    open(5);
    store("9\r\n0\r\n");
    enter({});
    face().programLamp.ForeColor = panelColor(3);
    key(programKeys::recall);
    EXPECT_EQ(face().programLamp.ForeColor, panelColor(2));
    EXPECT_EQ(state().programCount, 0);
}

TEST_F(StoredProgram, RecallBeginsAtTheFirstEntryAndTheListShowsIt) {
    open(5);
    store("2\r\n3\r\n0\r\n");
    enter({5});
    key(programKeys::recall);
    EXPECT_EQ(state().programIndex, 0);
    EXPECT_THAT(entries(3), ElementsAre(2, 3, 0));
    const auto* list = windows().find<audio::aplaylst>("aplaylst");
    ASSERT_NE(list, nullptr);
    EXPECT_THAT(list->List1.rows.get(), ElementsAre("2:\t\t1:00", "3:\t\t1:00"));
}

TEST_F(StoredProgram, ClearEmptiesTheProgramAndDimsTheCells) {
    open(5);
    enter({4, 2});
    key(programKeys::clear);
    EXPECT_EQ(state().programCount, 0);
    EXPECT_THAT(entries(2), ElementsAre(0, 0));
    EXPECT_EQ(state().programBackup[1], 0);
    for (int cell = 0; cell < audio::gridCells; ++cell) {
        EXPECT_EQ(face().cellNumbers[cell].ForeColor, panelColor(6)) << cell;
    }
}

TEST_F(StoredProgram, OutsideProgrammedModeTheThreeKeysAreDead) {
    open(5);
    store("2\r\n0\r\n");
    for (const int mode : {modeKeys::single, modeKeys::disc}) {
        enter({4});
        machine.choose(mode);
        state().programList[1] = 4;
        state().programBackup[1] = 4;
        for (const int index : {programKeys::clear, programKeys::save, programKeys::recall}) {
            key(index);
        }
        EXPECT_EQ(state().programList[1], 4);
        EXPECT_EQ(state().programBackup[1], 4);
        EXPECT_EQ(machine.world.files.bytes(path()), "2\r\n0\r\n");
    }
}

TEST_F(StoredProgram, SaveAndRecallAskForProgrammedModeThemselves) {
    open(5);
    store("2\r\n0\r\n");
    state().programList[1] = 4;
    face().saveCover.ForeColor = colors::grey;
    face().recallCover.ForeColor = colors::grey;
    key(programKeys::save);
    key(programKeys::recall);
    EXPECT_EQ(machine.world.files.bytes(path()), "2\r\n0\r\n");
    EXPECT_EQ(state().programList[1], 4);
}

TEST_F(StoredProgram, APressOnItsLampRecallsAndPlaysIt) {
    open(5, 20);
    store("4\r\n2\r\n0\r\n");
    face().programLamp.ForeColor = panelColor(3);
    face().programLamp.press();
    EXPECT_EQ(state().playMode, audio::programmed);
    EXPECT_TRUE(face().Image3[modeKeys::program].Visible);
    EXPECT_TRUE(face().icntlc[transport::play].Visible);
    EXPECT_EQ(machine.world.system.pointer, platform::PointerShape::normal);
    EXPECT_THAT(tracksHeard(50s), ElementsAre(4, 2, 0));
}

TEST_F(StoredProgram, ADarkLampDoesNothing) {
    open(5);
    store("4\r\n0\r\n");
    face().programLamp.press();
    EXPECT_EQ(state().playMode, audio::wholeDisc);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(StoredProgram, RandomPlayShowsItsOrderOnAListThatIsUp) {
    open(5);
    enter({5});
    face().Image10[functionKeys::random].press();
    const auto* list = windows().find<audio::aplaylst>("aplaylst");
    ASSERT_NE(list, nullptr);
    EXPECT_THAT(list->List1.rows.get(), SizeIs(5));
    EXPECT_EQ(list->List1.ListIndex.get(), 0);
}

TEST_F(StoredProgram, InformationLeavesTheMarkOnTheRowThatPlays) {
    open(5);
    enter({3, 1});
    machine.press(transport::play);
    machine.run(62s);
    const auto* list = windows().find<audio::aplaylst>("aplaylst");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->List1.ListIndex.get(), 1);
    key(programKeys::information);
    EXPECT_EQ(list->List1.ListIndex.get(), 1);
}

// ---- Ways out ----

struct WaysOut : StoredProgram {
    static constexpr const char* mark = "C:\\Tessarel\\audiocd.tmp";
    void playing() {
        open(5);
        machine.press(transport::play);
        machine.run(2s);
        machine.world.cd.log.clear();
    }
};

TEST_F(WaysOut, LeavingForTheMainMenuStopsAndGivesTheDriveUp) {
    fakes::declarePlain(windows(), {"cdmenu"});
    playing();
    enter({});
    EXPECT_TRUE(machine.world.files.exists(mark));
    face().Image10[functionKeys::mainMenu].press();
    EXPECT_THAT(machine.world.cd.log, ElementsAre("stop", "close"));
    EXPECT_FALSE(machine.world.files.exists(mark));
    EXPECT_FALSE(windows().isLoaded("CDForm"));
}

TEST_F(WaysOut, TheListOfTheProgramGoesWithTheWindow) {
    fakes::declarePlain(windows(), {"cdmenu"});
    open(5);
    enter({3});
    face().Image10[functionKeys::mainMenu].press();
    EXPECT_FALSE(windows().isLoaded("aplaylst"));
}

TEST_F(WaysOut, ExitTurnsRedSoundsItsCueShowsTheHourglassAndStops) {
    playing();
    EXPECT_TRUE(fakes::endsProcess([this] { face().exitKey.mouseUp(); }));
    EXPECT_EQ(face().exitLabel.ForeColor, colors::darkRed);
    EXPECT_EQ(face().exitPanel.ForeColor, colors::red);
    EXPECT_THAT(machine.world.sounds.played, Contains("C:\\Tessarel\\system\\click1.wav"));
    EXPECT_EQ(machine.world.system.pointer, platform::PointerShape::hourglass);
    EXPECT_THAT(machine.world.cd.log, ElementsAre("stop", "close"));
    EXPECT_FALSE(machine.world.files.exists(mark));
}

TEST_F(WaysOut, ThePanelActsAsEscape) {
    playing();
    EXPECT_TRUE(fakes::endsProcess([this] { face().exitPanel.press(); }));
}

TEST_F(WaysOut, TheMixerKeyOpensTheMixer) {
    shared().mixerPath = "C:\\MIXER.EXE";
    open(5);
    face().mixerKey.press();
    EXPECT_EQ(machine.world.processes.lastCommand(), "C:\\MIXER.EXE");
}

TEST_F(WaysOut, TheUnseenRunPlaysAgainThoughTheLastDiscHasHadItsStart) {
    shared().runMode = "CDLITE";
    shared().autoStartMode = 0;
    shared().autoStartDone = 1;
    open(5);
    machine.run(1s);
    EXPECT_TRUE(machine.sounding());
    EXPECT_EQ(shared().runMode, "");
}

TEST_F(WaysOut, ATitlelessTrackLeavesTheWindowItsPlainCaption) {
    playing();
    EXPECT_EQ(machine.player().Caption.get(), "Tessarel");
    machine.program.record.trackTitles[2] = "Second";
    machine.press(transport::next);
    machine.run(2s);
    EXPECT_EQ(machine.player().Caption.get(), "Tessarel [Second]");
}

}  // namespace
}  // namespace tessarel::scenarios
