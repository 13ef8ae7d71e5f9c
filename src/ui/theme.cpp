#include "ui/theme.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tessarel::ui {
namespace {

constexpr double glowReach = 8;  ///< how far a glow reaches beyond its shape
constexpr double glowDeviation = 2.2;
constexpr int keptGlows = 256;
constexpr double usualDotsPerInch = 96;

QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

QLinearGradient downward(const QRectF& rect, QRgb top, QRgb bottom) {
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, QColor::fromRgba(top));
    gradient.setColorAt(1, QColor::fromRgba(bottom));
    return gradient;
}

void roundRect(QPainter& painter, const QRectF& rect, double radius, const QBrush& fill, const QColor& edge) {
    painter.setBrush(fill);
    painter.setPen(edge.alpha() == 0 ? QPen(Qt::NoPen) : QPen(edge, 1));
    painter.drawRoundedRect(rect, radius, radius);
}

/// One pass of a running mean over a line of alpha values that lie `step` apart.
void blurLine(std::vector<float>& cells, std::size_t first, std::size_t step, int count, int radius) {
    std::vector<float> line(static_cast<std::size_t>(count));
    float sum = 0;
    const auto at = [&](int i) { return i < 0 || i >= count ? 0.0F : cells[first + static_cast<std::size_t>(i) * step]; };
    for (int i = -radius; i <= radius; ++i) {
        sum += at(i);
    }
    for (int i = 0; i < count; ++i) {
        line[static_cast<std::size_t>(i)] = sum / static_cast<float>(2 * radius + 1);
        sum += at(i + radius + 1) - at(i - radius);
    }
    for (int i = 0; i < count; ++i) {
        cells[first + static_cast<std::size_t>(i) * step] = line[static_cast<std::size_t>(i)];
    }
}

/// Three running means come close to a Gaussian blur.
void blur(std::vector<float>& cells, int width, int height, double deviation) {
    const int radius = std::max(1, static_cast<int>(std::lround(deviation * 0.94)));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y) {
            blurLine(cells, static_cast<std::size_t>(y) * static_cast<std::size_t>(width), 1, width, radius);
        }
        for (int x = 0; x < width; ++x) {
            blurLine(cells, static_cast<std::size_t>(x), static_cast<std::size_t>(width), height, radius);
        }
    }
}

QImage blurred(const QImage& shape, const QColor& color, double deviation) {
    const int width = shape.width();
    const int height = shape.height();
    std::vector<float> alpha(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const auto* row = shape.constScanLine(y);
        std::copy(row, row + width, alpha.begin() + static_cast<std::ptrdiff_t>(y) * width);
    }
    blur(alpha, width, height, deviation);
    QImage light(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y) {
        auto* out = reinterpret_cast<QRgb*>(light.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const auto a = static_cast<int>(
                alpha[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]);
            out[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), a));
        }
    }
    return light;
}

}  // namespace

Theme::Theme(double scale, Look look)
    : scale_(scale), look_(std::move(look)), pointsPerPixel_(72.0 / QGuiApplication::primaryScreen()->logicalDotsPerInchY()) {}

bool Theme::hasSegments() const {
    if (!hasSegments_) {
        hasSegments_ = QFontDatabase::hasFamily(QStringLiteral("DSEG7 Classic"));
    }
    return *hasSegments_;
}

