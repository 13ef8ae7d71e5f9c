#include "ui/cdform_view.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cstdlib>

#include "ui/bind.h"
#include "ui/keypad_entry.h"
#include "ui/widgets/drawer.h"
#include "ui/widgets/flood_bar.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/level_slider.h"
#include "ui/widgets/more_tracks.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/segment_display.h"
#include "ui/widgets/track_cell.h"

namespace tessarel::ui {
namespace {

const QRectF glass(28, 50, 716, 246);
const QRectF volumeWell(764, 50, 136, 246);
const QRectF artPlace(916, 50, 96, 96);

constexpr double glassLeft = 52;
constexpr double glassRight = 720;
constexpr double digitGlow = 9;

/// A layout of the readout.
struct Readout {
    double digitHeight = 0;
    QRectF digits;
    QRectF time;
    std::array<QRectF, 6> lamps;  ///< disc, library, repeat, A-B, program, wallpaper
    double linesTop = 0;
    double linesHeight = 0;
};

const Readout usualReadout{44,
                           {glassLeft, 84, 70, 44},
                           {148, 84, 198, 44},
                           {QRectF(376, 70, 58, 20), QRectF(442, 70, 62, 20), QRectF(512, 70, 55, 20), QRectF(575, 70, 48, 20),
                            QRectF(631, 70, 89, 20), QRectF(376, 98, 58, 20)},
                           142,
                           56};
const Readout expandedReadout{68,
                              {glassLeft, 83, 108, 68},
                              {180, 83, 360, 68},
                              {QRectF(566, 70, 58, 20), QRectF(632, 70, 88, 20), QRectF(566, 98, 58, 20),
                               QRectF(632, 98, 88, 20), QRectF(632, 126, 88, 20), QRectF(566, 126, 58, 20)},
                              156,
                              44};

constexpr double lineSpread = 1.45;
constexpr double leastSpread = 1.2;
constexpr double keyMargin = 4;
constexpr double cellPitch = 33.55;

/// A moonlit landscape stands where a disc has no jacket of its own.
void paintLandscape(QPainter& painter, const QRectF& place) {
    QPainterPath frame;
    frame.addRoundedRect(place, 6, 6);
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.setBrush(QColor(0x1a, 0x2a, 0x4a));
    painter.drawPath(frame);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf4, 0xe9, 0xc1));
    painter.drawEllipse(QPointF(place.left() + 62, place.top() + 34), 20, 20);
    QPainterPath hills(place.topLeft() + QPointF(0, 76));
    hills.quadTo(place.topLeft() + QPointF(24, 60), place.topLeft() + QPointF(48, 76));
    hills.quadTo(place.topLeft() + QPointF(72, 92), place.topLeft() + QPointF(96, 76));
    hills.lineTo(place.bottomRight());
    hills.lineTo(place.bottomLeft());
    painter.setBrush(QColor(0x0f, 0x1b, 0x33));
    painter.drawPath(hills.intersected(frame));
}

QString modeText(std::int16_t playMode) {
    switch (playMode) {
        case audio::programmed:
            return QStringLiteral("Program");
        case audio::singleTrack:
            return QStringLiteral("Single track");
        default:
            return QStringLiteral("Whole disc");
    }
}

}  // namespace

QString discSummary(const audio::PlayerState& player) {
    if (player.discTrackCount < 1) {
        return {};
    }
    QString text = modeText(player.playMode);
    if (player.playMode == audio::programmed && player.programCount > 0) {
        text += QStringLiteral(" of %1").arg(player.programCount);
    }
    text += player.discTrackCount == 1 ? QStringLiteral("  ·  1 track")
                                       : QStringLiteral("  ·  %1 tracks").arg(player.discTrackCount);
    if (!player.totalTimeText.empty()) {
        text += QStringLiteral("  ·  total ") + QString::fromStdString(player.totalTimeText);
    }
    return text;
}

