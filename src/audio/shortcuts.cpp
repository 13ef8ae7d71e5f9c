#include "audio/shortcuts.h"

#include <algorithm>
#include <array>

#include "audio/cdform_face.h"

namespace tessarel::audio {
namespace {

using namespace forms::keys;
namespace with = forms::modifiers;

struct Row {
    int keyCode = 0;
    int modifiers = 0;
    Shortcut shortcut;
    const char* shown = "";  ///< in tips; empty for a second way
};

constexpr int letter(char name) { return letterA + name - 'A'; }

// The arrows alone come here while no key shows the focus, which they move otherwise.
constexpr std::array rows{
    Row{space, with::none, {Act::playPause, 0}, "Space"},
    Row{letter('S'), with::none, {Act::transport, transport::stop}, "S"},
    Row{letter('E'), with::none, {Act::transport, transport::eject}, "E"},
    Row{left, with::control, {Act::transport, transport::prev}, "Ctrl+Left"},
    Row{right, with::control, {Act::transport, transport::next}, "Ctrl+Right"},
    Row{left, with::shift, {Act::hold, seekKeys::rewind}, "Shift+Left"},
    Row{right, with::shift, {Act::hold, seekKeys::forward}, "Shift+Right"},
    Row{left, with::none, {Act::hold, seekKeys::rewind}, ""},
    Row{right, with::none, {Act::hold, seekKeys::forward}, ""},
    Row{letter('T'), with::none, {Act::seek, seekKeys::timeMode}, "T"},
    Row{letter('A'), with::none, {Act::seek, seekKeys::abRepeat}, "A"},
    Row{letter('P'), with::none, {Act::mode, modeKeys::program}, "P"},
    Row{letter('O'), with::none, {Act::mode, modeKeys::single}, "O"},
    Row{letter('W'), with::none, {Act::mode, modeKeys::disc}, "W"},
    Row{letter('I'), with::none, {Act::mode, modeKeys::intro}, "I"},
    Row{letter('Z'), with::none, {Act::function, functionKeys::random}, "Z"},
    Row{letter('R'), with::none, {Act::function, functionKeys::repeat}, "R"},
    Row{letter('K'), with::none, {Act::program, programKeys::keypad}, "K"},
    Row{up, with::control, {Act::louder, 0}, "Ctrl+Up"},
    Row{down, with::control, {Act::quieter, 0}, "Ctrl+Down"},
    Row{up, with::none, {Act::louder, 0}, ""},
    Row{down, with::none, {Act::quieter, 0}, ""},
    Row{letter('M'), with::none, {Act::mute, 0}, "M"},
    Row{letter('L'), with::none, {Act::link, 0}, "L"},
    Row{letter('D'), with::none, {Act::display, 0}, "D"},
    Row{mediaPlay, with::none, {Act::playPause, 0}, ""},
    Row{mediaStop, with::none, {Act::transport, transport::stop}, ""},
    Row{mediaNext, with::none, {Act::transport, transport::next}, ""},
    Row{mediaPrevious, with::none, {Act::transport, transport::prev}, ""},
};

constexpr int cellsOfDigits = 10;

/// The digits name the cells as the keyboard has them in a row: 1 to 9, and 0 for the tenth.
std::optional<Shortcut> cellOf(int keyCode, int modifiers) {
    if (keyCode < digit0 || keyCode > digit0 + 9 || (modifiers != with::none && modifiers != with::shift)) {
        return std::nullopt;
    }
    const int cell = (keyCode - digit0 + cellsOfDigits - 1) % cellsOfDigits;
    return Shortcut{Act::cell, modifiers == with::shift ? cell + cellsOfDigits : cell};
}

std::string keysOf(const Shortcut& shortcut) {
    if (shortcut.act == Act::cell) {
        const std::string digit = std::to_string((shortcut.index + 1) % cellsOfDigits);
        return shortcut.index < cellsOfDigits ? digit : "Shift+" + digit;
    }
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.shortcut == shortcut; });
    return found == rows.end() ? std::string() : found->shown;
}

}  // namespace

std::optional<Shortcut> shortcutOf(int keyCode, int modifiers) {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const Row& row) { return row.keyCode == keyCode && row.modifiers == modifiers; });
    return found == rows.end() ? cellOf(keyCode, modifiers) : std::optional(found->shortcut);
}

forms::KeyUse useOf(const Shortcut& shortcut) {
    const bool repeated = shortcut.act == Act::louder || shortcut.act == Act::quieter;
    return repeated ? forms::KeyUse::repeated : forms::KeyUse::once;
}

std::string tipWithKeys(std::string_view name, std::initializer_list<Shortcut> shortcuts) {
    std::string keys;
    for (const auto& shortcut : shortcuts) {
        const auto one = keysOf(shortcut);
        keys += keys.empty() || one.empty() ? one : ", " + one;
    }
    return keys.empty() ? std::string(name) : std::string(name) + " (" + keys + ")";
}

}  // namespace tessarel::audio
