#include <cdio/iso9660.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <cstring>

#include "base/text.h"
#include "host/image/iso_volume.h"
#include "image_maker.h"
#include "iso_maker.h"

namespace tessarel::host::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> names(const std::vector<IsoEntry>& entries) {
    std::vector<std::string> out;
    for (const IsoEntry& entry : entries) {
        out.push_back(entry.name + (entry.directory ? "/" : "") + (entry.hidden ? " (hidden)" : ""));
    }
    return out;
}

std::vector<std::string> rootNames(const VolumeMaker& maker) {
    MemoryDisc disc(maker.sectors());
    const auto volume = IsoVolume::open(disc, 0);
    EXPECT_TRUE(volume) << volume.error().message;
    return volume ? names(volume->root()) : std::vector<std::string>{};
}

std::string whyNot(const std::string& sectors) {
    MemoryDisc disc(sectors);
    const auto volume = IsoVolume::open(disc, 0);
    EXPECT_FALSE(volume);
    return volume ? std::string() : volume.error().message;
}

TEST(IsoVolume, ListsTheRootInTheDiscsOwnOrderWithHiddenBitsAndWithoutVersions) {
    VolumeMaker maker;
    maker.root = {
        {"ZEBRA.TXT;1", 22, 5}, {"APPLE.;1", 22, 7, 1}, {"DIR", 23, 2048, 2}, {"SECRET", 23, 2048, 3}, {"B.A;12", 22, 1}};
    EXPECT_THAT(rootNames(maker), ElementsAre("ZEBRA.TXT", "APPLE (hidden)", "DIR/", "SECRET/ (hidden)", "B.A"));
}

TEST(IsoVolume, TellsItsLabelTrimmed) {
    VolumeMaker maker;
    maker.label = " MY DISC";
    MemoryDisc disc(maker.sectors());
    EXPECT_EQ(IsoVolume::open(disc, 0)->label(), "MY DISC");
}

TEST(IsoVolume, PrefersJolietNames) {
    VolumeMaker maker;
    maker.root = {{"LONGNA~1.TXT;1", 22, 5}};
    maker.joliet = {{wide("Long name.txt;1"), 22, 5},
                    {std::string("\x26\x05\xD8\x3D\xDE\x00", 6), 22, 5},
                    {std::string("\xD8\x3D\0a", 4), 22, 5}};
    EXPECT_THAT(rootNames(maker), ElementsAre("Long name.txt", "\u2605\U0001F600"));
    MemoryDisc disc(maker.sectors());
    EXPECT_EQ(IsoVolume::open(disc, 0)->label(), "Label");
    maker.jolietLabel.clear();
    MemoryDisc unlabelled(maker.sectors());
    EXPECT_EQ(IsoVolume::open(unlabelled, 0)->label(), "LABEL");
}

std::string nm(const std::string& part, bool goesOn = false) {
    return "NM" + std::string(1, static_cast<char>(5 + part.size())) + '\1' + (goesOn ? '\1' : '\0') + part;
}
const std::string sp = std::string("SP\7\1\xBE\xEF\0", 7);

TEST(IsoVolume, TakesRockRidgeNamesWhereJolietIsMissing) {
    VolumeMaker maker;
    maker.rootSystemUse = sp;
    const std::string ce = std::string("CE\x1C\1\x16\0\0\0\0\0\0\x16\x04\0\0\0\0\0\0\x04\x0A\0\0\0\0\0\0\x0A", 28);
    maker.root = {{"A.TXT;1", 22, 5, 0, nm("a long name.text")},         {"B.TXT;1", 22, 5, 0, nm("two ", true) + nm("parts")},
                  {"C.TXT;1", 22, 5, 0, nm("con", true) + ce},           {"D.TXT;1", 22, 5, 0, nm("../evil")},
                  {"E.TXT;1", 22, 5, 0, std::string("NM\xFF\1\0xx", 7)}, {"F.TXT;1", 22, 5}};
    maker.more = {std::string(4, 'x') + nm("tinue")};
    EXPECT_THAT(rootNames(maker), ElementsAre("a long name.text", "two parts", "continue", "D.TXT", "E.TXT", "F.TXT"));
}

