#pragma once
#include <QDBusConnection>
#include <QString>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tessarel::host {

/// Where a path of the program lies on the real file system; empty for a place that has none.
using RealPath = std::function<std::filesystem::path(const std::string&)>;

/// The desktop's session bus. Nothing when there is none: none is started, and nobody is told.
std::optional<QDBusConnection> sessionBus();

/// The address of a picture for other programs; empty when there is no such file.
QString pictureUri(const RealPath& realPath, const std::string& picture);

}  // namespace tessarel::host
