#pragma once
#include <vector>

#include "host/cd/stream_levels.h"

namespace tessarel::host {

/// Streams that nobody plays on any more. Each stays a moment, silent, and follows its line: so a level that is set while a
/// player closes is the one that the server remembers for the next stream. Used on the sound thread or with its lock.
class PartingStreams {
public:
    /// Takes the stream over. `levels` outlives it.
    void add(const SoundServer& server, StreamLevels& levels, pa_stream* stream);
    void dropAll();

private:
    struct Parting {
        pa_stream* stream;
        std::uint32_t index;
        StreamLevels* levels;
    };

    static void timeOver(pa_mainloop_api*, pa_time_event*, const timeval*, void* self);

    std::vector<Parting> streams_;
    SoundServer server_;
    pa_time_event* clock_ = nullptr;
};

}  // namespace tessarel::host
