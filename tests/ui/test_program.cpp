// The real program, on fakes, worked through its real windows.
#include <gtest/gtest.h>

#include <QDir>
#include <QTest>

#include "tests/scenarios/machine.h"
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
    void savePicture(const std::string& form, const char* name) {
        const QString folder = QStringLiteral(TESSAREL_BINARY_DIR "/screenshots");
        ASSERT_TRUE(QDir().mkpath(folder));
        EXPECT_TRUE(picture(*views.find(form)).save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png")));
    }

    scenarios::Machine machine;
    ui::Theme theme{1, machine.program.state.panelColors};
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
