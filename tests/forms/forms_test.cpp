#include <gtest/gtest.h>

#include "forms/control.h"
#include "forms/control_array.h"
#include "forms/form.h"
#include "forms/windows.h"
#include "tests/fakes/simulated_scheduler.h"

namespace tessarel::forms {
namespace {

using platform::Milliseconds;
using Names = std::vector<std::string>;

struct Sample : Form {
    Sample(Windows& windows, std::string name, Names& events) : Form(windows, std::move(name)), log(events) {}
    ~Sample() override { log.push_back(name() + " gone"); }

    Button button{*this, "Command1", "Do it"};
    TextBox entry{*this, "Text1", "Name"};
    Slider slider{*this, "Slider1", "Level"};
    FloodPanel flood{*this, "SSPanel1", "Progress"};
    ListBox list{*this, "List1", "Rows"};
    Timer timer{*this, "Timer1", 100, [this] {
                    ++ticks;
                    if (onTick) {
                        onTick();
                    }
                }};
    int ticks = 0;
    std::function<void()> onTick;
    std::function<void()> onLoad;
    std::function<void()> onUnload;
    Names& log;

    void Form_Load() override {
        log.push_back(name() + " load");
        if (onLoad) {
            onLoad();
        }
    }
    void Form_Activate() override { log.push_back(name() + " activate"); }
    void Form_Unload() override {
        log.push_back(name() + " unload");
        if (onUnload) {
            onUnload();
        }
    }
};

class FormKit : public testing::Test {
protected:
    FormKit() {
        for (const auto* name : {"A", "B"}) {
            windows.declare(name, [this, name](Windows& w) { return std::make_unique<Sample>(w, name, log); });
        }
    }
    Sample& loaded(const char* name) { return dynamic_cast<Sample&>(*windows.load(name)); }

