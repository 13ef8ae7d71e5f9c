#include "host/desktop/dispatch.h"

#include <QCoreApplication>
#include <QVariant>
#include <cstdio>
#include <exception>

#include "platform/process_end.h"

namespace tessarel::host {
namespace {

constexpr auto endingProperty = "tessarel.exitStatus";

void markEnding(int status) {
    auto* application = QCoreApplication::instance();
    if (!processEnding() || status != 0) {
        application->setProperty(endingProperty, status);
    }
    QCoreApplication::exit(status);
}

void report(const char* what) { std::fprintf(stderr, "tessarel: ended by an unexpected fault: %s\n", what); }

}  // namespace

void deliver(const std::function<void()>& code) {
    try {
        code();
    } catch (const platform::ProcessEnd&) {
        markEnding(0);
    } catch (const std::exception& fault) {
        report(fault.what());
        markEnding(1);
    } catch (...) {
        report("of unknown kind");
        markEnding(1);
    }
}

void guard(const std::function<void()>& code) {
    if (!processEnding()) {
        deliver(code);
    }
}

bool processEnding() {
    const auto* application = QCoreApplication::instance();
    return application != nullptr && application->property(endingProperty).isValid();
}

int exitStatus() {
    const auto* application = QCoreApplication::instance();
    return application != nullptr ? application->property(endingProperty).toInt() : 0;
}

void rethrowEnd() {
    if (processEnding()) {
        platform::endProcess();
    }
}

}  // namespace tessarel::host
