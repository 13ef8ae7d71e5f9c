#include "audio/shortcuts.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "audio/cdform_face.h"

namespace tessarel::audio {
namespace {

namespace with = forms::modifiers;

std::optional<Shortcut> plain(char key) { return shortcutOf(key, with::none); }

TEST(Shortcuts, LettersAndSpacePressTheKeysThatTheyStandFor) {
    EXPECT_EQ(plain(' '), (Shortcut{Act::playPause, 0}));
    EXPECT_EQ(plain('S'), (Shortcut{Act::transport, transport::stop}));
    EXPECT_EQ(plain('E'), (Shortcut{Act::transport, transport::eject}));
    EXPECT_EQ(plain('T'), (Shortcut{Act::seek, seekKeys::timeMode}));
    EXPECT_EQ(plain('A'), (Shortcut{Act::seek, seekKeys::abRepeat}));
    EXPECT_EQ(plain('P'), (Shortcut{Act::mode, modeKeys::program}));
    EXPECT_EQ(plain('O'), (Shortcut{Act::mode, modeKeys::single}));
    EXPECT_EQ(plain('W'), (Shortcut{Act::mode, modeKeys::disc}));
    EXPECT_EQ(plain('I'), (Shortcut{Act::mode, modeKeys::intro}));
    EXPECT_EQ(plain('Z'), (Shortcut{Act::function, functionKeys::random}));
    EXPECT_EQ(plain('R'), (Shortcut{Act::function, functionKeys::repeat}));
    EXPECT_EQ(plain('K'), (Shortcut{Act::program, programKeys::keypad}));
    EXPECT_EQ(plain('M'), (Shortcut{Act::mute, 0}));
    EXPECT_EQ(plain('L'), (Shortcut{Act::link, 0}));
    EXPECT_EQ(plain('D'), (Shortcut{Act::display, 0}));
}

TEST(Shortcuts, MediaKeysPressTheTransport) {
    using namespace forms::keys;
    EXPECT_EQ(shortcutOf(mediaPlay, with::none), (Shortcut{Act::playPause, 0}));
    EXPECT_EQ(shortcutOf(mediaStop, with::none), (Shortcut{Act::transport, transport::stop}));
    EXPECT_EQ(shortcutOf(mediaNext, with::none), (Shortcut{Act::transport, transport::next}));
    EXPECT_EQ(shortcutOf(mediaPrevious, with::none), (Shortcut{Act::transport, transport::prev}));
}

TEST(Shortcuts, ArrowsSeekAloneOrWithShiftAndSkipTracksWithControl) {
    using namespace forms::keys;
    for (const int how : {with::none, with::shift}) {
        EXPECT_EQ(shortcutOf(left, how), (Shortcut{Act::hold, seekKeys::rewind}));
        EXPECT_EQ(shortcutOf(right, how), (Shortcut{Act::hold, seekKeys::forward}));
    }
    EXPECT_EQ(shortcutOf(left, with::control), (Shortcut{Act::transport, transport::prev}));
    EXPECT_EQ(shortcutOf(right, with::control), (Shortcut{Act::transport, transport::next}));
    for (const int how : {with::none, with::control}) {
        EXPECT_EQ(shortcutOf(up, how), (Shortcut{Act::louder, 0}));
        EXPECT_EQ(shortcutOf(down, how), (Shortcut{Act::quieter, 0}));
    }
    EXPECT_EQ(shortcutOf(up, with::shift), std::nullopt);
}

TEST(Shortcuts, DigitsAreTheFirstTenCellsAndWithShiftTheOtherTen) {
    EXPECT_EQ(plain('1'), (Shortcut{Act::cell, 0}));
    EXPECT_EQ(plain('9'), (Shortcut{Act::cell, 8}));
    EXPECT_EQ(plain('0'), (Shortcut{Act::cell, 9}));
    EXPECT_EQ(shortcutOf('1', with::shift), (Shortcut{Act::cell, 10}));
    EXPECT_EQ(shortcutOf('0', with::shift), (Shortcut{Act::cell, 19}));
}

TEST(Shortcuts, KeysOfTheDesktopAndOfEveryFormAreLeftAlone) {
    for (const int key : {forms::keys::escape, forms::keys::enter, forms::keys::f1, forms::keys::help}) {
        EXPECT_EQ(shortcutOf(key, with::none), std::nullopt) << key;
    }
    for (const int key : {int{'S'}, int{'1'}, forms::keys::space, forms::keys::left}) {
        EXPECT_EQ(shortcutOf(key, with::alt), std::nullopt) << key;
        EXPECT_EQ(shortcutOf(key, with::alt | with::shift), std::nullopt) << key;
    }
    for (const char key : {'S', 'R', '1', ' '}) {
        EXPECT_EQ(shortcutOf(key, with::control), std::nullopt) << key;
    }
    EXPECT_EQ(shortcutOf('S', with::shift), std::nullopt);
}

TEST(Shortcuts, OnlyTheVolumeGoesOnWhileItsKeyIsHeld) {
    EXPECT_EQ(useOf({Act::louder}), forms::KeyUse::repeated);
    EXPECT_EQ(useOf({Act::quieter}), forms::KeyUse::repeated);
    EXPECT_EQ(useOf({Act::hold, seekKeys::forward}), forms::KeyUse::once);
    EXPECT_EQ(useOf({Act::playPause}), forms::KeyUse::once);
}

TEST(Shortcuts, TipsTellTheKeysOfTheSameTable) {
    EXPECT_EQ(tipWithKeys("Play", {{Act::playPause}}), "Play (Space)");
    EXPECT_EQ(tipWithKeys("Forward", {{Act::hold, seekKeys::forward}}), "Forward (Shift+Right)") << "the way that always works";
    EXPECT_EQ(tipWithKeys("Track 10", {{Act::cell, 9}}), "Track 10 (0)");
    EXPECT_EQ(tipWithKeys("Track 20", {{Act::cell, 19}}), "Track 20 (Shift+0)");
    EXPECT_EQ(tipWithKeys("Volume left", {{Act::louder}, {Act::quieter}}), "Volume left (Ctrl+Up, Ctrl+Down)");
    EXPECT_EQ(tipWithKeys("Main Menu", {{Act::function, functionKeys::mainMenu}}), "Main Menu") << "it has no key";
}

}  // namespace
}  // namespace tessarel::audio
