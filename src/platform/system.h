#pragma once
#include <optional>
#include <string>

namespace tessarel::platform {

/// Edges in twips.
struct TwipsRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool operator==(const TwipsRect&) const = default;
};

struct ScreenInfo {
    int widthTwips = 0;
    int heightTwips = 0;
    float twipsPerPixel = 15;
    int bitsPerPixel = 24;
    int planes = 1;
};

enum class PointerShape { normal, hourglass };

/// Facts about the machine and its desktop, and the mouse pointer.
class System {
public:
    virtual ~System() = default;

    /// 2 for the family without sound cues, 1 otherwise; nothing when it can't be told.
    virtual std::optional<int> platformId() const = 0;
    virtual std::string windowsDirectory() const = 0;  ///< no trailing back-slash
    virtual std::string systemDirectory() const = 0;   ///< no trailing back-slash

    virtual ScreenInfo screen() const = 0;
    /// The panel that keeps a strip of the screen free of windows; nothing when there is none.
    virtual std::optional<TwipsRect> taskBar() const = 0;

    virtual void setPointer(PointerShape shape) = 0;
    virtual void setPointerVisible(bool visible) = 0;
    virtual void beep() = 0;
};

}  // namespace tessarel::platform
