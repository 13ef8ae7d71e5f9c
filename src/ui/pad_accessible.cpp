#include "ui/pad_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "ui/widgets/pad.h"

namespace tessarel::ui {
namespace {

class PadInterface : public QAccessibleWidget {
public:
    explicit PadInterface(Pad& pad) : QAccessibleWidget(&pad), pad_(pad) {}

    QAccessible::Role role() const override { return pad_.acts() ? QAccessible::Button : QAccessible::StaticText; }

    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.checkable = pad_.checkable();
        state.checked = pad_.checkable() && pad_.checked();
        return state;
    }

    QStringList actionNames() const override {
        auto names = QAccessibleWidget::actionNames();
        if (pad_.acts() && pad_.isEnabled()) {
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

QAccessibleInterface* padInterface(const QString& /*className*/, QObject* object) {
    auto* pad = dynamic_cast<Pad*>(object);
    return pad == nullptr ? nullptr : new PadInterface(*pad);
}

}  // namespace

void installPadAccessibility() { QAccessible::installFactory(&padInterface); }

}  // namespace tessarel::ui
