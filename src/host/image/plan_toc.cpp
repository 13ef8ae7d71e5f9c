#include <fmt/format.h>

#include "host/image/disc_plan.h"
#include "host/medium.h"

namespace tessarel::host {
namespace {

/// What a length amounts to in samples; nothing when its bytes are no whole sectors.
std::optional<std::int64_t> samplesOf(const TocLength& length, SectorForm form) {
    if (length.isTime) {
        return length.count * samplesPerFrame;
    }
    if (form == SectorForm::audio) {
        return length.count;
    }
    if (length.count % sectorBytes(form) != 0) {
        return std::nullopt;
    }
    return length.count / sectorBytes(form) * samplesPerFrame;
}

class TocPlanner {
public:
    TocPlanner(const TocFile& toc, const std::vector<FileExtent>& files) : toc_(toc), files_(files) {}

    Result<DiscPlan> plan() {
        DiscPlan plan{{}, toc_.title, toc_.performer};
        for (const TocTrack& track : toc_.tracks) {
            auto planned = planTrack(track, static_cast<int>(plan.tracks.size()) + 1);
            if (!planned) {
                return tl::unexpected(planned.error());
            }
            plan.tracks.push_back(std::move(*planned));
        }
        return plan;
    }

private:
    Result<PlannedTrack> planTrack(const TocTrack& track, int number) {
        number_ = number;
        PlannedTrack planned;
        planned.number = number;
        planned.audio = track.form == SectorForm::audio;
        planned.title = track.title;
        planned.performer = track.performer;
        std::int64_t sum = 0;
        std::int64_t start = 0;
        for (std::size_t p = 0; p < track.pieces.size(); ++p) {
            auto piece =
                track.pieces[p].file.empty() ? planZeros(track.pieces[p], track.form) : planFile(track.pieces[p], track.form);
            if (!piece) {
                return tl::unexpected(piece.error());
            }
            sum += piece->length;
            start = p < track.startAfter ? sum : start;
            if (piece->length > 0) {
                planned.pieces.push_back(*piece);
            }
        }
        const auto into = samplesOf(track.start, track.form);
        planned.pregap = start + into.value_or(0);
        if (!into || planned.pregap % samplesPerFrame != 0) {
            return refuse(fmt::format("track {} does not start at a whole frame.", number));
        }
        return planned;
    }

    static tl::unexpected<Error> refuse(std::string reason) { return failure(Fault::invalid, std::move(reason)); }

    Result<Piece> planZeros(const TocPiece& from, SectorForm form) const {
        const auto length = samplesOf(from.length.value_or(TocLength{}), form);
        if (!length) {
            return refuse(fmt::format("the zeros of track {} are no whole sectors.", number_));
        }
        Piece piece;
        piece.length = *length;
        return piece;
    }

    Result<Piece> planFile(const TocPiece& from, SectorForm form) {
        const FileExtent& file = files_[file_++];
        const bool audio = form == SectorForm::audio;
        if (file.sound && (!audio || from.byteOffset != 0 || from.swap)) {
            return refuse(fmt::format("\"{}\" is a sound file, and track {} takes it for bytes.", file.name, number_));
        }
        if (from.swap && !audio) {
            return refuse(fmt::format("track {} is data and can't be swapped.", number_));
        }
        const int unitBytes = file.sound ? 1 : audio ? 4 : sectorBytes(form);
        const std::int64_t unitSamples = audio ? 1 : samplesPerFrame;
        const std::int64_t offset = from.byteOffset + samplesOf(from.start, form).value_or(0) * unitBytes;
        const std::int64_t left = file.size - offset;
        if (left <= 0) {
            return refuse(fmt::format("\"{}\" is too short for track {}.", file.name, number_));
        }
        if (!from.length && left % unitBytes != 0) {
            return refuse(fmt::format("\"{}\" is cut off inside a {}.", file.name, audio ? "sample" : "sector"));
        }
        const auto length = from.length ? samplesOf(*from.length, form) : left / unitBytes * unitSamples;
        if (!length) {
            return refuse(fmt::format("the data of track {} are no whole sectors.", number_));
        }
        if (*length / unitSamples > left / unitBytes) {
            return refuse(fmt::format("\"{}\" is too short for track {}.", file.name, number_));
        }
        return Piece{audio ? Piece::Kind::sound : Piece::Kind::sectors, form, file_ - 1, offset, *length};
    }

    const TocFile& toc_;
    const std::vector<FileExtent>& files_;
    std::size_t file_ = 0;
    int number_ = 0;
};

}  // namespace

Result<DiscPlan> planToc(const TocFile& toc, const std::vector<FileExtent>& files) { return TocPlanner(toc, files).plan(); }

}  // namespace tessarel::host
