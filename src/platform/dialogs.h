#pragma once
#include <optional>
#include <string>

namespace tessarel::platform {

enum class Buttons { ok, yesNo };
enum class Icon { none, exclamation, question, information, critical };
enum class Answer { ok, yes, no };

struct MessageBox {
    std::string title = "Tessarel";
    std::string text;
    Buttons buttons = Buttons::ok;
    Icon icon = Icon::none;
    bool operator==(const MessageBox&) const = default;
};

struct FileDialog {
    std::string title;
    std::string filter;          ///< "Name|*.exe;*.com|Name|*.exe"
    std::string startDirectory;  ///< a path of the program's own
    bool operator==(const FileDialog&) const = default;
};

/// Questions to the user. Each call keeps events running until it is answered.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual Answer message(const MessageBox& box) = 0;
    /// The text that was entered; nothing on Cancel.
    virtual std::optional<std::string> input(const std::string& title, const std::string& prompt) = 0;
    /// A path of the program's own (a file outside its drives has a Z: path); nothing on Cancel.
    virtual std::optional<std::string> openFile(const FileDialog& dialog) = 0;
};

}  // namespace tessarel::platform
