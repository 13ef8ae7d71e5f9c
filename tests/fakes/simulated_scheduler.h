#pragma once
#include <deque>
#include <map>
#include <memory>

#include "platform/scheduler.h"

namespace tessarel::fakes {

/// A clock that jumps from deadline to deadline. Nothing happens until a test calls `run...`.
class SimulatedScheduler : public platform::Scheduler {
public:
    platform::Milliseconds now() const override { return now_; }
    platform::WallTime wallNow() const override {
        using namespace std::chrono_literals;
        const auto since = wallStart_ + now_;
        return {2026, 11, 21 + static_cast<int>(since / 24h), since % platform::Milliseconds(24h)};
    }
    void post(Task task) override { posted_.push_back(std::move(task)); }

    platform::TimerHandle after(platform::Milliseconds delay, Task task) override { return add(delay, {}, std::move(task)); }
    platform::TimerHandle every(platform::Milliseconds interval, Task task) override {
        return add(interval, interval, std::move(task));
    }

    /// The clock moves and posted deliveries run; timers that fall due in between fire later, once.
    void wait(platform::Milliseconds duration) override {
        waited_ += duration;
        now_ += duration;
        runDevices();
        runPosted();
    }
    void doEvents() override {
        runDevices();
        runPosted();
        runDue();
    }

    /// Runs everything that falls due within a span.
    void runFor(platform::Milliseconds span) {
        const auto end = now_ + span;
        runDevices();
        runPosted();
        while (!timers_.empty() && timers_.begin()->first.first <= end) {
            now_ = std::max(now_, timers_.begin()->first.first);
            runDevices();
            runPosted();
            fireFirst();
            runPosted();
        }
        now_ = std::max(now_, end);
        runDevices();
        runPosted();
    }

    /// Runs until a condition holds; false when it does not within `limit`.
    template <class Condition>
    bool runUntil(Condition condition, platform::Milliseconds limit) {
        const auto end = now_ + limit;
        while (!condition()) {
            if (timers_.empty() || timers_.begin()->first.first > end) {
                now_ = std::max(now_, end);
                runDevices();
                runPosted();
                return condition();
            }
            runFor(std::max(timers_.begin()->first.first - now_, platform::Milliseconds(0)));
        }
        return true;
    }

    void setTimeOfDay(platform::Milliseconds sinceMidnight) { wallStart_ = sinceMidnight - now_; }
    /// How many timers run.
    std::size_t timers() const { return timers_.size(); }
    platform::Milliseconds waited() const { return waited_; }

    /// Fake devices derive their events from the clock here; called whenever it has moved.
    std::function<void()> onClock;

private:
    using Key = std::pair<platform::Milliseconds, long>;
    struct Entry {
        platform::Milliseconds interval;
        Task task;
    };

    platform::TimerHandle add(platform::Milliseconds delay, platform::Milliseconds interval, Task task) {
        auto key = std::make_shared<Key>(now_ + std::max(delay, platform::Milliseconds(0)), ++serial_);
        timers_[*key] = {interval, std::move(task)};
        keys_[key->second] = key;
        const long id = key->second;
        return platform::TimerHandle([this, id] {
            if (const auto it = keys_.find(id); it != keys_.end()) {
                timers_.erase(*it->second);
                keys_.erase(it);
            }
        });
    }

    void fireFirst() {
        auto node = timers_.extract(timers_.begin());
        const long id = node.key().second;
        const Task task = node.mapped().task;
        if (node.mapped().interval > platform::Milliseconds(0)) {
            node.key().first = now_ + node.mapped().interval;
            *keys_[id] = node.key();
            timers_.insert(std::move(node));
        } else {
            keys_.erase(id);
        }
        task();
    }
    void runDue() {
        const auto due = now_;
        const long last = serial_;
        while (!timers_.empty() && timers_.begin()->first.first <= due && timers_.begin()->first.second <= last) {
            fireFirst();
        }
    }
    void runPosted() {
        while (!posted_.empty()) {
            const auto task = std::move(posted_.front());
            posted_.pop_front();
            task();
        }
    }
    void runDevices() {
        if (onClock) {
            onClock();
        }
    }

    platform::Milliseconds now_{0};
    platform::Milliseconds wallStart_{std::chrono::hours(12)};
    platform::Milliseconds waited_{0};
    long serial_ = 0;
    std::map<Key, Entry> timers_;
    std::map<long, std::shared_ptr<Key>> keys_;
    std::deque<Task> posted_;
};

}  // namespace tessarel::fakes
