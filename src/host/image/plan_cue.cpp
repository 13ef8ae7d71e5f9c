#include <fmt/format.h>

#include "host/image/disc_plan.h"
#include "host/medium.h"

namespace tessarel::host {
namespace {

/// What separates a session's last sample from the next session's first: the lead-out, longer for the first session, and the
/// lead-in.
constexpr Frames firstLeadOut = 90 * framesPerSecond;
constexpr Frames laterLeadOut = 30 * framesPerSecond;
constexpr Frames sessionLeadIn = 60 * framesPerSecond;
/// The gap before each session's first track, which sheets of several sessions leave unsaid.
constexpr Frames sessionPregap = 150;

Piece silence(std::int64_t length) {
    Piece piece;
    piece.length = length;
    return piece;
}

struct Mark {
    std::size_t track;
    CueIndex index;
};

std::vector<Mark> marksOf(const CueSheet& sheet) {
    std::vector<Mark> marks;
    for (std::size_t t = 0; t < sheet.tracks.size(); ++t) {
        for (const CueIndex& index : sheet.tracks[t].indexes) {
            marks.push_back({t, index});
        }
    }
    return marks;
}

class CuePlanner {
public:
    CuePlanner(const CueSheet& sheet, const std::vector<FileExtent>& files) : sheet_(sheet), files_(files) {}

    Result<DiscPlan> plan() {
        plan_.title = sheet_.title;
        plan_.performer = sheet_.performer;
        for (std::size_t t = 0; t < sheet_.tracks.size(); ++t) {
            beginTrack(t);
        }
        const auto marks = marksOf(sheet_);
        for (std::size_t m = 0; m < marks.size(); ++m) {
            if (auto done = addStretch(marks[m], m + 1 < marks.size() ? &marks[m + 1] : nullptr); !done) {
                return tl::unexpected(done.error());
            }
        }
        for (std::size_t t = 0; t < sheet_.tracks.size(); ++t) {
            if (const Frames gap = sheet_.tracks[t].postgap; gap > 0) {
                padToFrame(plan_.tracks[t]);
                plan_.tracks[t].pieces.push_back(silence(std::int64_t{gap} * samplesPerFrame));
            }
        }
        return std::move(plan_);
    }

private:
    void beginTrack(std::size_t t) {
        const CueTrack& from = sheet_.tracks[t];
        PlannedTrack track;
        track.number = from.number;
        track.audio = from.form == SectorForm::audio;
        track.title = from.title;
        track.performer = from.performer;
        Frames pregap = from.pregap;
        if (t > 0 && from.session > sheet_.tracks[t - 1].session) {
            track.sessionGap = (sheet_.tracks[t - 1].session == 1 ? firstLeadOut : laterLeadOut) + sessionLeadIn;
            const bool gapSaid = pregap > 0 || from.indexes.front().number == 0;
            pregap = gapSaid ? pregap : sessionPregap;
        }
        if (pregap > 0) {
            track.pieces.push_back(silence(std::int64_t{pregap} * samplesPerFrame));
            track.pregap = track.pieces.front().length;
        }
        plan_.tracks.push_back(std::move(track));
    }

    tl::unexpected<Error> tooShort(const FileExtent& file, int track) const {
        return failure(Fault::invalid, fmt::format("\"{}\" is too short for track {}.", file.name, track));
    }

    /// Adds what lies between a mark and the next one, or the end of its file.
    Result<void> addStretch(const Mark& mark, const Mark* next) {
        const CueTrack& track = sheet_.tracks[mark.track];
        const FileExtent& file = files_[mark.index.file];
        if (file.sound && track.form != SectorForm::audio) {
            return failure(Fault::invalid,
                           fmt::format("track {} is data, but \"{}\" is a sound file.", track.number, file.name));
        }
        if (mark.index.file != file_) {
            file_ = mark.index.file;
            offset_ = 0;
            at_ = 0;
        }
        PlannedTrack& planned = plan_.tracks[mark.track];
        if (at_ < mark.index.at) {
            // What a file holds before its first mark belongs to the track that begins there.
            if (auto done = addFrames(planned, track, mark.index.at - at_); !done) {
                return done;
            }
        }
        if (mark.index.number == 1) {
            planned.pregap = sumOf(planned);
        }
        const bool lastOfFile = next == nullptr || next->index.file != mark.index.file;
        return lastOfFile ? addRest(planned, track) : addFrames(planned, track, next->index.at - mark.index.at);
    }

    Result<void> addFrames(PlannedTrack& planned, const CueTrack& track, Frames count) {
        const FileExtent& file = files_[file_];
        const std::int64_t length = std::int64_t{count} * samplesPerFrame;
        const std::int64_t size = file.sound ? length : std::int64_t{count} * sectorBytes(track.form);
        if (offset_ + size > file.size) {
            return tooShort(file, track.number);
        }
        addPiece(planned, track, length);
        offset_ += size;
        at_ += count;
        return {};
    }

    Result<void> addRest(PlannedTrack& planned, const CueTrack& track) {
        const FileExtent& file = files_[file_];
        const std::int64_t left = file.size - offset_;
        if (left <= 0) {
            return tooShort(file, track.number);
        }
        const bool audio = track.form == SectorForm::audio;
        const int unit = file.sound ? 1 : audio ? 4 : sectorBytes(track.form);
        if (left % unit != 0) {
            return failure(Fault::invalid,
                           fmt::format("\"{}\" is cut off inside a {}.", file.name, audio ? "sample" : "sector"));
        }
        addPiece(planned, track, left / unit * (audio ? 1 : samplesPerFrame));
        padToFrame(planned);
        return {};
    }

    void addPiece(PlannedTrack& planned, const CueTrack& track, std::int64_t length) {
        if (length > 0) {
            const auto kind = track.form == SectorForm::audio ? Piece::Kind::sound : Piece::Kind::sectors;
            planned.pieces.push_back({kind, track.form, file_, offset_, length});
        }
    }

    static std::int64_t sumOf(const PlannedTrack& track) {
        std::int64_t sum = 0;
        for (const Piece& piece : track.pieces) {
            sum += piece.length;
        }
        return sum;
    }

    static void padToFrame(PlannedTrack& track) {
        if (const auto rest = sumOf(track) % samplesPerFrame; rest != 0) {
            track.pieces.push_back(silence(samplesPerFrame - rest));
        }
    }

    const CueSheet& sheet_;
    const std::vector<FileExtent>& files_;
    DiscPlan plan_;
    std::size_t file_ = 0;     ///< the file that is being dealt out
    std::int64_t offset_ = 0;  ///< how much of it is dealt, in its own unit
    Frames at_ = 0;            ///< the same in sectors
};

}  // namespace

Result<DiscPlan> planCue(const CueSheet& sheet, const std::vector<FileExtent>& files) {
    return CuePlanner(sheet, files).plan();
}

}  // namespace tessarel::host
