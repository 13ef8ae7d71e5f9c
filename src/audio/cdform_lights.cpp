#include <algorithm>

#include "audio/cdform.h"
#include "audio/track_rules.h"
#include "base/text.h"
#include "forms/windows.h"
#include "shell/shared_state.h"

namespace tessarel::audio {

// A seek key is held only while the disc plays: where its key goes dim, or is held back, the hold ends too.
void CDForm::setTransport(Transport state) {
    if (state != Transport::playing) {
        player_.seekKeyState = 0;
    }
    for (int i = 0; i < transport::count; ++i) {
        face.icntlc[i].Visible = volume::isLit(state, i);
        face.icntlb[i].Visible = volume::isDim(state, i);
    }
    for (int i = 0; i < seekKeys::count; ++i) {
        face.scntlb[i].Visible = state == Transport::stopped || state == Transport::noDisc;
    }
    if (auto* other = remote()) {
        other->showLights(state);
    }
}

bool CDForm::isLit(int transportIndex) const { return face.icntlc[transportIndex].Visible; }

void CDForm::setModeLights(int index) {
    for (int i = 0; i < modeKeys::count; ++i) {
        face.Image3[i].Visible = i == index;
    }
    const Color label = index == modeKeys::program ? colors::grey : colors::black;
    face.clearCover.ForeColor = label;
    face.saveCover.ForeColor = label;
    face.recallCover.ForeColor = label;
    enableInformation(index == modeKeys::program);
}

void CDForm::setCells(int from, int to, Color color) {
    for (int track = std::max(from, 1); track <= std::min(to, gridCells); ++track) {
        face.cellNumbers[track - 1].ForeColor = color;
    }
}

void CDForm::paintCells() {
    // Before the first play the digits are the disc's count of tracks: the cells stay as the load has lit them.
    if (player_.playMode == wholeDisc && player_.playStarted == 0) {
        return;
    }
    const int shown = digits();
    for (int track = 1; track <= gridCells; ++track) {
        forms::Label& cell = face.cellNumbers[track - 1];
        const bool dead = track > player_.gridTrackCount;
        switch (dead ? CellColor::dim : cellColor(player_, track, shown, cell.ForeColor == color(6))) {
            case CellColor::dim:
                cell.ForeColor = color(6);
                break;
            case CellColor::lit:
                cell.ForeColor = color(0);
                break;
            case CellColor::shown:
                cell.ForeColor = color(4);
                break;
            case CellColor::keep:
                break;
        }
    }
}

void CDForm::colourRepeat() {
    repeating = player_.repeatOn == 1;
    face.repeatLamp.ForeColor = color(repeating ? 8 : 9);
}

void CDForm::showPauseText() {
    face.repeatLamp.ForeColor = color(3);
    face.repeatLamp.Caption = std::string("PAUSE");
}

void CDForm::endPauseText() {
    colourRepeat();
    face.repeatLamp.Caption = std::string("Repeat");
}

int CDForm::digits() const { return static_cast<int>(text::val(face.trackDigits.Caption.get())); }

Color CDForm::color(int index) const { return context_.state.panelColors.at(static_cast<std::size_t>(index)); }

float CDForm::barPoint() const {
    return static_cast<float>(face.statusBar.Width) * static_cast<float>(face.statusBar.FloodPercent.get()) / 100.0F;
}

}  // namespace tessarel::audio
