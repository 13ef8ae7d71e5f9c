#include "host/image/disc_image.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"
#include "host/image/image_errors.h"
#include "host/image/image_medium.h"
#include "host/image/iso_records.h"
#include "host/image/nrg_image.h"

namespace tessarel::host {
namespace {

namespace fs = std::filesystem;
using MediumResult = Result<std::shared_ptr<Medium>>;

std::string extensionOf(const fs::path& file) { return text::lower(file.extension().native()); }

Result<std::string> readSheet(const fs::path& path) {
    auto file = openImageFile(path, ByteOrder::little);
    if (!file) {
        return tl::unexpected(file.error());
    }
    if ((*file)->sound() || (*file)->size() > static_cast<std::int64_t>(largestSheetBytes)) {
        return failure(Fault::invalid, fmt::format("\"{}\" is no text of tracks.", shownName(path)));
    }
    std::string bytes(static_cast<std::size_t>((*file)->size()), '\0');
    if (auto done = (*file)->readBytes(0, (*file)->size(), reinterpret_cast<std::byte*>(bytes.data())); !done) {
        return tl::unexpected(done.error());
    }
    return bytes;
}

/// The files that a sheet names, each opened once for each byte order.
class FileTable {
public:
    explicit FileTable(fs::path sheet) : sheet_(std::move(sheet)) {}

    /// Adds the file of a name as the next one.
    Result<void> add(std::string_view name, ByteOrder order) {
        const auto path = fileBeside(sheet_, name);
        if (!path) {
            return tl::unexpected(path.error());
        }
        const auto known =
            std::find_if(opened_.begin(), opened_.end(), [&](const Opened& o) { return o.path == *path && o.order == order; });
        if (known != opened_.end()) {
            files_.push_back(known->file);
        } else {
            auto file = openImageFile(*path, order);
            if (!file) {
                return tl::unexpected(file.error());
            }
            opened_.push_back({*path, order, *file});
            files_.push_back(std::move(*file));
        }
        extents_.push_back({shownName(*path), files_.back()->sound(), files_.back()->size()});
        return {};
    }

    const std::vector<FileExtent>& extents() const { return extents_; }
    std::vector<std::shared_ptr<ImageFile>> take() { return std::move(files_); }

private:
    struct Opened {
        fs::path path;
        ByteOrder order;
        std::shared_ptr<ImageFile> file;
    };

    fs::path sheet_;
    std::vector<Opened> opened_;
    std::vector<std::shared_ptr<ImageFile>> files_;
    std::vector<FileExtent> extents_;
};

MediumResult finish(const Result<DiscPlan>& plan, FileTable& files) {
    if (!plan) {
        return tl::unexpected(plan.error());
    }
    auto layout = layOut(*plan);
    if (!layout) {
        return tl::unexpected(layout.error());
    }
    return std::make_shared<ImageMedium>(std::move(*layout), files.take());
}

MediumResult openCue(const fs::path& path, std::string_view bytes) {
    const auto sheet = parseCueSheet(bytes);
    if (!sheet) {
        return tl::unexpected(sheet.error());
    }
    FileTable files(path);
    for (const CueFile& file : sheet->files) {
        const auto order = file.kind == CueFileKind::bigEndian ? ByteOrder::big : ByteOrder::little;
        if (auto done = files.add(file.name, order); !done) {
            return tl::unexpected(done.error());
        }
        if (file.kind == CueFileKind::sound && !files.extents().back().sound) {
            return failure(Fault::unsupported,
                           fmt::format("\"{}\" is no WAVE, AIFF or FLAC file.", files.extents().back().name));
        }
    }
    return finish(planCue(*sheet, files.extents()), files);
}

MediumResult openToc(const fs::path& path, std::string_view bytes) {
    const auto toc = parseTocFile(bytes);
    if (!toc) {
        return tl::unexpected(toc.error());
    }
    FileTable files(path);
    for (const TocTrack& track : toc->tracks) {
        for (const TocPiece& piece : track.pieces) {
            // Raw samples are big-endian in this format.
            const auto done =
                piece.file.empty() ? Result<void>{} : files.add(piece.file, piece.swap ? ByteOrder::little : ByteOrder::big);
            if (!done) {
                return tl::unexpected(done.error());
            }
        }
    }
    return finish(planToc(*toc, files.extents()), files);
}

MediumResult openSheet(const fs::path& path, MediumResult (*open)(const fs::path&, std::string_view)) {
    const auto bytes = readSheet(path);
    if (!bytes) {
        return tl::unexpected(bytes.error());
    }
    auto medium = open(path, *bytes);
    return medium ? std::move(medium) : refuseImage(path, medium.error());
}

MediumResult openCueImage(const fs::path& path) { return openSheet(path, openCue); }
MediumResult openTocImage(const fs::path& path) { return openSheet(path, openToc); }

MediumResult openIsoImage(const fs::path& path) {
    auto file = openImageFile(path, ByteOrder::little);
    if (!file) {
        return tl::unexpected(file.error());
    }
    std::vector<std::byte> descriptor(dataSectorBytes);
    const bool readable =
        !(*file)->sound() && (*file)->size() >= std::int64_t{volumeDescriptorSector + 1} * dataSectorBytes &&
        (*file)->readBytes(std::int64_t{volumeDescriptorSector} * dataSectorBytes, dataSectorBytes, descriptor.data());
    const auto volume = readable ? parseVolumeDescriptor(descriptor) : std::nullopt;
    if (!volume || volume->kind != IsoDescriptor::Kind::primary) {
        return refuseImage(path, {Fault::invalid, "it holds no ISO 9660 volume."});
    }
    const std::int64_t sectors = (*file)->size() / dataSectorBytes;
    if (sectors < volume->sectors) {
        return refuseImage(path, {Fault::invalid, "it is cut off: its volume is larger than the file."});
    }
    PlannedTrack track;
    track.number = 1;
    track.audio = false;
    track.pieces.push_back({Piece::Kind::sectors, SectorForm::cooked, 0, 0, sectors * samplesPerFrame});
    auto layout = layOut({{track}, {}, {}});
    if (!layout) {
        return refuseImage(path, layout.error());
    }
    return std::make_shared<ImageMedium>(std::move(*layout), std::vector{*file});
}

MediumResult openBinImage(const fs::path& path) {
    const auto sheet = fileBeside(path, fs::path(path.filename()).replace_extension(".cue").native());
    if (!sheet) {
        return refuseImage(path, {Fault::notFound, "it has no cue sheet beside it."});
    }
    return openCueImage(*sheet);
}

struct Format {
    std::string_view extension;
    MediumResult (*open)(const fs::path&);
};
constexpr std::array formats{Format{".cue", openCueImage}, Format{".toc", openTocImage}, Format{".nrg", openNrgImage},
                             Format{".iso", openIsoImage}, Format{".bin", openBinImage}, Format{".img", openBinImage}};

const Format* formatOf(const fs::path& file) {
    const std::string extension = extensionOf(file);
    const auto* found = std::find_if(formats.begin(), formats.end(), [&](const Format& f) { return f.extension == extension; });
    return found == formats.end() ? nullptr : found;
}

}  // namespace

bool looksLikeDiscImage(const fs::path& file) { return formatOf(file) != nullptr; }

Result<std::shared_ptr<Medium>> openDiscImage(const fs::path& file) {
    const Format* format = formatOf(file);
    if (format == nullptr) {
        return failure(Fault::unsupported, fmt::format("\"{}\" is no kind of disc image that is known.", shownName(file)));
    }
    return format->open(file);
}

}  // namespace tessarel::host
