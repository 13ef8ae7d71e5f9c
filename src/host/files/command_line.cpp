#include "host/files/command_line.h"

#include <algorithm>

#include "base/text.h"

namespace tessarel::host {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::size_t mostReadings = 64;

std::string_view trimmed(std::string_view s) {
    const auto first = s.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view() : s.substr(first, s.find_last_not_of(blanks) - first + 1);
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string extension(std::string_view name) {
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : text::lower(name.substr(dot + 1));
}

}  // namespace

std::vector<ProgramCall> programCalls(std::string_view commandLine) {
    const auto line = trimmed(commandLine);
    std::vector<ProgramCall> calls;
    if (line.starts_with('"')) {
        const auto close = std::min(line.find('"', 1), line.size());
        calls.push_back(
            {std::string(line.substr(1, close - 1)), std::string(trimmed(line.substr(std::min(close + 1, line.size()))))});
        return calls;
    }
    for (auto end = line.find_first_of(blanks); end != std::string_view::npos && calls.size() < mostReadings;
         end = line.find_first_of(blanks, line.find_first_not_of(blanks, end))) {
        calls.push_back({std::string(line.substr(0, end)), std::string(trimmed(line.substr(end)))});
    }
    if (!line.empty()) {
        calls.push_back({std::string(line), {}});
    }
    return calls;
}

std::vector<std::string> splitArguments(std::string_view arguments) {
    std::vector<std::string> out;
    bool quoted = false;
    bool open = false;
    for (const char c : arguments) {
        if (!quoted && blanks.find(c) != std::string_view::npos) {
            open = false;
            continue;
        }
        if (!open) {
            out.emplace_back();
            open = true;
        }
        if (c == '"') {
            quoted = !quoted;
        } else {
            out.back() += c;
        }
    }
    return out;
}

bool isWebAddress(std::string_view text) {
    const auto colon = text.find(':');
    return colon != std::string_view::npos &&
           isOneOf(text::lower(text.substr(0, colon)), {"http", "https", "ftp", "mailto", "file", "news"});
}

std::size_t newHeaderOffset(std::string_view head) {
    constexpr std::size_t field = 0x3C;
    if (head.size() < field + 4 || !isOneOf(head.substr(0, 2), {"MZ", "ZM"})) {
        return 0;
    }
    std::size_t offset = 0;
    for (std::size_t i = 4; i-- > 0;) {
        offset = offset << 8U | static_cast<unsigned char>(head[field + i]);
    }
    return offset;
}

ProgramKind programKind(std::string_view name, std::string_view head, std::string_view newHeader) {
    if (head.starts_with("#!")) {
        return ProgramKind::script;
    }
    if (head.starts_with("\x7F"
                         "ELF")) {
        return ProgramKind::native;
    }
    if (isOneOf(head.substr(0, 2), {"MZ", "ZM"})) {
        return isOneOf(newHeader, {"PE", "NE"}) ? ProgramKind::windows : ProgramKind::dos;
    }
    const auto kind = extension(name);
    if (isOneOf(kind, {"com", "bat"})) {
        return ProgramKind::dos;
    }
    return kind == "exe" ? ProgramKind::unknown : ProgramKind::document;
}

std::vector<std::string> scriptInterpreter(std::string_view head) {
    auto line = head.substr(0, head.find_first_of("\r\n"));
    line = line.starts_with("#!") ? trimmed(line.substr(2)) : std::string_view();
    if (line.empty()) {
        return {};
    }
    const auto end = std::min(line.find_first_of(blanks), line.size());
    std::vector<std::string> out = {std::string(line.substr(0, end))};
    if (const auto argument = trimmed(line.substr(end)); !argument.empty()) {
        out.emplace_back(argument);
    }
    return out;
}

}  // namespace tessarel::host
