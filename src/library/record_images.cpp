#include <algorithm>
#include <utility>

#include "base/sequential_file.h"
#include "library/record_files.h"
#include "library/record_folder.h"

namespace tessarel::library {
namespace {

// What the reader gives for a set that is not the disc's own.
constexpr const char* noDisplayType = "10";

std::string ownImagesPath(const DiscRecord& record) { return text::trim(record.discRecordPath) + "1"; }
std::string defaultImagesPath(const std::string& dataDir) { return recordFolder(dataDir) + "\\default.cd1"; }

bool anyImage(const DiscRecord& record) {
    return std::any_of(record.imageFiles.begin(), record.imageFiles.end(),
                       [](const std::string& entry) { return !text::trim(entry).empty(); });
}

// Fills the set from a file. `correction` takes the file's time correction if it has one. True when the set holds an image.
bool readSet(const platform::FileSystem& files, const std::string& path, DiscRecord& record, std::int16_t& correction) {
    const auto text = textOf(files, path);
    if (!text) {
        return false;
    }
    SequentialReader file(*text);
    for (std::size_t i = 0; i < record.imageFiles.size(); ++i) {
        file.into(record.imageFiles[i]);
        file.into(record.imageDelays[i]);
    }
    file.into(correction);
    packImages(record);
    return anyImage(record);
}

std::string artFolder(const platform::FileSystem& files, const std::string& dataDir) {
    std::string folder;
    if (const auto text = textOf(files, dataDir + "\\bmpdir.dat")) {
        SequentialReader(*text).into(folder);
    }
    const bool usable = !text::trim(folder).empty() && files.directoryExists(folder);
    folder = usable ? folder : dataDir;
    return folder.ends_with('\\') ? folder : folder + "\\";
}

void takeBitmaps(const platform::FileSystem& files, const std::string& dataDir, DiscRecord& record) {
    record.imageFiles[0] = noDisplayType;
    const auto folder = artFolder(files, dataDir);
    const auto names = files.list(folder + "*.bmp", platform::attributeNone);
    const auto count = names ? std::min(names->size(), record.imageFiles.size() - 1) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        record.imageFiles[i + 1] = folder + (*names)[i];
    }
    packImages(record);
}

std::string setText(const DiscRecord& record) {
    SequentialWriter file;
    for (std::size_t i = 0; i < record.imageFiles.size(); ++i) {
        file.text(record.imageFiles[i]).number(record.imageDelays[i]);
    }
    file.number(record.timeCorrection);
    return file.bytes();
}

}  // namespace

void readDiscImages(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record) {
    const InRecordFolder here(files, dataDir);
    record.imageFiles.fill({});
    record.imageDelays.fill(0);
    packImages(record);
    record.noStoredImages = 0;
    const bool ownSet = std::exchange(record.defaultImageSet, std::int16_t{0}) != 1;
    auto correction = record.timeCorrection;
    if (ownSet) {
        if (readSet(files, ownImagesPath(record), record, correction)) {
            record.timeCorrection = correction;
            return;
        }
        record.noStoredImages = 1;
    }
    if (readSet(files, defaultImagesPath(dataDir), record, correction)) {
        record.imageFiles[0] = noDisplayType;
        return;
    }
    record.noStoredImages = 1;
    takeBitmaps(files, dataDir, record);
}

Result<void> writeDiscImages(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record) {
    const bool ownSet = std::exchange(record.defaultImageSet, std::int16_t{0}) != 1;
    if (record.noStoredImages != 0 || !imagesWorthKeeping(record)) {
        return {};
    }
    const InRecordFolder here(files, dataDir);
    return files.write(ownSet ? ownImagesPath(record) : defaultImagesPath(dataDir), setText(record));
}

}  // namespace tessarel::library
