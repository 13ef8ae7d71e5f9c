#include "shell/task_helpers.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/file_system.h"
#include "shell/cues.h"
#include "shell/settings_files.h"
#include "shell/shared_state.h"

namespace tessarel::shell {
namespace {

constexpr platform::Milliseconds pollInterval{10};

// The current drive becomes that of a command line which names one; the directory of the present drive stays.
void changeToDriveOf(platform::FileSystem& files, std::string_view commandLine) {
    if (commandLine.starts_with('"')) {
        commandLine.remove_prefix(1);
    }
    const bool namesDrive = commandLine.size() > 1 && commandLine[1] == ':';
    if (namesDrive && driveLetter(commandLine) != driveLetter(files.currentDirectory())) {
        files.changeDirectory(std::string{driveLetter(commandLine)} + ":");
    }
}

}  // namespace

std::string commandWord(std::string_view program) {
    const bool bare = program.find(' ') == std::string_view::npos || program.starts_with('"');
    return bare ? std::string(program) : fmt::format("\"{}\"", program);
}

bool startOrTell(const Context& context, const std::string& commandLine) {
    const auto started = context.processes.start(commandLine, platform::WindowStyle::normal);
    if (!started) {
        context.dialogs.message({.text = fmt::format("Unable to start {}. {}", commandLine, started.error().message),
                                 .icon = platform::Icon::exclamation});
    }
    return started.has_value();
}

bool insertOrTell(const Context& context, const std::string& image) {
    const auto inserted = context.drives.insertImage(driveLetter(context.state.cdDrive), image);
    if (!inserted) {
        context.dialogs.message({.text = inserted.error().message});
    }
    return inserted.has_value();
}

bool helpOnKey(const Context& context, int keyCode, std::int16_t topic) {
    const bool asked = keyCode == forms::keys::f1 || keyCode == forms::keys::help;
    if (asked) {
        context.state.helpTopic = topic;
        showHelp(context);
    }
    return asked;
}

WindowPlace centredPlace(const platform::ScreenInfo& screen, const std::optional<platform::TwipsRect>& taskBar, int width,
                         int height) {
    WindowPlace place{(screen.widthTwips - width) / 2, (screen.heightTwips - height) / 2};
    if (!taskBar) {
        return place;
    }
    const int barWidth = taskBar->right - taskBar->left;
    const int barHeight = taskBar->bottom - taskBar->top;
    if (barWidth > barHeight) {
        place.top += taskBar->top <= 0 ? barHeight / 2 : -barHeight / 2;
    } else {
        place.left += taskBar->left <= 0 ? barWidth / 2 : -barWidth / 2;
    }
    return place;
}

void centreForm(const Context& context, forms::Form& form) {
    const auto place = centredPlace(context.system.screen(), context.system.taskBar(), form.Width, form.Height);
    form.Move(place.left, place.top);
}

platform::TwipsRect freeScreenArea(const platform::ScreenInfo& screen, const std::optional<platform::TwipsRect>& taskBar) {
    platform::TwipsRect area{0, 0, screen.widthTwips, screen.heightTwips};
    if (!taskBar) {
        return area;
    }
    if (taskBar->right - taskBar->left > taskBar->bottom - taskBar->top) {
        (taskBar->top <= 0 ? area.top : area.bottom) = taskBar->top <= 0 ? taskBar->bottom : taskBar->top;
    } else {
        (taskBar->left <= 0 ? area.left : area.right) = taskBar->left <= 0 ? taskBar->right : taskBar->left;
    }
    return area;
}

void fillFreeScreenArea(const Context& context, forms::Form& form) {
    const auto area = freeScreenArea(context.system.screen(), context.system.taskBar());
    form.Move(area.left, area.top);
    form.Width = area.right - area.left;
    form.Height = area.bottom - area.top;
}

WindowPlace clampedPlace(const WindowPlace& place, const platform::ScreenInfo& screen, int width, int height) {
    const auto inside = [](std::int32_t at, int room) { return std::max(0, std::min(at, room)); };
    return {inside(place.left, screen.widthTwips - width), inside(place.top, screen.heightTwips - height)};
}

bool placeForm(const Context& context, forms::Form& form, std::string_view positionFile) {
    const auto saved = loadPlace(context, positionFile);
    if (!saved) {
        centreForm(context, form);
        return false;
    }
    const auto place = clampedPlace(*saved, context.system.screen(), form.Width, form.Height);
    form.Move(place.left, place.top);
    return true;
}

void savePlace(const Context& context, forms::Form& form, std::string_view positionFile) {
    keepOnScreen(context, form);
    writePlace(context, positionFile, {form.Left, form.Top});
}

void keepOnScreen(const Context& context, forms::Form& form) {
    const auto place = clampedPlace({form.Left, form.Top}, context.system.screen(), form.Width, form.Height);
    form.Move(place.left, place.top);
}

bool moveOrCentreForm(const Context& context, forms::Form& form, std::string_view positionFile, forms::MouseButton button) {
    if (button == forms::MouseButton::left) {
        dragForm(form);
        savePlace(context, form, positionFile);
        return true;
    }
    centreForm(context, form);
    removePlace(context, positionFile);
    return false;
}

void dragForm(forms::Form& form) {
    if (form.dragBySystem) {
        form.dragBySystem();
    }
}

Result<int> runAndWait(const Context& context, std::string_view commandLine, platform::WindowStyle style) {
    context.system.setPointer(platform::PointerShape::hourglass);
    changeToDriveOf(context.files, commandLine);
    const auto started = context.processes.start(commandLine, style);
    if (!started) {
        context.system.setPointer(platform::PointerShape::normal);
        return tl::unexpected<Error>(started.error());
    }
    int code = context.processes.exitCode(*started);
    while (code == platform::stillActive) {
        context.scheduler.doEvents();
        context.scheduler.wait(pollInterval);
        code = context.processes.exitCode(*started);
    }
    context.system.setPointer(platform::PointerShape::normal);
    return code;
}

void pauseSeconds(platform::Scheduler& scheduler, float seconds) {
    constexpr float day = 86400;
    const float length = seconds > 0 ? std::min(seconds, day) : 0;
    const auto end = scheduler.now() + platform::Milliseconds(static_cast<std::int64_t>(length * 1000));
    scheduler.doEvents();
    while (scheduler.now() < end) {
        scheduler.wait(std::min(pollInterval, end - scheduler.now()));
        scheduler.doEvents();
    }
}

void disableAsNotBuilt(forms::Control& key) {
    key.Enabled = false;
    key.ToolTipText = std::string("This window is not part of this version yet.");
}

void hideCursor(const Context& context) {
    if (context.state.cursorHidden != 1) {
        context.system.setPointerVisible(false);
        context.state.cursorHidden = 1;
    }
}

void showCursor(const Context& context) {
    if (context.state.cursorHidden != 0) {
        context.system.setPointerVisible(true);
        context.state.cursorHidden = 0;
    }
}

}  // namespace tessarel::shell
