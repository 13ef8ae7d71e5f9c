#include "host/image/image_medium.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace tessarel::host {
namespace {

constexpr int rawSectorBytes = 2352;
constexpr std::array<unsigned char, 12> synchronisation{0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 0};
constexpr unsigned form2Bit = 0x20;

/// The user data of a mode 2 sector from its sub-header on.
Result<void> formOneData(const std::byte* subHeader, std::byte* data) {
    if ((std::to_integer<unsigned>(subHeader[2]) & form2Bit) != 0) {
        return failure(Fault::unsupported, "A sector of form 2 holds no user data.");
    }
    std::memcpy(data, subHeader + 8, dataSectorBytes);
    return {};
}

}  // namespace

Result<void> userData(const std::byte* sector, std::byte* data) {
    const auto mode = std::to_integer<int>(sector[15]);
    if (std::memcmp(sector, synchronisation.data(), synchronisation.size()) != 0 || mode < 1 || mode > 2) {
        return failure(Fault::invalid, "A data sector is damaged.");
    }
    if (mode == 2) {
        return formOneData(sector + 16, data);
    }
    std::memcpy(data, sector + 16, dataSectorBytes);
    return {};
}

Result<void> checkKind(const platform::CdToc& toc, Frames from, int count, bool audio) {
    if (from < 0 || count < 0 || std::int64_t{from} + count > toc.leadOut) {
        return failure(Fault::invalid, fmt::format("Frames {} and the {} behind it are not all on the disc.", from, count));
    }
    Frames at = from;
    for (const auto& track : toc.tracks) {
        const bool first = &track == &toc.tracks.front();
        const Frames start = first ? 0 : track.start;
        if (at >= from + count || at < start) {
            break;
        }
        if (at < track.start + track.length) {
            if (track.audio != audio) {
                return failure(Fault::invalid,
                               fmt::format("Frame {} lies in a{} track.", at, track.audio ? "n audio" : " data"));
            }
            at = track.start + track.length;
        }
    }
    if (at < from + count) {
        return failure(Fault::invalid, fmt::format("Frame {} lies between two sessions.", at));
    }
    return {};
}

ImageMedium::ImageMedium(DiscLayout layout, std::vector<std::shared_ptr<ImageFile>> files)
    : layout_(std::move(layout)), files_(std::move(files)) {}

std::size_t ImageMedium::pieceAt(std::int64_t sample) const {
    const auto behind = std::upper_bound(layout_.pieces.begin(), layout_.pieces.end(), sample,
                                         [](std::int64_t at, const PlacedPiece& placed) { return at < placed.at; });
    return static_cast<std::size_t>(behind - layout_.pieces.begin()) - 1;
}

Result<void> ImageMedium::readAudio(Frames from, int count, std::int16_t* samples) {
    if (auto fits = checkKind(layout_.toc, from, count, true); !fits || count == 0) {
        return fits;
    }
    std::int64_t at = std::int64_t{from} * samplesPerFrame;
    const std::int64_t end = at + std::int64_t{count} * samplesPerFrame;
    for (std::size_t p = pieceAt(at); at < end; ++p) {
        const PlacedPiece& placed = layout_.pieces[p];
        const Piece& piece = placed.piece;
        const std::int64_t into = at - placed.at;
        const std::int64_t part = std::min(end - at, piece.length - into);
        if (piece.kind == Piece::Kind::sound) {
            ImageFile& file = *files_[piece.file];
            if (auto done = file.readSamples(piece.offset + into * (file.sound() ? 1 : 4), part, samples); !done) {
                return done;
            }
        } else {
            std::fill_n(samples, part * 2, std::int16_t{0});
        }
        samples += part * 2;
        at += part;
    }
    return {};
}

Result<void> ImageMedium::readData(Frames from, int count, std::byte* bytes) {
    if (auto fits = checkKind(layout_.toc, from, count, false); !fits) {
        return fits;
    }
    for (Frames frame = from; frame < from + count; ++frame, bytes += dataSectorBytes) {
        const std::int64_t at = std::int64_t{frame} * samplesPerFrame;
        const PlacedPiece& placed = layout_.pieces[pieceAt(at)];
        if (auto done = readSector(placed.piece, (at - placed.at) / samplesPerFrame, bytes); !done) {
            return done;
        }
    }
    return {};
}

Result<void> ImageMedium::readSector(const Piece& piece, std::int64_t into, std::byte* bytes) {
    if (piece.kind == Piece::Kind::silence) {
        std::fill_n(bytes, dataSectorBytes, std::byte{0});
        return {};
    }
    if (piece.kind == Piece::Kind::sound) {
        return failure(Fault::invalid, "The gap behind a data track holds sound.");
    }
    const std::int64_t at = piece.offset + into * sectorBytes(piece.form);
    if (piece.form == SectorForm::cooked) {
        return files_[piece.file]->readBytes(at, dataSectorBytes, bytes);
    }
    std::array<std::byte, rawSectorBytes> sector{};
    if (auto done = files_[piece.file]->readBytes(at, sectorBytes(piece.form), sector.data()); !done) {
        return done;
    }
    return piece.form == SectorForm::raw ? userData(sector.data(), bytes) : formOneData(sector.data(), bytes);
}

}  // namespace tessarel::host
