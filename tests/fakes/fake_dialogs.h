#pragma once
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/dialogs.h"

namespace tessarel::fakes {

/// Answers questions from scripts and keeps what was asked. Without a script a question is answered No, or cancelled.
class FakeDialogs : public platform::Dialogs {
public:
    std::deque<platform::Answer> answers;  ///< to Yes/No boxes only, in order
    std::deque<std::optional<std::string>> inputAnswers;
    std::deque<std::optional<std::string>> fileAnswers;

    std::vector<platform::MessageBox> boxes;                   ///< all message boxes shown, in order
    std::vector<std::pair<std::string, std::string>> prompts;  ///< title and prompt of each input box
    std::vector<platform::FileDialog> fileDialogs;

    /// Runs while any box is up: for what else happens meanwhile.
    std::function<void()> during;

    platform::Answer message(const platform::MessageBox& box) override {
        boxes.push_back(box);
        runDuring();
        return box.buttons == platform::Buttons::ok ? platform::Answer::ok : next(answers, platform::Answer::no);
    }
    std::optional<std::string> input(const std::string& title, const std::string& prompt) override {
        prompts.emplace_back(title, prompt);
        runDuring();
        return next(inputAnswers, std::optional<std::string>());
    }
    std::optional<std::string> openFile(const platform::FileDialog& dialog) override {
        fileDialogs.push_back(dialog);
        runDuring();
        return next(fileAnswers, std::optional<std::string>());
    }

    /// The text of the last message box; empty when there was none.
    std::string lastText() const { return boxes.empty() ? std::string() : boxes.back().text; }

private:
    template <class T>
    static T next(std::deque<T>& script, T otherwise) {
        if (script.empty()) {
            return otherwise;
        }
        T answer = std::move(script.front());
        script.pop_front();
        return answer;
    }
    void runDuring() {
        if (during) {
            const auto hook = during;
            hook();
        }
    }
};

}  // namespace tessarel::fakes