CdFormView::CdFormView(const CdFormParts& parts, const Theme& theme)
    : FormWindow(parts.form, theme, QSizeF(designWidth, designHeight), QStringLiteral("Audio CD")), parts_(parts) {
    // In the order in which the Tab key goes through them.
    addTransport();
    addModeKeys();
    addProgramKeys();
    addReadout();
    addLamps();
    addLines();
    addBarAndGrid();
    addFooter();
    addVolume();
    addFunctionKeys();
    addTitleKeys();
    addDrawer();
    addKeypadEntry();
}

void CdFormView::drawBackground(QPainter& painter) {
    theme().paintGlass(painter, glass);
    theme().paintText(painter, glassLeft, 76, QStringLiteral("TRACK"), theme().font(10, QFont::Normal, 1.5),
                      theme().glass().dim);
    theme().paintWell(painter, volumeWell);
    theme().paintText(painter, 832, 72, QStringLiteral("VOLUME"), theme().font(10, QFont::Normal, 1.5),
                      QColor(palette::caption), Qt::AlignHCenter);
    paintLandscape(painter, artPlace);
}

Key& CdFormView::key(const QRectF& place, const QString& caption) {
    auto* made = new Key(theme(), this, {.caption = caption});
    made->place(place, keyMargin);
    return *made;
}

void CdFormView::addReadout() {
    auto& face = parts_.face;
    digits_ = new SegmentDisplay(theme(), this, QStringLiteral("88"), usualReadout.digitHeight);
    bind(*digits_, face.trackDigits);
    timeCaption_ =
        new GlassLabel(theme(), this, {.size = 10, .spacing = 1.5, .ink = Ink::dim, .upperCase = true, .ownColor = true});
    bind(*timeCaption_, face.timeCaption);
    time_ = new SegmentDisplay(theme(), this, QStringLiteral("88:88"), usualReadout.digitHeight);
    bind(*time_, face.timeText);
    keep(face.trackDigits.Caption.onChange([this](const std::string&) { showCurrentCell(); }));
    keep(face.timeText.Caption.onChange([this](const std::string&) {
        showCurrentCell();
        showFooter();
    }));
}

Lamp* CdFormView::lamp(forms::Label& label, const QString& text) {
    auto* made = new Lamp(theme(), this, text);
    bind(*made, label);
    return made;
}

void CdFormView::addLamps() {
    auto& face = parts_.face;
    lamps_ = {lamp(face.discLamp),    lamp(face.recordLamp, QStringLiteral("LIBRARY")),
              lamp(face.repeatLamp),  lamp(face.abLamp, QStringLiteral("A – B")),
              lamp(face.programLamp), lamp(face.wallpaperLamp)};
    lamps_.back()->setCheckable();
}

// Bar, grid and footer keep their places; readout, lamps and lines share the rest of the glass.
void CdFormView::layReadout() {
    const auto& layout = parts_.expandedDisplay ? expandedReadout : usualReadout;
    digits_->setSize(layout.digitHeight);
    digits_->place(layout.digits, digitGlow);
    time_->setSize(layout.digitHeight);
    time_->place(layout.time, digitGlow);
    timeCaption_->place(QRectF(layout.time.left() + 12, 64, 100, 17), 3);
    for (std::size_t i = 0; i < lamps_.size(); ++i) {
        lamps_.at(i)->place(layout.lamps.at(i), 3);
    }
    layLines();
}

void CdFormView::addLines() {
    auto& face = parts_.face;
    upperLine_ = new GlassLabel(theme(), this, {.size = 19, .weight = QFont::Medium, .ink = Ink::lit});
    lowerLine_ = new GlassLabel(theme(), this, {.size = 15, .ownColor = true});
    bind(*upperLine_, face.upperLine);
    bind(*lowerLine_, face.lowerLine);
    upperLine_->onResize = [this] { layLines(); };
    lowerLine_->onResize = [this] { layLines(); };
    keep(parts_.expandedDisplay.onChange([this](bool) { layReadout(); }));
}

