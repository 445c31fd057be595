// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "CMathDefine.h"
#include "Truncate.h"
#include "WordFixture.h"

using TextDrawing::BoxOf;
using TextDrawing::PlaceOf;

TEST_F(WordTest, TheBoxOnTheScreenFollowsZoomAndPan) {
    Add(QStringLiteral("Box"), {120, 70});
    const QSizeF size = BoxOf(logic.Text(0));
    EXPECT_EQ(logic.BoxOf(0).rect.topLeft(), Offset + QPoint(120, 70));
    EXPECT_EQ(logic.BoxOf(0).rect.size(), size.toSize());
    logic.SetZoom(0.5);
    EXPECT_EQ(logic.BoxOf(0).rect.topLeft(), logic.Geometry().ViewOffset() + QPoint(60, 35));
    EXPECT_EQ(logic.BoxOf(0).rect.width(), Truncate(size.width() * 0.5));
}

TEST_F(WordTest, APressSelectsTheUpperOfTwoTextsAndBringsItToTheTop) {
    Add(QStringLiteral("lower"), {300, 200}, 100);
    Add(QStringLiteral("upper"), {330, 210}, 100);
    Add(QStringLiteral("aside"), {10, 500}, 30);
    logic.Deselect();
    const QPoint both = Middle(1);
    EXPECT_EQ(logic.Press(both), WordHit::Body);
    logic.Release(both);
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("upper"));
    EXPECT_EQ(Texts(), QStringList({QStringLiteral("lower"), QStringLiteral("aside"), QStringLiteral("upper")}));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(logic.Text(i).order, i + 1);
    EXPECT_EQ(logic.Selected(), 2);
    // Where the lower one is alone.
    Click(logic.BoxOf(0).rect.topLeft() + QPoint(6, 60));
    EXPECT_EQ(logic.SelectedStyle()->text, QStringLiteral("lower"));
}

TEST_F(WordTest, ATurnedTextIsHitOnlyInsideItsTurnedOutline) {
    Add(QStringLiteral("A long line turned"), {200, 280}, 50);
    logic.ChangeSelected([](StringParams& text) { text.SetAngle(90); });
    logic.Deselect();
    const WordBox box = logic.BoxOf(0);
    const int half = box.rect.width() / 2;
    EXPECT_EQ(logic.HitAt(box.Centre() + QPoint(0, half - 5)), WordHit::Body);
    EXPECT_EQ(logic.HitAt(box.Centre() + QPoint(half - 5, 0)), WordHit::Nothing);
    Click(box.Centre() + QPoint(half - 5, 0));
    EXPECT_EQ(logic.Selected(), CWordLogic::None);
}

TEST_F(WordTest, ButtonsCountOnlyOnTheTextThatWasSelectedBefore) {
    Add(QStringLiteral("Buttons"), {300, 200}, 80);
    logic.Deselect();
    // The inner part of the button's square is body then.
    const QPoint inner = logic.BoxOf(0).rect.topLeft() + QPoint(5, 5);
    EXPECT_EQ(logic.Press(inner), WordHit::Body);
    logic.Release(inner);
    ASSERT_EQ(logic.Count(), 1);
    EXPECT_EQ(logic.Press(inner), WordHit::DeleteButton);
    EXPECT_EQ(logic.Release(inner), CWordLogic::Released::Deleted);
    EXPECT_EQ(logic.Count(), 0);
}

TEST_F(WordTest, TheButtonsOfATextComeBeforeItsBody) {
    Add(QStringLiteral("Order"), {300, 200}, 80);
    EXPECT_EQ(logic.HitAt(RotateAt(0)), WordHit::RotateButton);
    EXPECT_EQ(logic.HitAt(DeleteAt(0)), WordHit::DeleteButton);
    EXPECT_EQ(logic.HitAt(Middle(0)), WordHit::Body);
    EXPECT_EQ(logic.HitAt({5, 5}), WordHit::Nothing);
}

