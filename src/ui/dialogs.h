#pragma once
#include <QPalette>
#include <QString>
#include <functional>
#include <string>

#include "platform/dialogs.h"

namespace tessarel::ui {

/// How the program's paths and real ones are told to each other.
struct PathTranslation {
    std::function<std::string(const std::string& programPath)> toReal;
    std::function<std::string(const std::string& realPath)> toProgram;
};

/// Questions in windows of the desktop's toolkit, in the program's dark colours. Throws `ProcessEnd` when the process has been
/// ended while one was open.
class QtDialogs : public platform::Dialogs {
public:
    explicit QtDialogs(PathTranslation paths) : paths_(std::move(paths)) {}

    platform::Answer message(const platform::MessageBox& box) override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt) override;
    std::optional<std::string> openFile(const platform::FileDialog& dialog) override;

private:
    PathTranslation paths_;
};

/// "Name|*.exe; *.com|Name|*.exe" in the form that Qt's file dialog takes.
QString fileDialogFilter(const std::string& filter);

QPalette darkPalette();

}  // namespace tessarel::ui
