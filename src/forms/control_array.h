#pragma once
#include <deque>
#include <functional>
#include <string>

#include "forms/control.h"

namespace tessarel::forms {

/// Controls that share a designer name and are told apart by an index from 0.
template <class T>
class ControlArray {
public:
    /// `spokenName` gives the name of each element for a screen reader.
    ControlArray(Form& form, const std::string& name, int count, const std::function<std::string(int)>& spokenName) {
        for (int i = 0; i < count; ++i) {
            elements_.emplace_back(form, name + "(" + std::to_string(i) + ")", spokenName(i));
        }
    }
    /// With one spoken name for each element.
    ControlArray(Form& form, const std::string& name, const std::vector<std::string>& spokenNames)
        : ControlArray(form, name, static_cast<int>(spokenNames.size()),
                       [&](int i) { return spokenNames[static_cast<std::size_t>(i)]; }) {}

    T& operator[](int index) { return elements_.at(static_cast<std::size_t>(index)); }
    const T& operator[](int index) const { return elements_.at(static_cast<std::size_t>(index)); }
    int size() const { return static_cast<int>(elements_.size()); }
    auto begin() { return elements_.begin(); }
    auto end() { return elements_.end(); }

private:
    std::deque<T> elements_;
};

}  // namespace tessarel::forms
