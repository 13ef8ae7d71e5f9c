#pragma once
#include <vector>

#include "platform/media_session.h"

namespace tessarel::fakes {

/// Keeps what the program publishes, and asks things of it as a desktop does.
class FakeMediaSession : public platform::MediaSession {
public:
    std::vector<platform::NowPlaying> published;  ///< in order
    std::vector<platform::Milliseconds> jumps;    ///< the positions told by `seeked`, in order

    void publish(const platform::NowPlaying& now) override { published.push_back(now); }
    void seeked(platform::Milliseconds position) override { jumps.push_back(position); }

    /// What has been published last.
    platform::NowPlaying now() const { return published.empty() ? platform::NowPlaying() : published.back(); }

    void ask(const platform::MediaCommand& command) const { onCommand(command); }
    void ask(platform::MediaCommand::Kind kind) const { onCommand({.kind = kind}); }
};

}  // namespace tessarel::fakes
