#pragma once
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "forms/form.h"

namespace tessarel::audio {

/// What a key of the keyboard does in the Audio CD window.
enum class Act {
    playPause,  ///< presses Play, or Pause while Play is lit
    transport,  ///< presses the transport key of the index, as all below
    hold,       ///< holds a seek key down as long as the key is held
    seek,
    mode,
    function,
    program,
    cell,
    louder,
    quieter,
    mute,
    link,
    display,
};

struct Shortcut {
    Act act = Act::playPause;
    int index = 0;
    bool operator==(const Shortcut&) const = default;
};

/// What a key means with the modifiers held along with it; nothing for keys that mean nothing here. `modifiers` as in forms.
std::optional<Shortcut> shortcutOf(int keyCode, int modifiers);

forms::KeyUse useOf(const Shortcut& shortcut);

/// The tip of what shortcuts press: its name, and the keys in brackets, as in "Play (Space)". The name alone without keys.
std::string tipWithKeys(std::string_view name, std::initializer_list<Shortcut> shortcuts);

}  // namespace tessarel::audio
