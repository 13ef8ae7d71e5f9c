#include <cdio/cdio.h>
#include <gmock/gmock.h>
#include <sndfile.h>

#include "host/image/toc_file.h"
#include "image_maker.h"

namespace tessarel::host::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class TocImage : public ::testing::Test {
protected:
    fs::path toc(std::string_view text) const { return folder.write("disc.toc", text); }
    void bin(Frames frames) const { folder.write("disc.bin", bigEndian(rampFrames(0, frames))); }

    TemporaryFolder folder;
};

TEST_F(TocImage, OneFileForTheDiscComesOutRight) {
    bin(100);
    const auto disc = opened(
        toc("CD_DA\n// three tracks\nTRACK AUDIO\nNO COPY\nNO PRE_EMPHASIS\nTWO_CHANNEL_AUDIO\nFILE \"disc.bin\" 0 00:00:40\n"
            "TRACK AUDIO\nISRC \"USABC1234567\"\nFILE \"disc.bin\" 00:00:40 00:00:30\nSTART 00:00:10\n"
            "TRACK AUDIO\nFILE \"disc.bin\" 00:00:70\nINDEX 00:00:05\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 50 audio\n2 50 20 audio\n3 70 30 audio\n100");
    EXPECT_EQ(audio(*disc, 0, 100), rampFrames(0, 100));
}

TEST_F(TocImage, AgreesWithAnIndependentReaderOnWhereTracksLie) {
    bin(100);
    // The peer looks for files in the current folder, so they are named whole.
    const std::string file = "FILE \"" + (folder / "disc.bin").native() + "\" ";
    const auto path = toc("CD_DA\nTRACK AUDIO\n" + file + "0 00:00:40\nTRACK AUDIO\n" + file + "00:00:40 00:00:60\n");
    const auto disc = opened(path);
    ASSERT_TRUE(disc);
    CdIo_t* peer = cdio_open(path.c_str(), DRIVER_CDRDAO);
    ASSERT_NE(peer, nullptr);
    ASSERT_EQ(cdio_get_num_tracks(peer), 2);
    EXPECT_EQ(cdio_get_track_lsn(peer, 1), disc->toc().tracks[0].start);
    EXPECT_EQ(cdio_get_track_lsn(peer, 2), disc->toc().tracks[1].start);
    EXPECT_EQ(cdio_get_track_lsn(peer, CDIO_CDROM_LEADOUT_TRACK), disc->toc().leadOut);
    cdio_destroy(peer);
}

TEST_F(TocImage, ATrackIsPutTogetherFromSeveralFilesAndSilence) {
    folder.write("a.bin", bigEndian(rampFrames(0, 20)));
    folder.write("b.raw", littleEndian(rampFrames(20, 20)));
    writeSound(folder / "c.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, rampFrames(40, 20));
    const auto disc =
        opened(toc("CD_DA\nTRACK AUDIO\nSILENCE 00:00:05\nSTART\nAUDIOFILE \"a.bin\" 0\nFILE \"b.raw\" SWAP 0\n"
                   "TRACK AUDIO\nPREGAP 00:00:10\nZERO 00:00:03\nFILE \"C.WAV\" 588 00:00:18\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 5 50 audio\n2 55 21 audio\n76");
    EXPECT_EQ(audio(*disc, 0, 76), silence(5) + rampFrames(0, 40) + silence(13) + rampFrames(41, 18));
}

TEST_F(TocImage, LengthsCountSamplesAndATrackIsFilledUpToAWholeFrame) {
    bin(20);
    const auto disc =
        opened(toc("CD_DA\nTRACK AUDIO\nFILE \"disc.bin\" 100 1000\nSILENCE 10\nFILE \"disc.bin\" 3 7\nTRACK AUDIO\nFILE "
                   "\"disc.bin\" #400 0 588\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 2 audio\n2 2 1 audio\n3");
    EXPECT_EQ(audio(*disc, 0, 3), ramp(100, 1000) + Samples(20) + ramp(3, 7) + Samples((1176 - 1017) * 2) + ramp(100, 588));
}

TEST_F(TocImage, EveryPositionReadsTheSameSamplesAcrossPiecesThatEndInsideFrames) {
    bin(20);
    const auto disc = opened(toc("CD_DA\nTRACK AUDIO\nFILE \"disc.bin\" 100 1000\nSILENCE 77\nFILE \"disc.bin\" 3 5000\n"));
    ASSERT_TRUE(disc);
    Samples whole = ramp(100, 1000) + Samples(77 * 2) + ramp(3, 5000);
    whole.resize(static_cast<std::size_t>(disc->toc().leadOut) * samplesPerFrame * 2);
    for (Frames from = 0; from < disc->toc().leadOut; ++from) {
        for (Frames count = 1; from + count <= disc->toc().leadOut; ++count) {
            const auto at = whole.begin() + from * samplesPerFrame * 2;
            ASSERT_EQ(audio(*disc, from, count), Samples(at, at + count * samplesPerFrame * 2)) << from << " " << count;
        }
    }
}

TEST_F(TocImage, DataTracksOfEveryModeComeOutRight) {
    struct Case {
        std::string mode;
        std::string sectors;
    };
    for (const Case& c : {Case{"MODE1", cookedSectors(0, 40)}, Case{"MODE1_RAW", rawSectors(0, 40, 1)},
                          Case{"MODE2_RAW", rawSectors(0, 40, 2)}, Case{"MODE2_FORM1", cookedSectors(0, 40)},
                          Case{"MODE2_FORM_MIX", headlessSectors(0, 40)}, Case{"MODE2", headlessSectors(0, 40)}}) {
        SCOPED_TRACE(c.mode);
        folder.write("disc.bin", c.sectors + bigEndian(rampFrames(0, 30)));
        const auto offset = std::to_string(c.sectors.size());
        const auto disc =
            opened(toc("CD_ROM\nTRACK " + c.mode + "\nDATAFILE \"disc.bin\" 00:00:40 // length\nZERO " + c.mode +
                       " 00:02:00\nTRACK AUDIO\nSILENCE 00:02:00\nSTART 00:02:00\nFILE \"disc.bin\" #" + offset + " 0\n"));
        ASSERT_TRUE(disc);
        EXPECT_EQ(tocText(*disc), "1 0 340 data\n2 340 30 audio\n370");
        EXPECT_EQ(data(*disc, 0, 40), cookedSectors(0, 40));
        EXPECT_EQ(data(*disc, 189, 1), std::string(2048, '\0'));
        EXPECT_EQ(audio(*disc, 340, 30), rampFrames(0, 30));
    }
}

TEST_F(TocImage, NamesComeFromTheFirstLanguage) {
    bin(20);
    const auto disc = opened(toc(
        "CD_DA\nCD_TEXT {\n LANGUAGE_MAP {\n 0 : EN\n 1: 9 }\n LANGUAGE 0 {\n TITLE \"Caf\\351 \\\"X\\\"\"\n PERFORMER "
        "\"Caf\xE9s\"\n"
        " SIZE_INFO { 0, 1, 2,\n 3}\n GENRE { 1 }\n }\n LANGUAGE 1 { TITLE \"other\" PERFORMER \"other\" }\n}\n"
        "TRACK AUDIO\nCD_TEXT { LANGUAGE 0 { TITLE \"One\" PERFORMER \"M\xC3\xBCller\" ISRC \"x\" } }\nFILE \"disc.bin\" 0\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(disc->toc().title, "Café \"X\"");
    EXPECT_EQ(disc->toc().performer, "Cafés");
    EXPECT_EQ(disc->toc().tracks[0].title, "One");
    EXPECT_EQ(disc->toc().tracks[0].performer, "Müller");
}

TEST_F(TocImage, AFlacFileIsReadByItsContent) {
    writeSound(folder / "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, rampFrames(0, 20));
    const auto disc = opened(toc("CD_DA\nTRACK AUDIO\nFILE \"a.flac\" 00:00:02 00:00:10\n"));
    ASSERT_TRUE(disc);
    EXPECT_EQ(audio(*disc, 0, 10), rampFrames(2, 10));
}

struct BadToc {
    std::string_view text;
    std::string_view reason;
};

void PrintTo(const BadToc& bad, std::ostream* out) { *out << bad.reason; }

class RefusedToc : public ::testing::TestWithParam<BadToc> {};

TEST_P(RefusedToc, IsRefusedWithAReasonThatNamesIt) {
    TemporaryFolder folder;
    folder.write("disc.bin", bigEndian(rampFrames(0, 100)));
    folder.write("odd.bin", std::string(4703, 'x'));
    writeSound(folder / "good.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, rampFrames(0, 10));
    const auto reason = refusal(folder.write("Some Disc.toc", GetParam().text));
    EXPECT_THAT(reason, HasSubstr("\"Some Disc.toc\" can't be used: "));
    EXPECT_THAT(reason, HasSubstr(std::string(GetParam().reason)));
    EXPECT_EQ(reason.back(), '.');
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedToc,
    ::testing::Values(BadToc{"", "it has no tracks"}, BadToc{"CD_DA\n", "it has no tracks"},
                      BadToc{"CD_DA\nTRACK AUDIO\n", "track 1 is empty"},
                      BadToc{"CD_DA\nTRACK AUDIO\nFILE \"gone.bin\" 0\n", "\"gone.bin\" is missing"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 00:01:00 00:00:26\n", "\"disc.bin\" is too short for track 1"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 00:02:00\n", "\"disc.bin\" is too short for track 1"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" #68719476736 0\n", "\"disc.bin\" is too short for track 1"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 0 00:00:20\nSTART 00:00:20\n", "track 1 is empty"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 0\nSTART 7\n", "track 1 does not start at a whole frame"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 0\nSTART\nSTART\n", "a track has two starts"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" 0\nPREGAP 00:02:00\n", "PREGAP needs a time"},
                      BadToc{"TRACK AUDIO\nSILENCE\n", "a length of silence is missing"},
                      BadToc{"TRACK AUDIO\nFILE 0\n", "a file's name is missing"},
                      BadToc{"TRACK AUDIO\nFILE \"disc.bin\" # 00:00:01 0\n", "# needs a number of bytes"},
                      BadToc{"TRACK AUDIO\nSILENCE 99:59:00\nFILE \"disc.bin\" 0\n", "longer than a disc can be"},
                      BadToc{"TRACK AUDIO\nSILENCE 68719476736\nFILE \"disc.bin\" 0\n", "longer than a disc can be"},
                      BadToc{"TRACK AUDIO\nZERO 2352\n", "ZERO in an audio track needs a time"},
                      BadToc{"TRACK MODE1\nSILENCE 00:02:00\n", "SILENCE stands in a data track"},
                      BadToc{"TRACK MODE1\nDATAFILE \"odd.bin\"\n", "\"odd.bin\" is cut off inside a sector"},
                      BadToc{"TRACK AUDIO\nFILE \"odd.bin\" 0\n", "\"odd.bin\" is cut off inside a sample"},
                      BadToc{"TRACK MODE1\nDATAFILE \"disc.bin\" 2049\n", "no whole sectors"},
                      BadToc{"TRACK MODE1\nDATAFILE \"good.wav\" 2048\n", "takes it for bytes"},
                      BadToc{"TRACK AUDIO\nFILE \"good.wav\" SWAP 0\n", "takes it for bytes"},
                      BadToc{"TRACK MODE1\nFILE \"disc.bin\" 0\n", "a sound file stands in a data track"},
                      BadToc{"TRACK AUDIO\nDATAFILE \"disc.bin\"\n", "DATAFILE stands in an audio track"},
                      BadToc{"TRACK MODE2_FORM2\nDATAFILE \"disc.bin\"\n", "unknown type \"MODE2_FORM2\""},
                      BadToc{"TRACK MODE1 RW_RAW\nDATAFILE \"disc.bin\"\n", "sub-channel data"},
                      BadToc{"TRACK AUDIO\nFIFO \"disc.bin\" 100\n", "\"FIFO\" is not known"},
                      BadToc{"TRACK AUDIO\nISRC 7\nFILE \"disc.bin\" 0\n", "\"ISRC\" is not known, or not complete"},
                      BadToc{"NONSENSE\n", "line 1: \"NONSENSE\" is not known before the first track"},
                      BadToc{"CD_DA\n{\n", "line 2: \"{\" stands where a word should"},
                      BadToc{"CD_DA\nCATALOG \"x\n", "a quote is not closed"},
                      BadToc{"CD_TEXT { LANGUAGE 0 { TITLE \"x\" ", "a bracket is not closed"},
                      BadToc{"CD_TEXT LANGUAGE 0", "CD_TEXT has no opening bracket"},
                      BadToc{"CD_TEXT { LANGUAGE 0 TITLE", "LANGUAGE has no opening bracket"}));

TEST_F(TocImage, MoreThanNinetyNineTracksAreRefused) {
    bin(100);
    std::string text = "CD_DA\n";
    for (int n = 0; n < 99; ++n) {
        text += "TRACK AUDIO\nFILE \"disc.bin\" 0 00:00:01\n";
    }
    EXPECT_TRUE(opened(toc(text)));
    EXPECT_THAT(refusal(toc(text + "TRACK AUDIO\nFILE \"disc.bin\" 0 00:00:01\n")), HasSubstr("99 tracks at most"));
}

}  // namespace
}  // namespace tessarel::host::testing
