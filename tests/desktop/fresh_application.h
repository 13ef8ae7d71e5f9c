#pragma once
#include <QCoreApplication>
#include <QTimer>
#include <QVariant>

namespace tessarel::host {

/// Takes back that a test has ended the process, so that the next one finds event loops that run.
struct FreshApplication {
    FreshApplication() = default;
    FreshApplication(const FreshApplication&) = delete;
    FreshApplication& operator=(const FreshApplication&) = delete;
    ~FreshApplication() {
        QCoreApplication::instance()->setProperty("tessarel.exitStatus", QVariant());
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
    }
};

}  // namespace tessarel::host
