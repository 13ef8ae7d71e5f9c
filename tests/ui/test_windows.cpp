#include <gmock/gmock.h>

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include "tests/ui/sample_forms.h"

namespace tessarel::uitest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowsOnScreen : public ::testing::Test {
protected:
    Stage stage;
    SampleCd& cd = stage.showCd();
    ui::FormWindow& window = stage.window("CDForm");
};

TEST_F(WindowsOnScreen, TheFormTakesItsSizeInTwipsFromItsWindow) {
    EXPECT_EQ(cd.Width, 15600);
    EXPECT_EQ(cd.Height, 6780);
}

TEST_F(WindowsOnScreen, TheWindowGoesWhereTheFormSaysAndTheFormLearnsWhereItWent) {
    cd.Move(1500, 3000);
    EXPECT_EQ(window.pos(), QPoint(100, 200));
    window.move(40, 60);
    EXPECT_EQ(cd.Left, 600);
    EXPECT_EQ(cd.Top, 900);
}

TEST_F(WindowsOnScreen, ItIsShownHiddenAndMinimisedAsTheFormSays) {
    EXPECT_TRUE(window.isVisible());
    cd.WindowState = forms::WindowState::minimised;
    EXPECT_TRUE(window.isMinimized());
    cd.WindowState = forms::WindowState::normal;
    EXPECT_FALSE(window.isMinimized());
    stage.windows.hide("CDForm");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(WindowsOnScreen, TheFormLearnsThatTheDesktopHasMinimisedIt) {
    window.showMinimized();
    QCoreApplication::processEvents();
    EXPECT_EQ(cd.WindowState, forms::WindowState::minimised);
}

TEST_F(WindowsOnScreen, TheTitleFollowsTheCaption) {
    cd.Caption = std::string("Tessarel [Clair de lune]");
    EXPECT_EQ(window.windowTitle(), "Tessarel [Clair de lune]");
}

TEST_F(WindowsOnScreen, AlwaysInFrontIsAskedOfTheDesktop) {
    cd.alwaysInFront = true;
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.isVisible());
    cd.alwaysInFront = false;
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(WindowsOnScreen, TheKeysOfAFormReachIt) {
    for (const auto key : {Qt::Key_Escape, Qt::Key_F1, Qt::Key_Help, Qt::Key_Return, Qt::Key_A}) {
        QTest::keyClick(&window, key);
    }
    QTest::keyClick(&window, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_THAT(cd.log, ElementsAre("Key 27 0", "Key 112 0", "Key 47 0", "Key 13 0", "Key 112 1"));
}

TEST_F(WindowsOnScreen, AKeyThatAControlHasNoUseForReachesTheForm) {
    auto* play = window.findChild<QWidget*>("icntla(2)");
    QTest::keyClick(play, Qt::Key_Escape);
    EXPECT_THAT(cd.log, ElementsAre("Key 27 0"));
}

TEST_F(WindowsOnScreen, ClosingTheWindowIsTheEscapeKeyWhereTheFormHasNoOtherUse) {
    window.close();
    EXPECT_THAT(cd.log, ElementsAre("Key 27 0"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(WindowsOnScreen, PressesOnTheEmptyFaceReachTheForm) {
    QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(500, 20));
    QTest::mouseClick(&window, Qt::RightButton, {}, QPoint(500, 20));
    EXPECT_THAT(cd.log, ElementsAre("Face left", "Face right"));
}

TEST_F(WindowsOnScreen, APressOnATextThatTakesNoneIsAPressOnTheFace) {
    auto* title = window.findChild<QWidget*>("Label13");
    QTest::mouseClick(title, Qt::LeftButton);
    EXPECT_THAT(cd.log, ElementsAre("Face left"));
}

TEST_F(WindowsOnScreen, DroppedLocalFilesReachTheFormAndAddressesDoNot) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/music/disc one.cue"), QUrl("http://example.org/disc.iso")});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    EXPECT_THAT(cd.log, ElementsAre("Drop /music/disc one.cue"));
}

TEST_F(WindowsOnScreen, ADragOfAddressesAloneIsNotTaken) {
    QMimeData data;
    data.setUrls({QUrl("http://example.org/disc.iso")});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(WindowsOnScreen, ADragThatNoButtonHoldsReturnsAtOnce) {
    cd.dragBySystem();
    EXPECT_THAT(cd.log, IsEmpty());
}

TEST_F(WindowsOnScreen, AnUnloadedFormTakesItsWindowAlongAndANewLoadMakesAFreshOne) {
    const QPointer<ui::FormWindow> first(&window);
    stage.windows.unload("CDForm");
    EXPECT_EQ(stage.views.find("CDForm"), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(first, nullptr);
    stage.showCd();
    EXPECT_TRUE(stage.window("CDForm").isVisible());
}

TEST(WindowsWithoutViews, ProgramMayGoOnWhenTheViewsHaveGone) {
    fakes::SimulatedScheduler scheduler;
    forms::Windows windows(scheduler);
    windows.declare("CDForm", [](forms::Windows& w) { return std::make_unique<SampleCd>(w); });
    { const ui::Views views(windows); }
    windows.show("CDForm");
    EXPECT_TRUE(windows.isVisible("CDForm"));
    windows.unload("CDForm");
}

TEST(WindowsWithoutViews, AFormThatNoViewIsKnownForStaysInvisible) {
    fakes::SimulatedScheduler scheduler;
    forms::Windows windows(scheduler);
    windows.declare("CDForm", [](forms::Windows& w) { return std::make_unique<SampleCd>(w); });
    const ui::Views views(windows);
    windows.show("CDForm");
    EXPECT_EQ(views.find("CDForm"), nullptr);
}

}  // namespace
}  // namespace tessarel::uitest
