#include "ui/glass_colors.h"

#include <algorithm>
#include <cmath>

namespace tessarel::ui {
namespace {

constexpr double litCellShare = 0.14;
constexpr int steps = 20;

double luminance(const QColor& color) {
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The first of the colours from `from` towards `to` that can be read on, or as text against, `other`.
QColor readableTowards(const QColor& from, const QColor& to, const QColor& other) {
    for (int i = 0; i < steps; ++i) {
        const QColor tried = mixed(from, to, static_cast<double>(i) / steps);
        if (contrast(tried, other) >= readable) {
            return tried;
        }
    }
    return to;
}

/// Whether text of a colour can be read on a ground, and on the cells that stand out from it.
bool carries(const QColor& ground, const QColor& fore, double cellShare) {
    return contrast(fore, ground) >= readable && contrast(fore, mixed(ground, fore, cellShare)) >= readable;
}

/// The back colour as ground for the front colour, lit cells included.
QColor groundFor(const QColor& fore, const QColor& back) {
    const QColor near = luminance(fore) >= luminance(back) ? Qt::black : Qt::white;
    const QColor far = near == QColor(Qt::black) ? Qt::white : Qt::black;
    const QColor away = contrast(near, fore) >= readable ? near : far;
    for (int i = 0; i < steps; ++i) {
        const QColor tried = mixed(back, away, static_cast<double>(i) / steps);
        if (carries(tried, fore, litCellShare)) {
            return tried;
        }
    }
    return away;
}

/// The front colour dimmed as far as text allows.
QColor dimmed(const QColor& fore, const QColor& ground, double most) {
    return readableTowards(mixed(fore, ground, most), fore, ground);
}

QColor onKeys(const QColor& fore, const QColor& back) {
    const QColor key(palette::keyDownBottom);
    return contrast(fore, key) >= readable   ? fore
           : contrast(back, key) >= readable ? back
                                             : readableTowards(fore, Qt::white, key);
}

}  // namespace

QColor toQColor(Color color) { return {redOf(color), greenOf(color), blueOf(color)}; }

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](double a, double b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

GlassColors glassColors(const PanelColors& panel) {
    if (panel == defaultPanelColors) {
        return {};
    }
    const QColor fore = toQColor(panel[0]);
    const QColor back = toQColor(panel[10]);
    const QColor ground = groundFor(fore, back);
    const bool light = luminance(ground) > luminance(fore);
    const double room = carries(ground, fore, litCellShare) ? 1 : 0;
    GlassColors made;
    made.custom = true;
    made.top = light ? mixed(ground, Qt::white, 0.15) : ground;
    made.bottom = light ? ground : mixed(ground, Qt::black, 0.3);
    made.lit = fore;
    made.cell = mixed(ground, fore, room * 0.06);
    made.cellLit = mixed(ground, fore, room * litCellShare);
    made.soft = dimmed(fore, made.cell, 0.12);
    made.dim = dimmed(fore, made.cell, 0.4);
    made.lampEdge = mixed(ground, fore, 0.35);
    made.lampHover = fore;
    made.lampHover.setAlphaF(static_cast<float>(room * 0.06));
    made.ghost = mixed(ground, fore, 0.1);
    made.cellEdge = mixed(ground, fore, 0.25);
    made.hoverEdge = mixed(ground, fore, 0.6);
    made.dead = mixed(ground, fore, 0.28);
    made.deadEdge = mixed(ground, fore, 0.12);
    made.trough = mixed(ground, fore, 0.16);
    made.knob = light ? fore : mixed(fore, Qt::white, 0.75);
    made.mark = light ? mixed(fore, Qt::red, 0.55) : QColor(palette::yellow);
    made.ink = contrast(ground, fore) >= readable ? ground : readableTowards(ground, light ? Qt::white : Qt::black, fore);
    made.keyLit = onKeys(fore, back);
    return made;
}

}  // namespace tessarel::ui
