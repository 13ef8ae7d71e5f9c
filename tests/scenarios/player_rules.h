#pragma once
#include <string>
#include <vector>

#include "tests/scenarios/machine.h"

/// What always holds of the player, whatever has been pressed: the names of the rules that a machine breaks.
namespace tessarel::scenarios {

/// Rules that hold between any two presses.
std::vector<std::string> brokenRules(Machine& machine);

/// Rules that hold once the window has had a moment to follow its device: the pulse and the watch have both run.
std::vector<std::string> brokenRulesAtRest(Machine& machine);

}  // namespace tessarel::scenarios
