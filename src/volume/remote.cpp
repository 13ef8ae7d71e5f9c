#include "volume/remote.h"

#include "forms/windows.h"

namespace tessarel::volume {

bool hasDiscLevels(const RemoteState& state, std::int16_t volumeMode) {
    return state.volumeWindowOpen == 1 && state.sourceKind == SourceKind::disc && volumeMode != modes::direct;
}

VolumeState asMono(VolumeState state) {
    state.cdVolumeRight = state.cdVolumeLeft;
    state.muteMemory[1] = state.muteMemory[0];
    state.sliderLastRight = state.sliderLastLeft;
    state.linked = true;
    return state;
}

void openRemote(forms::Windows& windows, RemoteState& state, SourceKind source) {
    if (state.sourceKind != source) {
        windows.unload(Remote::windowName);
    }
    state.sourceKind = source;
    if (auto* waiting = windows.find<Remote>(Remote::windowName)) {
        waiting->standIn();
    }
    windows.show(Remote::windowName);
}

}  // namespace tessarel::volume