TEST(IsoVolume, AContinuationThatLeadsToItselfEnds) {
    VolumeMaker maker;
    maker.rootSystemUse = sp;
    const std::string ce = std::string("CE\x1C\1\x16\0\0\0\0\0\0\x16\0\0\0\0\0\0\0\0\x1C\0\0\0\0\0\0\x1C", 28);
    maker.root = {{"A.TXT;1", 22, 5, 0, ce}};
    maker.more = {ce};
    EXPECT_THAT(rootNames(maker), ElementsAre("A.TXT"));
}

TEST(IsoVolume, DropsNamesThatNoFileMayBear) {
    VolumeMaker maker;
    maker.root = {
        {"..;1", 22, 5}, {"A/B;1", 22, 5},     {"A\\B;1", 22, 5}, {"A\nB;1", 22, 5}, {";1", 22, 5}, {std::string("A\0", 2), 22},
        {"...", 22, 5},  {"SIDE;1", 22, 5, 4}, {".", 22, 5},      {"GOOD;1", 22, 5}};
    EXPECT_THAT(rootNames(maker), ElementsAre("GOOD"));
}

TEST(IsoVolume, ReadsFilesFromFoldersWithoutRegardToCase) {
    VolumeMaker maker;
    maker.root = {{"DIR", 22, 2048, 2}, {"README.TXT;1", 24, 3000}};
    maker.more = {dotRecords(22, 2048) + RecordMaker{"SUB", 23, 2048, 2}.bytesOnDisc(),
                  dotRecords(23, 2048) + RecordMaker{"DEEP.TXT;1", 26, 4}.bytesOnDisc(), std::string(2048, 'a'),
                  std::string(2048, 'b'), "deep"};
    MemoryDisc disc(maker.sectors());
    const auto volume = IsoVolume::open(disc, 0);
    ASSERT_TRUE(volume);
    EXPECT_EQ(volume->read("readme.txt", 10000).value(), std::string(2048, 'a') + std::string(952, 'b'));
    EXPECT_EQ(volume->read("Readme.txt", 5).value(), "aaaaa");
    EXPECT_EQ(volume->read(volume->root()[1], 2046, 4).value(), "aabb");
    EXPECT_EQ(volume->read(volume->root()[1], 2999, 10).value(), "b");
    EXPECT_EQ(volume->read(volume->root()[1], 3000, 10).value(), "");
    EXPECT_EQ(volume->read("\\dir\\sub\\deep.txt", 100).value(), "deep");
    EXPECT_THAT(names(volume->list("Dir/Sub").value()), ElementsAre("DEEP.TXT"));
    EXPECT_THAT(names(volume->list("").value()), ElementsAre("DIR/", "README.TXT"));
    EXPECT_EQ(volume->find("README.TXT")->size, 3000U);
    EXPECT_EQ(volume->read("nothing.txt", 5).error().fault, Fault::notFound);
    EXPECT_EQ(volume->read("readme.txt/x", 5).error().fault, Fault::notFound);
    EXPECT_EQ(volume->find("").error().fault, Fault::notFound);
    EXPECT_EQ(volume->read("dir", 5).error().fault, Fault::invalid);
    EXPECT_EQ(volume->list("readme.txt").error().fault, Fault::invalid);
}

TEST(IsoVolume, AFileInSeveralPiecesIsOneFile) {
    VolumeMaker maker;
    maker.root = {{"BIG.DAT;1", 22, 2048, 128}, {"BIG.DAT;1", 24, 10}, {"NEXT;1", 23, 1}};
    maker.more = {std::string(2048, 'a'), "n", std::string(10, 'b')};
    MemoryDisc disc(maker.sectors());
    const auto volume = IsoVolume::open(disc, 0);
    ASSERT_TRUE(volume);
    EXPECT_THAT(names(volume->root()), ElementsAre("BIG.DAT", "NEXT"));
    EXPECT_EQ(volume->root()[0].size, 2058U);
    EXPECT_EQ(volume->read("BIG.DAT", 5000).value(), std::string(2048, 'a') + std::string(10, 'b'));
}

