#include "app/options.h"

#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

namespace tessarel::app {
namespace {

constexpr std::string_view tryHelp = " Try --help.";

tl::unexpected<Error> refusal(std::string message) {
    return failure(Fault::invalid, std::move(message) + std::string(tryHelp));
}

std::string absolute(const std::string& path, const std::string& workingDirectory) {
    return (std::filesystem::path(workingDirectory) / path).lexically_normal().string();
}

std::string defaultHome(const Surroundings& surroundings) {
    // A relative data home is not valid, and passed over.
    if (surroundings.dataHome.starts_with('/')) {
        return surroundings.dataHome + "/tessarel";
    }
    return surroundings.home.empty() ? std::string() : surroundings.home + "/.local/share/tessarel";
}

Result<Insertion> insertion(const std::string& value, const std::string& workingDirectory) {
    const bool lettered = value.size() > 2 && value[1] == '=';
    const char letter = lettered ? static_cast<char>(value[0] & ~0x20) : '\0';
    if (letter < 'A' || letter > 'Z') {
        return refusal("--insert wants a drive letter and a disc image, as in --insert E=disc.cue, not \"" + value + "\".");
    }
    return Insertion{letter, absolute(value.substr(2), workingDirectory)};
}

// Walks over the arguments and fills in the options.
class Reader {
public:
    Reader(const std::vector<std::string>& arguments, const Surroundings& surroundings)
        : arguments_(arguments), surroundings_(surroundings) {}

    Result<Options> read() {
        options_.home = defaultHome(surroundings_);
        for (; next_ < arguments_.size(); ++next_) {
            const auto& argument = arguments_[next_];
            if (argument == "--") {
                options_.words.insert(options_.words.end(), arguments_.begin() + static_cast<long>(next_) + 1,
                                      arguments_.end());
                break;
            }
            if (!argument.starts_with("--")) {
                options_.words.push_back(argument);
            } else if (auto taken = option(argument); !taken) {
                return tl::unexpected(taken.error());
            }
        }
        if (options_.home.empty()) {
            return refusal("There is no home folder to keep things in. Set HOME, or name a folder with --home.");
        }
        return std::move(options_);
    }

private:
    Result<void> option(const std::string& argument) {
        const auto equals = argument.find('=');
        const auto name = argument.substr(0, equals);
        if (name == "--home" || name == "--insert") {
            auto value = valueOf(argument, equals);
            return value ? setValue(name, *value) : tl::unexpected(value.error());
        }
        const std::array<std::pair<std::string_view, bool*>, 3> switches{
            {{"--help", &options_.help}, {"--version", &options_.version}, {"--list-drives", &options_.listDrives}}};
        for (const auto& [known, on] : switches) {
            if (name == known && equals == std::string::npos) {
                *on = true;
                return {};
            }
            if (name == known) {
                return refusal(name + " takes no value.");
            }
        }
        return refusal("There is no option " + name + ".");
    }

    Result<std::string> valueOf(const std::string& argument, std::size_t equals) {
        if (equals == std::string::npos && next_ + 1 < arguments_.size()) {
            return arguments_[++next_];
        }
        auto value = equals == std::string::npos ? std::string() : argument.substr(equals + 1);
        if (value.empty()) {
            return refusal(argument.substr(0, equals) + " wants a value.");
        }
        return value;
    }

    Result<void> setValue(const std::string& name, const std::string& value) {
        if (name == "--home") {
            if (value.empty()) {
                return refusal("--home wants a value.");
            }
            options_.home = absolute(value, surroundings_.workingDirectory);
            return {};
        }
        auto inserted = insertion(value, surroundings_.workingDirectory);
        if (!inserted) {
            return tl::unexpected(inserted.error());
        }
        options_.insertions.push_back(*std::move(inserted));
        return {};
    }

    const std::vector<std::string>& arguments_;
    const Surroundings& surroundings_;
    Options options_;
    std::size_t next_ = 0;
};

}  // namespace

Result<Options> parseOptions(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    return Reader(arguments, surroundings).read();
}

namespace {

int hexDigit(char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    return static_cast<int>(digits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c | 0x20 : c)));
}

// The path in the address of a local file; any other word as it is. Broken escapes stay as they stand.
std::string localPath(const std::string& word) {
    constexpr std::string_view scheme = "file:";
    if (!word.starts_with(scheme)) {
        return word;
    }
    std::string_view rest = std::string_view(word).substr(scheme.size());
    for (const std::string_view host : {"//localhost/", "///"}) {
        rest.remove_prefix(rest.starts_with(host) ? host.size() - 1 : 0);
    }
    std::string path;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const int high = rest[i] == '%' && i + 2 < rest.size() ? hexDigit(rest[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(rest[i + 2]) : -1;
        path += low >= 0 ? static_cast<char>(high * 16 + low) : rest[i];
        i += low >= 0 ? 2 : 0;
    }
    return path;
}

// The disc image that a path stands for; empty for none.
std::string imageOf(const std::string& path, const std::string& real, const FileKnowledge& files) {
    if (!path.empty() && files.isFile(real)) {
        return files.isImage(real) ? real : std::string();
    }
    return path.find('/') != std::string::npos && files.imageIn ? files.imageIn(real) : std::string();
}

}  // namespace

CommandLine commandLine(const std::vector<std::string>& words, const std::string& workingDirectory,
                        const FileKnowledge& files) {
    CommandLine line;
    for (const auto& word : words) {
        if (word.starts_with("cdda:")) {
            line.discInDrive = true;
            continue;
        }
        const auto path = localPath(word);
        const auto real = absolute(path, workingDirectory);
        if (const auto image = imageOf(path, real, files); !image.empty()) {
            line.images.push_back(image);
            continue;
        }
        line.text += line.text.empty() ? "" : " ";
        line.text += !path.empty() && files.isFile(real) ? files.programPath(real) : word;
    }
    return line;
}

std::string helpText() {
    return R"(Usage: tessarel [OPTION...] [FILE | WORD]

Plays audio CDs and disc images.

FILE is a disc image (.cue .toc .nrg .iso .bin .img), which is put into the
first CD-ROM drive and played, a program to start, or the track file of an
audio CD. Its address (file:) will do, too. Further images are put into the
drives behind the first. A folder stands for the first image in it, and cdda:
for the disc that is in the drive.
WORD names the first window: AUDIOCD for the player, CDROMLIB for the window
that waits for a disc, CDLITE for none until there is a disc. Without either,
the settings choose it.

Options:
  --home DIR             keep drive C: and all settings in DIR
                         (default: $XDG_DATA_HOME/tessarel, or else
                         ~/.local/share/tessarel)
  --insert LETTER=IMAGE  put a disc image into the CD-ROM drive of a letter;
                         may be given several times
  --list-drives          print the drives and what is in them, and exit
  --help                 print this text, and exit
  --version              print the version, and exit
  --                     what follows is no option

A value may also follow an equals sign, as in --home=DIR.

Exit status: 0 at a normal end, 1 after a failure, 2 for a wrong option.
)";
}

}  // namespace tessarel::app
