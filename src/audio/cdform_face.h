#pragma once
#include "forms/control.h"
#include "forms/control_array.h"
#include "volume/remote.h"
#include "volume/transport.h"

namespace tessarel::audio {

namespace transport = volume::transport;

/// Indices of the seek keys.
namespace seekKeys {
inline constexpr int rewind = 0;
inline constexpr int timeMode = 1;
inline constexpr int abRepeat = 2;
inline constexpr int forward = 3;
inline constexpr int count = 4;
}  // namespace seekKeys

/// Indices of the mode keys.
namespace modeKeys {
inline constexpr int program = 0;
inline constexpr int single = 1;
inline constexpr int disc = 2;
inline constexpr int intro = 3;
inline constexpr int count = 4;
}  // namespace modeKeys

/// Indices of the function keys `Image10`.
namespace functionKeys {
inline constexpr int mainMenu = 0;
inline constexpr int discInfo = 1;
inline constexpr int random = 2;
inline constexpr int repeat = 3;
inline constexpr int count = 4;
}  // namespace functionKeys

/// Indices of the program keys `Image16`.
namespace programKeys {
inline constexpr int keypad = 0;
inline constexpr int clear = 1;
inline constexpr int save = 2;
inline constexpr int recall = 3;
inline constexpr int information = 4;
inline constexpr int count = 5;
}  // namespace programKeys

inline constexpr int gridCells = volume::calendarCells;
/// The element of `cellNumbers` that tells of tracks beyond the grid.
inline constexpr int moreTracksMarker = 20;

/// The window that shows the texts of a disc.
inline constexpr const char* artTextWindow = "cdartext";

/// The controls of the Audio CD window, each named for its role and built with its designer name.
struct CDFormFace {
    explicit CDFormFace(forms::Form& owner) : form(owner) {}

    forms::Form& form;

    // Readout.
    forms::Label trackDigits{form, "Label8", "Track"};
    forms::Label timeText{form, "Label10", "Time"};
    forms::Label timeCaption{form, "Label9", "Time mode"};
    forms::Label timeColon{form, "Label11", "Time field"};
    forms::Label upperLine{form, "Label12", "Artist and disc title"};
    forms::Label lowerLine{form, "Label13", "Track title"};
    forms::FloodPanel statusBar{form, "CDStatusBar", "Position in the track"};

    // Lamps: their colours are the state.
    forms::Label recordLamp{form, "Label6", "Disc is in the Music Library"};
    forms::Label discLamp{form, "Label14", "Disc type"};
    forms::Label repeatLamp{form, "Label21", "Repeat"};
    forms::Label abLamp{form, "Label16", "A-B repeat"};
    forms::Label abText{form, "Label17", "A-B repeat text"};
    forms::Label programLamp{form, "Label30", "Stored program"};
    forms::Label wallpaperLamp{form, "Label26", "Wallpaper"};

    // The track grid: the cells are pressed, the labels on them show number and state, `cellCaps` turn grey on dead cells.
    forms::ControlArray<forms::Label> cellNumbers{
        form, "Label22", gridCells + 1,
        [](int i) { return i == moreTracksMarker ? std::string("More tracks") : "Track " + std::to_string(i + 1); }};
    forms::ControlArray<forms::Picture> cells{form, "Image17", gridCells,
                                              [](int i) { return "Track " + std::to_string(i + 1); }};
    forms::ControlArray<forms::Label> cellCaps{form, "Label34", gridCells,
                                               [](int i) { return "Cell " + std::to_string(i + 1); }};

    // Transport and seek keys: base picture, lit cover, dim cover.
    forms::ControlArray<forms::Picture> icntla{
        form, "icntla", {"Previous track", "Next track", "Play", "Pause", "Stop", "Eject"}};
    forms::ControlArray<forms::Picture> icntlc{
        form, "icntlc", {"Previous lit", "Next lit", "Play lit", "Pause lit", "Stop lit", "Eject lit"}};
    forms::ControlArray<forms::Picture> icntlb{
        form, "icntlb", {"Previous dim", "Next dim", "Play dim", "Pause dim", "Stop dim", "Eject dim"}};
    forms::ControlArray<forms::Picture> scntla{form, "scntla", {"Rewind", "Time mode", "A-B repeat", "Forward"}};
    forms::ControlArray<forms::Picture> scntlc{
        form, "scntlc", {"Rewind lit", "Time mode lit", "A-B repeat lit", "Forward lit"}};
    forms::ControlArray<forms::Picture> scntlb{
        form, "scntlb", {"Rewind dim", "Time mode dim", "A-B repeat dim", "Forward dim"}};

    // Play modes: keys, and the lights that show which is on.
    forms::ControlArray<forms::Picture> Image4{form, "Image4", {"Program", "Single track", "Whole disc", "Intro scan"}};
    forms::ControlArray<forms::Picture> Image3{
        form, "Image3", {"Program light", "Single track light", "Whole disc light", "Intro scan light"}};

    // Functions, with the cover labels whose colour tells whether they are live.
    forms::ControlArray<forms::Picture> Image10{form, "Image10", {"Main Menu", "Disc information", "Random play", "Repeat"}};
    forms::Label mainMenuCover{form, "Label18", "Main Menu cover"};
    forms::Label discInfoCover{form, "Label19", "Disc information cover"};
    forms::Label randomCover{form, "Label20", "Random cover"};
    forms::Label repeatCover{form, "Label25", "Repeat cover"};

    // Keypad and stored programs, with their cover labels.
    forms::ControlArray<forms::Picture> Image16{
        form, "Image16", {"Keypad", "Clear program", "Save program", "Recall program", "Information"}};
    forms::Label keypadCover{form, "Label44", "Keypad cover"};
    forms::Label clearCover{form, "Label38", "Clear cover"};
    forms::Label saveCover{form, "Label39", "Save cover"};
    forms::Label recallCover{form, "Label40", "Recall cover"};
    forms::Label informationCover{form, "Label35", "Information cover"};
    forms::TextBox keypadEntry{form, "Text1", "Track number"};

    // Volume: 0 is at the top, loudest; 100 at the bottom, silent. The figures show 100 minus the slider.
    forms::Slider leftSlider{form, "LSlider", "Volume left"};
    forms::Slider rightSlider{form, "RSlider", "Volume right"};
    forms::Label leftFigure{form, "Label24", "Volume left figure"};
    forms::Label rightFigure{form, "Label33", "Volume right figure"};
    forms::Picture sliderPanel{form, "SSPanel1", "Volume"};
    forms::ControlArray<forms::Picture> Image2{form, "Image2", {"Unmute", "Mute"}};  ///< 0 lit, shown while muted
    forms::ControlArray<forms::Picture> Image9{form, "Image9", {"Unlink", "Link"}};  ///< 0 shown while linked
    forms::Picture mixerKey{form, "Image19", "Mixer"};
    forms::Picture mixerButton{form, "Command3D16", "Mixer instead of sliders"};

    // The window itself.
    forms::Picture expandKey{form, "Image20", "Expanded display"};
    forms::Picture exitKey{form, "Image5", "Exit"};
    forms::Label exitLabel{form, "Label28", "Exit label"};
    forms::Label exitPanel{form, "SSPanel3", "Exit panel"};
    forms::Picture drawerPanel{form, "Panel3D7", "Drawer"};
    forms::Button minimiseKey{form, "Command3D14", "Minimise"};
    forms::Button webKey{form, "SSCommand2", "Web desktop"};
    forms::Button enhancedKey{form, "SSCommand3", "Enhanced disc"};
};

}  // namespace tessarel::audio
