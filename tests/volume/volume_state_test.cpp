#include "volume/volume_state.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessarel::volume {
namespace {

using platform::LineLevel;
using platform::StereoLevel;

// What a window shows of a state, and what the line is to stand at.
std::string shown(const VolumeState& state) {
    return std::to_string(state.cdVolumeLeft) + " " + std::to_string(state.cdVolumeRight) + ", sliders " +
           std::to_string(state.sliderLastLeft) + " " + std::to_string(state.sliderLastRight) +
           (state.linked ? ", linked" : "") +
           (state.muted ? ", muted over " + std::to_string(state.muteMemory[0]) + " " + std::to_string(state.muteMemory[1])
                        : "");
}

VolumeState playing() { return asRead({}, {{49151, 49151}, false}); }
VolumeState muted() { return afterMute(playing()); }
VolumeState mutedByMixer() { return afterLineChange(playing(), {{49151, 49151}, true}); }

TEST(VolumeStateAsRead, TakesEachChannelForItself) {
    EXPECT_EQ(shown(asRead({}, {{0, 65535}, false})), "0 65535, sliders 100 0") << "a full right channel is loudest";
    EXPECT_EQ(shown(asRead({}, {{65535, 0}, false})), "65535 0, sliders 0 100");
}

TEST(VolumeStateAsRead, ReadsPastAMuteOfOurOwnAndNoOther) {
    struct Row {
        const char* what;
        VolumeState before;
        LineLevel heard;
        const char* after;
    };
    const std::vector<Row> rows = {
        {"held at 0", muted(), {{0, 0}, false}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"held, and muted by the mixer", muted(), {{0, 0}, true}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"raised since", muted(), {{13107, 13107}, false}, "13107 13107, sliders 80 80, linked"},
        {"turned down, not muted", playing(), {{0, 0}, false}, "0 0, sliders 100 100, linked"},
        {"by the mixer", mutedByMixer(), {{49151, 49151}, true}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"no more by the mixer", mutedByMixer(), {{0, 0}, false}, "0 0, sliders 100 100, linked"},
        {"of the output", asOutput({}, {50, true}), {{0, 0}, false}, "0 0, sliders 100 100, linked"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(asRead(row.before, row.heard)), row.after) << row.what;
    }
}

TEST(VolumeStateAsOutput, ForgetsTheLineUntilThatIsReadAnew) {
    EXPECT_FALSE(standsForOutput({}));
    EXPECT_FALSE(standsForOutput(muted()));
    const auto output = asOutput(muted(), {50, false});
    EXPECT_EQ(shown(output), "65535 65535, sliders 80 80, linked");
    EXPECT_EQ(output.muteMemory[0], 50);
    EXPECT_TRUE(standsForOutput(output));
    EXPECT_FALSE(standsForOutput(asRead(output, {{49151, 49151}, false})));
}

TEST(VolumeStateAfterLineChange, FollowsWhatTheDesktopsMixerDoes) {
    struct Row {
        const char* what;
        VolumeState before;
        LineLevel heard;
        const char* after;
    };
    const std::vector<Row> rows = {
        {"its own level", playing(), {{49151, 49151}, false}, "49151 49151, sliders 25 25, linked"},
        {"another level", playing(), {{13107, 13107}, false}, "13107 13107, sliders 80 80, linked"},
        {"channels apart", playing(), {{49151, 0}, false}, "49151 0, sliders 25 100"},
        {"out of the scale", playing(), {{99999, -3}, false}, "65535 0, sliders 0 100"},
        {"muted", playing(), {{49151, 49151}, true}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"moved and muted", playing(), {{0, 13107}, true}, "0 0, sliders 100 80, muted over 0 13107"},
        {"own mute's echo", muted(), {{0, 0}, false}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"raised over own mute", muted(), {{13107, 13107}, false}, "13107 13107, sliders 80 80, linked"},
        {"own mute muted too", muted(), {{0, 0}, true}, "0 0, sliders 25 25, linked, muted over 49151 49151"},
        {"mute lifted", mutedByMixer(), {{49151, 49151}, false}, "49151 49151, sliders 25 25, linked"},
        {"moved while muted", mutedByMixer(), {{13107, 13107}, true}, "0 0, sliders 80 80, linked, muted over 13107 13107"},
        {"lowered, then heard", mutedByMixer(), {{0, 0}, false}, "0 0, sliders 100 100, linked"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(afterLineChange(row.before, row.heard)), row.after) << row.what;
    }
}

TEST(VolumeStateAfterLineChange, LeavesASliderWhoseLevelIsTheSameWhereItStands) {
    auto state = asRead({}, {{65208, 65208}, false});
    state.linked = false;
    for (int position = 2; position <= 50; position += 2) {
        state = afterMove(state, Side::left, position);
    }
    ASSERT_EQ(sliderPosition(state.cdVolumeLeft), 51) << "read anew it would stand elsewhere";
    const auto after = afterLineChange(state, {{state.cdVolumeLeft, 32768}, false});
    EXPECT_EQ(after.sliderLastLeft, 50);
    EXPECT_EQ(after.sliderLastRight, 50);
}

TEST(VolumeStateAfterOutputChange, MovesBothSlidersAndKeepsThemAtTheStepTheyStandFor) {
    auto state = afterMoveTogether(asOutput({}, {125, false}), 33);
    state.muteMemory[0] = stepOfPosition(33);
    const auto same = afterOutputChange(state, {stepOfPosition(33), true});
    EXPECT_EQ(same.sliderLastLeft, 33);
    EXPECT_TRUE(same.muted);
    const auto other = afterOutputChange(same, {10, false});
    EXPECT_EQ(other.sliderLastLeft, 96);
    EXPECT_EQ(other.sliderLastRight, 96);
    EXPECT_EQ(other.muteMemory[0], 10);
    EXPECT_FALSE(other.muted);
}

}  // namespace
}  // namespace tessarel::volume
