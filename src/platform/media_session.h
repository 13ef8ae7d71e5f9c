#pragma once
#include <functional>
#include <string>

#include "platform/scheduler.h"

namespace tessarel::platform {

enum class PlaybackStatus { stopped, playing, paused };

/// What is repeated when it ends.
enum class LoopStatus { none, track, playlist };

/// What the desktop is told of the player. Without a track, as without a disc, the texts are empty.
struct NowPlaying {
    PlaybackStatus status = PlaybackStatus::stopped;
    LoopStatus loop = LoopStatus::none;
    bool shuffle = false;
    double volume = 1;  ///< 0 to 1

    /// Names the track of this load of its disc: letters, digits and slashes, with a slash in front. Empty for none.
    std::string trackId;
    int trackNumber = 0;
    std::string title;
    std::string artist;
    std::string album;
    std::string albumArtist;
    Milliseconds length{0};  ///< 0 while it is not known
    std::string image;       ///< a path of the program's own, of a file that need not exist; empty for none

    bool canPlay = false;
    bool canPause = false;
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canSeek = false;

    bool operator==(const NowPlaying&) const = default;
};

/// What the desktop asks of the program.
struct MediaCommand {
    enum class Kind {
        raise,
        quit,
        play,
        pause,
        playPause,
        stop,
        next,
        previous,
        seekBy,       ///< by `time`, which may be negative
        setPosition,  ///< to `time` in the track that `text` names
        open,         ///< the disc image whose real path `text` is
        setLoop,      ///< to `loop`
        setShuffle,   ///< to `on`
        setVolume,    ///< to `volume`
    };
    Kind kind = Kind::play;
    Milliseconds time{0};
    std::string text = {};
    LoopStatus loop = LoopStatus::none;
    bool on = false;
    double volume = 0;
};

/// The program as the desktop's media keys and media controls see it.
class MediaSession {
public:
    virtual ~MediaSession() = default;

    /// Tells what holds from now on.
    virtual void publish(const NowPlaying& now) = 0;
    /// The position has jumped, within what has been published.
    virtual void seeked(Milliseconds position) = 0;

    /// Called on the program's thread, whenever the desktop asks; also during a deliberate wait, so it must not act at once.
    std::function<void(const MediaCommand&)> onCommand;
    /// The position in the track that has been published; it is asked for, never told.
    std::function<Milliseconds()> onPosition;
};

}  // namespace tessarel::platform
