#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "host/desktop/dispatch.h"
#include "platform/process_end.h"
#include "tests/ui/sample_forms.h"
#include "ui/bind.h"
#include "ui/widgets/flood_bar.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/level_slider.h"
#include "ui/widgets/track_cell.h"

namespace tessarel::uitest {
namespace {

using forms::MouseButton;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Bindings : public ::testing::Test {
protected:
    template <class T>
    T& widget(const std::string& name) {
        T* found = nullptr;
        for (auto* candidate : stage.window("CDForm").findChildren<QWidget*>(QString::fromStdString(name))) {
            found = dynamic_cast<T*>(candidate);
        }
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    void focus(QWidget& target) {
        QApplication::setActiveWindow(&stage.window("CDForm"));
        target.setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(target.hasFocus());
    }

    Stage stage;
    SampleCd& cd = stage.showCd();
};

TEST_F(Bindings, ALabelShowsItsCaptionAndItsColourAsTheyChange) {
    auto& lamp = widget<ui::Lamp>("Label21");
    cd.face.repeatLamp.Caption = std::string("PAUSE");
    EXPECT_EQ(lamp.shownText(), "PAUSE");
    EXPECT_FALSE(lamp.lit());
    cd.face.repeatLamp.ForeColor = 65535;
    EXPECT_TRUE(lamp.lit());
}

TEST_F(Bindings, AMousePressReachesTheControlAsDownUpAndClick) {
    QTest::mouseClick(&widget<ui::Key>("icntla(2)"), Qt::LeftButton);
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(2)", "Up icntla(2)", "Click icntla(2)"));
}

TEST_F(Bindings, AReleaseBesideTheKeyIsNoClick) {
    auto& key = widget<ui::Key>("icntla(2)");
    QTest::mousePress(&key, Qt::LeftButton);
    QTest::mouseRelease(&key, Qt::LeftButton, {}, QPoint(-20, -20));
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(2)", "Up icntla(2)"));
}

TEST_F(Bindings, SpaceAndEnterPressTheKeyThatHasTheFocus) {
    auto& key = widget<ui::Key>("icntla(4)");
    focus(key);
    QTest::keyClick(&key, Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(4)", "Up icntla(4)", "Click icntla(4)"));
    cd.log.clear();
    QTest::keyClick(&key, Qt::Key_Return);
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(4)", "Up icntla(4)", "Click icntla(4)"));
}

TEST_F(Bindings, ForwardIsHeldAsLongAsItsKeyOfTheKeyboardIs) {
    auto& key = widget<ui::Key>("scntla(3)");
    focus(key);
    QTest::keyPress(&key, Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Down scntla(3)"));
    QTest::keyRelease(&key, Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Down scntla(3)", "Up scntla(3)", "Click scntla(3)"));
}

TEST_F(Bindings, AHoldEndsWhenTheFocusGoesElsewhere) {
    auto& key = widget<ui::Key>("scntla(3)");
    focus(key);
    QTest::keyPress(&key, Qt::Key_Space);
    widget<ui::Key>("icntla(0)").setFocus();
    EXPECT_THAT(cd.log, ElementsAre("Down scntla(3)", "Up scntla(3)"));
}

TEST_F(Bindings, ARightPressAndTheMenuKeyAreTheSame) {
    auto& title = widget<ui::GlassLabel>("Label12");
    QTest::mousePress(&title, Qt::RightButton);
    QTest::mouseRelease(&title, Qt::RightButton);
    EXPECT_THAT(cd.log, ElementsAre("Right Label12", "Up Label12"));
    cd.log.clear();
    focus(title);
    QTest::keyClick(&title, Qt::Key_Menu);
    EXPECT_THAT(cd.log, ElementsAre("Right Label12", "Up Label12"));
}

TEST_F(Bindings, AssistiveTechnologyCanPressAKeyAndHearsItsState) {
    auto& key = widget<ui::Key>("icntla(2)");
    auto* spoken = QAccessible::queryAccessibleInterface(&key);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::Button);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Play");
    EXPECT_TRUE(spoken->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(2)", "Up icntla(2)", "Click icntla(2)"));
    cd.face.icntlc[2].Visible = true;
    EXPECT_EQ(spoken->text(QAccessible::Description), "lit");
    cd.face.icntlc[2].Visible = false;
    cd.face.icntlb[2].Visible = true;
    EXPECT_EQ(spoken->text(QAccessible::Description), "dim");
}

TEST_F(Bindings, AModeKeyIsSpokenAsCheckedWhileItsLightIsOn) {
    auto* spoken = QAccessible::queryAccessibleInterface(&widget<ui::Key>("Image4(1)"));
    EXPECT_TRUE(spoken->state().checkable);
    EXPECT_FALSE(spoken->state().checked);
    cd.face.Image3[1].Visible = true;
    EXPECT_TRUE(spoken->state().checked);
}

TEST_F(Bindings, OfTheLampsOnlyTheWallpapersIsSpokenAsASwitch) {
    const auto checkable = [&](const char* name) -> bool {
        return QAccessible::queryAccessibleInterface(&widget<ui::LabelPad>(name))->state().checkable;
    };
    for (const char* name : {"Label14", "Label6", "Label30", "Label9", "Label10", "Label21", "Label16"}) {
        EXPECT_FALSE(checkable(name)) << name;
    }
    EXPECT_TRUE(checkable("Label26"));
}

TEST_F(Bindings, AFaderIsSpokenByItsLoudnessWhichRises) {
    auto* spoken = QAccessible::queryAccessibleInterface(&widget<ui::LevelSlider>("LSlider"));
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::Slider);
    auto* value = spoken->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->minimumValue(), 0);
    EXPECT_EQ(value->maximumValue(), 100);
    cd.face.leftSlider.Value = 28;
    EXPECT_EQ(value->currentValue(), 72);
    cd.face.leftSlider.Value = 0;
    EXPECT_EQ(value->currentValue(), 100) << "the top is the loudest";
    cd.log.clear();
    value->setCurrentValue(30);
    EXPECT_EQ(cd.face.leftSlider.Value, 70);
    EXPECT_THAT(cd.log, ElementsAre("Down LSlider", "Change LSlider", "Up LSlider")) << "a whole gesture";
    value->setCurrentValue(400);
    EXPECT_EQ(cd.face.leftSlider.Value, 0);
}

TEST_F(Bindings, APanelIsNoStopOfTheKeyboardAndTheMenuKeyOfItsFaderIsItsRightPress) {
    QWidget* panel = stage.window("CDForm").findChild<QWidget*>("SSPanel1");
    cd.face.sliderPanel.MouseDown = [this](MouseButton button) {
        cd.log.emplace_back(button == MouseButton::right ? "Right SSPanel1" : "Down SSPanel1");
    };
    cd.face.sliderPanel.Visible = false;
    cd.face.sliderPanel.Visible = true;
    EXPECT_EQ(panel->focusPolicy(), Qt::NoFocus);
    auto* spoken = QAccessible::queryAccessibleInterface(panel);
    EXPECT_EQ(spoken->role(), QAccessible::Grouping);
    EXPECT_FALSE(spoken->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    auto& slider = widget<ui::LevelSlider>("LSlider");
    focus(slider);
    QTest::keyClick(&slider, Qt::Key_Menu);
    EXPECT_THAT(cd.log, ElementsAre("Right SSPanel1"));
}

TEST_F(Bindings, ALabelThatTakesNoPressIsSpokenAsText) {
    cd.face.trackDigits.Caption = std::string("7");
    auto* spoken = QAccessible::queryAccessibleInterface(&widget<ui::LabelPad>("Label8"));
    EXPECT_EQ(spoken->role(), QAccessible::StaticText);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Track");
    EXPECT_EQ(spoken->text(QAccessible::Description), "7");
}

TEST_F(Bindings, ADisabledControlIsDeadAndAHiddenOneGone) {
    auto& key = widget<ui::Key>("icntla(5)");
    cd.face.icntla[5].Enabled = false;
    QTest::mouseClick(&key, Qt::LeftButton);
    EXPECT_THAT(cd.log, IsEmpty());
    cd.face.icntla[5].Visible = false;
    EXPECT_FALSE(key.isVisible());
}

TEST_F(Bindings, MuteIsOneKeyForTwoPicturesThatTakeTurns) {
    auto& key = widget<ui::Key>("Image2(1)");
    QTest::mouseClick(&key, Qt::LeftButton);
    cd.face.Image2[0].Visible = true;
    cd.face.Image2[1].Visible = false;
    EXPECT_TRUE(key.isVisible());
    EXPECT_TRUE(key.lit());
    QTest::mouseClick(&key, Qt::LeftButton);
    EXPECT_THAT(cd.log, ElementsAre("Down Image2(1)", "Up Image2(1)", "Click Image2(1)", "Down Image2(0)", "Up Image2(0)",
                                    "Click Image2(0)"));
}

TEST_F(Bindings, AKeyIsDimWhileItsCoverLabelIsBlack) {
    auto& key = widget<ui::Key>("Image16(2)");
    EXPECT_TRUE(key.dim());
    cd.face.saveCover.ForeColor = colors::grey;
    EXPECT_FALSE(key.dim());
}

TEST_F(Bindings, TheSliderGoesBothWaysWithTheSmallerValueAtTheTop) {
    auto& slider = widget<ui::LevelSlider>("LSlider");
    cd.face.leftSlider.Value = 40;
    EXPECT_EQ(slider.value(), 40);
    EXPECT_THAT(cd.log, IsEmpty());
    QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(slider.width() / 2, 1));
    EXPECT_EQ(cd.face.leftSlider.Value, 0);
    EXPECT_THAT(cd.log, ElementsAre("Down LSlider", "Change LSlider", "Up LSlider"));
}

TEST_F(Bindings, WhatAssistiveTechnologySetsIsAMoveThatIsLetGo) {
    auto& slider = widget<ui::LevelSlider>("LSlider");
    slider.setValue(30);
    EXPECT_EQ(cd.face.leftSlider.Value, 30);
    EXPECT_THAT(cd.log, ElementsAre("Change LSlider", "Up LSlider"));
}

TEST_F(Bindings, KeysAndTheWheelMakeItLouderUpwards) {
    auto& slider = widget<ui::LevelSlider>("LSlider");
    cd.face.leftSlider.Value = 40;
    focus(slider);
    QTest::keyClick(&slider, Qt::Key_Up);
    EXPECT_EQ(cd.face.leftSlider.Value, 38);
    QTest::keyClick(&slider, Qt::Key_PageDown);
    EXPECT_EQ(cd.face.leftSlider.Value, 48);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(cd.face.leftSlider.Value, 0);
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(cd.face.leftSlider.Value, 100);
    const QPointF middle(slider.rect().center());
    QWheelEvent up(middle, slider.mapToGlobal(middle), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                   false);
    QApplication::sendEvent(&slider, &up);
    EXPECT_EQ(cd.face.leftSlider.Value, 98);
    EXPECT_EQ(slider.accessibleDescription(), "2 %");
}

TEST_F(Bindings, APressAnywhereOnTheBarIsToldAsAPointOfIt) {
    cd.face.statusBar.Width = 2000;
    auto& bar = widget<ui::FloodBar>("CDStatusBar");
    cd.face.statusBar.FloodPercent = 48;
    EXPECT_EQ(bar.percent(), 48);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.rect().center());
    ASSERT_EQ(cd.log.size(), 1U);
    EXPECT_NEAR(std::stoi(cd.log[0].substr(4)), 1000, 5);
    EXPECT_EQ(bar.percent(), 48) << "the bar shows what the program says, not what was pressed";
}

TEST_F(Bindings, ArrowsSeekByFivePercent) {
    auto& bar = widget<ui::FloodBar>("CDStatusBar");
    cd.face.statusBar.FloodPercent = 48;
    focus(bar);
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_THAT(cd.log, ElementsAre("Bar 530", "Bar 430"));
    cd.face.statusBar.FloodPercent = 98;
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(cd.log.back(), "Bar 1000");
}

TEST_F(Bindings, TheKeypadBoxAppearsOnDemandAndGoesBothWays) {
    EXPECT_EQ(stage.window("CDForm").findChild<QLineEdit*>(), nullptr);
    std::string entered;
    cd.face.keypadEntry.EnterPressed = [&] { entered = cd.face.keypadEntry.Text; };
    cd.face.keypadEntry.Visible = true;
    cd.face.keypadEntry.SetFocus();
    auto* box = stage.window("CDForm").findChild<QLineEdit*>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible());
    QTest::keyClicks(box, "21");
    EXPECT_EQ(cd.face.keypadEntry.Text, "21");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(entered, "21");
    cd.face.keypadEntry.Text = std::string();
    EXPECT_TRUE(box->text().isEmpty());
}

TEST_F(Bindings, ACellShowsNumberStateAndWhetherThereIsATrack) {
    cd.showPlaying();
    auto& current = widget<ui::TrackCell>("Label22(6)");
    EXPECT_TRUE(current.current());
    EXPECT_EQ(current.accessibleName(), "Track 7");
    EXPECT_EQ(current.accessibleDescription(), "current track");
    EXPECT_EQ(widget<ui::TrackCell>("Label22(2)").accessibleDescription(), "dim");
    EXPECT_EQ(widget<ui::TrackCell>("Label22(8)").accessibleDescription(), "lit");
    EXPECT_EQ(widget<ui::TrackCell>("Label22(16)").accessibleDescription(), "no such track");
    QTest::mouseClick(&current, Qt::LeftButton);
    EXPECT_THAT(cd.log, ElementsAre("Down Image17(6)", "Up Image17(6)", "Click Image17(6)"));
}

TEST_F(Bindings, TheProgramsRequestForTheFocusIsFollowed) {
    QApplication::setActiveWindow(&stage.window("CDForm"));
    cd.face.icntla[3].SetFocus();
    EXPECT_TRUE(widget<ui::Key>("icntla(3)").hasFocus());
}

TEST_F(Bindings, ArrowsGoToTheNeighbouringKey) {
    auto& play = widget<ui::Key>("icntla(2)");
    focus(play);
    QTest::keyClick(&play, Qt::Key_Right);
    EXPECT_TRUE(widget<ui::Key>("icntla(3)").hasFocus());
    QTest::keyClick(&widget<ui::Key>("icntla(3)"), Qt::Key_Left);
    EXPECT_TRUE(play.hasFocus());
    QTest::keyClick(&play, Qt::Key_Down);
    EXPECT_TRUE(widget<ui::Key>("Image4(2)").hasFocus());
}

TEST_F(Bindings, AFormUnloadedByItsOwnKeyTakesItsWindowAwayWhenTheKeyIsDone) {
    const QPointer<ui::FormWindow> window(&stage.window("CDForm"));
    const QPointer<ui::Key> key(&widget<ui::Key>("icntla(5)"));
    cd.face.icntla[5].Click = [this] {
        stage.windows.unload("CDForm");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        stage.showWaiting();
    };
    QTest::mouseClick(key.data(), Qt::LeftButton);
    EXPECT_EQ(stage.views.find("CDForm"), nullptr);
    EXPECT_TRUE(stage.windows.isVisible("CD1st"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
}

// A nested event loop deletes what was left to be deleted by the code inside it; the key outside is still at work.
TEST_F(Bindings, AFormUnloadedInsideANestedLoopKeepsItsWidgetsUntilItsHandlerReturns) {
    const QPointer<ui::Key> key(&widget<ui::Key>("icntla(5)"));
    bool lived = false;
    cd.face.icntla[5].Click = [&] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            stage.windows.unload("CDForm");
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
        lived = key != nullptr;
    };
    QTest::mouseClick(key.data(), Qt::LeftButton);
    EXPECT_TRUE(lived);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(key, nullptr);
}

TEST_F(Bindings, TheEndOfTheProcessStopsAtTheDoor) {
    cd.face.icntla[5].Click = [] { platform::endProcess(); };
    EXPECT_NO_THROW(QTest::mouseClick(&widget<ui::Key>("icntla(5)"), Qt::LeftButton));
    EXPECT_TRUE(host::processEnding());
    cd.log.clear();
    QTest::mouseClick(&widget<ui::Key>("icntla(2)"), Qt::LeftButton);
    EXPECT_THAT(cd.log, IsEmpty()) << "nothing runs once the process is ending";
    forgetTheEnd();
}

/// A form of one control of each kind, to let either side die first.
struct Loose : forms::Form {
    explicit Loose(forms::Windows& windows) : Form(windows, "Loose") {
        label.Click = picture.Click = [this] { ++clicks; };
    }
    forms::Label label{*this, "Label1", "A label"};
    forms::Picture picture{*this, "Image1", "A picture"};
    forms::Slider slider{*this, "Slider1", "A slider"};
    forms::FloodPanel panel{*this, "Panel1", "A bar"};
    forms::TextBox box{*this, "Text1", "A box"};
    int clicks = 0;
};

struct LooseWidgets {
    explicit LooseWidgets(const ui::Theme& theme)
        : label(theme, &window, {}), key(theme, &window, {}), slider(theme, &window), bar(theme, &window), line(&window) {}
    void bindTo(Loose& form) {
        ui::bind(label, form.label);
        ui::bind(key, form.picture);
        ui::bind(slider, form.slider);
        ui::bind(bar, form.panel);
        ui::bind(line, form.box);
    }
    QWidget window;
    ui::GlassLabel label;
    ui::Key key;
    ui::LevelSlider slider;
    ui::FloodBar bar;
    QLineEdit line;
};

TEST(LooseBindings, GesturesAreSafeWhenTheFormHasDiedFirst) {
    const Stage stage;
    fakes::SimulatedScheduler scheduler;
    LooseWidgets widgets(stage.theme);
    {
        forms::Windows windows(scheduler);
        Loose form(windows);
        widgets.bindTo(form);
    }
    QTest::mouseClick(&widgets.label, Qt::LeftButton);
    QTest::mouseClick(&widgets.key, Qt::LeftButton);
    widgets.key.pressWhole();
    QTest::keyClick(&widgets.slider, Qt::Key_Down);
    QTest::keyClick(&widgets.bar, Qt::Key_Right);
    QTest::keyClicks(&widgets.line, "7");
    QTest::keyClick(&widgets.line, Qt::Key_Return);
    EXPECT_EQ(widgets.bar.percent(), 0);
}

TEST(LooseBindings, StateMayChangeWhenTheWidgetsHaveDiedFirst) {
    const Stage stage;
    fakes::SimulatedScheduler scheduler;
    forms::Windows windows(scheduler);
    Loose form(windows);
    {
        LooseWidgets widgets(stage.theme);
        widgets.bindTo(form);
    }
    form.label.Caption = std::string("changed");
    form.picture.Visible = false;
    form.slider.Value = 12;
    form.panel.FloodPercent = 12;
    form.box.Text = std::string("12");
    form.box.SetFocus();
    EXPECT_EQ(form.clicks, 0);
}

}  // namespace
}  // namespace tessarel::uitest
