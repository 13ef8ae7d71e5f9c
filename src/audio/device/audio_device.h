#pragma once
#include <string_view>

#include "audio/device/mm_control.h"
#include "platform/dialogs.h"

namespace tessarel::audio {

/// Opens the device. True when it is open and a disc can be read; false when there is no such drive. A drive that another
/// program holds, or that can't play audio, is told to the user and ends the process.
bool openAudioDevice(MMControl& device, platform::Dialogs& dialogs);

/// Moves play to the point `x` of a bar `barWidth` wide, for a track of the length "mm:ss".
void seekInTrack(MMControl& device, std::string_view lengthText, float x, float barWidth, int currentTrack);

/// The whole seconds into a track that a point of a bar stands for.
int secondsAtPoint(std::string_view lengthText, float x, float barWidth);

}  // namespace tessarel::audio
