#pragma once
#include <string>

#include "audio/player_state.h"
#include "base/packed_time.h"
#include "library/disc_record.h"
#include "platform/media_session.h"
#include "platform/notifications.h"
#include "volume/volume_state.h"

/// What the desktop is told of the player, and what its wishes mean, as functions from values to values.
namespace tessarel::audio {

/// How the device stands.
struct DeviceReading {
    int mode = 0;         ///< of `MMControl::Mode`
    Tmsf position;        ///< what is heard, or would be
    int trackBefore = 0;  ///< the track that Previous would go to from the one that is heard; 0 for none
};

/// What the session is told from.
struct SessionSources {
    const PlayerState& player;
    const library::DiscRecord& record;
    const volume::VolumeState& volume;
    int discLoads = 0;  ///< loads of a disc so far: the names of tracks of former ones are not used again
};

/// The level that the sliders stand for, 0 to 1; of two, the louder.
double sessionVolume(const volume::VolumeState& volume);

platform::LoopStatus sessionLoop(const PlayerState& player);

/// The session while a disc is loaded.
platform::NowPlaying nowPlaying(const SessionSources& sources, const DeviceReading& device);

/// The session without a disc.
platform::NowPlaying nothingPlaying(const SessionSources& sources);

/// Where the device is in its track; 0 unless it plays or pauses.
platform::Milliseconds sessionPosition(const DeviceReading& device);

/// What a wish for another position comes to.
struct SeekPlan {
    enum class Kind { nothing, jump, next };
    Kind kind = Kind::nothing;
    int seconds = 0;  ///< whole seconds into the track, inside it
    bool operator==(const SeekPlan&) const = default;
};

/// For `seekBy`: before the start is the start, the end and behind it is the next track. For `setPosition`: a position outside
/// the track, and one of a track that is not the present one, is passed over.
SeekPlan planSeek(const platform::NowPlaying& now, platform::Milliseconds position, const platform::MediaCommand& command);

/// Where on the position bar a second of a track lies, 0 to 1; a track without a whole second has its start alone.
float shareOfBar(int seconds, int lengthSeconds);

/// The words that tell of a track.
platform::Notice noticeOf(const platform::NowPlaying& now);

}  // namespace tessarel::audio
