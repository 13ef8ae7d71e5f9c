#pragma once
#include "audio/player_state.h"
#include "forms/control.h"
#include "library/disc_record.h"

/// Fills list boxes with the tracks of a disc.
namespace tessarel::audio {

/// What the rows of a list are made from.
struct ListSource {
    const PlayerState& player;
    const library::DiscRecord& record;
    bool smallFonts = false;  ///< the display has normal fonts, not large ones
};

/// The program as it was entered: track, title and length, a row for each entry. Nothing happens without a disc.
void fillProgramList(forms::ListBox& box, const ListSource& source);
/// All tracks of the disc in order, in the same form.
void fillTrackList(forms::ListBox& box, const ListSource& source);
/// The words of each track, one row a track, with control characters blanked.
void fillLyricsList(forms::ListBox& box, const ListSource& source);

}  // namespace tessarel::audio
