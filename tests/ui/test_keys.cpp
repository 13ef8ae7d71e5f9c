// Which keys go to the control that has the focus, and which to the form.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "tests/ui/sample_forms.h"
#include "ui/widgets/row_list.h"

namespace tessarel::uitest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Keys : public ::testing::Test {
protected:
    Keys() {
        cd.takesShortcuts = true;
        QApplication::setActiveWindow(&window);
    }
    QWidget& widget(const char* name) { return *window.findChild<QWidget*>(QString::fromLatin1(name)); }
    QWidget& focus(const char* name, Qt::FocusReason reason) {
        auto& target = widget(name);
        target.setFocus(reason);
        EXPECT_TRUE(target.hasFocus()) << name;
        return target;
    }

    Stage stage;
    SampleCd& cd = stage.showCd();
    ui::FormWindow& window = stage.window("CDForm");
};

TEST_F(Keys, AtTheStartTheFocusIsOnPlayAndSpaceAndArrowsAreThePlayers) {
    auto& play = widget("icntla(2)");
    EXPECT_TRUE(play.hasFocus());
    QTest::keyClick(&play, Qt::Key_Space);
    QTest::keyClick(&play, Qt::Key_Right);
    EXPECT_THAT(cd.log, ElementsAre("Key 32 0", "KeyUp 32", "Key 39 0", "KeyUp 39"));
    EXPECT_TRUE(play.hasFocus());
}

