#pragma once
#include <functional>

#include "base/watchers.h"

namespace tessarel::platform {

/// How the desktop's default sound output stands.
struct OutputLevel {
    int step = 250;  ///< 0 silent to 250 full
    bool muted = false;
    bool operator==(const OutputLevel&) const = default;
};

/// The desktop's default sound output, which all programs share, on a scale of 250 steps. No call waits for it, and without a
/// sound server nothing happens.
class SystemMixer {
public:
    static constexpr int fullStep = 250;
    static constexpr int middleStep = 125;
    using Handler = std::function<void(const OutputLevel&)>;

    virtual ~SystemMixer() = default;

    /// Keeps the balance and the mute. 0 to `fullStep`.
    virtual void setStep(int step) = 0;
    virtual void setMuted(bool muted) = 0;
    /// Left and right alike, at the louder one's level.
    virtual void centreBalance() = 0;

    /// How the output stands, as far as it has been heard of; what was set counts from then on. Full before the first change.
    virtual OutputLevel level() const = 0;

    /// Calls the handler on the program's thread whenever something else has changed the output, or when another output has
    /// become the default and stands otherwise.
    [[nodiscard]] virtual Subscription watch(Handler handler) = 0;
};

}  // namespace tessarel::platform
