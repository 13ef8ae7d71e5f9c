#pragma once
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "forms/windows.h"
#include "ui/form_window.h"

namespace tessarel::ui {

/// The windows on the screen: one for each loaded form that a view is known for. Lives between the program's windows and the
/// application object: made after both, gone before both.
class Views {
public:
    /// Makes the view of a form; nullptr when the form is not of the kind it should be.
    using Maker = std::function<std::unique_ptr<FormWindow>(forms::Form&)>;

    explicit Views(forms::Windows& windows);
    ~Views();
    Views(const Views&) = delete;
    Views& operator=(const Views&) = delete;

    /// Tells how the view of a form's name is made. Forms without one stay invisible.
    void know(std::string formName, Maker maker);
    /// The window of a loaded form; nullptr if there is none.
    FormWindow* find(const std::string& formName) const;

private:
    void onLoaded(forms::Form& form);
    void onUnloaded(forms::Form& form);

    forms::Windows& windows_;
    std::map<std::string, Maker> makers_;
    std::map<std::string, QPointer<FormWindow>> shown_;
    std::vector<QPointer<FormWindow>> leaving_;  // unloaded, and not yet deleted
};

}  // namespace tessarel::ui
