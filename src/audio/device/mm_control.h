#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/cd_player.h"
#include "platform/scheduler.h"

namespace tessarel::audio {

/// Values of `MMControl::Mode`.
namespace mode {
inline constexpr int notOpen = 524;
inline constexpr int stopped = 525;
inline constexpr int playing = 526;
inline constexpr int paused = 529;
}  // namespace mode

/// Codes of `MMControl::Error` and of `PlayCompleted`.
namespace deviceError {
inline constexpr int none = 0;
inline constexpr int hardware = 262;
inline constexpr int notLoaded = 266;
inline constexpr int inUse = 291;
}  // namespace deviceError

inline constexpr int timeFormatTmsf = 10;

/// The audio CD device as its windows drive it: set properties, then write a word to `Command`. Times are packed as
/// base/packed_time.h tells. A command that fails leaves the properties as they were.
class MMControl {
public:
    /// `driveLetter` tells, at each "Open", which drive is meant.
    MMControl(platform::Scheduler& scheduler, platform::CdPlayers& players, std::function<char()> driveLetter);

    std::string DeviceType;
    bool Shareable = true;
    bool Notify = false;
    bool Wait = false;
    int TimeFormat = 0;

    /// Starts of the next Play and target of the next Seek: a bare track number, or a packed position in a track. `From`
    /// holds until a Play has used it.
    void setFrom(std::int32_t tmsf) { from_ = tmsf; }
    void setTo(std::int32_t tmsf) { to_ = tmsf; }

    /// The track that `TrackLength` reports.
    void setTrack(int track) { track_ = track; }
    int Track() const { return track_; }

    /// Milliseconds between two status events, 0 for none. Setting the value that stands leaves the beat alone.
    void setUpdateInterval(int ms);

    /// "Open", "Play", "Pause", "Resume", "Seek", "Stop", "Close" or "Eject", in any case. An unknown word does nothing.
    void Command(std::string_view word);

    /// As "Stop", for the end that the player itself calls just before the lead-out: what is left of the disc still sounds.
    void stopAtDiscEnd();

    /// Of the last "Open".
    int Error() const { return error_; }
    bool CanPlay() const { return canPlay_; }

    int Mode() const;
    int Tracks() const;  ///< 0 means no disc
    /// The first track from this one on that holds sound; the track itself when none does.
    int firstAudioTrackFrom(int track) const;
    /// The last track up to this one that holds sound; 0 when there is none.
    int lastAudioTrackUpTo(int track) const;
    std::int32_t TrackLength() const;  ///< packed MSF of the selected track
    std::int32_t Length() const;       ///< packed MSF of the whole disc
    std::int32_t Position() const;     ///< packed TMSF; the last one known when there is no disc
    bool isOpen() const { return open_; }
    /// The disc's own table of contents; nothing while the device is closed or has no disc.
    std::shared_ptr<const platform::CdToc> toc() const;

    /// The answer to a command string: "set cdaudio time format milliseconds" (none) or "status cdaudio position" (decimal
    /// milliseconds). Only while the device is open.
    std::string sendString(std::string_view command);

    std::function<void()> StatusUpdate;
    std::function<void(int code)> PlayCompleted;

private:
    void open();
    void close();
    void play();
    void seek();
    Frames address() const;
    std::optional<Frames> addressOf(std::int32_t tmsf) const;

    platform::Scheduler& scheduler_;
    std::unique_ptr<platform::CdPlayer> player_;
    std::function<char()> driveLetter_;
    std::optional<std::int32_t> from_;
    std::int32_t to_ = 0;
    int track_ = 1;
    int updateInterval_ = 0;
    int error_ = deviceError::none;
    bool canPlay_ = false;
    bool open_ = false;
    bool moved_ = false;  // play or seek has happened since "Open"
    mutable std::int32_t lastPosition_ = 0;
    platform::TimerHandle status_;
};

}  // namespace tessarel::audio
