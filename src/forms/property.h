#pragma once
#include <functional>
#include <utility>

#include "base/watchers.h"

namespace tessarel::forms {

using tessarel::Subscription;

/// A value that can be watched. Setting an equal value does nothing.
template <class T>
class Property {
public:
    Property() = default;
    explicit Property(T initial) : value_(std::move(initial)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    const T& get() const { return value_; }
    operator const T&() const { return value_; }

    // Kept out of line: g++ 12 takes an inlined comparison of a short text for one of uninitialised bytes.
    [[gnu::noinline]] void set(T value) {
        if (value == value_) {
            return;
        }
        value_ = std::move(value);
        watchers_.tell(value_);
    }
    Property& operator=(T value) {
        set(std::move(value));
        return *this;
    }
    friend bool operator==(const Property& p, const T& v) { return p.value_ == v; }

    /// Calls `handler` with the present value at once and with each new one from then on.
    [[nodiscard]] Subscription onChange(std::function<void(const T&)> handler) {
        handler(value_);
        return watchers_.add(std::move(handler));
    }

private:
    T value_{};
    Watchers<T> watchers_;
};

}  // namespace tessarel::forms
