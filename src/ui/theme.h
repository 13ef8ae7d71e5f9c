#pragma once
#include <QFont>
#include <QHash>
#include <QPainterPath>
#include <QPixmap>
#include <QRectF>
#include <QString>
#include <optional>

#include "ui/skin.h"

class QPainter;

namespace tessarel::ui {

/// The font name that a readout has when it asks for segment digits.
inline constexpr auto segmentFontName = "LcdD";

/// What a state colour looks like.
struct Accent {
    QColor color;
    bool lit = false;  ///< false for dim and off colours: drawn as an outline
};

/// What a text or sign is drawn in.
enum class Ink {
    soft,  ///< plain text on glass
    lit,   ///< bright text on glass
    dim,   ///< captions on glass
    face,  ///< text beside the glass
    faceCaption,
    keyLit,   ///< signs of keys that are on
    second,   ///< the same in a second colour
    warning,  ///< the sign of the key that ends the program
};

enum class KeyFace { up, hovered, down, downHovered };

/// Fonts, colours and the painting of everything that windows are made of. All measures are design units, in which the Audio
/// CD window is 1040 wide and 452 high; a painter given to these functions is already scaled. Made once, after the application
/// object; outlives every view.
class Theme {
public:
    /// `scale` is logical pixels for each design unit.
    Theme(double scale, Look look);
    explicit Theme(double scale = 1) : Theme(scale, Look{defaultPanelColors}) {}

    double scale() const { return scale_; }

    /// Text font of a height in design units. `weight` runs from 1 to 1000, 400 is plain.
    QFont font(double size, int weight = QFont::Normal, double spacing = 0) const;
    /// Segment digits where the machine has them, the text font otherwise.
    QFont segmentFont(double size, bool segments) const;
    bool hasSegments() const;

    /// The skin that a window opens with now.
    Skin skin() const { return look_.skin ? look_.skin() : Skin{}; }
    /// The colours of the display glass, as the settings have them now.
    const GlassColors& glass() const;

    QColor ink(Ink ink) const;
    /// The state colours of the standard settings have looks of their own; a colour that the user has chosen is used as it is.
    Accent accent(Color color) const;

    /// The face of a window whose design is `design`, with the frame around it, which is the ground of a title row.
    void paintFace(QPainter& painter, const QRectF& design, const Skin& skin, bool titled) const;
    void paintGlass(QPainter& painter, const QRectF& rect) const;
    void paintWell(QPainter& painter, const QRectF& rect) const;
    void paintKey(QPainter& painter, const QRectF& rect, KeyFace face) const;
    void paintFocus(QPainter& painter, const QRectF& rect, double radius) const;
    void paintLamp(QPainter& painter, const QRectF& rect, const QString& text, const Accent& accent, KeyFace face) const;

    /// Text on a baseline. `anchor` tells which of its points lies at `x`.
    void paintText(QPainter& painter, double x, double baseline, const QString& text, const QFont& font, const QColor& color,
                   Qt::AlignmentFlag anchor = Qt::AlignLeft) const;

    /// A soft light around a shape, kept as a picture under `key` for the next time. `key` stands for the shape's form.
    void paintGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, const QString& key) const;

private:
    Accent customAccent(Color color) const;
    const QImage& pictureOf(const Skin& skin) const;

    double scale_;
    Look look_;
    mutable std::optional<PanelColors> glassPanel_;  ///< that `glass_` was made of
    mutable GlassColors glass_;
    mutable std::string picturePath_;
    mutable QImage picture_;
    mutable std::optional<bool> hasSegments_;  ///< asked for at the first digit only: the look-up takes time
    double pointsPerPixel_;
    mutable QHash<QString, QPixmap> glows_;
};

/// Logical pixels for each design unit that suit the size of text, 1 to 2; less where a window of `largest` units would not fit
/// the room.
double scaleFor(const QSizeF& largest, double dotsPerInch, const QSizeF& room);
/// The same for the desktop's first screen as it is now.
double desktopScale(const QSizeF& largest);

}  // namespace tessarel::ui
