#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "host/desktop/dispatch.h"
#include "platform/process_end.h"
#include "tests/ui/sample_forms.h"
#include "ui/dialogs.h"

namespace tessarel::uitest {
namespace {

using platform::Answer;

ui::QtDialogs dialogs() {
    return ui::QtDialogs({[](const std::string& path) { return path == "E:\\" ? std::string("/tmp") : path; },
                          [](const std::string& path) { return "Z:" + path; }});
}

/// Runs `act` on the dialog that comes up next.
template <class Dialog, class Act>
void onNext(Act act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
    });
}

TEST(QtDialogs, AFilterOfTheProgramBecomesOneOfTheToolkit) {
    EXPECT_EQ(
        ui::fileDialogFilter("All Executable Files (*.exe; *.com; *.bat)|*.exe; *.com; *.bat|EXE Files Only (*.exe)|*.exe"),
        "All Executable Files (*.exe *.com *.bat);;EXE Files Only (*.exe)");
    EXPECT_EQ(ui::fileDialogFilter("All files|*.*"), "All files (*)");
    EXPECT_EQ(ui::fileDialogFilter(""), "");
    EXPECT_EQ(ui::fileDialogFilter("Broken"), "");
}

TEST(QtDialogs, AMessageShowsItsTextAsItIsAndAnswersOk) {
    onNext<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Tessarel");
        EXPECT_EQ(box.text(), "<b>not bold</b>");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(dialogs().message({.text = "<b>not bold</b>", .icon = platform::Icon::exclamation}), Answer::ok);
}

TEST(QtDialogs, AQuestionAnswersYesOrNoAndLeavingItIsNo) {
    const platform::MessageBox question{.text = "Go on?", .buttons = platform::Buttons::yesNo};
    onNext<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    EXPECT_EQ(dialogs().message(question), Answer::yes);
    onNext<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
    EXPECT_EQ(dialogs().message(question), Answer::no);
    onNext<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_EQ(dialogs().message(question), Answer::no);
}

TEST(QtDialogs, InputGivesTheTextAndNothingOnCancel) {
    onNext<QInputDialog>([](QInputDialog& box) {
        box.setTextValue("entered");
        box.accept();
    });
    EXPECT_EQ(dialogs().input("Tessarel", "Name?"), "entered");
    onNext<QInputDialog>([](QInputDialog& box) { box.reject(); });
    EXPECT_EQ(dialogs().input("Tessarel", "Name?"), std::nullopt);
}

TEST(QtDialogs, AFileDialogStartsWhereItIsToldAndGivesNothingOnCancel) {
    onNext<QFileDialog>([](QFileDialog& box) {
        EXPECT_EQ(box.directory().absolutePath(), "/tmp");
        box.reject();
    });
    EXPECT_EQ(dialogs().openFile({"Pick", "All files|*.*", "E:\\"}), std::nullopt);
}

TEST(QtDialogs, TheEndOfTheProcessWhileOneIsOpenIsThrownOn) {
    onNext<QMessageBox>([](QMessageBox& box) {
        host::guard([] { platform::endProcess(); });
        box.reject();
    });
    EXPECT_THROW(dialogs().message({.text = "Still there?"}), platform::ProcessEnd);
    forgetTheEnd();
}

}  // namespace
}  // namespace tessarel::uitest
