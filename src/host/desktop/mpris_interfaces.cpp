#include "host/desktop/mpris_interfaces.h"

#include <QDBusConnection>
#include <QUrl>
#include <array>
#include <chrono>
#include <utility>

namespace tessarel::host {
namespace {

using platform::MediaCommand;
using Kind = MediaCommand::Kind;

constexpr std::array loopNames{std::pair{platform::LoopStatus::none, "None"}, std::pair{platform::LoopStatus::track, "Track"},
                               std::pair{platform::LoopStatus::playlist, "Playlist"}};

platform::Milliseconds ofMicroseconds(qlonglong time) {
    return std::chrono::duration_cast<platform::Milliseconds>(std::chrono::microseconds(time));
}

// The path of a file on this machine; empty for any other address.
QString localFile(const QUrl& address) {
    const bool here = address.host().isEmpty() || address.host() == QLatin1String("localhost");
    return address.isLocalFile() && here ? address.path(QUrl::FullyDecoded) : QString();
}

}  // namespace

// The desktop file claims the same ones.
QStringList MprisRoot::mimeTypes() const {
    return {QStringLiteral("x-content/audio-cdda"),   QStringLiteral("x-content/audio-player"),
            QStringLiteral("application/x-cue"),      QStringLiteral("application/x-cdrdao-toc"),
            QStringLiteral("application/x-nrg"),      QStringLiteral("application/x-cd-image"),
            QStringLiteral("application/vnd.efi.iso")};
}

void MprisRoot::Raise() { session_.ask({.kind = Kind::raise}); }

void MprisRoot::Quit() { session_.ask({.kind = Kind::quit}); }

QString MprisPlayer::playbackStatus() const {
    switch (session_.now().status) {
        case platform::PlaybackStatus::playing:
            return QStringLiteral("Playing");
        case platform::PlaybackStatus::paused:
            return QStringLiteral("Paused");
        case platform::PlaybackStatus::stopped:
            break;
    }
    return QStringLiteral("Stopped");
}

QString MprisPlayer::loopStatus() const {
    for (const auto& [status, name] : loopNames) {
        if (status == session_.now().loop) {
            return QString::fromLatin1(name);
        }
    }
    return {};
}

void MprisPlayer::setLoopStatus(const QString& wanted) {
    for (const auto& [status, name] : loopNames) {
        if (wanted == QLatin1String(name)) {
            session_.ask({.kind = Kind::setLoop, .loop = status});
        }
    }
}

void MprisPlayer::setRate(double rate) {
    if (rate == 0) {
        session_.ask({.kind = Kind::pause});
    }
}

void MprisPlayer::setShuffle(bool on) { session_.ask({.kind = Kind::setShuffle, .on = on}); }

void MprisPlayer::setVolume(double volume) { session_.ask({.kind = Kind::setVolume, .volume = volume < 0 ? 0 : volume}); }

void MprisPlayer::Play() { session_.ask({.kind = Kind::play}); }

void MprisPlayer::Pause() { session_.ask({.kind = Kind::pause}); }

void MprisPlayer::PlayPause() { session_.ask({.kind = Kind::playPause}); }

void MprisPlayer::Stop() { session_.ask({.kind = Kind::stop}); }

void MprisPlayer::Next() { session_.ask({.kind = Kind::next}); }

void MprisPlayer::Previous() { session_.ask({.kind = Kind::previous}); }

void MprisPlayer::Seek(qlonglong Offset) { session_.ask({.kind = Kind::seekBy, .time = ofMicroseconds(Offset)}); }

void MprisPlayer::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position) {
    session_.ask({.kind = Kind::setPosition, .time = ofMicroseconds(Position), .text = TrackId.path().toStdString()});
}

void MprisPlayer::OpenUri(const QString& Uri, const QDBusMessage& message) {
    const auto file = localFile(QUrl(Uri, QUrl::TolerantMode));
    if (file.isEmpty()) {
        message.setDelayedReply(true);
        QDBusConnection::sessionBus().send(message.createErrorReply(
            QDBusError::InvalidArgs, QStringLiteral("Only disc images among the local files can be opened.")));
        return;
    }
    session_.ask({.kind = Kind::open, .text = file.toStdString()});
}

}  // namespace tessarel::host
