#include "ui/volcntl_view.h"

#include <cstdlib>

#include "ui/bind.h"
#include "ui/widgets/flood_bar.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/level_slider.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/segment_display.h"
#include "ui/widgets/track_cell.h"

namespace tessarel::ui {
namespace {

const QRectF sidePlace(20, 50, 296, 174);

constexpr double left = 34;
constexpr double right = 302;
constexpr double keysTop = 236;
constexpr double keyMargin = 4;
constexpr double smallDigits = 28;
constexpr int cellsInRow = 10;

/// A panel that brings its own ground along, as the other side has another.
class Side : public Panel {
public:
    Side(const Theme& theme, QWidget* parent, bool glass) : Panel(theme, parent), glass_(glass) {}

protected:
    void draw(QPainter& painter) override {
        const QRectF ground = design().adjusted(0.5, 0.5, -0.5, -0.5);
        glass_ ? theme().paintGlass(painter, ground) : theme().paintWell(painter, ground);
    }

private:
    bool glass_;
};

}  // namespace

VolCntlView::VolCntlView(forms::Form& form, volume::VolCntlFace& face, const Theme& theme)
    : FormWindow(form, theme, QSizeF(designWidth, designHeight), QStringLiteral("Volume")), face_(face) {
    addTransport();
    addDisplaySide();
    addVolumeSide();
    addTitleRow();
}

void VolCntlView::drawBackground(QPainter& /*painter*/) {}

void VolCntlView::addTransport() {
    using namespace volume;
    constexpr std::array icons{Icon::prev, Icon::next, Icon::play, Icon::pause, Icon::stop, Icon::eject};
    for (int i = 0; i < transport::count; ++i) {
        auto* key = new Key(theme(), this, {.icon = icons.at(static_cast<std::size_t>(i))});
        key->place(QRectF(20 + i * 40, keysTop, 35, 34), keyMargin);
        bindCovers(*key, face_.Image1[i], face_.Image2[i], face_.Image4[i]);
        if (i == transport::play) {
            setKeyboardHome(*key);
        }
    }
    const auto turn = [this](const QString& caption, forms::Picture& control) {
        auto* key = new Key(theme(), this, {.caption = caption, .textSize = 9.5});
        key->place(QRectF(262, keysTop, 54, 34), keyMargin);
        bind(*key, control);
    };
    turn(QStringLiteral("Display"), face_.toDisplayKey);
    turn(QStringLiteral("Volume"), face_.toVolumeKey);
}

void VolCntlView::addTitleRow() {
    auto* tray = new Key(theme(), this, {.icon = Icon::tray, .round = true});
    tray->place(titleKeyPlace(1), keyMargin);
    bind(*tray, face_.trayKey);
    auto* power = new Key(theme(), this, {.icon = Icon::power, .round = true});
    power->place(titleKeyPlace(0), keyMargin);
    power->setAccent(Ink::warning);
    bind(*power, face_.closeKey);
}

void VolCntlView::addVolumeSide() {
    auto* side = new Side(theme(), this, false);
    side->place(sidePlace);
    bind(*side, face_.volumeSide);
    auto* caption = new GlassLabel(theme(), side,
                                   {.size = 10, .spacing = 1.5, .ink = Ink::faceCaption, .upperCase = true, .ownColor = true});
    caption->place(QRectF(left, 56, 100, 16));
    bind(*caption, face_.sideCaption);

    auto* sliders = new Panel(theme(), side);
    sliders->place(QRectF(left, 72, 160, 148));
    bind(*sliders, face_.sliderPanel);
    const auto add = [&](forms::Slider& level, forms::Label& figure, double middle) {
        auto* slider = new LevelSlider(theme(), sliders);
        slider->place(QRectF(middle - 15, 86, 30, 104), 10);
        bind(*slider, level);
        auto* text = new GlassLabel(
            theme(), sliders,
            {.size = 12, .weight = QFont::DemiBold, .ink = Ink::face, .anchor = Qt::AlignHCenter, .ownColor = true});
        text->place(QRectF(middle - 20, 199, 40, 18));
        bind(*text, figure);
    };
    add(face_.leftSlider, face_.leftFigure, 82);
    add(face_.rightSlider, face_.rightFigure, 146);

    auto* mute = new Key(theme(), side, {});
    mute->place(QRectF(206, 99, 90, 34), keyMargin);
    bindTurns(*mute, face_.muteKey, face_.restoreKey);
    mute->keep(face_.muteCaption.Caption.onChange(
        [mute](const std::string& text) { mute->setCaption(QString::fromStdString(text)); }));
    auto* link = new Key(theme(), side, {.caption = QStringLiteral("Link")});
    link->place(QRectF(206, 143, 90, 34), keyMargin);
    bindTurns(*link, face_.link[1], face_.link[0]);
    link->keep(face_.sliderPanel.Visible.onChange([link](bool visible) { link->setVisible(visible); }));
}

void VolCntlView::addDisplaySide() {
    auto* side = new Side(theme(), this, true);
    side->place(sidePlace);
    bind(*side, face_.displaySide);
    addReadout(*side);
    addCalendar(*side);
}

void VolCntlView::addReadout(Panel& side) {
    const auto line = [&](forms::Label& label, const QRectF& place, GlassLabel::Style style) {
        auto* made = new GlassLabel(theme(), &side, style);
        made->place(place, 2);
        bind(*made, label);
    };
    auto* digits = new SegmentDisplay(theme(), &side, QStringLiteral("88"), smallDigits);
    digits->place(QRectF(left, 66, 46, smallDigits), 6);
    bind(*digits, face_.trackDigits);
    auto* time = new SegmentDisplay(theme(), &side, QStringLiteral("88:88"), smallDigits);
    time->place(QRectF(92, 66, 126, smallDigits), 6);
    bind(*time, face_.timeText);
    auto* lamp = new Lamp(theme(), &side, QStringLiteral("PGM"));
    lamp->place(QRectF(258, 64, 44, 18), 3);
    bind(*lamp, face_.programLamp);
    line(face_.sourceLabel, QRectF(232, 84, 70, 15), {.size = 10, .ink = Ink::dim, .anchor = Qt::AlignRight, .ownColor = true});
    line(face_.upperLine, QRectF(left, 102, right - left, 20), {.size = 14, .weight = QFont::Medium, .ink = Ink::lit});
    line(face_.lowerLine, QRectF(left, 122, right - left, 17), {.size = 12, .ownColor = true});
    auto* bar = new FloodBar(theme(), &side);
    bar->place(QRectF(left, 146, right - left, 8), 8);
    bind(*bar, face_.statusBar);
}

void VolCntlView::addCalendar(Panel& side) {
    auto* caption =
        new GlassLabel(theme(), &side, {.size = 9.5, .spacing = 1, .ink = Ink::dim, .upperCase = true, .ownColor = true});
    caption->place(QRectF(left, 162, right - left, 14));
    bind(*caption, face_.calendarLabel);
    constexpr double pitch = (right - left + 2) / cellsInRow;
    for (int i = 0; i < volume::calendarCells; ++i) {
        auto* cell = new TrackCell(theme(), &side, i + 1);
        cells_.at(static_cast<std::size_t>(i)) = cell;
        const int row = i / cellsInRow;
        cell->place(QRectF(left + i % cellsInRow * pitch, 179 + row * 19, pitch - 2, 17), 1);
        bind(*cell, face_.cellNumbers[i]);
    }
    keep(face_.trackDigits.Caption.onChange([this](const std::string&) { showCurrentCell(); }));
}

void VolCntlView::showCurrentCell() {
    const int current = std::atoi(face_.trackDigits.Caption.get().c_str());
    for (auto* cell : cells_) {
        cell->setCurrent(cell->number() == current);
    }
}

}  // namespace tessarel::ui
