#pragma once
#include <optional>
#include <string>
#include <vector>

#include "audio/cdform_face.h"
#include "audio/clock_random.h"
#include "audio/device/mm_control.h"
#include "audio/drawer.h"
#include "audio/player_session.h"
#include "audio/player_state.h"
#include "audio/shortcuts.h"
#include "forms/form.h"
#include "library/disc_record.h"
#include "shell/context.h"
#include "volume/remote.h"
#include "volume/volume_engine.h"

namespace tessarel::audio {

/// The Audio CD window: the player engine around its controls. One load serves one disc.
class CDForm : public forms::Form, public Drawer, public volume::RemotePlayer, public SessionPlayer {
public:
    CDForm(forms::Windows& windows, shell::Context context, PlayerState& player, library::DiscRecord& record,
           volume::VolumeState& volumeState, volume::RemoteState& remoteState, PlayerSession& session);

    CDFormFace face{*this};
    MMControl MMControl1;
    /// The engine's pulse, every `pulseMs` while anything is played or may begin.
    static constexpr int pulseMs = 100;
    forms::Timer Timer2;
    /// Intro scan and disc watch.
    forms::Timer Timer3;
    /// How far the drawer stands open, 0 shut to `drawerSteps`.
    forms::Property<int> drawerPosition{0};
    static constexpr int drawerSteps = 5;
    /// Whether the readout has its large layout; the view moves and resizes the labels.
    forms::Property<bool> expandedDisplay{false};
    /// Whether Repeat is on, as the player's state has it.
    forms::Property<bool> repeating{false};

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_KeyUp(int keyCode, int shift) override;
    forms::KeyUse keyUse(int keyCode, int shift) const override;
    /// Leaves at once, also with the keypad open, which takes Escape first.
    void Form_Close() override;
    void Form_MouseDown(forms::MouseButton button) override;
    void Form_Unload() override;
    void Form_FilesDropped(const std::vector<std::string>& paths) override;

    // Transport. The handlers do the player's part; `icntla_Click` also sends the device its word.
    void icntla_Click(int index);
    void MMControl1_PlayClick();
    void MMControl1_PauseClick();
    void MMControl1_StopClick();
    /// Codes of `MMControl1_NextClick`, which any other number may take too.
    static constexpr int ownNext = 98;     ///< the window's own key
    static constexpr int remoteNext = 99;  ///< the window that stands in for this one
    void MMControl1_NextClick(int code);
    void MMControl1_PrevClick();
    void MMControl1_EjectClick();
    void MMControl1_StatusUpdate();
    void MMControl1_PlayCompleted(int code);

    // Choosing what plays.
    /// Starts, or in programmed mode enters, the track of `pickedTrackIndex`.
    void startTrack();
    void Image17_Click(int cell);
    void Image4_Click(int index);
    void Image10_Click(int index);
    void Image16_Click(int index);
    void Text1_Enter();
    void Label30_Click();
    /// The texts on the disc: the art text window, and in programmed mode the list of the program.
    void cinfo();

    // Seeking and marks.
    void scntla_MouseDown(int index);
    void scntla_MouseUp(int index);
    void CDStatusBar_MouseDown(float x);
    void clrab();
    void stopintro();

    // The window.
    void Image5_MouseUp();
    void Image20_Click();
    void setexpdsp();
    void setnormdsp();
    /// Steps the letters of both text lines, up with the left button and down with the right one.
    void Label12_MouseDown(forms::MouseButton button);
    /// Starts the program on the data part of an enhanced disc.
    void Label14_Click();
    void Label26_Click();
    void SSCommand2_Click();
    void Panel3D7_Click();
    void opendrawer();
    void closedrawer() override;
    bool drawerOpen() const override { return drawerPosition > 0; }

    // The desktop's session.
    DeviceReading deviceReading() const override;
    CDFormFace& keys() override { return face; }
    void discReplaced() override { handOverToWaitingWindow(); }
    void goByTheSound() override;
    void letTrackRunOn() override;

    // Hidden behind its icon, and the small window that stands in for it.
    /// Minimises: the window hides, so that its time updates go on, and its icon shows.
    void Command3D14_Click();
    void pressTransport(int index) override;
    void jumpTo(float fraction) override;
    volume::PlayerDisplay display() const override;
    volume::TransportLights lights() const override;
    volume::VolumeControls volumeControls() override;
    const volume::VolumeState& levels() const override { return volumeState_; }
    void takeLevels(const volume::VolumeState& left) override;
    void refreshLights() override;
    void comeBack() override;
    void closePlayer() override;

    void Timer2_Timer();
    void Timer3_Timer();

