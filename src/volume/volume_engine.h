#pragma once
#include <array>
#include <cstdint>

#include "forms/control.h"
#include "platform/audio_levels.h"
#include "shell/context.h"
#include "volume/volume_levels.h"

namespace tessarel::volume {

/// Levels and slider positions, which outlive the windows that show them. One instance, owned by the program and written by
/// the engines.
struct VolumeState {
    std::int32_t cdVolumeLeft = fullLevel;     ///< 0 to 65535
    std::int32_t cdVolumeRight = fullLevel;    ///< 0 to 65535
    std::array<std::int32_t, 2> muteMemory{};  ///< left and right level saved over a mute
    std::int16_t sliderLastLeft = 0;           ///< 0 to 100
    std::int16_t sliderLastRight = 0;
    bool muted = false;
    bool linked = true;
    bool levelsRead = false;  ///< the levels have been taken over from the sound device
};

/// The controls of a window that an engine works on; they live as long as it.
struct VolumeControls {
    forms::Slider& leftSlider;
    forms::Slider& rightSlider;
    forms::Label& leftFigure;
    forms::Label& rightFigure;
    forms::Control& muteLit;      ///< shown while muted
    forms::Control& muteKey;      ///< shown otherwise
    forms::Control& linkLit;      ///< shown while the sliders move together
    forms::Control& linkKey;      ///< shown otherwise
    forms::Control& panel;        ///< holds the sliders; shown when they drive the level
    forms::Control& mixerButton;  ///< shown when they don't
};

/// Drives the disc's sound level from a window's sliders, or leaves that to the mixer application. It sets the controls'
/// handlers; the window has to call `activate` and, on its way out, `unmute`.
class VolumeEngine {
public:
    VolumeEngine(const shell::Context& context, VolumeState& state, const VolumeControls& controls);
    ~VolumeEngine();
    VolumeEngine(const VolumeEngine&) = delete;
    VolumeEngine& operator=(const VolumeEngine&) = delete;

    /// Brings the volume mode of the settings into effect. The first window to show sliders takes the levels from the sound
    /// device, each later one those that the one before left.
    void activate();

    /// Takes the levels over from the sound device. Without a sound server the present ones stand.
    void cdvol();

    /// Tells the user what a sound device's code means, if it is one of those that are told.
    void reportVolumeError(int code);

    void mute();
    /// Restores the levels from before the mute; nothing when there is none.
    void unmute();
    void setLinked(bool linked);

    void showSliders();      ///< and read the levels
    void showMixerButton();  ///< instead of the sliders

private:
    struct Channel {
        forms::Slider& slider;
        std::int32_t& level;
        std::int16_t& last;
    };
    struct Follow;

    Channel left();
    Channel right();
    std::int16_t& volumeMode();
    void attachHandlers();
    void sliderChange(Channel moved, Channel other);
    void takeLevels(platform::StereoLevel level);
    void followMixer(platform::StereoLevel level);
    void setDevice();
    void showMode();
    void showState();

    shell::Context context_;
    VolumeState& state_;
    VolumeControls controls_;
    bool levelsTaken_ = false;
};

}  // namespace tessarel::volume
