// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "Graphics.h"
#include "StringParams.h"
#include "TextDrawing.h"

namespace {

using TextDrawing::BoxOf;
using TextDrawing::Difference;
using TextDrawing::PlaceOf;
using TextDrawing::Text;

Bitmap Drawn(StringParams params, Bitmap picture, double scale = 1.0) {
    Graphics graphics(picture);
    params.Draw(graphics, scale);
    return picture;
}

Bitmap Grey(int width = 800, int height = 600) {
    return TestPictures::Plain(width, height, 0xFF808080);
}

void ExpectCentreInvariant(const StringParams& params) {
    const double width = params.GetCanvasWidth() > 1 ? params.GetCanvasWidth() : 1;
    const double height = params.GetCanvasHeight() > 1 ? params.GetCanvasHeight() : 1;
    EXPECT_NEAR(params.RelativeCentre().x(), (PlaceOf(params).x() + BoxOf(params).width() / 2) / width, 1e-5);
    EXPECT_NEAR(params.RelativeCentre().y(), (PlaceOf(params).y() + BoxOf(params).height() / 2) / height, 1e-5);
}

}  // namespace

TEST(StringParams, BeginsWithTheKnownValues) {
    const StringParams text;
    EXPECT_EQ(text.GetType(), 7);
    EXPECT_EQ(text.order, 0);
    EXPECT_EQ(text.GetPlacement(), 0);
    EXPECT_EQ(text.GetGridCell(), 4);
    EXPECT_EQ(text.GetAlpha(), 1.0f);
    EXPECT_EQ(text.GetFontSize(), 26.0f);
    EXPECT_EQ(text.GetFontName(), QStringLiteral("Arial"));
    EXPECT_EQ(text.GetColor(), 0u);
    EXPECT_TRUE(text.GetText().isEmpty());
    EXPECT_EQ(BoxOf(text), QSizeF(0, 0));
}

TEST(StringParams, WithoutACanvasEverySetterOfTextAndFontDoesNothing) {
    for (const QSizeF canvas : {QSizeF(0, 0), QSizeF(100, 0), QSizeF(0, 100)}) {
        StringParams text;
        text.SetCanvasSize(static_cast<float>(canvas.width()), static_cast<float>(canvas.height()));
        const StringParams before = text;
        text.SetText(QStringLiteral("a"));
        text.SetFontName(QStringLiteral("DejaVu Serif"));
        text.SetFontSize(60);
        text.SetBold(1);
        text.SetItalic(1);
        text.SetUnderline(1);
        text.SetVertical(1);
        EXPECT_TRUE(text == before);
    }
}

TEST(StringParams, AFontNameLosesItsAtSignsAndAnEmptyOneIsRefused) {
    StringParams text = Text(QStringLiteral("a"));
    text.SetFontName(QStringLiteral("@DejaVu @Serif"));
    EXPECT_EQ(text.GetFontName(), QStringLiteral("DejaVu Serif"));
    text.SetFontName(QStringLiteral("@@"));
    EXPECT_EQ(text.GetFontName(), QStringLiteral("DejaVu Serif"));
}

TEST(StringParams, ACloneCutsTheFractionOfTheFontSizeAndKeepsAllElse) {
    StringParams text = Text(QStringLiteral("Clone\nme"));
    text.SetFontSize(33.75f);
    text.SetPosition(12.5f, -7);
    text.SetAngle(30.5);
    text.SetAlpha(0.25f);
    text.SetColor(0x123456);
    text.SetShadow(1);
    text.SetUnderline(1);
    text.SetTag(9);
    text.SetGridCell(2);
    text.SavePosition();
    text.SetOffset(3, 4);
    text.order = 5;
    const auto clone = text.Clone();
    const auto* copy = RecordAs<StringParams>(*clone);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->GetFontSize(), 33.0f);
    EXPECT_EQ(BoxOf(*copy), BoxOf(text));
    StringParams whole = Text(QStringLiteral("x"));
    whole.SetFontSize(33);
    EXPECT_TRUE(*RecordAs<StringParams>(*whole.Clone()) == whole);
    text.SetText(QStringLiteral("other"));
    EXPECT_EQ(copy->GetText(), QStringLiteral("Clone\nme"));
    EXPECT_EQ(copy->order, 5);
    EXPECT_EQ(copy->GetColor(), 0x123456u);
    EXPECT_EQ(copy->GetTag(), 9);
}