    /// Sets the two text lines for a track.
    void showStatus(int track, const std::string& word);
    void updateTimeDisplay(int track, const std::string& positionText);
    void refreshTimeCaption();

private:
    // cdform.cpp
    void wireTransport();
    void wireModes();
    void wireWindow();
    void prepareDevice();
    void setUpFace();
    void colourReadout();
    void disableWhatIsNotBuilt();
    void enableInformation(bool programmedMode);
    void restorePosition();
    void hideKeypad();
    void startMixer();
    void handOverToWaitingWindow();
    void loadUserSettings();

    // cdform_keys.cpp
    struct Hold {
        int keyCode;
        std::vector<forms::Control*> controls;
    };
    void carryOut(const Shortcut& shortcut, int keyCode);
    void beginHold(int keyCode, std::vector<forms::Control*> controls);
    void endHold();
    void stepVolume(int keyCode, int step);
    void giveTips();

    // cdform_windows.cpp
    void openWallpaper();
    void showWallpaperLamp();
    void applyDisplayMode();
    void layLines();
    void leaveForMainMenu();
    void showDiscInformation();
    void showArtText();
    void refillProgramList();
    bool wallpaperLacksItsPicture() const;
    void hideWindowsAround();
    void showWindowsAround();
    void unloadArtWindows();
    std::optional<std::string> askForEnhancedProgram();

    // cdform_load.cpp
    void loadAudioDisc();
    void loadRecord();
    void showDiscText();
    void setFirstDisplay();
    void setUpCells();
    void showStoredProgramLamp();
    void lateLoadWork();
    void takeRunModeTrack();

    // cdform_transport.cpp
    void playProgrammed();
    bool consumeProgramEntry();
    void launchProgramEntry();
    void endProgram();
    void nextInProgram(int code);
    void nextOnDisc();
    void pressKey(int index, int nextCode);
    void pressNext(int code);
    void settleAfterStep();
    void pressEject();
    void startSequence(int track);
    void launch(int track);
    void takeSoundsEnd();
    void noticeSilence();
    bool soundsFrom(int track) const;
    int heardTrack() const;
    void forgetShownTime();

    // cdform_lights.cpp
    using Transport = volume::TransportLights;
    void setTransport(Transport state);
    bool isLit(int transportIndex) const;
    void setModeLights(int index);
    void setCells(int from, int to, Color color);
    void setAllCells(Color color) { setCells(1, gridCells, color); }
    void paintCells();
    void colourRepeat();
    void showPauseText();
    void endPauseText();

    // cdform_modes.cpp
    void chooseProgrammed();
    void chooseSingle();
    void chooseWholeDisc();
    void chooseIntro();
    void playRandom();
    void flipRepeat();
    void clearList();
    void enterIntoProgram(int track);
    void leaveAsItSounds();
    void clearProgram();
    void saveProgram();
    void recallProgram();
    bool programLabelLive(const forms::Label& label) const { return label.ForeColor == colors::grey; }

    // cdform_pulse.cpp
    void pulse();
    void stepSeekKeys();
    void blinkMarkA();
    void loopMarks();
    bool autoPlay();
    bool showDiscRunOut();
    void endOfTrackActions();
    void endSingleTrack();
    void playOnWithoutProgram();
    void showTrackStart();
    void relaunch(int track);

    // cdform_watch.cpp
    void stepIntro();
    void watchForIdle();
    void watchForDisc();
    void discGone();
    void endPlay();
    void greyControls(bool grey);

    // cdform_display.cpp
    void updateBar(const std::string& positionText);
    void applyTrackEnd();
    void pressTimeMode();
    void pressMarks();
    void wrapToFirst();
    void discOver();
    void refreshTimeNow();
    std::string lengthOf(int track) const;
    std::string positionText() const;
    float barPoint() const;
    int digits() const;
    Color color(int index) const;

    // cdform_remote.cpp
    bool remoteOpen() const;
    volume::Remote* remote() const;
    void mirrorToRemote();
    std::string titleCaption() const;
    void showTitleInCaptions();
    void captionIcon(const std::string& caption);
    void endMinimised();
    void discHasLeft();
    void dropRemote();

    shell::Context context_;
    PlayerState& player_;
    library::DiscRecord& record_;
    const volume::VolumeState& volumeState_;
    volume::RemoteState& remoteState_;
    volume::VolumeEngine volume_;
    PlayerSession& session_;
    ClockRandom random_;
    std::string formattedLength_;
    double lastBlink_ = 0;
    std::int32_t loadedLength_ = 0;  // of the disc that this load serves
    bool ranOut_ = false;            // the disc has come to its end by itself
    bool soundsEnded_ = false;       // the device has said so, and the player has not acted on it yet
    bool drawerMoving_ = false;
    std::optional<Hold> held_;               // what a key of the keyboard holds down
    std::vector<std::string> hiddenAround_;  // went out of sight with this window
};

}  // namespace tessarel::audio
