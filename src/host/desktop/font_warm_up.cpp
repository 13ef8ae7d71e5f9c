#include "host/desktop/font_warm_up.h"

#include <fontconfig/fontconfig.h>

namespace tessarel::host {

FontWarmUp::FontWarmUp() : thread_([] { FcInit(); }) {}

FontWarmUp::~FontWarmUp() { thread_.join(); }

}  // namespace tessarel::host
