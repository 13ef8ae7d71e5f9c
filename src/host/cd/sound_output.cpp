#include "host/cd/sound_output.h"

#include <chrono>
#include <thread>
#include <utility>

namespace tessarel::host {
namespace {

using namespace std::chrono_literals;

constexpr auto settlePatience = 200ms;

}  // namespace

SoundOutput::~SoundOutput() {
    if (!loop_) {
        return;
    }
    if (const Lock lock(*this); lock) {
        for (StreamLevels& line : levels_) {
            line.arrive();
        }
    }
    settle();
    pa_threaded_mainloop_stop(loop_);
    dropStreams();
    dropContext();
    pa_threaded_mainloop_free(loop_);
}

SoundOutput::Lock::Lock(SoundOutput& output) {
    if (output.server() != Server::ready) {
        return;
    }
    pa_threaded_mainloop_lock(output.loop_);
    if (output.server() == Server::ready) {
        loop_ = output.loop_;
    } else {
        pa_threaded_mainloop_unlock(output.loop_);
    }
}

SoundOutput::Lock::~Lock() {
    if (loop_) {
        pa_threaded_mainloop_unlock(loop_);
    }
}

void SoundOutput::connect() {
    Server before = server();
    if (before != Server::untried && before != Server::missing) {
        return;
    }
    if (!server_.compare_exchange_strong(before, Server::connecting)) {
        return;
    }
    if (!startThread()) {
        server_ = Server::missing;
        return;
    }
    pa_threaded_mainloop_lock(loop_);
    pa_mainloop_api_once(pa_threaded_mainloop_get_api(loop_), connectNow, this);
    pa_threaded_mainloop_unlock(loop_);
}

bool SoundOutput::startThread() {
    if (loop_) {
        return true;
    }
    loop_ = pa_threaded_mainloop_new();
    if (!loop_) {
        return false;
    }
    pa_threaded_mainloop_set_name(loop_, "disc-sound");
    if (pa_threaded_mainloop_start(loop_) < 0) {
        pa_threaded_mainloop_free(loop_);
        loop_ = nullptr;
        return false;
    }
    return true;
}

void SoundOutput::connectNow(pa_mainloop_api* api, void* self) {
    auto& output = *static_cast<SoundOutput*>(self);
    output.dropContext();
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Tessarel");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "org.tessarel.Tessarel");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "tessarel");
    output.context_ = pa_context_new_with_proplist(api, "Tessarel", properties);
    pa_proplist_free(properties);
    if (!output.context_) {
        output.missing();
        return;
    }
    pa_context_set_state_callback(output.context_, contextChanged, self);
    if (pa_context_connect(output.context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0 && output.server() != Server::missing) {
        output.missing();
    }
}

void SoundOutput::contextChanged(pa_context* context, void* self) {
    auto& output = *static_cast<SoundOutput*>(self);
    const pa_context_state_t state = pa_context_get_state(context);
    if (state == PA_CONTEXT_READY) {
        output.found();
    } else if (state == PA_CONTEXT_FAILED || state == PA_CONTEXT_TERMINATED) {
        output.missing();
    }
}

void SoundOutput::serverEvent(pa_context*, pa_subscription_event_type_t event, std::uint32_t index, void* self) {
    auto& output = *static_cast<SoundOutput*>(self);
    const bool stream = (event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SINK_INPUT;
    if (!stream) {
        const std::lock_guard hold(output.listenersMutex_);
        for (SoundServerListener* listener : output.listeners_) {
            listener->outputChanged();
        }
    } else if ((event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_CHANGE) {
        for (StreamLevels& line : output.levels_) {
            line.streamChanged(output.handle(), index);
        }
    }
}

void SoundOutput::dropContext() {
    if (context_) {
        pa_context_set_state_callback(context_, nullptr, nullptr);
        pa_context_set_subscribe_callback(context_, nullptr, nullptr);
        pa_context_disconnect(context_);
        pa_context_unref(context_);
        context_ = nullptr;
    }
}

void SoundOutput::dropStreams() {
    partingStreams_.dropAll();
    for (StreamLevels& line : levels_) {
        line.serverGone();
    }
}

void SoundOutput::found() {
    pa_context_set_subscribe_callback(context_, serverEvent, this);
    constexpr auto news = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SINK |
                                                              PA_SUBSCRIPTION_MASK_SERVER);
    if (pa_operation* subscription = pa_context_subscribe(context_, news, nullptr, nullptr)) {
        pa_operation_unref(subscription);
    }
    server_ = Server::ready;
    const std::lock_guard hold(listenersMutex_);
    for (SoundServerListener* listener : listeners_) {
        listener->soundServerFound();
    }
}

void SoundOutput::missing() {
    dropStreams();
    server_ = Server::missing;
    const std::lock_guard hold(listenersMutex_);
    for (SoundServerListener* listener : listeners_) {
        listener->soundServerMissing();
    }
}

void SoundOutput::settle() {
    pa_operation* drain = nullptr;
    if (const Lock lock(*this); lock) {
        drain = pa_context_drain(context_, nullptr, nullptr);
    }
    for (const auto end = std::chrono::steady_clock::now() + settlePatience; drain;) {
        {
            const Lock lock(*this);
            if (pa_operation_get_state(drain) != PA_OPERATION_RUNNING || std::chrono::steady_clock::now() > end) {
                pa_operation_unref(std::exchange(drain, nullptr));
            }
        }
        std::this_thread::sleep_for(1ms);
    }
}

void SoundOutput::addListener(SoundServerListener& listener) {
    const std::lock_guard hold(listenersMutex_);
    listeners_.push_back(&listener);
}

void SoundOutput::removeListener(SoundServerListener& listener) {
    const std::lock_guard hold(listenersMutex_);
    std::erase(listeners_, &listener);
}

}  // namespace tessarel::host
