#pragma once
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <memory>
#include <string>

#include "host/desktop/session_bus.h"
#include "platform/media_session.h"

namespace tessarel::host {

/// The program on the desktop's session bus, as the media player interfaces of its standard (MPRIS 2) have it. Before
/// `connect`, and where there is no bus, it only remembers what is published.
class Mpris : public platform::MediaSession {
public:
    explicit Mpris(RealPath realPath);
    ~Mpris() override;
    Mpris(const Mpris&) = delete;
    Mpris& operator=(const Mpris&) = delete;

    void publish(const platform::NowPlaying& now) override;
    void seeked(platform::Milliseconds position) override;

    /// Comes on the bus. To be called once, when the first window stands: it takes a few milliseconds.
    void connect();
    /// Goes from the bus.
    void disconnect();

    const platform::NowPlaying& now() const { return now_; }
    /// Hands a wish of the desktop to the program.
    void ask(const platform::MediaCommand& command) const;
    /// In microseconds, as the standard counts.
    qlonglong position() const;
    QVariantMap metadata() const;

private:
    void requestName(const QString& name, const QString& otherwise);

    RealPath realPath_;
    platform::NowPlaying now_;
    QString image_;  ///< the address of the picture of `now_`
    std::optional<QDBusConnection> bus_;
    std::unique_ptr<QObject> object_;  ///< what the interfaces hang on
    QString name_;                     ///< the name that is owned; empty for none
};

}  // namespace tessarel::host
