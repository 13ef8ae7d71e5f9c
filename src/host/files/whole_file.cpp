#include "host/files/whole_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>

#include "host/files/file_handle.h"
#include "host/files/system_error.h"

namespace tessarel::host {
namespace {

constexpr int longestLinkChain = 40;

template <class Call>
auto retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

tl::unexpected<Error> notPlain(std::string_view name, mode_t mode) {
    return failure(Fault::invalid,
                   fmt::format("{} is {}, not a plain file.", name, S_ISDIR(mode) ? "a folder" : "a pipe or a device"));
}

tl::unexpected<Error> tooLarge(std::string_view name) {
    return failure(Fault::unsupported, fmt::format("{} is larger than {} MB.", name, largestFile >> 20U));
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = retried([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Result<std::string> readToEnd(int descriptor, std::size_t expected, std::string_view name) {
    std::string bytes(expected + 1, '\0');
    std::size_t filled = 0;
    for (;;) {
        const auto got = retried([&] { return ::read(descriptor, bytes.data() + filled, bytes.size() - filled); });
        if (got < 0) {
            return systemError(errno, name, "read");
        }
        if (got == 0) {
            bytes.resize(filled);
            return bytes;
        }
        filled += static_cast<std::size_t>(got);
        if (filled > largestFile) {
            return tooLarge(name);
        }
        if (filled == bytes.size()) {
            bytes.resize(bytes.size() * 2);
        }
    }
}

struct TemporaryFile {
    FileHandle handle;
    std::filesystem::path path;
};

std::optional<TemporaryFile> createBeside(const std::filesystem::path& target, mode_t mode) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        auto path = target.parent_path() / fmt::format(".tessarel-{}-{}.tmp", ::getpid(), attempt);
        FileHandle handle(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
        if (handle) {
            return TemporaryFile{std::move(handle), std::move(path)};
        }
        if (errno != EEXIST) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

// What stands at the target now must be a plain file that may be written, or nothing.
Result<std::optional<mode_t>> oldMode(const std::filesystem::path& target, std::string_view name) {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) {
        return errno == ENOENT ? Result<std::optional<mode_t>>(std::nullopt) : systemError(errno, name, "written");
    }
    if (!S_ISREG(status.st_mode)) {
        return notPlain(name, status.st_mode);
    }
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        return systemError(errno, name, "written");
    }
    return status.st_mode & 07777U;
}

}  // namespace

Result<std::string> readWhole(const std::filesystem::path& file, std::string_view name) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return systemError(errno, name, "read");
    }
    if (!S_ISREG(status.st_mode)) {
        return notPlain(name, status.st_mode);
    }
    const FileHandle handle(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!handle || ::fstat(handle.get(), &status) != 0) {
        return systemError(errno, name, "read");
    }
    if (!S_ISREG(status.st_mode)) {
        return notPlain(name, status.st_mode);
    }
    if (status.st_size > static_cast<off_t>(largestFile)) {
        return tooLarge(name);
    }
    return readToEnd(handle.get(), static_cast<std::size_t>(status.st_size), name);
}

std::string readPart(const std::filesystem::path& file, std::size_t offset, std::size_t count) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    const FileHandle handle(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    std::string bytes(count, '\0');
    const auto got =
        handle ? retried([&] { return ::pread(handle.get(), bytes.data(), count, static_cast<off_t>(offset)); }) : 0;
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

Result<void> replaceWhole(const std::filesystem::path& file, std::string_view bytes, std::string_view name) {
    const auto target = linkTarget(file, name);
    if (!target) {
        return tl::unexpected(target.error());
    }
    const auto mode = oldMode(*target, name);
    if (!mode) {
        return tl::unexpected(mode.error());
    }
    auto temporary = createBeside(*target, 0666);
    if (!temporary) {
        return systemError(errno, name, "written");
    }
    const int descriptor = temporary->handle.get();
    const bool kept = !*mode || ::fchmod(descriptor, **mode) == 0;
    const bool stored = kept && writeAll(descriptor, bytes) && retried([&] { return ::fsync(descriptor); }) == 0;
    if (stored && temporary->handle.close() && ::rename(temporary->path.c_str(), target->c_str()) == 0) {
        return {};
    }
    const int code = errno;
    ::unlink(temporary->path.c_str());
    return systemError(code, name, "written");
}

Result<void> createWhole(const std::filesystem::path& file, std::string_view bytes, std::string_view name, unsigned mode) {
    FileHandle handle(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
    if (!handle || !writeAll(handle.get(), bytes) || !handle.close()) {
        return systemError(errno, name, "written");
    }
    return {};
}

Result<std::filesystem::path> linkTarget(std::filesystem::path file, std::string_view name) {
    for (int links = 0; links < longestLinkChain; ++links) {
        std::error_code none;
        const auto next = std::filesystem::read_symlink(file, none);
        if (none) {
            return file;
        }
        file = file.parent_path() / next;
    }
    return systemError(ELOOP, name, "written");
}

}  // namespace tessarel::host
