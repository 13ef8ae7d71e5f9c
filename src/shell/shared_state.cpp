#include "shell/shared_state.h"

namespace tessarel::shell {

void resetDiscState(SharedState& state) {
    static_cast<LibraryEntry&>(state) = LibraryEntry{};
    state.discKey.clear();
    state.discFingerprint.clear();
    state.discFingerprintShown.clear();
    state.discSearchDormant = 1;
    state.discWindowActive = 0;
    state.autorunDetected = 0;
    state.autoStartDone = 0;
    state.activeDiscKind = 0;
    state.rcolorPending.fill(0);
}

char driveLetter(std::string_view drive) {
    const char first = drive.empty() ? ' ' : drive.front();
    return first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
}

}  // namespace tessarel::shell
