// What happens to files when the system refuses, the disk is full, or a folder is very large.
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "tests/files/files_fixture.h"

namespace tessarel::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class HardTimesTest : public FilesTest {};

/// Without the rights of root, if the test has them, until it ends.
struct Unprivileged {
    Unprivileged() { changed = ::geteuid() == 0 && ::seteuid(65534) == 0; }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;
    ~Unprivileged() {
        if (changed) {
            static_cast<void>(::seteuid(0));
        }
    }
    bool changed = false;
};

/// No file may grow beyond a few bytes: every system has this way to run out of room.
struct SmallFilesOnly {
    explicit SmallFilesOnly(rlim_t most) : oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &oldLimit);
        const rlimit limit{most, oldLimit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;
    ~SmallFilesOnly() {
        ::setrlimit(RLIMIT_FSIZE, &oldLimit);
        std::signal(SIGXFSZ, oldHandler);
    }
    rlimit oldLimit{};
    void (*oldHandler)(int);
};

TEST_F(HardTimesTest, AWriteThatRunsOutOfRoomKeepsTheOldFile) {
    put(driveC / "1.CD", "old record");
    Result<void> written;
    {
        const SmallFilesOnly limit(4096);
        written = files->write("C:\\1.CD", std::string(100'000, 'x'));
    }
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::full);
    EXPECT_THAT(written.error().message, HasSubstr("C:\\1.CD can't be written: there is no space left."));
    EXPECT_EQ(get(driveC / "1.CD"), "old record");
    EXPECT_THAT(namesIn(driveC), ElementsAre("1.CD"));
    EXPECT_TRUE(files->write("C:\\1.CD", "new record"));
}

TEST_F(HardTimesTest, AFullDiskKeepsTheOldFile) {
    if (::mount("none", driveC.c_str(), "tmpfs", 0, "size=64k") != 0) {
        GTEST_SKIP() << "only who may mount can fill a disk; for all others the test above stands";
    }
    put(driveC / "1.CD", "old record");
    const auto written = files->write("C:\\1.CD", std::string(200'000, 'x'));
    const auto left = get(driveC / "1.CD");
    const auto names = namesIn(driveC);
    ::umount(driveC.c_str());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::full);
    EXPECT_EQ(left, "old record");
    EXPECT_THAT(names, ElementsAre("1.CD"));
}

TEST_F(HardTimesTest, WhatTheSystemDoesNotAllowIsDenied) {
    put(driveC / "closed" / "a.txt", "old");
    put(driveC / "locked.txt", "old");
    fs::permissions(temp.path, fs::perms(0755));
    fs::permissions(driveC / "closed", fs::perms(0555));
    fs::permissions(driveC / "closed" / "a.txt", fs::perms(0666));
    fs::permissions(driveC / "locked.txt", fs::perms(0000));
    fs::permissions(driveC, fs::perms(0777));
    {
        const Unprivileged nobody;
        EXPECT_EQ(faultOfReading("C:\\locked.txt"), Fault::denied);
        EXPECT_EQ(files->write("C:\\locked.txt", "x").error().fault, Fault::denied);
        EXPECT_EQ(files->write("C:\\closed\\a.txt", "x").error().fault, Fault::denied);
        EXPECT_EQ(files->write("C:\\closed\\new.txt", "x").error().fault, Fault::denied);
        EXPECT_EQ(files->remove("C:\\closed\\a.txt").error().fault, Fault::denied);
    }
    fs::permissions(driveC / "closed", fs::perms(0755));
    EXPECT_EQ(get(driveC / "closed" / "a.txt"), "old");
    EXPECT_THAT(namesIn(driveC / "closed"), ElementsAre("a.txt"));
}

TEST_F(HardTimesTest, AFolderThatMayNotBeListedSaysSo) {
    fs::create_directories(driveC / "closed");
    fs::permissions(temp.path, fs::perms(0755));
    fs::permissions(driveC / "closed", fs::perms(0000));
    {
        const Unprivileged nobody;
        const auto names = files->list("C:\\closed\\", 0);
        ASSERT_FALSE(names);
        EXPECT_EQ(names.error().fault, Fault::denied);
        EXPECT_FALSE(files->exists("C:\\closed\\a.txt"));
    }
    fs::permissions(driveC / "closed", fs::perms(0755));
}

TEST_F(HardTimesTest, ANameTooLongIsInvalid) {
    const auto written = files->write("C:\\" + std::string(300, 'n'), "x");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().fault, Fault::invalid);
    EXPECT_FALSE(files->exists("C:\\" + std::string(300, 'n')));
    std::string deep = "C:";
    for (int i = 0; i < 2000; ++i) {
        deep += "\\a";
    }
    EXPECT_FALSE(files->exists(deep));
    EXPECT_FALSE(files->write(deep, "x"));
}

TEST_F(HardTimesTest, AHomeThatIsGoneIsNotFound) {
    fs::remove_all(driveC);
    EXPECT_FALSE(files->exists("C:\\a.txt"));
    EXPECT_TRUE(files->list("C:\\", 0)->empty());
    EXPECT_EQ(files->write("C:\\a.txt", "x").error().fault, Fault::notFound);
}

class LargeFolderTest : public FilesTest {
protected:
    static constexpr int count = 40'000;

    // Made once for all tests, and in memory where there is a place for it, since it may take seconds on a busy disk.
    static const fs::path& largeFolder() {
        static const TempFolder made(fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());
        if (fs::is_empty(made.path)) {
            const int folder = ::open(made.path.c_str(), O_RDONLY | O_DIRECTORY);
            for (int i = 0; i < count; ++i) {
                ::close(::openat(folder, (std::to_string(10'000'000 + i) + ".CD").c_str(), O_WRONLY | O_CREAT, 0600));
            }
            ::close(folder);
        }
        return made.path;
    }
    LargeFolderTest() { fs::create_directory_symlink(largeFolder(), driveC / "datacd"); }

    /// Microseconds of one look for a name, the least of several rounds.
    double lookUp(const std::string& extension) const {
        double best = 1e9;
        for (int round = 0; round < 5; ++round) {
            const auto start = std::chrono::steady_clock::now();
            for (int i = 0; i < 200; ++i) {
                found += files->exists("C:\\datacd\\" + std::to_string(10'000'000 + i * 7) + extension) ? 1 : 0;
            }
            const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
            best = std::min(best, took.count() / 200);
        }
        return best;
    }
    mutable int found = 0;
};

TEST_F(LargeFolderTest, LooksForMissingNamesAreShort) {
    // To read the folder for each of them would take some thousand microseconds.
    const double missing = lookUp(".CD3");
    EXPECT_EQ(found, 0);
    EXPECT_LT(missing, 100) << "microseconds";
    RecordProperty("missing_us", std::to_string(missing));
    const double folded = lookUp(".cd");
    EXPECT_EQ(found, 1000);
    EXPECT_LT(folded, 100) << "microseconds";
    RecordProperty("folded_us", std::to_string(folded));
}

TEST_F(LargeFolderTest, LooksStayShortWhileTheProgramWrites) {
    EXPECT_FALSE(files->exists("C:\\datacd\\none.cd"));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(files->write("C:\\datacd\\New" + std::to_string(i) + ".CD", "x"));
        EXPECT_FALSE(files->exists("C:\\datacd\\New" + std::to_string(i) + ".CD3"));
        EXPECT_TRUE(files->exists("C:\\datacd\\NEW" + std::to_string(i) + ".cd"));
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(files->remove("C:\\datacd\\New" + std::to_string(i) + ".CD"));
    }
    EXPECT_LT(took.count(), 1.5) << "seconds";
    RecordProperty("seconds", std::to_string(took.count()));
}

TEST_F(LargeFolderTest, ListsAllOfIt) {
    EXPECT_EQ(files->list("C:\\datacd\\*.cd", 0)->size(), static_cast<std::size_t>(count));
}

}  // namespace
}  // namespace tessarel::host
