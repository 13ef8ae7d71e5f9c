#include <gmock/gmock.h>

#include <QAccessible>
#include <QDir>
#include <QTest>
#include <set>

#include "tests/ui/sample_forms.h"
#include "ui/widgets/glass_label.h"
#include "ui/widgets/key.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/segment_display.h"

namespace tessarel::uitest {
namespace {

std::vector<QWidget*> tabOrder(ui::FormWindow& window) {
    std::vector<QWidget*> order;
    std::set<QWidget*> seen;
    for (QWidget* w = window.nextInFocusChain(); w != &window && seen.insert(w).second; w = w->nextInFocusChain()) {
        if (w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus) != 0) {
            order.push_back(w);
        }
    }
    return order;
}

std::vector<std::string> names(const std::vector<QWidget*>& widgets) {
    std::vector<std::string> out;
    for (const auto* w : widgets) {
        out.push_back(w->objectName().toStdString());
    }
    return out;
}

class EveryView : public ::testing::TestWithParam<double> {
protected:
    EveryView() {
        stage.showCd().showPlaying();
        stage.showWaiting();
    }
    std::vector<ui::FormWindow*> windows() { return {&stage.window("CDForm"), &stage.window("CD1st")}; }

    Stage stage{GetParam()};
};

TEST_P(EveryView, EveryWidgetThatTakesTheFocusHasASpokenName) {
    for (auto* window : windows()) {
        const auto order = tabOrder(*window);
        EXPECT_FALSE(order.empty());
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

INSTANTIATE_TEST_SUITE_P(AtBothScales, EveryView, ::testing::Values(1.0, 1.25, 2.0), [](const auto& instance) {
    return "Percent" + std::to_string(static_cast<int>(instance.param * 100));
});

TEST(CdFormView, TabGoesFromTheTransportThroughTheModesToTheGridAndTheLevels) {
    Stage stage;
    stage.showCd().showPlaying();
    const auto order = names(tabOrder(stage.window("CDForm")));
    const std::vector<std::string> expected{
        "icntla(0)",   "icntla(1)",   "icntla(2)",   "icntla(3)",   "icntla(4)",   "icntla(5)",   "scntla(0)",   "scntla(1)",
        "scntla(2)",   "scntla(3)",   "Image4(0)",   "Image4(1)",   "Image4(2)",   "Image4(3)",   "Image16(0)",  "Image16(1)",
        "Image16(2)",  "Image16(3)",  "Image16(4)",  "Image20",     "SSCommand2",  "Label9",      "Label10",     "Label14",
        "Label6",      "Label30",     "Label26",     "Label12",     "CDStatusBar", "Label22(0)",  "Label22(1)",  "Label22(2)",
        "Label22(3)",  "Label22(4)",  "Label22(5)",  "Label22(6)",  "Label22(7)",  "Label22(8)",  "Label22(9)",  "Label22(10)",
        "Label22(11)", "Label22(12)", "Label22(13)", "Label22(14)", "Label22(15)", "Label22(16)", "Label22(17)", "Label22(18)",
        "Label22(19)", "LSlider",     "RSlider",     "Image2(1)",   "Image9(1)",   "Image19",     "Image10(0)",  "Image10(1)",
        "Image10(2)",  "Image10(3)",  "Command3D14", "Image5"};
    EXPECT_EQ(order, expected);
}

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

TEST(Theme, ColoursOfTheStandardSettingsHaveLooksAndLitIsToldFromDim) {
    const Stage stage;
    EXPECT_TRUE(stage.theme.accent(65280).lit);
    EXPECT_EQ(stage.theme.accent(65280).color, QColor(ui::palette::green));
    EXPECT_EQ(stage.theme.accent(0xFFFF00).color, QColor(ui::palette::cyan));
    EXPECT_EQ(stage.theme.accent(65535).color, QColor(ui::palette::yellow));
    for (const Color dim : {16384U, 16448U, 0x404000U, 0U, 255U}) {
        EXPECT_FALSE(stage.theme.accent(dim).lit) << dim;
    }
}

TEST(Theme, ColoursThatTheUserChoseAreUsedAsTheyAre) {
    Stage stage;
    const Color front = 0x29CF95;
    const Color back = 0xC08040;
    stage.panel = {front, 16384, back, front, front, back, back, front, front, back, back};
    EXPECT_TRUE(stage.theme.accent(front).lit);
    EXPECT_EQ(stage.theme.accent(front).color, QColor(0x95, 0xCF, 0x29));
    EXPECT_FALSE(stage.theme.accent(back).lit);
    EXPECT_EQ(stage.theme.accent(back).color, QColor(0x40, 0x80, 0xC0));
}

TEST(Theme, EverythingThatMustBeReadHasEnoughContrast) {
    const QColor glass(0x0d, 0x14, 0x12);
    const QColor cell(0x0e, 0x1d, 0x16);
    const QColor face(0x34, 0x38, 0x3e);
    const QColor keyTop(0x45, 0x4a, 0x52);
    const QColor keyCaptionGround(0x3a, 0x3e, 0x45);  // a caption stands in the lower part of its key
    const std::vector<std::pair<QColor, QColor>> pairs{{ui::palette::green, glass},
                                                       {ui::palette::cyan, keyTop},
                                                       {ui::palette::yellow, glass},
                                                       {ui::palette::mutedRed, glass},
                                                       {ui::palette::softGreen, glass},
                                                       {ui::palette::glassText, glass},
                                                       {ui::palette::glassText, cell},
                                                       {ui::palette::title, face},
                                                       {ui::palette::caption, face},
                                                       {ui::palette::keyText, keyTop},
                                                       {ui::palette::keyCaption, keyCaptionGround},
                                                       {ui::palette::ink, QColor(ui::palette::green)}};
    for (const auto& [text, ground] : pairs) {
        EXPECT_GE(ui::contrast(text, ground), 4.5) << text.name().toStdString() << " on " << ground.name().toStdString();
    }
}

}  // namespace
}  // namespace tessarel::uitest
