#include "audio/device/audio_device.h"

#include <algorithm>
#include <cmath>

#include "base/clock_text.h"
#include "platform/process_end.h"

namespace tessarel::audio {

bool openAudioDevice(MMControl& device, platform::Dialogs& dialogs) {
    device.Command("Open");
    if (device.Error() == deviceError::inUse) {
        dialogs.message({"Attention!",
                         "The MCI CD Device is in use by another application.  Wait until it is finished, and then\n"
                         "try again!"});
        platform::endProcess();
    }
    if (device.Error() != deviceError::notLoaded && !device.CanPlay()) {
        dialogs.message({"Driver Not Installed!",
                         "(MCI)Audio CD Driver is not installed!\n"
                         "Check the Control Panel Settings Under\n"
                         "Drivers for Audio CD Driver installation.\n"});
        platform::endProcess();
    }
    return device.Error() != deviceError::notLoaded;
}

int secondsAtPoint(std::string_view lengthText, float x, float barWidth) {
    if (barWidth <= 0) {
        return 0;
    }
    const double fraction = static_cast<double>(x) / static_cast<double>(barWidth);
    return static_cast<int>(std::clamp(std::nearbyint(fraction * clockSeconds(lengthText)), 0.0, 32767.0));
}

void seekInTrack(MMControl& device, std::string_view lengthText, float x, float barWidth, int currentTrack) {
    const int seconds = secondsAtPoint(lengthText, x, barWidth);
    device.Command("PAUSE");
    device.setTo(seconds % 60 * 65536 + seconds / 60 * 256 + currentTrack);
    device.Command("SEEK");
    device.Command("PLAY");
}

}  // namespace tessarel::audio