TEST_F(Keys, WithTheRingToBeSeenSpacePressesItsKeyAndArrowsMoveIt) {
    auto& stop = focus("icntla(4)", Qt::TabFocusReason);
    QTest::keyClick(&stop, Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(4)", "Up icntla(4)", "Click icntla(4)"));
    QTest::keyClick(&stop, Qt::Key_Left);
    EXPECT_TRUE(widget("icntla(3)").hasFocus());
}

TEST_F(Keys, OnPlayAndPauseSpaceIsThePlayersAlsoWithTheRing) {
    for (const char* name : {"icntla(2)", "icntla(3)"}) {
        cd.log.clear();
        QTest::keyClick(&focus(name, Qt::TabFocusReason), Qt::Key_Space);
        EXPECT_THAT(cd.log, ElementsAre("Key 32 0", "KeyUp 32")) << name;
    }
    cd.log.clear();
    QTest::keyClick(&widget("icntla(3)"), Qt::Key_Return);
    EXPECT_THAT(cd.log, ElementsAre("Down icntla(3)", "Up icntla(3)", "Click icntla(3)")) << "Enter is the key's own";
}

TEST_F(Keys, AKeyThatTheMouseHasPressedLeavesSpaceToThePlayer) {
    QTest::mouseClick(&widget("icntla(4)"), Qt::LeftButton);
    auto& stop = focus("icntla(4)", Qt::MouseFocusReason);
    cd.log.clear();
    QTest::keyClick(&stop, Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Key 32 0", "KeyUp 32"));
}

// A click leaves the ring hidden, and so do keys that go nowhere: what follows is still the player's.
TEST_F(Keys, AModifierOrAVolumeKeyAloneDoesNotMakeTheRingAppear) {
    for (const char* name : {"icntla(4)", "LSlider", "CDStatusBar"}) {
        auto& target = focus(name, Qt::MouseFocusReason);
        for (const auto key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_CapsLock, Qt::Key_VolumeUp}) {
            QTest::keyClick(&target, key);
        }
        cd.log.clear();
        QTest::keyClick(&target, Qt::Key_Right);
        QTest::keyClick(&target, Qt::Key_Space);
        EXPECT_THAT(cd.log, ElementsAre("Key 39 0", "KeyUp 39", "Key 32 0", "KeyUp 32")) << name;
        EXPECT_TRUE(target.hasFocus()) << name;
    }
}

class FocusComesBack : public Keys {
protected:
    /// The focus is on a key, and no ring shows: Space is the player's.
    void expectQuiet(const char* name) {
        EXPECT_TRUE(widget(name).hasFocus()) << name << " but " << QApplication::focusWidget()->objectName().toStdString();
        cd.log.clear();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_THAT(cd.log, ElementsAre("Key 32 0", "KeyUp 32")) << name;
    }
    void openAndShutKeypad() {
        cd.face.keypadEntry.Visible = true;
        cd.face.keypadEntry.SetFocus();
        EXPECT_TRUE(window.findChild<QLineEdit*>()->hasFocus());
        cd.face.keypadEntry.Visible = false;
    }
};

TEST_F(FocusComesBack, FromTheKeypadThatWasOpenedByItsShortcut) {
    openAndShutKeypad();
    expectQuiet("icntla(2)");
}

TEST_F(FocusComesBack, FromTheKeypadToTheKeyThatTheMouseHadPressed) {
    focus("Image16(0)", Qt::MouseFocusReason);
    openAndShutKeypad();
    expectQuiet("Image16(0)");
}

TEST_F(FocusComesBack, WithItsRingWhereThereWasOne) {
    focus("Image16(0)", Qt::TabFocusReason);
    openAndShutKeypad();
    cd.log.clear();
    QTest::keyClick(&widget("Image16(0)"), Qt::Key_Space);
    EXPECT_THAT(cd.log, ElementsAre("Down Image16(0)", "Up Image16(0)", "Click Image16(0)"));
}

TEST_F(FocusComesBack, FromTheDrawerThatTheMouseClosed) {
    cd.drawerPosition = 5;
    focus("Panel3D7", Qt::MouseFocusReason);
    cd.drawerPosition = 0;
    expectQuiet("icntla(2)");
}

TEST_F(Keys, LettersAndDigitsReachTheFormFromAnywhere) {
    QTest::keyClick(&focus("icntla(4)", Qt::TabFocusReason), Qt::Key_M);
    QTest::keyClick(&focus("LSlider", Qt::TabFocusReason), Qt::Key_7);
    QTest::keyClick(&focus("CDStatusBar", Qt::TabFocusReason), Qt::Key_Right, Qt::ControlModifier);
    QTest::keyClick(&focus("LSlider", Qt::TabFocusReason), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_THAT(cd.log,
                ElementsAre("Key 77 0", "KeyUp 77", "Key 55 0", "KeyUp 55", "Key 39 2", "KeyUp 39", "Key 38 2", "KeyUp 38"));
}

TEST_F(Keys, WhatIsTypedIntoTheKeypadIsText) {
    cd.face.keypadEntry.Visible = true;
    cd.face.keypadEntry.SetFocus();
    auto* box = window.findChild<QLineEdit*>();
    ASSERT_TRUE(box->hasFocus());
    for (const auto key : {Qt::Key_1, Qt::Key_S, Qt::Key_Space, Qt::Key_M, Qt::Key_Up, Qt::Key_Left, Qt::Key_2}) {
        QTest::keyClick(box, key);
    }
    EXPECT_THAT(cd.log, IsEmpty());
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_THAT(cd.log, ElementsAre("Key 27 0"));
}

TEST_F(Keys, AHeldKeyIsToldOnceUnlessItsUseGoesOn) {
    auto& play = widget("icntla(2)");
    const auto repeat = [&](int key) {
        QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(&play, &again);
    };
    QTest::keyPress(&play, Qt::Key_Right);
    repeat(Qt::Key_Right);
    QTest::keyRelease(&play, Qt::Key_Right);
    EXPECT_THAT(cd.log, ElementsAre("Key 39 0", "KeyUp 39"));
    cd.log.clear();
    QTest::keyPress(&play, Qt::Key_Up);
    repeat(Qt::Key_Up);
    QTest::keyRelease(&play, Qt::Key_Up);
    EXPECT_THAT(cd.log, ElementsAre("Key 38 0", "Key 38 0", "KeyUp 38"));
}

TEST_F(Keys, AHoldEndsWhenTheWindowGoesOrLosesTheKeyboard) {
    QTest::keyPress(&widget("icntla(2)"), Qt::Key_Right);
    stage.windows.hide("CDForm");
    EXPECT_THAT(cd.log, ElementsAre("Key 39 0", "KeyUp 39"));
    stage.windows.show("CDForm");
    QApplication::setActiveWindow(&window);
    cd.log.clear();
    QTest::keyPress(&widget("icntla(2)"), Qt::Key_Right);
    QApplication::setActiveWindow(&stage.window((stage.showWaiting(), "CD1st")));
    EXPECT_THAT(cd.log, ElementsAre("Key 39 0", "KeyUp 39"));
}

TEST_F(Keys, TheTipsShowTheShortcutsThatTheFormGives) {
    cd.face.icntla[2].ToolTipText = std::string("Play (Space)");
    cd.face.leftSlider.ToolTipText = std::string("Volume left (Ctrl+Up, Ctrl+Down)");
    EXPECT_EQ(widget("icntla(2)").toolTip(), "Play (Space)");
    EXPECT_EQ(widget("LSlider").toolTip(), "Volume left (Ctrl+Up, Ctrl+Down)");
    EXPECT_EQ(widget("icntla(4)").toolTip(), "Stop") << "the name alone without one";
}

class ListOfRows : public ::testing::Test {
protected:
    Stage stage;
    SampleList& list = stage.showList();
    ui::RowList& rows = *stage.window("aplaylst").findChild<ui::RowList*>();
};

TEST_F(ListOfRows, ShowsTheRowsAndTheSelectedOne) {
    EXPECT_EQ(rows.rowCount(), 6);
    EXPECT_EQ(rows.chosen(), 1);
    list.List1.ListIndex = 4;
    EXPECT_EQ(rows.chosen(), 4);
    list.List1.ListIndex = -1;
    EXPECT_EQ(rows.chosen(), -1);
    list.List1.rows = std::vector<std::string>{"1:\tOnly\t1:00"};
    EXPECT_EQ(rows.rowCount(), 1);
}

TEST_F(ListOfRows, BeginsItsColumnsAtTheStopsAndClearOfTheNumbers) {
    const double first = rows.columnStart(0);
    EXPECT_GT(rows.columnStart(1), first + 15);
    EXPECT_GT(rows.columnStart(2), rows.viewport()->width() * 0.85);
}

TEST_F(ListOfRows, ARowIsChosenByMouseAndKeyboardAndStaysWhereTheFormPutsIt) {
    const auto middleOf = [&](int row) { return rows.visualRect(rows.model()->index(row, 0)).center(); };
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, middleOf(3));
    EXPECT_EQ(list.List1.ListIndex, 3);
    list.List1.Click = [this] { list.List1.ListIndex = 1; };
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, middleOf(5));
    EXPECT_EQ(rows.chosen(), 1);
    QTest::keyClick(&rows, Qt::Key_Down);
    EXPECT_EQ(rows.chosen(), 1);
    EXPECT_THAT(list.log, ElementsAre("Click 3"));
}

