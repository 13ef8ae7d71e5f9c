#pragma once
#include <cstdint>
#include <string>

#include "forms/form.h"
#include "platform/system.h"
#include "shell/command_line.h"
#include "shell/context.h"

namespace tessarel::shell {

/// 1 up to 799 pixels, 2 up to 1023, 3 up to 1279, 4 above.
std::int16_t screenClassFor(int widthPixels);

/// Colours that the screen can show: 2 to the power of bits per pixel times planes.
double colorsOf(const platform::ScreenInfo& screen);

/// The start-up form. Loading it does all that comes before the first window, and opens exactly that.
class Load1st : public forms::Form {
public:
    Load1st(forms::Windows& windows, Context context, std::string commandLine);

    /// May end the process by platform::endProcess.
    void Form_Load() override;

private:
    // What a step of start-up leads to.
    enum class Road { goOn, setUp, askForDirectory };

    void readScreen();
    void readCommandLine();
    void startProgramInstead(const std::string& path);
    Road readSettings();
    void readEarlySettings();
    Road checkDrives();
    void findDriveTypes();
    bool isDriveWarningDue() const;
    bool wantsSetUpAfterWarning();
    Road findLibrary();
    void askForDataDirectory();
    bool startSetUp();
    void readLateSettings();
    void chooseMixer();
    void openFirstWindow();
    void openWindowOfRunMode();
    void openUnseen();
    void openMedia();
    void leaveTo(const char* window);

    Context context_;
    std::string commandLine_;
    std::int16_t commandTrack_ = 0;
};

}  // namespace tessarel::shell
