#pragma once
#include <string>
#include <string_view>

#include "audio/player_state.h"

/// The program stored with a disc: 100 lines of one track number each, 0 ending the program.
namespace tessarel::audio {

/// The path of a disc's stored program.
std::string programPath(std::string_view discRecordPath);

/// The file for the program at hand. An entry that the disc lacks is written as 0.
std::string programFileBytes(const PlayerState& player);

/// Takes a file's entries into `programList`, `programBackup` and `programCount`. Only tracks of the grid are recalled,
/// though more are saved; what is none is 0 and ends the
/// program there. A short file gives what it holds, and no more.
void takeProgramFile(PlayerState& player, std::string_view bytes);

/// Whether a file holds a program: its first value is at least 1.
bool holdsProgram(std::string_view bytes);

}  // namespace tessarel::audio
