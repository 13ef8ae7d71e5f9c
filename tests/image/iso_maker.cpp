#include "iso_maker.h"

#include <cstring>

namespace tessarel::host::testing {
namespace {

std::string little(std::uint32_t n) {
    std::string out;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        out += static_cast<char>(n >> shift & 0xFFU);
    }
    return out;
}

std::string both(std::uint32_t n) {
    const std::string low = little(n);
    return low + std::string(low.rbegin(), low.rend());
}

std::string padded(std::string s, std::size_t size, char with = '\0') {
    s.resize(size, with);
    return s;
}

}  // namespace

MemoryDisc::MemoryDisc(std::string sectors, Frames start) : sectors_(std::move(sectors)), start_(start) {
    const auto length = static_cast<Frames>(sectors_.size() / dataSectorBytes);
    toc_.tracks.push_back({1, start, length, false, {}, {}});
    toc_.leadOut = start + length;
}

Result<void> MemoryDisc::readAudio(Frames, int, std::int16_t*) { return failure(Fault::invalid, "no sound"); }

Result<void> MemoryDisc::readData(Frames from, int count, std::byte* bytes) {
    if (from < start_ || count < 0 || from > toc_.leadOut - count) {
        return failure(Fault::invalid, "off the disc");
    }
    std::memcpy(bytes, sectors_.data() + static_cast<std::size_t>(from - start_) * dataSectorBytes,
                static_cast<std::size_t>(count) * dataSectorBytes);
    return {};
}

std::string RecordMaker::bytesOnDisc() const {
    std::string out = std::string(2, '\0') + both(sector) + both(bytes) + std::string(7, '\0') + static_cast<char>(flags) +
                      static_cast<char>(interleave) + std::string(5, '\0') + static_cast<char>(identifier.size()) + identifier;
    if (identifier.size() % 2 == 0) {
        out += '\0';
    }
    out += systemUse;
    if (out.size() % 2 == 1) {
        out += '\0';
    }
    out[0] = static_cast<char>(out.size());
    return out;
}

std::string dotRecords(std::uint32_t sector, std::uint32_t bytes, const std::string& systemUse) {
    return RecordMaker{std::string(1, '\0'), sector, bytes, 2, systemUse}.bytesOnDisc() +
           RecordMaker{std::string(1, '\1'), sector, bytes, 2}.bytesOnDisc();
}

std::string wide(std::string_view ascii) {
    std::string out;
    for (const char c : ascii) {
        out += '\0';
        out += c;
    }
    return out;
}

std::string VolumeMaker::descriptor(int type, const std::string& name, std::uint32_t rootSector) const {
    std::string out = static_cast<char>(type) + std::string("CD001\1") + '\0' + std::string(32, ' ');
    out += type == 2 ? padded(name, 32) : padded(name, 32, ' ');
    out += std::string(8, '\0') + both(static_cast<std::uint32_t>(22 + more.size()));
    out += padded(type == 2 ? "%/E" : "", 40) + std::string(2, '\0') + std::string(2, '\0');
    out[124] = 1;
    out = padded(out, 128) + std::string("\0\x08\x08\0", 4);
    out = padded(out, 156) + RecordMaker{std::string(1, '\0'), address + rootSector, rootBytes, 2}.bytesOnDisc();
    return padded(out, dataSectorBytes);
}

std::string VolumeMaker::sectors() const {
    std::string out = std::string(16 * dataSectorBytes, '\0') + descriptor(1, label, 20);
    if (!joliet.empty()) {
        out += descriptor(2, wide(jolietLabel), 21);
    }
    out += padded(
        "\xFF"
        "CD001\1",
        dataSectorBytes);
    out = padded(out, 20 * dataSectorBytes);
    std::string plainRoot = dotRecords(address + 20, rootBytes, rootSystemUse);
    for (const RecordMaker& record : root) {
        plainRoot += record.bytesOnDisc();
    }
    std::string jolietRoot = dotRecords(address + 21, rootBytes);
    for (const RecordMaker& record : joliet) {
        jolietRoot += record.bytesOnDisc();
    }
    out += padded(plainRoot, dataSectorBytes) + padded(jolietRoot, dataSectorBytes);
    for (const std::string& sector : more) {
        out += padded(sector, dataSectorBytes);
    }
    return out;
}

}  // namespace tessarel::host::testing
