#include "host/cd/parting_streams.h"

#include <utility>

namespace tessarel::host {
namespace {

constexpr pa_usec_t partingTime = 300 * PA_USEC_PER_MSEC;

void forget(pa_operation* operation) {
    if (operation) {
        pa_operation_unref(operation);
    }
}

void drop(pa_stream* stream) {
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

}  // namespace

void PartingStreams::add(const SoundServer& server, StreamLevels& levels, pa_stream* stream) {
    if (pa_stream_get_state(stream) != PA_STREAM_READY) {
        drop(stream);
        return;
    }
    server_ = server;
    forget(pa_stream_cork(stream, 1, nullptr, nullptr));
    forget(pa_stream_flush(stream, nullptr, nullptr));
    streams_.push_back({stream, pa_stream_get_index(stream), &levels});
    const pa_usec_t end = pa_rtclock_now() + partingTime;
    if (clock_) {
        pa_context_rttime_restart(server_.context, clock_, end);
    } else {
        clock_ = pa_context_rttime_new(server_.context, end, timeOver, this);
    }
}

void PartingStreams::timeOver(pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
    static_cast<PartingStreams*>(self)->dropAll();
}

void PartingStreams::dropAll() {
    if (clock_) {
        server_.loop->time_free(std::exchange(clock_, nullptr));
    }
    for (const Parting& parting : std::exchange(streams_, {})) {
        parting.levels->streamGone(parting.index);
        drop(parting.stream);
    }
}

}  // namespace tessarel::host
