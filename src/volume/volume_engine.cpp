#include "volume/volume_engine.h"

#include <functional>
#include <string>
#include <utility>

#include "platform/dialogs.h"
#include "platform/system.h"
#include "shell/shared_state.h"
#include "volume/mixer_launch.h"

namespace tessarel::volume {
namespace {

void onRightPress(forms::Control& control, std::function<void()> handler) {
    control.MouseDown = [handler = std::move(handler)](forms::MouseButton button) {
        if (button == forms::MouseButton::right) {
            handler();
        }
    };
}

}  // namespace

VolumeEngine::VolumeEngine(const shell::Context& context, VolumeState& state, const VolumeControls& controls, VolumeLine line)
    : context_(context), state_(state), controls_(controls), line_(line) {
    attachHandlers();
    lineNews_ = context_.levels.watch(line_.line, [this](const platform::LineLevel& heard) { followLine(heard); });
    outputNews_ = context_.systemMixer.watch([this](const platform::OutputLevel& heard) { followOutput(heard); });
}

void VolumeEngine::attachHandlers() {
    controls_.leftSlider.Change = [this] { sliderChange(Side::left, controls_.leftSlider); };
    controls_.rightSlider.Change = [this] { sliderChange(Side::right, controls_.rightSlider); };
    controls_.rightSlider.MouseUp = [this](forms::MouseButton) { sendVolumeKeys(); };
    controls_.leftSlider.MouseUp = controls_.rightSlider.MouseUp;
    controls_.muteKey.Click = [this] { mute(); };
    controls_.muteLit.Click = [this] { unmute(); };
    controls_.linkKey.Click = [this] { setLinked(true); };
    controls_.linkLit.Click = [this] { setLinked(false); };
    if (controls_.mixerButton != nullptr) {
        controls_.mixerButton->Click = [this] { launchMixer(context_); };
        onRightPress(*controls_.mixerButton, [this] { showSliders(); });
        onRightPress(controls_.panel, [this] { showMixerButton(); });
    }
}

VolumeEngine::Drive VolumeEngine::drive() const {
    const auto mode = context_.state.volumeMode;
    if (mode == modes::output) {
        return Drive::output;
    }
    return mode == modes::direct || line_.inEveryMode ? Drive::line : Drive::nothing;
}

void VolumeEngine::activate() {
    auto& mode = context_.state.volumeMode;
    mode = effectiveMode(mode);
    showMode();
    if (std::exchange(takenIn_, mode) == mode) {
        return;
    }
    if (drive() == Drive::output) {
        takeOutput();
        return;
    }
    if (standsForOutput(state_)) {
        unmute();
    }
    if (drive() == Drive::line) {
        takeLine();
    }
}

void VolumeEngine::takeOutput() {
    if (!state_.outputReady) {
        prepareVolumeApp();
        return;
    }
    if (state_.levelsRead) {
        fillLine();
    }
    change(asOutput(state_, context_.systemMixer.level()));
}

void VolumeEngine::takeLine() {
    if (!state_.levelsRead) {
        cdvol();
        return;
    }
    showState();
    if (const auto level = context_.levels.level(line_.line)) {
        followLine(*level);
    }
}

void VolumeEngine::cdvol() {
    if (const auto level = findCdAuxDevice()) {
        change(asRead(state_, *level));
    } else {
        context_.state.volumeMode = modes::mixerButton;
        takenIn_.reset();
    }
    showMode();
}

std::optional<platform::LineLevel> VolumeEngine::findCdAuxDevice() {
    const auto level = context_.levels.level(line_.line);
    if (!level) {
        reportVolumeError(level.error());
        return std::nullopt;
    }
    return *level;
}

void VolumeEngine::reportVolumeError(int code) {
    if (const auto text = volumeErrorText(code)) {
        context_.dialogs.message({.text = std::string(*text)});
    }
}

void VolumeEngine::mute() {
    if (state_.muted || drive() == Drive::nothing) {
        return;
    }
    if (drive() == Drive::output) {
        state_.muted = true;
        showState();
        context_.systemMixer.setMuted(true);
        return;
    }
    change(afterMute(state_));
    setLine();
}

void VolumeEngine::unmute() {
    if (state_.muted) {
        reportVolumeError(liftMute(context_, state_, line_.line));
        showState();
    }
}

void VolumeEngine::setLinked(bool linked) {
    if (drive() == Drive::output) {
        context_.system.beep();
        return;
    }
    state_.linked = linked;
    showState();
}

void VolumeEngine::sendVolumeKeys() {
    if (drive() == Drive::output) {
        state_.muteMemory[0] = stepOfPosition(state_.sliderLastRight);
        context_.systemMixer.setStep(state_.muteMemory[0]);
    }
}

void VolumeEngine::prepareVolumeApp() {
    change(asOutput(state_, {platform::SystemMixer::middleStep, false}));
    context_.systemMixer.centreBalance();
    context_.systemMixer.setStep(state_.muteMemory[0]);
    context_.systemMixer.setMuted(false);
    fillLine();
}

// So that the sliders alone decide how loud the line is.
void VolumeEngine::fillLine() { reportVolumeError(context_.levels.setLevel(line_.line, {})); }

void VolumeEngine::closeVolumeApp() {
    if (drive() == Drive::output) {
        state_.muted = false;
        showState();
        context_.systemMixer.setMuted(false);
    }
}

void VolumeEngine::showSliders() {
    context_.state.volumeMode = modes::direct;
    cdvol();
}

void VolumeEngine::showMixerButton() {
    if (drive() == Drive::output) {
        context_.system.beep();
        return;
    }
    context_.state.volumeMode = modes::mixerButton;
    showMode();
}

void VolumeEngine::takeOver(const VolumeState& left) { change(left); }

void VolumeEngine::sliderChange(Side moved, const forms::Slider& slider) {
    const int to = slider.Value;
    if (drive() == Drive::output) {
        change(afterMoveTogether(state_, to));
    } else if (drive() == Drive::line) {
        unmute();
        change(afterMove(state_, moved, to));
        setLine();
    }
}

void VolumeEngine::followLine(const platform::LineLevel& heard) {
    if (drive() != Drive::output && !standsForOutput(state_)) {
        change(afterLineChange(state_, heard));
    }
}

void VolumeEngine::followOutput(const platform::OutputLevel& heard) {
    if (drive() == Drive::output && state_.outputReady) {
        change(afterOutputChange(state_, heard));
    }
}

void VolumeEngine::change(const VolumeState& to) {
    state_ = to;
    showState();
}

void VolumeEngine::setLine() {
    const auto word = packVolume(state_.cdVolumeLeft, state_.cdVolumeRight);
    reportVolumeError(context_.levels.setLevel(line_.line, unpackVolume(word)));
}

void VolumeEngine::showMode() {
    const bool sliders = drive() != Drive::nothing;
    controls_.panel.Visible = sliders;
    if (controls_.mixerButton != nullptr) {
        controls_.mixerButton->Visible = !sliders;
    }
}

void VolumeEngine::showState() {
    controls_.leftSlider.Value = state_.sliderLastLeft;
    controls_.rightSlider.Value = state_.sliderLastRight;
    controls_.leftFigure.Caption = std::to_string(sliderFigure(state_.sliderLastLeft));
    controls_.rightFigure.Caption = std::to_string(sliderFigure(state_.sliderLastRight));
    // Without a mode that mutes, the key is the way to the mixer and stays.
    const bool lit = state_.muted && context_.state.volumeMode != modes::mixerButton;
    controls_.muteLit.Visible = lit;
    controls_.muteKey.Visible = !lit;
    controls_.linkLit.Visible = state_.linked;
    controls_.linkKey.Visible = !state_.linked;
}

int liftMute(const shell::Context& context, VolumeState& state, platform::Line line) {
    if (!state.muted) {
        return platform::deviceCodes::success;
    }
    if (standsForOutput(state)) {
        state.muted = false;
        context.systemMixer.setMuted(false);
        return platform::deviceCodes::success;
    }
    state = afterUnmute(state);
    return context.levels.setLevel(line, {state.cdVolumeLeft, state.cdVolumeRight});
}

}  // namespace tessarel::volume
