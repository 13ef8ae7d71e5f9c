#include <cdio/cdio.h>
#include <gmock/gmock.h>

#include "image_maker.h"

namespace tessarel::host::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::string big(std::int64_t n, int width) {
    std::string out;
    for (int i = width - 1; i >= 0; --i) {
        out += static_cast<char>(n >> (i * 8));
    }
    return out;
}

std::string list(std::string_view name, const std::string& bytes) {
    return std::string(name) + big(static_cast<std::int64_t>(bytes.size()), 4) + bytes;
}

struct StoredTrack {
    int mode;
    int sectorSize;
    Frames pregap;        ///< stored frames before its start
    std::string sectors;  ///< pregap included
};

/// A disc-at-once image of version 2, or of version 1, which has no cue list here.
class NrgMaker {
public:
    explicit NrgMaker(bool wide = true) : wide_(wide) {}

    NrgMaker& session(const std::vector<StoredTrack>& tracks, Frames firstAddress) {
        const int width = wide_ ? 8 : 4;
        const int firstNumber = number_ + 1;
        std::string places;
        Frames address = firstAddress;
        std::string cues = cue(0, 0, -150);
        for (const StoredTrack& track : tracks) {
            ++number_;
            const auto at = static_cast<std::int64_t>(sectors_.size());
            const Frames length = static_cast<Frames>(track.sectors.size()) / track.sectorSize;
            cues += cue(number_, 0, address) + cue(number_, 1, address + track.pregap);
            places += std::string(12, '\0') + big(track.sectorSize, 2) + static_cast<char>(track.mode) +
                      std::string("\0\0\1", 3) + big(at, width) +
                      big(at + std::int64_t{track.pregap} * track.sectorSize, width);
            sectors_ += track.sectors;
            places += big(static_cast<std::int64_t>(sectors_.size()), width);
            address += length;
        }
        cues += cue(0xAA, 1, address + leadOutError);
        const std::string head = std::string(20, '\0') + static_cast<char>(firstNumber) + static_cast<char>(number_);
        lists_ += (wide_ ? list("CUEX", cues) : std::string()) + list(wide_ ? "DAOX" : "DAOI", head + places);
        lists_ += list("SINF", big(static_cast<std::int64_t>(tracks.size()), 4));
        return *this;
    }

    std::string bytes() const {
        const auto at = static_cast<std::int64_t>(sectors_.size());
        const std::string end = list("MTYP", big(1, 4)) + list("END!", "");
        return sectors_ + lists_ + end + (wide_ ? "NER5" + big(at, 8) : "NERO" + big(at, 4));
    }

    Frames leadOutError = 0;

private:
    static std::string cue(int track, int index, Frames address) {
        const int digits = track == 0xAA ? track : track / 10 * 16 + track % 10;
        return big(1, 1) + big(digits, 1) + big(index, 1) + big(0, 1) + big(address, 4);
    }

    bool wide_;
    int number_ = 0;
    std::string sectors_;
    std::string lists_;
};

StoredTrack sound(Frames pregap, Frames first, Frames frames) {
    return {7, 2352, pregap, littleEndian(rampFrames(first, frames))};
}

class NrgImage : public ::testing::Test {
protected:
    fs::path nrg(const std::string& bytes) const { return folder.write("disc.nrg", bytes); }
    TemporaryFolder folder;
};

