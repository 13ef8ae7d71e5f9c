#include "host/cd/line_levels.h"

namespace tessarel::host {

using platform::Line;
using platform::LineLevel;
namespace deviceCodes = platform::deviceCodes;

LineLevels::LineLevels(platform::Scheduler& scheduler, SoundOutput& sound)
    : sound_(sound), streams_{{{sound, Line::disc}, {sound, Line::wave}, {sound, Line::midi}}} {
    for (std::size_t line = 0; line < lineCount; ++line) {
        sound_.levels(static_cast<Line>(line))
            .setListener([line, &scheduler, news = std::weak_ptr(news_)](const LineLevel& level) {
                scheduler.post([line, news, level] {
                    if (const auto alive = news.lock()) {
                        (*alive)[line].tell(level);
                    }
                });
            });
    }
}

LineLevels::~LineLevels() {
    for (std::size_t line = 0; line < lineCount; ++line) {
        sound_.levels(static_cast<Line>(line)).setListener(nullptr);
    }
}

tl::expected<LineLevel, int> LineLevels::level(Line line) const {
    if (sound_.server() == SoundOutput::Server::missing) {
        return tl::unexpected(deviceCodes::noDriver);
    }
    return sound_.levels(line).level();
}

int LineLevels::setLevel(Line line, platform::StereoLevel level) {
    const SoundOutput::Lock lock(sound_);
    sound_.levels(line).remember(level);
    if (lock) {
        sound_.levels(line).send(sound_.handle());
    }
    return sound_.server() == SoundOutput::Server::missing ? deviceCodes::notEnabled : deviceCodes::success;
}

Subscription LineLevels::watch(Line line, Handler handler) {
    return (*news_)[static_cast<std::size_t>(line)].add(std::move(handler));
}

std::optional<LineLevel> LineLevels::Streams::startLevel() const { return sound_.levels(line_).startLevel(); }

void LineLevels::Streams::streamStarted(std::uint32_t index, int channels) {
    if (const SoundOutput::Lock lock(sound_); lock) {
        sound_.levels(line_).streamStarted(sound_.handle(), index, channels, nullptr);
    }
}

void LineLevels::Streams::streamGone(std::uint32_t index) {
    if (const SoundOutput::Lock lock(sound_); lock) {
        sound_.levels(line_).streamGone(index);
    }
}

}  // namespace tessarel::host
