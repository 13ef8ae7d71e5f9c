#include "host/image/nrg_footer.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/medium.h"

namespace tessarel::host {
namespace {

std::uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint64_t n = 0;
    for (const char c : bytes.substr(at, width)) {
        n = n << 8U | static_cast<unsigned char>(c);
    }
    return n;
}

std::optional<SectorForm> formOf(unsigned mode, std::uint64_t bytes) {
    std::optional<SectorForm> form;
    if (mode == 0 || mode == 2) {
        form = SectorForm::cooked;
    } else if (mode == 3) {
        form = SectorForm::mode2Headless;
    } else if (mode == 5 || mode == 6) {
        form = SectorForm::raw;
    } else if (mode == 7) {
        form = SectorForm::audio;
    }
    return form && bytes == static_cast<std::uint64_t>(sectorBytes(*form)) ? form : std::nullopt;
}

class ListReader {
public:
    Result<NrgFooter> read(std::string_view lists) {
        while (lists.size() >= 8) {
            const std::string_view name = lists.substr(0, 4);
            const std::uint64_t length = numberAt(lists, 4, 4);
            if (name == "END!") {
                return finish();
            }
            if (length > lists.size() - 8) {
                break;
            }
            if (auto done = readList(name, lists.substr(8, length)); !done) {
                return tl::unexpected(done.error());
            }
            lists.remove_prefix(8 + length);
        }
        return failure(Fault::invalid, "its lists of tracks are cut off.");
    }

private:
    Result<NrgFooter> finish() {
        if (footer_.tracks.empty() || footer_.tracks.size() > mostTracks) {
            return failure(Fault::invalid, footer_.tracks.empty() ? "it has no tracks." : "a disc has 99 tracks at most.");
        }
        return std::move(footer_);
    }

    Result<void> readList(std::string_view name, std::string_view list) {
        if (name == "CUEX") {
            readCues(list);
        } else if (name == "DAOX" || name == "DAOI") {
            return readDiscAtOnce(list, name == "DAOX" ? 8 : 4);
        } else if (name == "ETN2" || name == "ETNF") {
            return readTrackAtOnce(list, name == "ETN2" ? 8 : 4);
        }
        return {};
    }

    /// Entries of 8 bytes: control, track in decimal digits, index, nothing, address.
    void readCues(std::string_view list) {
        for (; list.size() >= 8; list.remove_prefix(8)) {
            const auto track = static_cast<unsigned>(numberAt(list, 1, 1));
            const auto address = static_cast<std::int32_t>(numberAt(list, 4, 4));
            if (track == 0xAA) {
                footer_.leadOut = address;
            } else if (numberAt(list, 2, 1) == 1) {
                footer_.starts[static_cast<int>(track / 16 * 10 + track % 16)] = address;
            }
        }
    }

    Result<void> add(NrgTrack track, std::optional<SectorForm> form, bool first) {
        if (!form) {
            return failure(Fault::unsupported,
                           fmt::format("track {} is stored in a way that is not served.", footer_.tracks.size() + 1));
        }
        track.form = *form;
        track.newSession = first && !footer_.tracks.empty();
        footer_.tracks.push_back(track);
        return {};
    }

    /// A head of 22 bytes, then for each track: its code (12 bytes), sector size (2), mode (1), nothing (3), and the places of
    /// its pregap, its start and its end.
    Result<void> readDiscAtOnce(std::string_view list, std::size_t width) {
        constexpr std::size_t head = 22;
        list.remove_prefix(std::min(head, list.size()));
        bool first = true;
        for (const std::size_t length = 18 + 3 * width; list.size() >= length; list.remove_prefix(length), first = false) {
            NrgTrack track;
            track.pregapAt = static_cast<std::int64_t>(numberAt(list, 18, width));
            track.at = static_cast<std::int64_t>(numberAt(list, 18 + width, width));
            track.end = static_cast<std::int64_t>(numberAt(list, 18 + 2 * width, width));
            const auto form = formOf(static_cast<unsigned>(numberAt(list, 14, 1)), numberAt(list, 12, 2));
            if (auto done = add(track, form, first); !done) {
                return done;
            }
        }
        return {};
    }

    /// For each track: place, length, mode (4), frame address (4), and nothing to fill up.
    Result<void> readTrackAtOnce(std::string_view list, std::size_t width) {
        bool first = true;
        for (const std::size_t length = width == 8 ? 32 : 20; list.size() >= length;
             list.remove_prefix(length), first = false) {
            NrgTrack track;
            track.at = static_cast<std::int64_t>(numberAt(list, 0, width));
            track.pregapAt = track.at;
            const auto size = numberAt(list, width, width);
            track.end = static_cast<std::int64_t>(static_cast<std::uint64_t>(track.at) + size);
            track.start = static_cast<std::int32_t>(numberAt(list, 2 * width + 4, 4));
            const auto mode = static_cast<unsigned>(numberAt(list, 2 * width, 4));
            const auto form = mode == 0 || mode == 2 ? formOf(mode, 2048) : mode == 3 ? formOf(mode, 2336) : formOf(mode, 2352);
            if (auto done = add(track, form, first); !done) {
                return done;
            }
        }
        return {};
    }

