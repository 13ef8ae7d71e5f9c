#include "host/files/program_path.h"

#include <algorithm>

namespace tessarel::host {
namespace {

constexpr std::size_t longestPath = 4096;
constexpr std::string_view separators = "\\/";

bool isSeparator(char c) { return separators.find(c) != std::string_view::npos; }

void walk(std::vector<std::string>& parts, std::string_view rest) {
    while (!rest.empty()) {
        const auto end = std::min(rest.find_first_of(separators), rest.size());
        const auto part = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.emplace_back(part);
        }
    }
}

}  // namespace

std::optional<char> driveLetter(char c) {
    if (c >= 'a' && c <= 'z') {
        return static_cast<char>(c - 'a' + 'A');
    }
    return c >= 'A' && c <= 'Z' ? std::optional(c) : std::nullopt;
}

bool hasDriveRoot(std::string_view path) {
    return path.size() >= 3 && driveLetter(path[0]) && path[1] == ':' && isSeparator(path[2]);
}

std::string ProgramPath::text() const {
    std::string out = {drive, ':'};
    for (const auto& part : parts) {
        out.append("\\").append(part);
    }
    return parts.empty() ? out + "\\" : out;
}

std::optional<ProgramPath> CurrentDirectories::absolute(std::string_view path) const {
    if (path.size() > longestPath || path.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    ProgramPath out{drive_, {}, false};
    if (path.size() >= 2 && path[1] == ':' && driveLetter(path[0])) {
        out.drive = *driveLetter(path[0]);
        path.remove_prefix(2);
    }
    if (path.empty() || !isSeparator(path[0])) {
        out.parts = directories_.at(indexOf(out.drive));
    }
    walk(out.parts, path);
    const auto last = path.substr(std::min(path.find_last_of(separators) + 1, path.size()));
    out.namesFolder = last.empty() || last == "." || last == ".." || out.parts.empty();
    return out;
}

void CurrentDirectories::move(const ProgramPath& to) {
    drive_ = to.drive;
    directories_.at(indexOf(to.drive)) = to.parts;
}

}  // namespace tessarel::host
