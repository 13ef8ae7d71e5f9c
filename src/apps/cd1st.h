#pragma once
#include <string>
#include <vector>

#include "apps/disc_decision.h"
#include "audio/device/mm_control.h"
#include "audio/player_state.h"
#include "forms/control.h"
#include "forms/form.h"
#include "library/disc_record.h"
#include "shell/context.h"

namespace tessarel::apps {

/// The waiting room of the disc windows: asks for a disc, polls the drive, and opens the window that the disc is for.
class CD1st : public forms::Form {
public:
    CD1st(forms::Windows& windows, shell::Context context, audio::PlayerState& player, library::DiscRecord& record);

    forms::Label firstLine{*this, "Label1", "What to do"};
    forms::Label secondLine{*this, "Label2", "Where to put it"};
    /// Opens a file dialog for an image of a disc and puts the image into the drive.
    forms::Button insertImageKey{*this, "Command1", "Insert disc image..."};
    /// The window's face; it turns red as the program ends.
    forms::Label panel{*this, "Panel3D1", "Waiting for a disc"};
    forms::Timer Timer2;

    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void Form_MouseDown(forms::MouseButton button) override;
    void Form_FilesDropped(const std::vector<std::string>& paths) override;

    /// A click on the first line opens the tray of the audio device.
    void Label1_Click();
    void Command1_Click();
    void Timer2_Timer();
    /// Sets both lines by what the settings allow to be inserted.
    void cd1label();

private:
    void prepareDevice();
    DiscSigns lookIntoDrive(const DiscFeatures& features);
    void showNoDisc();
    void preparePlayer();
    void takeAudioDisc();
    void forgetRecord();
    void insertImage(const std::string& path);

    shell::Context context_;
    audio::PlayerState& player_;
    library::DiscRecord& record_;
    audio::MMControl MMControl1;
};

}  // namespace tessarel::apps
