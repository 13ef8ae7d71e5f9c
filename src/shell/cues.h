#pragma once
#include <cstdint>
#include <string>

#include "shell/context.h"

namespace tessarel::shell {

/// Where the help module can be fetched.
inline constexpr const char* helpDownloadPage = "https://tessarel.example/help";

/// File name of a sound cue, 0 to 5: click, minimise, unused, power, mixer, drawer; empty for any other number.
std::string cueFile(std::int16_t cue);

/// Starts a short sound for an action of the user, unless the settings or the platform have cues off.
void playCue(const Context& context, std::int16_t cue);

/// Plays the sound of a library entry to its end; a path that is empty or leads to no file does nothing.
void playEntrySound(const Context& context, const std::string& path);

/// The text file of a help topic, 0 to 26; empty for any other number.
std::string helpFile(std::int16_t topic);

/// Opens the topic `helpTopic` in the help viewer, or as a text file when that is not installed.
void showHelp(const Context& context);

}  // namespace tessarel::shell
