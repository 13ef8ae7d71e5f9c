#pragma once
#include <vector>

#include "platform/notifications.h"

namespace tessarel::fakes {

/// Keeps the notices that were shown.
class FakeNotifications : public platform::Notifications {
public:
    bool inFront = true;
    std::vector<platform::Notice> shown;  ///< in order

    bool programInFront() const override { return inFront; }
    void show(const platform::Notice& notice) override { shown.push_back(notice); }
};

}  // namespace tessarel::fakes
