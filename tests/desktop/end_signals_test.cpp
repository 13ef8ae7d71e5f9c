#include "app/end_signals.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <QCoreApplication>
#include <QTimer>

#include "host/desktop/dispatch.h"
#include "host/desktop/qt_scheduler.h"
#include "platform/process_end.h"
#include "tests/desktop/fresh_application.h"

namespace tessarel::app {
namespace {

using namespace std::chrono_literals;

class EndSignalsTest : public ::testing::TestWithParam<int> {
private:
    host::FreshApplication fresh_;
};

TEST_P(EndSignalsTest, ASignalEndsTheProcessCleanly) {
    const EndSignals endSignals;
    EXPECT_FALSE(endSignals.received());
    QTimer::singleShot(1ms, [] { raise(GetParam()); });
    QTimer::singleShot(5s, [] { QCoreApplication::exit(9); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(endSignals.received());
    EXPECT_TRUE(host::processEnding());
}

TEST_P(EndSignalsTest, ASignalDuringAWaitReachesTheCodeThatWaits) {
    const EndSignals endSignals;
    host::QtScheduler scheduler;
    scheduler.post([] { raise(GetParam()); });
    EXPECT_THROW(scheduler.wait(5s), platform::ProcessEnd);
}

INSTANTIATE_TEST_SUITE_P(All, EndSignalsTest, ::testing::Values(SIGTERM, SIGINT, SIGHUP));

}  // namespace
}  // namespace tessarel::app
