#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/control.h"
#include "platform/scheduler.h"

namespace tessarel::forms {

class Windows;

enum class WindowState { normal = 0, minimised = 1 };

/// Key codes that forms answer to.
namespace keys {
inline constexpr int enter = 13;
inline constexpr int escape = 27;
inline constexpr int help = 47;
inline constexpr int f1 = 112;
}  // namespace keys

/// One window: its controls and what it does, without any drawing. Sizes and places are in twips.
class Form {
public:
    Form(Windows& windows, std::string name);
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    Property<std::string> Caption;
    Property<int> Left{0};
    Property<int> Top{0};
    Property<int> Width{0};
    Property<int> Height{0};
    Property<forms::WindowState> WindowState{forms::WindowState::normal};
    /// Written by `Windows::show` and `Windows::hide`.
    Property<bool> Visible{false};
    Property<bool> alwaysInFront{false};
    /// Counts the requests to come to the front.
    Property<int> frontRequests{0};

    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_KeyDown(int /*keyCode*/, int /*shift*/) {}
    virtual void Form_MouseDown(MouseButton /*button*/) {}
    virtual void Form_Unload() {}
    /// Real paths or program paths of files that a person has dropped on the window.
    virtual void Form_FilesDropped(const std::vector<std::string>& /*paths*/) {}

    /// Lets the system drag the window until the button is released; set by the view, which then brings Left and Top up
    /// to date. Without a view nothing moves.
    std::function<void()> dragBySystem;

    const std::string& name() const { return name_; }
    bool loaded() const { return loaded_; }
    /// Expires with the form, for views that may outlive it.
    std::weak_ptr<const void> life() const { return life_; }
    /// Held as long as the form lives, which outlasts its unloading while code of it still runs.
    void hold(std::shared_ptr<void> companion) { companions_.push_back(std::move(companion)); }
    Windows& windows() const { return windows_; }
    platform::Scheduler& scheduler() const;

    void Move(int left, int top) {
        Left = left;
        Top = top;
    }
    void ZOrder() { frontRequests = frontRequests + 1; }

    /// Every call from outside into the form's code goes through here: nothing happens when the form is not loaded, and the
    /// form lives until the call has returned, even if it unloads itself.
    void dispatch(const std::function<void()>& code);

    const std::vector<Control*>& controls() const { return controls_; }
    /// The control of a designer name; nullptr if there is none.
    Control* control(std::string_view name) const;

private:
    friend class Control;
    friend class Timer;
    friend class Windows;

    Windows& windows_;
    std::string name_;
    bool loaded_ = false;
    bool unloading_ = false;
    std::shared_ptr<const void> life_ = std::make_shared<char>();
    std::vector<std::shared_ptr<void>> companions_;
    std::vector<Control*> controls_;
    std::vector<Timer*> timers_;
};

}  // namespace tessarel::forms