// Both lines share a place. Larger letters take the room between them first, and are drawn smaller when that is used up.
void CdFormView::layLines() {
    const double asked = upperLine_->askedSize() + lowerLine_->askedSize();
    const auto& layout = parts_.expandedDisplay ? expandedReadout : usualReadout;
    const double spread = std::clamp(layout.linesHeight / asked, leastSpread, lineSpread);
    const double shrink = std::min(1.0, layout.linesHeight / (asked * spread));
    upperLine_->setShrink(shrink);
    lowerLine_->setShrink(shrink);
    const double upper = upperLine_->textSize() * spread;
    const double lower = lowerLine_->textSize() * spread;
    const double width = glassRight - glassLeft;
    const double top = layout.linesTop + (layout.linesHeight - upper - lower) / 2;
    upperLine_->place(QRectF(glassLeft, top, width, upper), 3);
    lowerLine_->place(QRectF(glassLeft, top + upper, width, lower), 3);
}

void CdFormView::addBarAndGrid() {
    auto& face = parts_.face;
    bar_ = new FloodBar(theme(), this);
    bar_->place(QRectF(glassLeft, 204, glassRight - glassLeft, 10), 8);
    bind(*bar_, face.statusBar);
    bar_->marks = [this] {
        const double width = std::max(1, parts_.face.statusBar.Width);
        return std::pair(parts_.player.markA / width, parts_.player.markB / width);
    };
    keep(face.abLamp.ForeColor.onChange([this](Color) { bar_->update(); }));
    for (int i = 0; i < audio::gridCells; ++i) {
        auto* cell = new TrackCell(theme(), this, i + 1);
        cells_.at(static_cast<std::size_t>(i)) = cell;
        cell->place(QRectF(glassLeft + i * cellPitch, 232, 31.4, 26), 1);
        bind(*cell, face.cellNumbers[i]);
        bindGestures(*cell, face.cells[i]);
        cell->setAccessibleName(QStringLiteral("Track %1").arg(i + 1));
        cell->keep(face.cellCaps[i].ForeColor.onChange([cell](Color color) { cell->setDead(color == colors::grey); }));
        keep(face.cellNumbers[i].ForeColor.onChange([this](Color) { showCurrentCell(); }));
    }
    auto* more = new MoreTracks(theme(), this);
    more->place(QRectF(724, 232, 16, 26));
    bind(*more, face.cellNumbers[audio::moreTracksMarker]);
}

void CdFormView::showCurrentCell() {
    const int current = parts_.player.playStarted > 0 ? std::atoi(parts_.face.trackDigits.Caption.get().c_str()) : 0;
    for (auto* cell : cells_) {
        if (cell != nullptr) {
            cell->setCurrent(cell->number() == current);
        }
    }
}

void CdFormView::addFooter() {
    const GlassLabel::Style left{.size = 10.5, .spacing = 0.4, .ink = Ink::dim};
    footer_ = new GlassLabel(theme(), this, left);
    footer_->place(QRectF(glassLeft, 268, 520, 18));
    footer_->setAccessibleName(QStringLiteral("Disc"));
    discId_ = new GlassLabel(theme(), this, {.size = 10.5, .spacing = 0.4, .ink = Ink::dim, .anchor = Qt::AlignRight});
    discId_->place(QRectF(580, 268, glassRight - 580, 18));
    discId_->setAccessibleName(QStringLiteral("Disc number"));
    for (auto& light : parts_.face.Image3) {
        keep(light.Visible.onChange([this](bool) { showFooter(); }));
    }
    showFooter();
}

void CdFormView::showFooter() {
    if (footer_ != nullptr) {
        footer_->setCaption(discSummary(parts_.player));
        discId_->setCaption(parts_.player.discTrackCount < 1 || parts_.record.discFileId.empty()
                                ? QString()
                                : QStringLiteral("No. ") + QString::fromStdString(parts_.record.discFileId));
    }
}

