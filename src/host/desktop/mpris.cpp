#include "host/desktop/mpris.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMetaProperty>
#include <array>

#include "host/desktop/dispatch.h"
#include "host/desktop/mpris_interfaces.h"

namespace tessarel::host {
namespace {

constexpr auto objectPath = "/org/mpris/MediaPlayer2";
constexpr auto playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr auto noTrack = "/org/mpris/MediaPlayer2/TrackList/NoTrack";
constexpr int microsecondsPerMillisecond = 1000;

constexpr auto busName = "org.freedesktop.DBus";
constexpr auto busPath = "/org/freedesktop/DBus";
constexpr uint doNotQueue = 4;
constexpr uint primaryOwner = 1;

/// Everything that can change and is told when it has, in the standard's names. The position is not among it.
constexpr std::array toldProperties{"PlaybackStatus", "LoopStatus",    "Shuffle", "Metadata", "Volume",
                                    "CanGoNext",      "CanGoPrevious", "CanPlay", "CanPause", "CanSeek"};

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

QVariantMap readAll(const QObject& interface) {
    QVariantMap values;
    for (const char* name : toldProperties) {
        values[QString::fromLatin1(name)] = interface.property(name);
    }
    return values;
}

QVariantMap changes(const QVariantMap& before, const QVariantMap& now) {
    QVariantMap changed;
    for (auto each = now.begin(); each != now.end(); ++each) {
        if (before.value(each.key()) != each.value()) {
            changed[each.key()] = each.value();
        }
    }
    return changed;
}

QDBusMessage callToBus(const char* method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(QString::fromLatin1(busName), QString::fromLatin1(busPath),
                                               QString::fromLatin1(busName), QString::fromLatin1(method));
    call.setArguments(arguments);
    return call;
}

}  // namespace

Mpris::Mpris(RealPath realPath) : realPath_(std::move(realPath)), object_(std::make_unique<QObject>()) {
    new MprisRoot(object_.get(), *this);
    new MprisPlayer(object_.get(), *this);
}

Mpris::~Mpris() { disconnect(); }

void Mpris::connect() {
    bus_ = sessionBus();
    if (bus_ && bus_->registerObject(QString::fromLatin1(objectPath), object_.get())) {
        const auto name = QStringLiteral("org.mpris.MediaPlayer2.tessarel");
        requestName(name, name + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid()));
    }
}

// Another running program may own the plain name.
void Mpris::requestName(const QString& name, const QString& otherwise) {
    auto* answer = new QDBusPendingCallWatcher(bus_->asyncCall(callToBus("RequestName", {name, doNotQueue})), object_.get());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, object_.get(), [this, answer, name, otherwise] {
        const QDBusPendingReply<uint> reply = *answer;
        answer->deleteLater();
        if (reply.isValid() && reply.value() == primaryOwner) {
            name_ = name;
        } else if (reply.isValid() && !otherwise.isEmpty()) {
            requestName(otherwise, {});
        }
    });
}

void Mpris::disconnect() {
    if (!bus_) {
        return;
    }
    if (!name_.isEmpty()) {
        bus_->send(callToBus("ReleaseName", {name_}));
    }
    bus_->unregisterObject(QString::fromLatin1(objectPath));
    bus_.reset();
}

void Mpris::publish(const platform::NowPlaying& now) {
    const auto& player = *object_->findChild<MprisPlayer*>();
    const auto before = readAll(player);
    if (now.image != now_.image) {
        image_ = pictureUri(realPath_, now.image);
    }
    now_ = now;
    const auto changed = bus_ ? changes(before, readAll(player)) : QVariantMap();
    if (changed.isEmpty()) {
        return;
    }
    auto signal = QDBusMessage::createSignal(QString::fromLatin1(objectPath), QStringLiteral("org.freedesktop.DBus.Properties"),
                                             QStringLiteral("PropertiesChanged"));
    signal.setArguments({QString::fromLatin1(playerInterface), changed, QStringList()});
    bus_->send(signal);
}

void Mpris::seeked(platform::Milliseconds position) {
    if (bus_) {
        Q_EMIT object_->findChild<MprisPlayer*>()->Seeked(position.count() * microsecondsPerMillisecond);
    }
}

void Mpris::ask(const platform::MediaCommand& command) const {
    guard([&] {
        if (onCommand) {
            onCommand(command);
        }
    });
}

qlonglong Mpris::position() const {
    qlonglong time = 0;
    guard([&] { time = onPosition ? onPosition().count() * microsecondsPerMillisecond : 0; });
    return time;
}

QVariantMap Mpris::metadata() const {
    const bool none = now_.trackId.empty();
    QVariantMap map{{QStringLiteral("mpris:trackid"),
                     QVariant::fromValue(QDBusObjectPath(none ? QString::fromLatin1(noTrack) : text(now_.trackId)))}};
    if (none) {
        return map;
    }
    map[QStringLiteral("xesam:trackNumber")] = now_.trackNumber;
    map[QStringLiteral("xesam:title")] = text(now_.title);
    const auto add = [&](const char* key, const QVariant& value, bool known) {
        if (known) {
            map[QString::fromLatin1(key)] = value;
        }
    };
    add("mpris:length", qlonglong{now_.length.count() * microsecondsPerMillisecond}, now_.length.count() > 0);
    add("mpris:artUrl", image_, !image_.isEmpty());
    add("xesam:artist", QStringList{text(now_.artist)}, !now_.artist.empty());
    add("xesam:album", text(now_.album), !now_.album.empty());
    add("xesam:albumArtist", QStringList{text(now_.albumArtist)}, !now_.albumArtist.empty());
    return map;
}

}  // namespace tessarel::host
