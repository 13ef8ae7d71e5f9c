#pragma once
#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/file_system.h"

namespace tessarel::fakes {

/// Files in memory. Names are found without regard to case, keep the spelling they were first given, and are listed in the
/// order in which they came.
class MemoryFileSystem : public platform::FileSystem {
public:
    struct Drive {
        bool ready = true;
        std::string label;
    };

    /// `clock` dates the files that are written; without it all are of one day.
    explicit MemoryFileSystem(const platform::Scheduler* clock = nullptr) : clock_(clock) {
        for (const auto* folder : {"C:\\WINDOWS\\SYSTEM", "C:\\Tessarel"}) {
            putFolder(folder);
        }
    }

    /// While set, every write (and removal) or read fails so. `failing` names single paths instead.
    std::optional<Fault> failWrites;
    std::optional<Fault> failReads;
    std::map<std::string, Fault> failing;  ///< by whole path in small letters
    mutable int reads = 0;                 ///< calls of `read`
    int writes = 0;                        ///< calls of `write`
    std::vector<std::string> written;      ///< whole paths, in order, of what was written
    std::vector<std::string> removed;      ///< whole paths, in order, of what was removed
    std::vector<std::string> directories;  ///< what `changeDirectory` was asked for, in order

    /// The drive of a letter, made when it is first named.
    Drive& drive(char letter) { return drives_[capital(letter)]; }

    /// Makes or replaces a file, with the folders and the drive that it needs.
    void put(std::string_view path, std::string_view bytes = {}, int attributes = platform::attributeNone) {
        const auto whole = resolve(path);
        drive(whole[0]);
        makeParents(whole);
        store(whole, {whole, std::string(bytes), attributes, today(), 0});
    }
    void putFolder(std::string_view path, int attributes = platform::attributeNone) {
        const auto whole = resolve(path);
        drive(whole[0]);
        makeParents(whole);
        if (whole.size() > 3) {
            store(whole, {whole, {}, attributes | platform::attributeDirectory, today(), 0});
        }
    }
    /// Takes away a drive's files, as when its disc is changed; the drive stays.
    void clear(char letter) {
        std::erase_if(nodes_, [&](const auto& entry) { return capital(entry.second.path[0]) == capital(letter); });
    }
    void setModified(std::string_view path, const platform::WallTime& time) { nodes_.at(key(resolve(path))).modified = time; }

    /// The bytes of a file; a text that no file holds when there is none, so that comparisons fail readably.
    std::string bytes(std::string_view path) const {
        const auto* node = find(path);
        return node == nullptr ? "(no such file)" : node->bytes;
    }
    /// The spelling that a file keeps; empty when there is none.
    std::string spelling(std::string_view path) const {
        const auto* node = find(path);
        return node == nullptr ? std::string() : node->path;
    }

    bool changeDirectory(std::string_view path) override {
        directories.emplace_back(path);
        if (!directoryExists(path)) {
            return false;
        }
        const auto whole = resolve(path);
        const auto* node = find(whole);
        current_ = node == nullptr ? whole : node->path;
        return true;
    }
    std::string currentDirectory() const override { return current_; }

    Result<std::vector<std::string>> list(std::string_view pattern, int attributes) const override {
        const bool wholeFolder = pattern.empty() || pattern.ends_with('\\') || pattern.ends_with(':');
        const auto whole = resolve(pattern);
        if (!isReady(whole[0])) {
            return failure(Fault::notReady, "The drive holds no disc.");
        }
        if (attributes == platform::attributeVolume) {
            const auto& label = drives_.at(capital(whole[0])).label;
            return label.empty() ? std::vector<std::string>() : std::vector<std::string>{label};
        }
        const auto parent = wholeFolder ? whole : parentOf(whole);
        const auto names = wholeFolder ? std::string("*") : text::fileName(whole);
        return matches(parent, names, attributes);
    }

    Result<std::string> read(std::string_view path) const override {
        ++reads;
        if (const auto fault = faultFor(path, failReads)) {
            return failure(*fault, "The file could not be read.");
        }
        const auto* node = find(path);
        if (node == nullptr || (node->attributes & platform::attributeDirectory) != 0) {
            return failure(isReady(resolve(path)[0]) ? Fault::notFound : Fault::notReady, "The file was not found.");
        }
        if (node->bytes.size() > largestFile) {
            return failure(Fault::invalid, "The file is larger than 64 MB.");
        }
        return node->bytes;
    }

    Result<void> write(std::string_view path, std::string_view bytes) override {
        ++writes;
        if (const auto fault = faultFor(path, failWrites)) {
            return failure(*fault, "The file could not be written.");
        }
        const auto whole = resolve(path);
        if (!directoryExists(parentOf(whole)) || directoryExists(whole)) {
            return failure(Fault::notFound, "The folder was not found.");
        }
        const auto* old = find(whole);
        store(whole, {whole, std::string(bytes), old == nullptr ? 0 : old->attributes, today(), 0});
        written.push_back(whole);
        return {};
    }

