// SPDX-License-Identifier: GPL-3.0-or-later
#include "WordFixture.h"

using TextDrawing::BoxOf;
using TextDrawing::PlaceOf;

TEST_F(WordTest, TheDefaultSizeFollowsThePicturesWidth) {
    struct Row {
        int width, size;
    };
    const Row rows[] = {{599, 26},  {600, 40},  {999, 40},   {1000, 50},  {1499, 50},
                        {1500, 80}, {1999, 80}, {2000, 100}, {2499, 100}, {2500, 120}};
    for (const Row& row : rows) {
        Open(TestPictures::Plain(row.width, 20, 0xFF808080));
        EXPECT_EQ(logic.DefaultFontSize(), row.size) << row.width;
    }
}

TEST_F(WordTest, ATextIsAddedInTheMiddleOfWhatIsVisibleAndSelected) {
    ASSERT_TRUE(logic.AddText(Style(QStringLiteral("Middle"))));
    EXPECT_EQ(logic.Selected(), 0);
    QPointF centre = PlaceOf(logic.Text(0)) + QPointF(BoxOf(logic.Text(0)).width(), BoxOf(logic.Text(0)).height()) / 2;
    EXPECT_NEAR(centre.x(), 400, 1);
    EXPECT_NEAR(centre.y(), 300, 1);
    EXPECT_NEAR(logic.Text(0).RelativeCentre().x(), 0.5, 1e-3);
    // Enlarged and panned to a corner.
    logic.SetZoom(4.0);
    logic.PanBy(5000, 5000);
    ASSERT_TRUE(logic.AddText(Style(QStringLiteral("Corner"))));
    centre = PlaceOf(logic.Text(1)) + QPointF(BoxOf(logic.Text(1)).width(), BoxOf(logic.Text(1)).height()) / 2;
    EXPECT_NEAR(centre.x(), logic.Geometry().ImageRect().center().x(), 1);
    EXPECT_NEAR(centre.y(), logic.Geometry().ImageRect().center().y(), 1);
    EXPECT_EQ(logic.Text(1).order, 2);
    EXPECT_EQ(logic.Selected(), 1);
}

TEST_F(WordTest, AnAddedTextHasItsStyle) {
    WordStyle style{QStringLiteral("All of it"),
                    QStringLiteral("DejaVu Serif"),
                    55,
                    -20,
                    0x123456,
                    true,
                    true,
                    true,
                    true,
                    true,
                    35};
    ASSERT_TRUE(logic.AddText(style));
    EXPECT_TRUE(*logic.SelectedStyle() == style);
}

