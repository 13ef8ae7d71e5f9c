#pragma once
#include <string>
#include <vector>

namespace tessarel::host {

struct FreshFile {
    std::string path;  ///< below drive C:, with slashes
    std::string bytes;
};

/// The settings files and application libraries of a new home.
std::vector<FreshFile> freshFiles();

}  // namespace tessarel::host
