#include "host/files/iso_disc_volume.h"

#include <cstdlib>

#include "host/image/disc_image.h"
#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using platform::attributeVolume;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// A real image in drive D:, made by genisoimage.
class RealDiscTest : public testing::Test {
protected:
    RealDiscTest() : drives(temp.path, {nullptr, openDiscImage}), files(drives, openIsoDiscVolume) {
        put(temp.path / "tree" / "AUTORUN.INF", "[autorun]");
        put(temp.path / "tree" / "SETUP.EXE", "MZ");
        put(temp.path / "tree" / "SECRET.TXT", "secret");
        put(temp.path / "tree" / "DATA" / "DEEP.TXT", "deep");
        std::ofstream(temp.path / "tree" / "LARGE.BIN").close();
        fs::resize_file(temp.path / "tree" / "LARGE.BIN", (64U << 20U) + 1);
        const auto command =
            "cd '" + temp.path.string() + "' && genisoimage -quiet -V CLASSICS -hidden SECRET.TXT -o disc.iso tree";
        made = std::system(command.c_str());  // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    }

    TempFolder temp;
    int made = -1;
    DriveTable drives;
    RealFiles files;
};

TEST_F(RealDiscTest, AnImageOfADataDiscIsADriveOfFiles) {
    ASSERT_EQ(made, 0);
    const auto inserted = drives.insertImage('D', (temp.path / "disc.iso").string());
    ASSERT_TRUE(inserted) << inserted.error().message;
    EXPECT_THAT(files.list("D:\\", attributeVolume).value(), ElementsAre("CLASSICS"));
    EXPECT_THAT(files.list("D:\\", 0).value(), UnorderedElementsAre("AUTORUN.INF", "SETUP.EXE", "LARGE.BIN"));
    EXPECT_THAT(files.list("D:\\", 22).value(),
                UnorderedElementsAre("AUTORUN.INF", "SETUP.EXE", "LARGE.BIN", "SECRET.TXT", "DATA"));
    EXPECT_EQ(files.list("D:\\", 22).value(), files.list("D:\\*.*", 22).value());
    EXPECT_EQ(files.read("D:\\data\\deep.txt").value_or("(refused)"), "deep");
    EXPECT_TRUE(files.exists("D:\\secret.txt"));
    EXPECT_EQ(files.read("D:\\LARGE.BIN").error().fault, Fault::unsupported);

    drives.drive('D')->eject();
    EXPECT_EQ(files.list("D:\\", 0).error().fault, Fault::notReady);
}

}  // namespace
}  // namespace tessarel::host