QFont Theme::font(double size, int weight, double spacing) const {
    QFont font({QStringLiteral("Inter"), QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(size * pointsPerPixel_);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    if (spacing != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    }
    return font;
}

QFont Theme::segmentFont(double size, bool segments) const {
    if (!segments || !hasSegments()) {
        return font(size * 1.1, QFont::DemiBold);
    }
    QFont font(QStringLiteral("DSEG7 Classic"));
    font.setPointSizeF(size * pointsPerPixel_);
    font.setBold(true);
    font.setItalic(true);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

const GlassColors& Theme::glass() const {
    if (glassPanel_ != look_.panel) {
        glassPanel_ = look_.panel;
        glass_ = glassColors(look_.panel);
    }
    return glass_;
}

QColor Theme::ink(Ink ink) const {
    switch (ink) {
        case Ink::soft:
            return glass().soft;
        case Ink::lit:
            return glass().lit;
        case Ink::dim:
            return glass().dim;
        case Ink::face:
            return {palette::title};
        case Ink::faceCaption:
            return {palette::caption};
        case Ink::keyLit:
            return glass().keyLit;
        case Ink::second:
            return glass().custom ? glass().keyLit : QColor(palette::cyan);
        case Ink::warning:
            break;
    }
    return {palette::red};
}

Accent Theme::accent(Color color) const {
    if (glass().custom) {
        return customAccent(color);
    }
    switch (color) {
        case 65280:
            return {QColor(palette::green), true};
        case 0xFFFF00:
            return {QColor(palette::cyan), true};
        case 65535:
            return {QColor(palette::yellow), true};
        case colors::white:
            return {QColor(palette::softGreen), true};
        case colors::red:
        case colors::darkRed:
            return {QColor(palette::mutedRed), false};
        case colors::black:
        case 16384:
        case 16448:
        case 0x404000:
        case colors::grey:
            return {QColor(palette::glassText), false};
        default:
            return {toQColor(color), true};
    }
}

// The user's two colours mean lit and dim. What else is asked for is a colour of the program's own.
Accent Theme::customAccent(Color color) const {
    const auto& panel = look_.panel;
    if (color == panel[0]) {
        return {glass().lit, true};
    }
    if (color == colors::white) {
        return {glass().soft, true};
    }
    const auto isOneOf = [color](auto... others) { return ((color == others) || ...); };
    const bool dim = isOneOf(panel[1], panel[2], panel[5], panel[6], panel[9], panel[10], colors::black, colors::grey,
                             colors::red, colors::darkRed);
    if (dim) {
        return {glass().dim, false};
    }
    const bool shows = contrast(toQColor(color), glass().bottom) >= readable;
    return {shows ? toQColor(color) : glass().lit, true};
}

const QImage& Theme::pictureOf(const Skin& skin) const {
    if (skin.picture != picturePath_) {
        picturePath_ = skin.picture;
        const auto bytes = skin.picture.empty() || !look_.readFile ? std::nullopt : look_.readFile(skin.picture);
        picture_ = bytes ? pictureBehind(*bytes) : QImage();
    }
    return picture_;
}

void Theme::paintFace(QPainter& painter, const QRectF& design, const Skin& skin, bool titled) const {
    paintSkin(painter, design, skin, pictureOf(skin), titled);
}

void Theme::paintGlass(QPainter& painter, const QRectF& rect) const {
    roundRect(painter, rect, 9, downward(rect, glass().top.rgb(), glass().bottom.rgb()), Qt::black);
    QLinearGradient sheen(rect.topLeft(), rect.bottomLeft());
    sheen.setColorAt(0, QColor(255, 255, 255, 18));
    sheen.setColorAt(0.45, QColor(255, 255, 255, 3));
    sheen.setColorAt(0.46, QColor(255, 255, 255, 0));
    roundRect(painter, rect, 9, sheen, QColor(0x4b, 0x51, 0x5a, 0x80));
}

void Theme::paintWell(QPainter& painter, const QRectF& rect) const {
    roundRect(painter, rect, 9, QColor(palette::well), QColor(palette::keyEdge));
}

void Theme::paintKey(QPainter& painter, const QRectF& rect, KeyFace face) const {
    const bool down = face == KeyFace::down || face == KeyFace::downHovered;
    const auto fill = face == KeyFace::down          ? downward(rect, palette::keyDownTop, palette::keyDownBottom)
                      : face == KeyFace::downHovered ? downward(rect, palette::keyDownBottom, palette::keyBottom)
                      : face == KeyFace::hovered     ? downward(rect, palette::keyHoverTop, palette::keyHoverBottom)
                                                     : downward(rect, palette::keyTop, palette::keyBottom);
    roundRect(painter, rect, 6, fill, QColor(palette::keyEdge));
    roundRect(painter, rect.adjusted(1, 1, -1, -1), 5, Qt::NoBrush, QColor(255, 255, 255, down ? 8 : 23));
}

void Theme::paintFocus(QPainter& painter, const QRectF& rect, double radius) const {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 150), 4));  // sets the ring off from any ground
    painter.drawRoundedRect(rect, radius, radius);
    painter.setPen(QPen(QColor(palette::cyan), 2));
    painter.drawRoundedRect(rect, radius, radius);
}

