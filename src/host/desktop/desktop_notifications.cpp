#include "host/desktop/desktop_notifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace tessarel::host {
namespace {

constexpr auto desktopId = "org.tessarel.Tessarel";
constexpr int serviceDecides = -1;  // how long a notice stays

QDBusMessage call(const char* method) {
    const auto service = QStringLiteral("org.freedesktop.Notifications");
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service,
                                          QString::fromLatin1(method));
}

}  // namespace

bool DesktopNotifications::programInFront() const { return QGuiApplication::focusWindow() != nullptr; }

void DesktopNotifications::show(const platform::Notice& notice) {
    latest_ = notice;
    go();
}

// One call at a time: the answer tells what the next notice has to replace.
void DesktopNotifications::go() {
    if (busy_ || !latest_) {
        return;
    }
    if (!sessionBus()) {
        latest_.reset();
    } else if (!markup_) {
        askForMarkup();
    } else {
        send(*std::exchange(latest_, std::nullopt));
    }
}

void DesktopNotifications::askForMarkup() {
    busy_ = true;
    auto* answer = new QDBusPendingCallWatcher(sessionBus()->asyncCall(call("GetCapabilities")), &life_);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, &life_, [this, answer] {
        const QDBusPendingReply<QStringList> reply = *answer;
        answer->deleteLater();
        busy_ = false;
        if (reply.isValid()) {
            markup_ = reply.value().contains(QStringLiteral("body-markup"));
            go();
        } else {
            latest_.reset();  // there is no such service; the next notice looks again
        }
    });
}

void DesktopNotifications::send(const platform::Notice& notice) {
    busy_ = true;
    const auto body = QString::fromStdString(notice.text);
    QVariantMap hints{{QStringLiteral("desktop-entry"), QString::fromLatin1(desktopId)},
                      {QStringLiteral("suppress-sound"), true},
                      {QStringLiteral("transient"), true}};
    if (const auto picture = pictureUri(realPath_, notice.image); !picture.isEmpty()) {
        hints[QStringLiteral("image-path")] = picture;
    }
    auto message = call("Notify");
    message.setArguments({QStringLiteral("Tessarel"), shownId_, QString::fromLatin1(desktopId),
                          QString::fromStdString(notice.title), *markup_ ? body.toHtmlEscaped() : body, QStringList(), hints,
                          serviceDecides});
    auto* answer = new QDBusPendingCallWatcher(sessionBus()->asyncCall(message), &life_);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, &life_, [this, answer] {
        const QDBusPendingReply<uint> reply = *answer;
        answer->deleteLater();
        busy_ = false;
        if (reply.isValid()) {
            shownId_ = reply.value();
        } else {
            markup_.reset();  // the service has gone
        }
        go();
    });
}

}  // namespace tessarel::host
