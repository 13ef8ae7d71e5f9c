#pragma once
#include <cstdint>

namespace tessarel::host {

/// How an image file stores the sectors of a track.
enum class SectorForm : std::uint8_t {
    audio,          ///< 2352 bytes of sound
    cooked,         ///< the 2048 bytes of user data alone
    raw,            ///< whole 2352-byte data sectors, whose own header tells their mode
    mode2Headless,  ///< 2336 bytes: a mode 2 sector without synchronisation and header
};

/// Bytes that one sector takes in the file.
constexpr int sectorBytes(SectorForm form) {
    switch (form) {
        case SectorForm::cooked:
            return 2048;
        case SectorForm::mode2Headless:
            return 2336;
        default:
            return 2352;
    }
}

}  // namespace tessarel::host
