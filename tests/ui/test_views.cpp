#include <gmock/gmock.h>

#include <QAccessible>
#include <QDir>
#include <QTest>
#include <cmath>
#include <set>

#include "tests/ui/focus_order.h"
#include "tests/ui/sample_forms.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/segment_display.h"

namespace tessarel::uitest {
namespace {

class EveryView : public ::testing::TestWithParam<double> {
protected:
    EveryView() {
        stage.showCd().showPlaying();
        stage.showWaiting();
        stage.showList();
        stage.showRemote();
        stage.showTile();
        stage.showBacking();
    }
    std::vector<ui::FormWindow*> windows() {
        return {&stage.window("CDForm"),  &stage.window("CD1st"),   &stage.window("aplaylst"),
                &stage.window("VolCntl"), &stage.window("ICONmin"), &stage.window("cdformbg")};
    }

    Stage stage{GetParam()};
};

TEST_P(EveryView, EveryWidgetThatTakesTheFocusHasASpokenName) {
    for (auto* window : windows()) {
        const auto order = tabOrder(*window);
        const bool onlyShows = window->objectName() == "ICONmin" || window->objectName() == "cdformbg";
        EXPECT_EQ(order.empty(), onlyShows);
        for (auto* widget : order) {
            auto* spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(spoken, nullptr);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
        }
    }
}

TEST_P(EveryView, NoTextOfAKeyIsCut) {
    for (auto* window : windows()) {
        for (auto* widget : window->findChildren<QWidget*>()) {
            if (const auto* key = dynamic_cast<ui::Key*>(widget)) {
                EXPECT_TRUE(key->captionFits()) << key->objectName().toStdString();
            }
        }
    }
}

TEST_P(EveryView, NoWidgetReachesBeyondItsWindowOrLiesUnderAnother) {
    for (auto* window : windows()) {
        std::vector<std::pair<QRectF, std::string>> places;
        for (auto* widget : window->findChildren<QWidget*>()) {
            const QRect place(widget->mapTo(window, QPoint(0, 0)), widget->size());
            EXPECT_TRUE(window->rect().contains(place)) << widget->objectName().toStdString();
            if (const auto* pad = dynamic_cast<ui::Pad*>(widget); pad != nullptr && pad->acts() && pad->isVisible() &&
                                                                  pad->parentWidget() == window &&
                                                                  pad->objectName() != "SSPanel1") {
                for (const auto& [other, name] : places) {
                    EXPECT_FALSE(other.intersects(pad->design())) << name << " and " << pad->objectName().toStdString();
                }
                places.emplace_back(pad->design(), pad->objectName().toStdString());
            }
        }
    }
}

TEST_P(EveryView, PicturesOfAllWindowsAreWrittenForThePersonWhoLooks) {
    const QString folder = QStringLiteral(TESSAREL_BINARY_DIR "/screenshots");
    ASSERT_TRUE(QDir().mkpath(folder));
    for (auto* window : windows()) {
        const QImage image = picture(*window);
        EXPECT_EQ(image.size(), window->size());
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "the corners are round";
        EXPECT_EQ(image.pixelColor(image.width() / 2, 10).alpha(), 255);
        const QString name = QStringLiteral("%1/%2-%3.png").arg(folder, window->objectName()).arg(GetParam() * 100);
        EXPECT_TRUE(image.save(name)) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(AtBothScales, EveryView, ::testing::Values(0.9, 1.0, 1.25, 1.5, 2.0), [](const auto& instance) {
    return "Percent" + std::to_string(static_cast<int>(std::lround(instance.param * 100)));
});

TEST(CdFormView, ALongTitleIsElidedAndATipShowsItWhole) {
    Stage stage;
    auto& cd = stage.showCd();
    const std::string title(200, 'W');
    cd.face.upperLine.Caption = title;
    auto* line = dynamic_cast<ui::GlassLabel*>(stage.window("CDForm").findChild<QWidget*>("Label12"));
    ASSERT_NE(line, nullptr);
    EXPECT_FALSE(line->whole());
    EXPECT_TRUE(line->shownText().endsWith(QChar(0x2026)));
    EXPECT_EQ(line->toolTip().toStdString(), title);
    cd.face.upperLine.Caption = std::string("Short");
    EXPECT_TRUE(line->whole());
    EXPECT_TRUE(line->toolTip().isEmpty());
}

TEST(CdFormView, LargerTitleLettersTakeTheirRoomFromTheSameTwoLines) {
    Stage stage;
    auto& cd = stage.showCd();
    auto* upper = dynamic_cast<ui::GlassLabel*>(stage.window("CDForm").findChild<QWidget*>("Label12"));
    auto* lower = dynamic_cast<ui::GlassLabel*>(stage.window("CDForm").findChild<QWidget*>("Label13"));
    for (const int points : {10, 14, 18, 30, 60}) {
        cd.face.upperLine.FontSize = points;
        cd.face.lowerLine.FontSize = points;
        EXPECT_GE(upper->design().top(), 134) << "clear of the digits";
        EXPECT_LE(upper->design().bottom(), lower->design().top() + 0.01);
        EXPECT_LE(lower->design().bottom(), 200) << "clear of the bar";
        EXPECT_LE(lower->textSize() * 1.15, lower->design().height());
    }
    EXPECT_DOUBLE_EQ(upper->askedSize(), 80);
}

TEST(CdFormView, TheExpandedDisplayIsLargerAndNothingOnTheGlassOverlaps) {
    Stage stage;
    auto& cd = stage.showCd();
    cd.showPlaying();
    auto& window = stage.window("CDForm");
    const auto pad = [&](const char* name) {
        return dynamic_cast<ui::LabelPad*>(window.findChild<QWidget*>(QString::fromLatin1(name)));
    };
    const double usual = pad("Label10")->design().height();
    const std::array names{"Label8",  "Label9",  "Label10", "Label14", "Label6", "Label21",
                           "Label16", "Label30", "Label26", "Label12", "Label13"};
    for (const bool expanded : {true, false}) {
        cd.expandedDisplay = expanded;
        for (const int points : {0, 8, 14, 26}) {
            cd.face.upperLine.FontSize = points;
            cd.face.lowerLine.FontSize = points == 0 ? 0 : points - 3;
            for (std::size_t i = 0; i < names.size(); ++i) {
                const QRectF place = pad(names.at(i))->design();
                EXPECT_TRUE(QRectF(52, 60, 668, 141).contains(place)) << names.at(i);
                for (std::size_t j = 0; j < i; ++j) {
                    EXPECT_FALSE(place.intersects(pad(names.at(j))->design())) << names.at(i) << " and " << names.at(j);
                }
            }
        }
        if (expanded) {
            EXPECT_GT(pad("Label10")->design().height(), usual * 1.5);
            EXPECT_TRUE(dynamic_cast<ui::Key*>(window.findChild<QWidget*>("Image20"))->lit());
        }
    }
    EXPECT_EQ(pad("Label10")->design().height(), usual) << "and back again";
}

TEST(CdFormView, TheLineUnderTheGridTellsModeTracksAndTotal) {
    audio::PlayerState player;
    EXPECT_TRUE(ui::discSummary(player).isEmpty());
    player.discTrackCount = 14;
    player.totalTimeText = "64:17";
    EXPECT_EQ(ui::discSummary(player), QString::fromUtf8("Whole disc  ·  14 tracks  ·  total 64:17"));
    player.playMode = audio::programmed;
    player.programCount = 3;
    player.discTrackCount = 1;
    EXPECT_EQ(ui::discSummary(player), QString::fromUtf8("Program of 3  ·  1 track  ·  total 64:17"));
}

TEST(CdFormView, TheDrawerIsToBeSeenOnlyWhileItStandsOpen) {
    Stage stage;
    auto& cd = stage.showCd();
    auto* drawer = stage.window("CDForm").findChild<QWidget*>("Panel3D7");
    ASSERT_NE(drawer, nullptr);
    EXPECT_FALSE(drawer->isVisible());
    cd.drawerPosition = 3;
    EXPECT_TRUE(drawer->isVisible());
    QTest::mouseClick(drawer, Qt::LeftButton);
    EXPECT_EQ(cd.log.back(), "Click Panel3D7");
    cd.drawerPosition = 0;
    EXPECT_FALSE(drawer->isVisible());
}

TEST(CdFormView, WithoutSlidersTheMixerKeyStandsInTheirPlace) {
    Stage stage;
    auto& cd = stage.showCd();
    cd.face.sliderPanel.Visible = false;
    cd.face.mixerButton.Visible = true;
    auto& window = stage.window("CDForm");
    EXPECT_FALSE(window.findChild<QWidget*>("LSlider")->isVisible());
    EXPECT_TRUE(window.findChild<QWidget*>("Command3D16")->isVisible());
}

/// Counts the repaints of a window and of everything in it.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& window) {
        window.installEventFilter(this);
        for (auto* child : window.findChildren<QWidget*>()) {
            child->installEventFilter(this);
        }
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted.insert(watched->objectName().toStdString());
            area = std::max(area, static_cast<QPaintEvent*>(event)->region().boundingRect().width());
        }
        return false;
    }
    std::set<std::string> painted;
    int area = 0;
};

TEST(CdFormView, ATickRepaintsNoMoreThanTheTimeAndAnEqualValueNothing) {
    Stage stage;
    auto& cd = stage.showCd();
    cd.showPlaying();
    auto& window = stage.window("CDForm");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(50);
    PaintCounter counter(window);
    cd.face.timeText.Caption = std::string("02:41");
    cd.face.statusBar.FloodPercent = 48;
    QTest::qWait(20);
    EXPECT_TRUE(counter.painted.empty());
    cd.face.timeText.Caption = std::string("02:42");
    QTest::qWait(20);
    EXPECT_EQ(counter.painted, (std::set<std::string>{"CDForm", "Label10", "Label9"})) << "its glow reaches the caption";
    EXPECT_LE(counter.area, 230);
}

}  // namespace
}  // namespace tessarel::uitest
