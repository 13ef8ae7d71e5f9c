#pragma once
#include <optional>
#include <string>

#include "base/text.h"
#include "library/record_rules.h"
#include "platform/file_system.h"

namespace tessarel::library {

/// Makes the record folder the current directory, and at its end the data directory.
class InRecordFolder {
public:
    InRecordFolder(platform::FileSystem& files, const std::string& dataDir) : files_(files), dataDir_(dataDir) {
        files_.changeDirectory(recordFolder(dataDir_));
    }
    ~InRecordFolder() { files_.changeDirectory(dataDir_); }
    InRecordFolder(const InRecordFolder&) = delete;
    InRecordFolder& operator=(const InRecordFolder&) = delete;

private:
    platform::FileSystem& files_;
    const std::string& dataDir_;
};

/// No record comes near this size; what lies behind it in a broken file is not read.
inline constexpr std::size_t mostRecordBytes = 1 << 20;

/// The text of a file; nothing for one that is missing or can't be read.
inline std::optional<std::string> textOf(const platform::FileSystem& files, const std::string& path) {
    const auto bytes = files.read(path);
    return bytes ? std::optional(text::decode(std::string_view(*bytes).substr(0, mostRecordBytes))) : std::nullopt;
}

}  // namespace tessarel::library
