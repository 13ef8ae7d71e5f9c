#pragma once
#include <string>

namespace tessarel::apps {

/// Which kinds of disc the settings let in: 1 for yes and 0 for no. Any other pair of values is neither of the two setups for
/// one kind alone.
struct DiscFeatures {
    int cdRomEnabled = 0;
    int audioCdEnabled = 0;
    bool cdRomOnly() const { return cdRomEnabled == 1 && audioCdEnabled == 0; }
    bool audioOnly() const { return cdRomEnabled == 0 && audioCdEnabled == 1; }
};

/// What a look at the drive has shown.
struct DiscSigns {
    bool deviceLoads = false;  ///< the audio device could be loaded
    int tracks = 0;            ///< as the audio device counts them; 0 for no disc
    std::string firstEntry;    ///< first entry of the root, trimmed, in capitals
};

enum class DiscDecision {
    noDisc,
    audio,
    wrongKind,  ///< a disc that the settings keep out: the lines say what to insert
    data,       ///< a data disc, to be told by its contents
};

/// A disc is audio if its first entry is a track or the audio device counts more than one track, and data otherwise. When the
/// audio device can't be loaded no disc is taken, unless only CD-ROMs are let in: then it is not asked at all.
DiscDecision decideDisc(const DiscFeatures& features, const DiscSigns& signs);

struct WaitingLines {
    std::string first;
    std::string second;
    bool operator==(const WaitingLines&) const = default;
};

/// What the waiting window asks for.
WaitingLines waitingLines(const DiscFeatures& features);

}  // namespace tessarel::apps
