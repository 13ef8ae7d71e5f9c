#include "shell/task_helpers.h"

#include <gtest/gtest.h>

#include "shell/settings_files.h"
#include "tests/fakes/world.h"

namespace tessarel::shell {
namespace {

using fakes::StartedProgram;

class TaskHelpers : public testing::Test {
protected:
    TaskHelpers() {
        fakes::declarePlain(world.windows, {"CDForm"});
        form = world.windows.load("CDForm");
        form->Width = 3000;
        form->Height = 2000;
    }

    void ask(const std::string& app) {
        state.appToCheck = app;
        isAppRunning(context);
    }

    fakes::World world;
    SharedState& state = world.state;
    const Context& context = world.context;
    forms::Form* form;
};

std::string runningMessage(const std::string& name) {
    return name +
           " Application Already Running! Use the Taskbar to Activate.\n\nPress Ctrl + Esc to access Taskbar, then click on " +
           name + ", or press Alt + Esc to change window displayed.";
}

TEST_F(TaskHelpers, AWindowBeyondAnEdgeOfTheScreenIsMovedBackOntoItAndOthersStay) {
    form->Move(-20, 768 * 15);
    keepOnScreen(context, *form);
    EXPECT_EQ(form->Left, 0);
    EXPECT_EQ(form->Top, 768 * 15 - 2000);
    form->Move(150, 300);
    keepOnScreen(context, *form);
    EXPECT_EQ(form->Left, 150);
    EXPECT_EQ(form->Top, 300);
}

TEST_F(TaskHelpers, AKeyWhoseWindowIsNotBuiltIsDeadAndSaysSo) {
    forms::Button key{*form, "Command1", "Open"};
    disableAsNotBuilt(key);
    EXPECT_FALSE(key.Enabled);
    EXPECT_EQ(key.ToolTipText.get(), "This window is not part of this version yet.");
}

TEST_F(TaskHelpers, NotepadWithoutAWindowIsNotRunningAndNothingIsSaid) {
    state.appAlreadyRunning = 1;
    ask("NOTEPAD.EXE");
    EXPECT_EQ(state.appAlreadyRunning, 0);
    EXPECT_TRUE(world.dialogs.boxes.empty());
}

TEST_F(TaskHelpers, NotepadWithAWindowIsRunningAndToldSo) {
    world.processes.openWindows = {{"Notepad", "letter.txt"}};
    ask("  notepad.exe ");
    EXPECT_EQ(state.appAlreadyRunning, 1);
    ASSERT_EQ(world.dialogs.boxes.size(), 1U);
    EXPECT_EQ(world.dialogs.boxes[0], (platform::MessageBox{"Tessarel", runningMessage("NOTEPAD.EXE"), platform::Buttons::ok,
                                                            platform::Icon::exclamation}));
}

TEST_F(TaskHelpers, EveryProgramOfTheFirstTableIsKnownByItsWindowClass) {
    const std::vector<std::pair<const char*, const char*>> table = {
        {"SciCalc", "CALC.EXE"},        {"CalWndMain", "CALENDAR.EXE"}, {"Cardfile", "CARDFILE.EXE"},
        {"Clipboard", "CLIPBOARD.EXE"}, {"Clock", "CLOCK.EXE"},         {"CtlPanelClass", "CONTROL.EXE"},
        {"XLMain", "EXCEL.EXE"},        {"Session", "MS-DOS.EXE"},      {"Notepad", "NOTEPAD.EXE"},
        {"pbParent", "PBRUSH.EXE"},     {"Pif", "PIFEDIT.EXE"},         {"PrintManager", "PRINTMAN.EXE"},
        {"Progman", "PROGMAN.EXE"},     {"Recorder", "RECORDER.EXE"},   {"Reversi", "REVERSI.EXE"},
        {"#32770", "SETUP.EXE"},        {"Solitaire", "SOL.EXE"},       {"Terminal", "TERMINAL.EXE"},
        {"WFS_Frame", "WINFILE.EXE"},   {"MW_WINHELP", "WINHELP.EXE"},  {"#32770", "WINVER.EXE"},
        {"OpusApp", "WINWORD.EXE"},     {"MSWRITE_MENU", "WRITE.EXE"}};
    EXPECT_EQ(table.size(), 23U);
    for (const auto& [windowClass, executable] : table) {
        world.processes.openWindows = {{windowClass, "any caption"}};
        ask(executable);
        EXPECT_EQ(state.appAlreadyRunning, 1) << executable;
        EXPECT_EQ(world.dialogs.lastText(), runningMessage(executable));
    }
}

TEST_F(TaskHelpers, EveryProgramOfTheSecondTableIsKnownByItsCaption) {
    const std::vector<std::array<const char*, 3>> table = {
        {"Tessarel", "TESSAREL.EXE", "TESSAREL.EXE"},
        {"Gearline Calculator", "GL1.EXE", "GL1.EXE"},
        {"Print Artist", "PAWIN.EXE", "PAWIN.EXE"},
        {"Sound Blaster 16 Mixer Control", "SB16WMIX.EXE", "SB16WMIX.EXE"},
        {"Jazz Pocket Mixer", "JAZZPMIX.EXE", "JAZZPMIX.EXE"},
        {"PROCOMM PLUS for Windows", "PW2.EXE", "PW2.EXE"},
        {"Tessarel Help", "CDHELP.EXE", "CDHELP.EXE"},
        {"Music Library", "MUSICLIB.EXE", "MUSICLIB.EXE"},
        {"Volume Control", "C:\\Windows\\sndvol32.exe", "Volume Control"},
        {"Sound - Sound Recorder", "C:\\WINDOWS\\SNDREC32.EXE", "C:\\WINDOWS\\SNDREC32.EXE"}};
    for (const auto& [caption, executable, told] : table) {
        world.processes.openWindows = {{"SomeClass", caption}};
        ask(executable);
        EXPECT_EQ(state.appAlreadyRunning, 1) << executable;
        EXPECT_EQ(world.dialogs.lastText(), runningMessage(told));
    }
}

TEST_F(TaskHelpers, AFullMixerPathOutsideTheTablesIsNotRunning) {
    world.processes.openWindows = {{"Mixer", "Volume Control"}};
    ask("C:\\SB16\\SB16WMIX.EXE");
    EXPECT_EQ(state.appAlreadyRunning, 0);
}

TEST_F(TaskHelpers, AWordInQuotesIsMadeOnlyForAPathWithBlanks) {
    EXPECT_EQ(commandWord("C:\\a.exe"), "C:\\a.exe");
    EXPECT_EQ(commandWord("C:\\a b.exe"), "\"C:\\a b.exe\"");
    EXPECT_EQ(commandWord("\"C:\\a b.exe\""), "\"C:\\a b.exe\"");
}

constexpr platform::ScreenInfo screen{15000, 12000, 15, 24, 1};

TEST_F(TaskHelpers, WithoutATaskBarAFormIsPlainlyCentred) {
    EXPECT_EQ(centredPlace(screen, std::nullopt, 3000, 2000), (WindowPlace{6000, 5000}));
}

TEST_F(TaskHelpers, AHorizontalBarMovesACentredFormByHalfItsHeightAwayFromIt) {
    EXPECT_EQ(centredPlace(screen, platform::TwipsRect{0, 0, 15000, 400}, 3000, 2000), (WindowPlace{6000, 5200}));
    EXPECT_EQ(centredPlace(screen, platform::TwipsRect{-30, -30, 15030, 400}, 3000, 2000), (WindowPlace{6000, 5215}));
    EXPECT_EQ(centredPlace(screen, platform::TwipsRect{0, 11600, 15000, 12000}, 3000, 2000), (WindowPlace{6000, 4800}));
}

TEST_F(TaskHelpers, AVerticalBarOnTheLeftMovesACentredFormRightByHalfItsWidth) {
    EXPECT_EQ(centredPlace(screen, platform::TwipsRect{0, 0, 900, 12000}, 3000, 2000), (WindowPlace{6450, 5000}));
    EXPECT_EQ(centredPlace(screen, platform::TwipsRect{14100, 0, 15000, 12000}, 3000, 2000), (WindowPlace{5550, 5000}));
}

TEST_F(TaskHelpers, AFormIsCentredOnTheMachinesScreen) {
    world.system.bar = platform::TwipsRect{0, 0, 900, world.system.screenInfo.heightTwips};
    centreForm(context, *form);
    EXPECT_EQ(form->Left.get(), (1024 * 15 - 3000) / 2 + 450);
    EXPECT_EQ(form->Top.get(), (768 * 15 - 2000) / 2);
}

TEST_F(TaskHelpers, TheFreeAreaIsWhatTheBarLeaves) {
    EXPECT_EQ(freeScreenArea(screen, std::nullopt), (platform::TwipsRect{0, 0, 15000, 12000}));
    EXPECT_EQ(freeScreenArea(screen, platform::TwipsRect{0, 0, 15000, 400}), (platform::TwipsRect{0, 400, 15000, 12000}));
    EXPECT_EQ(freeScreenArea(screen, platform::TwipsRect{0, 11600, 15000, 12000}), (platform::TwipsRect{0, 0, 15000, 11600}));
    EXPECT_EQ(freeScreenArea(screen, platform::TwipsRect{0, 0, 900, 12000}), (platform::TwipsRect{900, 0, 15000, 12000}));
    EXPECT_EQ(freeScreenArea(screen, platform::TwipsRect{14100, 0, 15000, 12000}), (platform::TwipsRect{0, 0, 14100, 12000}));
    world.system.bar = platform::TwipsRect{0, 0, 900, world.system.screenInfo.heightTwips};
    fillFreeScreenArea(context, *form);
    EXPECT_EQ(form->Left.get(), 900);
    EXPECT_EQ(form->Width.get(), 1024 * 15 - 900);
    EXPECT_EQ(form->Height.get(), 768 * 15);
}

TEST_F(TaskHelpers, APlaceIsKeptOnTheScreen) {
    EXPECT_EQ(clampedPlace({-5, -1}, screen, 3000, 2000), (WindowPlace{0, 0}));
    EXPECT_EQ(clampedPlace({12001, 99999}, screen, 3000, 2000), (WindowPlace{12000, 10000}));
    EXPECT_EQ(clampedPlace({12000, 500}, screen, 3000, 2000), (WindowPlace{12000, 500}));
    EXPECT_EQ(clampedPlace({50, 50}, screen, 20000, 20000), (WindowPlace{0, 0}));
}

TEST_F(TaskHelpers, AWindowComesBackToItsSavedPlaceAndToTheMiddleWithoutOne) {
    EXPECT_FALSE(placeForm(context, *form, cdFormPositionFile));
    EXPECT_EQ(form->Left.get(), (1024 * 15 - 3000) / 2);
    world.files.put("C:\\Tessarel\\cdposn.dat", "-4\r\n2147483647\r\n");
    EXPECT_TRUE(placeForm(context, *form, cdFormPositionFile));
    EXPECT_EQ(form->Left.get(), 0);
    EXPECT_EQ(form->Top.get(), 768 * 15 - 2000);
}

TEST_F(TaskHelpers, ALeftPressDragsAWindowAndSavesWhereItEndsOnTheScreen) {
    form->dragBySystem = [this] { form->Move(-200, 300); };
    EXPECT_TRUE(moveOrCentreForm(context, *form, cdFormPositionFile, forms::MouseButton::left));
    EXPECT_EQ(form->Left.get(), 0);
    EXPECT_EQ(world.files.bytes("C:\\Tessarel\\CDPOSN.DAT"), "0\r\n300\r\n");
}

TEST_F(TaskHelpers, ARightPressCentresAWindowAndForgetsItsPlace) {
    world.files.put("C:\\Tessarel\\cdposn.dat", "1\r\n1\r\n");
    EXPECT_FALSE(moveOrCentreForm(context, *form, cdFormPositionFile, forms::MouseButton::right));
    EXPECT_EQ(form->Left.get(), (1024 * 15 - 3000) / 2);
    EXPECT_FALSE(world.files.exists("C:\\Tessarel\\CDPOSN.DAT"));
}

TEST_F(TaskHelpers, AFormWithoutAViewIsNotDragged) {
    dragForm(*form);
    EXPECT_EQ(form->Left.get(), 0);
}

TEST_F(TaskHelpers, RunAndWaitWaitsForTheProgramWhileTimersRun) {
    world.processes.pollsWhileActive = 20;
    world.processes.exitCodeOf[1] = 3;
    int ticks = 0;
    const auto timer = world.scheduler.every(platform::Milliseconds(50), [&ticks] { ++ticks; });
    const auto code = runAndWait(context, "D:\\player.exe a.mp3", platform::WindowStyle::maximised);
    EXPECT_EQ(code.value(), 3);
    EXPECT_GT(ticks, 0);
    EXPECT_EQ(world.processes.polls, 21);
    EXPECT_EQ(world.processes.started[0].style, platform::WindowStyle::maximised);
    EXPECT_EQ(world.system.pointers, (std::vector{platform::PointerShape::hourglass, platform::PointerShape::normal}));
}

TEST_F(TaskHelpers, RunAndWaitMovesToTheProgramsDriveAndUsesANormalWindow) {
    world.files.drive('D').ready = true;
    EXPECT_TRUE(runAndWait(context, "\"d:\\my player.exe\""));
    EXPECT_EQ(world.processes.started,
              (std::vector{StartedProgram{"\"d:\\my player.exe\"", "D:\\", platform::WindowStyle::normal}}));
}

TEST_F(TaskHelpers, RunAndWaitKeepsTheDirectoryOnTheSameDrive) {
    world.files.changeDirectory("C:\\Tessarel");
    EXPECT_TRUE(runAndWait(context, "c:\\WINDOWS\\x.exe"));
    EXPECT_TRUE(runAndWait(context, "x.exe"));
    EXPECT_EQ(world.processes.started[0].directory, "C:\\Tessarel");
    EXPECT_EQ(world.processes.started[1].directory, "C:\\Tessarel");
}

TEST_F(TaskHelpers, AProgramThatCannotBeStartedIsNotWaitedFor) {
    world.processes.failAll = Fault::unavailable;
    EXPECT_EQ(runAndWait(context, "x.exe").error().fault, Fault::unavailable);
    EXPECT_EQ(world.processes.polls, 0);
    EXPECT_EQ(world.system.pointer, platform::PointerShape::normal);
}

TEST_F(TaskHelpers, ClicksInsideRunAndWaitMayEndTheProcess) {
    world.processes.pollsWhileActive = 1000;
    const auto timer = world.scheduler.after(platform::Milliseconds(30), [] { platform::endProcess(); });
    EXPECT_TRUE(fakes::endsProcess([this] { (void)runAndWait(context, "x.exe"); }));
}

TEST_F(TaskHelpers, APauseKeepsEventsRunning) {
    int ticks = 0;
    const auto timer = world.scheduler.every(platform::Milliseconds(50), [&ticks] { ++ticks; });
    pauseSeconds(world.scheduler, 0.5F);
    EXPECT_EQ(world.scheduler.now(), platform::Milliseconds(500));
    EXPECT_EQ(ticks, 10);
}

TEST_F(TaskHelpers, APauseAcrossMidnightEnds) {
    world.scheduler.setTimeOfDay(std::chrono::hours(24) - platform::Milliseconds(100));
    pauseSeconds(world.scheduler, 1.0F);
    EXPECT_EQ(world.scheduler.now(), platform::Milliseconds(1000));
}

TEST_F(TaskHelpers, ANegativePauseIsNone) {
    pauseSeconds(world.scheduler, -3.0F);
    EXPECT_EQ(world.scheduler.now(), platform::Milliseconds(0));
}

TEST_F(TaskHelpers, TwoCallsOfHideCursorNeedOneOfShowCursor) {
    hideCursor(context);
    hideCursor(context);
    EXPECT_EQ(world.system.pointerCalls, 1);
    EXPECT_FALSE(world.system.pointerVisible);
    showCursor(context);
    EXPECT_TRUE(world.system.pointerVisible);
    EXPECT_EQ(state.cursorHidden, 0);
    showCursor(context);
    EXPECT_EQ(world.system.pointerCalls, 2);
}

}  // namespace
}  // namespace tessarel::shell
