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
inline constexpr int space = 32;
inline constexpr int left = 37;
inline constexpr int up = 38;
inline constexpr int right = 39;
inline constexpr int down = 40;
inline constexpr int help = 47;
inline constexpr int digit0 = 48;   ///< and on to 57 for 9
inline constexpr int letterA = 65;  ///< and on to 90 for Z
inline constexpr int f1 = 112;
inline constexpr int mediaNext = 176;
inline constexpr int mediaPrevious = 177;
inline constexpr int mediaStop = 178;
inline constexpr int mediaPlay = 179;
}  // namespace keys

/// Bits that tell which keys were held along with another.
namespace modifiers {
inline constexpr int none = 0;
inline constexpr int shift = 1;
inline constexpr int control = 2;
inline constexpr int alt = 4;
}  // namespace modifiers

/// What a form makes of a key: nothing, something at each press, or something again and again while it is held.
enum class KeyUse { none, once, repeated };

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
    virtual void Form_KeyUp(int /*keyCode*/, int /*shift*/) {}
    /// Escape, Enter, F1 and Help reach every form; other keys the forms that have a use for them. `shift` holds `modifiers`.
    virtual KeyUse keyUse(int /*keyCode*/, int /*shift*/) const { return KeyUse::none; }
    /// A person closes the window by the desktop's means.
    virtual void Form_Close() { Form_KeyDown(keys::escape, modifiers::none); }
    virtual void Form_MouseDown(MouseButton /*button*/) {}
    virtual void Form_Unload() {}
    /// Real paths or program paths of files that a person has dropped on the window.
    virtual void Form_FilesDropped(const std::vector<std::string>& /*paths*/) {}

    /// Lets the system drag the window until the button is released; set by the view, which then brings Left and Top up
    /// to date. Without a view nothing moves.
    std::function<void()> dragBySystem;

    const std::string& name() const { return name_; }
    bool loaded() const { return loaded_; }
    /// It is being shown by `Windows::showBeside`, and leaves the keyboard where it is.
    bool comesQuietly() const { return comesQuietly_; }
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
    bool comesQuietly_ = false;
    std::shared_ptr<const void> life_ = std::make_shared<char>();
    std::vector<std::shared_ptr<void>> companions_;
    std::vector<Control*> controls_;
    std::vector<Timer*> timers_;
};

}  // namespace tessarel::forms
