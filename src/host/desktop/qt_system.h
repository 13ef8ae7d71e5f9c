#pragma once
#include <QRect>
#include <functional>
#include <optional>
#include <string>

#include "platform/system.h"

namespace tessarel::host {

inline constexpr int twipsPerPixel = 15;

/// The strip of a screen that a panel keeps free of windows, in twips from the screen's upper left corner; of several panels
/// the thickest. Nothing when all of the screen is available.
std::optional<platform::TwipsRect> reservedStrip(const QRect& screen, const QRect& available);

/// Facts of the desktop from Qt. The screen is the primary one, in logical pixels.
class QtSystem : public platform::System {
public:
    /// `beeper` makes the desktop's bell heard.
    explicit QtSystem(std::function<void()> beeper) : beeper_(std::move(beeper)) {}
    ~QtSystem() override;
    QtSystem(const QtSystem&) = delete;
    QtSystem& operator=(const QtSystem&) = delete;

    std::optional<int> platformId() const override { return 1; }
    std::string windowsDirectory() const override { return "C:\\WINDOWS"; }
    std::string systemDirectory() const override { return "C:\\WINDOWS\\SYSTEM"; }

    platform::ScreenInfo screen() const override;
    std::optional<platform::TwipsRect> taskBar() const override;

    void setPointer(platform::PointerShape shape) override;
    void setPointerVisible(bool visible) override;
    void beep() override;

private:
    void showPointer() const;

    std::function<void()> beeper_;
    platform::PointerShape shape_ = platform::PointerShape::normal;
    bool visible_ = true;
};

}  // namespace tessarel::host
