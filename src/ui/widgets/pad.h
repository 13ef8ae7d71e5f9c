#pragma once
#include <functional>

#include "forms/control.h"
#include "ui/widgets/drawn.h"

namespace tessarel::ui {

/// What a person does to a control, told to whoever is bound. The functions go through `enter` and do nothing once the control
/// has died.
struct Gestures {
    std::function<void(forms::MouseButton)> down;
    /// The button has been let go; `inside` tells whether over the control, which makes it a click.
    std::function<void(forms::MouseButton, bool inside)> up;
    /// A whole press at once.
    std::function<void()> press;
    /// Whether the control has any handler for these.
    std::function<bool()> acts;
};

/// Whatever can be pressed, and labels that can't. Space and Enter press it, arrows go to its neighbours.
class Pad : public Drawn<QWidget> {
public:
    Pad(const Theme& theme, QWidget* parent);

    void setGestures(Gestures gestures);
    /// A press by assistive technology.
    void pressWhole();

    /// Whether it takes presses; if not it takes no focus either.
    bool acts() const { return acts_; }
    /// Whether it is the ground of other widgets: it takes no focus, and gets the Menu key that none of them has a use for.
    virtual bool isGround() const { return false; }
    /// Whether it is one that shows an on and off state, and that state.
    virtual bool checkable() const { return false; }
    virtual bool checked() const { return false; }
    /// Its window has Space for itself even while the ring is here.
    void leaveSpaceToWindow() { leavesSpace_ = true; }

protected:
    bool isDown() const { return down_; }
    bool isHovered() const { return acts_ && underMouse() && isEnabled(); }
    /// What a screen reader adds to the name.
    void say(const QString& state);

    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void begin(forms::MouseButton button);
    void end(forms::MouseButton button, bool inside);
    void cancelHold();
    void pressRight();
    void learnActs();
    bool isForWindow(const QKeyEvent& event) const;

    Gestures gestures_;
    bool acts_ = false;
    bool down_ = false;
    bool leavesSpace_ = false;
};

/// A pad that shows a label's state.
class LabelPad : public Pad {
public:
    using Pad::Pad;

    void setCaption(const QString& caption);
    void setFore(Color color);
    void setBack(Color color);
    void setFontSize(int points);
    void setFontName(const QString& name);

    const QString& caption() const { return caption_; }
    Color fore() const { return fore_; }
    Color back() const { return back_; }
    int fontSize() const { return fontSize_; }
    const QString& fontName() const { return fontName_; }

protected:
    /// A part of the state has a new value.
    virtual void changed() { update(); }

private:
    template <class T>
    void put(T& field, const T& value) {
        if (field != value) {
            field = value;
            changed();
        }
    }

    QString caption_;
    Color fore_ = colors::white;
    Color back_ = colors::black;
    int fontSize_ = 0;
    QString fontName_;
};

}  // namespace tessarel::ui
