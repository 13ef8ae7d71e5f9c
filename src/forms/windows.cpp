#include "forms/windows.h"

#include <algorithm>

#include "forms/form.h"

namespace tessarel::forms {

// While code of some form runs, unloaded forms are kept alive.
struct Windows::Depth {
    explicit Depth(Windows& w) : windows(w) { ++windows.depth_; }
    ~Depth() {
        if (--windows.depth_ == 0) {
            const auto dead = std::move(windows.unloaded_);
            windows.unloaded_.clear();
        }
    }
    Windows& windows;
};

Form::Form(Windows& windows, std::string name) : windows_(windows), name_(std::move(name)) {}

platform::Scheduler& Form::scheduler() const { return windows_.scheduler(); }

void Form::dispatch(const std::function<void()>& code) {
    if (!loaded_) {
        return;
    }
    const Windows::Depth depth(windows_);
    code();
}

Control* Form::control(std::string_view name) const {
    const auto it = std::find_if(controls_.begin(), controls_.end(), [&](const Control* c) { return c->name() == name; });
    return it == controls_.end() ? nullptr : *it;
}

Windows::~Windows() {
    onUnloaded = nullptr;
    for (auto& [name, form] : loaded_) {
        form->loaded_ = false;
    }
}

void Windows::declare(std::string name, Factory factory) { factories_[std::move(name)] = std::move(factory); }

Form* Windows::load(std::string_view name) {
    if (const auto it = loaded_.find(name); it != loaded_.end()) {
        return it->second.get();
    }
    const auto factory = factories_.find(name);
    if (factory == factories_.end()) {
        return nullptr;
    }
    const Depth depth(*this);
    auto made = factory->second(*this);
    Form& form = *made;
    loaded_[std::string(name)] = std::move(made);
    form.loaded_ = true;
    if (onLoaded) {
        onLoaded(form);
    }
    form.Form_Load();
    if (form.loaded_) {
        std::for_each(form.timers_.begin(), form.timers_.end(), [](Timer* t) { t->arm(); });
    }
    const auto it = loaded_.find(name);
    return it == loaded_.end() ? nullptr : it->second.get();
}

void Windows::show(std::string_view name) {
    const Depth depth(*this);
    Form* form = load(name);
    if (form == nullptr) {
        return;
    }
    form->WindowState = WindowState::normal;
    form->Visible = true;
    form->ZOrder();
    form->dispatch([form] { form->Form_Activate(); });
}

void Windows::showBeside(std::string_view name) {
    const Depth depth(*this);
    Form* form = load(name);
    if (form == nullptr || form->Visible) {
        return;
    }
    form->comesQuietly_ = true;
    form->Visible = true;
    form->comesQuietly_ = false;
    form->dispatch([form] { form->Form_Activate(); });
}

void Windows::showMinimised(std::string_view name) {
    const Depth depth(*this);
    Form* form = load(name);
    if (form != nullptr && !form->Visible) {
        form->WindowState = WindowState::minimised;
        form->Visible = true;
    }
}

void Windows::hide(std::string_view name) {
    if (auto* form = find<Form>(name)) {
        form->Visible = false;
    }
}

void Windows::unload(std::string_view name) {
    const auto it = loaded_.find(name);
    if (it == loaded_.end() || it->second->unloading_) {
        return;
    }
    const Depth depth(*this);
    Form& form = *it->second;
    form.unloading_ = true;
    form.Form_Unload();
    form.Visible = false;
    form.loaded_ = false;
    std::for_each(form.timers_.begin(), form.timers_.end(), [](Timer* t) { t->disarm(); });
    if (onUnloaded) {
        onUnloaded(form);
    }
    unloaded_.push_back(std::move(it->second));
    loaded_.erase(it);
}

void Windows::unloadAll() {
    for (const auto& name : loadedNames()) {
        unload(name);
    }
}

bool Windows::isVisible(std::string_view name) const {
    const auto* form = find<Form>(name);
    return form != nullptr && form->Visible;
}

bool Windows::anyVisible() const {
    return std::any_of(loaded_.begin(), loaded_.end(), [](const auto& entry) { return entry.second->Visible.get(); });
}

std::vector<std::string> Windows::loadedNames() const {
    std::vector<std::string> names;
    for (const auto& [name, form] : loaded_) {
        names.push_back(name);
    }
    return names;
}

}  // namespace tessarel::forms
