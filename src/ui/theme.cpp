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

double luminance(const QColor& color) {
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

Theme::Theme(double scale, const PanelColors& panel)
    : scale_(scale), panel_(panel), pointsPerPixel_(72.0 / QGuiApplication::primaryScreen()->logicalDotsPerInchY()) {}

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

Accent Theme::accent(Color color) const {
    const auto isOneOf = [&](auto... indices) { return ((color == panel_[indices]) || ...); };
    const bool dim = isOneOf(2U, 6U, 9U, 10U) || color == colors::black;
    switch (color) {
        case 65280:
            return {QColor(palette::green), !dim};
        case 0xFFFF00:
            return {QColor(palette::cyan), !dim};
        case 65535:
            return {QColor(palette::yellow), !dim};
        case colors::red:
        case colors::darkRed:
            return {QColor(palette::mutedRed), false};
        case colors::white:
            return {QColor(palette::softGreen), !dim};
        case colors::black:
        case 16384:
        case 16448:
        case 0x404000:
        case colors::grey:
            return {QColor(palette::glassText), false};
        default:
            return {QColor(redOf(color), greenOf(color), blueOf(color)), !dim};
    }
}

void Theme::paintFace(QPainter& painter, const QRectF& rect) const {
    QLinearGradient face(rect.topLeft(), rect.bottomLeft());
    face.setColorAt(0, QColor(0x34, 0x38, 0x3e));
    face.setColorAt(0.5, QColor(0x2a, 0x2d, 0x32));
    face.setColorAt(1, QColor(0x20, 0x23, 0x27));
    roundRect(painter, rect.adjusted(0.5, 0.5, -0.5, -0.5), 12, face, QColor(0x14, 0x16, 0x1a));
    roundRect(painter, rect.adjusted(1.5, 1.5, -1.5, -1.5), 11, Qt::NoBrush, QColor(0x56, 0x5c, 0x66, 0x80));
}

void Theme::paintGlass(QPainter& painter, const QRectF& rect) const {
    roundRect(painter, rect, 9, downward(rect, 0xff0d1412, 0xff070b0a), Qt::black);
    QLinearGradient sheen(rect.topLeft(), rect.bottomLeft());
    sheen.setColorAt(0, QColor(255, 255, 255, 18));
    sheen.setColorAt(0.45, QColor(255, 255, 255, 3));
    sheen.setColorAt(0.46, QColor(255, 255, 255, 0));
    roundRect(painter, rect, 9, sheen, QColor(0x4b, 0x51, 0x5a, 0x80));
}

void Theme::paintWell(QPainter& painter, const QRectF& rect) const {
    roundRect(painter, rect, 9, QColor(0x24, 0x27, 0x2c), QColor(palette::keyEdge));
}

void Theme::paintKey(QPainter& painter, const QRectF& rect, KeyFace face) const {
    const bool down = face == KeyFace::down;
    const bool hovered = face == KeyFace::hovered;
    const auto fill = down      ? downward(rect, 0xff24272b, 0xff2c3035)
                      : hovered ? downward(rect, 0xff4d535c, 0xff3a3f46)
                                : downward(rect, 0xff454a52, 0xff33373d);
    roundRect(painter, rect, 6, fill, QColor(palette::keyEdge));
    roundRect(painter, rect.adjusted(1, 1, -1, -1), 5, Qt::NoBrush, QColor(255, 255, 255, down ? 8 : 23));
}

void Theme::paintFocus(QPainter& painter, const QRectF& rect, double radius) const {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(palette::cyan), 2));
    painter.drawRoundedRect(rect, radius, radius);
}

void Theme::paintLamp(QPainter& painter, const QRectF& rect, const QString& text, const Accent& accent, bool hovered) const {
    const bool plainDim = accent.color == QColor(palette::glassText);
    const QColor edge = accent.lit ? withAlpha(accent.color, 0.8)
                        : plainDim ? QColor(palette::lampEdge)
                                   : withAlpha(accent.color, 0.45);
    const QColor fill = accent.lit ? withAlpha(accent.color, hovered ? 0.26 : 0.16) : withAlpha(Qt::white, hovered ? 0.06 : 0);
    roundRect(painter, rect, 4, fill, edge);
    paintText(painter, rect.center().x(), rect.center().y() + 3.8, text, font(10, QFont::Normal, 0.8), accent.color,
              Qt::AlignHCenter);
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

double desktopScale(double width) {
    const auto* screen = QGuiApplication::primaryScreen();
    const double wanted = std::clamp(screen->logicalDotsPerInchY() / 96.0, 1.0, 2.0);
    return std::max(1.0, std::min(wanted, screen->availableGeometry().width() / width));
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace tessarel::ui
