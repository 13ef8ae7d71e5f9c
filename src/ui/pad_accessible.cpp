#include "ui/pad_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "ui/widgets/level_slider.h"
#include "ui/widgets/pad.h"

namespace tessarel::ui {
namespace {

class PadInterface : public QAccessibleWidget {
public:
    explicit PadInterface(Pad& pad) : QAccessibleWidget(&pad), pad_(pad) {}

    QAccessible::Role role() const override {
        return pad_.isGround() ? QAccessible::Grouping : pad_.acts() ? QAccessible::Button : QAccessible::StaticText;
    }

    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.checkable = pad_.checkable();
        state.checked = pad_.checkable() && pad_.checked();
        return state;
    }

    QStringList actionNames() const override {
        auto names = QAccessibleWidget::actionNames();
        if (pad_.acts() && !pad_.isGround() && pad_.isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& action) override {
        if (action == pressAction()) {
            pad_.pressWhole();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }

private:
    Pad& pad_;
};

/// A fader speaks its loudness, which rises while the value falls.
class FaderInterface : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit FaderInterface(LevelSlider& fader) : QAccessibleWidget(&fader, QAccessible::Slider), fader_(fader) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Value ? QString::number(fader_.loudness()) : QAccessibleWidget::text(which);
    }
    QVariant currentValue() const override { return fader_.loudness(); }
    void setCurrentValue(const QVariant& value) override { fader_.setLoudness(value.toInt()); }
    QVariant maximumValue() const override { return LevelSlider::loudest; }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return fader_.singleStep(); }

private:
    LevelSlider& fader_;
};

QAccessibleInterface* padInterface(const QString& /*className*/, QObject* object) {
    if (auto* fader = dynamic_cast<LevelSlider*>(object)) {
        return new FaderInterface(*fader);
    }
    auto* pad = dynamic_cast<Pad*>(object);
    return pad == nullptr ? nullptr : new PadInterface(*pad);
}

}  // namespace

void installPadAccessibility() { QAccessible::installFactory(&padInterface); }

}  // namespace tessarel::ui
