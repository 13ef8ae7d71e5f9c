#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "forms/form.h"
#include "platform/processes.h"
#include "platform/system.h"
#include "shell/context.h"
#include "shell/settings_text.h"

namespace tessarel::shell {

/// A program's name or path as the first word of a command line: in double quotes if it holds blanks.
std::string commandWord(std::string_view program);

/// Starts a command line with a normal window; one that can't be started is told to the user. True when it was started.
bool startOrTell(const Context& context, const std::string& commandLine);

/// Puts an image into the disc drive of the settings; a refusal is told to the user. True when it is in.
bool insertOrTell(const Context& context, const std::string& image);

/// Opens a help topic when the key is one that asks for help; true then.
bool helpOnKey(const Context& context, int keyCode, std::int16_t topic);

/// Sets `appAlreadyRunning` to 1 and tells the user when the program of `appToCheck` has a window already, else to 0. A
/// program that the tables of known ones don't hold never counts as running.
void isAppRunning(const Context& context);

/// Left and top of a window of this size in the middle of the screen, moved by half of the task bar's thickness away from it.
WindowPlace centredPlace(const platform::ScreenInfo& screen, const std::optional<platform::TwipsRect>& taskBar, int width,
                         int height);
void centreForm(const Context& context, forms::Form& form);

/// The part of the screen that a task bar along one of its edges leaves free.
platform::TwipsRect freeScreenArea(const platform::ScreenInfo& screen, const std::optional<platform::TwipsRect>& taskBar);
/// Makes a window fill the free area.
void fillFreeScreenArea(const Context& context, forms::Form& form);

/// A place moved so that a window of this size stays on the screen; one larger than the screen begins at 0.
WindowPlace clampedPlace(const WindowPlace& place, const platform::ScreenInfo& screen, int width, int height);

/// Puts a window where its position file says, clamped to the screen, or in the middle. True when there was a file.
bool placeForm(const Context& context, forms::Form& form, std::string_view positionFile);
/// Keeps the window on the screen and writes its position file.
void savePlace(const Context& context, forms::Form& form, std::string_view positionFile);
/// Moves a window that lies beyond an edge of the screen back onto it.
void keepOnScreen(const Context& context, forms::Form& form);
/// A press on the window itself: the left button drags it and saves where it ends, the right one centres it and forgets its
/// position file. True when it has a saved place now.
bool moveOrCentreForm(const Context& context, forms::Form& form, std::string_view positionFile, forms::MouseButton button);

/// Hands the window to the system's drag; returns when the button is released.
void dragForm(forms::Form& form);

/// Starts a program on its own drive and waits for its end while events go on. Gives its exit code.
Result<int> runAndWait(const Context& context, std::string_view commandLine,
                       platform::WindowStyle style = platform::WindowStyle::normal);

/// Waits while events go on; a negative time and one beyond a day count as 0 and a day.
void pauseSeconds(platform::Scheduler& scheduler, float seconds);

/// A key whose window this version lacks is dead, and says so.
void disableAsNotBuilt(forms::Control& key);

/// The pointer is hidden or shown; calls don't nest.
void hideCursor(const Context& context);
void showCursor(const Context& context);

}  // namespace tessarel::shell