TEST_F(ListOfRows, IsSpokenRowByRowWithoutTheTabs) {
    auto* spoken = QAccessible::queryAccessibleInterface(&rows);
    EXPECT_EQ(spoken->role(), QAccessible::List);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Program");
    ASSERT_EQ(spoken->childCount(), 6);
    EXPECT_EQ(spoken->child(1)->text(QAccessible::Name), "3: Clair de lune 5:04");
    EXPECT_TRUE(spoken->child(1)->state().selected);
    EXPECT_FALSE(spoken->child(0)->state().selected);
}

TEST_F(ListOfRows, TakesLettersFromTheForm) {
    const int usual = rows.visualRect(rows.model()->index(0, 0)).height();
    list.List1.FontSize = 18;
    list.List1.FontBold = true;
    EXPECT_TRUE(rows.font().bold());
    rows.doItemsLayout();
    EXPECT_GT(rows.visualRect(rows.model()->index(0, 0)).height(), usual);
}

TEST(SmallVolumeWindow, ShowsOneSideAtATime) {
    Stage stage;
    auto& remote = stage.showRemote();
    auto& window = stage.window("VolCntl");
    const auto seen = [&](const char* name) { return window.findChild<QWidget*>(QString::fromLatin1(name))->isVisible(); };
    EXPECT_TRUE(seen("Slider2") && seen("Image6") && !seen("Label8") && !seen("Image8"));
    remote.showSide(true);
    EXPECT_TRUE(!seen("Slider2") && !seen("Image6") && seen("Label8") && seen("Image8"));
}

TEST(SmallVolumeWindow, ItsKeysReachTheForm) {
    Stage stage;
    auto& remote = stage.showRemote();
    auto& window = stage.window("VolCntl");
    for (const char* name : {"Image1(3)", "Image6", "Image5", "Image12"}) {
        QTest::mouseClick(window.findChild<QWidget*>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    EXPECT_THAT(remote.log, ElementsAre("Click Image1(3)", "Click Image6", "Click Image5", "Click Image12"));
}

TEST(SmallVolumeWindow, TheFocusComesBackToPlayWhenItsSideTurns) {
    Stage stage;
    auto& remote = stage.showRemote();
    auto& window = stage.window("VolCntl");
    QApplication::setActiveWindow(&window);
    const auto find = [&](const char* name) { return window.findChild<QWidget*>(QString::fromLatin1(name)); };
    find("Image6")->setFocus(Qt::MouseFocusReason);
    remote.showSide(true);
    EXPECT_TRUE(find("Image1(2)")->hasFocus());
    remote.showSide(false);
    find("Slider2")->setFocus(Qt::MouseFocusReason);
    remote.showSide(true);
    EXPECT_TRUE(find("Image1(2)")->hasFocus()) << "a control on the side that goes";
}

}  // namespace
}  // namespace tessarel::uitest
