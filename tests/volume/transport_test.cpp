#include "volume/transport.h"

#include <gtest/gtest.h>

#include <string>

namespace tessarel::volume {
namespace {

// A letter for each key from Previous to Eject: L lit, d dim, - live.
std::string covers(TransportLights lights) {
    std::string text;
    for (int key = 0; key < transport::count; ++key) {
        text += isLit(lights, key) ? (isDim(lights, key) ? '?' : 'L') : isDim(lights, key) ? 'd' : '-';
    }
    return text;
}

TEST(TransportLights, TellTheStateByTheCoversOfTheKeys) {
    EXPECT_EQ(covers(TransportLights::playing), "--L---");
    EXPECT_EQ(covers(TransportLights::paused), "---L--");
    EXPECT_EQ(covers(TransportLights::stopped), "dd-dd-");
    EXPECT_EQ(covers(TransportLights::noDisc), "ddddd-");
}

}  // namespace
}  // namespace tessarel::volume
