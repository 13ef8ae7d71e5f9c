// Hard use of the player: random presses with discs coming and going, and after each the rules that always hold.
#include "tests/scenarios/monkey.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/scenarios/player_rules.h"

namespace tessarel::scenarios {
namespace {

int fromEnvironment(const char* name, int otherwise) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nothing sets the environment
    return value == nullptr ? otherwise : std::stoi(value);
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines) {
        text += "  " + line + "\n";
    }
    return text;
}

TEST(Monkey, WhateverIsPressedTheRulesOfThePlayerHold) {
    const auto seed = static_cast<unsigned>(fromEnvironment("TESSAREL_MONKEY_SEED", 20261121));
    const int presses = fromEnvironment("TESSAREL_MONKEY_PRESSES", 1000);
    Monkey monkey(seed);
    for (int press = 1; press <= presses; ++press) {
        monkey.act();
        auto broken = brokenRules(monkey.machine());
        if (!monkey.changedByDeadPress().empty()) {
            broken.push_back("with the drawer open only Eject acts: " + monkey.changedByDeadPress());
        }
        if (broken.empty() && press % 5 == 0) {
            monkey.rest();
            broken = brokenRules(monkey.machine());
            auto atRest = brokenRulesAtRest(monkey.machine());
            for (int again = 0; again < 3 && !atRest.empty(); ++again) {
                monkey.rest();  // a track had just come to its end
                atRest = brokenRulesAtRest(monkey.machine());
            }
            broken.insert(broken.end(), atRest.begin(), atRest.end());
        }
        ASSERT_TRUE(broken.empty()) << "Broken after press " << press << " of seed " << seed << ":\n"
                                    << joined(broken) << "The state: " << monkey.whatCouldChange() << "\nThe last presses:\n"
                                    << monkey.lastActs();
    }
}

}  // namespace
}  // namespace tessarel::scenarios
