#pragma once
#include <QColor>
#include <array>

#include "base/color.h"
#include "ui/palette.h"

namespace tessarel::ui {

/// The lit and dim colours of every readout, as the settings give them.
using PanelColors = std::array<Color, 11>;

inline constexpr PanelColors defaultPanelColors{65280, 65280, 16448, 65535, 65280, 255, 16384, 255, 0xFFFF00, 0x404000, 0};

/// What the display glass and all that shines on it is drawn in.
struct GlassColors {
    QColor top{0x0d, 0x14, 0x12};
    QColor bottom{0x07, 0x0b, 0x0a};
    QColor lit{palette::green};
    QColor soft{palette::softGreen};  ///< plain text
    QColor dim{palette::glassText};   ///< captions, unlit lamps and cells
    QColor lampEdge{0x2c, 0x4a, 0x3d};
    QColor lampHover{0x5d, 0xf2, 0x9b, 15};  ///< light over a dim lamp under the mouse
    QColor ghost{0x1f, 0x4a, 0x36, 0x59};    ///< unlit segments
    QColor cell{0x0e, 0x1d, 0x16};
    QColor cellLit{0x12, 0x30, 0x1f};
    QColor cellEdge{0x1d, 0x3a, 0x2c};
    QColor hoverEdge{0x3d, 0x6b, 0x54};
    QColor dead{0x33, 0x42, 0x3b};  ///< numbers of cells without a track
    QColor deadEdge{0x18, 0x21, 0x1d};
    QColor trough{0x10, 0x24, 0x1b};
    QColor knob{0xea, 0xff, 0xf3};
    QColor mark{palette::yellow};   ///< marks on the bar
    QColor ink{0x04, 0x14, 0x0b};   ///< text on lit ground
    QColor keyLit{palette::green};  ///< lit signs of keys, and levels
    bool custom = false;            ///< made of the user's two colours
};

/// The looks of the standard colours, or others made of the user's two: glass in the back colour, light in the front colour.
/// Where the two lie too close for text, the glass gives way, towards black or white.
GlassColors glassColors(const PanelColors& panel);

/// Contrast of two opaque colours, 1 to 21, as accessibility guidelines measure it.
double contrast(const QColor& a, const QColor& b);

/// The contrast that text must have.
inline constexpr double readable = 4.5;

/// `share` of 0 gives the first colour, 1 the second.
QColor mixed(const QColor& first, const QColor& second, double share);

QColor toQColor(Color color);

}  // namespace tessarel::ui