void CdFormView::addVolume() {
    auto& face = parts_.face;
    auto* panel = new Panel(theme(), this);
    panel->place(QRectF(768, 80, 128, 210));
    bind(*panel, face.sliderPanel);
    const auto add = [&](forms::Slider& level, forms::Label& figure, double middle) {
        auto* slider = new LevelSlider(theme(), panel);
        slider->place(QRectF(middle - 15, 88, 30, 128), 10);
        bind(*slider, level);
        auto* text = new GlassLabel(theme(), panel,
                                    {.size = 12, .weight = QFont::DemiBold, .ink = Ink::face, .anchor = Qt::AlignHCenter});
        text->place(QRectF(middle - 20, 223, 40, 18));
        bind(*text, figure);
    };
    add(face.leftSlider, face.leftFigure, 804);
    add(face.rightSlider, face.rightFigure, 860);
    const auto small = [&](double x, const QString& caption) {
        auto* made = new Key(theme(), panel, {.caption = caption, .textSize = 9.5});
        made->place(QRectF(x, 250, 36, 32), keyMargin);
        return made;
    };
    bindTurns(*small(774, QStringLiteral("Mute")), face.Image2[1], face.Image2[0]);
    bindTurns(*small(814, QStringLiteral("Link")), face.Image9[1], face.Image9[0]);
    bind(*small(854, QStringLiteral("Mix")), face.mixerKey);
    bind(key(QRectF(788, 154, 88, 38), QStringLiteral("Mixer")), face.mixerButton);
}

void CdFormView::addFunctionKeys() {
    auto& face = parts_.face;
    const std::array captions{QStringLiteral("Main Menu"), QStringLiteral("Disc Info"), QStringLiteral("Random"),
                              QStringLiteral("Repeat")};
    const std::array covers{&face.mainMenuCover, &face.discInfoCover, &face.randomCover, &face.repeatCover};
    for (int i = 0; i < audio::functionKeys::count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        auto& made = key(QRectF(916, 156 + i * 35.3, 96, 30), captions.at(index));
        bind(made, face.Image10[i]);
        bindCover(made, *covers.at(index));
        if (i == audio::functionKeys::repeat) {
            made.setCheckable();
            made.setAccent(Ink::second);
            // Not the lamp: it says "PAUSE" at times.
            made.keep(parts_.repeating.onChange([&made](bool on) { made.setLit(on); }));
        }
    }
}

void CdFormView::addTransport() {
    auto& face = parts_.face;
    struct Place {
        double x;
        double width;
        const char* caption;
        Icon icon;
    };
    constexpr std::array<Place, 6> transport{{{28, 86, "Prev", Icon::prev},
                                              {122, 86, "Next", Icon::next},
                                              {216, 110, "Play", Icon::play},
                                              {334, 86, "Pause", Icon::pause},
                                              {428, 86, "Stop", Icon::stop},
                                              {522, 86, "Eject", Icon::eject}}};
    constexpr std::array<Place, 4> seek{{{630, 89.5, "Rewind", Icon::rewind},
                                         {727.5, 89.5, "Time", Icon::time},
                                         {825, 89.5, "Repeat", Icon::none},
                                         {922.5, 89.5, "Forward", Icon::forward}}};
    const auto make = [this](const Place& place) {
        auto* made = new Key(theme(), this,
                             {.caption = QString::fromUtf8(place.caption),
                              .icon = place.icon,
                              .sign = place.icon == Icon::none ? QStringLiteral("A–B") : QString()});
        made->place(QRectF(place.x, 312, place.width, 56), keyMargin);
        return made;
    };
    for (int i = 0; i < audio::transport::count; ++i) {
        Key& key = *make(transport.at(static_cast<std::size_t>(i)));
        bindCovers(key, face.icntla[i], face.icntlc[i], face.icntlb[i]);
        if (i == audio::transport::play) {
            setKeyboardHome(key);
        }
        if (i == audio::transport::play || i == audio::transport::pause) {
            key.leaveSpaceToWindow();
        }
    }
    for (int i = 0; i < audio::seekKeys::count; ++i) {
        bindCovers(*make(seek.at(static_cast<std::size_t>(i))), face.scntla[i], face.scntlc[i], face.scntlb[i]);
    }
}

