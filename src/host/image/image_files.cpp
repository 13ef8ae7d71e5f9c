#include "host/image/image_files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "base/text.h"
#include "host/image/sound_image_file.h"

namespace tessarel::host {
namespace {

namespace fs = std::filesystem;

class RawFile final : public ImageFile {
public:
    RawFile(int handle, std::int64_t size, std::string name, ByteOrder order)
        : handle_(handle), size_(size), name_(std::move(name)), order_(order) {}
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;
    ~RawFile() override { ::close(handle_); }

    bool sound() const override { return false; }
    std::int64_t size() const override { return size_; }

    Result<void> readSamples(std::int64_t from, std::int64_t count, std::int16_t* samples) override {
        auto done = readBytes(from, count * 4, reinterpret_cast<std::byte*>(samples));
        if (done && order_ == ByteOrder::big) {
            for (std::int64_t i = 0; i < count * 2; ++i) {
                samples[i] = static_cast<std::int16_t>(__builtin_bswap16(static_cast<std::uint16_t>(samples[i])));
            }
        }
        return done;
    }

    Result<void> readBytes(std::int64_t from, std::int64_t count, std::byte* bytes) override {
        while (count > 0) {
            const auto got = ::pread(handle_, bytes, static_cast<std::size_t>(count), from);
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                return failure(Fault::failed, got < 0 ? fmt::format("\"{}\" can't be read: {}.", name_, std::strerror(errno))
                                                      : fmt::format("\"{}\" has become shorter.", name_));
            }
            bytes += got;
            from += got;
            count -= got;
        }
        return {};
    }

private:
    int handle_;
    std::int64_t size_;
    std::string name_;
    ByteOrder order_;
};

bool isSoundFile(RawFile& file) {
    std::array<char, 12> head{};
    if (file.size() < static_cast<std::int64_t>(head.size()) ||
        !file.readBytes(0, static_cast<std::int64_t>(head.size()), reinterpret_cast<std::byte*>(head.data()))) {
        return false;
    }
    const std::string_view begin(head.data(), 4);
    const std::string_view form(head.data() + 8, 4);
    return begin == "fLaC" || ((begin == "RIFF" || begin == "RF64") && form == "WAVE") ||
           (begin == "FORM" && (form == "AIFF" || form == "AIFC"));
}

std::string nameText(const fs::path& path) { return text::decodeLatin1(path.filename().native()); }

bool isFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

/// A file of this name in the folder, capitals or not.
fs::path findInFolder(const fs::path& folder, std::string_view name) {
    std::error_code error;
    const std::string wanted = text::lower(name);
    for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, error), end; !error && it != end;
         it.increment(error)) {
        if (text::lower(nameText(it->path())) == wanted && isFile(it->path())) {
            return folder / it->path().filename();
        }
    }
    return {};
}

}  // namespace

std::string shownName(const fs::path& path) { return nameText(path); }

Result<std::shared_ptr<ImageFile>> openImageFile(const fs::path& path, ByteOrder order) {
    const std::string name = shownName(path);
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (handle < 0) {
        const Fault fault = errno == ENOENT ? Fault::notFound : errno == EACCES ? Fault::denied : Fault::failed;
        return failure(fault, fmt::format("\"{}\" can't be opened: {}.", name, std::strerror(errno)));
    }
    struct stat status {};
    const bool regular = ::fstat(handle, &status) == 0 && S_ISREG(status.st_mode);
    auto raw = std::make_shared<RawFile>(handle, status.st_size, name, order);
    if (!regular) {
        return failure(Fault::invalid, fmt::format("\"{}\" is no file.", name));
    }
    if (isSoundFile(*raw)) {
        return openSoundImageFile(path, *raw);
    }
    return raw;
}

Result<fs::path> fileBeside(const fs::path& sheet, std::string_view name) {
    if (const auto slash = name.rfind('\\'); slash != std::string_view::npos) {
        name.remove_prefix(slash + 1);
    }
    const fs::path written(name);
    const fs::path relative = written.is_absolute() ? written.filename() : written;
    const fs::path folder = sheet.parent_path();
    if (const fs::path exact = folder / relative; !relative.empty() && isFile(exact)) {
        return exact;
    }
    const std::string last = relative.filename().native();
    for (const fs::path& place : {(folder / relative).parent_path(), folder}) {
        if (fs::path found = findInFolder(place, last); !found.empty()) {
            return found;
        }
    }
    return failure(Fault::notFound, fmt::format("the file \"{}\" is missing.", name));
}

}  // namespace tessarel::host
