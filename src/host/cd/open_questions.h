#pragma once
#include <deque>

namespace tessarel::host {

/// Tells the server's answers that are up to date from those that were overtaken by an own change. Answers come in the order
/// of their questions.
class OpenQuestions {
public:
    void changed() { ++changes_; }
    void asked() { asked_.push_back(changes_); }
    /// Whether nothing has been changed since the oldest open question was asked.
    bool current() const { return !asked_.empty() && asked_.front() == changes_; }
    void answered() {
        if (!asked_.empty()) {
            asked_.pop_front();
        }
    }
    void forget() { asked_.clear(); }

private:
    unsigned changes_ = 0;
    std::deque<unsigned> asked_;  ///< `changes_` at each question that is still open
};

}  // namespace tessarel::host
