#include "host/image/iso_records.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "base/text.h"
#include "host/medium.h"

namespace tessarel::host {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t shortestRecord = 34;
constexpr std::size_t mostRecords = 100000;
constexpr unsigned hiddenBit = 1, directoryBit = 2, associatedBit = 4, moreExtentsBit = 128;

unsigned byteAt(Bytes b, std::size_t at) { return std::to_integer<unsigned>(b[at]); }
std::uint32_t number32(Bytes b, std::size_t at) {
    return byteAt(b, at) | byteAt(b, at + 1) << 8U | byteAt(b, at + 2) << 16U | byteAt(b, at + 3) << 24U;
}
std::string bytesText(Bytes b) { return {reinterpret_cast<const char*>(b.data()), b.size()}; }

/// Big-endian UTF-16; nothing when a surrogate stands alone.
std::optional<std::string> wideText(std::string_view bytes) {
    std::string out;
    const auto unit = [&](std::size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])) << 8U | static_cast<unsigned char>(bytes[i + 1]);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        unsigned c = unit(i);
        if (c >= 0xD800 && c < 0xE000) {
            const unsigned low = i + 3 < bytes.size() ? unit(i + 2) : 0;
            if (c >= 0xDC00 || low < 0xDC00 || low >= 0xE000) {
                return std::nullopt;
            }
            c = 0x10000 + ((c - 0xD800) << 10U) + (low - 0xDC00);
            i += 2;
        }
        text::append(out, c);
    }
    return out;
}

std::string labelText(const std::string& bytes, bool joliet) {
    std::string label = joliet ? wideText(bytes).value_or("") : text::decodeLatin1(bytes);
    label = label.substr(0, label.find('\0'));
    std::replace_if(
        label.begin(), label.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    return text::trim(label);
}

bool isJoliet(Bytes sector) {
    const std::string escape = bytesText(sector.subspan(88, 3));
    return escape == "%/@" || escape == "%/C" || escape == "%/E";
}

/// One record at the head of `from`, which ends where its sector does.
std::optional<IsoRecord> parseRecord(Bytes from) {
    const std::size_t length = from.empty() ? 0 : byteAt(from, 0);
    if (length < shortestRecord || length > from.size()) {
        return std::nullopt;
    }
    const Bytes record = from.first(length);
    const std::size_t nameLength = byteAt(record, 32);
    if (nameLength == 0 || 33 + nameLength > length) {
        return std::nullopt;
    }
    const unsigned flags = byteAt(record, 25);
    IsoRecord out;
    out.identifier = bytesText(record.subspan(33, nameLength));
    out.directory = (flags & directoryBit) != 0;
    out.hidden = (flags & hiddenBit) != 0;
    out.associated = (flags & associatedBit) != 0;
    out.interleaved = byteAt(record, 26) != 0 || byteAt(record, 27) != 0;
    const std::uint32_t sector = number32(record, 2);
    const unsigned attributeSectors = byteAt(record, 1);
    if (sector > UINT32_MAX - attributeSectors) {
        return std::nullopt;
    }
    out.extents.push_back({sector + attributeSectors, number32(record, 10)});
    const std::size_t use = 33 + nameLength + (nameLength % 2 == 0 ? 1 : 0);
    if (use < length) {
        out.systemUse.assign(record.begin() + static_cast<std::ptrdiff_t>(use), record.end());
    }
    return out;
}

}  // namespace

std::optional<IsoDescriptor> parseVolumeDescriptor(Bytes sector) {
    if (sector.size() < dataSectorBytes || bytesText(sector.subspan(1, 5)) != "CD001") {
        return std::nullopt;
    }
    IsoDescriptor out;
    const unsigned type = byteAt(sector, 0);
    if (type == 255) {
        out.kind = IsoDescriptor::Kind::terminator;
        return out;
    }
    if (type != 1 && (type != 2 || !isJoliet(sector))) {
        return out;
    }
    out.kind = type == 1 ? IsoDescriptor::Kind::primary : IsoDescriptor::Kind::joliet;
    const auto root = parseRecord(sector.subspan(156, 34));
    const unsigned blockBytes = byteAt(sector, 128) | byteAt(sector, 129) << 8U;
    if (!root || !root->directory || blockBytes != dataSectorBytes) {
        return std::nullopt;
    }
    out.label = labelText(bytesText(sector.subspan(40, 32)), type == 2);
    out.sectors = number32(sector, 80);
    out.root = *root;
    return out;
}

Result<std::vector<IsoRecord>> parseDirectory(Bytes extent) {
    std::vector<IsoRecord> out;
    bool moreFollows = false;
    for (std::size_t at = 0; at < extent.size();) {
        const std::size_t sectorEnd = std::min(extent.size(), (at / dataSectorBytes + 1) * dataSectorBytes);
        if (byteAt(extent, at) == 0) {
            at = sectorEnd;
            continue;
        }
        auto record = parseRecord(extent.subspan(at, sectorEnd - at));
        if (!record || out.size() >= mostRecords) {
            return failure(Fault::invalid, "A folder of the disc is damaged.");
        }
        const bool joins = moreFollows && record->identifier == out.back().identifier;
        moreFollows = (byteAt(extent, at + 25) & moreExtentsBit) != 0;
        at += byteAt(extent, at);
        if (joins) {
            out.back().extents.push_back(record->extents.front());
        } else {
            out.push_back(std::move(*record));
        }
    }
    return out;
}

bool isUsableName(std::string_view name) {
    const auto isBad = [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127 || c == '/' || c == '\\'; };
    return !name.empty() && name != "." && name != ".." && std::none_of(name.begin(), name.end(), isBad);
}

std::optional<std::string> isoName(const std::string& identifier, bool joliet) {
    auto name = joliet ? wideText(identifier) : std::optional(text::decodeLatin1(identifier));
    if (!name) {
        return std::nullopt;
    }
    if (const auto version = name->rfind(';'); version != std::string::npos) {
        const auto behind = std::string_view(*name).substr(version + 1);
        if (std::all_of(behind.begin(), behind.end(), [](char c) { return c >= '0' && c <= '9'; })) {
            name->resize(version);
        }
    }
    if (!name->empty() && name->back() == '.') {
        name->pop_back();
    }
    return isUsableName(*name) ? name : std::nullopt;
}

void readSystemUse(Bytes entries, RockRidge& found) {
    while (entries.size() >= 4) {
        const std::size_t length = byteAt(entries, 2);
        if (length < 4 || length > entries.size()) {
            return;
        }
        const Bytes entry = entries.first(length);
        const std::string kind = bytesText(entry.first(2));
        if (kind == "ST") {
            return;
        }
        if (kind == "NM" && length > 5 && (byteAt(entry, 4) & 6U) == 0) {
            found.name += bytesText(entry.subspan(5));
        } else if (kind == "SP" && length >= 7) {
            found.skip = static_cast<int>(byteAt(entry, 6));
        } else if (kind == "CE" && length >= 28) {
            found.more = IsoContinuation{number32(entry, 4), number32(entry, 12), number32(entry, 20)};
        }
        entries = entries.subspan(length);
    }
}

}  // namespace tessarel::host