TEST(StringParams, AChangeOfTextOrStyleGrowsTheBoxAboutItsCentre) {
    StringParams text = Text(QStringLiteral("short"));
    text.SetPosition(300, 200);
    const auto centre = [&] { return PlaceOf(text) + QPointF(BoxOf(text).width(), BoxOf(text).height()) / 2; };
    const std::function<void()> changes[] = {[&] { text.SetText(QStringLiteral("much longer than before")); },
                                             [&] { text.SetFontSize(71); },
                                             [&] { text.SetBold(1); },
                                             [&] { text.SetItalic(1); },
                                             [&] { text.SetVertical(1); },
                                             [&] { text.SetFontName(QStringLiteral("DejaVu Serif")); }};
    for (const auto& change : changes) {
        const QPointF before = centre();
        change();
        // The centre is truncated each time.
        EXPECT_LE(std::abs(centre().x() - before.x()), 1.0);
        EXPECT_LE(std::abs(centre().y() - before.y()), 1.0);
        ExpectCentreInvariant(text);
    }
}

TEST(StringParams, AFailedMeasureLeavesTheBox) {
    StringParams text = Text(QStringLiteral("abc"));
    const QSizeF box = BoxOf(text);
    text.SetText({});
    EXPECT_EQ(BoxOf(text), box);
    EXPECT_EQ(Difference(Drawn(text, Grey()), Grey()).count, 0);
}

TEST(StringParams, AnchorsSayWhatStaysInPlace) {
    struct Row {
        int anchor;
        double x, y;
    };
    // A box of 100 x 40 at (10.5, 20) becomes 61 x 70; its truncated centre is (60, 40).
    const Row rows[] = {{0, 29.5, 5}, {1, 10.5, 20}, {2, 29.5, 5},   {3, 29.5, 5},  {4, 29.5, 5},  {5, 29.5, 5},
                        {6, 29.5, 5}, {7, 10.5, 20}, {8, 10.5, -10}, {9, 49.5, 20}, {10, 49.5, 20}};
    for (const Row& row : rows) {
        StringParams text;
        text.SetCanvasSize(400, 300);
        text.SetBoxSize(100, 40, 1);
        text.SetPosition(10.5f, 20);
        text.SetBoxSize(61, 70, row.anchor);
        EXPECT_EQ(PlaceOf(text), QPointF(row.x, row.y)) << row.anchor;
        EXPECT_EQ(BoxOf(text), QSizeF(61, 70));
        ExpectCentreInvariant(text);
    }
}

TEST(StringParams, MinusOneLeavesASideOfTheBox) {
    StringParams text;
    text.SetCanvasSize(400, 300);
    text.SetBoxSize(100, 40, 1);
    text.SetBoxSize(-1, 60, 1);
    EXPECT_EQ(BoxOf(text), QSizeF(100, 60));
    text.SetBoxSize(50, -1, 1);
    EXPECT_EQ(BoxOf(text), QSizeF(50, 60));
}

TEST(StringParams, TheNineGridKeepsTwoPixelsFromTheEdge) {
    StringParams text;
    text.SetCanvasSize(400, 300);
    text.SetBoxSize(100, 40, 1);
    const QPointF places[] = {{2, 2},     {150, 2}, {298, 2},   {2, 130},  {150, 130},
                              {298, 130}, {2, 258}, {150, 258}, {298, 258}};
    for (int cell = 0; cell < 9; ++cell) {
        text.SetPosition(7, 7);
        text.SetGridCell(cell);
        EXPECT_EQ(PlaceOf(text), QPointF(7, 7)) << "a cell alone places nothing";
        text.SetPlacement(StringParams::NineGrid);
        EXPECT_EQ(PlaceOf(text), places[cell]) << cell;
        ExpectCentreInvariant(text);
    }
    text.SetPosition(7, 9);
    text.SetGridCell(9);
    text.SetPlacement(StringParams::NineGrid);
    EXPECT_EQ(PlaceOf(text), QPointF(7, 9));
}

