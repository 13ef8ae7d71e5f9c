#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/packed_time.h"

namespace tessarel::platform {

struct CdTrack {
    int number = 0;     ///< 1 to 99
    Frames start = 0;   ///< frame address of its INDEX 01; the disc's program area begins at 0
    Frames length = 0;  ///< frames up to the next track's INDEX 01, or to the lead-out of its session
    bool audio = true;  ///< data tracks are never played
    std::string title;  ///< from the disc's own CD-TEXT, or empty
    std::string performer;
    bool operator==(const CdTrack&) const = default;
};

/// A disc's table of contents.
struct CdToc {
    std::vector<CdTrack> tracks;  ///< in order, at least one
    Frames leadOut = 0;           ///< first frame address behind the last track
    std::string title;            ///< from the disc's own CD-TEXT, or empty
    std::string performer;
    bool operator==(const CdToc&) const = default;
};

enum class CdOpenFault {
    inUse,       ///< another program holds the drive
    noDriver,    ///< there is no such drive
    cannotPlay,  ///< the drive is there but can't play audio discs
};

enum class CdState { closed, stopped, playing, paused };

/// Why play ended without having been told to.
enum class CdEnding {
    endOfDisc,
    hardware,  ///< the disc was pulled out, or can no longer be read
};

/// One opened audio disc drive. Calls come from the program's thread, return at once, and do nothing while closed.
/// Positions are frame addresses as in `CdTrack::start`.
class CdPlayer {
public:
    virtual ~CdPlayer() = default;

    /// Opens the drive of a letter. Drives without a disc open too. A player opened unshared keeps others from it.
    /// Nothing is returned on success.
    virtual std::optional<CdOpenFault> open(char letter, bool shareable) = 0;

    /// Releases the drive; play stops.
    virtual void close() = 0;

    /// The disc now in the drive; nothing when there is none, or it can't be read. Cheap enough for a call every 300 ms.
    virtual std::shared_ptr<const CdToc> toc() = 0;

    /// Plays from an address on to the lead-out, over data tracks in silence-free jumps, then ends with `endOfDisc`.
    virtual void play(Frames from) = 0;
    /// Moves without playing; play, or `resume`, goes on from there.
    virtual void seek(Frames to) = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    virtual void stop() = 0;
    /// As `stop`, but what is left of the disc still sounds: for the end that the player itself calls, a moment before
    /// the lead-out. Any later call cuts it.
    virtual void runOut() = 0;
    /// Opens the tray, or takes an inserted image out.
    virtual void eject() = 0;

    virtual CdState state() const = 0;
    /// The address that is heard now; the last one once play has stopped or paused.
    virtual Frames position() const = 0;

    /// Called on the program's thread when play ends by itself.
    std::function<void(CdEnding)> onEnded;
};

/// Makes players: each window that opens the audio device has one of its own.
class CdPlayers {
public:
    virtual ~CdPlayers() = default;
    virtual std::unique_ptr<CdPlayer> make() = 0;
};

}  // namespace tessarel::platform
