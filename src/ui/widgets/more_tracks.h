#pragma once
#include "ui/widgets/pad.h"

namespace tessarel::ui {

/// The mark behind the track grid of a disc with more tracks than cells. Nothing is to be seen of it otherwise.
class MoreTracks : public LabelPad {
public:
    using LabelPad::LabelPad;

protected:
    void changed() override {
        const bool lit = theme().accent(fore()).lit;
        say(lit ? QStringLiteral("lit") : QStringLiteral("dim"));
        setToolTip(lit ? QStringLiteral("More tracks: use the keypad") : QString());
        update();
    }
    void draw(QPainter& painter) override {
        const auto accent = theme().accent(fore());
        if (accent.lit) {
            theme().paintText(painter, design().center().x(), design().center().y() + 5, QStringLiteral("+"),
                              theme().font(15, QFont::DemiBold), accent.color, Qt::AlignHCenter);
        }
    }
};

}  // namespace tessarel::ui
