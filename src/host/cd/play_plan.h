#pragma once
#include <vector>

#include "platform/cd_player.h"

namespace tessarel::host {

/// Which frames sound, in which order, when a disc is played from an address on: the audio tracks up to the lead-out, data
/// tracks left out. What sounds is counted from 0, "the index", so that an index and a count of heard frames are one thing.
class PlayPlan {
public:
    PlayPlan() = default;
    /// An address outside the disc is brought into it; one inside a data track stands for the next audio track's start.
    PlayPlan(const platform::CdToc& toc, Frames from);

    /// Number of frames that sound.
    Frames total() const { return total_; }
    /// The address of the frame at an index from 0; from `total()` on, the address behind the last frame.
    Frames addressAt(Frames index) const;
    /// How many frames follow each other on the disc from an index on; 0 from `total()` on.
    Frames runFrom(Frames index) const;

private:
    struct Span {
        Frames index;  ///< of its first frame
        Frames start;
        Frames length;
    };
    void append(Frames start, Frames end);
    const Span* spanOf(Frames index) const;

    std::vector<Span> spans_;
    Frames total_ = 0;
    Frames end_ = 0;
};

}  // namespace tessarel::host
