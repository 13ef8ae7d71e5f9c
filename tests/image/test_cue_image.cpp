#include <cdio/cdio.h>
#include <gmock/gmock.h>
#include <sndfile.h>

#include <fstream>
#include <thread>

#include "image_maker.h"

namespace tessarel::host::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

constexpr int wav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
constexpr int aiff16 = SF_FORMAT_AIFF | SF_FORMAT_PCM_16;
constexpr int flac16 = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;

class CueImage : public ::testing::Test {
protected:
    fs::path cue(std::string_view text) const { return folder.write("disc.cue", text); }
    void bin(Frames frames) const { folder.write("disc.bin", littleEndian(rampFrames(0, frames))); }

    TemporaryFolder folder;
};

constexpr std::string_view threeTracks =
    "FILE \"disc.bin\" BINARY\n"
    "  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
    "  TRACK 02 AUDIO\n    INDEX 00 00:00:20\n    INDEX 01 00:00:30\n"
    "  TRACK 03 AUDIO\n    INDEX 01 00:01:00\n";

TEST_F(CueImage, OneBinarySheetHasItsTracksAndItsSamples) {
    bin(100);
    const auto disc = opened(cue(threeTracks));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 30 audio\n2 30 45 audio\n3 75 25 audio\n100");
    EXPECT_EQ(audio(*disc, 0, 100), rampFrames(0, 100));
}

TEST_F(CueImage, AgreesWithAnIndependentReaderOfTheSameSheet) {
    bin(100);
    const auto disc = opened(cue(threeTracks));
    ASSERT_TRUE(disc);
    CdIo_t* peer = cdio_open((folder / "disc.cue").c_str(), DRIVER_BINCUE);
    ASSERT_NE(peer, nullptr);
    ASSERT_EQ(cdio_get_num_tracks(peer), disc->toc().tracks.size());
    for (const auto& track : disc->toc().tracks) {
        EXPECT_EQ(cdio_get_track_lsn(peer, static_cast<track_t>(track.number)), track.start);
    }
    EXPECT_EQ(cdio_get_track_lsn(peer, CDIO_CDROM_LEADOUT_TRACK), disc->toc().leadOut);
    Samples theirs(static_cast<std::size_t>(100) * samplesPerFrame * 2);
    ASSERT_EQ(cdio_read_audio_sectors(peer, theirs.data(), 0, 100), DRIVER_OP_SUCCESS);
    cdio_destroy(peer);
    EXPECT_EQ(audio(*disc, 0, 100), theirs);
}

