#pragma once
#include <functional>
#include <string>
#include <vector>

#include "base/result.h"

namespace tessarel::app {

/// What the options depend on besides themselves.
struct Surroundings {
    std::string dataHome;          ///< $XDG_DATA_HOME, empty when not set
    std::string home;              ///< $HOME
    std::string workingDirectory;  ///< absolute
};

/// An image to be put into the drive of a letter.
struct Insertion {
    char letter = 'D';  ///< a capital
    std::string image;  ///< absolute real path
    bool operator==(const Insertion&) const = default;
};

/// The options of the host program. What is left over belongs to the program itself.
struct Options {
    std::string home;  ///< absolute real path
    std::vector<Insertion> insertions;
    bool help = false;
    bool version = false;
    bool listDrives = false;
    std::vector<std::string> words;
};

/// Reads the arguments behind the program's name. All that begin with two hyphens are options, up to an argument that is
/// nothing else. An error says what is wrong in one sentence for the user.
Result<Options> parseOptions(const std::vector<std::string>& arguments, const Surroundings& surroundings);

/// The program's own command line, and the discs that a person wants to be opened.
struct CommandLine {
    std::string text;
    std::vector<std::string> images;  ///< absolute real paths
    bool discInDrive = false;         ///< the disc that is in the drive is meant
};

/// What can be told of files; each is asked for absolute real paths.
struct FileKnowledge {
    std::function<bool(const std::string&)> isFile;
    std::function<bool(const std::string&)> isImage;  ///< asked for files only
    std::function<std::string(const std::string&)> programPath;
    std::function<std::string(const std::string&)> imageIn = {};  ///< the first image in a folder; empty for none
};

/// Joins words with blanks to the command line. A word that is the real path of an existing file, absolute or from the working
/// directory on, or the address of one ("file:"), becomes the program's path of it. Taken out instead are disc images, folders
/// with one, given with a slash in their name, and the address of the disc in a drive ("cdda:").
CommandLine commandLine(const std::vector<std::string>& words, const std::string& workingDirectory, const FileKnowledge& files);

/// The answer to --help.
std::string helpText();

}  // namespace tessarel::app
