#pragma once
#include <array>
#include <memory>

#include "host/cd/sound_output.h"
#include "host/line_streams.h"
#include "platform/audio_levels.h"
#include "platform/scheduler.h"

namespace tessarel::host {

/// The levels of the program's streams, as the desktop's mixer shows them. Until a first disc has played nobody has asked the
/// sound server, and it counts as there.
class LineLevels : public platform::AudioLevels {
public:
    /// Both must outlive it.
    LineLevels(platform::Scheduler& scheduler, SoundOutput& sound);
    ~LineLevels() override;
    LineLevels(const LineLevels&) = delete;
    LineLevels& operator=(const LineLevels&) = delete;

    /// `noDriver` when the server was looked for and is missing.
    tl::expected<platform::LineLevel, int> level(platform::Line line) const override;
    int setLevel(platform::Line line, platform::StereoLevel level) override;
    [[nodiscard]] Subscription watch(platform::Line line, Handler handler) override;

    /// For streams on connections of their own. Those that start before the first disc has played keep the level that they
    /// start with.
    LineStreams& streams(platform::Line line) { return streams_[static_cast<std::size_t>(line)]; }

private:
    class Streams final : public LineStreams {
    public:
        Streams(SoundOutput& sound, platform::Line line) : sound_(sound), line_(line) {}
        std::optional<platform::LineLevel> startLevel() const override;
        void streamStarted(std::uint32_t index, int channels) override;
        void streamGone(std::uint32_t index) override;

    private:
        SoundOutput& sound_;
        platform::Line line_;
    };
    using News = std::array<Watchers<platform::LineLevel>, lineCount>;

    SoundOutput& sound_;
    std::array<Streams, lineCount> streams_;
    /// Posted tasks hold it weakly.
    std::shared_ptr<News> news_ = std::make_shared<News>();
};

}  // namespace tessarel::host
