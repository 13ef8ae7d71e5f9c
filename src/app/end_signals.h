#pragma once
#include <QSocketNotifier>

namespace tessarel::app {

/// Ends the process cleanly when the system or the user's terminal asks for it (SIGTERM, SIGINT, SIGHUP), while it lives.
/// One at a time, after the application object.
class EndSignals {
public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    bool received() const { return received_; }

private:
    QSocketNotifier notifier_;
    bool received_ = false;
};

}  // namespace tessarel::app
