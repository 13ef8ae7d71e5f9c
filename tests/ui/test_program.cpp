// The real program, on fakes, worked through its real windows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QTest>

#include "host/desktop/dispatch.h"
#include "tests/scenarios/machine.h"
#include "tests/ui/focus_order.h"
#include "tests/ui/sample_forms.h"
#include "ui/standard_views.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"

namespace tessarel::uitest {
namespace {

using namespace std::chrono_literals;

class ProgramOnScreen : public ::testing::Test {
protected:
    ProgramOnScreen() {
        machine.program.state.panelColors = ui::defaultPanelColors;
        ui::knowStandardViews(views, theme, machine.program.player, machine.program.record);
    }
    ~ProgramOnScreen() override { machine.program.windows.unloadAll(); }

    void click(const char* name) {
        auto* widget = views.find("CDForm")->findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    /// Not by QTest, which knows no media keys.
    void type(Qt::Key key) {
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(kind, key, Qt::NoModifier);
            QApplication::sendEvent(views.find("CDForm")->focusWidget(), &event);
        }
    }
    void savePicture(const std::string& form, const char* name) {
        const QString folder = QStringLiteral(TESSAREL_BINARY_DIR "/screenshots");
        ASSERT_TRUE(QDir().mkpath(folder));
        EXPECT_TRUE(picture(*views.find(form)).save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png")));
    }

    scenarios::Machine machine;
    ui::Theme theme{1, ui::Look{machine.program.state.panelColors}};
    ui::Views views{machine.program.windows};
};

TEST_F(ProgramOnScreen, TheWaitingWindowGivesWayToThePlayerWhenADiscComes) {
    machine.program.windows.show("CD1st");
    machine.run(1s);
    ASSERT_NE(views.find("CD1st"), nullptr);
    savePicture("CD1st", "program-waiting");
    machine.insert(fakes::makeDisc(14, 60));
    machine.run(1s);
    EXPECT_EQ(views.find("CD1st"), nullptr);
    ASSERT_NE(views.find("CDForm"), nullptr);
    EXPECT_TRUE(views.find("CDForm")->isVisible());
    savePicture("CDForm", "program-loaded");
}

TEST_F(ProgramOnScreen, ADiscIsPlayedPausedAndStoppedByTheMouse) {
    machine.openPlayer(fakes::makeDisc(14, 60));
    click("icntla(2)");
    machine.run(3s);
    EXPECT_TRUE(machine.sounding());
    auto* play = dynamic_cast<ui::Key*>(views.find("CDForm")->findChild<QWidget*>("icntla(2)"));
    EXPECT_TRUE(play->lit());
    savePicture("CDForm", "program-playing");
    click("icntla(3)");
    machine.run(1s);
    EXPECT_FALSE(machine.sounding());
    auto* repeat = dynamic_cast<ui::Key*>(views.find("CDForm")->findChild<QWidget*>("Image10(3)"));
    EXPECT_FALSE(repeat->lit()) << "the lamp that says PAUSE is not that of the key";
    savePicture("CDForm", "program-paused");
    click("icntla(4)");
    machine.run(1s);
    EXPECT_FALSE(play->lit());
}

TEST_F(ProgramOnScreen, TheRepeatKeyIsLitWithRepeatInEveryOrderAlsoInTheUsersColours) {
    machine.program.state.panelColors = {0, 16384, 0x29CF95, 0, 0, 0x29CF95, 0x29CF95, 0, 0, 0x29CF95, 0x29CF95};
    machine.openPlayer(fakes::makeDisc(14, 60));
    const auto* repeat = dynamic_cast<ui::Key*>(views.find("CDForm")->findChild<QWidget*>("Image10(3)"));
    const auto expectInStep = [&](const char* when) {
        EXPECT_EQ(repeat->lit(), machine.program.player.repeatOn == 1) << when;
        EXPECT_EQ(repeat->checked(), machine.program.player.repeatOn == 1) << when;
    };
    click("icntla(2)");
    machine.run(3s);
    click("icntla(3)");
    machine.run(1s);
    click("Image10(3)");
    machine.run(1s);
    ASSERT_EQ(machine.program.player.repeatOn, 1);
    expectInStep("switched on in a pause");
    click("icntla(2)");
    machine.run(1s);
    expectInStep("played on");
    click("icntla(3)");
    machine.run(1s);
    expectInStep("paused again");
    click("Image10(3)");
    machine.run(1s);
    ASSERT_EQ(machine.program.player.repeatOn, 0);
    expectInStep("switched off in a pause");
}

TEST_F(ProgramOnScreen, TabGoesFromTheTransportThroughTheModesToTheGridAndTheLevels) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    const auto order = names(tabOrder(*views.find("CDForm")));
    const std::vector<std::string> expected{
        "icntla(0)",   "icntla(1)",   "icntla(2)",   "icntla(3)",   "icntla(4)",   "icntla(5)",   "scntla(0)",   "scntla(1)",
        "scntla(2)",   "scntla(3)",   "Image4(0)",   "Image4(1)",   "Image4(2)",   "Image4(3)",   "Image16(0)",  "Image16(1)",
        "Image16(2)",  "Image16(3)",  "Image20",     "Label9",      "Label10",     "Label14",     "Label6",      "Label30",
        "Label26",     "Label12",     "CDStatusBar", "Label22(0)",  "Label22(1)",  "Label22(2)",  "Label22(3)",  "Label22(4)",
        "Label22(5)",  "Label22(6)",  "Label22(7)",  "Label22(8)",  "Label22(9)",  "Label22(10)", "Label22(11)", "Label22(12)",
        "Label22(13)", "Label22(14)", "Label22(15)", "Label22(16)", "Label22(17)", "Label22(18)", "Label22(19)", "LSlider",
        "RSlider",     "Image2(1)",   "Image9(1)",   "Image19",     "Image10(2)",  "Image10(3)",  "Command3D14", "Image5"};
    EXPECT_EQ(order, expected);
}

TEST_F(ProgramOnScreen, ClosingTheWindowLeavesAtOnceAlsoWithTheKeypadOpen) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    click("Image16(0)");
    auto* player = machine.program.windows.find<audio::CDForm>("CDForm");
    ASSERT_TRUE(player->face.keypadEntry.Visible);
    views.find("CDForm")->close();
    EXPECT_TRUE(host::processEnding());
    forgetTheEnd();
}

TEST_F(ProgramOnScreen, TheListIsInFrontAsLongAsThePlayerIs) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    click("Image20");
    click("Image4(0)");
    click("Label22(2)");
    auto* list = machine.program.windows.find<forms::Form>("aplaylst");
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->alwaysInFront);
    click("Image20");
    EXPECT_FALSE(list->alwaysInFront);
    click("Image20");
    EXPECT_TRUE(list->alwaysInFront);
}

