#pragma once
#include <cstdint>
#include <optional>

#include "forms/control.h"
#include "platform/audio_levels.h"
#include "platform/system_mixer.h"
#include "shell/context.h"
#include "volume/volume_state.h"

namespace tessarel::volume {

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
    forms::Control* mixerButton;  ///< shown when they don't; nullptr in a window that always has sliders
};

/// What an engine's sliders work on where they don't drive the desktop's output.
struct VolumeLine {
    platform::Line line = platform::Line::disc;
    /// The sliders set the line in the mixer button's mode too, for a window that shows them in every mode.
    bool inEveryMode = false;
};

/// Drives a sound level from a window's sliders by the volume mode of the settings: a line of the program's own sound, or the
/// desktop's default output, or nothing, and then a button opens the mixer application. It sets the controls' handlers, which
/// a window may replace afterwards; the window has to call `activate` and, when a person ends the program, `closeVolumeApp`
/// and `unmute`.
class VolumeEngine {
public:
    VolumeEngine(const shell::Context& context, VolumeState& state, const VolumeControls& controls, VolumeLine line = {});
    VolumeEngine(const VolumeEngine&) = delete;
    VolumeEngine& operator=(const VolumeEngine&) = delete;

    /// Brings the volume mode of the settings into effect, as often as that has changed. The first sliders of a mode take the
    /// levels from the sound device, or bring the desktop's output to its middle; each later window shows what stands. A mute
    /// of the desktop's output is lifted when another mode comes.
    void activate();

    /// Takes the levels over from the sound device. One that can't be asked is told, and the mixer button comes back.
    void cdvol();

    /// Tells the user what a sound device's code means, if it is one of those that are told.
    void reportVolumeError(int code);

    void mute();
    /// Restores the levels from before the mute; nothing when there is none.
    void unmute();
    /// Where the sliders drive the desktop's output they stay linked, and a beep says so.
    void setLinked(bool linked);

    /// Brings the desktop's output to where the sliders stand.
    void sendVolumeKeys();
    /// Brings the desktop's output to its middle, left and right alike, and its sound back; the sliders too.
    void prepareVolumeApp();
    /// Gives the desktop's output its sound back, where the sliders drive it.
    void closeVolumeApp();

    void showSliders();      ///< that work on the line, and read its level
    void showMixerButton();  ///< instead of the sliders; beeps where they drive the desktop's output

    /// Takes the levels that another window leaves, and shows them.
    void takeOver(const VolumeState& left);
    /// Brings the controls up to date with a state that somebody else has written.
    void showState();

private:
    enum class Drive { nothing, line, output };

    Drive drive() const;
    /// How the line stands. A device that can't be asked is told to the user.
    std::optional<platform::LineLevel> findCdAuxDevice();
    void takeOutput();
    void takeLine();
    void fillLine();
    void attachHandlers();
    void sliderChange(Side moved, const forms::Slider& slider);
    void followLine(const platform::LineLevel& heard);
    void followOutput(const platform::OutputLevel& heard);
    void change(const VolumeState& to);
    void setLine();
    void showMode();

    shell::Context context_;
    VolumeState& state_;
    VolumeControls controls_;
    VolumeLine line_;
    std::optional<std::int16_t> takenIn_;  // the volume mode that the levels have been taken in
    Subscription lineNews_;
    Subscription outputNews_;
};

/// Gives back what a mute in `state` has silenced: the desktop's output where the sliders stand for that, else the line, at
/// the level from before. Nothing without a mute. Returns a device code.
int liftMute(const shell::Context& context, VolumeState& state, platform::Line line);

}  // namespace tessarel::volume
