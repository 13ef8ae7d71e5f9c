// Colours, contrast, skins and the picture behind a window.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QTest>
#include <algorithm>

#include "tests/ui/sample_forms.h"
#include "ui/standard_views.h"

namespace tessarel::uitest {
namespace {

constexpr int sheen = 18;  // of white, over the upper part of the glass

ui::PanelColors customPanel(Color front, Color back) {
    return {front, 16384, back, front, front, back, back, front, front, back, back};
}

QColor over(const QColor& ground, const QColor& light, double share) { return ui::mixed(ground, light, share); }

using Pairs = std::vector<std::pair<QColor, QColor>>;

void expectReadable(const Pairs& pairs) {
    for (const auto& [text, ground] : pairs) {
        EXPECT_GE(ui::contrast(text, ground), ui::readable)
            << text.name().toStdString() << " on " << ground.name().toStdString();
    }
}

// Not among them, for they tell nothing that can be used now: keys and cells that can't be pressed, and unlit segments.
Pairs textsOnGlass(const ui::GlassColors& glass) {
    const QColor sheened = over(glass.top, Qt::white, sheen / 255.0);
    const QColor litLamp = over(sheened, glass.lit, 0.14);
    return {{glass.lit, sheened}, {glass.lit, glass.bottom}, {glass.soft, sheened},   {glass.soft, glass.bottom},
            {glass.dim, sheened}, {glass.dim, glass.bottom}, {glass.dim, glass.cell}, {glass.lit, glass.cellLit},
            {glass.lit, litLamp}, {glass.ink, glass.lit}};
}

TEST(Colours, OfTheStandardSettingsHaveLooksAndLitIsToldFromDim) {
    const Stage stage;
    EXPECT_TRUE(stage.theme.accent(65280).lit);
    EXPECT_EQ(stage.theme.accent(65280).color, QColor(ui::palette::green));
    EXPECT_EQ(stage.theme.accent(0xFFFF00).color, QColor(ui::palette::cyan));
    EXPECT_EQ(stage.theme.accent(65535).color, QColor(ui::palette::yellow));
    for (const Color dim : {16384U, 16448U, 0x404000U, 0U, 255U}) {
        EXPECT_FALSE(stage.theme.accent(dim).lit) << dim;
    }
}

TEST(Colours, OfTheGlassCanBeRead) {
    const ui::GlassColors glass;
    expectReadable(textsOnGlass(glass));
    const QColor sheened = over(glass.top, Qt::white, sheen / 255.0);
    expectReadable({{ui::palette::yellow, over(sheened, ui::palette::yellow, 0.2)},
                    {ui::palette::cyan, over(sheened, ui::palette::cyan, 0.2)},
                    {ui::palette::mutedRed, sheened}});
}

TEST(Colours, OfADimLampUnderTheMouseCanBeRead) {
    const ui::GlassColors glass;
    const QColor ground = over(over(glass.top, Qt::white, sheen / 255.0), glass.lampHover, glass.lampHover.alphaF());
    EXPECT_GT(glass.lampHover.alpha(), 0);
    expectReadable({{glass.dim, ground}, {ui::palette::mutedRed, ground}});
    for (const Color front : {0x000000U, 0xFFFFFFU, 0x29CF95U, 0x757575U}) {
        const auto own = ui::glassColors(customPanel(front, 0x402010U));
        expectReadable({{own.dim, over(own.bottom, own.lit, own.lampHover.alphaF())}});
    }
}

TEST(Scale, FollowsTheSizeOfTextUpToTwiceAndNeverLeavesTheScreen) {
    const QSizeF player = ui::CdFormView::largestDesign();
    const QSizeF roomy(3840, 2160);
    EXPECT_DOUBLE_EQ(ui::scaleFor(player, 96, roomy), 1);
    EXPECT_DOUBLE_EQ(ui::scaleFor(player, 120, roomy), 1.25);
    EXPECT_DOUBLE_EQ(ui::scaleFor(player, 192, roomy), 2);
    EXPECT_DOUBLE_EQ(ui::scaleFor(player, 384, roomy), 2) << "no more than twice";
    EXPECT_DOUBLE_EQ(ui::scaleFor(player, 72, roomy), 1) << "and no less for small text";
    for (const QSizeF& small : {QSizeF(960, 540), QSizeF(800, 600), QSizeF(1900, 400)}) {
        for (const double dotsPerInch : {96.0, 192.0}) {
            const double scale = ui::scaleFor(player, dotsPerInch, small);
            EXPECT_LE(player.width() * scale, small.width() + 1e-9);
            EXPECT_LE(player.height() * scale, small.height() + 1e-9);
            EXPECT_GE(scale, 0.7);
        }
    }
    EXPECT_EQ(player, QSizeF(1068, 476)) << "the frame of the second skin along";
}

/// The ground that lies under a text of the hidden player's tile.
void expectTileReadable(const ui::Skin& skin) {
    Stage stage(1, skin);
    stage.showTile();
    auto& window = stage.window("ICONmin");
    const QImage shown = picture(window);
    const QPoint origin = window.origin().toPoint();
    for (const int y : {14, 20, 32}) {
        EXPECT_GE(ui::contrast(ui::palette::title, shown.pixelColor(QPoint(284, y) + origin)), ui::readable) << y;
    }
    for (const int y : {38, 46, 52}) {
        EXPECT_GE(ui::contrast(ui::palette::caption, shown.pixelColor(QPoint(284, y) + origin)), ui::readable) << y;
    }
}

TEST(Skins, TheTextsOfTheTileCanBeReadInBoth) {
    expectTileReadable({});
    expectTileReadable({1, true, ""});
}

class HeldDown : public ::testing::Test {
protected:
    bool looksHeld(const char* name) {
        auto& widget = *stage.window("CDForm").findChild<QWidget*>(QString::fromLatin1(name));
        QPixmap before(widget.size());
        before.fill(Qt::transparent);
        widget.render(&before, QPoint(), QRegion(), QWidget::DrawChildren);
        QTest::mousePress(&widget, Qt::LeftButton);
        QPixmap held(widget.size());
        held.fill(Qt::transparent);
        widget.render(&held, QPoint(), QRegion(), QWidget::DrawChildren);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(-9, -9));
        return before.toImage() != held.toImage();
    }

