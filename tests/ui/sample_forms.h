#pragma once
#include <QImage>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "audio/cdform_face.h"
#include "audio/player_state.h"
#include "audio/shortcuts.h"
#include "forms/form.h"
#include "forms/windows.h"
#include "library/disc_record.h"
#include "tests/fakes/simulated_scheduler.h"
#include "ui/cd1st_view.h"
#include "ui/cdform_view.h"
#include "ui/main_windows.h"
#include "ui/theme.h"
#include "volume/volcntl_face.h"

namespace tessarel::uitest {

/// The Audio CD window's controls without its logic: every gesture is written down instead.
class SampleCd : public forms::Form {
public:
    explicit SampleCd(forms::Windows& windows);

    audio::CDFormFace face{*this};
    audio::PlayerState player;
    library::DiscRecord record;
    forms::Property<int> drawerPosition{0};
    forms::Property<bool> expandedDisplay{false};
    forms::Property<bool> repeating{false};
    /// "Click icntla(2)", "Down scntla(3)" and so on, oldest first.
    std::vector<std::string> log;

    void Form_KeyDown(int keyCode, int shift) override {
        log.push_back("Key " + std::to_string(keyCode) + " " + std::to_string(shift));
    }
    void Form_KeyUp(int keyCode, int /*shift*/) override { log.push_back("KeyUp " + std::to_string(keyCode)); }
    forms::KeyUse keyUse(int keyCode, int shift) const override {
        const auto shortcut = takesShortcuts ? audio::shortcutOf(keyCode, shift) : std::nullopt;
        return shortcut ? audio::useOf(*shortcut) : forms::KeyUse::none;
    }
    /// Whether keys beyond those of every form reach it.
    bool takesShortcuts = false;
    void Form_MouseDown(forms::MouseButton button) override {
        log.push_back(button == forms::MouseButton::left ? "Face left" : "Face right");
    }
    void Form_FilesDropped(const std::vector<std::string>& paths) override {
        for (const auto& path : paths) {
            log.push_back("Drop " + path);
        }
    }

    /// Track 7 of a disc of 14 is playing, two minutes and forty-one seconds in.
    void showPlaying(const ui::PanelColors& panel = ui::defaultPanelColors);
    ui::CdFormParts parts() { return {*this, face, player, record, drawerPosition, 5, expandedDisplay, repeating}; }

private:
    void showIdle();
};

/// The waiting window's controls without its logic.
class SampleWaiting : public forms::Form {
public:
    explicit SampleWaiting(forms::Windows& windows);

    forms::Label firstLine{*this, "Label1", "What to do"};
    forms::Label secondLine{*this, "Label2", "Where to put it"};
    forms::Button insertImageKey{*this, "Command1", "Insert disc image..."};
    std::vector<std::string> log;

    void Form_KeyDown(int keyCode, int /*shift*/) override { log.push_back("Key " + std::to_string(keyCode)); }
};

/// The list of a program without its logic.
class SampleList : public forms::Form {
public:
    explicit SampleList(forms::Windows& windows);

    forms::ListBox List1{*this, "List1", "Program"};
    std::vector<std::string> log;
};

/// The small volume window's controls without its logic.
class SampleRemote : public forms::Form {
public:
    explicit SampleRemote(forms::Windows& windows);
    void showSide(bool display, const ui::PanelColors& panel = ui::defaultPanelColors);

    volume::VolCntlFace face{*this};
    std::vector<std::string> log;
};

/// The hidden player's tile, and the plain face behind a window.
struct SamplePlain : forms::Form {
    using Form::Form;
};

/// All sample forms behind real views, on a clock that stands still.
class Stage {
public:
    explicit Stage(double scale = 1, const ui::Skin& chosen = {});

    SampleCd& showCd();
    SampleWaiting& showWaiting();
    SampleList& showList();
    SampleRemote& showRemote();
    void showTile();
    void showBacking();
    ui::FormWindow& window(const std::string& name) { return *views.find(name); }

    fakes::SimulatedScheduler scheduler;
    ui::PanelColors panel = ui::defaultPanelColors;
    ui::Skin skin;
    std::map<std::string, std::string> files;  ///< the pictures that the theme may ask for
    ui::Theme theme;
    forms::Windows windows{scheduler};
    ui::Views views{windows};
};

/// Takes back that the process is ending, for the tests that come after.
void forgetTheEnd();

/// What a window shows, with its rounded corners clear.
QImage picture(ui::FormWindow& window);

}  // namespace tessarel::uitest