TEST_F(WordTest, DeletingNeedsPressAndReleaseOnTheButton) {
    Add(QStringLiteral("Stay"), {300, 200}, 80);
    const QPoint corner = logic.BoxOf(0).rect.topLeft() - QPoint(20, 20);
    // One pixel outside of the square.
    logic.Press(corner);
    EXPECT_EQ(logic.Release(corner - QPoint(1, 0)), CWordLogic::Released::Nothing);
    EXPECT_EQ(logic.Count(), 1);
    // Pressed elsewhere.
    logic.Press(Middle(0));
    logic.MoveTo(corner, false);
    logic.CancelPress();
    EXPECT_EQ(logic.Count(), 1);
    logic.Press(corner);
    logic.MoveTo(corner + QPoint(31, 31), false);
    EXPECT_EQ(logic.Release(corner + QPoint(32, 32)), CWordLogic::Released::Deleted);
    EXPECT_EQ(logic.Count(), 0);
    EXPECT_EQ(logic.Selected(), CWordLogic::None);
    EXPECT_EQ(logic.Held(), WordHit::Nothing);
}

TEST_F(WordTest, ADragMovesTheTextByThePicturePixelsOfTheMouse) {
    for (const double zoom : {0.5, 1.0, 2.0}) {
        Open(TestPictures::Face(800, 600));
        Add(QStringLiteral("drag"), {100, 60});
        logic.SetZoom(zoom);
        const QPoint from = Middle(0);
        logic.Press(from);
        logic.MoveTo(from + QPoint(7, 3), false);
        EXPECT_TRUE(logic.MoveTo(from + QPoint(41, -17), false));
        EXPECT_EQ(logic.Release(from + QPoint(41, -17)), CWordLogic::Released::Changed);
        EXPECT_NEAR(PlaceOf(logic.Text(0)).x(), 100 + 41 / zoom, 1e-3);
        EXPECT_NEAR(PlaceOf(logic.Text(0)).y(), 60 - 17 / zoom, 1e-3);
    }
}

TEST_F(WordTest, ThePicturesMiddleHoldsATextWithinSixPixelsAndLetsItGo) {
    Add(QStringLiteral("held"), {100, 60});
    const QPoint from = Middle(0), middle = Offset + QPoint(400, 300);
    const auto centreX = [&] { return PlaceOf(logic.Text(0)).x() + BoxOf(logic.Text(0)).width() / 2; };
    const auto centreY = [&] { return PlaceOf(logic.Text(0)).y() + BoxOf(logic.Text(0)).height() / 2; };
    logic.Press(from);
    logic.MoveTo(QPoint(middle.x() + 5, from.y() + 30), false);
    EXPECT_TRUE(logic.AtMiddleX());
    EXPECT_FALSE(logic.AtMiddleY());
    EXPECT_NEAR(centreX(), 400, 1e-3);
    logic.MoveTo(QPoint(middle.x() - 5, middle.y() + 4), false);
    EXPECT_TRUE(logic.AtMiddleX() && logic.AtMiddleY());
    EXPECT_NEAR(centreY(), 300, 1e-3);
    logic.MoveTo(QPoint(middle.x() + 9, middle.y() - 9), false);
    EXPECT_FALSE(logic.AtMiddleX() || logic.AtMiddleY());
    EXPECT_NEAR(centreX(), 409, 1.0);
    EXPECT_NEAR(centreY(), 291, 1.0);
    logic.Release(middle);
    EXPECT_FALSE(logic.AtMiddleX() || logic.AtMiddleY());
}

TEST_F(WordTest, OneHandleTurnsAndSizes) {
    Add(QStringLiteral("Turn me"), {250, 220}, 60);
    const WordBox box = logic.BoxOf(0);
    const QPoint centre = box.Centre();
    const QPointF corner = box.Corners()[2];
    const double half = std::hypot(box.rect.width() / 2.0, box.rect.height() / 2.0);
    const int offset = BearingOf(centre, QPoint(Truncate(corner.x()), Truncate(corner.y())));
    logic.Press(RotateAt(0));
    for (const QPoint to : {QPoint(80, 160), QPoint(-120, 90), QPoint(-100, -100), QPoint(0, -60), QPoint(200, 5)}) {
        const QPoint now = logic.BoxOf(0).Centre();
        logic.MoveTo(centre + to, false);
        EXPECT_EQ(logic.Text(0).GetAngle(), BearingOf(now, centre + to) - offset);
        const QPoint by = centre + to - now;
        EXPECT_NEAR(logic.Text(0).GetFontSize(), 60 * std::hypot(by.x(), by.y()) / half, 1.01);
    }
    EXPECT_EQ(logic.Release(centre + QPoint(200, 5)), CWordLogic::Released::Changed);
}

