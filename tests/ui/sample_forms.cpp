#include "tests/ui/sample_forms.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>
#include <QVariant>

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

void SampleCd::showPlaying() {
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
    player.markA = 190;
    player.markB = 700;
    record.discFileId = "00412907";
    for (auto* label : {&face.trackDigits, &face.timeText, &face.discLamp, &face.recordLamp, &face.abLamp}) {
        label->ForeColor = 65280;
    }
    face.repeatLamp.ForeColor = 0xFFFF00;
    face.programLamp.ForeColor = 65535;
    face.statusBar.FloodPercent = 48;
    for (int i = 0; i < audio::gridCells; ++i) {
        face.cellNumbers[i].ForeColor = i >= 6 && i < 14 ? 65280 : 16384;
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

Stage::Stage(double scale) : theme(scale, panel) {
    windows.declare("CDForm", [](forms::Windows& w) { return std::make_unique<SampleCd>(w); });
    windows.declare("CD1st", [](forms::Windows& w) { return std::make_unique<SampleWaiting>(w); });
    views.know("CDForm", [this](forms::Form& form) {
        return std::make_unique<ui::CdFormView>(dynamic_cast<SampleCd&>(form).parts(), theme);
    });
    views.know("CD1st", [this](forms::Form& form) {
        auto& waiting = dynamic_cast<SampleWaiting&>(form);
        return std::make_unique<ui::Cd1stView>(
            ui::Cd1stParts{waiting, waiting.firstLine, waiting.secondLine, waiting.insertImageKey}, theme);
    });
}

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