TEST(StringParams, InTheNineGridATextIsDrawnInItsCellWhereverItWasPut) {
    StringParams text = Text(QStringLiteral("Grid"));
    text.SetGridCell(8);
    text.SetPlacement(StringParams::NineGrid);
    const Bitmap once = Drawn(text, Grey());
    text.SetPosition(0, 0);
    EXPECT_TRUE(Drawn(text, Grey()) == once);
    Bitmap picture = Grey();
    Graphics graphics(picture);
    text.Draw(graphics, 1.0);
    EXPECT_EQ(PlaceOf(text), QPointF(800 - BoxOf(text).width() - 2, 600 - BoxOf(text).height() - 2));
}

TEST(StringParams, AnotherCanvasTakesTheTextAlong) {
    for (const QSize canvas :
         {QSize(1600, 1200), QSize(400, 300), QSize(1600, 600), QSize(800, 1200), QSize(200, 50)}) {
        StringParams text = Text(QStringLiteral("Along"));
        text.SetPosition(500, 100);
        const QPointF relative = text.RelativeCentre();
        const double ratio = std::min(canvas.width(), canvas.height()) / 600.0;
        text.SetCanvasSize(static_cast<float>(canvas.width()), static_cast<float>(canvas.height()));
        EXPECT_NEAR(text.GetFontSize(), std::max(1.0, 40 * ratio), 1e-3);
        const QPointF centre = PlaceOf(text) + QPointF(BoxOf(text).width(), BoxOf(text).height()) / 2;
        // A fit truncates the centre to a whole pixel of the former picture.
        EXPECT_NEAR(centre.x(), relative.x() * canvas.width(), 1.0 * canvas.width() / 800 + 0.01);
        EXPECT_NEAR(centre.y(), relative.y() * canvas.height(), 1.0 * canvas.height() / 600 + 0.01);
    }
}

TEST(StringParams, AnotherCanvasPlacesTheNineGridAnew) {
    StringParams text = Text(QStringLiteral("Grid"));
    text.SetGridCell(5);
    text.SetPlacement(StringParams::NineGrid);
    text.SetCanvasSize(1000, 900);
    EXPECT_EQ(PlaceOf(text).x(), 1000 - BoxOf(text).width() - 2);
    EXPECT_FLOAT_EQ(static_cast<float>(PlaceOf(text).y()), static_cast<float>((900 - BoxOf(text).height()) / 2));
}

TEST(StringParams, TheCentreIsAFractionOfOneWhereThePictureIsNoLargerThanOne) {
    StringParams text;
    text.SetCanvasSize(1, 0.5f);
    text.SetBoxSize(10, 20, 1);
    text.SetPosition(5, 6);
    EXPECT_EQ(text.RelativeCentre(), QPointF(10, 16));
}

TEST(StringParams, SavingThePositionKeepsItAside) {
    StringParams text;
    float x = 1, y = 1;
    text.GetSavedPosition(&x, &y);
    EXPECT_EQ(QPointF(x, y), QPointF(0, 0));
    text.SetPosition(3, 4);
    text.SavePosition();
    text.SetPosition(5, 6);
    text.GetSavedPosition(&x, &y);
    EXPECT_EQ(QPointF(x, y), QPointF(3, 4));
}

TEST(StringParams, TheFontSizeNeverFallsBelowOneNorTheBoxGrowsBeyondItsLimit) {
    StringParams text = Text(QStringLiteral("Limits"));
    text.SetFontSize(0);
    EXPECT_EQ(text.GetFontSize(), 1.0f);
    text.SetFontSize(-5);
    EXPECT_EQ(text.GetFontSize(), 1.0f);
    text.SetFontSize(1e6f);
    EXPECT_LE(BoxOf(text).width(), StringParams::MostBoxSide);
    EXPECT_GT(BoxOf(text).width(), StringParams::MostBoxSide * 0.99);
    text.SetText(QStringLiteral("Limits of a text that is longer"));
    EXPECT_LE(BoxOf(text).width(), StringParams::MostBoxSide);
    EXPECT_GE(text.GetFontSize(), 1.0f);
}

// ---- drawing

TEST(StringParams, ATextIsDrawnInsideItsBox) {
    for (const int vertical : {0, 1}) {
        StringParams text = Text(QStringLiteral("Jumping fox, ÅÇ\nsecond line"), 60);
        text.SetItalic(1);
        text.SetVertical(vertical);
        text.SetColor(0xFFFFFF);
        text.SetPosition(60, 20);
        const auto changed = Difference(Drawn(text, Grey()), Grey());
        EXPECT_GT(changed.count, 1000);
        const QRect box(60, 20, static_cast<int>(BoxOf(text).width()) + 1, static_cast<int>(BoxOf(text).height()) + 1);
        EXPECT_TRUE(box.contains(changed.around)) << vertical;
    }
}

