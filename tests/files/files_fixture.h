#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "host/files/drive_table.h"
#include "host/files/real_files.h"

namespace tessarel::host {

namespace fs = std::filesystem;

/// A folder that goes with the test.
struct TempFolder {
    explicit TempFolder(const fs::path& in = fs::temp_directory_path()) {
        std::string pattern = (in / "tessarel-test-XXXXXX").string();
        path = ::mkdtemp(pattern.data());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    fs::path path;
};

inline void put(const fs::path& file, std::string_view bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

inline std::string get(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& each : fs::directory_iterator(folder)) {
        names.push_back(each.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// A disc of which only the table of contents is looked at.
class FakeMedium : public Medium {
public:
    explicit FakeMedium(const std::vector<bool>& audio) {
        int number = 0;
        for (const bool each : audio) {
            toc_.tracks.push_back({number + 1, number * 1000, 1000, each, {}, {}});
            ++number;
        }
        toc_.leadOut = number * 1000;
    }
    const platform::CdToc& toc() const override { return toc_; }
    Result<void> readAudio(Frames, int, std::int16_t*) override { return failure(Fault::failed, "not read here"); }
    Result<void> readData(Frames, int, std::byte*) override { return failure(Fault::failed, "not read here"); }

private:
    platform::CdToc toc_;
};

/// A drive that holds what a test puts into it.
class FakeDiscDrive : public DiscDrive {
public:
    std::shared_ptr<Medium> medium() override { return disc; }
    std::optional<platform::CdOpenFault> acquire(bool shareable) override {
        ++acquired;
        lastShareable = shareable;
        return fault;
    }
    void release() override { ++released; }
    void eject() override {
        ++ejected;
        disc = nullptr;
    }

    std::shared_ptr<Medium> disc;
    std::optional<platform::CdOpenFault> fault;
    bool lastShareable = false;
    int acquired = 0;
    int released = 0;
    int ejected = 0;
};

/// The file system of a data track, in memory. Folders by their path with slashes; "" is the root.
class FakeVolume : public DiscVolume {
public:
    std::string label() const override { return name; }
    Result<std::vector<DiscEntry>> list(std::span<const std::string> folder) const override {
        const auto found = folders.find(joined(folder));
        return found != folders.end() ? Result<std::vector<DiscEntry>>(found->second)
                                      : failure(Fault::notFound, "no such folder");
    }
    Result<std::string> read(std::span<const std::string> file, std::size_t) const override {
        const auto found = files.find(joined(file));
        return found != files.end() ? Result<std::string>(found->second) : failure(Fault::notFound, "no such file");
    }

    std::string name = "LABEL";
    std::map<std::string, std::vector<DiscEntry>> folders;
    std::map<std::string, std::string> files;

private:
    static std::string joined(std::span<const std::string> path) {
        std::string out;
        for (const auto& part : path) {
            out += (out.empty() ? "" : "/") + part;
        }
        return out;
    }
};

/// Drive C: in a folder of its own, two optical drives, D: and E:, and images that are opened by their name: "audio.cue".
class FilesTest : public testing::Test {
protected:
    FilesTest() {
        fs::create_directories(driveC);
        auto first = std::make_unique<FakeDiscDrive>();
        auto second = std::make_unique<FakeDiscDrive>();
        d = first.get();
        e = second.get();
        std::vector<std::unique_ptr<DiscDrive>> real;
        real.push_back(std::move(first));
        real.push_back(std::move(second));
        drives = std::make_unique<DriveTable>(driveC, DriveSources{[&] { return std::move(real); }, openImage()});
        files = std::make_unique<RealFiles>(*drives, [this](const std::shared_ptr<Medium>&, Frames start) {
            ++volumesOpened;
            openedAt = start;
            return volume ? Result<std::shared_ptr<DiscVolume>>(volume) : failure(Fault::invalid, "no file system");
        });
    }

    static std::function<Result<std::shared_ptr<Medium>>(const fs::path&)> openImage() {
        return [](const fs::path& file) -> Result<std::shared_ptr<Medium>> {
            if (file.filename() == "audio.cue") {
                return std::make_shared<FakeMedium>(std::vector<bool>{true, true});
            }
            return failure(Fault::invalid, file.string() + " is no disc image.");
        };
    }

    std::vector<std::string> listed(std::string_view pattern, int attributes = 0) const {
        return files->list(pattern, attributes).value_or(std::vector<std::string>{"(refused)"});
    }
    std::string bytesOf(std::string_view path) const { return files->read(path).value_or("(refused)"); }
    Fault faultOfReading(std::string_view path) const {
        const auto bytes = files->read(path);
        return bytes ? Fault::failed : bytes.error().fault;
    }

    TempFolder temp;
    fs::path driveC = temp.path / "home" / "drive_c";
    FakeDiscDrive* d = nullptr;
    FakeDiscDrive* e = nullptr;
    std::shared_ptr<FakeVolume> volume;
    int volumesOpened = 0;
    Frames openedAt = -1;
    std::unique_ptr<DriveTable> drives;
    std::unique_ptr<RealFiles> files;
};

}  // namespace tessarel::host