    Result<void> remove(std::string_view path) override {
        if (const auto fault = faultFor(path, failWrites)) {
            return failure(*fault, "The file could not be removed.");
        }
        if (!exists(path)) {
            return failure(Fault::notFound, "The file was not found.");
        }
        removed.push_back(find(path)->path);
        nodes_.erase(key(resolve(path)));
        return {};
    }

    std::optional<platform::WallTime> modified(std::string_view path) const override {
        const auto* node = find(path);
        return node == nullptr ? std::nullopt : std::optional(node->modified);
    }
    bool exists(std::string_view path) const override {
        const auto* node = path.empty() ? nullptr : find(path);
        return node != nullptr && (node->attributes & platform::attributeDirectory) == 0;
    }
    bool directoryExists(std::string_view path) const override {
        const auto whole = resolve(path);
        if (path.empty() || !isReady(whole[0])) {
            return false;
        }
        const auto* node = find(whole);
        return whole.size() <= 3 || (node != nullptr && (node->attributes & platform::attributeDirectory) != 0);
    }

private:
    struct Node {
        std::string path;
        std::string bytes;
        int attributes = 0;
        platform::WallTime modified;
        int order = 0;
    };

    static constexpr std::size_t largestFile = std::size_t{64} * 1024 * 1024;

    static char capital(char letter) { return static_cast<char>(std::toupper(static_cast<unsigned char>(letter))); }
    static std::string key(std::string_view whole) { return text::lower(whole); }
    static std::string parentOf(const std::string& whole) {
        const auto slash = whole.rfind('\\');
        return slash <= 2 ? whole.substr(0, 3) : whole.substr(0, slash);
    }

    // A path as "X:\a\b", without a back-slash at its end but for a root's.
    std::string resolve(std::string_view path) const {
        std::string whole(path);
        if (whole.size() < 2 || whole[1] != ':') {
            const auto base = whole.starts_with('\\') ? current_.substr(0, 2) : current_ + '\\';
            whole.insert(0, base);
        }
        std::vector<std::string> parts;
        for (std::size_t at = 2; at < whole.size();) {
            const auto end = std::min(whole.find('\\', at), whole.size());
            const auto part = whole.substr(at, end - at);
            if (part == ".." && !parts.empty()) {
                parts.pop_back();
            } else if (!part.empty() && part != "." && part != "..") {
                parts.push_back(part);
            }
            at = end + 1;
        }
        std::string out = {capital(whole[0]), ':'};
        for (const auto& part : parts) {
            out += '\\' + part;
        }
        return parts.empty() ? out + '\\' : out;
    }

    bool isReady(char letter) const {
        const auto it = drives_.find(capital(letter));
        return it != drives_.end() && it->second.ready;
    }
    const Node* find(std::string_view path) const {
        const auto whole = resolve(path);
        const auto it = nodes_.find(key(whole));
        return it == nodes_.end() || !isReady(whole[0]) ? nullptr : &it->second;
    }
    void store(const std::string& whole, Node node) {
        auto& slot = nodes_[key(whole)];
        if (slot.path.empty()) {
            slot = std::move(node);
            slot.order = ++serial_;
        } else {
            node.path = slot.path;
            node.order = slot.order;
            slot = std::move(node);
        }
    }
    void makeParents(const std::string& whole) {
        const auto parent = parentOf(whole);
        if (parent.size() > 3 && !nodes_.contains(key(parent))) {
            makeParents(parent);
            store(parent, {parent, {}, platform::attributeDirectory, today(), 0});
        }
    }
    std::vector<std::string> matches(const std::string& parent, const std::string& names, int attributes) const {
        constexpr int special = platform::attributeHidden | platform::attributeSystem | platform::attributeDirectory;
        std::vector<const Node*> found;
        for (const auto& [k, node] : nodes_) {
            const bool wanted = (node.attributes & special & ~attributes) == 0;
            if (wanted && key(parentOf(node.path)) == key(parent) && text::matchesPattern(text::fileName(node.path), names)) {
                found.push_back(&node);
            }
        }
        std::sort(found.begin(), found.end(), [](const Node* a, const Node* b) { return a->order < b->order; });
        std::vector<std::string> out;
        std::transform(found.begin(), found.end(), std::back_inserter(out),
                       [](const Node* n) { return text::fileName(n->path); });
        return out;
    }
    std::optional<Fault> faultFor(std::string_view path, const std::optional<Fault>& all) const {
        const auto it = failing.find(key(resolve(path)));
        return it == failing.end() ? all : std::optional(it->second);
    }
    platform::WallTime today() const { return clock_ == nullptr ? platform::WallTime{2026, 11, 21, {}} : clock_->wallNow(); }

    const platform::Scheduler* clock_;
    std::map<char, Drive> drives_;
    std::map<std::string, Node> nodes_;
    std::string current_ = "C:\\";
    int serial_ = 0;
};

}  // namespace tessarel::fakes
