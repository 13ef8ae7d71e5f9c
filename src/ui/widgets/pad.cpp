#include "ui/widgets/pad.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "ui/focus.h"

namespace tessarel::ui {
namespace {

bool isPressKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isArrow(int key) { return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down; }

}  // namespace

Pad::Pad(const Theme& theme, QWidget* parent) : Drawn(theme, parent) {}

void Pad::setGestures(Gestures gestures) {
    gestures_ = std::move(gestures);
    learnActs();
}

// Handlers may be set after the widget was bound, but not after it is on show.
void Pad::learnActs() {
    acts_ = gestures_.acts && gestures_.acts();
    setFocusPolicy(acts_ && !isGround() ? Qt::StrongFocus : Qt::NoFocus);
    setAttribute(Qt::WA_NoMousePropagation, acts_);  // a press on a dead key is none on the face
}

void Pad::pressWhole() {
    if (isEnabled() && gestures_.press) {
        gestures_.press();
    }
}

void Pad::say(const QString& state) {
    if (accessibleDescription() != state) {
        setAccessibleDescription(state);
    }
}

void Pad::begin(forms::MouseButton button) {
    if (button == forms::MouseButton::left) {
        down_ = true;
        update();
    }
    if (gestures_.down) {
        gestures_.down(button);
    }
}

void Pad::end(forms::MouseButton button, bool inside) {
    if (button == forms::MouseButton::left) {
        if (!down_) {
            return;
        }
        down_ = false;
        update();
    }
    if (gestures_.up) {
        gestures_.up(button, inside);
    }
}

void Pad::cancelHold() {
    if (down_) {
        end(forms::MouseButton::left, false);
    }
}

void Pad::mousePressEvent(QMouseEvent* event) {
    const bool known = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    if (!acts_ || !known) {
        event->ignore();
        return;
    }
    begin(event->button() == Qt::LeftButton ? forms::MouseButton::left : forms::MouseButton::right);
}

void Pad::mouseReleaseEvent(QMouseEvent* event) {
    const bool inside = rect().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton) {
        end(forms::MouseButton::left, inside);
    } else if (event->button() == Qt::RightButton) {
        end(forms::MouseButton::right, inside);
    }
}

// A pad may lie on another: the keys of the one on top are not the lower one's.
bool Pad::isForWindow(const QKeyEvent& event) const {
    if (!hasFocus()) {
        return true;
    }
    const auto* ground = groundOf(*this);
    const bool forBoth = !showsFocus() || (leavesSpace_ && event.key() == Qt::Key_Space);
    return forBoth && ground != nullptr && ground->takesKey(event);
}

void Pad::pressRight() {
    begin(forms::MouseButton::right);
    end(forms::MouseButton::right, true);
}

void Pad::keyPressEvent(QKeyEvent* event) {
    if (isGround() && acts_ && event->key() == Qt::Key_Menu) {
        pressRight();
        return;
    }
    if (isForWindow(*event)) {
        event->ignore();
        return;
    }
    if (acts_ && isPressKey(*event)) {
        if (!event->isAutoRepeat() && !down_) {
            begin(forms::MouseButton::left);
        }
    } else if (acts_ && event->key() == Qt::Key_Menu) {
        pressRight();
    } else if (isArrow(event->key()) && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        focusNeighbour(*this, static_cast<Qt::Key>(event->key()));
    } else {
        event->ignore();
    }
}

void Pad::keyReleaseEvent(QKeyEvent* event) {
    if (!acts_ || !isPressKey(*event) || !down_) {
        event->ignore();
    } else if (!event->isAutoRepeat()) {
        end(forms::MouseButton::left, true);
    }
}

void Pad::focusOutEvent(QFocusEvent* event) {
    Drawn::focusOutEvent(event);
    cancelHold();
}

void Pad::showEvent(QShowEvent* event) {
    learnActs();
    Drawn::showEvent(event);
}

void Pad::hideEvent(QHideEvent* event) {
    Drawn::hideEvent(event);
    cancelHold();
}

void LabelPad::setCaption(const QString& caption) { put(caption_, caption); }
void LabelPad::setFore(Color color) { put(fore_, color); }
void LabelPad::setBack(Color color) { put(back_, color); }
void LabelPad::setFontSize(int points) { put(fontSize_, points); }
void LabelPad::setFontName(const QString& name) { put(fontName_, name); }

}  // namespace tessarel::ui
