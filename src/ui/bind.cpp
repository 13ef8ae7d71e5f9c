#include "ui/bind.h"

#include <QLineEdit>
#include <memory>

#include "ui/enter.h"
#include "ui/widgets/flood_bar.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/level_slider.h"
#include "ui/widgets/pad.h"
#include "ui/widgets/row_list.h"

namespace tessarel::ui {
namespace {

/// A control that may have died.
template <class C>
class Guarded {
public:
    explicit Guarded(C& control) : control_(&control), life_(control.life()) {}
    C* get() const { return life_.expired() ? nullptr : control_; }
    /// Enters the program with the control, if it lives.
    template <class F>
    void enter(F code) const {
        if (get() != nullptr) {
            ui::enter([&] { code(*control_); });
        }
    }

private:
    C* control_;
    std::weak_ptr<const void> life_;
};

/// Keeps subscriptions for a widget that has no place for them.
class Keeper : public QObject {
public:
    using QObject::QObject;
    std::vector<forms::Subscription> held;
};

QString qt(const std::string& text) { return QString::fromStdString(text); }

void name(QWidget& widget, const forms::Control& control) {
    widget.setObjectName(qt(control.name()));
    widget.setAccessibleName(qt(control.spokenName()));
}

template <class Keep>
void bindPresence(QWidget& widget, forms::Control& control, Keep keep) {
    keep(control.Visible.onChange([&widget](bool visible) { widget.setVisible(visible); }));
    keep(control.Enabled.onChange([&widget](bool enabled) { widget.setEnabled(enabled); }));
    keep(control.focusRequests.onChange([&widget, seen = control.focusRequests.get()](int count) {
        if (count != seen) {
            widget.setFocus(Qt::ActiveWindowFocusReason);
        }
    }));
}

template <class Widget>
auto keeping(Widget& widget) {
    return [&widget](forms::Subscription subscription) { widget.keep(std::move(subscription)); };
}

void bindKey(Pad& widget, forms::Control& control) {
    name(widget, control);
    bindGestures(widget, control);
    bindPresence(widget, control, keeping(widget));
    widget.keep(control.ToolTipText.onChange(
        [&widget](const std::string& tip) { widget.setToolTip(tip.empty() ? widget.accessibleName() : qt(tip)); }));
}

bool hasHandler(const forms::Control& control) { return control.Click || control.MouseDown || control.MouseUp; }

}  // namespace

void bindGestures(Pad& widget, forms::Control& control) {
    const Guarded<forms::Control> guarded(control);
    widget.setGestures({
        [guarded](forms::MouseButton button) { guarded.enter([&](forms::Control& c) { c.mouseDown(button); }); },
        [guarded](forms::MouseButton button, bool inside) {
            guarded.enter([&](forms::Control& c) { c.mouseUp(button); });
            if (inside && button == forms::MouseButton::left) {
                guarded.enter([](forms::Control& c) { c.click(); });
            }
        },
        [guarded] { guarded.enter([](forms::Control& c) { c.press(); }); },
        [guarded] { return guarded.get() != nullptr && hasHandler(*guarded.get()); },
    });
}

void bind(LabelPad& widget, forms::Label& label) {
    name(widget, label);
    bindGestures(widget, label);
    bindPresence(widget, label, keeping(widget));
    widget.keep(label.Caption.onChange([&widget](const std::string& text) { widget.setCaption(qt(text)); }));
    widget.keep(label.ForeColor.onChange([&widget](Color color) { widget.setFore(color); }));
    widget.keep(label.BackColor.onChange([&widget](Color color) { widget.setBack(color); }));
    widget.keep(label.FontSize.onChange([&widget](int points) { widget.setFontSize(points); }));
    widget.keep(label.FontName.onChange([&widget](const std::string& font) { widget.setFontName(qt(font)); }));
    widget.keep(label.ToolTipText.onChange([&widget](const std::string& tip) {
        if (auto* line = dynamic_cast<GlassLabel*>(&widget)) {
            line->setPlainTip(qt(tip));
        } else {
            widget.setToolTip(qt(tip));
        }
    }));
}

void bind(Pad& widget, forms::Picture& picture) { bindKey(widget, picture); }
void bind(Pad& widget, forms::Button& button) { bindKey(widget, button); }

void bind(QLineEdit& widget, forms::TextBox& box) {
    auto* keeper = new Keeper(&widget);
    name(widget, box);
    bindPresence(widget, box, [keeper](forms::Subscription s) { keeper->held.push_back(std::move(s)); });
    keeper->held.push_back(box.Text.onChange([&widget](const std::string& text) {
        if (widget.text() != qt(text)) {
            widget.setText(qt(text));
        }
    }));
    const Guarded<forms::TextBox> guarded(box);
    QObject::connect(&widget, &QLineEdit::textEdited, &widget, [guarded](const QString& text) {
        guarded.enter([&](forms::TextBox& b) { b.Text = text.toStdString(); });
    });
    QObject::connect(&widget, &QLineEdit::returnPressed, &widget,
                     [guarded] { guarded.enter([](forms::TextBox& b) { b.enter(); }); });
}

void bind(LevelSlider& widget, forms::Slider& slider) {
    name(widget, slider);
    bindPresence(widget, slider, keeping(widget));
    widget.keep(slider.ToolTipText.onChange([&widget](const std::string& tip) { widget.setToolTip(qt(tip)); }));
    const auto range = [&widget, &slider](int) { widget.showRange(slider.Min, slider.Max); };
    widget.keep(slider.Min.onChange(range));
    widget.keep(slider.Max.onChange(range));
    widget.keep(slider.Value.onChange([&widget](int value) { widget.showValue(value); }));
    const Guarded<forms::Slider> guarded(slider);
    widget.onMoved = [guarded](int value) { guarded.enter([&](forms::Slider& s) { s.moveTo(value); }); };
    widget.onHeld = [guarded](bool down) { guarded.enter([&](forms::Slider& s) { down ? s.mouseDown() : s.mouseUp(); }); };
}

void bind(RowList& widget, forms::ListBox& list) {
    name(widget, list);
    bindPresence(widget, list, keeping(widget));
    widget.keep(list.tabStops.onChange([&widget](const std::vector<int>& stops) { widget.setTabStops(stops); }));
    widget.keep(list.rows.onChange([&widget](const std::vector<std::string>& rows) {
        QStringList shown;
        for (const auto& row : rows) {
            shown.push_back(qt(row));
        }
        widget.setRows(shown);
    }));
    widget.keep(list.ListIndex.onChange([&widget](int row) { widget.setChosen(row); }));
    const auto letters = [&widget, &list](const auto& /*value*/) {
        widget.setLetters({qt(list.FontName), list.FontSize, list.FontBold, list.FontItalic, list.FontUnderline});
    };
    widget.keep(list.FontName.onChange(letters));
    widget.keep(list.FontSize.onChange(letters));
    widget.keep(list.FontBold.onChange(letters));
    widget.keep(list.FontItalic.onChange(letters));
    widget.keep(list.FontUnderline.onChange(letters));
    const auto colours = [&widget, &list](Color) { widget.setColors(list.ForeColor, list.BackColor); };
    widget.keep(list.ForeColor.onChange(colours));
    widget.keep(list.BackColor.onChange(colours));
    const Guarded<forms::ListBox> guarded(list);
    widget.onChosen = [guarded](int row) { guarded.enter([&](forms::ListBox& l) { l.choose(row); }); };
}

void bind(FloodBar& widget, forms::FloodPanel& panel) {
    name(widget, panel);
    bindPresence(widget, panel, keeping(widget));
    widget.keep(panel.FloodPercent.onChange([&widget](int percent) { widget.showPercent(percent); }));
    const Guarded<forms::FloodPanel> guarded(panel);
    widget.onPressed = [guarded](forms::MouseButton button, double share) {
        guarded.enter([&](forms::FloodPanel& p) { p.pressAt(static_cast<float>(share * p.Width), button); });
    };
}

void bindCovers(Key& widget, forms::Picture& base, forms::Picture& lit, forms::Picture& dim) {
    bindKey(widget, base);
    widget.keep(lit.Visible.onChange([&widget](bool on) { widget.setLit(on); }));
    widget.keep(dim.Visible.onChange([&widget](bool on) { widget.setDim(on); }));
}

void bindLight(Key& widget, forms::Picture& key, forms::Picture& light) {
    widget.setCheckable();
    bindKey(widget, key);
    widget.keep(light.Visible.onChange([&widget](bool on) { widget.setLit(on); }));
}

void bindTurns(Key& widget, forms::Picture& off, forms::Picture& on) {
    widget.setCheckable();
    name(widget, off);
    const Guarded<forms::Picture> first(off);
    const Guarded<forms::Picture> second(on);
    const auto shown = [first, second] { return second.get() != nullptr && second.get()->Visible ? second : first; };
    // What was pressed gets the release too, although the two have changed places meanwhile.
    auto held = std::make_shared<Guarded<forms::Picture>>(off);
    widget.setGestures({
        [shown, held](forms::MouseButton button) {
            *held = shown();
            held->enter([&](forms::Picture& p) { p.mouseDown(button); });
        },
        [held](forms::MouseButton button, bool inside) {
            held->enter([&](forms::Picture& p) { p.mouseUp(button); });
            if (inside && button == forms::MouseButton::left) {
                held->enter([](forms::Picture& p) { p.click(); });
            }
        },
        [shown] { shown().enter([](forms::Picture& p) { p.press(); }); },
        [first, second] {
            return (first.get() != nullptr && hasHandler(*first.get())) ||
                   (second.get() != nullptr && hasHandler(*second.get()));
        },
    });
    widget.keep(off.ToolTipText.onChange(
        [&widget](const std::string& tip) { widget.setToolTip(tip.empty() ? widget.accessibleName() : qt(tip)); }));
    const auto presence = [&widget, &off, &on](bool) { widget.setVisible(off.Visible || on.Visible); };
    widget.keep(off.Visible.onChange(presence));
    widget.keep(on.Visible.onChange(presence));
    widget.keep(on.Visible.onChange([&widget](bool lit) { widget.setLit(lit); }));
}

void bindCover(Key& widget, forms::Label& cover) {
    widget.keep(cover.ForeColor.onChange([&widget](Color color) { widget.setDim(color == colors::black); }));
}

}  // namespace tessarel::ui
