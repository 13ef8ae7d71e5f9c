#include "app/end_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>

#include "host/desktop/dispatch.h"
#include "platform/process_end.h"

namespace tessarel::app {
namespace {

constexpr std::array<int, 3> endSignals{SIGTERM, SIGINT, SIGHUP};

std::array<int, 2> newPipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return {-1, -1};
    }
    return ends;
}

// All that a signal handler may do is to write into this.
const std::array<int, 2>& signalPipe() {
    static const auto ends = newPipe();
    return ends;
}

void onSignal(int /*number*/) {
    const char any = 0;
    [[maybe_unused]] const auto written = write(signalPipe()[1], &any, 1);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : endSignals) {
        sigaction(number, &action, nullptr);
    }
}

}  // namespace

EndSignals::EndSignals() : notifier_(signalPipe()[0], QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] {
        char any = 0;
        while (read(signalPipe()[0], &any, 1) > 0) {
        }
        received_ = true;
        host::deliver([] { platform::endProcess(); });
    });
    setHandler(onSignal);
}

EndSignals::~EndSignals() { setHandler(SIG_DFL); }

}  // namespace tessarel::app