TEST_F(ProgramOnScreen, EscapeShutsTheKeypadFirst) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    click("Image16(0)");
    QTest::keyClick(views.find("CDForm"), Qt::Key_Escape);
    ASSERT_NE(views.find("CDForm"), nullptr);
    EXPECT_FALSE(machine.program.windows.find<audio::CDForm>("CDForm")->face.keypadEntry.Visible);
}

TEST_F(ProgramOnScreen, TheKeyboardsMediaKeysWorkInTheWindow) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    type(Qt::Key_MediaPlay);
    machine.run(3s);
    EXPECT_TRUE(machine.sounding());
    type(Qt::Key_MediaNext);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 2);
    type(Qt::Key_MediaPrevious);
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 1);
    type(Qt::Key_MediaTogglePlayPause);
    machine.run(1s);
    EXPECT_FALSE(machine.sounding()) << "paused";
    type(Qt::Key_MediaPlay);
    machine.run(2s);
    EXPECT_TRUE(machine.sounding());
    type(Qt::Key_MediaStop);
    machine.run(2s);
    EXPECT_FALSE(machine.sounding());
}

TEST_F(ProgramOnScreen, ACellPlaysItsTrackAndTheTimeKeyChangesTheCaption) {
    machine.openPlayer(fakes::makeDisc(24, 60));
    click("Label22(4)");
    machine.run(3s);
    EXPECT_EQ(machine.soundingTrack(), 5);
    auto* caption = dynamic_cast<ui::GlassLabel*>(views.find("CDForm")->findChild<QWidget*>("Label9"));
    const QString before = caption->shownText();
    click("scntla(1)");
    EXPECT_NE(caption->shownText(), before);
    savePicture("CDForm", "program-track5");
}

TEST_F(ProgramOnScreen, ThePlayersWindowSurvivesThatItsDiscIsEjected) {
    machine.openPlayer(fakes::makeDisc(3, 60));
    click("icntla(5)");
    machine.run(3s);
    EXPECT_TRUE(machine.program.windows.isVisible("CD1st"));
    if (views.find("CDForm") != nullptr) {
        savePicture("CDForm", "program-ejected");
    }
}

}  // namespace
}  // namespace tessarel::uitest
