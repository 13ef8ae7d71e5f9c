#pragma once
#include <QColor>
#include <QFont>
#include <QHash>
#include <QPainterPath>
#include <QPixmap>
#include <QRectF>
#include <QString>
#include <array>
#include <optional>

#include "base/color.h"

class QPainter;

namespace tessarel::ui {

/// The lit and dim colours of every readout, as the settings give them.
using PanelColors = std::array<Color, 11>;

inline constexpr PanelColors defaultPanelColors{65280, 65280, 16448, 65535, 65280, 255, 16384, 255, 0xFFFF00, 0x404000, 0};

/// The font name that a readout has when it asks for segment digits.
inline constexpr auto segmentFontName = "LcdD";

/// The colours that windows are drawn in.
namespace palette {
inline constexpr QRgb green = 0xff5df29b;
inline constexpr QRgb cyan = 0xff63e6f2;
inline constexpr QRgb yellow = 0xffffd75e;
inline constexpr QRgb red = 0xffff8a80;
inline constexpr QRgb mutedRed = 0xffc98a82;  ///< lamps that say "off"
inline constexpr QRgb softGreen = 0xff9fe9c2;
inline constexpr QRgb glassText = 0xff76a58d;  ///< captions and unlit lamps on glass
inline constexpr QRgb lampEdge = 0xff2c4a3d;
inline constexpr QRgb deadText = 0xff33423b;
inline constexpr QRgb title = 0xffc9ced6;
inline constexpr QRgb caption = 0xffa3aab4;  ///< on the face
inline constexpr QRgb keyText = 0xffd5d9df;
inline constexpr QRgb keyCaption = 0xffb9bfc8;
inline constexpr QRgb keyDim = 0xff747b85;  ///< on keys that can't be pressed now
inline constexpr QRgb keyEdge = 0xff17191d;
inline constexpr QRgb ink = 0xff04140b;  ///< text on lit ground
}  // namespace palette

/// What a state colour looks like.
struct Accent {
    QColor color;
    bool lit = false;  ///< false for dim and off colours: drawn as an outline
};

enum class KeyFace { up, hovered, down };

/// Fonts, colours and the painting of everything that windows are made of. All measures are design units, in which the Audio
/// CD window is 1040 wide and 452 high; a painter given to these functions is already scaled. Made once, after the application
/// object; outlives every view.
class Theme {
public:
    /// `scale` is logical pixels for each design unit. `panel` is read at each call, and must outlive the theme.
    Theme(double scale, const PanelColors& panel);
    explicit Theme(double scale = 1) : Theme(scale, defaultPanelColors) {}

    double scale() const { return scale_; }

    /// Text font of a height in design units. `weight` runs from 1 to 1000, 400 is plain.
    QFont font(double size, int weight = QFont::Normal, double spacing = 0) const;
    /// Segment digits where the machine has them, the text font otherwise.
    QFont segmentFont(double size, bool segments) const;
    bool hasSegments() const;

    /// The state colours of the standard settings have looks of their own; a colour that the user has chosen is used as it is.
    Accent accent(Color color) const;

    void paintFace(QPainter& painter, const QRectF& rect) const;
    void paintGlass(QPainter& painter, const QRectF& rect) const;
    void paintWell(QPainter& painter, const QRectF& rect) const;
    void paintKey(QPainter& painter, const QRectF& rect, KeyFace face) const;
    void paintFocus(QPainter& painter, const QRectF& rect, double radius) const;
    void paintLamp(QPainter& painter, const QRectF& rect, const QString& text, const Accent& accent, bool hovered) const;

    /// Text on a baseline. `anchor` tells which of its points lies at `x`.
    void paintText(QPainter& painter, double x, double baseline, const QString& text, const QFont& font, const QColor& color,
                   Qt::AlignmentFlag anchor = Qt::AlignLeft) const;

    /// A soft light around a shape, kept as a picture under `key` for the next time. `key` stands for the shape's form.
    void paintGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, const QString& key) const;

private:
    double scale_;
    const PanelColors& panel_;
    mutable std::optional<bool> hasSegments_;  ///< asked for at the first digit only: the look-up takes time
    double pointsPerPixel_;
    mutable QHash<QString, QPixmap> glows_;
};

/// Logical pixels for each design unit that suit the desktop's text size, 1 to 2; a window of `width` units fits the screen.
double desktopScale(double width);

/// Contrast of two opaque colours, 1 to 21, as accessibility guidelines measure it.
double contrast(const QColor& a, const QColor& b);

}  // namespace tessarel::ui
