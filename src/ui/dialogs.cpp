#include "ui/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStringList>

#include "host/desktop/dispatch.h"
#include "ui/theme.h"

namespace tessarel::ui {
namespace {

QString qt(const std::string& text) { return QString::fromStdString(text); }

QMessageBox::Icon boxIcon(platform::Icon icon) {
    switch (icon) {
        case platform::Icon::exclamation:
            return QMessageBox::Warning;
        case platform::Icon::question:
            return QMessageBox::Question;
        case platform::Icon::information:
            return QMessageBox::Information;
        case platform::Icon::critical:
            return QMessageBox::Critical;
        case platform::Icon::none:
            break;
    }
    return QMessageBox::NoIcon;
}

QString qtPatterns(QString patterns) {
    patterns.replace(QStringLiteral("*.*"), QStringLiteral("*"));
    const auto list = patterns.split(QRegularExpression(QStringLiteral("[;\\s]+")), Qt::SkipEmptyParts);
    return list.isEmpty() ? QStringLiteral("*") : list.join(QLatin1Char(' '));
}

}  // namespace

QPalette darkPalette() {
    QPalette dark;
    const QColor face(0x2a, 0x2d, 0x32);
    const QColor well(0x1c, 0x1f, 0x23);
    const QColor text(0xe4, 0xe8, 0xed);
    dark.setColor(QPalette::Window, face);
    dark.setColor(QPalette::WindowText, text);
    dark.setColor(QPalette::Base, well);
    dark.setColor(QPalette::AlternateBase, QColor(0x22, 0x25, 0x2a));
    dark.setColor(QPalette::Text, text);
    dark.setColor(QPalette::PlaceholderText, QColor(palette::caption));
    dark.setColor(QPalette::Button, QColor(0x3c, 0x41, 0x48));
    dark.setColor(QPalette::ButtonText, text);
    dark.setColor(QPalette::BrightText, QColor(palette::red));
    dark.setColor(QPalette::ToolTipBase, well);
    dark.setColor(QPalette::ToolTipText, text);
    dark.setColor(QPalette::Highlight, QColor(palette::green));
    dark.setColor(QPalette::HighlightedText, GlassColors().ink);
    dark.setColor(QPalette::Link, QColor(palette::cyan));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, QColor(palette::keyDim));
    }
    return dark;
}

QString fileDialogFilter(const std::string& filter) {
    const auto parts = qt(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(name, qtPatterns(parts[i + 1]));
    }
    return filters.join(QStringLiteral(";;"));
}

platform::Answer QtDialogs::message(const platform::MessageBox& box) {
    QMessageBox window(boxIcon(box.icon), qt(box.title), qt(box.text), QMessageBox::NoButton, QApplication::activeWindow());
    window.setPalette(darkPalette());
    window.setTextFormat(Qt::PlainText);
    const bool asks = box.buttons == platform::Buttons::yesNo;
    window.setStandardButtons(asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    window.setDefaultButton(asks ? QMessageBox::Yes : QMessageBox::Ok);
    window.setEscapeButton(asks ? QMessageBox::No : QMessageBox::Ok);
    const int answer = window.exec();
    host::rethrowEnd();
    if (!asks) {
        return platform::Answer::ok;
    }
    return answer == QMessageBox::Yes ? platform::Answer::yes : platform::Answer::no;
}

std::optional<std::string> QtDialogs::input(const std::string& title, const std::string& prompt) {
    QInputDialog window(QApplication::activeWindow());
    window.setPalette(darkPalette());
    window.setWindowTitle(qt(title));
    window.setLabelText(qt(prompt));
    const bool given = window.exec() == QDialog::Accepted;
    host::rethrowEnd();
    return given ? std::optional(window.textValue().toStdString()) : std::nullopt;
}

std::optional<std::string> QtDialogs::openFile(const platform::FileDialog& dialog) {
    QFileDialog window(QApplication::activeWindow(), qt(dialog.title));
    window.setPalette(darkPalette());
    window.setFileMode(QFileDialog::ExistingFile);
    window.setNameFilter(fileDialogFilter(dialog.filter));
    if (!dialog.startDirectory.empty()) {
        window.setDirectory(qt(paths_.toReal(dialog.startDirectory)));
    }
    const bool chosen = window.exec() == QDialog::Accepted && !window.selectedFiles().isEmpty();
    host::rethrowEnd();
    return chosen ? std::optional(paths_.toProgram(window.selectedFiles().first().toStdString())) : std::nullopt;
}

}  // namespace tessarel::ui
