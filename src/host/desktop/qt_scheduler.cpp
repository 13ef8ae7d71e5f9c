#include "host/desktop/qt_scheduler.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QEventLoop>
#include <algorithm>
#include <limits>
#include <thread>

#include "host/desktop/dispatch.h"

namespace tessarel::host {

using platform::Milliseconds;

namespace {

/// Below this distance a deadline is met to the millisecond; beyond it the system may save power.
constexpr Milliseconds preciseBelow{200};
/// Longest span that one alarm is set for.
constexpr Milliseconds longestAlarm{std::chrono::hours(1)};

class TaskEvent : public QEvent {
public:
    explicit TaskEvent(platform::Scheduler::Task task) : QEvent(User), task_(std::move(task)) {}
    void run() const { deliver(task_); }

private:
    platform::Scheduler::Task task_;
};

}  // namespace

// The pending calls, by deadline and then by age. Shared with the handles, which may outlive the scheduler.
struct QtScheduler::Timers {
    using Key = std::pair<Milliseconds, long>;
    struct Entry {
        Milliseconds interval{0};
        std::shared_ptr<Task> task;
    };

    void cancel(long id) {
        if (const auto found = deadlines.find(id); found != deadlines.end()) {
            entries.erase({found->second, id});
            deadlines.erase(found);
        }
    }
    void insert(Milliseconds deadline, long id, Entry entry) {
        deadlines[id] = deadline;
        entries[{deadline, id}] = std::move(entry);
    }

    std::map<Key, Entry> entries;
    std::map<long, Milliseconds> deadlines;
    long newest = 0;
};

class QtScheduler::Hold {
public:
    explicit Hold(QtScheduler& scheduler) : scheduler_(scheduler) { ++scheduler_.waits_; }
    ~Hold() {
        if (--scheduler_.waits_ == 0) {
            scheduler_.arm();
        }
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    QtScheduler& scheduler_;
};

bool QtScheduler::Posts::event(QEvent* event) {
    const auto* task = dynamic_cast<const TaskEvent*>(event);
    if (task == nullptr) {
        return QObject::event(event);
    }
    task->run();
    return true;
}

QtScheduler::QtScheduler() : start_(std::chrono::steady_clock::now()), timers_(std::make_shared<Timers>()) {
    alarm_.setSingleShot(true);
    QObject::connect(&alarm_, &QTimer::timeout, &alarm_, [this] { alarm(); });
}

QtScheduler::~QtScheduler() = default;

Milliseconds QtScheduler::now() const {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start_);
}

platform::WallTime QtScheduler::wallNow() const {
    const auto local = QDateTime::currentDateTime();
    const auto date = local.date();
    return {date.year(), date.month(), date.day(), Milliseconds(local.time().msecsSinceStartOfDay())};
}

void QtScheduler::post(Task task) { QCoreApplication::postEvent(&posts_, new TaskEvent(std::move(task))); }

platform::TimerHandle QtScheduler::after(Milliseconds delay, Task task) { return add(delay, {}, std::move(task)); }

platform::TimerHandle QtScheduler::every(Milliseconds interval, Task task) {
    return add(interval, std::max(interval, Milliseconds(1)), std::move(task));
}

platform::TimerHandle QtScheduler::add(Milliseconds delay, Milliseconds interval, Task task) {
    const long id = ++timers_->newest;
    const auto deadline = now() + std::max(delay, Milliseconds(0));
    timers_->insert(deadline, id, {interval, std::make_shared<Task>(std::move(task))});
    arm();
    return platform::TimerHandle([weak = std::weak_ptr<Timers>(timers_), id] {
        if (const auto timers = weak.lock()) {
            timers->cancel(id);
        }
    });
}

void QtScheduler::arm() {
    if (waits_ > 0 || timers_->entries.empty()) {
        alarm_.stop();
        return;
    }
    const auto left = timers_->entries.begin()->first.first - now();
    alarm_.setTimerType(left < preciseBelow ? Qt::PreciseTimer : Qt::CoarseTimer);
    alarm_.start(std::clamp(left, Milliseconds(0), longestAlarm));
}

void QtScheduler::alarm() {
    if (waits_ == 0 && !fireFirst(now(), std::numeric_limits<long>::max())) {
        arm();
    }
}

bool QtScheduler::fireFirst(Milliseconds due, long newest) {
    auto& entries = timers_->entries;
    const auto first = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.first.first > due || entry.first.second <= newest; });
    if (first == entries.end() || first->first.first > due) {
        return false;
    }
    const long id = first->first.second;
    const auto entry = std::move(first->second);
    timers_->cancel(id);
    if (entry.interval > Milliseconds(0)) {
        timers_->insert(now() + entry.interval, id, entry);
    }
    arm();  // before the call: it may run an event loop of its own, in which the others go on
    guard(*entry.task);
    return true;
}

void QtScheduler::wait(Milliseconds duration) {
    rethrowEnd();
    if (duration > Milliseconds(0)) {
        const Hold hold(*this);
        QEventLoop loop;
        QTimer over;
        over.setSingleShot(true);
        over.setTimerType(Qt::PreciseTimer);
        QObject::connect(&over, &QTimer::timeout, &loop, &QEventLoop::quit);
        over.start(duration);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    rethrowEnd();
}

void QtScheduler::doEvents() {
    rethrowEnd();
    const auto due = now();
    const long newest = timers_->newest;
    QEventLoop loop;
    bool busy = loop.processEvents(waiting() ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
    while (!waiting() && !processEnding() && fireFirst(due, newest)) {
        busy = true;
    }
    rethrowEnd();
    if (!busy) {
        std::this_thread::sleep_for(Milliseconds(1));
    }
}

}  // namespace tessarel::host
