#pragma once
#include <deque>
#include <optional>
#include <string>

#include "audio/cdform_face.h"
#include "audio/session_rules.h"
#include "forms/windows.h"
#include "platform/media_session.h"
#include "platform/notifications.h"
#include "shell/context.h"
#include "volume/remote.h"

namespace tessarel::audio {

/// What the session asks of the Audio CD window; that window implements it.
class SessionPlayer {
public:
    static constexpr const char* windowName = "CDForm";

    virtual ~SessionPlayer() = default;
    virtual DeviceReading deviceReading() const = 0;
    /// The keys, to be pressed as a person presses them.
    virtual CDFormFace& keys() = 0;
    /// Another disc has been put in place of the one that is loaded.
    virtual void discReplaced() = 0;
    /// Takes the track that is heard for the player's own, and watches for its end anew. The own one runs ahead in a track's
    /// last seconds, and stays behind while the window is minimised. Nothing while nothing is heard.
    virtual void goByTheSound() = 0;
    /// Lets a track run on that single-track mode, just chosen, would begin anew.
    virtual void letTrackRunOn() = 0;
};

/// The player as the desktop sees it: tells what plays, names a new track to a person who is busy elsewhere, and carries out
/// what media keys ask for. It watches nothing by itself: the Audio CD window calls `refresh` with its pulse. What is asked is
/// done by pressing the window's keys, so that every rule of these holds; without that window only raise, quit and open work.
class PlayerSession {
public:
    /// All outlive the session.
    PlayerSession(const shell::Context& context, platform::MediaSession& media, platform::Notifications& notifications,
                  const PlayerState& player, const library::DiscRecord& record, const volume::VolumeState& volume,
                  const volume::RemoteState& remote);
    ~PlayerSession();
    PlayerSession(const PlayerSession&) = delete;
    PlayerSession& operator=(const PlayerSession&) = delete;

    /// The window has loaded a disc.
    void discLoaded();
    /// The window goes, or has no disc any more.
    void discGone();
    /// Publishes what has changed since the last time.
    void refresh();

private:
    using Command = platform::MediaCommand;

    SessionPlayer* window() const;
    SessionPlayer* windowWithDisc() const;
    SessionSources sources() const { return {player_, record_, levels(), discLoads_}; }
    const volume::VolumeState& levels() const;
    std::optional<volume::VolumeControls> volumeControls() const;
    platform::Milliseconds position() const;
    void publish(const platform::NowPlaying& now);
    void watchPosition(const platform::NowPlaying& before, platform::Milliseconds at);
    void tellOfTrack(platform::Milliseconds at);

    void queue(const Command& command);
    void actOnNext();
    void act(const Command& command);
    void raise() const;
    [[noreturn]] void quit() const;
    void open(const std::string& image);
    void press(SessionPlayer& player, const Command& command);
    void playOrPause(CDFormFace& keys, bool play) const;
    void step(SessionPlayer& player, int transportIndex) const;
    void seek(SessionPlayer& player, const Command& command);
    void setLoop(SessionPlayer& player, platform::LoopStatus wanted) const;
    void setShuffle(CDFormFace& keys, bool wanted) const;
    void setVolume(double wanted) const;

    shell::Context context_;
    platform::MediaSession& media_;
    platform::Notifications& notifications_;
    const PlayerState& player_;
    const library::DiscRecord& record_;
    const volume::VolumeState& volume_;
    const volume::RemoteState& remote_;

    int discLoads_ = 0;
    platform::NowPlaying now_;
    platform::Milliseconds lastPosition_{0};
    platform::Milliseconds lastLook_{0};  // on the steady clock
    std::string toldTrack_;               // the track that a notice has been due for
    std::deque<Command> asked_;
    platform::TimerHandle acting_;
};

}  // namespace tessarel::audio
