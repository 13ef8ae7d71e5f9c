#include "host/desktop/window_finder.h"

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tessarel::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds patience{500};
constexpr std::uint32_t longestProperty = 16384;  // in units of four bytes

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

// One conversation with the X server, over when the time is.
class Session {
public:
    Session() : connection_(xcb_connect(nullptr, &screenNumber_)), end_(Clock::now() + patience) {}
    ~Session() { xcb_disconnect(connection_); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool alive() const { return xcb_connection_has_error(connection_) == 0; }
    xcb_connection_t* connection() const { return connection_; }

    xcb_window_t root() const {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
        for (int i = 0; i < screenNumber_ && screens.rem > 1; ++i) {
            xcb_screen_next(&screens);
        }
        return screens.rem > 0 ? screens.data->root : XCB_NONE;
    }

    // The answer to a request; null for an error, a lost server and a server that takes too long.
    template <class Reply, class Cookie>
    std::unique_ptr<Reply, Free> answer(Cookie cookie) {
        xcb_flush(connection_);
        while (alive()) {
            void* reply = nullptr;
            xcb_generic_error_t* error = nullptr;
            if (xcb_poll_for_reply(connection_, cookie.sequence, &reply, &error) != 0) {
                std::free(error);
                return std::unique_ptr<Reply, Free>(static_cast<Reply*>(reply));
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now()).count();
            pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
            if (left <= 0 || poll(&readable, 1, static_cast<int>(left)) <= 0) {
                break;
            }
        }
        return nullptr;
    }

    xcb_atom_t atom(std::string_view name) {
        const auto reply = answer<xcb_intern_atom_reply_t>(
            xcb_intern_atom(connection_, 1, static_cast<std::uint16_t>(name.size()), name.data()));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property) const {
        return xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    }

    std::string text(xcb_get_property_cookie_t cookie) {
        const auto reply = answer<xcb_get_property_reply_t>(cookie);
        if (!reply || reply->format != 8) {
            return {};
        }
        const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
        return {static_cast<const char*>(xcb_get_property_value(reply.get())), length};
    }

    std::vector<xcb_window_t> windows() {
        if (const auto list = atom("_NET_CLIENT_LIST"); list != XCB_ATOM_NONE) {
            const auto reply = answer<xcb_get_property_reply_t>(ask(root(), list));
            if (reply && reply->format == 32 && reply->value_len > 0) {
                const auto* first = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
                return {first, first + reply->value_len};
            }
        }
        return withoutManager();
    }

private:
    std::vector<xcb_window_t> withoutManager() {
        const auto reply = answer<xcb_query_tree_reply_t>(xcb_query_tree(connection_, root()));
        if (!reply) {
            return {};
        }
        const auto* first = xcb_query_tree_children(reply.get());
        return {first, first + xcb_query_tree_children_length(reply.get())};
    }

    int screenNumber_ = 0;
    xcb_connection_t* connection_;
    Clock::time_point end_;
};

// The class property holds two texts, each ended by a zero byte.
bool holdsClass(std::string_view property, std::string_view wanted) {
    const auto middle = std::min(property.find('\0'), property.size());
    const auto second = property.substr(std::min(middle + 1, property.size()));
    return property.substr(0, middle) == wanted || second.substr(0, second.find('\0')) == wanted;
}

bool anyHolds(Session& session, const std::vector<xcb_window_t>& windows, xcb_atom_t property,
              const std::function<bool(std::string_view)>& matches) {
    if (property == XCB_ATOM_NONE) {
        return false;
    }
    std::vector<xcb_get_property_cookie_t> questions;
    questions.reserve(windows.size());
    for (const auto window : windows) {
        questions.push_back(session.ask(window, property));
    }
    bool found = false;
    for (const auto& question : questions) {
        found = found || matches(session.text(question));
    }
    return found;
}

}  // namespace

bool findWindow(std::string_view windowClass, std::string_view caption) {
    if (windowClass.empty() && caption.empty()) {
        return false;
    }
    Session session;
    if (!session.alive()) {
        return false;
    }
    const auto windows = session.windows();
    if (!windowClass.empty()) {
        return anyHolds(session, windows, XCB_ATOM_WM_CLASS, [&](auto text) { return holdsClass(text, windowClass); });
    }
    const auto isCaption = [&](std::string_view text) { return text == caption; };
    return anyHolds(session, windows, session.atom("_NET_WM_NAME"), isCaption) ||
           anyHolds(session, windows, XCB_ATOM_WM_NAME, isCaption);
}

}  // namespace tessarel::host
