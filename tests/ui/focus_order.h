#pragma once
#include <QWidget>
#include <set>
#include <string>
#include <vector>

namespace tessarel::uitest {

/// What Tab goes through in a window.
inline std::vector<QWidget*> tabOrder(QWidget& window) {
    std::vector<QWidget*> order;
    std::set<QWidget*> seen;
    for (QWidget* w = window.nextInFocusChain(); w != &window && seen.insert(w).second; w = w->nextInFocusChain()) {
        if (w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus) != 0) {
            order.push_back(w);
        }
    }
    return order;
}

inline std::vector<std::string> names(const std::vector<QWidget*>& widgets) {
    std::vector<std::string> out;
    for (const auto* w : widgets) {
        out.push_back(w->objectName().toStdString());
    }
    return out;
}

}  // namespace tessarel::uitest
