#pragma once
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form.h"

namespace tessarel::forms {

/// The program's windows: single instances, addressed by name, loaded on first use.
class Windows {
public:
    using Factory = std::function<std::unique_ptr<Form>(Windows&)>;

    explicit Windows(platform::Scheduler& scheduler) : scheduler_(scheduler) {}
    ~Windows();

    /// Tells how the window of a name is made.
    void declare(std::string name, Factory factory);
    bool knows(std::string_view name) const { return factories_.contains(name); }

    /// Makes a window and runs its `Form_Load`, unless it is loaded. Nothing for a name that is not declared.
    Form* load(std::string_view name);
    /// Loads, shows and activates a window; one that is shown already comes to the front.
    void show(std::string_view name);
    /// Loads and shows a window without taking the keyboard from the one that has it. One that is shown already stays as it
    /// is.
    void showBeside(std::string_view name);
    /// Loads a window and shows it minimised, without activating it. One that is up stays as it is.
    void showMinimised(std::string_view name);
    void hide(std::string_view name);
    /// Runs `Form_Unload`, once, and takes the window away. Its object lives until no handler runs any more.
    void unload(std::string_view name);
    void unloadAll();

    bool isLoaded(std::string_view name) const { return loaded_.contains(name); }
    bool isVisible(std::string_view name) const;
    bool anyVisible() const;
    std::vector<std::string> loadedNames() const;

    /// The loaded window of a name, seen through an interface that its form implements; nullptr otherwise.
    template <class Interface>
    Interface* find(std::string_view name) const {
        const auto it = loaded_.find(name);
        return it == loaded_.end() ? nullptr : dynamic_cast<Interface*>(it->second.get());
    }

    /// For the views: a form has been made (before its `Form_Load`), a form is about to go.
    std::function<void(Form&)> onLoaded;
    std::function<void(Form&)> onUnloaded;

    platform::Scheduler& scheduler() const { return scheduler_; }

private:
    friend class Form;
    struct Depth;

    platform::Scheduler& scheduler_;
    std::map<std::string, Factory, std::less<>> factories_;
    std::map<std::string, std::unique_ptr<Form>, std::less<>> loaded_;
    std::vector<std::unique_ptr<Form>> unloaded_;
    int depth_ = 0;
};

}  // namespace tessarel::forms
