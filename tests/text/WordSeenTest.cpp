// SPDX-License-Identifier: GPL-3.0-or-later
// What is seen is what is burnt.
#include "BurntView.h"
#include "ColourDifference.h"
#include "WordFixture.h"

namespace {

struct Case {
    const char* name;
    const char* text;
    int size;
    QRgb colour;
    int angle;
    bool styled;
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
    return out << c.name;
}

const Case Cases[] = {{"small", "The quick brown fox jumps", 26, 0x000000, 0, false},
                      {"smallPale", "The quick brown fox jumps", 26, 0xFFFFFF, 0, false},
                      {"turned", "Turned text", 60, 0xFFFFFF, 33, false},
                      {"styled", "Styled\nlines", 80, 0x20B8F1, 350, true},
                      {"scripts", "汉字 سلام שלום\né 😀 👍🏽", 70, 0xFFE060, 0, true},
                      {"large", "Large", 400, 0x8E4EC6, 12, true}};

class Seen : public WordTest, public testing::WithParamInterface<Case> {
  protected:
    void SetUp() override {
        WordTest::SetUp();
        Open(TestPictures::Face(1600, 1200));
        WordStyle style;
        style.text = QString::fromUtf8(GetParam().text);
        style.fontSize = GetParam().size;
        style.colour = GetParam().colour;
        style.angle = GetParam().angle;
        style.bold = style.underline = style.shadow = GetParam().styled;
        style.alphaPercent = GetParam().styled ? 80 : 100;
        ASSERT_TRUE(logic.AddText(style));
        logic.MoveSelected(37, -21);
    }
};

}  // namespace

TEST_P(Seen, AtEveryZoomTheDrawnTextIsTheBurntPictureAtThatZoom) {
    for (const double zoom : {0.15, 0.5, 1.0, 2.0}) {
        SCOPED_TRACE(zoom);
        ViewGeometry geometry = logic.Geometry();
        geometry.Restore(zoom, {0, 0});
        const BurntView views = ViewsAt(logic, geometry);
        EXPECT_LT(MeanDeltaE(views.seen, views.burnt), 2.0);
        const QRect seen = ClearDifference(views.seen, views.bare), burnt = ClearDifference(views.burnt, views.bare);
        EXPECT_FALSE(seen.isEmpty());
        EXPECT_NEAR(seen.left(), burnt.left(), 1);
        EXPECT_NEAR(seen.top(), burnt.top(), 1);
        EXPECT_NEAR(seen.right(), burnt.right(), 1);
        EXPECT_NEAR(seen.bottom(), burnt.bottom(), 1);
    }
}

TEST_P(Seen, TheBoxOnTheScreenIsTheBurntBoxWithinAPixel) {
    for (const double zoom : {0.15, 0.5, 1.0, 2.0}) {
        ViewGeometry geometry = logic.Geometry();
        geometry.Restore(zoom, {0, 0});
        logic.SetGeometry(geometry, ViewQuality::Settled);
        const QPointF place = TextDrawing::PlaceOf(logic.Text(0));
        const QSizeF size = TextDrawing::BoxOf(logic.Text(0));
        const QRectF exact = logic.Geometry().ToClient(QRectF(place, size));
        const QRect box = logic.BoxOf(0).rect;
        EXPECT_NEAR(box.x(), exact.x(), 1.0);
        EXPECT_NEAR(box.y(), exact.y(), 1.0);
        EXPECT_NEAR(box.width(), exact.width(), 1.0);
        EXPECT_NEAR(box.height(), exact.height(), 1.0);
    }
}

TEST_P(Seen, TheScreensScaleChangesNoPixelOfTheBurntPicture) {
    CWordLogic fine(history);
    fine.SetScreenScale(2.0);
    fine.SetViewSize(2000, 1400);
    fine.SetSource(opened);
    ASSERT_TRUE(fine.AddText(*logic.SelectedStyle()));
    fine.MoveSelected(37, -21);
    EXPECT_EQ(TextDrawing::BoxOf(fine.Text(0)), TextDrawing::BoxOf(logic.Text(0)));
    EXPECT_TRUE(fine.RenderResult() == logic.RenderResult());
    EXPECT_FALSE(fine.RenderResult() == opened);
}

INSTANTIATE_TEST_SUITE_P(Texts, Seen, testing::ValuesIn(Cases),
                         [](const auto& test) { return std::string(test.param.name); });
