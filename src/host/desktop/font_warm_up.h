#pragma once
#include <thread>

namespace tessarel::host {

/// Reads the system's font configuration on a thread of its own, while the program connects to the screen. The first text
/// would otherwise wait for it: a third of the time to the first window.
class FontWarmUp {
public:
    FontWarmUp();
    /// Waits until the configuration has been read.
    ~FontWarmUp();
    FontWarmUp(const FontWarmUp&) = delete;
    FontWarmUp& operator=(const FontWarmUp&) = delete;

private:
    std::thread thread_;
};

}  // namespace tessarel::host
