#pragma once
#include <pulse/pulseaudio.h>

#include <array>
#include <atomic>
#include <mutex>
#include <vector>

#include "host/cd/parting_streams.h"
#include "host/cd/stream_levels.h"

namespace tessarel::host {

inline constexpr std::size_t lineCount = 3;

/// Is told, on the sound thread, that the sound server can be used, or that it can't be reached.
class SoundServerListener {
public:
    virtual void soundServerFound() = 0;
    virtual void soundServerMissing() = 0;
    /// An output of the server has changed, or another one has become the default.
    virtual void outputChanged() {}

protected:
    ~SoundServerListener() = default;
};

/// The connection to the desktop's sound server, with a thread of its own that is started by the first `connect`. No call
/// waits for the server. Streams and listeners must be gone before it ends.
class SoundOutput {
public:
    enum class Server { untried, connecting, ready, missing };

    SoundOutput() = default;
    ~SoundOutput();
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    Server server() const { return server_.load(); }
    /// Begins to connect, unless that is going on or done. Any thread but the sound thread.
    void connect();

    void addListener(SoundServerListener& listener);
    /// When it returns, the listener is not being called and will not be.
    void removeListener(SoundServerListener& listener);

    /// Waits until the server has taken what was asked of it so far, or a fifth of a second. Not for the sound thread.
    void settle();

    StreamLevels& levels(platform::Line line) { return levels_[static_cast<std::size_t>(line)]; }
    /// For the sound thread and the holder of a lock.
    pa_context* context() { return context_; }
    PartingStreams& partingStreams() { return partingStreams_; }
    SoundServer handle() { return {context_, pa_threaded_mainloop_get_api(loop_)}; }

    /// Holds the sound thread back while it lives. False when there is no server at the moment, and nothing is held. Never
    /// waits longer than the sound thread needs to hand over a buffer. Not for the sound thread itself.
    class Lock {
    public:
        explicit Lock(SoundOutput& output);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
        explicit operator bool() const { return loop_ != nullptr; }

    private:
        pa_threaded_mainloop* loop_ = nullptr;
    };

private:
    static void connectNow(pa_mainloop_api* api, void* self);
    static void contextChanged(pa_context* context, void* self);
    static void serverEvent(pa_context*, pa_subscription_event_type_t event, std::uint32_t index, void* self);
    bool startThread();
    void dropContext();
    void dropStreams();
    void found();
    void missing();

    std::atomic<Server> server_{Server::untried};
    pa_threaded_mainloop* loop_ = nullptr;  ///< made once, by whoever moves `server_` from untried
    pa_context* context_ = nullptr;
    std::array<StreamLevels, lineCount> levels_;
    PartingStreams partingStreams_;
    std::mutex listenersMutex_;
    std::vector<SoundServerListener*> listeners_;
};

}  // namespace tessarel::host
