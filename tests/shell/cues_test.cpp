#include "shell/cues.h"

#include <gtest/gtest.h>

#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

using fakes::StartedProgram;
using Names = std::vector<std::string>;

class Cues : public testing::Test {
protected:
    fakes::World world;
    SharedState& state = world.state;
    const Context& context = world.context;
};

TEST_F(Cues, EachCuePlaysItsFile) {
    for (std::int16_t cue = 0; cue <= 5; ++cue) {
        playCue(context, cue);
    }
    const std::string folder = "C:\\Tessarel\\system\\";
    EXPECT_EQ(world.sounds.played, (Names{folder + "click.wav", folder + "minimize.wav", folder + "XXXXXXXX.wav",
                                          folder + "click1.wav", folder + "mixer.wav", folder + "opendraw.wav"}));
    EXPECT_EQ(world.scheduler.waited(), platform::Milliseconds(0));
}

TEST_F(Cues, ACueOutsideTheTablePlaysNothing) {
    for (const std::int16_t cue : {6, -1, 32767, -32768}) {
        playCue(context, cue);
    }
    EXPECT_TRUE(world.sounds.played.empty());
}

TEST_F(Cues, OnTheOtherPlatformFamilyNoCueSoundsButAnEntrysSoundDoes) {
    state.osPlatform = 2;
    world.files.put("C:\\s.wav");
    playCue(context, 0);
    playEntrySound(context, "C:\\s.wav");
    EXPECT_TRUE(world.sounds.played.empty());
    EXPECT_EQ(world.sounds.waited, Names{"C:\\s.wav"});
}

TEST_F(Cues, CuesCanBeSwitchedOff) {
    state.soundCuesOff = 1;
    playCue(context, 0);
    EXPECT_TRUE(world.sounds.played.empty());
}

TEST_F(Cues, AnEntrysSoundIsPlayedToItsEndIfItsFileExists) {
    world.files.put("C:\\s.wav");
    playEntrySound(context, "C:\\s.wav");
    EXPECT_EQ(world.scheduler.now(), world.sounds.length);
    playEntrySound(context, "");
    playEntrySound(context, "C:\\none.wav");
    EXPECT_EQ(world.sounds.waited, Names{"C:\\s.wav"});
}

class Help : public Cues {
protected:
    void show(std::int16_t topic) {
        state.helpTopic = topic;
        showHelp(context);
    }
};

TEST_F(Help, EachTopicHasItsFile) {
    const Names files = {"TESSAREL.TXT", "TESSAREL.TXT", "SYSREQ.TXT",  "GSETMAIN.TXT", "GSETCUST.TXT", "GSETADV.TXT",
                         "PLAYWAVE.TXT", "RECOPTS.TXT",  "TSLINFO.TXT", "TSLUSE.TXT",   "RDTINFO.TXT",  "RDTUSE.TXT",
                         "CDLIB.TXT",    "TSLLIB.TXT",   "CDPINFO.TXT", "CDPUSE.TXT",   "CDPLIB.TXT",   "CDLIBF.TXT",
                         "CDJKOPTS.TXT", "CDJKIMGS.TXT", "CDPMENU.TXT", "CDBGRND.TXT",  "CDPROMPT.TXT", "PASSWORD.TXT",
                         "HINTS.TXT",    "COMPWINA.TXT", "COMPMISC.TXT"};
    for (std::size_t topic = 0; topic < files.size(); ++topic) {
        EXPECT_EQ(helpFile(static_cast<std::int16_t>(topic)), files[topic]);
    }
    EXPECT_EQ(helpFile(27), "");
    EXPECT_EQ(helpFile(-1), "");
}

TEST_F(Help, TheHelpViewerIsStartedWithTheTopicFromTheDataDirectory) {
    world.files.put("C:\\Tessarel\\cdhelp.exe");
    show(15);
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"CDHELP.EXE 15", "C:\\Tessarel", platform::WindowStyle::normal}}));
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(Help, AHelpViewerThatRunsAlreadyIsOnlyToldOf) {
    world.files.put("C:\\Tessarel\\cdhelp.exe");
    world.processes.openWindows = {{"", "Tessarel Help"}};
    show(15);
    EXPECT_TRUE(world.processes.started.empty());
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_TRUE(world.dialogs.lastText().starts_with("CDHELP.EXE Application Already Running!"));
}

TEST_F(Help, WithoutTheViewerAMessageComesAndThenNotepadWithTheText) {
    world.files.put("C:\\WINDOWS\\notepad.exe");
    world.files.put("C:\\WINDOWS\\write.exe");
    world.files.putFolder("C:\\Tessarel\\tslhelp");
    show(9);
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Tessarel");
    EXPECT_EQ(world.dialogs.lastText(),
              "Optional Tessarel Help module not loaded on your machine; you may download this module at: "
              "https://tessarel.example/help - attempting to display text file instead...");
    EXPECT_EQ(world.processes.started, (std::vector{StartedProgram{"C:\\WINDOWS\\notepad.exe TSLUSE.TXT",
                                                                   "C:\\Tessarel\\tslhelp", platform::WindowStyle::normal}}));
}

TEST_F(Help, TheFirstThreeTopicsStandInTheDataDirectory) {
    world.files.put("C:\\WINDOWS\\write.exe");
    world.files.putFolder("C:\\Tessarel\\tslhelp");
    for (const std::int16_t topic : {0, 1, 2}) {
        show(topic);
        EXPECT_EQ(world.processes.started.back().directory, "C:\\Tessarel");
    }
    EXPECT_EQ(world.processes.lastCommand(), "C:\\WINDOWS\\write.exe SYSREQ.TXT");
    show(3);
    EXPECT_EQ(world.processes.started.back().directory, "C:\\Tessarel\\tslhelp");
}

TEST_F(Help, WithoutAnyTextViewerThatIsSaid) {
    show(0);
    EXPECT_EQ(world.dialogs.boxes.size(), 2U);
    EXPECT_EQ(world.dialogs.lastText(), "Unable to find Windows Notepad or Write application in your Windows Directory!");
    EXPECT_TRUE(world.processes.started.empty());
}

TEST_F(Help, AnUnknownTopicStartsNothing) {
    world.files.put("C:\\WINDOWS\\notepad.exe");
    show(99);
    EXPECT_TRUE(world.processes.started.empty());
}

}  // namespace
}  // namespace tessarel::shell
