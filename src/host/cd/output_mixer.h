#pragma once
#include <pulse/pulseaudio.h>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "host/cd/level_ramp.h"
#include "host/cd/open_questions.h"
#include "host/cd/sound_output.h"
#include "platform/scheduler.h"
#include "platform/system_mixer.h"

namespace tessarel::host {

/// The sound server's default output. A step is reached in a glide, which the disc's streams make smooth. The server is not
/// asked before a first change; what is asked of a server that is missing is forgotten.
class OutputMixer final : public platform::SystemMixer, private SoundServerListener {
public:
    /// Both must outlive it.
    OutputMixer(platform::Scheduler& scheduler, SoundOutput& sound);
    /// Gives the server a moment to take the last changes.
    ~OutputMixer() override;
    OutputMixer(const OutputMixer&) = delete;
    OutputMixer& operator=(const OutputMixer&) = delete;

    void setStep(int step) override;
    void setMuted(bool muted) override;
    void centreBalance() override;
    platform::OutputLevel level() const override;
    [[nodiscard]] Subscription watch(Handler handler) override;

private:
    using News = Watchers<platform::OutputLevel>;
    /// What is to be changed as soon as the output is known.
    struct Wish {
        std::optional<int> step;
        std::optional<bool> muted;
        bool centred = false;
    };

    template <class Edit>
    void want(Edit edit);
    void ask();
    static void heardOutput(pa_context* context, const pa_sink_info* info, int end, void* self);
    void take(pa_context* context, const pa_sink_info& info);
    /// Changes the output as wished; returns how it stands then.
    platform::OutputLevel apply(pa_context* context, const pa_sink_info& info);
    void glide(int step);
    static void tick(pa_mainloop_api*, pa_time_event*, const timeval*, void* self);
    void takeStep();
    void write(const pa_cvolume& volume);
    void stopClock();

    void soundServerFound() override;
    void soundServerMissing() override;
    void outputChanged() override;

    platform::Scheduler& scheduler_;
    SoundOutput& sound_;
    std::shared_ptr<News> news_ = std::make_shared<News>();  ///< posted tasks hold it weakly
    std::vector<pa_operation*> operations_;                  ///< for the sound thread and the holder of its lock

    mutable std::mutex mutex_;
    bool inUse_ = false;
    Wish wish_;
    platform::OutputLevel known_;  ///< what the program takes the output for
    OpenQuestions questions_;
    LevelRamp ramp_;                  ///< of the loudest channel
    std::uint32_t sink_ = 0;          ///< that glides
    pa_cvolume shape_{};              ///< its channels in their proportions
    pa_time_event* clock_ = nullptr;  ///< runs while it glides
};

/// The server's volume for a step, and back.
pa_volume_t volumeOfStep(int step);
int stepOfVolume(pa_volume_t volume);

}  // namespace tessarel::host
