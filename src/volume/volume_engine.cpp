#include "volume/volume_engine.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "platform/dialogs.h"
#include "shell/shared_state.h"
#include "volume/mixer_launch.h"

namespace tessarel::volume {
namespace {

// The disc's stream as a sound device with a volume word and codes.
constexpr int success = 0;
constexpr int noServerCode = 3;

int auxSetVolume(platform::AudioLevels& levels, std::uint32_t word) {
    return levels.setDiscLevel(unpackVolume(word)) ? success : noServerCode;
}

void onRightPress(forms::Control& control, std::function<void()> handler) {
    control.MouseDown = [handler = std::move(handler)](forms::MouseButton button) {
        if (button == forms::MouseButton::right) {
            handler();
        }
    };
}

}  // namespace

// A type of its own, so that an engine can tell its own handler from that of one that came later.
struct VolumeEngine::Follow {
    VolumeEngine* engine;
    void operator()(platform::StereoLevel level) const { engine->followMixer(level); }
};

VolumeEngine::VolumeEngine(const shell::Context& context, VolumeState& state, const VolumeControls& controls)
    : context_(context), state_(state), controls_(controls) {
    attachHandlers();
    context_.levels.onDiscLevelChanged = Follow{this};
}

VolumeEngine::~VolumeEngine() {
    const auto* follow = context_.levels.onDiscLevelChanged.target<Follow>();
    if (follow != nullptr && follow->engine == this) {
        context_.levels.onDiscLevelChanged = nullptr;
    }
}

void VolumeEngine::attachHandlers() {
    controls_.leftSlider.Change = [this] { sliderChange(left(), right()); };
    controls_.rightSlider.Change = [this] { sliderChange(right(), left()); };
    controls_.muteKey.Click = [this] { mute(); };
    controls_.muteLit.Click = [this] { unmute(); };
    controls_.linkKey.Click = [this] { setLinked(true); };
    controls_.linkLit.Click = [this] { setLinked(false); };
    controls_.mixerButton.Click = [this] { launchMixer(context_); };
    onRightPress(controls_.mixerButton, [this] { showSliders(); });
    onRightPress(controls_.panel, [this] { showMixerButton(); });
}

VolumeEngine::Channel VolumeEngine::left() { return {controls_.leftSlider, state_.cdVolumeLeft, state_.sliderLastLeft}; }

VolumeEngine::Channel VolumeEngine::right() { return {controls_.rightSlider, state_.cdVolumeRight, state_.sliderLastRight}; }

std::int16_t& VolumeEngine::volumeMode() { return context_.state.volumeMode; }

void VolumeEngine::activate() {
    volumeMode() = effectiveMode(volumeMode());
    showMode();
    if (volumeMode() != modes::direct || std::exchange(levelsTaken_, true)) {
        return;
    }
    if (!state_.levelsRead) {
        cdvol();
        return;
    }
    showState();
    if (const auto level = context_.levels.discLevel()) {
        followMixer(*level);
    }
}

void VolumeEngine::cdvol() {
    takeLevels(context_.levels.discLevel().value_or(platform::StereoLevel{state_.cdVolumeLeft, state_.cdVolumeRight}));
    state_.muted = false;
    state_.linked = standTogether(state_.sliderLastLeft, state_.sliderLastRight);
    state_.levelsRead = true;
    showState();
}

void VolumeEngine::reportVolumeError(int code) {
    if (const auto text = volumeErrorText(code)) {
        context_.dialogs.message({.text = std::string(*text)});
    }
}

void VolumeEngine::mute() {
    if (volumeMode() != modes::direct || state_.muted) {
        return;
    }
    state_.muteMemory = {state_.cdVolumeLeft, state_.cdVolumeRight};
    state_.cdVolumeLeft = 0;
    state_.cdVolumeRight = 0;
    state_.muted = true;
    showState();
    setDevice();
}

void VolumeEngine::unmute() {
    if (!state_.muted) {
        return;
    }
    state_.cdVolumeLeft = state_.muteMemory[0];
    state_.cdVolumeRight = state_.muteMemory[1];
    state_.muted = false;
    showState();
    setDevice();
}

void VolumeEngine::setLinked(bool linked) {
    state_.linked = linked;
    showState();
}

void VolumeEngine::showSliders() {
    volumeMode() = modes::direct;
    cdvol();
    showMode();
}

void VolumeEngine::showMixerButton() {
    volumeMode() = modes::mixerButton;
    showMode();
}

void VolumeEngine::sliderChange(Channel moved, Channel other) {
    if (volumeMode() != modes::direct) {
        return;
    }
    const int to = moved.slider.Value;
    if (state_.muted) {
        state_.cdVolumeLeft = state_.muteMemory[0];
        state_.cdVolumeRight = state_.muteMemory[1];
        state_.muted = false;
        setDevice();
    }
    moved.level = levelAfterMove(moved.level, moved.last, to);
    moved.last = static_cast<std::int16_t>(to);
    if (state_.linked) {
        other.level = moved.level;
        other.last = moved.last;
    }
    showState();
    setDevice();
}

// Levels that the device has already: they are shown, not set.
void VolumeEngine::takeLevels(platform::StereoLevel level) {
    state_.cdVolumeLeft = std::clamp(level.left, 0, fullLevel);
    state_.cdVolumeRight = std::clamp(level.right, 0, fullLevel);
    state_.sliderLastLeft = static_cast<std::int16_t>(sliderPosition(state_.cdVolumeLeft));
    state_.sliderLastRight = static_cast<std::int16_t>(sliderPosition(state_.cdVolumeRight));
}

void VolumeEngine::followMixer(platform::StereoLevel level) {
    if (level == platform::StereoLevel{state_.cdVolumeLeft, state_.cdVolumeRight}) {
        return;
    }
    takeLevels(level);
    state_.muted = false;
    state_.linked = state_.linked && standTogether(state_.sliderLastLeft, state_.sliderLastRight);
    showState();
}

void VolumeEngine::setDevice() {
    const int code = auxSetVolume(context_.levels, packVolume(state_.cdVolumeLeft, state_.cdVolumeRight));
    if (code != success) {
        reportVolumeError(code);
    }
}

void VolumeEngine::showMode() {
    const bool sliders = volumeMode() == modes::direct;
    controls_.panel.Visible = sliders;
    controls_.mixerButton.Visible = !sliders;
}

void VolumeEngine::showState() {
    controls_.leftSlider.Value = state_.sliderLastLeft;
    controls_.rightSlider.Value = state_.sliderLastRight;
    controls_.leftFigure.Caption = std::to_string(sliderFigure(state_.sliderLastLeft));
    controls_.rightFigure.Caption = std::to_string(sliderFigure(state_.sliderLastRight));
    controls_.muteLit.Visible = state_.muted;
    controls_.muteKey.Visible = !state_.muted;
    controls_.linkLit.Visible = state_.linked;
    controls_.linkKey.Visible = !state_.linked;
}

}  // namespace tessarel::volume
