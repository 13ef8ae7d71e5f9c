#pragma once
#include "forms/control.h"
#include "forms/control_array.h"
#include "volume/remote.h"

namespace tessarel::volume {

/// The controls of the small volume window, each named for its role and built with its designer name. It has two sides, of
/// which one is on show; the transport, the title panel and the keys around it belong to both.
struct VolCntlFace {
    explicit VolCntlFace(forms::Form& owner) : form(owner) {}

    forms::Form& form;

    // The two sides, and the key on each that turns to the other.
    forms::Picture volumeSide{form, "SSPanel1", "Volume side"};
    forms::Picture displaySide{form, "SSPanel3", "Display side"};
    forms::Picture toDisplayKey{form, "Image6", "Show the display"};
    forms::Picture toVolumeKey{form, "Image8", "Show the volume"};
    forms::Label sideCaption{form, "Label2", "Side"};  ///< "Vol"; "Dsp" without sliders

    // Volume side. 0 is at the top of a slider, loudest; 100 at the bottom. The figures show 100 minus the slider.
    forms::Picture sliderPanel{form, "SSPanel4", "Volume"};  ///< holds sliders, figures and link; hidden without sliders
    forms::Slider leftSlider{form, "Slider2", "Volume left"};
    forms::Slider rightSlider{form, "Slider1", "Volume right"};
    forms::Label leftFigure{form, "Label24", "Volume left figure"};
    forms::Label rightFigure{form, "Label33", "Volume right figure"};
    forms::ControlArray<forms::Picture> link{form, "Image9", {"Unlink", "Link"}};  ///< 0 shown while linked
    forms::Picture muteKey{form, "Image5", "Mute"};                                ///< without sliders the mixer
    forms::Picture restoreKey{form, "Image7", "Unmute"};                           ///< in place of `muteKey` while muted
    forms::Label muteCaption{form, "Label1", "Mute key"};                          ///< "Mute"; "Mix" without sliders

    // Display side: what the player shows.
    forms::Label trackDigits{form, "Label8", "Track"};
    forms::Label timeText{form, "Label10", "Time"};
    forms::Label upperLine{form, "Label12", "Artist and disc title"};
    forms::Label lowerLine{form, "Label14", "Track title"};
    forms::Label programLamp{form, "Label30", "Stored program"};
    forms::Label sourceLabel{form, "Label13", "Source"};
    forms::Label calendarLabel{form, "Label23", "Calendar"};
    forms::ControlArray<forms::Label> cellNumbers{form, "Label22", calendarCells,
                                                  [](int i) { return "Track " + std::to_string(i + 1); }};
    forms::FloodPanel statusBar{form, "vcntlstatusbar", "Position in the track"};

    // Transport: base picture, lit cover, dim cover.
    forms::ControlArray<forms::Picture> Image1{
        form, "Image1", {"Previous track", "Next track", "Play", "Pause", "Stop", "Eject"}};
    forms::ControlArray<forms::Picture> Image2{
        form, "Image2", {"Previous lit", "Next lit", "Play lit", "Pause lit", "Stop lit", "Eject lit"}};
    forms::ControlArray<forms::Picture> Image4{
        form, "Image4", {"Previous dim", "Next dim", "Play dim", "Pause dim", "Stop dim", "Eject dim"}};

    // The window itself.
    forms::Picture titlePanel{form, "SSPanel2", "Move the window"};  ///< a drag moves, a right press centres
    forms::Picture trayKey{form, "Image3", "To the tray"};
    forms::Picture closeKey{form, "Image12", "Exit"};  ///< closes the player too
};

}  // namespace tessarel::volume
