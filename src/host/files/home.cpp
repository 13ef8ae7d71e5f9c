#include "host/files/home.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

#include "base/text.h"
#include "host/files/file_handle.h"
#include "host/files/fresh_settings.h"
#include "host/files/system_error.h"
#include "host/files/whole_file.h"

namespace tessarel::host {
namespace {

namespace fs = std::filesystem;

/// Makes folders, and takes away again those that it made unless told to keep them.
class NewFolders {
public:
    NewFolders() = default;
    NewFolders(const NewFolders&) = delete;
    NewFolders& operator=(const NewFolders&) = delete;
    ~NewFolders() {
        std::error_code ignored;
        while (!made_.empty()) {
            fs::remove(made_.back(), ignored);
            made_.pop_back();
        }
    }

    Result<void> make(const fs::path& folder) {
        std::error_code error;
        if (folder.empty() || fs::is_directory(folder, error)) {
            return {};
        }
        if (folder.has_parent_path() && folder.parent_path() != folder) {
            if (auto above = make(folder.parent_path()); !above) {
                return above;
            }
        }
        if (fs::create_directory(folder, error)) {
            made_.push_back(folder);
        }
        return error ? systemError(error.value(), folder.string(), "made") : Result<void>();
    }

    void keep() { made_.clear(); }

private:
    std::vector<fs::path> made_;
};

/// A folder that goes with all that is in it unless it has been renamed away.
struct TemporaryFolder {
    explicit TemporaryFolder(fs::path at) : path(std::move(at)) {}
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    fs::path path;
};

Result<void> makeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return error ? systemError(error.value(), folder.string(), "made") : Result<void>();
}

Result<void> copyFile(const fs::path& from, const fs::path& to) {
    const auto bytes = readWhole(from, from.string());
    if (!bytes) {
        return tl::unexpected(bytes.error());
    }
    return createWhole(to, *bytes, to.string(), bytes->starts_with("#!") ? 0777 : 0666);
}

/// Copies the plain files of a folder, and of those in it, whose names end in `ending`.
Result<void> copyFolder(const fs::path& from, const fs::path& to, std::string_view ending) {
    std::error_code error;
    for (fs::recursive_directory_iterator at(from, error); !error && at != fs::recursive_directory_iterator();
         at.increment(error)) {
        const auto target = to / at->path().lexically_relative(from);
        const bool wanted = text::lower(at->path().string()).ends_with(ending);
        auto done = at->is_directory() ? makeFolder(target) : wanted ? copyFile(at->path(), target) : Result<void>();
        if (!done) {
            return done;
        }
    }
    return error ? systemError(error.value(), from.string(), "read") : Result<void>();
}

Result<void> copyIfThere(const fs::path& from, const fs::path& to, std::string_view ending) {
    std::error_code ignored;
    return fs::is_directory(from, ignored) ? copyFolder(from, to, ending) : Result<void>();
}

/// The topics that a person reads first stand in the data directory itself.
Result<void> placeFirstTopics(const fs::path& data) {
    for (const auto* name : {"TESSAREL.TXT", "SYSREQ.TXT"}) {
        const auto topic = data / "tslhelp" / name;
        if (::rename(topic.c_str(), (data / name).c_str()) != 0 && errno != ENOENT) {
            return systemError(errno, topic.string(), "moved");
        }
    }
    return {};
}

Result<void> fill(const fs::path& drive, const fs::path& dataFiles) {
    const auto data = drive / "Tessarel";
    for (const auto& folder : {drive / "WINDOWS" / "SYSTEM", data / "system", data / "datacd", data / "tslhelp"}) {
        if (auto made = makeFolder(folder); !made) {
            return made;
        }
    }
    for (const auto& file : freshFiles()) {
        if (auto written = createWhole(drive / file.path, file.bytes, file.path); !written) {
            return written;
        }
    }
    return copyFolder(dataFiles / "home", drive, "")
        .and_then([&] { return copyIfThere(dataFiles / "cues", data / "system", ".wav"); })
        .and_then([&] { return copyIfThere(dataFiles / "help", data / "tslhelp", ".txt"); })
        .and_then([&] { return placeFirstTopics(data); });
}

void flush(const fs::path& folder) {
    const FileHandle handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle) {
        ::syncfs(handle.get());
    }
}

}  // namespace

fs::path driveCOf(const fs::path& home) { return home / "drive_c"; }

Result<void> provisionHome(const fs::path& home, const fs::path& dataFiles) {
    const auto drive = driveCOf(home);
    struct stat status {};
    if (::lstat(drive.c_str(), &status) == 0) {
        return {};
    }
    NewFolders above;
    if (auto made = above.make(home); !made) {
        return made;
    }
    std::string pattern = (home / ".drive_c.XXXXXX").string();
    if (!::mkdtemp(pattern.data())) {
        return systemError(errno, home.string(), "written");
    }
    const TemporaryFolder temporary(pattern);
    ::chmod(temporary.path.c_str(), 0755);
    if (auto filled = fill(temporary.path, dataFiles); !filled) {
        return filled;
    }
    flush(temporary.path);
    if (::rename(temporary.path.c_str(), drive.c_str()) != 0 && errno != EEXIST && errno != ENOTEMPTY) {
        return systemError(errno, drive.string(), "made");
    }
    above.keep();
    return {};
}

}  // namespace tessarel::host
