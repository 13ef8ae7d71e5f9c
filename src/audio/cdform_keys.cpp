// The player by the keyboard: each shortcut is the press of a key of the window, with all that such a press brings.
#include <utility>

#include "audio/cdform.h"
#include "audio/help_topic.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"

namespace tessarel::audio {
namespace {

constexpr int volumeStep = 2;

forms::Picture& shownOf(forms::ControlArray<forms::Picture>& turns) { return turns[0].Visible ? turns[0] : turns[1]; }

}  // namespace

forms::KeyUse CDForm::keyUse(int keyCode, int shift) const {
    const auto shortcut = shortcutOf(keyCode, shift);
    return shortcut ? useOf(*shortcut) : forms::KeyUse::none;
}

void CDForm::Form_KeyDown(int keyCode, int shift) {
    if (keyCode == forms::keys::escape && face.keypadEntry.Visible) {
        hideKeypad();
    } else if (keyCode == forms::keys::escape) {
        Image5_MouseUp();
    } else if (shell::helpOnKey(context_, keyCode, playerHelp)) {
        return;
    } else if (const auto shortcut = shortcutOf(keyCode, shift)) {
        carryOut(*shortcut, keyCode);
    }
}

void CDForm::Form_Close() { Image5_MouseUp(); }

void CDForm::Form_KeyUp(int keyCode, int /*shift*/) {
    if (held_ && held_->keyCode == keyCode) {
        endHold();
    }
}

void CDForm::carryOut(const Shortcut& shortcut, int keyCode) {
    switch (shortcut.act) {
        case Act::playPause:
            face.icntla[isLit(transport::play) ? transport::pause : transport::play].press();
            break;
        case Act::transport:
            face.icntla[shortcut.index].press();
            break;
        case Act::hold:
            beginHold(keyCode, {&face.scntla[shortcut.index]});
            break;
        case Act::seek:
            face.scntla[shortcut.index].press();
            break;
        case Act::mode:
            face.Image4[shortcut.index].press();
            break;
        case Act::function:
            face.Image10[shortcut.index].press();
            break;
        case Act::program:
            face.Image16[shortcut.index].press();
            break;
        case Act::cell:
            face.cells[shortcut.index].press();
            break;
        case Act::louder:
            stepVolume(keyCode, -volumeStep);
            break;
        case Act::quieter:
            stepVolume(keyCode, volumeStep);
            break;
        case Act::mute:
            shownOf(face.Image2).press();
            break;
        case Act::link:
            shownOf(face.Image9).press();
            break;
        case Act::display:
            face.expandKey.press();
            break;
    }
}

void CDForm::beginHold(int keyCode, std::vector<forms::Control*> controls) {
    if (held_ && held_->keyCode == keyCode) {
        return;
    }
    endHold();
    held_ = Hold{keyCode, std::move(controls)};
    for (auto* control : held_->controls) {
        control->mouseDown();
    }
}

void CDForm::endHold() {
    if (const auto hold = std::exchange(held_, std::nullopt)) {
        for (auto* control : hold->controls) {
            control->mouseUp();
        }
    }
}

// Both sliders, as one does whose hand is on both; linked ones follow each other by themselves.
void CDForm::stepVolume(int keyCode, int step) {
    if (!face.sliderPanel.Visible) {
        return;
    }
    beginHold(keyCode, {&face.leftSlider, &face.rightSlider});
    const int right = face.rightSlider.Value;
    face.leftSlider.moveTo(face.leftSlider.Value + step);
    face.rightSlider.moveTo(face.rightSlider.Value == right ? right + step : face.rightSlider.Value.get());
}

void CDForm::giveTips() {
    const auto give = [](forms::Control& control, Act act, int index = 0) {
        control.ToolTipText = tipWithKeys(control.spokenName(), {{act, index}});
    };
    const auto giveAll = [&](forms::ControlArray<forms::Picture>& keys, Act act) {
        for (int i = 0; i < keys.size(); ++i) {
            give(keys[i], act, i);
        }
    };
    giveAll(face.icntla, Act::transport);
    give(face.icntla[transport::play], Act::playPause);
    give(face.icntla[transport::pause], Act::playPause);
    giveAll(face.scntla, Act::seek);
    give(face.scntla[seekKeys::rewind], Act::hold, seekKeys::rewind);
    give(face.scntla[seekKeys::forward], Act::hold, seekKeys::forward);
    giveAll(face.Image4, Act::mode);
    giveAll(face.Image10, Act::function);
    giveAll(face.Image16, Act::program);
    for (int i = 0; i < gridCells; ++i) {
        give(face.cellNumbers[i], Act::cell, i);
    }
    for (auto* key : {&face.Image2[0], &face.Image2[1]}) {
        give(*key, Act::mute);
    }
    for (auto* key : {&face.Image9[0], &face.Image9[1]}) {
        give(*key, Act::link);
    }
    give(face.expandKey, Act::display);
    for (auto* slider : {&face.leftSlider, &face.rightSlider}) {
        slider->ToolTipText = tipWithKeys(slider->spokenName(), {{Act::louder}, {Act::quieter}});
    }
    face.exitKey.ToolTipText = face.exitKey.spokenName() + " (Esc)";
}

}  // namespace tessarel::audio
