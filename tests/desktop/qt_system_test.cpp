#include "host/desktop/qt_system.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace tessarel::host {
namespace {

using platform::PointerShape;
using platform::TwipsRect;

const QRect screen(0, 0, 1024, 768);

TEST(ReservedStrip, ThereIsNoneWhenTheWholeScreenIsFree) { EXPECT_EQ(reservedStrip(screen, screen), std::nullopt); }

TEST(ReservedStrip, APanelBelowSpansTheWidth) {
    EXPECT_EQ(reservedStrip(screen, QRect(0, 0, 1024, 740)), (TwipsRect{0, 740 * 15, 1024 * 15, 768 * 15}));
}

TEST(ReservedStrip, APanelAtTheTopBeginsAtZero) {
    EXPECT_EQ(reservedStrip(screen, QRect(0, 28, 1024, 740)), (TwipsRect{0, 0, 1024 * 15, 28 * 15}));
}

TEST(ReservedStrip, APanelAtTheLeftIsHigherThanWide) {
    EXPECT_EQ(reservedStrip(screen, QRect(64, 0, 960, 768)), (TwipsRect{0, 0, 64 * 15, 768 * 15}));
}

TEST(ReservedStrip, APanelAtTheRightReachesTheScreensEdge) {
    EXPECT_EQ(reservedStrip(screen, QRect(0, 0, 960, 768)), (TwipsRect{960 * 15, 0, 1024 * 15, 768 * 15}));
}

TEST(ReservedStrip, OfTwoPanelsTheThickerCounts) {
    EXPECT_EQ(reservedStrip(screen, QRect(0, 24, 1024, 768 - 24 - 48)), (TwipsRect{0, 720 * 15, 1024 * 15, 768 * 15}));
}

TEST(ReservedStrip, ItIsMeasuredFromTheScreensOwnCorner) {
    EXPECT_EQ(reservedStrip(QRect(1920, 100, 1024, 768), QRect(1920, 100, 1024, 740)),
              (TwipsRect{0, 740 * 15, 1024 * 15, 768 * 15}));
}

TEST(ReservedStrip, AnAvailableAreaElsewhereTellsNothing) {
    EXPECT_EQ(reservedStrip(screen, QRect(5000, 5000, 100, 100)), std::nullopt);
    EXPECT_EQ(reservedStrip(screen, QRect()), std::nullopt);
}

TEST(System, TheScreenIsToldInTwipsOfAFifteenthOfAPixel) {
    const QtSystem system(nullptr);
    const auto size = QGuiApplication::primaryScreen()->size();
    const auto info = system.screen();
    EXPECT_EQ(info.widthTwips, size.width() * 15);
    EXPECT_EQ(info.heightTwips, size.height() * 15);
    EXPECT_FLOAT_EQ(info.twipsPerPixel, 15);
    EXPECT_GE(info.bitsPerPixel * info.planes, 8);
}

TEST(System, SoundCuesAreOn) { EXPECT_EQ(QtSystem(nullptr).platformId(), 1); }

TEST(System, TheHourglassIsSetAndTakenBackWithoutStacking) {
    QtSystem system(nullptr);
    system.setPointer(PointerShape::hourglass);
    system.setPointer(PointerShape::hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    system.setPointer(PointerShape::normal);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(System, AHiddenPointerStaysHiddenUnderTheHourglassWhichComesBackWithIt) {
    QtSystem system(nullptr);
    system.setPointerVisible(false);
    system.setPointer(PointerShape::hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BlankCursor);
    system.setPointerVisible(true);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    system.setPointer(PointerShape::normal);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(System, AnEndUnderTheHourglassLeavesNoCursorBehind) {
    {
        QtSystem system(nullptr);
        system.setPointer(PointerShape::hourglass);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(System, TheBellIsRung) {
    int rings = 0;
    QtSystem([&] { rings++; }).beep();
    EXPECT_EQ(rings, 1);
    QtSystem(nullptr).beep();
}

}  // namespace
}  // namespace tessarel::host