TEST_F(NrgImage, AnAudioDiscHasItsTracksAndItsSamples) {
    const auto disc =
        opened(nrg(NrgMaker().session({sound(150, 0, 200), sound(0, 200, 40), sound(10, 240, 30)}, -150).bytes()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 50 50 audio\n3 100 20 audio\n120");
    EXPECT_EQ(audio(*disc, 0, 120), rampFrames(150, 120));
}

TEST_F(NrgImage, AgreesWithAnIndependentReader) {
    const auto path = nrg(NrgMaker().session({sound(150, 0, 200), sound(0, 200, 40), sound(10, 240, 30)}, -150).bytes());
    const auto disc = opened(path);
    ASSERT_TRUE(disc);
    CdIo_t* peer = cdio_open(path.c_str(), DRIVER_NRG);
    ASSERT_NE(peer, nullptr);
    ASSERT_EQ(cdio_get_num_tracks(peer), 3);
    for (const auto& track : disc->toc().tracks) {
        EXPECT_EQ(cdio_get_track_lsn(peer, static_cast<track_t>(track.number)), track.start);
        Samples theirs(samplesPerFrame * 2);
        ASSERT_EQ(cdio_read_audio_sectors(peer, theirs.data(), track.start, 1), DRIVER_OP_SUCCESS);
        EXPECT_EQ(audio(*disc, track.start, 1), theirs);
    }
    EXPECT_EQ(cdio_get_track_lsn(peer, CDIO_CDROM_LEADOUT_TRACK), disc->toc().leadOut);
    cdio_destroy(peer);
}

TEST_F(NrgImage, AFirstTrackThatBeginsLateCanBeHeardBeforeItsStart) {
    const auto disc = opened(nrg(NrgMaker().session({sound(183, 0, 233)}, -150).bytes()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 33 50 audio\n83");
    EXPECT_EQ(audio(*disc, 0, 83), rampFrames(150, 83));
}

TEST_F(NrgImage, AFirstTrackWhoseGapIsNotStoredBeginsAtZero) {
    const auto disc = opened(nrg(NrgMaker().session({sound(0, 0, 60), sound(0, 60, 40)}, 0).bytes()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 60 audio\n2 60 40 audio\n100");
    EXPECT_EQ(audio(*disc, 0, 100), rampFrames(0, 100));
}

TEST_F(NrgImage, DataOfEveryStorageComesOutRight) {
    const std::vector<StoredTrack> kinds{{0, 2048, 150, cookedSectors(0, 200)},
                                         {5, 2352, 150, rawSectors(0, 200, 1)},
                                         {6, 2352, 150, rawSectors(0, 200, 2)},
                                         {3, 2336, 150, headlessSectors(0, 200)}};
    for (const StoredTrack& kind : kinds) {
        SCOPED_TRACE(kind.mode);
        const auto disc = opened(nrg(NrgMaker().session({kind, sound(10, 0, 40)}, -150).bytes()));
        ASSERT_TRUE(disc);
        EXPECT_EQ(tocText(*disc), "1 0 60 data\n2 60 30 audio\n90");
        EXPECT_EQ(data(*disc, 0, 50), cookedSectors(150, 50));
        EXPECT_EQ(audio(*disc, 60, 30), rampFrames(10, 30));
    }
}

TEST_F(NrgImage, ASecondSessionLiesWhereItsListSays) {
    const auto disc = opened(nrg(NrgMaker()
                                     .session({sound(150, 0, 200)}, -150)
                                     .session({StoredTrack{6, 2352, 150, rawSectors(0, 180, 2)}}, 50 + 11250)
                                     .bytes()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 11450 30 data\n11480");
    EXPECT_EQ(data(*disc, 11450, 30), cookedSectors(150, 30));
}

TEST_F(NrgImage, AnImageOfVersionOneIsReadToo) {
    const auto disc = opened(nrg(NrgMaker(false).session({sound(150, 0, 200), sound(10, 200, 40)}, -150).bytes()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 60 audio\n2 60 30 audio\n90");
    EXPECT_EQ(audio(*disc, 0, 90), rampFrames(150, 90));
}

std::string trackAtOnce(const std::vector<StoredTrack>& tracks, const std::vector<Frames>& starts) {
    std::string sectors;
    std::string places;
    for (std::size_t t = 0; t < tracks.size(); ++t) {
        places += big(static_cast<std::int64_t>(sectors.size()), 8) +
                  big(static_cast<std::int64_t>(tracks[t].sectors.size()), 8) + big(tracks[t].mode, 4) + big(starts[t], 4) +
                  big(0, 8);
        sectors += tracks[t].sectors;
    }
    const auto at = static_cast<std::int64_t>(sectors.size());
    return sectors + list("ETN2", places) + list("SINF", big(1, 4)) + list("END!", "") + "NER5" + big(at, 8);
}

TEST_F(NrgImage, TracksWrittenOneAtATimeHaveGapsThatAreNotStored) {
    const auto disc = opened(nrg(trackAtOnce({{0, 2048, 0, cookedSectors(0, 50)}, sound(0, 0, 40)}, {0, 200})));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 200 data\n2 200 40 audio\n240");
    EXPECT_EQ(data(*disc, 0, 50), cookedSectors(0, 50));
    EXPECT_EQ(audio(*disc, 200, 40), rampFrames(0, 40));
}

TEST_F(NrgImage, IsRefusedWhenItsListsAreCutOffOrLie) {
    const std::string good = NrgMaker().session({sound(150, 0, 200), sound(0, 200, 40)}, -150).bytes();
    EXPECT_THAT(refusal(nrg("NER5")), HasSubstr("\"disc.nrg\" can't be used: it does not end as an NRG image does."));
    EXPECT_THAT(refusal(nrg(good.substr(0, good.size() - 1))), HasSubstr("it does not end as an NRG image does."));
    EXPECT_THAT(refusal(nrg("NER5" + big(1LL << 62, 8))), HasSubstr("it does not end as an NRG image does."));
    EXPECT_THAT(refusal(nrg(list("END!", "") + "NER5" + big(0, 8))), HasSubstr("it has no tracks."));
    EXPECT_THAT(refusal(nrg("CUEX" + big(-1, 4) + "NER5" + big(0, 8))), HasSubstr("its lists of tracks are cut off."));
    NrgMaker liar;
    liar.leadOutError = 5;
    EXPECT_THAT(refusal(nrg(liar.session({sound(150, 0, 200)}, -150).bytes())),
                HasSubstr("its two lists of tracks do not agree."));
    EXPECT_THAT(refusal(nrg(trackAtOnce({{16, 2448, 0, std::string(2448, 'x')}}, {0}))),
                HasSubstr("track 1 is stored in a way that is not served."));
    EXPECT_THAT(refusal(nrg(trackAtOnce({sound(0, 0, 40), sound(0, 0, 40)}, {0, 20}))),
                HasSubstr("the place of track 2 is wrong."));
    std::string fewer = good;
    fewer.erase(0, 352800);
    EXPECT_THAT(refusal(nrg(fewer)), HasSubstr("\"disc.nrg\" can't be used: "));
}

TEST_F(NrgImage, BytesChangedAtRandomInItsListsNeverDoHarm) {
    const std::string good = NrgMaker().session({sound(5, 0, 10), sound(0, 10, 4)}, -5).bytes();
    const std::size_t lists = good.find("CUEX");
    unsigned seed = 1;
    for (int round = 0; round < 100; ++round) {
        std::string bad = good;
        for (int change = 0; change < 3; ++change) {
            seed = seed * 1103515245U + 12345U;
            bad[lists + (seed >> 8U) % (bad.size() - lists)] = static_cast<char>(seed >> 4U);
        }
        const auto disc = openDiscImage(nrg(bad));
        for (Frames f = 0; disc && f < std::min((*disc)->toc().leadOut, 40); ++f) {
            Samples samples(samplesPerFrame * 2);
            (void)(*disc)->readAudio(f, 1, samples.data());
        }
    }
}

}  // namespace
}  // namespace tessarel::host::testing
