#include "volume/mixer_launch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/world.h"

namespace tessarel::volume {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string mixerCuePath = "C:\\Tessarel\\system\\mixer.wav";

class MixerLaunch : public testing::Test {
protected:
    MixerLaunch() { world.files.put(mixerCuePath); }
    void launch(const std::string& mixerPath) {
        world.state.mixerPath = mixerPath;
        launchMixer(world.context);
    }
    fakes::World world;
};

TEST_F(MixerLaunch, WithoutAMixerTellsHowToGetOne) {
    launch("");
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Tessarel");
    EXPECT_EQ(
        world.dialogs.boxes[0].text,
        "NOTE: to use the Audio Mixer option, you must locate the mixer application written specifically for your sound "
        "board.\n\nThis is usually a Windows application named something similar to JAZZPMIX.EXE, SB32WMIX.EXE or "
        "AUDIOMIX.EXE. Common subdirectory names in which the mixer application may be found include: JAZZ, SB32, SBPRO, "
        "VOYETRA, etc.\n\nOnce the proper mixer application is located, it will be automatically used by Tessarel to "
        "allow you to change the Volume, Balance, Bass & Treble tone control settings, etc. \n\nYou may also use the "
        "standard Windows Volume Control Application SNDVOL32.EXE located in your Windows directory.\n\nNote:  Access the "
        "Tessarel Setup Section to enter or change mixer settings.");
    EXPECT_THAT(world.processes.started, IsEmpty());
    EXPECT_THAT(world.sounds.played, IsEmpty());
}

TEST_F(MixerLaunch, OfBlanksAloneIsNoMixer) {
    launch("   ");
    EXPECT_THAT(world.dialogs.lastText(), HasSubstr("NOTE: to use the Audio Mixer option"));
}

TEST_F(MixerLaunch, PlaysTheMixersCueAndStartsItInANormalWindow) {
    launch("C:\\MIXER.EXE");
    ASSERT_EQ(world.processes.started.size(), 1U);
    EXPECT_EQ(world.processes.started[0].commandLine, "C:\\MIXER.EXE");
    EXPECT_EQ(world.processes.started[0].style, platform::WindowStyle::normal);
    EXPECT_THAT(world.sounds.played, ElementsAre(mixerCuePath));
    EXPECT_THAT(world.dialogs.boxes, IsEmpty());
}

TEST_F(MixerLaunch, QuotesAPathWithBlanksButNotACommandLine) {
    world.files.put("C:\\My Mixer\\mix.exe");
    launch("C:\\My Mixer\\mix.exe");
    EXPECT_EQ(world.processes.lastCommand(), "\"C:\\My Mixer\\mix.exe\"");
    launch("pavucontrol -t 3");
    EXPECT_EQ(world.processes.lastCommand(), "pavucontrol -t 3");
}

TEST_F(MixerLaunch, LeavesAMixerThatRunsAlreadyToTheUser) {
    world.processes.openWindows = {{"", "Jazz Pocket Mixer"}};
    launch("JAZZPMIX.EXE");
    EXPECT_THAT(world.processes.started, IsEmpty());
    EXPECT_THAT(world.sounds.played, IsEmpty());
    EXPECT_THAT(world.dialogs.lastText(), HasSubstr("JAZZPMIX.EXE Application Already Running!"));
}

TEST_F(MixerLaunch, ThatFailsIsTold) {
    world.processes.failAll = Fault::notFound;
    launch("C:\\GONE.EXE");
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0].title, "Tessarel");
    EXPECT_EQ(world.dialogs.boxes[0].text,
              "            Audio Mixer Application NOT FOUND!\n\nUse the Setup command to enter the mixer application.");
}

}  // namespace
}  // namespace tessarel::volume