TEST(IsoVolume, AnInterleavedFileIsListedButNotReadWrong) {
    VolumeMaker maker;
    maker.root = {{"ODD;1", 22, 5, 0, "", 3}};
    MemoryDisc disc(maker.sectors());
    EXPECT_EQ(IsoVolume::open(disc, 0)->read("ODD", 5).error().fault, Fault::unsupported);
}

TEST(IsoVolume, AFolderThatLeadsBackToTheRootEndsAtAPathsLength) {
    VolumeMaker maker;
    maker.root = {{"LOOP", 20, 2048, 2}};
    MemoryDisc disc(maker.sectors());
    const auto volume = IsoVolume::open(disc, 0);
    ASSERT_TRUE(volume);
    std::string path;
    for (int i = 0; i < 60; ++i) {
        path += "/LOOP";
    }
    EXPECT_TRUE(volume->find(path));
    for (int i = 0; i < 60; ++i) {
        path += "/LOOP";
    }
    EXPECT_EQ(volume->find(path).error().fault, Fault::notFound);
}

TEST(IsoVolume, ASecondSessionsSectorsCountFromTheDiscsStart) {
    VolumeMaker maker;
    maker.address = 11450;
    maker.root = {{"A.TXT;1", 11450 + 22, 4}};
    maker.more = {"text"};
    MemoryDisc disc(maker.sectors(), 11450);
    const auto volume = IsoVolume::open(disc, 11450);
    ASSERT_TRUE(volume) << volume.error().message;
    EXPECT_EQ(volume->read("a.txt", 9).value(), "text");
}

TEST(IsoVolume, AVolumeThatWasMadeForAnotherPlaceIsFoundWhereItLies) {
    VolumeMaker maker;
    maker.root = {{"A.TXT;1", 22, 4}};
    maker.more = {"text"};
    MemoryDisc disc(maker.sectors(), 500);
    const auto volume = IsoVolume::open(disc, 500);
    ASSERT_TRUE(volume) << volume.error().message;
    EXPECT_EQ(volume->read("a.txt", 9).value(), "text");
}

TEST(IsoVolume, LyingLengthsAreRefused) {
    VolumeMaker maker;
    maker.root = {{"A.TXT;1", 22, 0xFFFFFFFF}, {"B.TXT;1", 0xFFFFFFF0, 10}, {"D", 22, 0x7FFFFFFF, 2}};
    MemoryDisc disc(maker.sectors());
    const auto volume = IsoVolume::open(disc, 0);
    ASSERT_TRUE(volume);
    EXPECT_EQ(volume->read("A.TXT", SIZE_MAX).error().fault, Fault::invalid);
    EXPECT_EQ(volume->read("B.TXT", 10).error().fault, Fault::invalid);
    EXPECT_EQ(volume->list("D").error().fault, Fault::invalid);
}

TEST(IsoVolume, ARecordThatLeavesItsSectorIsRefused) {
    VolumeMaker maker;
    maker.root = {{"A.TXT;1", 22, 4}};
    std::string sectors = maker.sectors();
    const std::size_t record = 20 * dataSectorBytes + 68;
    for (const int length : {33, 1, 255}) {
        std::string bad = sectors;
        bad[record] = static_cast<char>(length);
        bad[record + 32] = static_cast<char>(length == 255 ? 250 : 7);
        EXPECT_THAT(whyNot(bad), HasSubstr("damaged"));
    }
    std::string longName = sectors;
    longName[record + 32] = 100;
    EXPECT_THAT(whyNot(longName), HasSubstr("damaged"));
}

TEST(IsoVolume, WhatIsNoVolumeIsRefused) {
    EXPECT_THAT(whyNot(std::string(40 * dataSectorBytes, '\0')), HasSubstr("holds no ISO 9660 volume"));
    EXPECT_FALSE(whyNot(std::string(3 * dataSectorBytes, '\0')).empty());
    VolumeMaker maker;
    std::string sectors = maker.sectors();
    std::string noRoot = sectors;
    noRoot[16 * dataSectorBytes + 156] = 0;
    EXPECT_THAT(whyNot(noRoot), HasSubstr("holds no ISO 9660 volume"));
    std::string rootElsewhere = sectors;
    rootElsewhere[16 * dataSectorBytes + 158] = 3;
    EXPECT_THAT(whyNot(rootElsewhere), HasSubstr("root folder is damaged"));
}