TEST(StringParams, ColourAndAlphaAreThoseOfTheText) {
    StringParams text = Text(QStringLiteral("█"), 100);
    text.SetPosition(100, 100);
    text.SetColor(0x20B8F1);
    const QPoint middle = (PlaceOf(text) + QPointF(BoxOf(text).width(), BoxOf(text).height()) / 2).toPoint();
    EXPECT_EQ(TestPictures::PixelAt(Drawn(text, Grey()), middle.x(), middle.y()), 0xFF20B8F1u);
    text.SetAlpha(0.5f);
    const std::uint32_t half = TestPictures::PixelAt(Drawn(text, Grey()), middle.x(), middle.y());
    // trunc(0.5 * 255) = 127 of 255.
    EXPECT_NEAR(static_cast<int>(half >> 16 & 0xFF), (0x20 * 127 + 0x80 * 128) / 255.0, 1.5);
    EXPECT_NEAR(static_cast<int>(half & 0xFF), (0xF1 * 127 + 0x80 * 128) / 255.0, 1.5);
    text.SetAlpha(0);
    EXPECT_EQ(Difference(Drawn(text, Grey()), Grey()).count, 0);
}

TEST(StringParams, TheShadowIsHalfAsStrongAndFallsWithTheFontSize) {
    for (const float size : {60.0f, 120.0f}) {
        StringParams text = Text(QStringLiteral("█"), size);
        text.SetPosition(100, 100);
        text.SetColor(0xFFFFFF);
        const auto plain = Difference(Drawn(text, Grey()), Grey());
        text.SetShadow(1);
        const Bitmap drawn = Drawn(text, Grey());
        const auto shadowed = Difference(drawn, Grey());
        EXPECT_NEAR(shadowed.around.right() - plain.around.right(), size / 60 * 3.0, 1.0);
        EXPECT_NEAR(shadowed.around.bottom() - plain.around.bottom(), size / 60 * 2.5, 1.0);
        const std::uint32_t shadow = TestPictures::PixelAt(drawn, plain.around.right() + 2, plain.around.center().y());
        EXPECT_NEAR(static_cast<int>(shadow & 0xFF), 0x80 * 127 / 255.0, 2.0);
    }
}

TEST(StringParams, APieceOfTextNeverShowsThroughAnother) {
    // The lines of an underlined text cross its descenders.
    StringParams text = Text(QStringLiteral("gjpqy"), 100);
    text.SetUnderline(1);
    text.SetAlpha(0.5f);
    text.SetColor(0);
    text.SetPosition(50, 50);
    const Bitmap drawn = Drawn(text, Grey());
    int darkest = 255;
    for (int y = 0; y < drawn.Height(); ++y)
        for (int x = 0; x < drawn.Width(); ++x)
            darkest = std::min(darkest, static_cast<int>(TestPictures::PixelAt(drawn, x, y) & 0xFF));
    EXPECT_NEAR(darkest, 0x80 * 128 / 255.0, 2.0);
}

TEST(StringParams, ATurnedTextStandsAboutItsCentre) {
    StringParams text = Text(QStringLiteral("HHHH"), 60);
    text.SetPosition(300, 250);
    const QPointF centre = PlaceOf(text) + QPointF(BoxOf(text).width(), BoxOf(text).height()) / 2;
    const QRect flat = Difference(Drawn(text, Grey()), Grey()).around;
    text.SetAngle(90);
    const QRect turned = Difference(Drawn(text, Grey()), Grey()).around;
    EXPECT_NEAR(turned.width(), flat.height(), 2);
    EXPECT_NEAR(turned.height(), flat.width(), 2);
    const QPointF by = QPointF(flat.center()) - centre;
    // Clockwise by 90 degrees: (x, y) goes to (-y, x).
    EXPECT_NEAR(turned.center().x(), centre.x() - by.y(), 1.5);
    EXPECT_NEAR(turned.center().y(), centre.y() + by.x(), 1.5);
}

