#pragma once
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

#include "platform/scheduler.h"

namespace tessarel::tests {

/// A program's thread of events on real time: tasks and timers run while a test is inside `runUntil` or `runFor`.
class RealTimeScheduler : public platform::Scheduler {
public:
    platform::Milliseconds now() const override {
        return std::chrono::duration_cast<platform::Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
    }
    platform::WallTime wallNow() const override { return {}; }

    void post(Task task) override {
        const std::lock_guard hold(mutex_);
        posted_.push_back(std::move(task));
        wake_.notify_all();
    }
    platform::TimerHandle after(platform::Milliseconds delay, Task task) override {
        return add(delay, platform::Milliseconds(0), std::move(task));
    }
    platform::TimerHandle every(platform::Milliseconds interval, Task task) override {
        return add(interval, interval, std::move(task));
    }
    void wait(platform::Milliseconds duration) override { runFor(duration); }
    void doEvents() override { runFor(platform::Milliseconds(0)); }

    void runFor(platform::Milliseconds span) {
        runUntil([] { return false; }, span);
    }
    /// Looks at the condition every few milliseconds; false when it does not hold within `limit`.
    template <class Condition>
    bool runUntil(Condition condition, platform::Milliseconds limit = std::chrono::seconds(10)) {
        const auto end = now() + limit;
        for (;;) {
            runDue();
            if (condition()) {
                return true;
            }
            if (now() >= end) {
                return false;
            }
            std::unique_lock hold(mutex_);
            wake_.wait_for(hold, std::chrono::milliseconds(2), [this] { return !posted_.empty(); });
        }
    }

private:
    struct Timer {
        platform::Milliseconds due;
        platform::Milliseconds interval;
        Task task;
    };

    platform::TimerHandle add(platform::Milliseconds delay, platform::Milliseconds interval, Task task) {
        const long id = ++serial_;
        timers_[id] = {now() + delay, interval, std::move(task)};
        return platform::TimerHandle([this, id] { timers_.erase(id); });
    }
    void runDue() {
        for (;;) {
            std::unique_lock hold(mutex_);
            if (posted_.empty()) {
                break;
            }
            const Task task = std::move(posted_.front());
            posted_.pop_front();
            hold.unlock();
            task();
        }
        const auto ids = [this] {
            std::deque<long> due;
            for (const auto& [id, timer] : timers_) {
                if (timer.due <= now()) {
                    due.push_back(id);
                }
            }
            return due;
        }();
        for (const long id : ids) {
            fire(id);
        }
    }
    void fire(long id) {
        const auto found = timers_.find(id);
        if (found == timers_.end()) {
            return;
        }
        const Task task = found->second.task;
        if (found->second.interval.count() > 0) {
            found->second.due = now() + found->second.interval;
        } else {
            timers_.erase(found);
        }
        task();
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Task> posted_;
    std::map<long, Timer> timers_;
    long serial_ = 0;
};

}  // namespace tessarel::tests
