#include "apps/disc_decision.h"

#include <gtest/gtest.h>

namespace tessarel::apps {
namespace {

constexpr DiscFeatures both{1, 1};
constexpr DiscFeatures audioOnly{0, 1};
constexpr DiscFeatures cdRomOnly{1, 0};

TEST(DiscDecision, AnEmptyDriveIsNoDisc) {
    EXPECT_EQ(decideDisc(both, {true, 0, ""}), DiscDecision::noDisc);
    EXPECT_EQ(decideDisc(audioOnly, {true, 0, ""}), DiscDecision::noDisc);
}

TEST(DiscDecision, AFirstEntryThatIsATrackMakesItAudio) {
    EXPECT_EQ(decideDisc(both, {true, 1, "TRACK01.CDA"}), DiscDecision::audio);
}

TEST(DiscDecision, MoreThanOneTrackMakesItAudioEvenWithDataFilesAtTheRoot) {
    EXPECT_EQ(decideDisc(both, {true, 7, "SETUP.EXE"}), DiscDecision::audio);
    EXPECT_EQ(decideDisc(both, {true, 7, ""}), DiscDecision::audio);
}

TEST(DiscDecision, OneTrackWithOtherFilesIsData) { EXPECT_EQ(decideDisc(both, {true, 1, "SETUP.EXE"}), DiscDecision::data); }

TEST(DiscDecision, AnAudioOnlySetupNeverTakesADataDisc) {
    EXPECT_EQ(decideDisc(audioOnly, {true, 1, "SETUP.EXE"}), DiscDecision::wrongKind);
}

TEST(DiscDecision, ACdRomOnlySetupAsksForACdRomWhenAnAudioDiscIsIn) {
    EXPECT_EQ(decideDisc(cdRomOnly, {false, 0, "TRACK01.CDA"}), DiscDecision::wrongKind);
    EXPECT_EQ(decideDisc(cdRomOnly, {false, 0, "SETUP.EXE"}), DiscDecision::data);
}

TEST(DiscDecision, WithoutAnAudioDeviceNoDiscIsTaken) {
    EXPECT_EQ(decideDisc(both, {false, 0, "SETUP.EXE"}), DiscDecision::noDisc);
}

TEST(DiscDecision, ATrackFileOnADiscWithoutTracksIsNotTaken) {
    EXPECT_EQ(decideDisc(both, {true, 0, "TRACK01.CDA"}), DiscDecision::wrongKind);
}

TEST(DiscDecision, OtherValuesOfTheSettingsAreNeitherSetupForOneKind) {
    EXPECT_EQ(decideDisc({1, -1}, {true, 5, "TRACK01.CDA"}), DiscDecision::audio);
    EXPECT_EQ(decideDisc({-1, 1}, {true, 1, "SETUP.EXE"}), DiscDecision::data);
    EXPECT_EQ(waitingLines({1, -1}).second, "or a CD-ROM into the Drive...");
    EXPECT_EQ(waitingLines({2, 1}).second, "or a CD-ROM into the Drive...");
}

TEST(WaitingLines, AskForWhatTheSettingsLetIn) {
    EXPECT_EQ(waitingLines(audioOnly), (WaitingLines{"Please Insert an Audio CD", "into the Drive..."}));
    EXPECT_EQ(waitingLines(cdRomOnly), (WaitingLines{"Please Insert a CD-ROM", "into the Drive..."}));
    EXPECT_EQ(waitingLines(both), (WaitingLines{"Please Insert an Audio CD", "or a CD-ROM into the Drive..."}));
    EXPECT_EQ(waitingLines({0, 0}), (WaitingLines{"Please Insert an Audio CD", "or a CD-ROM into the Drive..."}));
}

}  // namespace
}  // namespace tessarel::apps
