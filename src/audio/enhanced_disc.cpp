#include "audio/enhanced_disc.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace tessarel::audio {
namespace {

constexpr std::array usualNames{"program.exe", "run.exe", "play.exe", "start.exe", "runme32.exe", "launch.exe"};
constexpr std::string_view openWord = "OPEN=";

std::string withoutLineEnd(std::string_view line) {
    return text::trim(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
}

std::string inRoot(std::string_view root, std::string_view name) {
    return std::string(root) + (root.ends_with('\\') ? "" : "\\") + std::string(name);
}

std::optional<std::string> existing(const platform::FileSystem& files, const std::string& path) {
    return files.exists(path) ? std::optional(path) : std::nullopt;
}

std::optional<std::string> programOfAutorun(const platform::FileSystem& files, std::string_view root) {
    const auto bytes = files.read(inRoot(root, "autorun.inf"));
    if (!bytes) {
        return std::nullopt;
    }
    const auto name = autorunProgram(text::decode(*bytes));
    return name && !name->empty() ? existing(files, inRoot(root, *name)) : std::nullopt;
}

std::optional<std::string> firstProgram(const platform::FileSystem& files, std::string_view root) {
    const auto names = files.list(inRoot(root, "*.exe"), platform::attributeNone);
    if (!names) {
        return std::nullopt;
    }
    const auto found =
        std::find_if(names->begin(), names->end(), [](const auto& name) { return text::upper(name).ends_with("EXE"); });
    return found == names->end() ? std::nullopt : std::optional(inRoot(root, *found));
}

}  // namespace

std::optional<std::string> autorunProgram(std::string_view text) {
    bool open = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = withoutLineEnd(text.substr(0, end));
        const auto capitals = text::upper(line);
        if (open && capitals.starts_with(openWord)) {
            return text::trim(std::string_view(line).substr(openWord.size()));
        }
        open = open || capitals == "[AUTORUN]";
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return std::nullopt;
}

std::optional<std::string> enhancedProgram(const platform::FileSystem& files, std::string_view root) {
    if (auto program = programOfAutorun(files, root)) {
        return program;
    }
    for (const auto* name : usualNames) {
        if (auto program = existing(files, inRoot(root, name))) {
            return program;
        }
    }
    return firstProgram(files, root);
}

}  // namespace tessarel::audio
