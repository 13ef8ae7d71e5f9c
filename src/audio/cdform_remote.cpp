// The window hidden behind its icon, and the small window that stands in for it.
#include "audio/cdform.h"
#include "audio/iconmin.h"
#include "forms/windows.h"
#include "shell/cues.h"
#include "shell/shared_state.h"
#include "shell/window_names.h"

namespace tessarel::audio {
namespace {

constexpr std::int16_t clickCue = 0;
constexpr const char* plainCaption = "Tessarel";

}  // namespace

void CDForm::Command3D14_Click() {
    if (context_.state.discDrawerOpen == 1 || windows().isLoaded(ICONmin::windowName)) {
        return;
    }
    shell::playCue(context_, clickCue);
    windows().hide(shell::wallpaperForm);
    if ((isLit(transport::play) || isLit(transport::pause)) && context_.state.noVolumeOnMinimise == 0) {
        volume::openRemote(windows(), remoteState_, volume::SourceKind::disc);
    }
    windows().hide(name());
    hideWindowsAround();
    if (auto* icon = windows().load(ICONmin::windowName)) {
        icon->Caption = titleCaption();
    }
    windows().showMinimised(ICONmin::windowName);
    context_.state.minimisedOnce = 1;
}

// Whoever has shown this window has brought it back.
void CDForm::endMinimised() {
    if (auto* icon = windows().find<ICONmin>(ICONmin::windowName)) {
        icon->restore();
    }
    showWindowsAround();
}

std::string CDForm::titleCaption() const { return "Tessarel [" + face.lowerLine.Caption.get() + "]"; }

void CDForm::showTitleInCaptions() {
    Caption = face.lowerLine.Caption.get().empty() ? std::string(plainCaption) : titleCaption();
    captionIcon(titleCaption());
}

void CDForm::captionIcon(const std::string& caption) {
    if (auto* icon = windows().find<ICONmin>(ICONmin::windowName)) {
        icon->Caption = caption;
    }
}

volume::Remote* CDForm::remote() const {
    const bool ours = remoteState_.sourceKind == volume::SourceKind::disc;
    return ours ? windows().find<volume::Remote>(volume::Remote::windowName) : nullptr;
}

bool CDForm::remoteOpen() const { return remote() != nullptr; }

void CDForm::mirrorToRemote() {
    if (auto* other = remote()) {
        other->mirror(display());
    }
}

// The waiting window is up. A hidden player stays hidden, with its icon as the way to it.
void CDForm::discHasLeft() {
    dropRemote();
    Caption = std::string(plainCaption);
    captionIcon(plainCaption);
}

void CDForm::dropRemote() {
    if (remoteOpen()) {
        windows().unload(volume::Remote::windowName);
    }
}

void CDForm::pressTransport(int index) {
    dispatch([this, index] { pressKey(index, remoteNext); });
}

void CDForm::jumpTo(float fraction) {
    dispatch([this, fraction] { CDStatusBar_MouseDown(fraction * static_cast<float>(face.statusBar.Width)); });
}

volume::PlayerDisplay CDForm::display() const {
    const auto shown = [](const forms::Label& label) {
        return volume::PlayerDisplay::Text{label.Caption.get(), label.ForeColor.get()};
    };
    volume::PlayerDisplay display{.trackDigits = shown(face.trackDigits),
                                  .timeText = shown(face.timeText),
                                  .upperLine = shown(face.upperLine),
                                  .lowerLine = shown(face.lowerLine),
                                  .programLamp = shown(face.programLamp),
                                  .barPercent = face.statusBar.FloodPercent};
    for (int cell = 0; cell < gridCells; ++cell) {
        display.cells.at(static_cast<std::size_t>(cell)) = face.cellNumbers[cell].ForeColor;
    }
    return display;
}

volume::TransportLights CDForm::lights() const {
    if (isLit(transport::play)) {
        return Transport::playing;
    }
    if (isLit(transport::pause)) {
        return Transport::paused;
    }
    return face.icntlb[transport::play].Visible ? Transport::noDisc : Transport::stopped;
}

volume::VolumeControls CDForm::volumeControls() {
    return {face.leftSlider, face.rightSlider, face.leftFigure, face.rightFigure, face.Image2[0],
            face.Image2[1],  face.Image9[0],   face.Image9[1],  face.sliderPanel, &face.mixerButton};
}

void CDForm::takeLevels(const volume::VolumeState& left) { volume_.takeOver(left); }

void CDForm::refreshLights() {
    setTransport(player_.playingFlag == 1  ? Transport::playing
                 : player_.pausedFlag == 1 ? Transport::paused
                                           : Transport::stopped);
    if (player_.pausedFlag == 1) {
        showPauseText();
    } else {
        endPauseText();
    }
}

void CDForm::comeBack() { windows().show(name()); }

void CDForm::closePlayer() {
    dispatch([this] { Image5_MouseUp(); });
}

}  // namespace tessarel::audio
