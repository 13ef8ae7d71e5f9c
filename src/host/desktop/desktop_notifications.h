#pragma once
#include <QObject>
#include <QString>
#include <optional>

#include "host/desktop/session_bus.h"
#include "platform/notifications.h"

namespace tessarel::host {

/// Notices by way of the notification service on the session bus. Nothing waits for it, and without a bus or a service nothing
/// happens.
class DesktopNotifications : public platform::Notifications {
public:
    explicit DesktopNotifications(RealPath realPath) : realPath_(std::move(realPath)) {}

    bool programInFront() const override;
    void show(const platform::Notice& notice) override;

private:
    void go();
    void askForMarkup();
    void send(const platform::Notice& notice);

    RealPath realPath_;
    QObject life_;                            ///< answers that come after it are passed over
    std::optional<platform::Notice> latest_;  ///< still to be sent
    bool busy_ = false;                       ///< an answer is awaited
    std::optional<bool> markup_;              ///< whether the service takes a text for markup; nothing before it was asked
    uint shownId_ = 0;                        ///< what the service calls the notice that is to be replaced; 0 for none
};

}  // namespace tessarel::host