    NrgFooter footer_;
};

class NrgPlanner {
public:
    NrgPlanner(const NrgFooter& footer, std::int64_t sectorArea) : footer_(footer), sectorArea_(sectorArea) {}

    Result<DiscPlan> plan() {
        for (const NrgTrack& track : footer_.tracks) {
            if (auto done = planTrack(track); !done) {
                return tl::unexpected(done.error());
            }
        }
        if (footer_.leadOut && *footer_.leadOut != end_) {
            return failure(Fault::invalid, "its two lists of tracks do not agree.");
        }
        return std::move(plan_);
    }

private:
    Result<void> planTrack(const NrgTrack& track) {
        const int number = static_cast<int>(plan_.tracks.size()) + 1;
        const std::int64_t bytes = sectorBytes(track.form);
        const bool rising = track.pregapAt >= 0 && track.pregapAt <= track.at && track.at < track.end;
        if (!rising || track.end > sectorArea_) {
            return failure(Fault::invalid, fmt::format("it is too short for track {}.", number));
        }
        if ((track.at - track.pregapAt) % bytes != 0 || (track.end - track.at) % bytes != 0) {
            return failure(Fault::invalid, fmt::format("track {} is no whole number of sectors.", number));
        }
        std::int64_t stored = (track.at - track.pregapAt) / bytes;
        const auto start = startOf(track, number, stored);
        if (!start) {
            return failure(Fault::invalid, "its lists do not tell where its tracks begin.");
        }
        // The first track's gap begins before address 0, where a disc can't be read.
        stored = number == 1 ? std::min(stored, *start) : stored;
        const std::int64_t unstored = *start - stored - end_;
        if (unstored < 0 || unstored > std::int64_t{100} * 60 * framesPerSecond) {
            return failure(Fault::invalid, fmt::format("the place of track {} is wrong.", number));
        }
        addTrack(track, number, stored, unstored);
        end_ = *start + (track.end - track.at) / bytes;
        return {};
    }

    void addTrack(const NrgTrack& track, int number, std::int64_t stored, std::int64_t unstored) {
        PlannedTrack planned;
        planned.number = number;
        planned.audio = track.form == SectorForm::audio;
        if (track.newSession) {
            planned.sessionGap = static_cast<Frames>(unstored);
        } else if (unstored > 0) {
            planned.pieces.emplace_back().length = unstored * samplesPerFrame;
        }
        planned.pregap = (stored + (track.newSession ? 0 : unstored)) * samplesPerFrame;
        const auto kind = planned.audio ? Piece::Kind::sound : Piece::Kind::sectors;
        const std::int64_t bytes = sectorBytes(track.form);
        const std::int64_t from = track.at - stored * bytes;
        planned.pieces.push_back({kind, track.form, 0, from, (track.end - from) / bytes * samplesPerFrame});
        plan_.tracks.push_back(std::move(planned));
    }

    /// The address of a track's INDEX 01. Without a cue list the tracks lie one behind the other, as they are stored.
    std::optional<std::int64_t> startOf(const NrgTrack& track, int number, std::int64_t stored) const {
        if (const auto said = footer_.starts.find(number); said != footer_.starts.end() && said->second >= 0) {
            return said->second;
        }
        if (track.start && *track.start >= 0) {
            return *track.start;
        }
        if (!footer_.starts.empty() || track.newSession) {
            return std::nullopt;
        }
        return number == 1 ? std::max<std::int64_t>(stored - leadInFrames, 0) : end_ + stored;
    }

    const NrgFooter& footer_;
    std::int64_t sectorArea_;
    DiscPlan plan_;
    std::int64_t end_ = 0;
};

}  // namespace

std::optional<std::int64_t> nrgListsAt(std::string_view lastBytes, std::int64_t fileSize) {
    if (lastBytes.size() != 12) {
        return std::nullopt;
    }
    const bool wide = lastBytes.substr(0, 4) == "NER5";
    if (!wide && lastBytes.substr(4, 4) != "NERO") {
        return std::nullopt;
    }
    const auto at = wide ? numberAt(lastBytes, 4, 8) : numberAt(lastBytes, 8, 4);
    return at < static_cast<std::uint64_t>(fileSize) ? std::optional(static_cast<std::int64_t>(at)) : std::nullopt;
}

Result<NrgFooter> parseNrgLists(std::string_view lists) { return ListReader().read(lists); }

Result<DiscPlan> planNrg(const NrgFooter& footer, std::int64_t sectorArea) { return NrgPlanner(footer, sectorArea).plan(); }

}  // namespace tessarel::host
