#include "host/image/disc_plan.h"

#include <fmt/format.h>

#include <limits>

#include "host/medium.h"

namespace tessarel::host {
namespace {

/// Addresses in minutes, seconds and frames end at 99:59:74.
constexpr std::int64_t longestAudioDisc = 100 * 60 * framesPerSecond - leadInFrames;

std::int64_t pieceSum(const PlannedTrack& track) {
    std::int64_t sum = 0;
    for (const Piece& piece : track.pieces) {
        sum += piece.length;
    }
    return sum;
}

class Layouter {
public:
    Result<DiscLayout> layOut(const DiscPlan& plan) {
        layout_.toc.title = plan.title;
        layout_.toc.performer = plan.performer;
        bool anyAudio = false;
        for (const PlannedTrack& track : plan.tracks) {
            if (pieceSum(track) <= track.pregap) {
                return failure(Fault::invalid, fmt::format("track {} is empty.", track.number));
            }
            anyAudio = anyAudio || track.audio;
            const std::int64_t most = anyAudio ? longestAudioDisc : std::numeric_limits<Frames>::max() - 1;
            if ((end_ + pieceSum(track)) / samplesPerFrame + track.sessionGap >= most) {
                return failure(Fault::invalid, "it is longer than a disc can be.");
            }
            place(track);
        }
        endTrack();
        layout_.toc.leadOut = static_cast<Frames>(end_ / samplesPerFrame);
        return std::move(layout_);
    }

private:
    void place(const PlannedTrack& track) {
        auto start = end_ + track.pregap;
        if (track.sessionGap > 0) {
            endTrack();
            end_ += std::int64_t{track.sessionGap} * samplesPerFrame;
            start = end_ + track.pregap;
        } else {
            endTrackAt(start);
        }
        layout_.toc.tracks.push_back(
            {track.number, static_cast<Frames>(start / samplesPerFrame), 0, track.audio, track.title, track.performer});
        for (const Piece& piece : track.pieces) {
            add(piece);
        }
        if (const auto rest = end_ % samplesPerFrame; rest != 0) {
            Piece filling;
            filling.length = samplesPerFrame - rest;
            add(filling);
        }
    }

    void add(const Piece& piece) {
        layout_.pieces.push_back({end_, piece});
        end_ += piece.length;
    }

    void endTrack() { endTrackAt(end_); }
    void endTrackAt(std::int64_t end) {
        auto& tracks = layout_.toc.tracks;
        if (!tracks.empty() && tracks.back().length == 0) {
            tracks.back().length = static_cast<Frames>(end / samplesPerFrame) - tracks.back().start;
        }
    }

    DiscLayout layout_;
    std::int64_t end_ = 0;
};

}  // namespace

Result<DiscLayout> layOut(const DiscPlan& plan) { return Layouter().layOut(plan); }

}  // namespace tessarel::host