TEST_F(WordTest, NothingIsAddedWithoutTextOrPicture) {
    EXPECT_FALSE(logic.AddText(Style({})));
    logic.Reset();
    EXPECT_FALSE(logic.AddText(Style(QStringLiteral("a"))));
    EXPECT_EQ(logic.Count(), 0);
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(WordTest, ChangesWorkOnTheSelectedTextOnly) {
    Add(QStringLiteral("one"), {10, 10});
    Add(QStringLiteral("two"), {10, 100});
    EXPECT_TRUE(logic.ChangeSelected([](StringParams& text) { text.SetText(QStringLiteral("TWO")); }));
    EXPECT_EQ(Texts(), QStringList({QStringLiteral("one"), QStringLiteral("TWO")}));
    logic.Deselect();
    EXPECT_FALSE(logic.ChangeSelected([](StringParams& text) { text.SetText(QStringLiteral("?")); }));
    EXPECT_FALSE(logic.MoveSelected(1, 1));
    EXPECT_FALSE(logic.TurnSelected(1));
    EXPECT_FALSE(logic.DeleteSelected());
    EXPECT_FALSE(logic.DoubleSelected());
    EXPECT_EQ(Texts(), QStringList({QStringLiteral("one"), QStringLiteral("TWO")}));
}

TEST_F(WordTest, ATextThatIsEmptiedStaysInTheListAndDrawsNothing) {
    Add(QStringLiteral("gone"), {50, 50});
    logic.ChangeSelected([](StringParams& text) { text.SetText({}); });
    EXPECT_EQ(logic.Count(), 1);
    EXPECT_TRUE(logic.RenderResult() == opened);
    EXPECT_EQ(logic.HitAt(Middle(0)), WordHit::Body);
}

TEST_F(WordTest, MovingGoesByPicturePixels) {
    Add(QStringLiteral("move"), {100, 100});
    logic.MoveSelected(3, -10);
    EXPECT_EQ(PlaceOf(logic.Text(0)), QPointF(103, 90));
    EXPECT_NEAR(logic.Text(0).RelativeCentre().x(), (103 + BoxOf(logic.Text(0)).width() / 2) / 800, 1e-6);
}

TEST_F(WordTest, DoublingMakesATextOfItsOwnBesideTheFirst) {
    Add(QStringLiteral("twin"), {100, 100});
    ASSERT_TRUE(logic.DoubleSelected());
    ASSERT_EQ(logic.Count(), 2);
    EXPECT_EQ(logic.Selected(), 1);
    EXPECT_GT(PlaceOf(logic.Text(1)).x(), 100);
    logic.ChangeSelected([](StringParams& text) { text.SetText(QStringLiteral("other")); });
    EXPECT_EQ(logic.Text(0).GetText(), QStringLiteral("twin"));
    EXPECT_EQ(logic.Text(0).order, 1);
    EXPECT_EQ(logic.Text(1).order, 2);
}

TEST_F(WordTest, TheKeyboardGoesRoundTheTexts) {
    EXPECT_FALSE(logic.SelectNext(true));
    for (const char* text : {"a", "b", "c"}) Add(QLatin1String(text), {10, 10});
    logic.SelectNext(true);
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("a"));
    logic.SelectNext(true);
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("b"));
    logic.SelectNext(false);
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("a"));
    EXPECT_EQ(logic.Selected(), 2) << "the selected one is the topmost";
    logic.Deselect();
    logic.SelectNext(true);
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("a"));
}

TEST_F(WordTest, TextsAreBurntFromTheLowestToTheTopmost) {
    WordStyle style = Style(QStringLiteral("█"), 200);
    style.colour = 0xFF0000;
    logic.AddText(style);
    style.colour = 0x0000FF;
    logic.AddText(style);
    EXPECT_EQ(TestPictures::PixelAt(logic.RenderResult(), 400, 300), 0xFF0000FFu);
    logic.SelectNext(true);
    EXPECT_EQ(TestPictures::PixelAt(logic.RenderResult(), 400, 300), 0xFFFF0000u);
}

TEST_F(WordTest, TheBurntPictureIsKeptUntilSomethingChanges) {
    EXPECT_TRUE(logic.RenderResult().SharesPixelsWith(opened)) << "without texts it is the picture itself";
    Add(QStringLiteral("burnt"), {100, 100});
    const Bitmap burnt = logic.RenderResult();
    EXPECT_TRUE(logic.RenderResult().SharesPixelsWith(burnt));
    EXPECT_TRUE(logic.Picture() == opened) << "the picture below is not touched";
    logic.MoveSelected(1, 0);
    EXPECT_FALSE(logic.RenderResult() == burnt);
    EXPECT_EQ(logic.RenderResult().Width(), 800);
    EXPECT_EQ(logic.RenderResult().Height(), 600);
}

TEST_F(WordTest, TextsBeyondTheEdgeAreCutAndTranslucentPicturesStaySo) {
    Bitmap glass = TestPictures::Plain(300, 200, 0x00000000);
    Open(glass);
    Add(QStringLiteral("██"), {-40, 150}, 100);
    logic.ChangeSelected([](StringParams& text) { text.SetAngle(20); });
    const Bitmap burnt = logic.RenderResult();
    EXPECT_EQ(TestPictures::PixelAt(burnt, 299, 0) >> 24, 0u);
    EXPECT_EQ(TestPictures::PixelAt(burnt, 10, 180) >> 24, 0xFFu);
}

TEST_F(WordTest, ThePaintedOverviewHasTheTexts) {
    Add(QStringLiteral("█"), {300, 200}, 200);
    Bitmap overview = logic.Overview({200, 200});
    const Bitmap bare = overview;
    logic.DrawTexts(overview, overview.Width() / 800.0);
    EXPECT_GT(TextDrawing::Difference(bare, overview).count, 100);
}
