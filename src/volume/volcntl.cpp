#include "volume/volcntl.h"

#include "forms/windows.h"
#include "platform/system.h"
#include "shell/panel_colors.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "volume/mixer_launch.h"

namespace tessarel::volume {
namespace {

constexpr const char* trayForm = "frmTray";
constexpr const char* waitingWindow = "CD1st";
constexpr std::int16_t discHelp = 15;
constexpr std::int16_t mediaHelp = 5;
constexpr int halfBar = 50;

platform::Line lineOf(SourceKind source) {
    switch (source) {
        case SourceKind::wave:
            return platform::Line::wave;
        case SourceKind::midi:
            return platform::Line::midi;
        default:
            return platform::Line::disc;
    }
}

void show(forms::Label& label, const PlayerDisplay::Text& text) {
    label.Caption = text.caption;
    label.ForeColor = text.color;
}

}  // namespace

VolCntl::VolCntl(forms::Windows& windows, shell::Context context, RemoteState& remote)
    : Form(windows, windowName),
      context_(context),
      remote_(remote),
      engine_(context, remote.words, VolCntl::volumeControls(), {lineOf(remote.sourceKind), true}) {
    Width = 5400;
    Height = 3000;
    Caption = std::string("TSL Volume");
    wire();
    takeVolumeKeys();
}

VolumeControls VolCntl::volumeControls() {
    return {face.leftSlider, face.rightSlider, face.leftFigure, face.rightFigure, face.restoreKey,
            face.muteKey,    face.link[0],     face.link[1],    face.sliderPanel, nullptr};
}

void VolCntl::wire() {
    for (int i = 0; i < transport::count; ++i) {
        face.Image1[i].Click = [this, i] { Image1_Click(i); };
    }
    face.statusBar.BarPressed = [this](forms::MouseButton, float x) { vcntlstatusbar_MouseDown(x); };
    face.toDisplayKey.Click = [this] { Image6_Click(); };
    face.toVolumeKey.Click = [this] { Image8_Click(); };
    face.trayKey.Click = [this] { Image3_Click(); };
    face.closeKey.Click = [this] { Image12_Click(); };
    face.titlePanel.MouseDown = [this](forms::MouseButton button) { Form_MouseDown(button); };
}

// Where the player's sliders drive the level, each gesture is handed to the control that it has for it.
void VolCntl::takeVolumeKeys() {
    const auto handFirst = [this](std::function<void()>& handler, std::function<void(const VolumeControls&)> gesture) {
        handler = [this, own = std::move(handler), gesture = std::move(gesture)] {
            if (!handOver(gesture)) {
                own();
            }
        };
    };
    handFirst(face.leftSlider.Change, [this](const VolumeControls& its) { its.leftSlider.moveTo(face.leftSlider.Value); });
    handFirst(face.rightSlider.Change, [this](const VolumeControls& its) { its.rightSlider.moveTo(face.rightSlider.Value); });
    face.link[0].Click = [this] {
        if (remote_.remoteStereo == 0) {
            context_.system.beep();
        } else {
            engine_.setLinked(false);
        }
    };
    handFirst(face.link[0].Click, [](const VolumeControls& its) { its.linkLit.click(); });
    handFirst(face.link[1].Click, [](const VolumeControls& its) { its.linkKey.click(); });
    face.muteKey.Click = [this] { Image5_MouseUp(); };
    face.restoreKey.Click = [this] { Image7_MouseUp(); };
}

void VolCntl::Form_Load() {
    remote_.volumeWindowOpen = 1;
    remote_.compactRemote = 0;
    setUpFace();
    showSide();
    showLights(TransportLights::noDisc);
    shell::placeForm(context_, *this, shell::volumePositionFile);
    alwaysInFront = true;
    standIn();
}

void VolCntl::setUpFace() {
    const auto readoutFont = shell::readoutFont(context_.state);
    for (auto* label : {&face.trackDigits, &face.timeText, &face.leftFigure, &face.rightFigure}) {
        label->FontName = readoutFont;
    }
    for (auto* label : {&face.trackDigits, &face.timeText, &face.upperLine, &face.lowerLine, &face.sourceLabel,
                        &face.calendarLabel, &face.leftFigure, &face.rightFigure}) {
        label->ForeColor = context_.state.panelColors[0];
    }
    for (int cell = 0; cell < calendarCells; ++cell) {
        face.cellNumbers[cell].Caption = std::to_string(cell + 1);
        face.cellNumbers[cell].ForeColor = context_.state.panelColors[6];
    }
    if (!windows().knows(trayForm)) {
        shell::disableAsNotBuilt(face.trayKey);
    }
}

void VolCntl::standIn() {
    vcvol();
    showCaptions();
    if (const auto* other = player()) {
        mirror(other->display());
        showLights(other->lights());
    }
}

void VolCntl::vcvol() {
    auto& mode = context_.state.volumeMode;
    mode = effectiveMode(mode);
    remote_.remoteStereo = 1;
    news_.clear();
    if (const auto* other = player()) {
        remote_.words = other->levels();
    }
    if (handsOver()) {
        engine_.showState();
        followPlayer();
        return;
    }
    if (mode == modes::output) {
        engine_.activate();
        engine_.showState();
        return;
    }
    engine_.cdvol();
    if (remote_.sourceKind == SourceKind::midi && remote_.remoteRight() < 1 && !remote_.words.muted) {
        remote_.remoteStereo = 0;
        engine_.takeOver(asMono(remote_.words));
    }
}

bool VolCntl::handsOver() const { return context_.state.volumeMode == modes::direct && player() != nullptr; }

bool VolCntl::handOver(const std::function<void(const VolumeControls&)>& gesture) {
    if (!handsOver()) {
        return false;
    }
    gesture(player()->volumeControls());
    if (const auto* other = player()) {
        engine_.takeOver(other->levels());
    }
    return true;
}

// What else moves the player's sliders moves these too.
void VolCntl::followPlayer() {
    const auto controls = player()->volumeControls();
    const auto follow = [this](const auto& /*value*/) {
        if (const auto* other = player()) {
            engine_.takeOver(other->levels());
        }
    };
    news_.push_back(controls.leftFigure.Caption.onChange(follow));
    news_.push_back(controls.rightFigure.Caption.onChange(follow));
    news_.push_back(controls.muteLit.Visible.onChange(follow));
    news_.push_back(controls.linkLit.Visible.onChange(follow));
}

void VolCntl::showCaptions() {
    const bool disc = remote_.sourceKind == SourceKind::disc;
    const bool mixer = context_.state.volumeMode == modes::mixerButton;
    face.calendarLabel.Caption = std::string(disc ? "Music Calendar " : "Media Calendar ");
    face.sourceLabel.Caption = std::string(disc ? "Disc" : "");
    face.muteCaption.Caption = std::string(mixer ? "Mix" : "Mute");
    face.sideCaption.Caption = std::string(mixer ? "Dsp" : "Vol");
}

void VolCntl::showSide() {
    face.volumeSide.Visible = remote_.compactRemote == 0;
    face.displaySide.Visible = remote_.compactRemote == 1;
    face.toDisplayKey.Visible = remote_.compactRemote == 0;
    face.toVolumeKey.Visible = remote_.compactRemote == 1;
}

RemotePlayer* VolCntl::player() const { return windows().find<RemotePlayer>(playerWindow(remote_.sourceKind)); }

void VolCntl::mirror(const PlayerDisplay& display) {
    show(face.trackDigits, display.trackDigits);
    show(face.timeText, display.timeText);
    show(face.upperLine, display.upperLine);
    show(face.lowerLine, display.lowerLine);
    show(face.programLamp, display.programLamp);
    for (int cell = 0; cell < calendarCells; ++cell) {
        face.cellNumbers[cell].ForeColor = display.cells.at(static_cast<std::size_t>(cell));
    }
    face.statusBar.FloodPercent = display.barPercent;
    face.statusBar.ForeColor = display.barPercent >= halfBar ? colors::white : colors::black;
}

void VolCntl::showLights(TransportLights lights) {
    for (int i = 0; i < transport::count; ++i) {
        face.Image2[i].Visible = isLit(lights, i);
        face.Image4[i].Visible = isDim(lights, i);
    }
}

void VolCntl::Form_KeyDown(int keyCode, int shift) {
    if (keyCode == forms::keys::escape) {
        close([](RemotePlayer& its) { its.comeBack(); });
    } else if (shell::helpOnKey(context_, keyCode, remote_.sourceKind == SourceKind::disc ? discHelp : mediaHelp)) {
        return;
    } else if (auto* its = keyPlayer()) {
        its->dispatch([=] { its->Form_KeyDown(keyCode, shift); });
    }
}

void VolCntl::Form_KeyUp(int keyCode, int shift) {
    if (auto* its = keyPlayer()) {
        its->dispatch([=] { its->Form_KeyUp(keyCode, shift); });
    }
}

forms::KeyUse VolCntl::keyUse(int keyCode, int shift) const {
    const auto* its = keyPlayer();
    return its == nullptr ? forms::KeyUse::none : its->keyUse(keyCode, shift);
}

forms::Form* VolCntl::keyPlayer() const {
    return handsOver() ? windows().find<Form>(playerWindow(remote_.sourceKind)) : nullptr;
}

void VolCntl::Form_MouseDown(forms::MouseButton button) {
    const auto before = std::pair(Left.get(), Top.get());
    shell::dragForm(*this);
    if (button == forms::MouseButton::right && before == std::pair(Left.get(), Top.get())) {
        shell::centreForm(context_, *this);
    } else {
        shell::keepOnScreen(context_, *this);
    }
}

void VolCntl::Form_Unload() {
    remote_.volumeWindowOpen = 0;
    shell::savePlace(context_, *this, shell::volumePositionFile);
    news_.clear();
    auto* other = player();
    if (other == nullptr || context_.state.discDrawerOpen == 1) {
        return;
    }
    if (!handsOver()) {
        other->takeLevels(remote_.words);
    }
    other->refreshLights();
}

void VolCntl::Image1_Click(int index) {
    if (auto* other = player()) {
        other->pressTransport(index);
    }
}

void VolCntl::vcntlstatusbar_MouseDown(float x) {
    auto* other = player();
    if (other != nullptr && face.Image2[transport::play].Visible && face.statusBar.Width > 0) {
        other->jumpTo(x / static_cast<float>(face.statusBar.Width));
    }
}

void VolCntl::Image5_MouseUp() {
    if (context_.state.volumeMode == modes::mixerButton) {
        launchMixer(context_);
    } else if (!handOver([](const VolumeControls& its) { its.muteKey.click(); })) {
        engine_.mute();
    }
}

void VolCntl::Image7_MouseUp() {
    if (!handOver([](const VolumeControls& its) { its.muteLit.click(); })) {
        engine_.unmute();
    }
}

void VolCntl::Image6_Click() {
    remote_.compactRemote = 1;
    showSide();
}

void VolCntl::Image8_Click() {
    remote_.compactRemote = 0;
    showSide();
}

void VolCntl::Image3_Click() {
    windows().load(trayForm);
    windows().hide(name());
}

void VolCntl::Image12_Click() {
    close([](RemotePlayer& its) { its.closePlayer(); });
}

// Goes, and lets the player do something; without one the waiting window takes care that there is a window at all.
void VolCntl::close(const std::function<void(RemotePlayer&)>& act) {
    windows().unload(name());
    if (auto* other = player()) {
        act(*other);
    } else if (!windows().anyVisible()) {
        windows().show(waitingWindow);
    }
}

}  // namespace tessarel::volume
