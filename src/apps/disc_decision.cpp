#include "apps/disc_decision.h"

namespace tessarel::apps {

DiscDecision decideDisc(const DiscFeatures& features, const DiscSigns& signs) {
    if (features.cdRomOnly()) {
        return signs.firstEntry == "TRACK01.CDA" ? DiscDecision::wrongKind : DiscDecision::data;
    }
    if (!signs.deviceLoads || (signs.firstEntry.empty() && signs.tracks < 1)) {
        return DiscDecision::noDisc;
    }
    if (signs.firstEntry.ends_with(".CDA") || signs.tracks > 1) {
        return signs.tracks < 1 ? DiscDecision::wrongKind : DiscDecision::audio;
    }
    return features.cdRomEnabled == 0 ? DiscDecision::wrongKind : DiscDecision::data;
}

WaitingLines waitingLines(const DiscFeatures& features) {
    if (features.audioOnly()) {
        return {"Please Insert an Audio CD", "into the Drive..."};
    }
    if (features.cdRomOnly()) {
        return {"Please Insert a CD-ROM", "into the Drive..."};
    }
    return {"Please Insert an Audio CD", "or a CD-ROM into the Drive..."};
}

}  // namespace tessarel::apps
