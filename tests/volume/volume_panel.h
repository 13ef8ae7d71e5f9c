#pragma once
#include "forms/control_array.h"
#include "forms/form.h"
#include "volume/volume_engine.h"

namespace tessarel::volume {

/// A window with nothing but the volume controls.
struct Panel : forms::Form {
    Panel(forms::Windows& owner, const shell::Context& context, VolumeState& state, VolumeLine line = {})
        : Form(owner, "Panel"),
          engine(context, state,
                 {leftSlider, rightSlider, leftFigure, rightFigure, mute[0], mute[1], link[0], link[1], panel, &mixerButton},
                 line) {}

    forms::Slider leftSlider{*this, "LSlider", "Volume left"};
    forms::Slider rightSlider{*this, "RSlider", "Volume right"};
    forms::Label leftFigure{*this, "Label24", "Volume left figure"};
    forms::Label rightFigure{*this, "Label33", "Volume right figure"};
    forms::ControlArray<forms::Picture> mute{*this, "Image2", {"Unmute", "Mute"}};
    forms::ControlArray<forms::Picture> link{*this, "Image9", {"Unlink", "Link"}};
    forms::Picture panel{*this, "SSPanel1", "Volume"};
    forms::Picture mixerButton{*this, "Command3D16", "Mixer"};
    VolumeEngine engine;
};

}  // namespace tessarel::volume
