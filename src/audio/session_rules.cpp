#include "audio/session_rules.h"

#include <algorithm>

#include "audio/device/mm_control.h"
#include "audio/disc_text.h"
#include "base/clock_text.h"
#include "base/text.h"
#include "volume/volume_levels.h"

namespace tessarel::audio {
namespace {

using platform::LoopStatus;
using platform::MediaCommand;
using platform::Milliseconds;
using platform::NowPlaying;
using platform::PlaybackStatus;

constexpr Milliseconds second{1000};

Milliseconds ofFrames(Frames frames) { return Milliseconds(std::int64_t{frames} * 1000 / framesPerSecond); }

PlaybackStatus statusOf(const DeviceReading& device) {
    if (device.mode == mode::playing) {
        return PlaybackStatus::playing;
    }
    return device.mode == mode::paused ? PlaybackStatus::paused : PlaybackStatus::stopped;
}

// The one that sounds, or that Play would begin with.
int trackOf(const PlayerState& player, const DeviceReading& device) {
    const int track = statusOf(device) == PlaybackStatus::stopped ? player.currentTrack : device.position.track;
    return track >= 1 && track <= player.discTrackCount ? track : 0;
}

// Nothing before the table of tracks has been built.
Milliseconds lengthOf(const PlayerState& player, int track) {
    const auto at = static_cast<std::size_t>(track);
    const int seconds = clockSeconds(clockText(player.trackLengths.at(at)));
    return seconds * second + ofFrames(player.trackFrames.at(at));
}

void tellTrack(NowPlaying& now, const SessionSources& sources, int track) {
    const ShownTexts texts(sources.record, sources.player.discText);
    const auto number = std::to_string(track);
    now.trackId = "/org/tessarel/Disc" + std::to_string(sources.discLoads) + "/Track" + number;
    now.trackNumber = track;
    now.title = text::trim(texts.trackTitle(track));
    if (now.title.empty()) {
        now.title = "Track " + number;
    }
    now.artist = text::trim(texts.trackArtist(track));
    now.album = text::trim(texts.discTitle());
    now.albumArtist = text::trim(texts.artist());
    now.length = lengthOf(sources.player, track);
}

// The images of a disc without a set of its own are not its jacket.
std::string jacketOf(const library::DiscRecord& record) {
    const auto* first = std::find_if(record.imageFiles.begin() + 1, record.imageFiles.end(),
                                     [](const std::string& file) { return !text::trim(file).empty(); });
    return record.noStoredImages != 0 || first == record.imageFiles.end() ? std::string() : text::trim(*first);
}

void tellKeys(NowPlaying& now, const PlayerState& player, const DeviceReading& device) {
    const bool runs = now.status != PlaybackStatus::stopped;
    const bool program = player.playMode == programmed;
    const bool started = player.playStarted != 0;
    now.canPlay = true;
    now.canPause = true;
    now.canSeek = now.status == PlaybackStatus::playing && now.length > Milliseconds(0);
    now.canGoNext = runs && (program || (started && trackOf(player, device) + 1 <= player.discTrackCount));
    now.canGoPrevious = runs && (program ? player.repeatOn == 1 : started && device.trackBefore >= 1);
}

}  // namespace

double sessionVolume(const volume::VolumeState& volume) {
    const int loudest = std::min(volume.sliderLastLeft, volume.sliderLastRight);
    const int figure = volume.muted ? 0 : volume::silentPosition - loudest;
    return std::clamp(figure, 0, volume::silentPosition) / static_cast<double>(volume::silentPosition);
}

LoopStatus sessionLoop(const PlayerState& player) {
    if (player.repeatOn != 1) {
        return LoopStatus::none;
    }
    return player.playMode == singleTrack ? LoopStatus::track : LoopStatus::playlist;
}

NowPlaying nothingPlaying(const SessionSources& sources) {
    NowPlaying now;
    now.loop = sessionLoop(sources.player);
    now.volume = sessionVolume(sources.volume);
    return now;
}

NowPlaying nowPlaying(const SessionSources& sources, const DeviceReading& device) {
    const PlayerState& player = sources.player;
    auto now = nothingPlaying(sources);
    now.status = statusOf(device);
    now.shuffle = player.playMode == programmed && player.randomProgram == 1;
    now.image = jacketOf(sources.record);
    if (const int track = trackOf(player, device); track > 0) {
        tellTrack(now, sources, track);
    }
    tellKeys(now, player, device);
    return now;
}

Milliseconds sessionPosition(const DeviceReading& device) {
    const auto& at = device.position;
    return statusOf(device) == PlaybackStatus::stopped ? Milliseconds(0)
                                                       : ofFrames(toFrames({at.minutes, at.seconds, at.frames}));
}

SeekPlan planSeek(const NowPlaying& now, Milliseconds position, const MediaCommand& command) {
    if (!now.canSeek) {
        return {};
    }
    // A wish may be any number: brought into reach, so that no sum overflows.
    const auto wish = std::clamp(command.time, -now.length - second, now.length + second);
    auto target = wish;
    if (command.kind == MediaCommand::Kind::seekBy) {
        target = std::max(position + wish, Milliseconds(0));
        if (target >= now.length) {
            return {SeekPlan::Kind::next, 0};
        }
    } else if (command.text != now.trackId || wish < Milliseconds(0) || wish > now.length) {
        return {};
    }
    const auto lastSecond = std::max(now.length / second - 1, std::int64_t{0});
    return {SeekPlan::Kind::jump, static_cast<int>(std::min((target + second / 2) / second, lastSecond))};
}

float shareOfBar(int seconds, int lengthSeconds) {
    return lengthSeconds > 0 ? static_cast<float>(seconds) / static_cast<float>(lengthSeconds) : 0.0F;
}

platform::Notice noticeOf(const NowPlaying& now) {
    const auto& artist = now.artist;
    const auto& album = now.album;
    return {now.title, artist + (artist.empty() || album.empty() ? "" : " - ") + album, now.image};
}

}  // namespace tessarel::audio
