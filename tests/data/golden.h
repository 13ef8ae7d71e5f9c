#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

/// Files under tests/data, byte for byte.
namespace tessarel::testdata {

inline std::filesystem::path pathOf(std::string_view name) {
    return std::filesystem::path(TESSAREL_SOURCE_DIR) / "tests" / "data" / name;
}

/// The bytes of a file; the test fails when it can't be opened.
inline std::string bytesOf(std::string_view name) {
    std::ifstream file(pathOf(name), std::ios::binary);
    if (!file) {
        ADD_FAILURE() << "can't open " << pathOf(name);
        return {};
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Whether bytes are those of a golden file. If not, they are left beside it under its name with ".actual".
inline testing::AssertionResult matchesGolden(std::string_view name, std::string_view bytes) {
    std::ifstream file(pathOf(name), std::ios::binary);
    const std::string golden{std::istreambuf_iterator<char>(file), {}};
    const auto actualPath = pathOf(name).concat(".actual");
    if (file.is_open() && golden == bytes) {
        std::error_code ignored;
        std::filesystem::remove(actualPath, ignored);
        return testing::AssertionSuccess();
    }
    std::ofstream(actualPath, std::ios::binary) << bytes;
    return testing::AssertionFailure() << (file.is_open() ? "differs from " : "missing: ") << pathOf(name) << ", see "
                                       << actualPath;
}

}  // namespace tessarel::testdata
