#pragma once
#include <array>
#include <string>

#include "base/color.h"
#include "shell/shared_state.h"

namespace tessarel::shell {

/// The colour that a settings value means; 0 when it is none.
Color colorOf(const Variant& value);

/// The lit and dim colours of the readouts: the program's own, or made of the user's two.
std::array<Color, 11> panelColorsFor(bool custom, Color fore, Color back);

/// Fills `panelColors` from the settings. With `customColors` 1 the user's colours also go into `displayColors13` 4, 9 and 10
/// and the colours of fonts 0 and 1; two equal ones are first replaced by a pair that can be read.
void fillColorTables(SharedState& state);

/// The font of digits and times.
std::string readoutFont(const SharedState& state);

}  // namespace tessarel::shell
