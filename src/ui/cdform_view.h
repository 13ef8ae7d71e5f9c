#pragma once
#include <array>

#include "audio/cdform_face.h"
#include "audio/player_state.h"
#include "library/disc_record.h"
#include "ui/form_window.h"

class QLineEdit;

namespace tessarel::ui {

class FloodBar;
class GlassLabel;
class Key;
class Lamp;
class SegmentDisplay;
class TrackCell;

/// What the view of the Audio CD window shows.
struct CdFormParts {
    forms::Form& form;
    audio::CDFormFace& face;
    const audio::PlayerState& player;
    const library::DiscRecord& record;
    forms::Property<int>& drawerPosition;
    int drawerSteps = 1;
    forms::Property<bool>& expandedDisplay;
    forms::Property<bool>& repeating;
};

/// The Audio CD window on the screen.
class CdFormView : public FormWindow {
public:
    CdFormView(const CdFormParts& parts, const Theme& theme);

    static constexpr double designWidth = 1040;
    static constexpr double designHeight = 452;
    /// With the widest frame that a skin has.
    static QSizeF largestDesign() { return QSizeF(designWidth, designHeight).grownBy(frameOf(1)); }

protected:
    void drawBackground(QPainter& painter) override;

private:
    void addReadout();
    void addLamps();
    void addLines();
    void addBarAndGrid();
    void addFooter();
    void addVolume();
    void addFunctionKeys();
    void addTransport();
    void addModeKeys();
    void addProgramKeys();
    void addTitleKeys();
    void addDrawer();
    void addKeypadEntry();

    Key& key(const QRectF& place, const QString& caption);
    Lamp* lamp(forms::Label& label, const QString& text = {});
    void layReadout();
    void layLines();
    void showCurrentCell();
    void showFooter();

    CdFormParts parts_;
    SegmentDisplay* digits_ = nullptr;
    SegmentDisplay* time_ = nullptr;
    GlassLabel* timeCaption_ = nullptr;
    std::array<Lamp*, 6> lamps_{};
    GlassLabel* upperLine_ = nullptr;
    GlassLabel* lowerLine_ = nullptr;
    GlassLabel* footer_ = nullptr;
    GlassLabel* discId_ = nullptr;
    FloodBar* bar_ = nullptr;
    QLineEdit* entry_ = nullptr;
    std::array<TrackCell*, audio::gridCells> cells_{};
};

/// The line under the track grid: play mode, tracks and total time. Empty without a disc.
QString discSummary(const audio::PlayerState& player);

}  // namespace tessarel::ui
