#pragma once
#include <unistd.h>

#include <utility>

namespace tessarel::host {

/// An open file descriptor, closed when this goes.
class FileHandle {
public:
    explicit FileHandle(int descriptor = -1) : descriptor_(descriptor) {}
    FileHandle(FileHandle&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { close(); }

    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }

    /// False when the system tells of a late write error.
    bool close() { return descriptor_ < 0 || ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

}  // namespace tessarel::host