    Stage stage;
    SampleCd& cd = stage.showCd();
};

TEST_F(HeldDown, ShowsOnKeysCellsAndLamps) {
    cd.showPlaying();
    for (const char* name : {"icntla(4)", "Image16(0)", "Image5", "Label22(8)", "Label22(6)", "Label30", "Label26"}) {
        EXPECT_TRUE(looksHeld(name)) << name;
    }
}

TEST_F(HeldDown, DoesNotShowOnWhatCannotBePressed) {
    cd.showPlaying();
    cd.face.icntlb[4].Visible = true;
    cd.face.clearCover.ForeColor = colors::black;
    for (const char* name : {"icntla(4)", "Image16(1)", "Label22(16)"}) {
        EXPECT_FALSE(looksHeld(name)) << name;
    }
}

TEST(Colours, OfTheFaceAndTheKeysCanBeRead) {
    const QColor captionGround(0x3a, 0x3e, 0x45);  // a caption stands in the lower part of its key
    expectReadable({{ui::palette::title, ui::palette::faceTop},
                    {ui::palette::caption, ui::palette::faceTop},
                    {ui::palette::caption, ui::palette::well},
                    {ui::palette::title, ui::palette::well},
                    {ui::palette::keyText, ui::palette::keyTop},
                    {ui::palette::keyText, ui::palette::keyHoverTop},
                    {ui::palette::keyCaption, captionGround},
                    {ui::palette::keyCaption, ui::palette::keyDownBottom},
                    {ui::palette::green, ui::palette::keyDownBottom},
                    {ui::palette::green, ui::palette::keyBottom},
                    {ui::palette::cyan, ui::palette::keyDownBottom},
                    {ui::palette::metalTitle, ui::palette::metalMiddle},
                    {ui::palette::metalCaption, ui::palette::metalMiddle}});
}

TEST(Colours, ThatTheUserChoseLightTheGlass) {
    const Color front = 0x5DF29B;  // 9B F2 5D
    const Color back = 0x402010;
    Stage stage;
    stage.panel = customPanel(front, back);
    EXPECT_TRUE(stage.theme.accent(front).lit);
    EXPECT_EQ(stage.theme.accent(front).color, QColor(0x9B, 0xF2, 0x5D));
    EXPECT_FALSE(stage.theme.accent(back).lit);
    EXPECT_EQ(stage.theme.glass().top, QColor(0x10, 0x20, 0x40)) << "the glass is in the back colour";
}

TEST(Colours, BlackTakenForTheFrontIsLitAndNotDim) {
    Stage stage;
    stage.panel = customPanel(0, 0x29CF95);
    EXPECT_TRUE(stage.theme.accent(0).lit);
    EXPECT_EQ(stage.theme.accent(0).color, QColor(Qt::black));
    EXPECT_FALSE(stage.theme.accent(0x29CF95).lit);
}

TEST(Colours, ThatTheUserChoseCanBeReadWhateverTheyAre) {
    for (const Color front : {0x000000U, 0xFFFFFFU, 0x808080U, 0x0000FFU, 0x00FF00U, 0xFF0000U, 0x29CF95U, 0x757575U}) {
        for (const Color back : {0x29CF95U, 0x000001U, 0xFEFEFEU, 0x7F7F80U, 0xC08040U, 0x0000FEU, 0x204020U}) {
            const auto glass = ui::glassColors(customPanel(front, back));
            SCOPED_TRACE(glass.lit.name().toStdString() + " chosen over " + ui::toQColor(back).name().toStdString());
            expectReadable({{glass.lit, glass.top},
                            {glass.lit, glass.bottom},
                            {glass.soft, glass.cell},
                            {glass.dim, glass.cell},
                            {glass.lit, glass.cellLit},
                            {glass.ink, glass.lit},
                            {glass.keyLit, QColor(ui::palette::keyDownBottom)}});
        }
    }
}

TEST(Skins, AreTakenFromTheSettings) {
    shell::Settings settings;
    EXPECT_EQ(ui::skinOf(settings), (ui::Skin{0, false, ""}));
    settings.skinLayout = 1;
    settings.screwsOn = 1;
    settings.skinImage = "C:\\pictures\\moon.bmp";
    EXPECT_EQ(ui::skinOf(settings), (ui::Skin{1, true, ""})) << "a picture that is not switched on";
    settings.skinImageOn = 2;
    EXPECT_EQ(ui::skinOf(settings), (ui::Skin{1, true, "C:\\pictures\\moon.bmp"}));
    settings.skinLayout = 7;
    EXPECT_EQ(ui::skinOf(settings).layout, 0) << "no such layout";
}

TEST(Skins, TheSecondPutsAFrameAroundTheSameDesign) {
    Stage plain;
    plain.showCd();
    Stage framed(1, {1, true, ""});
    auto& cd = framed.showCd();
    EXPECT_EQ(plain.window("CDForm").size(), QSize(1040, 452));
    EXPECT_EQ(framed.window("CDForm").size(), QSize(1068, 476));
    EXPECT_EQ(cd.Width, 1068 * 15);
    const auto place = [](Stage& stage) {
        auto* play = stage.window("CDForm").findChild<QWidget*>("icntla(2)");
        return QRect(play->mapTo(&stage.window("CDForm"), QPoint()), play->size());
    };
    EXPECT_EQ(place(framed), place(plain).translated(14, 6));
}

TEST(Skins, TheFrameIsLighterThanTheFace) {
    Stage plain;
    plain.showCd();
    Stage framed(1, {1, false, ""});
    framed.showCd();
    const auto light = [](Stage& stage) { return picture(stage.window("CDForm")).pixelColor(6, 200).lightness(); };
    EXPECT_GT(light(framed), light(plain) + 60);
}

TEST(Skins, ScrewsAreThereWhenTheyAreSwitchedOn) {
    const auto corner = [](bool screws) {
        Stage stage(1, {0, screws, ""});
        stage.showCd();
        return picture(stage.window("CDForm")).copy(8, 8, 10, 10);
    };
    EXPECT_NE(corner(true), corner(false));
}

std::string asPng(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

QImage plainPicture(QRgb color) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// A place of the face where nothing lies on it.
const QPoint emptyFace(500, 440);

class PictureBehind : public ::testing::Test {
protected:
    QColor faceWith(const std::string& file) {
        Stage stage(1, {0, false, "C:\\behind.png"});
        if (!file.empty()) {
            stage.files["C:\\behind.png"] = file;
        }
        stage.showCd();
        return picture(stage.window("CDForm")).pixelColor(emptyFace);
    }
    QColor plainFace() {
        Stage stage;
        stage.showCd();
        return picture(stage.window("CDForm")).pixelColor(emptyFace);
    }
};

TEST_F(PictureBehind, IsTheFace) {
    const QColor blue = faceWith(asPng(plainPicture(qRgb(0, 0, 200))));
    EXPECT_GT(blue.blue(), 40);
    EXPECT_LT(blue.red(), 5);
}

TEST_F(PictureBehind, IsDarkEnoughForTheTextsWhateverItShows) {
    for (const QRgb color : {qRgb(255, 255, 255), qRgb(255, 255, 0), qRgb(128, 200, 255)}) {
        const QColor ground = faceWith(asPng(plainPicture(color)));
        EXPECT_GE(ui::contrast(ui::palette::caption, ground), ui::readable) << ground.name().toStdString();
        EXPECT_GE(ui::contrast(ui::palette::title, ground), ui::readable) << ground.name().toStdString();
    }
}

TEST_F(PictureBehind, KeepsItsDarkParts) {
    const QColor ground = faceWith(asPng(plainPicture(qRgb(20, 20, 20))));
    EXPECT_GE(ground.red(), 15);
    EXPECT_LE(ground.red(), 20);
}

TEST_F(PictureBehind, CoversTheFaceFromItsMiddle) {
    QImage halves = plainPicture(qRgb(255, 0, 0));
    QPainter painter(&halves);
    painter.fillRect(0, 20, 40, 20, QColor(0, 0, 255));
    painter.end();
    Stage stage(1, {0, false, "C:\\behind.png"});
    stage.files["C:\\behind.png"] = asPng(halves);
    stage.showCd();
    const QImage shown = picture(stage.window("CDForm"));
    EXPECT_GT(shown.pixelColor(500, 20).red(), 40);
    EXPECT_GT(shown.pixelColor(500, 440).blue(), 40);
    EXPECT_GT(shown.pixelColor(14, 200).red(), 40) << "to the very edges";
}

TEST_F(PictureBehind, ThatIsBrokenOrMissingLeavesThePlainFace) {
    EXPECT_EQ(faceWith("this is no picture"), plainFace());
    EXPECT_EQ(faceWith(asPng(plainPicture(qRgb(9, 9, 99))).substr(0, 40)), plainFace());
    EXPECT_EQ(faceWith(""), plainFace());
}

}  // namespace
}  // namespace tessarel::uitest
