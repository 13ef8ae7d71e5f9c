#include "volume/transport.h"

namespace tessarel::volume {

bool isLit(TransportLights lights, int key) {
    return (key == transport::play && lights == TransportLights::playing) ||
           (key == transport::pause && lights == TransportLights::paused);
}

bool isDim(TransportLights lights, int key) {
    const bool running = lights == TransportLights::playing || lights == TransportLights::paused;
    const bool always = key == transport::eject || (key == transport::play && lights != TransportLights::noDisc);
    return !running && !always;
}

}  // namespace tessarel::volume
