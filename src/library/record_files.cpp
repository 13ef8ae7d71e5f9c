#include "library/record_files.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "base/sequential_file.h"
#include "library/record_folder.h"

namespace tessarel::library {
namespace {

template <std::size_t N>
std::span<std::string> slots(std::array<std::string, N>& fields, std::size_t first, std::size_t last) {
    return std::span(fields).subspan(first, last - first + 1);
}

std::span<std::string> mainTitles(DiscRecord& record) { return slots(record.trackTitles, 1, titlesInMainFile); }
std::span<std::string> furtherTitles(DiscRecord& record) { return slots(record.trackTitles, titlesInMainFile + 1, mostTracks); }
std::span<std::string> furtherLyrics(DiscRecord& record) { return slots(record.lyricsOverflow, 1, 50); }

bool readDecoded(SequentialReader& file, std::string& field) {
    const bool read = file.into(field);
    if (read) {
        decodeRecordText(field);
    }
    return read;
}

void readMain(std::string_view text, DiscRecord& record) {
    SequentialReader file(text);
    readDecoded(file, record.discTitle);
    readDecoded(file, record.discArtist);
    readDecoded(file, record.linerNotes);
    for (auto& title : mainTitles(record)) {
        readDecoded(file, title);
    }
    file.into(record.discInfo[1]);
    for (auto& info : slots(record.discInfo, 2, 5)) {
        readDecoded(file, info);
    }
}

void readExtras(std::string_view text, DiscRecord& record) {
    SequentialReader file(text);
    for (auto& extra : record.discExtras) {
        if (!readDecoded(file, extra)) {
            return;
        }
    }
    if (text::trim(record.discExtras[1]).empty()) {
        record.discExtras[1] = defaultMediaType;
    }
}

// Only a file that is read to its last value is decoded.
void readWhole(std::string_view text, std::span<std::string> fields) {
    SequentialReader file(text);
    for (auto& field : fields) {
        if (!file.into(field)) {
            return;
        }
    }
    for (auto& field : fields) {
        decodeRecordText(field);
    }
}

void putEncoded(SequentialWriter& file, std::string value) {
    encodeRecordText(value);
    file.text(value);
}

void putEncoded(SequentialWriter& file, std::span<std::string> values) {
    for (const auto& value : values) {
        putEncoded(file, value);
    }
}

std::string encodedLines(std::span<std::string> values) {
    SequentialWriter file;
    putEncoded(file, values);
    return file.bytes();
}

std::string mainText(DiscRecord& record) {
    SequentialWriter file;
    putEncoded(file, record.discTitle);
    putEncoded(file, record.discArtist);
    putEncoded(file, record.linerNotes);
    putEncoded(file, mainTitles(record));
    file.text(record.discInfo[1]);
    putEncoded(file, slots(record.discInfo, 2, 5));
    return file.bytes();
}

std::string extrasTextEncodingInPlace(DiscRecord& record) {
    SequentialWriter file;
    for (auto& extra : record.discExtras) {
        encodeRecordText(extra);
        file.text(extra);
    }
    return file.bytes();
}

}  // namespace

void readDiscRecord(platform::FileSystem& files, const std::string& dataDir, DiscRecord& record) {
    const InRecordFolder here(files, dataDir);
    if (const auto text = textOf(files, record.discRecordPath)) {
        readMain(*text, record);
    }
    record.discExtras.fill({});
    if (const auto text = textOf(files, record.discRecordPath + "3")) {
        readExtras(*text, record);
    }
    if (const auto text = textOf(files, record.discRecordPath + "4")) {
        readWhole(*text, furtherTitles(record));
    }
    if (const auto text = textOf(files, record.discRecordPath + "5")) {
        readWhole(*text, furtherLyrics(record));
    }
}

Result<void> writeDiscRecord(platform::FileSystem& files, const std::string& dataDir, int discTrackCount, DiscRecord& record) {
    if (record.discRecordPath.empty()) {
        return failure(Fault::invalid, "There is no disc whose record could be saved.");
    }
    const InRecordFolder here(files, dataDir);
    Result<void> outcome;
    const auto write = [&](std::string_view digit, const std::string& bytes) {
        auto written = files.write(record.discRecordPath + std::string(digit), bytes);
        if (outcome) {
            outcome = std::move(written);
        }
    };
    write("", mainText(record));
    if (needsOverflowFiles(record, discTrackCount)) {
        write("4", encodedLines(furtherTitles(record)));
        write("5", encodedLines(furtherLyrics(record)));
    }
    if (extrasWorthKeeping(record)) {
        write("3", extrasTextEncodingInPlace(record));
    }
    return outcome;
}

}  // namespace tessarel::library
