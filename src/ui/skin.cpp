#include "ui/skin.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <array>
#include <cmath>
#include <vector>

namespace tessarel::ui {
namespace {

constexpr double faceRadius = 12;
constexpr double screwRadius = 4.5;
constexpr double screwInset = 13;
constexpr int largestPicture = 4096;

QLinearGradient threeTones(const QRectF& rect, QRgb top, QRgb middle, QRgb bottom) {
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, QColor(top));
    gradient.setColorAt(0.5, QColor(middle));
    gradient.setColorAt(1, QColor(bottom));
    return gradient;
}

QPainterPath rounded(const QRectF& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

void outline(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1));
    painter.drawRoundedRect(rect, radius, radius);
}

/// The picture fills the shape, its middle in the middle.
void fillWithPicture(QPainter& painter, const QPainterPath& shape, const QImage& picture) {
    const QRectF room = shape.boundingRect();
    const double share = std::max(room.width() / picture.width(), room.height() / picture.height());
    const QSizeF used(room.width() / share, room.height() / share);
    const QRectF source(QPointF((picture.width() - used.width()) / 2, (picture.height() - used.height()) / 2), used);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setClipPath(shape);
    painter.drawImage(room, picture, source);
    painter.restore();
}

void paintGround(QPainter& painter, const QRectF& rect, double radius, const QImage& picture) {
    const auto shape = rounded(rect, radius);
    if (picture.isNull()) {
        painter.fillPath(shape, threeTones(rect, palette::faceTop, palette::faceMiddle, palette::faceBottom));
    } else {
        fillWithPicture(painter, shape, picture);
    }
}

/// Fine lines along the metal, the same on every window.
void brush(QPainter& painter, const QRectF& rect) {
    std::uint32_t random = 12345;
    for (int line = 0; line < rect.height(); ++line) {
        random = random * 1664525U + 1013904223U;
        const int tone = static_cast<int>(random >> 24U) % 24 - 12;
        painter.fillRect(QRectF(rect.left(), rect.top() + line, rect.width(), 1),
                         tone < 0 ? QColor(0, 0, 0, -tone) : QColor(255, 255, 255, tone));
    }
}

void paintMetal(QPainter& painter, const QRectF& whole) {
    painter.save();
    painter.setClipPath(rounded(whole, faceRadius + 2));
    painter.fillRect(whole, threeTones(whole, palette::metalTop, palette::metalMiddle, palette::metalBottom));
    brush(painter, whole);
    painter.restore();
    outline(painter, whole.adjusted(0.5, 0.5, -0.5, -0.5), faceRadius + 2, QColor(0x3a, 0x3f, 0x46));
    outline(painter, whole.adjusted(1.5, 1.5, -1.5, -1.5), faceRadius + 1, QColor(255, 255, 255, 110));
}

void paintScrew(QPainter& painter, const QPointF& middle, double turn) {
    QRadialGradient head(middle - QPointF(1.2, 1.5), screwRadius * 1.8);
    head.setColorAt(0, QColor(0xc4, 0xca, 0xd2));
    head.setColorAt(0.6, QColor(0x83, 0x8a, 0x94));
    head.setColorAt(1, QColor(0x4a, 0x4f, 0x57));
    painter.setPen(QPen(QColor(palette::keyEdge), 1));
    painter.setBrush(head);
    painter.drawEllipse(middle, screwRadius, screwRadius);
    painter.save();
    painter.translate(middle);
    painter.rotate(turn);
    painter.setPen(QPen(QColor(0x2a, 0x2d, 0x32), 1.3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(-2.7, 0), QPointF(2.7, 0));
    painter.restore();
}

void paintScrews(QPainter& painter, const QRectF& whole) {
    const QRectF at = whole.adjusted(screwInset, screwInset, -screwInset, -screwInset);
    paintScrew(painter, at.topLeft(), 35);
    paintScrew(painter, at.topRight(), 80);
    paintScrew(painter, at.bottomLeft(), 110);
    paintScrew(painter, at.bottomRight(), 20);
}

}  // namespace

QMarginsF frameOf(int layout) { return layout == 1 ? QMarginsF(14, 6, 14, 18) : QMarginsF(); }

void paintSkin(QPainter& painter, const QRectF& design, const Skin& skin, const QImage& picture, bool titled) {
    const QRectF whole = design.marginsAdded(frameOf(skin.layout));
    if (skin.layout == 1) {
        paintMetal(painter, whole);
        const QRectF inlay = titled ? design.adjusted(12, 44, -12, -8) : design.adjusted(0, 6, 0, 6);
        paintGround(painter, inlay, 10, picture);
        outline(painter, inlay.adjusted(-0.5, -0.5, 0.5, 0.5), 10.5, QColor(0x14, 0x16, 0x1a));
        outline(painter, inlay.adjusted(-1.5, -1.5, 1.5, 1.5), 11.5, QColor(255, 255, 255, 90));
    } else {
        const QRectF edge = whole.adjusted(0.5, 0.5, -0.5, -0.5);
        paintGround(painter, edge, faceRadius, picture);
        outline(painter, edge, faceRadius, QColor(0x14, 0x16, 0x1a));
        outline(painter, whole.adjusted(1.5, 1.5, -1.5, -1.5), faceRadius - 1, QColor(0x56, 0x5c, 0x66, 0x80));
    }
    if (skin.screws) {
        paintScrews(painter, whole);
    }
}

QImage darkened(QImage picture) {
    std::array<uchar, 256> tones{};
    for (std::size_t tone = 0; tone < tones.size(); ++tone) {
        tones.at(tone) = static_cast<uchar>(brightest * (1 - std::exp(-static_cast<double>(tone) / brightest)));
    }
    picture = std::move(picture).convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            row[x] = qRgb(tones.at(static_cast<std::size_t>(qRed(row[x]))), tones.at(static_cast<std::size_t>(qGreen(row[x]))),
                          tones.at(static_cast<std::size_t>(qBlue(row[x]))));
        }
    }
    return picture;
}

QImage pictureBehind(const std::string& bytes) {
    const auto picture = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()));
    if (picture.isNull()) {
        return {};
    }
    const bool large = picture.width() > largestPicture || picture.height() > largestPicture;
    return darkened(large ? picture.scaled(largestPicture, largestPicture, Qt::KeepAspectRatio) : picture);
}

}  // namespace tessarel::ui
