#include "host/desktop/qt_scheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "host/desktop/dispatch.h"
#include "platform/process_end.h"
#include "tests/desktop/fresh_application.h"

// The window system's road for a gesture, which Qt exports without a public header: the event lies in Qt's queue.
class Q_GUI_EXPORT QWindowSystemInterface {
public:
    struct AsynchronousDelivery {};
    template <class Delivery>
    static bool handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global, Qt::MouseButtons state,
                                 Qt::MouseButton button, QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                 Qt::MouseEventSource source);
};

namespace tessarel::host {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class QtSchedulerTest : public ::testing::Test {
protected:
    void log(const std::string& line) { lines_.push_back(line); }
    /// Runs the application's loop, with everything in it, for a span.
    void run(std::chrono::milliseconds span) {
        QTimer::singleShot(span, Qt::PreciseTimer, &context_, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
    }

    /// Runs the application's loop until a condition holds, for five seconds at most.
    template <class Condition>
    void runUntil(Condition condition) {
        QTimer look;
        const auto end = scheduler_.now() + 5s;
        QObject::connect(&look, &QTimer::timeout, &context_, [&] {
            if (condition() || scheduler_.now() > end) {
                QCoreApplication::exit(0);
            }
        });
        look.start(1ms);
        QCoreApplication::exec();
    }
    void runUntilLines(std::size_t count) {
        runUntil([&] { return lines_.size() >= count; });
    }

    FreshApplication fresh_;
    QtScheduler scheduler_;
    QObject context_;
    std::vector<std::string> lines_;
};

using Scheduler = QtSchedulerTest;
using Guard = QtSchedulerTest;

TEST_F(Scheduler, PostedTasksRunInTheOrderOfPosting) {
    scheduler_.post([this] { log("a"); });
    scheduler_.post([this] { log("b"); });
    EXPECT_THAT(lines_, IsEmpty());
    run(10ms);
    EXPECT_THAT(lines_, ElementsAre("a", "b"));
}

TEST_F(Scheduler, ATaskPostedByAnotherThreadWakesTheSleepingLoop) {
    std::thread poster([this] {
        std::this_thread::sleep_for(20ms);
        scheduler_.post([] { QCoreApplication::exit(0); });
    });
    const auto start = scheduler_.now();
    run(5000ms);
    poster.join();
    EXPECT_LT(scheduler_.now() - start, 2000ms);
}

TEST_F(Scheduler, ATimerFiresOnceAfterItsDelay) {
    const auto start = scheduler_.now();
    auto fired = 0ms;
    const auto handle = scheduler_.after(50ms, [&] {
        log("fired");
        fired = scheduler_.now() - start;
    });
    runUntilLines(1);
    run(60ms);
    EXPECT_THAT(lines_, ElementsAre("fired"));
    EXPECT_GE(fired, 50ms);
}

TEST_F(Scheduler, AHundredMillisecondsAreMetToTwenty) {
    auto closest = 5s + 0ms;
    for (int tries = 0; tries < 10 && closest > 20ms; ++tries) {
        const auto start = scheduler_.now();
        auto late = 5s + 0ms;
        const auto handle = scheduler_.after(100ms, [&] { late = scheduler_.now() - start - 100ms; });
        runUntil([&] { return late < 5s; });
        closest = std::min(closest, late);
    }
    EXPECT_LE(closest, 20ms);
}

TEST_F(Scheduler, TimersFireInTheOrderOfTheirDeadlinesNotOfTheirMaking) {
    const auto late = scheduler_.after(30ms, [this] { log("late"); });
    const auto soon = scheduler_.after(5ms, [this] { log("soon"); });
    runUntilLines(2);
    EXPECT_THAT(lines_, ElementsAre("soon", "late"));
}

TEST_F(Scheduler, ARepeatedTimerFiresOnAndOn) {
    const auto handle = scheduler_.every(20ms, [this] { log("tick"); });
    const auto start = scheduler_.now();
    runUntilLines(4);
    EXPECT_GE(scheduler_.now() - start, 79ms);
    EXPECT_EQ(lines_.size(), 4U);
}

TEST_F(Scheduler, ALateTimerFiresOnceAndCountsAnew) {
    std::vector<std::chrono::milliseconds> ticks;
    const auto handle = scheduler_.every(40ms, [&] { ticks.push_back(scheduler_.now()); });
    std::this_thread::sleep_for(150ms);
    runUntil([&] { return ticks.size() >= 3; });
    ASSERT_EQ(ticks.size(), 3U);
    EXPECT_GE(ticks[1] - ticks[0], 40ms);
    EXPECT_GE(ticks[2] - ticks[1], 40ms);
}

TEST_F(Scheduler, ADroppedHandleCancelsItsTimer) {
    {
        const auto handle = scheduler_.after(5ms, [this] { log("never"); });
    }
    run(30ms);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Scheduler, ARepeatedTimerMayCancelItselfInItsOwnHandler) {
    platform::TimerHandle handle;
    const auto alive = std::make_shared<std::string>("tick");
    handle = scheduler_.every(5ms, [&handle, alive, this] {
        handle.reset();
        log(*alive);
    });
    runUntilLines(1);
    run(30ms);
    EXPECT_THAT(lines_, ElementsAre("tick"));
    EXPECT_EQ(alive.use_count(), 1);
}

TEST_F(Scheduler, AHandlerMayCancelAnotherTimerThatIsDue) {
    platform::TimerHandle second;
    const auto first = scheduler_.after(5ms, [&] {
        log("first");
        second.reset();
    });
    second = scheduler_.after(6ms, [this] { log("second"); });
    std::this_thread::sleep_for(15ms);
    runUntilLines(1);
    run(20ms);
    EXPECT_THAT(lines_, ElementsAre("first"));
}

TEST_F(Scheduler, AHandleMayOutliveItsScheduler) {
    platform::TimerHandle handle;
    {
        QtScheduler brief;
        handle = brief.after(1ms, [this] { log("never"); });
    }
    handle.reset();
    run(10ms);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Scheduler, AWaitHoldsTimersBackAndFiresEachOnceAfterIt) {
    std::vector<std::chrono::milliseconds> ticks;
    const auto handle = scheduler_.every(20ms, [&] { ticks.push_back(scheduler_.now()); });
    const auto start = scheduler_.now();
    scheduler_.wait(80ms);
    EXPECT_GE(scheduler_.now() - start, 79ms);
    EXPECT_THAT(ticks, IsEmpty());
    runUntil([&] { return ticks.size() >= 2; });
    ASSERT_EQ(ticks.size(), 2U);
    EXPECT_GE(ticks[1] - ticks[0], 20ms);
}

TEST_F(Scheduler, AWaitLastsItsTimeAndNotMuchMore) {
    const auto start = scheduler_.now();
    scheduler_.wait(300ms);
    EXPECT_GE(scheduler_.now() - start, 299ms);
    EXPECT_LT(scheduler_.now() - start, 2s);
}

TEST_F(Scheduler, PostedTasksRunInsideAWait) {
    scheduler_.post([this] { log(scheduler_.waiting() ? "inside" : "outside"); });
    scheduler_.wait(20ms);
    EXPECT_THAT(lines_, ElementsAre("inside"));
    EXPECT_FALSE(scheduler_.waiting());
}

TEST_F(Scheduler, TimersStayHeldUntilTheOuterOfTwoWaitsIsOver) {
    const auto handle = scheduler_.after(10ms, [this] { log("timer"); });
    scheduler_.post([this] {
        scheduler_.wait(30ms);
        log("inner over");
    });
    scheduler_.wait(60ms);
    log("outer over");
    runUntilLines(3);
    EXPECT_THAT(lines_, ElementsAre("inner over", "outer over", "timer"));
}

TEST_F(Scheduler, DoEventsInsideAWaitKeepsHoldingTimersBack) {
    const auto handle = scheduler_.after(0ms, [this] { log("timer"); });
    scheduler_.post([this] {
        scheduler_.doEvents();
        log("done");
    });
    scheduler_.wait(20ms);
    log("over");
    runUntilLines(3);
    EXPECT_THAT(lines_, ElementsAre("done", "over", "timer"));
}

TEST_F(Scheduler, DoEventsRunsWhatIsPendingAndReturns) {
    const auto due = scheduler_.after(0ms, [this] { log("timer"); });
    const auto far = scheduler_.after(10s, [this] { log("far"); });
    scheduler_.post([this] { log("posted"); });
    const auto start = scheduler_.now();
    scheduler_.doEvents();
    EXPECT_THAT(lines_, ::testing::UnorderedElementsAre("posted", "timer"));
    EXPECT_LT(scheduler_.now() - start, 1000ms);
}

TEST_F(Scheduler, ATimerThatRunsEventsLetsOthersFireMeanwhile) {
    platform::TimerHandle inner;
    const auto outer = scheduler_.after(1ms, [&] {
        log("outer begins");
        inner = scheduler_.after(0ms, [this] { log("inner"); });
        std::this_thread::sleep_for(2ms);
        scheduler_.doEvents();
        log("outer ends");
    });
    runUntilLines(3);
    EXPECT_THAT(lines_, ElementsAre("outer begins", "inner", "outer ends"));
}

struct ClickedWindow : QWindow {
    void mousePressEvent(QMouseEvent* /*event*/) override { clicks++; }
    int clicks = 0;
};

TEST_F(Scheduler, AClickDuringAWaitArrivesAfterIt) {
    ClickedWindow window;
    window.setGeometry(0, 0, 100, 100);
    window.show();
    scheduler_.doEvents();
    scheduler_.post([&] {
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
            &window, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress, Qt::NoModifier,
            Qt::MouseEventNotSynthesized);
    });
    scheduler_.wait(50ms);
    EXPECT_EQ(window.clicks, 0);
    runUntil([&] { return window.clicks > 0; });
    EXPECT_EQ(window.clicks, 1);
}

TEST_F(Scheduler, TheWallClockCountsFromMidnight) {
    const auto wall = scheduler_.wallNow();
    EXPECT_GE(wall.year, 2024);
    EXPECT_GE(wall.sinceMidnight, 0ms);
    EXPECT_LT(wall.sinceMidnight, 24h);
}

TEST_F(Guard, TheEndOfTheProcessLeavesTheApplicationsLoop) {
    const auto handle = scheduler_.after(1ms, [] { platform::endProcess(); });
    const auto start = scheduler_.now();
    run(5000ms);
    EXPECT_LT(scheduler_.now() - start, 2000ms);
    EXPECT_TRUE(processEnding());
    EXPECT_EQ(exitStatus(), 0);
}

TEST_F(Guard, TheEndInsideAWaitReachesTheCodeThatWaits) {
    const auto handle = scheduler_.after(1ms, [this] {
        scheduler_.post([] { platform::endProcess(); });
        scheduler_.wait(4s);
        log("must not run");
    });
    const auto start = scheduler_.now();
    run(5000ms);
    EXPECT_LT(scheduler_.now() - start, 2000ms);
    EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(Guard, TheEndUnwindsEveryNestedLoop) {
    const auto handle = scheduler_.after(1ms, [this] {
        scheduler_.post([this] {
            scheduler_.post([] { platform::endProcess(); });
            scheduler_.wait(4s);
            log("inner must not run");
        });
        scheduler_.wait(4s);
        log("outer must not run");
    });
    run(5000ms);
    EXPECT_THAT(lines_, IsEmpty());
    EXPECT_TRUE(processEnding());
}

TEST_F(Guard, TheEndInATimerThatDoEventsRunsReachesItsCaller) {
    const auto handle = scheduler_.after(0ms, [] { platform::endProcess(); });
    EXPECT_THROW(scheduler_.doEvents(), platform::ProcessEnd);
}

TEST_F(Guard, OnceTheProcessEndsNoTimerFiresAndAWaitThrowsAtOnce) {
    guard([] { platform::endProcess(); });
    const auto handle = scheduler_.after(0ms, [this] { log("timer"); });
    run(20ms);
    EXPECT_THAT(lines_, IsEmpty());
    EXPECT_THROW(scheduler_.wait(1s), platform::ProcessEnd);
}

TEST_F(Guard, OnceTheProcessEndsAdaptersStillDeliver) {
    guard([] { platform::endProcess(); });
    scheduler_.post([this] { log("delivered"); });
    run(20ms);
    EXPECT_THAT(lines_, ElementsAre("delivered"));
}

TEST_F(Guard, AnyOtherExceptionIsReportedAndEndsTheProcessWithOne) {
    ::testing::internal::CaptureStderr();
    const auto handle = scheduler_.after(1ms, [] { throw std::runtime_error("broken"); });
    run(5000ms);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr("broken"));
    EXPECT_TRUE(processEnding());
    EXPECT_EQ(exitStatus(), 1);
}

}  // namespace
}  // namespace tessarel::host
