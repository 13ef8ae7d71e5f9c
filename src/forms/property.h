#pragma once
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tessarel::forms {

/// Keeps a handler attached; destruction detaches it. Safe when the property dies first.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

private:
    std::shared_ptr<void> token_;
};

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
        notify();
    }
    Property& operator=(T value) {
        set(std::move(value));
        return *this;
    }
    friend bool operator==(const Property& p, const T& v) { return p.value_ == v; }

    /// Calls `handler` with the present value at once and with each new one from then on.
    [[nodiscard]] Subscription onChange(std::function<void(const T&)> handler) {
        handler(value_);
        auto token = std::make_shared<std::function<void(const T&)>>(std::move(handler));
        watchers_.push_back(token);
        return Subscription(token);
    }

private:
    void notify() {
        // A handler may attach, detach or set: walk over a copy, and hold each while it runs.
        const auto watchers = watchers_;
        for (const auto& weak : watchers) {
            if (const auto watcher = weak.lock()) {
                (*watcher)(value_);
            }
        }
        std::erase_if(watchers_, [](const auto& weak) { return weak.expired(); });
    }

    T value_{};
    std::vector<std::weak_ptr<std::function<void(const T&)>>> watchers_;
};

}  // namespace tessarel::forms
