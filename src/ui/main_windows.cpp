#include "ui/main_windows.h"

#include "ui/pad_accessible.h"

namespace tessarel::ui {
namespace {

/// Lives as long as its form, and takes the form's window along.
struct Companion {
    explicit Companion(QPointer<FormWindow> itsWindow) : window(std::move(itsWindow)) {}
    ~Companion() {
        if (window != nullptr) {
            window->sever();
            window->deleteLater();
        }
    }
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    QPointer<FormWindow> window;
};

}  // namespace

Views::Views(forms::Windows& windows) : windows_(windows) {
    installPadAccessibility();
    windows_.onLoaded = [this](forms::Form& form) { onLoaded(form); };
    windows_.onUnloaded = [this](forms::Form& form) { onUnloaded(form); };
}

Views::~Views() {
    windows_.onLoaded = nullptr;
    windows_.onUnloaded = nullptr;
    for (auto& [name, window] : shown_) {
        delete window.data();
    }
    for (auto& window : leaving_) {
        delete window.data();
    }
}

void Views::know(std::string formName, Maker maker) { makers_[std::move(formName)] = std::move(maker); }

FormWindow* Views::find(const std::string& formName) const {
    const auto found = shown_.find(formName);
    return found == shown_.end() ? nullptr : found->second.data();
}

// The window goes when the form does, which is not before the last of the form's handlers has returned: one of them may
// have been called from this very window.
void Views::onLoaded(forms::Form& form) {
    const auto maker = makers_.find(form.name());
    auto window = maker == makers_.end() ? nullptr : maker->second(form);
    if (window == nullptr) {
        return;
    }
    const QPointer<FormWindow> pointer = window.release();
    shown_[form.name()] = pointer;
    form.hold(std::make_shared<Companion>(pointer));
}

void Views::onUnloaded(forms::Form& form) {
    const auto found = shown_.find(form.name());
    if (found == shown_.end()) {
        return;
    }
    if (found->second != nullptr) {
        found->second->sever();
    }
    std::erase_if(leaving_, [](const auto& window) { return window == nullptr; });
    leaving_.push_back(found->second);
    shown_.erase(found);
}

}  // namespace tessarel::ui
