#pragma once
#include <string>

namespace tessarel::platform {

/// A few words to a person who is busy with another window.
struct Notice {
    std::string title;  ///< one line
    std::string text;   ///< one line; may be empty
    std::string image;  ///< a path of the program's own, of a file that need not exist; empty for none
    bool operator==(const Notice&) const = default;
};

/// The desktop's notices.
class Notifications {
public:
    virtual ~Notifications() = default;

    /// Whether a window of the program is the one that a person works with.
    virtual bool programInFront() const = 0;
    /// Shows a notice in place of the former one. Nothing happens on a desktop that shows none.
    virtual void show(const Notice& notice) = 0;
};

}  // namespace tessarel::platform
