// A day of changing discs, and where the player's window comes up after its screen has changed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {
namespace {

using namespace audio;

struct Counts {
    std::vector<std::string> windows;
    std::size_t timers = 0;
    std::size_t players = 0;
    bool operator==(const Counts&) const = default;
};

Counts countsOf(Machine& machine) {
    return {machine.program.windows.loadedNames(), machine.world.scheduler.timers(), machine.world.cd.made()};
}

// A program is entered, the disc plays, and the Eject key gives it back.
Counts playAndEject(Machine& machine, int tracks) {
    machine.world.files.clear('D');
    machine.insert(fakes::makeDisc(tracks, 30));
    machine.run(3s);
    machine.choose(modeKeys::program);
    machine.pick(1);
    machine.press(transport::play);
    machine.run(5s);
    EXPECT_TRUE(machine.sounding());
    const auto counts = countsOf(machine);
    machine.press(transport::eject);
    machine.run(1s);
    return counts;
}

TEST(LongUse, TwoHundredDiscsLeaveNoMoreWindowsTimersAndPlayersThanOne) {
    Machine machine;
    machine.program.windows.show("CD1st");
    const auto playing = playAndEject(machine, 3);
    const auto waiting = countsOf(machine);
    EXPECT_THAT(playing.windows, testing::ElementsAre("CDForm", "aplaylst"));
    EXPECT_THAT(waiting.windows, testing::ElementsAre("CD1st", "CDForm"));
    for (int change = 2; change <= 200; ++change) {
        ASSERT_EQ(playAndEject(machine, 1 + change % 25), playing) << "at disc " << change;
        ASSERT_EQ(countsOf(machine), waiting) << "after disc " << change;
    }
    EXPECT_EQ(machine.world.cd.opened, 0);
}

struct Place {
    const char* what;
    std::string_view file;
    int left;
    int top;
};

struct SavedPlace : testing::TestWithParam<Place> {};

// The screen is 28800 by 16200 twips, and the window 15600 by 6780.
TEST_P(SavedPlace, BringsTheWindowUpOnTheScreen) {
    Machine machine;
    machine.world.system.screenInfo = {1920 * 15, 1080 * 15, 15, 24, 1};
    machine.world.files.put("C:\\Tessarel\\CDPOSN.DAT", GetParam().file);
    machine.openPlayer(fakes::makeDisc(3, 60));
    EXPECT_EQ(machine.player().Left.get(), GetParam().left);
    EXPECT_EQ(machine.player().Top.get(), GetParam().top);
}

INSTANTIATE_TEST_SUITE_P(Files, SavedPlace,
                         testing::Values(Place{"OnTheScreen", "300\r\n450\r\n", 300, 450},
                                         Place{"AtTheFarCorner", "13200\r\n9420\r\n", 13200, 9420},
                                         Place{"RightOfTheScreen", "28801\r\n450\r\n", 13200, 450},
                                         Place{"BelowTheScreen", "300\r\n999999\r\n", 300, 9420},
                                         Place{"HalfOffToTheRight", "20000\r\n0\r\n", 13200, 0},
                                         Place{"OfASecondScreenOnTheLeft", "-28800\r\n450\r\n", 0, 450},
                                         Place{"NegativeInBoth", "-1\r\n-2147483648\r\n", 0, 0},
                                         Place{"OfALargerScreen", "57600\r\n32400\r\n", 13200, 9420},
                                         Place{"FarthestOut", "2147483647\r\n2147483647\r\n", 13200, 9420},
                                         Place{"BeyondAnyNumber", "99999999999\r\n5\r\n", 6600, 4710},
                                         Place{"Empty", "", 6600, 4710}, Place{"HalfAFile", "300\r\n", 6600, 4710}),
                         [](const auto& test) { return std::string(test.param.what); });

TEST(SavedPlaceOfThePlayer, OnAScreenSmallerThanTheWindowBeginsAtItsCorner) {
    Machine machine;
    machine.world.system.screenInfo = {640 * 15, 400 * 15, 15, 24, 1};
    machine.world.files.put("C:\\Tessarel\\CDPOSN.DAT", "3000\r\n3000\r\n");
    machine.openPlayer(fakes::makeDisc(3, 60));
    EXPECT_EQ(machine.player().Left.get(), 0);
    EXPECT_EQ(machine.player().Top.get(), 0);
}

}  // namespace
}  // namespace tessarel::scenarios
