#pragma once
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tests/scenarios/machine.h"

namespace tessarel::scenarios {

/// Presses keys of the player at random, changes discs, spoils stored programs, and lets time pass. The same seed gives the
/// same presses.
class Monkey {
public:
    explicit Monkey(unsigned seed);

    /// One thing at random. A program that it ends is started anew.
    void act();
    /// Lets the window follow its device.
    void rest();

    Machine& machine() { return *machine_; }
    /// The last thirty acts, a line each.
    std::string lastActs() const;
    /// What a test of a press looks at.
    std::string whatCouldChange();
    /// What a press that must not act has changed; empty when nothing.
    const std::string& changedByDeadPress() const { return deadPress_; }

private:
    struct Act {
        int weight;
        std::function<std::string(Monkey&)> run;
    };
    static const std::vector<Act>& acts();

    int upTo(int last) { return static_cast<int>(random_() % static_cast<unsigned>(last + 1)); }
    bool oneIn(int n) { return upTo(n - 1) == 0; }
    template <class T>
    const T& oneOf(const std::vector<T>& values) {
        return values.at(static_cast<std::size_t>(upTo(static_cast<int>(values.size()) - 1)));
    }

    void start();
    void setOptions();
    std::shared_ptr<const platform::CdToc> someDisc();
    void putIn(const std::shared_ptr<const platform::CdToc>& disc);
    void takeOut();
    std::string someProgram();
    void onPlayer(const std::function<void(audio::CDForm&)>& press);
    void unlessDead(const std::function<void(audio::CDForm&)>& press);

    std::string transport();
    std::string seekKeyDown();
    std::string seekKeyUp();
    std::string mode();
    std::string function();
    std::string programKey();
    std::string cell();
    std::string keypad();
    std::string bar();
    std::string lamps();
    std::string volume();
    std::string windowKeys();
    std::string list();
    std::string leave();
    std::string waitingWindow();
    std::string disc();
    std::string dropImage();
    std::string storedProgram();
    std::string options();
    std::string wait();

    std::mt19937 random_;
    std::unique_ptr<Machine> machine_;
    std::deque<std::string> done_;
    std::string deadPress_;
    long count_ = 0;
};

}  // namespace tessarel::scenarios
