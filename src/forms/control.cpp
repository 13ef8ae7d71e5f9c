#include "forms/control.h"

#include <algorithm>

#include "forms/form.h"

namespace tessarel::forms {

Control::Control(Form& form, std::string name, std::string spokenName)
    : form_(form), name_(std::move(name)), spokenName_(std::move(spokenName)) {
    form_.controls_.push_back(this);
}

bool Control::takesGestures() const { return Visible && Enabled; }

void Control::click() {
    if (takesGestures() && Click) {
        form_.dispatch(Click);
    }
}

void Control::mouseDown(MouseButton button) {
    if (takesGestures() && MouseDown) {
        form_.dispatch([this, button] { MouseDown(button); });
    }
}

void Control::mouseUp(MouseButton button) {
    if (takesGestures() && MouseUp) {
        form_.dispatch([this, button] { MouseUp(button); });
    }
}

void Control::press() {
    form_.dispatch([this] {
        mouseDown();
        mouseUp();
        click();
    });
}

void TextBox::enter() {
    if (takesGestures() && EnterPressed) {
        form().dispatch(EnterPressed);
    }
}

void Slider::moveTo(int value) {
    const int clamped = std::max(Min.get(), std::min(value, Max.get()));
    if (!takesGestures() || clamped == Value.get()) {
        return;
    }
    Value = clamped;
    if (Change) {
        form().dispatch(Change);
    }
}

void ListBox::choose(int row) {
    if (!takesGestures() || row < 0 || row >= static_cast<int>(rows.get().size())) {
        return;
    }
    ListIndex = row;
    click();
}

void FloodPanel::pressAt(float x, MouseButton button) {
    if (takesGestures() && BarPressed) {
        form().dispatch([this, button, x] { BarPressed(button, x); });
    }
}

Timer::Timer(Form& form, std::string name, int intervalMs, std::function<void()> handler)
    : Interval(intervalMs), form_(form), name_(std::move(name)), handler_(std::move(handler)) {
    form_.timers_.push_back(this);
    interval_ = Interval.onChange([this](int) { arm(); });
    enabled_ = Enabled.onChange([this](bool) { arm(); });
}

void Timer::fire() {
    form_.dispatch([this] {
        if (Enabled && Interval > 0) {
            handler_();
        }
    });
}

void Timer::arm() {
    handle_.reset();
    if (form_.loaded() && Enabled && Interval > 0) {
        handle_ = form_.scheduler().every(platform::Milliseconds(Interval.get()), [this] { fire(); });
    }
}

}  // namespace tessarel::forms
