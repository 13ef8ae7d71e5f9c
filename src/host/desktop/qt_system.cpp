#include "host/desktop/qt_system.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>

namespace tessarel::host {
namespace {

platform::TwipsRect inTwips(const QRect& pixels) {
    return {pixels.x() * twipsPerPixel, pixels.y() * twipsPerPixel, (pixels.x() + pixels.width()) * twipsPerPixel,
            (pixels.y() + pixels.height()) * twipsPerPixel};
}

}  // namespace

std::optional<platform::TwipsRect> reservedStrip(const QRect& screen, const QRect& available) {
    const int width = screen.width();
    const int height = screen.height();
    const QRect free = available.intersected(screen).translated(-screen.topLeft());
    if (free.isEmpty()) {
        return std::nullopt;
    }
    const int below = height - free.bottom() - 1;
    const int beside = width - free.right() - 1;
    const std::array<QRect, 4> strips{
        QRect(0, height - below, width, below),
        QRect(0, 0, width, free.top()),
        QRect(0, 0, free.left(), height),
        QRect(width - beside, 0, beside, height),
    };
    const auto thickness = [](const QRect& strip) { return std::min(strip.width(), strip.height()); };
    const auto thickest = std::max_element(strips.begin(), strips.end(),
                                           [&](const QRect& a, const QRect& b) { return thickness(a) < thickness(b); });
    if (thickness(*thickest) <= 0) {
        return std::nullopt;
    }
    return inTwips(*thickest);
}

QtSystem::~QtSystem() {
    shape_ = platform::PointerShape::normal;
    visible_ = true;
    showPointer();
}

platform::ScreenInfo QtSystem::screen() const {
    platform::ScreenInfo info;
    if (const auto* primary = QGuiApplication::primaryScreen()) {
        info.widthTwips = primary->geometry().width() * twipsPerPixel;
        info.heightTwips = primary->geometry().height() * twipsPerPixel;
        info.bitsPerPixel = primary->depth();
    }
    return info;
}

std::optional<platform::TwipsRect> QtSystem::taskBar() const {
    const auto* primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? reservedStrip(primary->geometry(), primary->availableGeometry()) : std::nullopt;
}

void QtSystem::setPointer(platform::PointerShape shape) {
    shape_ = shape;
    showPointer();
}

void QtSystem::setPointerVisible(bool visible) {
    visible_ = visible;
    showPointer();
}

// One override at most is ever set, so that nothing is left over when both are back to normal.
void QtSystem::showPointer() const {
    const bool plain = visible_ && shape_ == platform::PointerShape::normal;
    const QCursor wanted(visible_ ? Qt::WaitCursor : Qt::BlankCursor);
    const bool overridden = QGuiApplication::overrideCursor() != nullptr;
    if (plain && overridden) {
        QGuiApplication::restoreOverrideCursor();
    } else if (!plain && overridden) {
        QGuiApplication::changeOverrideCursor(wanted);
    } else if (!plain) {
        QGuiApplication::setOverrideCursor(wanted);
    }
}

void QtSystem::beep() {
    if (beeper_) {
        beeper_();
    }
}

}  // namespace tessarel::host
