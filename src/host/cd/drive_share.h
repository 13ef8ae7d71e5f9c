#pragma once
#include <optional>

#include "platform/cd_player.h"

namespace tessarel::host {

/// Who holds a drive within this program: any number of sharing players, or one that keeps the others out.
class DriveShare {
public:
    std::optional<platform::CdOpenFault> acquire(bool shareable) {
        if (exclusive_ || (!shareable && holders_ > 0)) {
            return platform::CdOpenFault::inUse;
        }
        exclusive_ = !shareable;
        ++holders_;
        return std::nullopt;
    }
    void release() {
        holders_ -= holders_ > 0 ? 1 : 0;
        exclusive_ = exclusive_ && holders_ > 0;
    }
    bool held() const { return holders_ > 0; }

private:
    int holders_ = 0;
    bool exclusive_ = false;
};

}  // namespace tessarel::host