TEST(StringParams, OffsetAndScalePlaceTheTextOnTheSurface) {
    StringParams text = Text(QStringLiteral("Scale"), 40);
    text.SetPosition(100, 80);
    const QRect plain = Difference(Drawn(text, Grey()), Grey()).around;
    text.SetOffset(30, -20);
    const QRect moved = Difference(Drawn(text, Grey()), Grey()).around;
    EXPECT_EQ(moved, plain.translated(30, -20));
    text.SetOffset(0, 0);
    const QRect halved = Difference(Drawn(text, Grey(), 0.5), Grey()).around;
    EXPECT_NEAR(halved.x(), plain.x() / 2.0, 1);
    EXPECT_NEAR(halved.right(), plain.right() / 2.0, 1);
    EXPECT_NEAR(halved.bottom(), plain.bottom() / 2.0, 1);
}

TEST(StringParams, TheResolutionOfTheScreenTakesNoPart) {
    StringParams text = Text(QStringLiteral("Dots per inch"), 50);
    text.SetPosition(20, 30);
    QImage fine(800, 600, QImage::Format_RGB32);
    fine.fill(0xFF808080);
    fine.setDotsPerMeterX(20000);
    fine.setDotsPerMeterY(20000);
    {
        QPainter painter(&fine);
        Graphics graphics(painter);
        text.Draw(graphics, 1.0);
    }
    const Bitmap drawn = Drawn(text, Grey());
    for (int y = 0; y < 600; ++y)
        for (int x = 0; x < 800; ++x) ASSERT_EQ(TestPictures::PixelAt(drawn, x, y), fine.pixel(x, y)) << x << "," << y;
}

// ---- tiles

TEST(StringParams, TilesBeginAtTheBoxAndRepeatAtItsSize) {
    StringParams text = Text(QStringLiteral("Ab"), 40);
    text.SetPosition(130, 90);
    text.SetColor(0xFF0000);
    text.SetPlacement(StringParams::Tiled);
    const Bitmap drawn = Drawn(text, Grey());
    const int width = static_cast<int>(BoxOf(text).width()), height = static_cast<int>(BoxOf(text).height());
    for (int y = height; y < 600 - height; y += 7)
        for (int x = width; x < 800 - width; x += 7) {
            EXPECT_EQ(TestPictures::PixelAt(drawn, x, y), TestPictures::PixelAt(drawn, x + width, y));
            EXPECT_EQ(TestPictures::PixelAt(drawn, x, y), TestPictures::PixelAt(drawn, x, y + height));
        }
    // The tile at the box is the text itself.
    text.SetPlacement(StringParams::Custom);
    const Bitmap once = Drawn(text, Grey());
    int differing = 0;
    for (int y = 90; y < 90 + height; ++y)
        for (int x = 130; x < 130 + width; ++x)
            for (int shift : {0, 8, 16})
                differing += std::abs(static_cast<int>(TestPictures::PixelAt(once, x, y) >> shift & 0xFF) -
                                      static_cast<int>(TestPictures::PixelAt(drawn, x, y) >> shift & 0xFF)) > 3;
    EXPECT_EQ(differing, 0);
}

TEST(StringParams, TilesTurnAboutThePicturesMiddle) {
    StringParams text = Text(QStringLiteral("Ab"), 40, {600, 600});
    text.SetPosition(300 - 70, 300 - 33);
    text.SetPlacement(StringParams::Tiled);
    const Bitmap flat = Drawn(text, Grey(600, 600));
    text.SetAngle(180);
    const Bitmap turned = Drawn(text, Grey(600, 600));
    int differing = 0;
    for (int y = 1; y < 599; ++y)
        for (int x = 1; x < 599; ++x)
            differing += std::abs(static_cast<int>(TestPictures::PixelAt(flat, x, y) & 0xFF) -
                                  static_cast<int>(TestPictures::PixelAt(turned, 599 - x, 599 - y) & 0xFF)) > 8;
    EXPECT_LT(differing, 600 * 600 / 1000);
    EXPECT_GT(Difference(flat, turned).count, 1000);
}

TEST(StringParams, TilesBelowOnePixelAreNotDrawn) {
    StringParams text = Text(QStringLiteral("Ab"), 40);
    text.SetPlacement(StringParams::Tiled);
    EXPECT_EQ(Difference(Drawn(text, Grey(), 0.01), Grey()).count, 0);
    EXPECT_GT(Difference(Drawn(text, Grey(), 0.1), Grey()).count, 0);
}
