#pragma once
#include <chrono>
#include <functional>
#include <utility>

namespace tessarel::platform {

using Milliseconds = std::chrono::milliseconds;

/// Local date and time of day.
struct WallTime {
    int year = 1970;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31
    Milliseconds sinceMidnight{0};
    bool operator==(const WallTime&) const = default;
};

/// A pending or repeated call; destruction cancels it.
class TimerHandle {
public:
    TimerHandle() = default;
    explicit TimerHandle(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    TimerHandle(TimerHandle&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    TimerHandle& operator=(TimerHandle&& other) noexcept {
        if (this != &other) {
            reset();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    TimerHandle(const TimerHandle&) = delete;
    TimerHandle& operator=(const TimerHandle&) = delete;
    ~TimerHandle() { reset(); }

    void reset() {
        if (const auto cancel = std::exchange(cancel_, nullptr)) {
            cancel();
        }
    }
    explicit operator bool() const { return cancel_ != nullptr; }

private:
    std::function<void()> cancel_;
};

/// The program's one thread of events. All calls but `post` come from that thread.
class Scheduler {
public:
    using Task = std::function<void()>;

    virtual ~Scheduler() = default;

    /// Steady time, from an arbitrary start.
    virtual Milliseconds now() const = 0;
    virtual WallTime wallNow() const = 0;

    /// Runs a task on the program's thread, in order of posting. May be called from any thread. A posted task is an
    /// adapter's own delivery and runs inside `wait` too.
    virtual void post(Task task) = 0;

    [[nodiscard]] virtual TimerHandle after(Milliseconds delay, Task task) = 0;

    /// Fires every `interval`, first after one interval. A late timer fires once, and counts anew from then.
    [[nodiscard]] virtual TimerHandle every(Milliseconds interval, Task task) = 0;

    /// The program's deliberate wait: returns after `duration`. Windows repaint, sound and child processes go on, but the
    /// program's own timers and input are held back until it is over.
    virtual void wait(Milliseconds duration) = 0;

    /// Runs what is pending, timers and input included, then returns.
    virtual void doEvents() = 0;

    /// The seconds-since-midnight clock.
    double secondsSinceMidnight() const { return std::chrono::duration<double>(wallNow().sinceMidnight).count(); }
};

}  // namespace tessarel::platform
