#pragma once
#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QStringList>

#include "host/desktop/mpris.h"

/// The two interfaces as the bus shows them. Their members bear the standard's names, of which none is free.
namespace tessarel::host {

class MprisRoot : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ yes CONSTANT)
    Q_PROPERTY(bool CanRaise READ yes CONSTANT)
    Q_PROPERTY(bool HasTrackList READ no CONSTANT)
    Q_PROPERTY(QString Identity READ identity CONSTANT)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry CONSTANT)
    Q_PROPERTY(QStringList SupportedUriSchemes READ uriSchemes CONSTANT)
    Q_PROPERTY(QStringList SupportedMimeTypes READ mimeTypes CONSTANT)

public:
    MprisRoot(QObject* object, const Mpris& session) : QDBusAbstractAdaptor(object), session_(session) {}

    bool yes() const { return true; }
    bool no() const { return false; }
    QString identity() const { return QStringLiteral("Tessarel"); }
    QString desktopEntry() const { return QStringLiteral("org.tessarel.Tessarel"); }
    QStringList uriSchemes() const { return {QStringLiteral("file")}; }
    QStringList mimeTypes() const;

    Q_SLOT void Raise();
    Q_SLOT void Quit();

private:
    const Mpris& session_;
};

class MprisPlayer : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QString LoopStatus READ loopStatus WRITE setLoopStatus)
    Q_PROPERTY(double Rate READ rate WRITE setRate)
    Q_PROPERTY(bool Shuffle READ shuffle WRITE setShuffle)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(double MinimumRate READ rate CONSTANT)
    Q_PROPERTY(double MaximumRate READ rate CONSTANT)
    Q_PROPERTY(bool CanGoNext READ canGoNext)
    Q_PROPERTY(bool CanGoPrevious READ canGoPrevious)
    Q_PROPERTY(bool CanPlay READ canPlay)
    Q_PROPERTY(bool CanPause READ canPause)
    Q_PROPERTY(bool CanSeek READ canSeek)
    Q_PROPERTY(bool CanControl READ canControl CONSTANT)

public:
    MprisPlayer(QObject* object, const Mpris& session) : QDBusAbstractAdaptor(object), session_(session) {}

    QString playbackStatus() const;
    QString loopStatus() const;
    void setLoopStatus(const QString& status);
    double rate() const { return 1; }
    /// A disc has one speed; the standard has a rate of 0 pause it.
    void setRate(double rate);
    bool shuffle() const { return session_.now().shuffle; }
    void setShuffle(bool on);
    QVariantMap metadata() const { return session_.metadata(); }
    double volume() const { return session_.now().volume; }
    void setVolume(double volume);
    qlonglong position() const { return session_.position(); }
    bool canGoNext() const { return session_.now().canGoNext; }
    bool canGoPrevious() const { return session_.now().canGoPrevious; }
    bool canPlay() const { return session_.now().canPlay; }
    bool canPause() const { return session_.now().canPause; }
    bool canSeek() const { return session_.now().canSeek; }
    bool canControl() const { return true; }

    Q_SLOT void Play();
    Q_SLOT void Pause();
    Q_SLOT void PlayPause();
    Q_SLOT void Stop();
    Q_SLOT void Next();
    Q_SLOT void Previous();
    Q_SLOT void Seek(qlonglong Offset);
    Q_SLOT void SetPosition(const QDBusObjectPath& TrackId, qlonglong Position);
    /// Anything but the address of a local file is answered with an error.
    Q_SLOT void OpenUri(const QString& Uri, const QDBusMessage& message);

    Q_SIGNAL void Seeked(qlonglong Position);

private:
    const Mpris& session_;
};

}  // namespace tessarel::host