void Theme::paintLamp(QPainter& painter, const QRectF& rect, const QString& text, const Accent& accent, KeyFace face) const {
    const bool plainDim = accent.color == glass().dim;
    const bool hovered = face == KeyFace::hovered;
    const bool down = face == KeyFace::down;
    const QColor edge = down         ? glass().lit
                        : accent.lit ? withAlpha(accent.color, 0.8)
                        : hovered    ? glass().hoverEdge
                        : plainDim   ? glass().lampEdge
                                     : withAlpha(accent.color, 0.45);
    const QColor fill = down         ? glass().bottom
                        : accent.lit ? withAlpha(accent.color, hovered ? 0.2 : 0.14)
                        : hovered    ? glass().lampHover
                                     : QColor(Qt::transparent);
    roundRect(painter, rect, 4, fill, edge);
    paintText(painter, rect.center().x(), rect.center().y() + (down ? 4.8 : 3.8), text, font(10, QFont::Normal, 0.8),
              accent.color, Qt::AlignHCenter);
}

void Theme::paintText(QPainter& painter, double x, double baseline, const QString& text, const QFont& font, const QColor& color,
                      Qt::AlignmentFlag anchor) const {
    const double width = anchor == Qt::AlignLeft ? 0 : QFontMetricsF(font).horizontalAdvance(text) - font.letterSpacing();
    const double left = anchor == Qt::AlignLeft ? x : anchor == Qt::AlignRight ? x - width : x - width / 2;
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QPointF(left, baseline), text);
}

void Theme::paintGlow(QPainter& painter, const QPainterPath& shape, const QColor& color, const QString& key) const {
    const double pixels = painter.device()->devicePixelRatioF() * scale_;
    const QRectF area = shape.boundingRect().adjusted(-glowReach, -glowReach, glowReach, glowReach);
    const QString full = key + color.name() + QString::number(pixels);
    auto found = glows_.constFind(full);
    if (found == glows_.constEnd()) {
        if (glows_.size() >= keptGlows) {
            glows_.clear();
        }
        QImage image((area.size() * pixels).toSize(), QImage::Format_Alpha8);
        image.fill(0);
        QPainter ink(&image);
        ink.setRenderHint(QPainter::Antialiasing);
        ink.scale(pixels, pixels);
        ink.translate(-area.topLeft());
        ink.fillPath(shape, Qt::black);
        ink.end();
        found = glows_.insert(full, QPixmap::fromImage(blurred(image, color, glowDeviation * pixels)));
    }
    painter.drawPixmap(QRectF(area.topLeft(), QSizeF(found->size()) / pixels), *found, QRectF(found->rect()));
}

double scaleFor(const QSizeF& largest, double dotsPerInch, const QSizeF& room) {
    const double wanted = std::clamp(dotsPerInch / usualDotsPerInch, 1.0, 2.0);
    return std::min({wanted, room.width() / largest.width(), room.height() / largest.height()});
}

double desktopScale(const QSizeF& largest) {
    const auto* screen = QGuiApplication::primaryScreen();
    return scaleFor(largest, screen->logicalDotsPerInchY(), screen->availableGeometry().size());
}

}  // namespace tessarel::ui
