#pragma once
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tessarel {

/// Keeps a handler attached; destruction detaches it. Safe when what it is attached to goes first.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

private:
    std::shared_ptr<void> token_;
};

/// Those who want to be told of something, in the order in which they came. For one thread.
template <class... News>
class Watchers {
public:
    using Handler = std::function<void(const News&...)>;

    [[nodiscard]] Subscription add(Handler handler) {
        auto token = std::make_shared<Handler>(std::move(handler));
        handlers_.push_back(token);
        return Subscription(token);
    }

    /// A handler may attach, detach, or tell something else.
    void tell(const News&... news) {
        // Walks over a copy, and holds each handler while it runs.
        const auto handlers = handlers_;
        for (const auto& weak : handlers) {
            if (const auto handler = weak.lock()) {
                (*handler)(news...);
            }
        }
        std::erase_if(handlers_, [](const auto& weak) { return weak.expired(); });
    }

private:
    std::vector<std::weak_ptr<Handler>> handlers_;
};

}  // namespace tessarel
