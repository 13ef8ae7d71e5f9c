#pragma once
#include <string>
#include <vector>

#include "audio/cdform_face.h"
#include "audio/clock_random.h"
#include "audio/device/mm_control.h"
#include "audio/drawer.h"
#include "audio/player_state.h"
#include "audio/remote.h"
#include "forms/form.h"
#include "library/disc_record.h"
#include "shell/context.h"
#include "volume/volume_engine.h"

namespace tessarel::audio {

/// The Audio CD window: the player engine around its controls. One load serves one disc.
class CDForm : public forms::Form, public Drawer {
public:
    CDForm(forms::Windows& windows, shell::Context context, PlayerState& player, library::DiscRecord& record,
           volume::VolumeState& volumeState);

    CDFormFace face{*this};
    MMControl MMControl1;
    /// The engine's pulse.
    forms::Timer Timer2;
    /// Intro scan and disc watch.
    forms::Timer Timer3;
    /// How far the drawer stands open, 0 shut to `drawerSteps`.
    forms::Property<int> drawerPosition{0};
    static constexpr int drawerSteps = 5;

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_MouseDown(forms::MouseButton button) override;
    void Form_Unload() override;
    void Form_FilesDropped(const std::vector<std::string>& paths) override;

    // Transport. The handlers do the player's part; `icntla_Click` also sends the device its word.
    void icntla_Click(int index);
    void MMControl1_PlayClick();
    void MMControl1_PauseClick();
    void MMControl1_StopClick();
    /// `code` is 98 from the window's own key, 99 from the remote, else 0.
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

    // Seeking and marks.
    void scntla_MouseDown(int index);
    void scntla_MouseUp(int index);
    void CDStatusBar_MouseDown(float x);
    void clrab();
    void stopintro();

    // The window.
    void Image5_MouseUp();
    void Image20_Click();
    void Command3D14_Click();
    void Panel3D7_Click();
    void opendrawer();
    void closedrawer() override;
    bool drawerOpen() const override { return drawerPosition > 0; }

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
    void showWallpaperLamp();
    void disableWhatIsNotBuilt();
    void restorePosition();
    void hideKeypad();
    void startMixer();
    void handOverToWaitingWindow();
    void leaveForMainMenu();
    void showDiscInformation();
    std::string runningMark() const;
    void deleteRunningMark();

    // cdform_load.cpp
    void loadAudioDisc();
    void loadRecord();
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
    void pressNext();
    void pressEject();
    void startSequence(int track);
    void launch(int track);
    void takeSoundsEnd();
    void forgetShownTime();

    // cdform_lights.cpp
    enum class Transport { stopped, playing, paused, noDisc };
    void setTransport(Transport state);
    bool isLit(int transportIndex) const;
    void setModeLights(int index);
    void setCells(int from, int to, Color color);
    void setAllCells(Color color) { setCells(1, gridCells, color); }
    void paintCells();
    void colourRepeat();
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
    void stepSeekKeys();
    void blinkMarkA();
    void loopMarks();
    bool autoPlay();
    bool showDiscRunOut();
    void endOfTrackActions();
    void endSingleTrack();
    void showTrackStart();
    void relaunch(int track);

    // cdform_watch.cpp
    void stepIntro();
    void watchForIdle();
    void watchForDisc();
    void discGone();

    // cdform_display.cpp
    void updateBar(const std::string& positionText);
    void applyTrackEnd();
    void pressTimeMode();
    void pressMarks();
    void wrapToFirst();
    void discOver();
    void refreshTimeNow();
    std::string titleOf(int track) const;
    std::string lengthOf(int track) const;
    std::string positionText() const;
    float barPoint() const;
    int digits() const;
    Color color(int index) const;
    bool remoteOpen() const;
    Remote* remote() const;

    shell::Context context_;
    PlayerState& player_;
    library::DiscRecord& record_;
    volume::VolumeEngine volume_;
    ClockRandom random_;
    std::string formattedLength_;
    double lastBlink_ = 0;
    std::int32_t loadedLength_ = 0;  // of the disc that this load serves
    bool ranOut_ = false;            // the disc has come to its end by itself
    bool soundsEnded_ = false;       // the device has said so, and the player has not acted on it yet
    bool drawerMoving_ = false;
};

}  // namespace tessarel::audio