    fakes::SimulatedScheduler scheduler;
    Names log;
    Windows windows{scheduler};
};

TEST_F(FormKit, AWindowIsLoadedOnFirstUseShownAndActivated) {
    windows.show("A");
    EXPECT_EQ(log, (Names{"A load", "A activate"}));
    EXPECT_TRUE(windows.isVisible("A"));
    EXPECT_TRUE(windows.anyVisible());
    EXPECT_EQ(loaded("A").frontRequests.get(), 1);
    windows.show("A");
    EXPECT_EQ(log, (Names{"A load", "A activate", "A activate"}));
    EXPECT_EQ(loaded("A").frontRequests.get(), 2);
}

TEST_F(FormKit, ShowingBesideActivatesOnceAndDoesNotComeToTheFront) {
    windows.showBeside("A");
    windows.showBeside("A");
    EXPECT_EQ(log, (Names{"A load", "A activate"}));
    EXPECT_TRUE(windows.isVisible("A"));
    EXPECT_EQ(loaded("A").frontRequests.get(), 0);
    windows.showBeside("Z");
    EXPECT_FALSE(windows.isLoaded("Z"));
}

TEST_F(FormKit, ARowThatIsChosenIsSelectedAndTold) {
    auto& form = loaded("A");
    int clicks = 0;
    form.list.rows = {"one", "two"};
    form.list.Click = [&clicks] { ++clicks; };
    form.list.choose(1);
    form.list.choose(1);
    EXPECT_EQ(form.list.ListIndex.get(), 1);
    EXPECT_EQ(clicks, 2) << "also for the row that is selected";
    form.list.choose(2);
    form.list.choose(-1);
    form.list.Enabled = false;
    form.list.choose(0);
    EXPECT_EQ(form.list.ListIndex.get(), 1);
    EXPECT_EQ(clicks, 2);
}

TEST_F(FormKit, ShowingBringsAMinimisedWindowBack) {
    loaded("A").WindowState = WindowState::minimised;
    windows.show("A");
    EXPECT_EQ(loaded("A").WindowState.get(), WindowState::normal);
}

TEST_F(FormKit, AWindowShownMinimisedIsUpWithoutBeingActivated) {
    windows.showMinimised("A");
    EXPECT_TRUE(windows.isVisible("A"));
    EXPECT_EQ(loaded("A").WindowState.get(), WindowState::minimised);
    EXPECT_EQ(loaded("A").frontRequests.get(), 0);
    EXPECT_EQ(log, (Names{"A load"}));
}

TEST_F(FormKit, AWindowThatIsUpIsNotMinimisedByBeingShownMinimised) {
    windows.show("A");
    windows.showMinimised("A");
    EXPECT_EQ(loaded("A").WindowState.get(), WindowState::normal);
}

TEST_F(FormKit, ALoadedWindowIsNotVisibleAndAHiddenOneStaysLoaded) {
    windows.load("A");
    EXPECT_FALSE(windows.anyVisible());
    windows.show("A");
    windows.hide("A");
    EXPECT_TRUE(windows.isLoaded("A"));
    EXPECT_FALSE(windows.isVisible("A"));
}

TEST_F(FormKit, AnUnknownNameIsNoWindow) {
    EXPECT_EQ(windows.load("Z"), nullptr);
    EXPECT_FALSE(windows.knows("Z"));
    windows.show("Z");
    windows.hide("Z");
    windows.unload("Z");
    EXPECT_TRUE(windows.loadedNames().empty());
}

TEST_F(FormKit, UnloadingRunsTheHandlerAndTakesTheWindowAway) {
    int viewsGone = 0;
    windows.onUnloaded = [&viewsGone](Form& form) { viewsGone += form.loaded() ? 100 : 1; };
    windows.show("A");
    windows.unload("A");
    EXPECT_EQ(log, (Names{"A load", "A activate", "A unload", "A gone"}));
    EXPECT_FALSE(windows.isLoaded("A"));
    EXPECT_EQ(viewsGone, 1);
}

TEST_F(FormKit, ViewsHearOfAWindowBeforeItsLoadHandler) {
    windows.onLoaded = [this](Form& form) { log.push_back(form.name() + " made"); };
    windows.load("A");
    EXPECT_EQ(log, (Names{"A made", "A load"}));
}

TEST_F(FormKit, AHandlerThatUnloadsItsOwnFormStillHasItUntilItReturns) {
    auto& form = loaded("A");
    form.button.Click = [this, &form] {
        windows.unload("A");
        form.ticks = 7;
        log.push_back("after");
    };
    form.button.press();
    EXPECT_EQ(log, (Names{"A load", "A unload", "after", "A gone"}));
}

TEST_F(FormKit, AFormMayUnloadItselfWhileItIsLoaded) {
    windows.declare("C", [this](Windows& w) {
        auto form = std::make_unique<Sample>(w, "C", log);
        form->onLoad = [this] { windows.unload("C"); };
        return form;
    });
    EXPECT_EQ(windows.load("C"), nullptr);
    windows.show("C");
    EXPECT_FALSE(windows.isLoaded("C"));
    EXPECT_EQ(log, (Names{"C load", "C unload", "C gone", "C load", "C unload", "C gone"}));
}

TEST_F(FormKit, TwoFormsThatUnloadEachOtherEachGoOnce) {
    loaded("A").onUnload = [this] { windows.unload("B"); };
    loaded("B").onUnload = [this] { windows.unload("A"); };
    windows.unload("A");
    EXPECT_TRUE(windows.loadedNames().empty());
    EXPECT_EQ(log, (Names{"A load", "B load", "A unload", "B unload", "B gone", "A gone"}));
}

TEST_F(FormKit, AWindowMayComeBackAfresh) {
    loaded("A").ticks = 5;
    windows.unload("A");
    EXPECT_EQ(loaded("A").ticks, 0);
}

TEST_F(FormKit, AllWindowsCanBeUnloaded) {
    windows.load("A");
    windows.load("B");
    EXPECT_EQ(windows.loadedNames(), (Names{"A", "B"}));
    windows.unloadAll();
    EXPECT_TRUE(windows.loadedNames().empty());
}

TEST_F(FormKit, AFailedFactoryLeavesNoWindowBehind) {
    windows.declare("C", [](Windows&) -> std::unique_ptr<Form> { throw std::runtime_error("no"); });
    EXPECT_THROW(windows.load("C"), std::runtime_error);
    EXPECT_FALSE(windows.isLoaded("C"));
    EXPECT_FALSE(windows.anyVisible());
}

TEST_F(FormKit, APressIsDownUpAndClick) {
    auto& form = loaded("A");
    form.button.MouseDown = [this](MouseButton) { log.emplace_back("down"); };
    form.button.MouseUp = [this](MouseButton) { log.emplace_back("up"); };
    form.button.Click = [this] { log.emplace_back("click"); };
    form.button.press();
    EXPECT_EQ(log, (Names{"A load", "down", "up", "click"}));
}

TEST_F(FormKit, DisabledAndHiddenControlsTakeNoGestures) {
    auto& form = loaded("A");
    int calls = 0;
    form.button.Click = [&calls] { ++calls; };
    form.button.MouseDown = [&calls](MouseButton) { ++calls; };
    form.entry.EnterPressed = [&calls] { ++calls; };
    form.flood.BarPressed = [&calls](MouseButton, float) { ++calls; };
    form.slider.Change = [&calls] { ++calls; };
    for (auto* control : form.controls()) {
        control->Enabled = false;
    }
    form.button.press();
    form.entry.enter();
    form.flood.pressAt(5);
    form.slider.moveTo(5);
    for (auto* control : form.controls()) {
        control->Enabled = true;
        control->Visible = false;
    }
    form.button.press();
    form.entry.enter();
    form.flood.pressAt(5);
    form.slider.moveTo(5);
    EXPECT_EQ(calls, 0);
}

TEST_F(FormKit, APressThatHidesItsControlGetsNoClick) {
    auto& form = loaded("A");
    int clicks = 0;
    form.button.MouseDown = [&form](MouseButton) { form.button.Visible = false; };
    form.button.Click = [&clicks] { ++clicks; };
    form.button.press();
    EXPECT_EQ(clicks, 0);
}

TEST_F(FormKit, APressThatUnloadsItsFormGetsNoClick) {
    auto& form = loaded("A");
    int clicks = 0;
    form.button.MouseDown = [this](MouseButton) { windows.unload("A"); };
    form.button.Click = [&clicks] { ++clicks; };
    form.button.press();
    EXPECT_EQ(clicks, 0);
}

TEST_F(FormKit, ASliderIsMovedWithinItsBoundsAndTellsOnlyChanges) {
    auto& slider = loaded("A").slider;
    Names changes;
    slider.Change = [&] { changes.push_back(std::to_string(slider.Value.get())); };
    slider.moveTo(40);
    slider.moveTo(40);
    slider.moveTo(1000);
    slider.moveTo(-1000);
    EXPECT_EQ(changes, (Names{"40", "100", "0"}));
    slider.Value = 50;
    EXPECT_EQ(changes.size(), 3U);
}

TEST_F(FormKit, ASliderWithCrossedBoundsStaysAtItsSmallerOne) {
    auto& slider = loaded("A").slider;
    slider.Min = 10;
    slider.Max = -1;
    slider.moveTo(5);
    EXPECT_EQ(slider.Value.get(), 10);
}

TEST_F(FormKit, APointOfTheBarAndTheButtonAreTold) {
    auto& flood = loaded("A").flood;
    float at = 0;
    MouseButton which = MouseButton::left;
    flood.BarPressed = [&](MouseButton button, float x) {
        at = x;
        which = button;
    };
    flood.pressAt(250.5F, MouseButton::right);
    EXPECT_EQ(at, 250.5F);
    EXPECT_EQ(which, MouseButton::right);
}

TEST_F(FormKit, ControlsAreFoundByTheirDesignerNames) {
    auto& form = loaded("A");
    EXPECT_EQ(form.control("Text1"), &form.entry);
    EXPECT_EQ(form.control("Text9"), nullptr);
    EXPECT_EQ(form.button.spokenName(), "Do it");
    form.entry.SetFocus();
    EXPECT_EQ(form.entry.focusRequests.get(), 1);
}

TEST_F(FormKit, TheElementsOfAnArrayAreNamedByTheirIndex) {
    auto& form = loaded("A");
    ControlArray<Label> cells(form, "Label22", 3, [](int i) { return "Cell " + std::to_string(i + 1); });
    EXPECT_EQ(cells.size(), 3);
    EXPECT_EQ(cells[2].name(), "Label22(2)");
    EXPECT_EQ(cells[2].spokenName(), "Cell 3");
    EXPECT_THROW(cells[3], std::out_of_range);
}

TEST_F(FormKit, ATimerRunsWhileItsFormIsLoaded) {
    auto& form = loaded("A");
    scheduler.runFor(Milliseconds(350));
    EXPECT_EQ(form.ticks, 3);
}

TEST_F(FormKit, ATimersTickThatUnloadsItsFormIsTheLast) {
    int ticks = 0;
    loaded("A").onTick = [&] {
        ++ticks;
        windows.unload("A");
    };
    scheduler.runFor(Milliseconds(1000));
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(log.back(), "A gone");
}

TEST_F(FormKit, ADisabledTimerAndOneWithoutAnIntervalStandStill) {
    auto& form = loaded("A");
    form.timer.Enabled = false;
    scheduler.runFor(Milliseconds(300));
    form.timer.Interval = 0;
    form.timer.Enabled = true;
    scheduler.runFor(Milliseconds(300));
    EXPECT_EQ(form.ticks, 0);
    form.timer.fire();
    EXPECT_EQ(form.ticks, 0);
}

TEST_F(FormKit, AnotherIntervalStartsTheCountAnewAndAnEqualOneDoesNot) {
    auto& form = loaded("A");
    scheduler.runFor(Milliseconds(80));
    form.timer.Interval = 100;
    scheduler.runFor(Milliseconds(30));
    EXPECT_EQ(form.ticks, 1);
    scheduler.runFor(Milliseconds(80));
    form.timer.Interval = 50;
    scheduler.runFor(Milliseconds(40));
    EXPECT_EQ(form.ticks, 1);
    scheduler.runFor(Milliseconds(10));
    EXPECT_EQ(form.ticks, 2);
}

TEST_F(FormKit, ATimerMayStopItselfOrChangeItsIntervalInItsOwnTick) {
    auto& form = loaded("A");
    form.onTick = [&form] { form.timer.Interval = 200; };
    scheduler.runFor(Milliseconds(500));
    EXPECT_EQ(form.ticks, 3);
    form.onTick = [&form] { form.timer.Enabled = false; };
    scheduler.runFor(Milliseconds(1000));
    EXPECT_EQ(form.ticks, 4);
}

TEST_F(FormKit, TimersStandStillInADeliberateWaitAndThenFireOnce) {
    auto& form = loaded("A");
    scheduler.wait(Milliseconds(1000));
    EXPECT_EQ(form.ticks, 0);
    scheduler.doEvents();
    EXPECT_EQ(form.ticks, 1);
}

TEST_F(FormKit, NothingReachesAFormThatIsUnloaded) {
    auto& form = loaded("A");
    int calls = 0;
    form.dispatch([&] {
        windows.unload("A");
        form.dispatch([&calls] { ++calls; });
    });
    EXPECT_EQ(calls, 0);
}

TEST_F(FormKit, AFormIsSeenThroughTheInterfaceThatItImplements) {
    loaded("A");
    EXPECT_NE(windows.find<Sample>("A"), nullptr);
    EXPECT_EQ(windows.find<Sample>("B"), nullptr);
    EXPECT_EQ(windows.find<Subscription>("A"), nullptr);
}

TEST_F(FormKit, WhatAFormHoldsLivesAsLongAsTheForm) {
    const auto held = std::make_shared<int>(1);
    {
        auto mine = std::make_shared<std::shared_ptr<int>>(held);
        loaded("A").hold(mine);
    }
    EXPECT_EQ(held.use_count(), 2);
    const auto life = loaded("A").life();
    windows.unload("A");
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(life.expired());
}

}  // namespace
}  // namespace tessarel::forms
