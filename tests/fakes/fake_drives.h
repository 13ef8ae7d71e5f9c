#pragma once
#include <cctype>
#include <map>
#include <optional>
#include <string>

#include "platform/drives.h"

namespace tessarel::fakes {

/// Drives by letter: C fixed and D a CD-ROM drive unless told otherwise.
class FakeDrives : public platform::Drives {
public:
    std::map<char, platform::DriveType> types{{'C', platform::DriveType::fixed}, {'D', platform::DriveType::cdRom}};
    std::map<char, std::string> images;  ///< what was inserted, by letter
    std::optional<Error> refuseImages;
    mutable int typeCalls = 0;

    platform::DriveType type(char letter) const override {
        ++typeCalls;
        const auto it = types.find(capital(letter));
        return it == types.end() ? platform::DriveType::noRoot : it->second;
    }
    Result<void> insertImage(char letter, std::string_view path) override {
        if (refuseImages) {
            return tl::unexpected<Error>(*refuseImages);
        }
        images[capital(letter)] = std::string(path);
        types[capital(letter)] = platform::DriveType::cdRom;
        return {};
    }

private:
    static char capital(char letter) { return static_cast<char>(std::toupper(static_cast<unsigned char>(letter))); }
};

}  // namespace tessarel::fakes
