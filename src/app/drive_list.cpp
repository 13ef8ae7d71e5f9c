#include "app/drive_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <numeric>

#include "base/packed_time.h"

namespace tessarel::app {
namespace {

std::string counted(long count, std::string_view thing) { return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s"); }

std::string playingTime(const platform::CdToc& toc) {
    const auto add = [](Frames sum, const platform::CdTrack& track) { return sum + (track.audio ? track.length : 0); };
    const auto time = fromFrames(std::accumulate(toc.tracks.begin(), toc.tracks.end(), Frames{0}, add));
    return fmt::format("{:02}:{:02}", time.minutes, time.seconds);
}

std::string kindName(platform::DriveType type) {
    switch (type) {
        case platform::DriveType::cdRom:
            return "CD-ROM";
        case platform::DriveType::fixed:
            return "fixed";
        case platform::DriveType::removable:
            return "removable";
        case platform::DriveType::remote:
            return "network";
        case platform::DriveType::ramDisk:
            return "RAM disk";
        default:
            return "unknown";
    }
}

std::string contents(char letter, host::DiscDrives& discs, const std::string& folderC, const host::OpenDiscVolume& openVolume) {
    if (auto* drive = discs.drive(letter)) {
        return describeDisc(drive->medium(), openVolume);
    }
    return letter == 'C' ? folderC : letter == 'Z' ? "/" : "";
}

}  // namespace

std::string describeDisc(const std::shared_ptr<host::Medium>& medium, const host::OpenDiscVolume& openVolume) {
    if (!medium) {
        return "no disc";
    }
    const auto& toc = medium->toc();
    const auto audioTracks = std::count_if(toc.tracks.begin(), toc.tracks.end(), [](const auto& track) { return track.audio; });
    std::string text =
        audioTracks > 0 ? fmt::format("audio disc, {}, {}", counted(audioTracks, "track"), playingTime(toc)) : "data disc";
    if (!toc.title.empty()) {
        text += fmt::format(", \"{}\"", toc.title);
    }
    const auto data = host::dataTrackOnShow(toc);
    if (data && audioTracks > 0) {
        text += ", and data";
    }
    const auto volume = data ? openVolume(medium, *data) : Result<std::shared_ptr<host::DiscVolume>>(nullptr);
    return volume && *volume && !(*volume)->label().empty() ? fmt::format("{} \"{}\"", text, (*volume)->label()) : text;
}

std::string driveList(const platform::Drives& drives, host::DiscDrives& discs, const std::string& folderC,
                      const host::OpenDiscVolume& openVolume) {
    std::string list;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const auto type = drives.type(letter);
        if (type != platform::DriveType::noRoot) {
            fmt::format_to(std::back_inserter(list), "{}:  {:<9}  {}\n", letter, kindName(type),
                           contents(letter, discs, folderC, openVolume));
        }
    }
    return list;
}

}  // namespace tessarel::app
