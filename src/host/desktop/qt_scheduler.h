#pragma once
#include <QObject>
#include <QTimer>
#include <chrono>
#include <map>
#include <memory>
#include <utility>

#include "platform/scheduler.h"

namespace tessarel::host {

/// The program's thread of events on Qt's event loop. Lives on the thread of the application object and no longer than it.
/// What a timer or a posted task throws never reaches Qt: see `guard` and `deliver`.
class QtScheduler : public platform::Scheduler {
public:
    QtScheduler();
    ~QtScheduler() override;
    QtScheduler(const QtScheduler&) = delete;
    QtScheduler& operator=(const QtScheduler&) = delete;

    platform::Milliseconds now() const override;
    platform::WallTime wallNow() const override;

    void post(Task task) override;
    [[nodiscard]] platform::TimerHandle after(platform::Milliseconds delay, Task task) override;
    [[nodiscard]] platform::TimerHandle every(platform::Milliseconds interval, Task task) override;

    /// Throws `ProcessEnd` if the process has been ended meanwhile, as `doEvents` does.
    void wait(platform::Milliseconds duration) override;

    /// Naps for a millisecond when there was nothing to run, so that a loop around it leaves the machine to others.
    void doEvents() override;

    /// Whether a deliberate wait is going on: whoever brings input by another road than Qt's own events holds it back.
    bool waiting() const { return waits_ > 0; }

private:
    struct Timers;
    class Hold;
    /// The receiver of posted tasks.
    struct Posts : QObject {
        bool event(QEvent* event) override;
    };

    platform::TimerHandle add(platform::Milliseconds delay, platform::Milliseconds interval, Task task);
    void arm();
    void alarm();
    /// Fires the first timer if it was due at `due` and is not younger than `newest`; false when there is none.
    bool fireFirst(platform::Milliseconds due, long newest);

    std::chrono::steady_clock::time_point start_;
    Posts posts_;
    QTimer alarm_;  ///< set to the first deadline
    std::shared_ptr<Timers> timers_;
    int waits_ = 0;
};

}  // namespace tessarel::host
