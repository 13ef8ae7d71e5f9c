#include "host/desktop/session_bus.h"

#include <QFileInfo>
#include <QUrl>

namespace tessarel::host {
namespace {

// Without an address the bus library would start a bus of its own.
bool busHasAddress() {
    const auto runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           (!runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus")));
}

}  // namespace

std::optional<QDBusConnection> sessionBus() {
    if (!busHasAddress()) {
        return std::nullopt;
    }
    auto bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

QString pictureUri(const RealPath& realPath, const std::string& picture) {
    const auto real = picture.empty() ? std::filesystem::path() : realPath(picture);
    const auto name = QString::fromStdString(real.string());
    return QFileInfo(name).isFile() ? QUrl::fromLocalFile(name).toString(QUrl::FullyEncoded) : QString();
}

}  // namespace tessarel::host
