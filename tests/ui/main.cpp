#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QMouseEvent>
#include <QPainter>
#include <array>
#include <cstdio>
#include <cstring>

#include "tests/ui/sample_forms.h"

namespace {

using namespace tessarel;
using namespace tessarel::uitest;

bool save(const QImage& image, const QString& folder, const char* name, const char* suffix) {
    const QString path = folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(suffix) + QStringLiteral(".png");
    const bool saved = image.save(path);
    std::printf("%s %s\n", saved ? "written:" : "NOT written:", qPrintable(path));
    return saved;
}

struct Sheet {
    const char* name;
    ui::Skin skin;
    ui::PanelColors panel;
    void (*prepare)(Stage&);
};

void playing(Stage& stage) { stage.showCd().showPlaying(stage.panel); }

void expanded(Stage& stage) {
    auto& cd = stage.showCd();
    cd.showPlaying(stage.panel);
    cd.face.timeText.Caption = std::string("-1:02:41");
    cd.expandedDisplay = true;
}

/// A key, lamp or cell in one of its states.
QImage piece(Stage& stage, const char* name, const QRect& around) {
    auto& window = stage.window("CDForm");
    auto* widget = window.findChild<QWidget*>(QString::fromLatin1(name));
    const QImage all = picture(window);
    const QRect place(widget->mapTo(&window, QPoint(0, 0)), widget->size());
    QImage shown(around.size(), QImage::Format_ARGB32_Premultiplied);
    shown.fill(QColor(ui::palette::faceMiddle));
    QPainter painter(&shown);
    const QPoint at((shown.width() - place.width()) / 2, (shown.height() - place.height()) / 2);
    painter.drawImage(at, all.copy(place));
    return shown;
}

enum StateColumn { atRest, underMouse, heldDown, focused, lit, dead, stateColumns };

/// A kind of thing that can be pressed, and whether it can be lit and dead at all.
struct StateRow {
    const char* name;
    bool canBeLit;
    bool canBeDead;
};

/// One row for each kind of thing that can be pressed, one column for each state. States that a kind does not have stay empty.
QImage states(double scale) {
    const std::array rows{StateRow{"icntla(4)", true, true},  StateRow{"Image16(1)", false, true},
                          StateRow{"Image10(3)", true, true}, StateRow{"Command3D14", false, true},
                          StateRow{"Image5", true, false},    StateRow{"Label22(8)", true, true},
                          StateRow{"Label30", true, true},    StateRow{"LSlider", false, false}};
    const QRect room(0, 0, static_cast<int>(130 * scale), static_cast<int>(84 * scale));
    QImage sheet(room.width() * stateColumns, room.height() * static_cast<int>(rows.size()),
                 QImage::Format_ARGB32_Premultiplied);
    sheet.fill(QColor(ui::palette::faceMiddle));
    QPainter painter(&sheet);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto& kind = rows.at(row);
        for (int column = 0; column < stateColumns; ++column) {
            if ((column == lit && !kind.canBeLit) || (column == dead && !kind.canBeDead)) {
                continue;
            }
            Stage stage(scale);
            auto& cd = stage.showCd();
            cd.showPlaying();
            auto* widget = stage.window("CDForm").findChild<QWidget*>(QString::fromLatin1(kind.name));
            cd.face.clearCover.ForeColor = column == dead ? colors::black : colors::grey;
            cd.face.icntlb[4].Visible = column == dead;
            cd.face.icntlc[4].Visible = column == lit;
            cd.face.cellNumbers[8].ForeColor = column == lit ? 65280 : 16384;
            cd.face.cellCaps[8].ForeColor = column == dead ? colors::grey : colors::black;
            cd.face.programLamp.ForeColor = column == lit ? 65535 : 16448;
            cd.face.leftSlider.Value = 40;
            cd.face.minimiseKey.Enabled = column != dead;
            cd.face.exitLabel.ForeColor = column == lit ? colors::darkRed : colors::white;
            cd.face.repeatCover.ForeColor = column == dead ? colors::black : colors::grey;
            cd.repeating = column == lit;
            widget->setAttribute(Qt::WA_UnderMouse, column == underMouse);
            if (column == heldDown) {
                QMouseEvent press(QEvent::MouseButtonPress, widget->rect().center(),
                                  widget->mapToGlobal(widget->rect().center()), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(widget, &press);
            }
            if (column == focused) {
                QApplication::setActiveWindow(&stage.window("CDForm"));
                widget->setFocus(Qt::TabFocusReason);
            }
            painter.drawImage(column * room.width(), static_cast<int>(row) * room.height(), piece(stage, kind.name, room));
        }
    }
    return sheet;
}

ui::PanelColors twoColours(Color front, Color back) {
    return {front, 16384, back, front, front, back, back, front, front, back, back};
}

/// A hill at dusk, for a picture behind the window.
std::string landscape() {
    QImage image(1200, 600, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, 600);
    sky.setColorAt(0, QColor(0x1a, 0x2a, 0x4a));
    sky.setColorAt(0.7, QColor(0xd0, 0x80, 0x50));
    sky.setColorAt(1, QColor(0xff, 0xd0, 0x80));
    painter.fillRect(image.rect(), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf4, 0xe9, 0xc1));
    painter.drawEllipse(QPointF(880, 190), 70, 70);
    painter.setBrush(QColor(0x20, 0x30, 0x50));
    painter.drawEllipse(QPointF(300, 760), 700, 320);
    painter.setBrush(QColor(0x10, 0x1c, 0x34));
    painter.drawEllipse(QPointF(1000, 800), 600, 330);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

/// The windows as the manual shows them, at 100 % and 200 %.
int writePictures(const QString& folder) {
    const std::array sheets{
        Sheet{"audio-cd", {}, ui::defaultPanelColors, playing},
        Sheet{"audio-cd-expanded", {}, ui::defaultPanelColors, expanded},
        Sheet{"audio-cd-metal", {1, true, ""}, ui::defaultPanelColors, playing},
        Sheet{"audio-cd-picture", {0, true, "C:\\behind.png"}, ui::defaultPanelColors, playing},
        Sheet{"audio-cd-colours", {}, twoColours(0, 0x29CF95), playing},
        Sheet{"audio-cd-blue", {1, false, "C:\\behind.png"}, twoColours(0xFFE0A0, 0x502810), playing},
    };
    bool ok = QDir().mkpath(folder);
    for (const auto& [scale, suffix] : {std::pair(1.25, "@1.25x"), std::pair(1.5, "@1.5x")}) {
        Stage stage(scale);
        playing(stage);
        ok = save(picture(stage.window("CDForm")), folder, "audio-cd", suffix) && ok;
    }
    for (const auto& [scale, suffix] : {std::pair(1.0, ""), std::pair(2.0, "@2x")}) {
        for (const auto& sheet : sheets) {
            Stage stage(scale, sheet.skin);
            if (!stage.theme.hasSegments()) {
                std::fprintf(stderr, "The segment font is missing: the pictures would not be right.\n");
                return 1;
            }
            stage.panel = sheet.panel;
            stage.files["C:\\behind.png"] = landscape();
            sheet.prepare(stage);
            ok = save(picture(stage.window("CDForm")), folder, sheet.name, suffix) && ok;
        }
        ok = save(states(scale), folder, "states", suffix) && ok;
        Stage stage(scale);
        stage.showWaiting();
        ok = save(picture(stage.window("CD1st")), folder, "waiting", suffix) && ok;
        stage.showList();
        ok = save(picture(stage.window("aplaylst")), folder, "playlist", suffix) && ok;
        auto& remote = stage.showRemote();
        ok = save(picture(stage.window("VolCntl")), folder, "volume", suffix) && ok;
        remote.showSide(true);
        ok = save(picture(stage.window("VolCntl")), folder, "volume-display", suffix) && ok;
    }
    return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc == 3 && std::strcmp(argv[1], "--pictures") == 0) {
        return writePictures(QString::fromLocal8Bit(argv[2]));
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
