#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "shell/context.h"
#include "shell/settings_text.h"

/// The settings files on disk. Every routine first moves the current drive and directory to `dataDir`, so that programs
/// started afterwards begin there. Reading is silent; a file that can't be written is told to the user.
namespace tessarel::shell {

/// Position files of the windows. The disc application windows share one.
inline constexpr const char* discFormPositionFile = "TSLPOS.DAT";
inline constexpr const char* cdFormPositionFile = "CDPOSN.DAT";
inline constexpr const char* volumePositionFile = "vcpos.DAT";

/// A name inside `dataDir` as a whole path.
std::string dataPath(const SharedState& state, std::string_view name);

void moveToDataDir(const Context& context);

/// The text of a settings file, up to its first megabyte; nothing when it can't be read.
std::optional<std::string> settingsText(const platform::FileSystem& files, std::string_view path);

/// Removes a file of `dataDir` if it is there. One that can't be removed stays, in silence.
void removeDataFile(const Context& context, std::string_view name);

/// Writes a file of `dataDir`; a failure is told in a message box. True when it was written.
bool saveDataFile(const Context& context, std::string_view name, std::string_view bytes);

/// `TSLWIN.INI`, by its relative name in `systemDir`. False when it is missing or broken; fields may then be half filled.
bool loadTslwin(const Context& context);
void loadTslwin1(const Context& context);
/// A missing or broken file turns the removable disks off.
void loadTslwin2(const Context& context);
void loadTslwin3(const Context& context);
/// Gives empty lines 9 and 10 their defaults. A missing or broken file is replaced by an empty one, and no field is set.
void loadTslwin4(const Context& context);
void loadTslwin5(const Context& context);
void loadTslwin6(const Context& context);
/// Values outside their range count as 0.
void loadModeLast(const Context& context);
void loadTslLinks(const Context& context);

/// Reads `TSLWIN4.INI`, lets `edit` change it, and writes it back, all other lines as they were. A file that can't be read is
/// written from the settings in memory, which `edit` does not change.
bool rewriteTslwin4(const Context& context, const std::function<void(Settings&)>& edit);
bool writeTslwin6(const Context& context);
/// `modelast.dat`: both time modes and `alwaysOnTop`, whenever one of them has changed.
bool writeModeLast(const Context& context);

/// Nothing when `CDMAIN.INI` is missing or broken.
std::optional<MenuFont> loadMenuFont(const Context& context);
bool writeMenuFont(const Context& context, const MenuFont& font);

/// The picture of the Main Menu; "tslmain.bmp" in `dataDir` unless `TSLBMP.INI` names another.
std::string loadMenuBackground(const Context& context);
bool writeMenuBackground(const Context& context, std::string_view menuBackground);

/// Whether `cdmmax.dat` is there.
bool isMenuMaximised(const Context& context);
/// Writes `cdmmax.dat`, or removes it.
void writeMenuMaximised(const Context& context, bool maximised);

/// Nothing when `bmpdir.dat` is missing or broken.
std::optional<ArtFolder> loadArtFolder(const Context& context);
bool writeArtFolder(const Context& context, const ArtFolder& folder);

/// Directory last used for sound files, and for media files; nothing when it has not been saved.
std::optional<std::string> loadWaveDir(const Context& context);
bool writeWaveDir(const Context& context, std::string_view directory);
std::optional<std::string> loadMediaDir(const Context& context);
bool writeMediaDir(const Context& context, std::string_view directory);

/// Where a window was put last; nothing when its position file is missing or broken.
std::optional<WindowPlace> loadPlace(const Context& context, std::string_view positionFile);
bool writePlace(const Context& context, std::string_view positionFile, const WindowPlace& place);
void removePlace(const Context& context, std::string_view positionFile);

}  // namespace tessarel::shell
