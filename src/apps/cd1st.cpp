#include "apps/cd1st.h"

#include "apps/disc_decision.h"
#include "audio/drawer.h"
#include "base/text.h"
#include "forms/windows.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_system.h"
#include "platform/process_end.h"
#include "platform/system.h"
#include "shell/cues.h"
#include "shell/shared_state.h"
#include "shell/task_helpers.h"
#include "shell/window_names.h"

namespace tessarel::apps {
namespace {

constexpr int pollMs = 300;
constexpr std::int16_t generalHelp = 0;
constexpr const char* backingForm = "cdformbg";
constexpr const char* imageFilter =
    "Disc images (*.cue; *.toc; *.nrg; *.iso; *.bin; *.img)|*.cue;*.toc;*.nrg;*.iso;*.bin;*.img|All files (*.*)|*.*";

DiscFeatures featuresOf(const shell::SharedState& state) { return {state.cdRomEnabled, state.audioCdEnabled}; }

}  // namespace

CD1st::CD1st(forms::Windows& windows, shell::Context context, audio::PlayerState& player, library::DiscRecord& record)
    : Form(windows, shell::waitingWindow),
      Timer2(*this, "Timer2", pollMs, [this] { Timer2_Timer(); }),
      context_(context),
      player_(player),
      record_(record),
      MMControl1(context.scheduler, context.cdPlayers, [&state = context.state] { return shell::driveLetter(state.cdDrive); }) {
    Caption = std::string("Tessarel");
    Width = 7800;
    Height = 3600;
    firstLine.Click = [this] { Label1_Click(); };
    insertImageKey.Caption = std::string("Insert disc image...");
    insertImageKey.Click = [this] { Command1_Click(); };
}

void CD1st::Form_Load() {
    shell::resetDiscState(context_.state);
    shell::centreForm(context_, *this);
    cd1label();
}

void CD1st::Form_Activate() {
    shell::resetDiscState(context_.state);
    player_.discTrackCount = 0;
    forgetRecord();
    ZOrder();
}

// What was known of the last disc must not show with the next one. The time correction stays: a disc without images of its own
// goes on with it.
void CD1st::forgetRecord() {
    library::DiscRecord blank;
    blank.timeCorrection = record_.timeCorrection;
    blank.defaultImageSet = record_.defaultImageSet;
    record_ = blank;
}

void CD1st::Form_KeyDown(int keyCode, int /*shift*/) {
    if (keyCode == forms::keys::escape) {
        panel.ForeColor = colors::red;
        platform::endProcess();
    }
    shell::helpOnKey(context_, keyCode, generalHelp);
}

void CD1st::Form_MouseDown(forms::MouseButton button) {
    if (button == forms::MouseButton::left) {
        shell::dragForm(*this);
    }
}

void CD1st::Form_FilesDropped(const std::vector<std::string>& paths) {
    if (!paths.empty()) {
        insertImage(paths.front());
    }
}

void CD1st::Label1_Click() {
    prepareDevice();
    MMControl1.Command("Open");
    MMControl1.Command("Eject");
    MMControl1.Command("Close");
}

void CD1st::Command1_Click() {
    if (const auto path = context_.dialogs.openFile({"Insert disc image", imageFilter, "Z:\\"})) {
        insertImage(*path);
    }
}

void CD1st::insertImage(const std::string& path) { shell::insertOrTell(context_, path); }

void CD1st::prepareDevice() {
    MMControl1.Notify = false;
    MMControl1.Wait = false;
    MMControl1.DeviceType = "CDAudio";
}

void CD1st::Timer2_Timer() {
    shell::SharedState& state = context_.state;
    if (!state.discKey.empty()) {
        return;
    }
    const DiscFeatures features = featuresOf(state);
    switch (decideDisc(features, lookIntoDrive(features))) {
        case DiscDecision::noDisc:
            showNoDisc();
            break;
        case DiscDecision::audio:
            takeAudioDisc();
            break;
        case DiscDecision::wrongKind:
        case DiscDecision::data:  // no window of this version takes data discs
            context_.state.playOpenedDisc = 0;
            context_.system.setPointer(platform::PointerShape::normal);
            cd1label();
            break;
    }
}

DiscSigns CD1st::lookIntoDrive(const DiscFeatures& features) {
    DiscSigns signs;
    if (!features.cdRomOnly()) {
        prepareDevice();
        MMControl1.Command("Open");
        signs.deviceLoads = MMControl1.Error() != audio::deviceError::notLoaded;
        if (!signs.deviceLoads) {
            return signs;
        }
        signs.tracks = MMControl1.Tracks();
        MMControl1.Command("Close");
        player_.discTrackCount = static_cast<std::int16_t>(signs.tracks);
    }
    signs.firstEntry = text::upper(text::trim(context_.files.first(context_.state.cdDrive)));
    return signs;
}

void CD1st::showNoDisc() {
    context_.system.setPointer(platform::PointerShape::normal);
    MMControl1.Command("Close");
    cd1label();
}

void CD1st::cd1label() {
    const WaitingLines lines = waitingLines(featuresOf(context_.state));
    firstLine.Caption = lines.first;
    secondLine.Caption = lines.second;
}

// The player that is to be replaced shuts its drawer, and what stands behind it hides the change.
void CD1st::preparePlayer() {
    auto* player = windows().find<audio::Drawer>(shell::audioCdWindow);
    if (player == nullptr) {
        return;
    }
    if (player->drawerOpen()) {
        player->closedrawer();
    }
    windows().showBeside(backingForm);
}

void CD1st::takeAudioDisc() {
    shell::SharedState& state = context_.state;
    context_.system.setPointer(platform::PointerShape::hourglass);
    state.discKey = "Audio CD";
    if (state.activeTessarel == shell::Tessarel::cdRom) {
        windows().unload("CDROMer");
    }
    if (state.activeTessarel == shell::Tessarel::audioCd) {
        preparePlayer();
    }
    windows().unload(shell::audioCdWindow);  // one load of it serves one disc
    state.discDrawerOpen = 0;
    windows().show(shell::audioCdWindow);
    windows().unload(backingForm);
    windows().unload(shell::waitingWindow);
}

}  // namespace tessarel::apps
