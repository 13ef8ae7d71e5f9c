// Reads the records of ten thousand discs through the real files, beside `cat` of the same files, and prints the ratio.
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "base/text.h"
#include "host/files/real_files.h"
#include "library/record_files.h"
#include "tests/fakes/memory_file_system.h"

namespace {

using namespace tessarel;
using Clock = std::chrono::steady_clock;

constexpr int discs = 10'000;
constexpr int rounds = 5;
constexpr double mostTimesCat = 4;
const std::string dataDir = "C:\\Tessarel";

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tessarel-records-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::filesystem::filesystem_error("no temporary folder", std::error_code(errno, std::generic_category()));
        }
        path_ = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

std::string pathOfDisc(int disc) { return library::discRecordPath(dataDir, library::discFileId(disc * 7919 + 1000)); }

// Every tenth disc has more tracks than the main file holds.
library::DiscRecord recordOfDisc(int disc) {
    library::DiscRecord record;
    const int tracks = disc % 10 == 0 ? 60 : 10 + disc % 12;
    record.discRecordPath = pathOfDisc(disc);
    record.discTitle = fmt::format("Evenings in the Harbour, Volume {}", disc);
    record.discArtist = fmt::format("The Lantern Quartet no. {}", disc % 500);
    record.linerNotes = "Recorded in one night.\r\nMixed in the next, by \"the same people\".\r\n";
    for (int track = 1; track <= tracks; ++track) {
        record.trackTitles.at(static_cast<std::size_t>(track)) = fmt::format("Song number {}, with a longer name", track);
        if (track % 4 == 0) {
            library::storedLyrics(record, track) = fmt::format("First line of {},\r\nand its second.", track);
        }
    }
    record.discInfo = {"", "48:12,3:55,4:01,", std::to_string(tracks), "A. Composer", "LQ 1017", "Jazz"};
    record.discExtras[1] = "Audio CD";
    record.discExtras[2] = "1997";
    return record;
}

void makeRecords(const std::filesystem::path& folder) {
    for (int disc = 0; disc < discs; ++disc) {
        fakes::MemoryFileSystem memory;
        memory.putFolder(library::recordFolder(dataDir));
        auto record = recordOfDisc(disc);
        if (!library::writeDiscRecord(memory, dataDir, 0, record)) {
            throw std::runtime_error("a record could not be made");
        }
        for (const char* digit : {"", "3", "4", "5"}) {
            if (const auto bytes = memory.read(record.discRecordPath + digit)) {
                std::ofstream(folder / (record.discFileId + text::fileName(record.discRecordPath) + digit), std::ios::binary)
                    << *bytes;
            }
        }
    }
}

double secondsFor(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void catAll(const std::filesystem::path& folder) {
    const auto command = fmt::format("cd '{}' && printf '%s\\0' * | xargs -0 cat > /dev/null", folder.string());
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("cat failed");
    }
}

std::size_t readAll(platform::FileSystem& files) {
    library::DiscRecord record;
    std::size_t characters = 0;
    for (int disc = 0; disc < discs; ++disc) {
        record.discRecordPath = pathOfDisc(disc);
        library::readDiscRecord(files, dataDir, record);
        characters += record.discTitle.size() + record.discExtras[2].size();
    }
    return characters;
}

int run() {
    const TemporaryFolder home;
    const auto folder = home.path() / "Tessarel" / "datacd";
    std::filesystem::create_directories(folder);
    makeRecords(folder);
    host::DriveTable drives(home.path(), {});
    host::RealFiles files(drives, {});
    double cat = 1e9;
    double ours = 1e9;
    std::size_t characters = 0;
    for (int round = 0; round < rounds; ++round) {
        cat = std::min(cat, secondsFor([&] { catAll(folder); }));
        ours = std::min(ours, secondsFor([&] { characters = readAll(files); }));
    }
    const bool read = characters > discs * std::size_t{30};
    fmt::print("{} records: cat {:.0f} ms, read {:.0f} ms, {:.2f} times cat (at most {})\n", discs, cat * 1e3, ours * 1e3,
               ours / cat, mostTimesCat);
    return read && ours <= mostTimesCat * cat ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main() {
    try {
        return run();
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return EXIT_FAILURE;
    }
}