class IsoImage : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(IsoImage, IsOneDataTrackOfTheWholeFile) {
    VolumeMaker maker;
    maker.more = {std::string(2048, 'q')};
    const auto disc = opened(folder.write("disc.ISO", maker.sectors()));
    ASSERT_TRUE(disc);
    EXPECT_EQ(tocText(*disc), "1 0 23 data\n23");
    EXPECT_EQ(data(*disc, 22, 1), std::string(2048, 'q'));
    Samples samples(samplesPerFrame * 2);
    EXPECT_FALSE(disc->readAudio(0, 1, samples.data()));
}

TEST_F(IsoImage, IsRefusedWithoutAVolumeOrWhenCutOff) {
    VolumeMaker maker;
    EXPECT_THAT(refusal(folder.write("none.iso", "short")),
                HasSubstr("\"none.iso\" can't be used: it holds no ISO 9660 volume."));
    EXPECT_THAT(refusal(folder.write("zero.iso", std::string(100000, '\0'))), HasSubstr("it holds no ISO 9660 volume."));
    const std::string whole = maker.sectors();
    EXPECT_THAT(refusal(folder.write("cut.iso", whole.substr(0, whole.size() - 2048))), HasSubstr("it is cut off"));
}

TEST_F(IsoImage, AVolumeMadeByAnotherProgramIsReadAsAnIndependentReaderReadsIt) {
    folder.write("tree/Autorun.inf", "[autorun]\r\nopen=Setup.exe\r\n");
    folder.write("tree/A rather long name.text", std::string(5000, 'z'));
    folder.write("tree/sub folder/inner.dat", "inner");
    folder.write("tree/hidden.bin", "h");
    for (const std::string_view options : {"-J -R", "-R", "-J", ""}) {
        SCOPED_TRACE(options);
        const auto image = folder / "disc.iso";
        const std::string command = "genisoimage -quiet -V TESTDISC -hidden hidden.bin " + std::string(options) + " -o '" +
                                    image.native() + "' '" + (folder / "tree").native() + "' 2>/dev/null";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        const auto disc = opened(image);
        ASSERT_TRUE(disc);
        const auto volume = IsoVolume::open(*disc, 0);
        ASSERT_TRUE(volume) << volume.error().message;
        EXPECT_EQ(volume->label(), "TESTDISC");
        iso9660_t* peer = iso9660_open_ext(image.c_str(), options.empty() ? ISO_EXTENSION_NONE : ISO_EXTENSION_ALL);
        ASSERT_NE(peer, nullptr);
        CdioISO9660FileList_t* list = iso9660_ifs_readdir(peer, "/");
        std::vector<std::string> theirs;
        CdioListNode_t* node = nullptr;
        _CDIO_LIST_FOREACH(node, list) {
            const auto* stat = static_cast<const iso9660_stat_t*>(_cdio_list_node_data(node));
            std::vector<char> translated(std::strlen(stat->filename) + 1);
            iso9660_name_translate_ext(stat->filename, translated.data(), 0);
            const std::string name = options.empty() ? translated.data() : stat->filename;
            if (name != "." && name != "..") {
                theirs.push_back(name);
            }
        }
        iso9660_filelist_free(list);
        iso9660_close(peer);
        std::vector<std::string> ours;
        for (const IsoEntry& entry : volume->root()) {
            ours.push_back(options.empty() ? text::lower(entry.name) : entry.name);
            EXPECT_EQ(entry.hidden, text::lower(entry.name) == "hidden.bin") << entry.name;
        }
        EXPECT_EQ(ours, theirs);
        EXPECT_EQ(volume->read("AUTORUN.INF", 1000).value(), "[autorun]\r\nopen=Setup.exe\r\n");
    }
}

}  // namespace
}  // namespace tessarel::host::testing
