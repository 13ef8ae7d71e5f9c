#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/color.h"
#include "forms/property.h"
#include "platform/scheduler.h"

namespace tessarel::forms {

class Form;

enum class MouseButton { left = 1, right = 2 };

/// What every control of a form has. The logic writes properties and sets handlers; a view shows the properties and calls
/// `click`, `mouseDown` and `mouseUp`, as does a test.
class Control {
public:
    /// `name` is the designer name, with its index for an element of an array, as "Label22(3)"; `spokenName` is what a
    /// screen reader says, and stays as it is while the state goes into captions and colours.
    Control(Form& form, std::string name, std::string spokenName);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Property<bool> Visible{true};
    Property<bool> Enabled{true};
    Property<std::string> ToolTipText;
    /// Counts the requests to take the keyboard focus.
    Property<int> focusRequests{0};

    std::function<void()> Click;
    std::function<void(MouseButton)> MouseDown;
    std::function<void(MouseButton)> MouseUp;

    const std::string& name() const { return name_; }
    const std::string& spokenName() const { return spokenName_; }

    /// Expires with the control, for views that may outlive it.
    std::weak_ptr<const void> life() const { return life_; }

    void SetFocus() { focusRequests = focusRequests + 1; }

    /// A person's gestures; they do nothing while the control is disabled or hidden, or its form is unloaded.
    void click();
    void mouseDown(MouseButton button = MouseButton::left);
    void mouseUp(MouseButton button = MouseButton::left);
    /// A whole press with the left button: down, up, click.
    void press();

protected:
    bool takesGestures() const;
    Form& form() const { return form_; }

private:
    Form& form_;
    std::string name_;
    std::string spokenName_;
    std::shared_ptr<const void> life_ = std::make_shared<char>();
};

struct Label : Control {
    using Control::Control;
    Property<std::string> Caption;
    Property<Color> ForeColor{colors::white};
    Property<Color> BackColor{colors::black};
    Property<int> FontSize{0};  ///< points; 0 is the view's own
    Property<std::string> FontName;
};

struct Picture : Control {
    using Control::Control;
    Property<std::string> PictureName;  ///< which picture is shown, empty for the view's own
};

struct Button : Control {
    using Control::Control;
    Property<std::string> Caption;
};

struct TextBox : Control {
    using Control::Control;
    Property<std::string> Text;
    std::function<void()> EnterPressed;
    void enter();
};

/// A value between two bounds. On a vertical one the smaller value is at the top.
struct Slider : Control {
    using Control::Control;
    Property<int> Value{0};
    Property<int> Min{0};
    Property<int> Max{100};
    std::function<void()> Change;
    /// A person moves it, clamped to the bounds; the logic writes `Value` by `moveTo` too when its handler must run.
    void moveTo(int value);
};

/// Rows of text, of which one may be selected. Tabs in a row begin its columns.
struct ListBox : Control {
    using Control::Control;
    Property<std::vector<std::string>> rows;
    Property<int> ListIndex{-1};          ///< the selected row, counted from 0; -1 for none
    Property<std::vector<int>> tabStops;  ///< where columns begin, in quarters of a letter's mean width
    Property<std::string> FontName;       ///< empty for the view's own
    Property<int> FontSize{0};            ///< points; 0 is the view's own
    Property<bool> FontBold{false};
    Property<bool> FontItalic{false};
    Property<bool> FontUnderline{false};
    Property<Color> ForeColor{colors::white};
    Property<Color> BackColor{colors::black};
    /// A person selects a row, also the one that is selected; nothing for one that is not there.
    void choose(int row);
};

/// A bar filled from the left.
struct FloodPanel : Control {
    using Control::Control;
    Property<int> FloodPercent{0};  ///< 0 to 100
    Property<Color> ForeColor{colors::black};
    int Width = 1000;  ///< the bar's own units, in which a press is told
    std::function<void(MouseButton, float x)> BarPressed;
    /// A press at a point of the bar, 0 to `Width`.
    void pressAt(float x, MouseButton button = MouseButton::left);
};

/// Fires its handler every `Interval` milliseconds while enabled and its form is loaded; an interval of 0 stops it.
/// Setting the interval to an equal value leaves a running count alone; another value starts it anew.
class Timer {
public:
    Timer(Form& form, std::string name, int intervalMs, std::function<void()> handler);

    Property<int> Interval;
    Property<bool> Enabled{true};

    const std::string& name() const { return name_; }
    void fire();
    /// Called by the form as it is loaded and unloaded.
    void arm();
    void disarm() { handle_.reset(); }

private:
    Form& form_;
    std::string name_;
    std::function<void()> handler_;
    platform::TimerHandle handle_;
    Subscription interval_;
    Subscription enabled_;
};

}  // namespace tessarel::forms
