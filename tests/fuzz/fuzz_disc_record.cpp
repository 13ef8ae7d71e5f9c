// links: tessarel_library
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "library/record_files.h"
#include "tests/fakes/memory_file_system.h"

namespace {

using namespace tessarel;

const std::string dataDir = "C:\\Tessarel";
const std::string path = "C:\\Tessarel\\datacd\\00123456.CD";

void require(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}

// The input, cut at zero bytes, becomes the files of one disc in this order. A missing piece is a missing file.
void putFamily(fakes::MemoryFileSystem& files, std::string_view input) {
    for (const char* name : {"00123456.CD", "00123456.CD3", "00123456.CD4", "00123456.CD5", "00123456.CD1", "default.cd1"}) {
        const auto end = input.find('\0');
        files.put("C:\\Tessarel\\datacd\\" + std::string(name), input.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        input.remove_prefix(end + 1);
    }
    files.put("C:\\Tessarel\\bmpdir.dat", input);
}

library::DiscRecord readAll(fakes::MemoryFileSystem& files) {
    library::DiscRecord record;
    record.discRecordPath = path;
    library::readDiscRecord(files, dataDir, record);
    library::readDiscImages(files, dataDir, record);
    return record;
}

// What was read can be saved, and reads the same again.
void requireStable(fakes::MemoryFileSystem& files, library::DiscRecord record) {
    require(library::writeDiscRecord(files, dataDir, 100, record).has_value());
    const auto second = readAll(files);
    require(second.imageCount >= 0 && second.imageCount <= 21);
    library::DiscRecord again = second;
    require(library::writeDiscRecord(files, dataDir, 100, again).has_value());
    const auto third = readAll(files);
    require(third.discTitle == second.discTitle && third.trackTitles == second.trackTitles);
    require(third.lyricsOverflow == second.lyricsOverflow && third.discExtras == second.discExtras);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fakes::MemoryFileSystem files;
    files.putFolder("C:\\Tessarel\\datacd");
    putFamily(files, {reinterpret_cast<const char*>(data), size});
    requireStable(files, readAll(files));
    require(files.currentDirectory() == dataDir);
    return 0;
}
