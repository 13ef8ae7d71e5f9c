#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/system.h"

namespace tessarel::fakes {

/// A machine of 1024 by 768 pixels whose facts are plain fields.
class FakeSystem : public platform::System {
public:
    std::optional<int> platform = 1;
    std::string windows = "C:\\WINDOWS";
    std::string system = "C:\\WINDOWS\\SYSTEM";
    platform::ScreenInfo screenInfo{1024 * 15, 768 * 15, 15, 24, 1};
    std::optional<platform::TwipsRect> bar;

    platform::PointerShape pointer = platform::PointerShape::normal;
    std::vector<platform::PointerShape> pointers;  ///< each shape that was set, in order
    bool pointerVisible = true;
    int pointerCalls = 0;  ///< calls of `setPointerVisible`
    int beeps = 0;

    std::optional<int> platformId() const override { return platform; }
    std::string windowsDirectory() const override { return windows; }
    std::string systemDirectory() const override { return system; }
    platform::ScreenInfo screen() const override { return screenInfo; }
    std::optional<platform::TwipsRect> taskBar() const override { return bar; }
    void setPointer(platform::PointerShape shape) override {
        pointer = shape;
        pointers.push_back(shape);
    }
    void setPointerVisible(bool visible) override {
        pointerVisible = visible;
        ++pointerCalls;
    }
    void beep() override { ++beeps; }
};

}  // namespace tessarel::fakes
