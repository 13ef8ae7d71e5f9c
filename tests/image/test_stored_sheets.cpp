#include <gtest/gtest.h>
#include <sndfile.h>

#include <fstream>
#include <sstream>

#include "image_maker.h"

namespace tessarel::host::testing {
namespace {

/// A sheet of tests/data/images, put beside files that the test writes.
class StoredSheet : public ::testing::Test {
protected:
    std::filesystem::path sheet(const std::string& name) const {
        std::ifstream file(std::string(TESSAREL_SOURCE_DIR "/tests/data/images/") + name, std::ios::binary);
        std::stringstream text;
        text << file.rdbuf();
        EXPECT_FALSE(text.str().empty()) << name;
        return folder.write(name, text.str());
    }

    TemporaryFolder folder;
};

TEST_F(StoredSheet, ManyHabitsAtOnce) {
    writeSound(folder / "seite a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, rampFrames(0, 40));
    writeSound(folder / "Seite B.wav", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, rampFrames(40, 30));
    const auto disc = opened(sheet("many-habits.cue"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 40 audio\n2 40 25 audio\n3 65 12 audio\n77");
    EXPECT_EQ(audio(*disc, 0, 77), rampFrames(0, 60) + silence(5) + rampFrames(60, 10) + silence(2));
    EXPECT_EQ(disc->toc().title, "Zu \"viel\" Zucker");
    EXPECT_EQ(disc->toc().performer, "Grüner Tee");
    EXPECT_EQ(disc->toc().tracks[0].title, "Erstes Stück");
    EXPECT_EQ(disc->toc().tracks[1].performer, "Gast");
}

TEST_F(StoredSheet, LatinOne) {
    folder.write("Die große Platte.bin", littleEndian(rampFrames(0, 50)));
    const auto disc = opened(sheet("latin1.cue"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 33 17 audio\n50");
    EXPECT_EQ(disc->toc().title, "Déjà vu");
    EXPECT_EQ(disc->toc().tracks[0].performer, "Señor");
}

TEST_F(StoredSheet, Enhanced) {
    folder.write("songs.bin", littleEndian(rampFrames(0, 60)));
    folder.write("extras.bin", rawSectors(0, 40, 2));
    const auto disc = opened(sheet("enhanced.cue"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 30 audio\n2 30 30 audio\n3 11460 40 data\n11500");
    EXPECT_EQ(audio(*disc, 0, 60), rampFrames(0, 60));
    EXPECT_EQ(data(*disc, 11460, 40), cookedSectors(0, 40));
}

TEST_F(StoredSheet, Mixed) {
    folder.write("disc.bin", rawSectors(0, 30, 1) + bigEndian(rampFrames(0, 30)));
    writeSound(folder / "end.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, rampFrames(100, 10));
    const auto disc = opened(sheet("mixed.toc"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 data\n2 50 20 audio\n3 70 10 audio\n80");
    EXPECT_EQ(data(*disc, 0, 30), cookedSectors(0, 30));
    EXPECT_EQ(audio(*disc, 50, 30), rampFrames(0, 20) + rampFrames(101, 5) + rampFrames(20, 5));
    EXPECT_EQ(disc->toc().title, "Café \"Noir\"");
    EXPECT_EQ(disc->toc().tracks[1].performer, "Ensemble");
}

}  // namespace
}  // namespace tessarel::host::testing
