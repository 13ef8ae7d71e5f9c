#pragma once
#include <string>
#include <vector>

#include "audio/device/mm_control.h"
#include "forms/control.h"
#include "forms/form.h"
#include "shell/context.h"

namespace tessarel::apps {

/// The waiting room of the disc windows: asks for a disc, polls the drive, and opens the window that the disc is for.
class CD1st : public forms::Form {
public:
    CD1st(forms::Windows& windows, shell::Context context);

    forms::Label firstLine{*this, "Label1", "What to do"};
    forms::Label secondLine{*this, "Label2", "Where to put it"};
    /// Opens a file dialog for an image of a disc and puts the image into the drive.
    forms::Button insertImageKey{*this, "Command1", "Insert disc image..."};
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
    void showNoDisc();
    void takeAudioDisc();
    void insertImage(const std::string& path);

    shell::Context context_;
    audio::MMControl MMControl1;
};

}  // namespace tessarel::apps
