#include "tests/ui/sample_forms.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>
#include <QVariant>

#include "ui/aplaylst_view.h"
#include "ui/cdformbg_view.h"
#include "ui/iconmin_view.h"
#include "ui/volcntl_view.h"

namespace tessarel::uitest {
namespace {

void setCaptions(const std::vector<std::pair<forms::Label*, std::string>>& captions) {
    for (const auto& [label, text] : captions) {
        label->Caption = text;
    }
}

}  // namespace

SampleCd::SampleCd(forms::Windows& windows) : Form(windows, "CDForm") {
    Caption = std::string("Tessarel");
    const auto note = [this](const char* what, const forms::Control& c) { log.push_back(std::string(what) + " " + c.name()); };
    for (auto* control : controls()) {
        const std::string& name = control->name();
        const bool passive = name == "Label21" || name == "Label16" || name == "Label24" || name == "Label33" ||
                             name == "Label13" || name == "Label8" || name.starts_with("Label22") || name == "SSPanel1";
        if (!passive) {
            control->Click = [note, control] { note("Click", *control); };
            control->MouseDown = [note, control](forms::MouseButton button) {
                note(button == forms::MouseButton::left ? "Down" : "Right", *control);
            };
            control->MouseUp = [note, control](forms::MouseButton) { note("Up", *control); };
        }
    }
    face.leftSlider.Change = [note, this] { note("Change", face.leftSlider); };
    face.statusBar.BarPressed = [this](forms::MouseButton, float x) {
        log.push_back("Bar " + std::to_string(static_cast<int>(x)));
    };
    showIdle();
}

void SampleCd::showIdle() {
    setCaptions({{&face.repeatLamp, "Repeat"},
                 {&face.abLamp, "A - B"},
                 {&face.programLamp, "Pgm Stored"},
                 {&face.discLamp, "DISC"},
                 {&face.wallpaperLamp, "WP off"},
                 {&face.timeCaption, "Time"}});
    for (auto* covers : {&face.icntlc, &face.icntlb, &face.scntlc, &face.scntlb, &face.Image3}) {
        for (auto& cover : *covers) {
            cover.Visible = false;
        }
    }
    for (auto* label : {&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover, &face.keypadCover,
                        &face.informationCover}) {
        label->ForeColor = colors::grey;
    }
    for (auto* label : {&face.recordLamp, &face.abLamp, &face.programLamp}) {
        label->ForeColor = 16448;
    }
    for (auto* label : {&face.clearCover, &face.saveCover, &face.recallCover}) {
        label->ForeColor = colors::black;
    }
    face.repeatLamp.ForeColor = 0x404000;
    face.wallpaperLamp.ForeColor = colors::red;
    face.cellNumbers[audio::moreTracksMarker].ForeColor = 16384;
    face.keypadEntry.Visible = false;
    face.Image2[0].Visible = false;
    face.Image9[0].Visible = false;
    face.enhancedKey.Visible = false;
    face.mixerButton.Visible = false;
}

void SampleCd::showPlaying(const ui::PanelColors& panel) {
    setCaptions({{&face.trackDigits, "7"},
                 {&face.timeText, "02:41"},
                 {&face.upperLine, "Claude Debussy – Suite bergamasque"},
                 {&face.lowerLine, "Clair de lune"},
                 {&face.leftFigure, "72"},
                 {&face.rightFigure, "72"}});
    player.discTrackCount = 14;
    player.gridTrackCount = 14;
    player.totalTimeText = "64:17";
    player.playStarted = 1;
    player.playingFlag = 1;
    player.currentTrack = 7;
    player.repeatOn = 1;
    repeating = true;
    player.markA = 190;
    player.markB = 700;
    record.discFileId = "00412907";
    for (auto* label : {&face.trackDigits, &face.timeText, &face.discLamp, &face.recordLamp, &face.abLamp, &face.upperLine,
                        &face.lowerLine}) {
        label->ForeColor = panel[0];
    }
    face.repeatLamp.ForeColor = panel[8];
    face.programLamp.ForeColor = panel[3];
    face.wallpaperLamp.ForeColor = panel[7];
    face.statusBar.FloodPercent = 48;
    for (int i = 0; i < audio::gridCells; ++i) {
        face.cellNumbers[i].ForeColor = i >= 6 && i < 14 ? panel[4] : panel[6];
        face.cellCaps[i].ForeColor = i < 14 ? colors::black : colors::grey;
    }
    face.icntlc[audio::transport::play].Visible = true;
    face.Image3[audio::modeKeys::disc].Visible = true;
    for (auto* slider : {&face.leftSlider, &face.rightSlider}) {
        slider->Value = 28;
    }
}

SampleWaiting::SampleWaiting(forms::Windows& windows) : Form(windows, "CD1st") {
    Caption = std::string("Tessarel");
    firstLine.Caption = std::string("Please Insert an Audio CD");
    secondLine.Caption = std::string("or a CD-ROM into the Drive...");
    firstLine.Click = [this] { log.emplace_back("Click Label1"); };
    insertImageKey.Caption = std::string("Insert disc image...");
    insertImageKey.Click = [this] { log.emplace_back("Click Command1"); };
}

SampleList::SampleList(forms::Windows& windows) : Form(windows, "aplaylst") {
    Caption = std::string("CD Playlist");
    List1.tabStops = std::vector<int>{13, 231, 250};
    List1.rows = std::vector<std::string>{"1:\tPrélude\t4:19",
                                          "3:\tClair de lune\t5:04",
                                          "2:\tMenuet\t4:11",
                                          "14:\tRêverie\t4:42",
                                          "7:\tArabesque No. 1 in E major, Andantino con moto, for the piano\t4:36",
                                          "4:\tPassepied\t3:55"};
    List1.ListIndex = 1;
    List1.Click = [this] { log.push_back("Click " + std::to_string(List1.ListIndex)); };
}

SampleRemote::SampleRemote(forms::Windows& windows) : Form(windows, "VolCntl") {
    Caption = std::string("TSL Volume");
    for (auto* control : controls()) {
        const bool key = control->name().starts_with("Image");
        if (key) {
            control->Click = [this, control] { log.push_back("Click " + control->name()); };
        }
    }
    setCaptions({{&face.sideCaption, "Vol"},
                 {&face.muteCaption, "Mute"},
                 {&face.leftFigure, "72"},
                 {&face.rightFigure, "72"},
                 {&face.trackDigits, "7"},
                 {&face.timeText, "02:41"},
                 {&face.upperLine, "Claude Debussy – Suite bergamasque"},
                 {&face.lowerLine, "Clair de lune"},
                 {&face.programLamp, "Pgm Stored"},
                 {&face.sourceLabel, "Disc"},
                 {&face.calendarLabel, "Music Calendar "}});
    face.leftSlider.Value = 28;
    face.rightSlider.Value = 28;
    face.statusBar.FloodPercent = 48;
    for (int i = 0; i < volume::transport::count; ++i) {
        face.Image2[i].Visible = i == volume::transport::play;
        face.Image4[i].Visible = false;
    }
    face.restoreKey.Visible = false;
    face.link[1].Visible = false;
    showSide(false);
}

void SampleRemote::showSide(bool display, const ui::PanelColors& panel) {
    face.volumeSide.Visible = !display;
    face.displaySide.Visible = display;
    face.toDisplayKey.Visible = !display;
    face.toVolumeKey.Visible = display;
    for (auto* label : {&face.trackDigits, &face.timeText, &face.upperLine, &face.lowerLine}) {
        label->ForeColor = panel[0];
    }
    face.programLamp.ForeColor = panel[3];
    for (int i = 0; i < volume::calendarCells; ++i) {
        face.cellNumbers[i].ForeColor = i >= 6 && i < 14 ? panel[4] : panel[6];
    }
}

Stage::Stage(double scale, const ui::Skin& chosen)
    : skin(chosen),
      theme(scale, {panel, [this] { return skin; },
                    [this](const std::string& path) -> std::optional<std::string> {
                        const auto found = files.find(path);
                        return found == files.end() ? std::nullopt : std::optional(found->second);
                    }}) {
    windows.declare("CDForm", [](forms::Windows& w) { return std::make_unique<SampleCd>(w); });
    windows.declare("CD1st", [](forms::Windows& w) { return std::make_unique<SampleWaiting>(w); });
    windows.declare("aplaylst", [](forms::Windows& w) { return std::make_unique<SampleList>(w); });
    windows.declare("VolCntl", [](forms::Windows& w) { return std::make_unique<SampleRemote>(w); });
    views.know("aplaylst", [this](forms::Form& form) {
        return std::make_unique<ui::AplaylstView>(form, dynamic_cast<SampleList&>(form).List1, theme);
    });
    views.know("VolCntl", [this](forms::Form& form) {
        return std::make_unique<ui::VolCntlView>(form, dynamic_cast<SampleRemote&>(form).face, theme);
    });
    for (const char* name : {"ICONmin", "cdformbg"}) {
        windows.declare(name, [name](forms::Windows& w) { return std::make_unique<SamplePlain>(w, name); });
    }
    views.know("ICONmin", [this](forms::Form& form) { return std::make_unique<ui::IconMinView>(form, theme); });
    views.know("cdformbg", [this](forms::Form& form) { return std::make_unique<ui::CdFormBgView>(form, theme); });
    views.know("CDForm", [this](forms::Form& form) {
        return std::make_unique<ui::CdFormView>(dynamic_cast<SampleCd&>(form).parts(), theme);
    });
    views.know("CD1st", [this](forms::Form& form) {
        auto& waiting = dynamic_cast<SampleWaiting&>(form);
        return std::make_unique<ui::Cd1stView>(
            ui::Cd1stParts{waiting, waiting.firstLine, waiting.secondLine, waiting.insertImageKey}, theme);
    });
}

SampleList& Stage::showList() {
    windows.show("aplaylst");
    return *windows.find<SampleList>("aplaylst");
}

SampleRemote& Stage::showRemote() {
    windows.show("VolCntl");
    return *windows.find<SampleRemote>("VolCntl");
}

void Stage::showTile() {
    windows.show("ICONmin");
    windows.find<SamplePlain>("ICONmin")->Caption = std::string("7  Clair de lune  02:41");
}

void Stage::showBacking() { windows.show("cdformbg"); }

SampleCd& Stage::showCd() {
    windows.show("CDForm");
    return *windows.find<SampleCd>("CDForm");
}

SampleWaiting& Stage::showWaiting() {
    windows.show("CD1st");
    return *windows.find<SampleWaiting>("CD1st");
}

// The application forgets that it was told to quit only by running and ending once more.
void forgetTheEnd() {
    QCoreApplication::instance()->setProperty("tessarel.exitStatus", QVariant());
    QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::exit(); });
    QApplication::exec();
}

QImage picture(ui::FormWindow& window) {
    QPixmap pixels(window.size());
    pixels.fill(Qt::transparent);
    window.render(&pixels, QPoint(), QRegion(), QWidget::DrawChildren);
    return pixels.toImage();
}

}  // namespace tessarel::uitest