void CdFormView::addModeKeys() {
    auto& face = parts_.face;
    const std::array captions{QStringLiteral("Program"), QStringLiteral("Single"), QStringLiteral("Whole Disc"),
                              QStringLiteral("Intro")};
    for (int i = 0; i < audio::modeKeys::count; ++i) {
        auto& made = key(QRectF(28 + i * 108, 384, 100, 38), captions.at(static_cast<std::size_t>(i)));
        bindLight(made, face.Image4[i], face.Image3[i]);
    }
    bind(key(QRectF(352, 384, 100, 38), QStringLiteral("Enhanced CD")), face.enhancedKey);
}

void CdFormView::addProgramKeys() {
    auto& face = parts_.face;
    const std::array captions{QStringLiteral("Keypad"), QStringLiteral("Clear"), QStringLiteral("Save"),
                              QStringLiteral("Recall"), QStringLiteral("Info")};
    const std::array covers{&face.keypadCover, &face.clearCover, &face.saveCover, &face.recallCover, &face.informationCover};
    for (int i = 0; i < audio::programKeys::count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        auto& made = key(QRectF(474 + i * 82, 384, 74, 38), captions.at(index));
        bind(made, face.Image16[i]);
        bindCover(made, *covers.at(index));
    }
    auto& display = key(QRectF(890, 384, 57, 38), QStringLiteral("Display"));
    display.setCheckable();
    bind(display, face.expandKey);
    display.keep(parts_.expandedDisplay.onChange([&display](bool on) { display.setLit(on); }));
    bind(key(QRectF(955, 384, 57, 38), QStringLiteral("Web")), face.webKey);
}

void CdFormView::addTitleKeys() {
    auto& face = parts_.face;
    auto* minimise = new Key(theme(), this, {.icon = Icon::minimise, .round = true});
    minimise->place(QRectF(958, 16, 24, 24), keyMargin);
    bind(*minimise, face.minimiseKey);
    auto* power = new Key(theme(), this, {.icon = Icon::power, .round = true});
    power->place(QRectF(994, 16, 24, 24), keyMargin);
    power->setAccent(Ink::warning);
    bind(*power, face.exitKey);
    power->keep(face.exitLabel.ForeColor.onChange([power](Color color) { power->setLit(color == colors::darkRed); }));
}

void CdFormView::addDrawer() {
    auto* drawer = new Drawer(theme(), this);
    drawer->place(QRectF(glass.left() + 1, 196, glass.width() - 2, 99));
    bindGestures(*drawer, parts_.face.drawerPanel);
    drawer->setObjectName(QString::fromStdString(parts_.face.drawerPanel.name()));
    drawer->setAccessibleName(QStringLiteral("Disc drawer, open"));
    keep(parts_.drawerPosition.onChange(
        [this, drawer](int position) { drawer->setOpen(static_cast<double>(position) / std::max(1, parts_.drawerSteps)); }));
}

// Few people ever open the keypad: its box is made when they do.
void CdFormView::addKeypadEntry() {
    keep(parts_.face.keypadEntry.Visible.onChange([this](bool visible) {
        if (visible && entry_ == nullptr) {
            entry_ = makeKeypadEntry(*this, theme(), QRectF(631, 264, 89, 24));
            bind(*entry_, parts_.face.keypadEntry);
        }
    }));
}

}  // namespace tessarel::ui