TEST_F(WordTest, WithShiftATurnGoesInStepsOfFifteenDegrees) {
    Add(QStringLiteral("Turn me"), {250, 220}, 60);
    const QPoint centre = Middle(0);
    logic.Press(RotateAt(0));
    for (int i = 0; i < 40; ++i) {
        logic.MoveTo(centre + QPoint(Truncate(150 * std::cos(i * 0.3)), Truncate(150 * std::sin(i * 0.3))), true);
        EXPECT_EQ(static_cast<int>(logic.Text(0).GetAngle()) % 15, 0);
    }
    logic.Release(centre);
}

TEST_F(WordTest, ATurnStopsAtTheSmallestAndTheLargestText) {
    Add(QStringLiteral("Limits"), {250, 220}, 60);
    const QPoint centre = Middle(0);
    logic.Press(RotateAt(0));
    logic.MoveTo(centre + QPoint(1, 0), false);
    EXPECT_GE(logic.Text(0).GetFontSize(), 1.0f);
    logic.MoveTo(centre, false);
    EXPECT_EQ(logic.Text(0).GetFontSize(), 1.0f);
    logic.MoveTo(centre + QPoint(30000, 30000), false);
    logic.MoveTo(centre + QPoint(90000, 90000), false);
    EXPECT_LE(BoxOf(logic.Text(0)).width(), 30000);
    EXPECT_GT(BoxOf(logic.Text(0)).width(), 29000);
    logic.CancelPress();
    EXPECT_EQ(logic.Text(0).GetFontSize(), 60.0f);
    EXPECT_EQ(logic.Text(0).GetAngle(), 0.0);
}

TEST_F(WordTest, AHandleAwayFromItsCornerBeginsWhereItIsTaken) {
    Add(QStringLiteral("Wider than the view"), {-900, 250}, 300);
    logic.SetZoom(2.0);
    ASSERT_FALSE(logic.ButtonsOf(0).rotateAtCorner);
    const QPoint at = RotateAt(0);
    ASSERT_EQ(logic.Press(at), WordHit::RotateButton);
    const float size = logic.Text(0).GetFontSize();
    logic.MoveTo(at + QPoint(1, 0), false);
    EXPECT_NEAR(logic.Text(0).GetFontSize(), size, 3);
    EXPECT_NEAR(logic.Text(0).GetAngle(), 0, 2);
    logic.Release(at);
}

TEST_F(WordTest, EscTakesADragBackAndWhatWasSelectedBefore) {
    Add(QStringLiteral("a"), {50, 50}, 80);
    Add(QStringLiteral("b"), {400, 300}, 80);
    logic.CommitStep();
    const Bitmap before = logic.RenderResult();
    const QPoint from = Middle(0);
    logic.Press(from);
    logic.MoveTo(from + QPoint(50, 50), false);
    logic.CancelPress();
    EXPECT_TRUE(logic.RenderResult() == before);
    EXPECT_EQ(Texts(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_FALSE(logic.HasUnrecorded());
    EXPECT_EQ(logic.Selected(), 1);
}

TEST_F(WordTest, TheTextUnderTheMouseIsShownWhileNoneIsSelected) {
    Add(QStringLiteral("a"), {50, 50}, 80);
    EXPECT_FALSE(logic.HoverAt(Middle(0)));
    logic.Deselect();
    EXPECT_TRUE(logic.HoverAt(Middle(0)));
    EXPECT_EQ(logic.Hovered(), 0);
    EXPECT_FALSE(logic.HoverAt(Middle(0) + QPoint(1, 1)));
    EXPECT_TRUE(logic.HoverAt({5, 5}));
    EXPECT_EQ(logic.Hovered(), CWordLogic::None);
    logic.HoverAt(Middle(0));
    Click(Middle(0));
    EXPECT_EQ(logic.Hovered(), CWordLogic::None);
}