TEST_F(CueImage, EveryPositionAndLengthReadsTheSameSamples) {
    bin(60);
    writeSound(folder / "b.flac", flac16, ramp(5000000, 588 * 20 + 100));
    const auto disc = opened(
        cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nPREGAP 00:00:07\nINDEX 01 00:00:33\n"
            "POSTGAP 00:00:03\nFILE b.flac WAVE\nTRACK 03 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    Samples whole = rampFrames(0, 33) + silence(7) + rampFrames(33, 27) + silence(3) + ramp(5000000, 588 * 20 + 100);
    whole.resize(static_cast<std::size_t>(disc->toc().leadOut) * samplesPerFrame * 2);
    ASSERT_EQ(disc->toc().leadOut, 60 + 7 + 3 + 21);
    for (const int count : {1, 2, 25, 91}) {
        for (Frames from = 0; from + count <= disc->toc().leadOut; ++from) {
            const auto at = whole.begin() + from * samplesPerFrame * 2;
            ASSERT_EQ(audio(*disc, from, count), Samples(at, at + count * samplesPerFrame * 2)) << from << " " << count;
        }
    }
}

TEST_F(CueImage, AnUnstoredPregapShiftsAllThatFollows) {
    bin(100);
    const auto disc = opened(
        cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nPREGAP 00:00:10\nINDEX 01 00:00:40\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 50 60 audio\n110");
    EXPECT_EQ(audio(*disc, 0, 110), rampFrames(0, 40) + silence(10) + rampFrames(40, 60));
}

TEST_F(CueImage, APostgapLengthensItsTrack) {
    bin(100);
    const auto disc = opened(
        cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nPOSTGAP 00:00:10\nTRACK 02 AUDIO\nINDEX 01 00:00:40\n"
            "POSTGAP 00:00:05\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 50 65 audio\n115");
    EXPECT_EQ(audio(*disc, 0, 115), rampFrames(0, 40) + silence(10) + rampFrames(40, 60) + silence(5));
}

TEST_F(CueImage, TheFirstTrackBeginsBehindItsPregap) {
    bin(100);
    const auto silent = opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nPREGAP 00:00:33\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(silent);
    EXPECT_EQ(tocText(*silent), "1 33 100 audio\n133");
    EXPECT_EQ(audio(*silent, 0, 133), silence(33) + rampFrames(0, 100));
}

TEST_F(CueImage, AStoredPregapOfTheFirstTrackCanBeHeardBeforeIt) {
    bin(100);
    const auto hidden = opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 00 00:00:00\nINDEX 01 00:00:33\n"));
    ASSERT_TRUE(hidden);
    EXPECT_EQ(tocText(*hidden), "1 33 67 audio\n100");
    EXPECT_EQ(audio(*hidden, 0, 100), rampFrames(0, 100));
    const auto unsaid = opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:33\n"));
    ASSERT_TRUE(unsaid);
    EXPECT_EQ(tocText(*unsaid), "1 33 67 audio\n100");
}

TEST_F(CueImage, FurtherIndexesStayInsideTheirTrack) {
    bin(100);
    const auto disc =
        opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nINDEX 02 00:00:20\nINDEX 03 00:00:30\nTRACK 02 "
                   "AUDIO\nINDEX 01 "
                   "00:00:50\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 50 50 audio\n100");
    EXPECT_EQ(audio(*disc, 0, 100), rampFrames(0, 100));
}

TEST_F(CueImage, EachTrackMayHaveAFileOfItsOwnAndOfItsOwnKind) {
    writeSound(folder / "1.wav", wav16, rampFrames(0, 20));
    writeSound(folder / "2.aiff", aiff16, rampFrames(100, 21));
    writeSound(folder / "3.flac", flac16, rampFrames(200, 22));
    folder.write("4.raw", bigEndian(rampFrames(300, 23)));
    const auto disc = opened(
        cue("FILE \"1.wav\" WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE \"2.aiff\" AIFF\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n"
            "FILE \"3.flac\" FLAC\nTRACK 03 AUDIO\nINDEX 01 00:00:00\nFILE \"4.raw\" MOTOROLA\nTRACK 04 AUDIO\nINDEX 01 "
            "00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 20 audio\n2 20 21 audio\n3 41 22 audio\n4 63 23 audio\n86");
    EXPECT_EQ(audio(*disc, 0, 86), rampFrames(0, 20) + rampFrames(100, 21) + rampFrames(200, 22) + rampFrames(300, 23));
}

TEST_F(CueImage, AFlacFileThatTheSheetCallsWaveIsReadAsFlac) {
    writeSound(folder / "a.flac", flac16, rampFrames(0, 20));
    const auto disc = opened(cue("FILE \"a.flac\" WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(audio(*disc, 0, 20), rampFrames(0, 20));
}

TEST_F(CueImage, AGapThatEndsTheFileBeforeBelongsToTheNextTrack) {
    writeSound(folder / "1.wav", wav16, rampFrames(0, 30));
    writeSound(folder / "2.wav", wav16, rampFrames(30, 20));
    const auto disc =
        opened(cue("FILE 1.wav WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 00 00:00:25\nFILE 2.wav "
                   "WAVE\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 30 audio\n2 30 20 audio\n50");
    EXPECT_EQ(audio(*disc, 0, 50), rampFrames(0, 50));
}

TEST_F(CueImage, AFileThatEndsInsideAFrameIsFilledUpWithSilence) {
    writeSound(folder / "1.wav", wav16, ramp(0, 588 * 10 + 1));
    folder.write("2.bin", littleEndian(ramp(10000, 588 * 10 + 587)));
    const auto disc = opened(
        cue("FILE 1.wav WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE 2.bin BINARY\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 11 audio\n2 11 11 audio\n22");
    EXPECT_EQ(audio(*disc, 0, 22), ramp(0, 588 * 10 + 1) + Samples(587 * 2) + ramp(10000, 588 * 10 + 587) + Samples(2));
}

TEST_F(CueImage, FileNamesAreFoundWithoutRegardToCaseAndWithoutTheirFolders) {
    folder.write("Über Alles.BIN", littleEndian(rampFrames(0, 20)));
    for (const std::string_view name : {"über alles.bin",
                                        "C:\\Rips\\\xC3\x9C"
                                        "BER ALLES.bin",
                                        "/nowhere/at/all/Über Alles.BIN"}) {
        const auto disc = opened(cue("FILE \"" + std::string(name) + "\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
        ASSERT_TRUE(disc);
        EXPECT_EQ(audio(*disc, 0, 20), rampFrames(0, 20));
    }
}

TEST_F(CueImage, AnAbsolutePathIsNeverFollowed) {
    const auto elsewhere = folder.write("other/secret.bin", littleEndian(rampFrames(0, 20)));
    const auto reason = refusal(cue("FILE \"" + elsewhere.native() + "\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
    EXPECT_THAT(reason, HasSubstr("secret.bin\" is missing"));
}

TEST_F(CueImage, ARelativePathLeadsFromTheSheet) {
    folder.write("sound/a.bin", littleEndian(rampFrames(0, 20)));
    const auto sheet = folder.write("sheets/disc.cue", "FILE \"../sound/A.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n");
    EXPECT_TRUE(opened(sheet));
}

TEST_F(CueImage, ALatinOneSheetNamesFilesAndTracks) {
    folder.write("für.bin", littleEndian(rampFrames(0, 20)));
    const auto disc =
        opened(cue("TITLE \"Gr\xFC\xDF"
                   "e\"\nFILE \"f\xFCr.bin\" BINARY\nTRACK 01 AUDIO\nPERFORMER \xC4rzte\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->toc().title, "Grüße");
    EXPECT_EQ(disc->toc().tracks[0].performer, "Ärzte");
}

TEST_F(CueImage, MixedModeDiscsOfEveryStorageComeOutRight) {
    struct Case {
        std::string mode;
        std::string sectors;
    };
    for (const Case& c : {Case{"MODE1/2048", cookedSectors(0, 40)}, Case{"MODE1/2352", rawSectors(0, 40, 1)},
                          Case{"MODE2/2352", rawSectors(0, 40, 2)}, Case{"MODE2/2336", headlessSectors(0, 40)},
                          Case{"MODE2/2048", cookedSectors(0, 40)}}) {
        SCOPED_TRACE(c.mode);
        folder.write("disc.bin", c.sectors + littleEndian(rampFrames(0, 30)));
        const auto disc = opened(cue("FILE disc.bin BINARY\nTRACK 01 " + c.mode +
                                     "\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nPREGAP 00:02:00\nINDEX 01 00:00:40\n"));
        ASSERT_TRUE(disc);
        EXPECT_EQ(tocText(*disc), "1 0 190 data\n2 190 30 audio\n220");
        EXPECT_EQ(data(*disc, 3, 37), cookedSectors(3, 37));
        EXPECT_EQ(data(*disc, 40, 2), std::string(4096, '\0'));
        EXPECT_EQ(audio(*disc, 190, 30), rampFrames(0, 30));
    }
}

TEST_F(CueImage, TheStoredGapOfADataTrackSoundsAsSilence) {
    folder.write("disc.bin", littleEndian(rampFrames(0, 20)) + rawSectors(0, 30, 1));
    const auto disc =
        opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 MODE1/2352\nINDEX 00 00:00:20\nINDEX 01 "
                   "00:00:30\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 30 audio\n2 30 20 data\n50");
    EXPECT_EQ(audio(*disc, 0, 30), rampFrames(0, 20) + silence(10));
    EXPECT_EQ(data(*disc, 30, 20), cookedSectors(10, 20));
}

TEST_F(CueImage, ASecondSessionLiesBehindTheLeadOutOfTheFirst) {
    bin(50);
    folder.write("data.bin", rawSectors(0, 30, 2));
    const auto disc = opened(
        cue("REM SESSION 01\nFILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nREM LEAD-OUT 00:00:50\nREM SESSION 02\n"
            "FILE data.bin BINARY\nTRACK 02 MODE2/2352\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 11450 30 data\n11480");
    EXPECT_EQ(data(*disc, 11450, 30), cookedSectors(0, 30));
    Samples some(2 * samplesPerFrame);
    EXPECT_EQ(disc->readAudio(50, 1, some.data()).error().fault, Fault::invalid);
}

TEST_F(CueImage, FramesOffTheDiscAndOfTheOtherKindAreRefused) {
    folder.write("disc.bin", rawSectors(0, 20, 1) + littleEndian(rampFrames(0, 20)));
    const auto disc =
        opened(cue("FILE disc.bin BINARY\nTRACK 01 MODE1/2352\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:00:20\n"));
    ASSERT_TRUE(disc);
    Samples samples(samplesPerFrame * 2 * 50);
    std::vector<std::byte> bytes(dataSectorBytes * 50);
    for (const auto& [from, count] : {std::pair{0, 1}, {19, 2}, {-1, 1}, {40, 1}, {39, 2}, {25, -1}, {2147483647, 2}}) {
        const auto done = disc->readAudio(from, count, samples.data());
        ASSERT_FALSE(done) << from;
        EXPECT_EQ(done.error().fault, Fault::invalid);
    }
    for (const auto& [from, count] : {std::pair{20, 1}, {19, 2}, {-1, 1}, {40, 1}}) {
        EXPECT_FALSE(disc->readData(from, count, bytes.data())) << from;
    }
    EXPECT_TRUE(disc->readAudio(40, 0, samples.data()));
}

TEST_F(CueImage, AFileCutShortAfterOpeningIsAnErrorNotNoise) {
    bin(100);
    writeSound(folder / "b.wav", wav16, rampFrames(0, 100));
    writeSound(folder / "c.flac", flac16, rampFrames(0, 100));
    const auto disc =
        opened(cue("FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE b.wav WAVE\nTRACK 02 AUDIO\n"
                   "INDEX 01 00:00:00\nFILE c.flac WAVE\nTRACK 03 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(audio(*disc, 0, 300), rampFrames(0, 100) + rampFrames(0, 100) + rampFrames(0, 100));
    fs::resize_file(folder / "disc.bin", 50 * audioFrameBytes);
    fs::resize_file(folder / "b.wav", 50 * audioFrameBytes);
    fs::resize_file(folder / "c.flac", 1000);
    Samples samples(samplesPerFrame * 2);
    for (const Frames at : {60, 160, 290}) {
        const auto done = disc->readAudio(at, 1, samples.data());
        ASSERT_FALSE(done) << at;
        EXPECT_EQ(done.error().fault, Fault::failed);
    }
    EXPECT_EQ(audio(*disc, 0, 50), rampFrames(0, 50));
}

TEST_F(CueImage, ADamagedFlacFrameIsAnErrorNotNoise) {
    writeSound(folder / "a.flac", flac16, rampFrames(0, 300));
    const auto path = folder / "a.flac";
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(fs::file_size(path) / 2));
    file.write("not the samples that stood here before", 38);
    file.close();
    const auto disc = opened(cue("FILE a.flac FLAC\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    const Samples right = rampFrames(0, 300);
    int errors = 0;
    for (Frames f = 0; f < 300; ++f) {
        Samples samples(samplesPerFrame * 2);
        if (disc->readAudio(f, 1, samples.data())) {
            const auto at = right.begin() + f * samplesPerFrame * 2;
            EXPECT_EQ(samples, Samples(at, at + samplesPerFrame * 2)) << f;
        } else {
            ++errors;
        }
    }
    EXPECT_GT(errors, 0);
}

TEST_F(CueImage, TwoThreadsReadTheSameDiscAtOnce) {
    writeSound(folder / "a.flac", flac16, rampFrames(0, 200));
    const auto disc = opened(cue("FILE a.flac FLAC\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
    ASSERT_TRUE(disc);
    const auto readAll = [&](Frames from) {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(audio(*disc, from + i * 5, 5), rampFrames(from + i * 5, 5));
        }
    };
    std::thread other(readAll, 100);
    readAll(0);
    other.join();
}

struct BadSheet {
    std::string_view text;
    std::string_view reason;
};

void PrintTo(const BadSheet& bad, std::ostream* out) { *out << bad.reason; }

class RefusedCue : public ::testing::TestWithParam<BadSheet> {};

TEST_P(RefusedCue, IsRefusedWithAReasonThatNamesIt) {
    TemporaryFolder folder;
    folder.write("disc.bin", littleEndian(rampFrames(0, 100)));
    folder.write("odd.bin", std::string(1001, 'x'));
    folder.write("empty.bin", "");
    writeSound(folder / "mono.wav", wav16, ramp(0, 588), 1);
    writeSound(folder / "slow.wav", wav16, ramp(0, 588), 2, 22050);
    writeSound(folder / "deep.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, ramp(0, 588));
    writeSound(folder / "good.wav", wav16, rampFrames(0, 10));
    writeSound(folder / "cut.wav", wav16, rampFrames(0, 10));
    fs::resize_file(folder / "cut.wav", 10000);
    writeSound(folder / "cut.aiff", aiff16, rampFrames(0, 10));
    fs::resize_file(folder / "cut.aiff", 10000);
    folder.write("broken.flac", "fLaC and then nothing of the kind");
    const auto reason = refusal(folder.write("Some Disc.cue", GetParam().text));
    EXPECT_THAT(reason, HasSubstr("\"Some Disc.cue\" can't be used: "));
    EXPECT_THAT(reason, HasSubstr(std::string(GetParam().reason)));
    EXPECT_EQ(reason.back(), '.');
}

#define DISC "FILE disc.bin BINARY\n"
#define TRACK1 "TRACK 01 AUDIO\nINDEX 01 00:00:00\n"

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedCue,
    ::testing::Values(
        BadSheet{"", "it has no tracks"}, BadSheet{"REM only\n", "it has no tracks"},
        BadSheet{"FILE gone.bin BINARY\n" TRACK1, "\"gone.bin\" is missing"},
        BadSheet{DISC TRACK1 "TRACK 02 AUDIO\nINDEX 01 00:02:00\n", "\"disc.bin\" is too short for track 1"},
        BadSheet{DISC TRACK1 "TRACK 02 AUDIO\nINDEX 01 00:01:25\n", "\"disc.bin\" is too short for track 2"},
        BadSheet{DISC TRACK1 "TRACK 01 AUDIO\nINDEX 01 00:00:50\n", "track 1 follows track 1"},
        BadSheet{DISC TRACK1 "TRACK 03 AUDIO\nINDEX 01 00:00:50\n", "track 3 follows track 1"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 01 00:00:50\nTRACK 02 AUDIO\nINDEX 01 00:00:20\n",
                 "INDEX 01 of track 2 goes backwards"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 01 00:00:50\nINDEX 00 00:00:60\n", "INDEX 00 of track 1 is out of order"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 02 00:00:50\n", "INDEX 02 of track 1 is out of order"},
        BadSheet{DISC TRACK1 "TRACK 02 AUDIO\nINDEX 01 00:00:00\n", "track 1 is empty"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 00 00:00:00\n", "track 1 has no INDEX 01"},
        BadSheet{DISC "TRACK 01 AUDIO\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n", "track 1 has no INDEX 01"},
        BadSheet{DISC "TRACK 99 AUDIO\nINDEX 01 00:00:00\nTRACK 100 AUDIO\nINDEX 01 00:00:10\n", "99 tracks at most"},
        BadSheet{DISC "TRACK 01 CDG\nINDEX 01 00:00:00\n", "graphics (CDG)"},
        BadSheet{DISC "TRACK 01 MODE9/77\nINDEX 01 00:00:00\n", "unknown type \"MODE9/77\""},
        BadSheet{DISC "TRACK one AUDIO\nINDEX 01 00:00:00\n", "TRACK has no number"},
        BadSheet{"FILE disc.mp3 MP3\n" TRACK1, "files of type \"MP3\" are not served"},
        BadSheet{"FILE \"\" BINARY\n" TRACK1, "FILE does not name a file"}, BadSheet{TRACK1, "INDEX stands before any FILE"},
        BadSheet{DISC "INDEX 01 00:00:00\n", "INDEX stands before any TRACK"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 01 00:60:00\n", "INDEX needs a number and a time"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 01 00:00:75\n", "INDEX needs a number and a time"},
        BadSheet{DISC "TRACK 01 AUDIO\nINDEX 01 -1:00:00\n", "INDEX needs a number and a time"},
        BadSheet{DISC TRACK1 "PREGAP 00:02:00\n", "PREGAP of track 1 stands behind its INDEX"},
        BadSheet{DISC "TRACK 01 AUDIO\nPREGAP two\n", "PREGAP needs a track and a time"},
        BadSheet{DISC "TRACK 01 AUDIO\nPREGAP 99:59:00\nINDEX 01 00:00:00\n", "longer than a disc can be"},
        BadSheet{DISC TRACK1 "NONSENSE 1\n", "line 4: the word \"NONSENSE\" is not known"},
        BadSheet{DISC TRACK1 "FILE good.wav WAVE\n", "no track uses the file \"good.wav\""},
        BadSheet{DISC "FILE good.wav WAVE\n" TRACK1, "no track uses the file \"disc.bin\""},
        BadSheet{"REM SESSION 03\n" DISC TRACK1, "session numbers do not rise by one"},
        BadSheet{"FILE odd.bin BINARY\n" TRACK1, "\"odd.bin\" is cut off inside a sample"},
        BadSheet{"FILE odd.bin BINARY\nTRACK 01 MODE1/2352\nINDEX 01 00:00:00\n", "\"odd.bin\" is cut off inside a sector"},
        BadSheet{"FILE empty.bin BINARY\n" TRACK1, "\"empty.bin\" is too short for track 1"},
        BadSheet{"FILE mono.wav WAVE\n" TRACK1, "\"mono.wav\" has 1 channel in place of two channels"},
        BadSheet{"FILE slow.wav WAVE\n" TRACK1, "\"slow.wav\" has 22050 samples a second in place of 44100"},
        BadSheet{"FILE deep.flac WAVE\n" TRACK1, "\"deep.flac\" does not hold 16-bit samples"},
        BadSheet{"FILE cut.wav WAVE\n" TRACK1, "\"cut.wav\" is cut off"},
        BadSheet{"FILE cut.aiff AIFF\n" TRACK1, "\"cut.aiff\" is cut off"},
        BadSheet{"FILE broken.flac WAVE\n" TRACK1, "\"broken.flac\" is damaged"},
        BadSheet{"FILE disc.bin WAVE\n" TRACK1, "\"disc.bin\" is no WAVE, AIFF or FLAC file"},
        BadSheet{"FILE good.wav WAVE\nTRACK 01 MODE1/2352\nINDEX 01 00:00:00\n",
                 "track 1 is data, but \"good.wav\" is a sound file"}));

TEST_F(CueImage, ASheetOfMoreThanAMegabyteIsRefused) {
    EXPECT_THAT(refusal(cue(std::string(1024 * 1024 + 1, '\n'))), HasSubstr("\"disc.cue\" is no text of tracks"));
}

TEST_F(CueImage, AMissingOrUnreadableSheetIsRefused) {
    EXPECT_THAT(refusal(folder / "none.cue"), HasSubstr("\"none.cue\" can't be opened"));
    fs::create_directory(folder / "folder.cue");
    EXPECT_THAT(refusal(folder / "folder.cue"), HasSubstr("\"folder.cue\" is no file"));
    EXPECT_THAT(refusal(cue(std::string("FILE\0", 5))), HasSubstr("it is no text"));
}

TEST_F(CueImage, ABinOrImgFileIsOpenedThroughTheSheetBesideIt) {
    bin(100);
    EXPECT_THAT(refusal(folder / "disc.bin"), HasSubstr("\"disc.bin\" can't be used: it has no cue sheet beside it."));
    folder.write("DISC.CUE", threeTracks);
    const auto disc = opened(folder / "disc.bin");
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->toc().tracks.size(), 3U);
    EXPECT_THAT(refusal(folder.write("lone.IMG", "x")), HasSubstr("it has no cue sheet beside it."));
}

TEST(DiscImage, IsToldByItsExtensionInAnyCase) {
    for (const char* name : {"a.cue", "a.TOC", "a.Nrg", "x/a.iso", "a.BIN", "a.img"}) {
        EXPECT_TRUE(looksLikeDiscImage(name)) << name;
    }
    for (const char* name : {"a.wav", "cue", "a.cue.txt", "", ".cue", "a"}) {
        EXPECT_FALSE(looksLikeDiscImage(name)) << name;
    }
    EXPECT_THAT(refusal("a.wav"), HasSubstr("\"a.wav\" is no kind of disc image"));
}

}  // namespace
}  // namespace tessarel::host::testing
