#include "host/cd/play_plan.h"

#include <algorithm>

namespace tessarel::host {

PlayPlan::PlayPlan(const platform::CdToc& toc, Frames from) : end_(std::clamp(from, 0, std::max(toc.leadOut, 0))) {
    const Frames first = end_;
    bool onDiscStart = true;
    for (const platform::CdTrack& track : toc.tracks) {
        if (track.audio) {
            const Frames start = onDiscStart ? 0 : track.start;
            append(std::max(start, first), std::min(track.start + track.length, toc.leadOut));
        }
        onDiscStart = false;
    }
}

void PlayPlan::append(Frames start, Frames end) {
    start = spans_.empty() ? start : std::max(start, end_);
    if (end <= start) {
        return;
    }
    if (!spans_.empty() && start == end_) {
        spans_.back().length += end - start;
    } else {
        spans_.push_back({total_, start, end - start});
    }
    total_ += end - start;
    end_ = end;
}

const PlayPlan::Span* PlayPlan::spanOf(Frames index) const {
    const auto behind =
        std::upper_bound(spans_.begin(), spans_.end(), index, [](Frames i, const Span& span) { return i < span.index; });
    return behind == spans_.begin() ? nullptr : &*(behind - 1);
}

Frames PlayPlan::addressAt(Frames index) const {
    const Span* span = index < total_ ? spanOf(std::max(index, 0)) : nullptr;
    return span ? span->start + std::max(index, 0) - span->index : end_;
}

Frames PlayPlan::runFrom(Frames index) const {
    const Span* span = index >= 0 && index < total_ ? spanOf(index) : nullptr;
    return span ? span->index + span->length - index : 0;
}

}  // namespace tessarel::host
