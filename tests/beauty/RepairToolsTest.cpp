// SPDX-License-Identifier: GPL-3.0-or-later
// The repairs of places without a window: what a click or a stroke repairs, its step, and what never changes.
#include <gtest/gtest.h>

#include "BrushPlace.h"
#include "CQuDouQBLogic.h"
#include "CXiaoChuHYLogic.h"
#include "CXiaoChuHYQLogic.h"
#include "DiscFill.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "PlainRepair.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

TEST(DiscFill, EqualsATestOfEveryPixelAndWritesTheColourItself) {
    const QSize size(40, 31);
    for (int width = 1; width < 26; ++width)
        for (int height = 1; height < 26; height += 3)
            for (const QPoint at : {QPoint(7, 3), QPoint(-5, -5), QPoint(30, 24), QPoint(-9, 28)}) {
                const QRect disc(at, QSize(width, height));
                Bitmap mask(size.width(), size.height());
                FillEllipse(disc, 0x66FF6363, mask);
                ASSERT_TRUE(mask == PlainRepair::Mask(size, {disc}, 0x66FF6363))
                    << width << " x " << height << " at " << at.x() << ", " << at.y();
            }
}

TEST(DiscFill, WhatIsEmptyOrOutsideTouchesNothing) {
    const Bitmap noise = TestPictures::Noise(20, 10, 1);
    Bitmap bitmap = noise;
    for (const QRect& rect : {QRect(3, 3, 0, 5), QRect(3, 3, -4, 5), QRect(20, 0, 5, 5), QRect(0, -9, 5, 9)}) {
        FillEllipse(rect, 0xFFFFFFFF, bitmap);
        ClearPart(rect, bitmap);
    }
    EXPECT_TRUE(bitmap.SharesPixelsWith(noise));
    ClearPart(QRect(-5, -5, 100, 100), bitmap);
    EXPECT_TRUE(bitmap == Bitmap(20, 10));
}

namespace {

template <class Logic>
class RepairTool : public testing::Test {
  protected:
    void SetUp() override { Open(PlainRepair::Face(240, 180), {300, 220}); }
    void Open(const Bitmap& opened, QSize client) {
        picture = opened;
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        logic = std::make_unique<Logic>(history);
        logic->SetViewSize(client.width(), client.height());
        logic->SetSource(picture);
    }
    // A place of the client over a picture pixel.
    QPoint Over(double x, double y) const {
        const QPointF at = logic->Geometry().ToClient(QPointF(x, y));
        return {static_cast<int>(at.x()), static_cast<int>(at.y())};
    }

    Bitmap picture;
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/Repair/")};
    std::unique_ptr<Logic> logic;
};

template <class Logic>
class ClickTool : public RepairTool<Logic> {
  protected:
    // What the canvas does with a click; the place that was hit.
    QRect Click(QPoint client) {
        const auto place = this->logic->Aim(client);
        EXPECT_TRUE(place);
        if (!place) return {};
        EXPECT_TRUE(this->logic->Repair(*place, nullptr));
        EXPECT_TRUE(this->logic->CommitStep());
        return *place;
    }
};

class Spots : public ClickTool<CQuDouQBLogic> {};
class RedEyes : public ClickTool<CXiaoChuHYLogic> {};

// The spot and the first eye of the face.
constexpr QPointF Spot(0.5 * 240, 0.7 * 180), Eye(0.3 * 240, 0.35 * 180);

}  // namespace

TEST_F(Spots, TheDiscUnderThePenIsFilledAndOneClickIsOneStep) {
    EXPECT_EQ(logic->PenSize(), 40);
    const QRect place = Click(Over(Spot.x(), Spot.y()));
    EXPECT_EQ(place, PlainRepair::Place(Over(Spot.x(), Spot.y()), 40, logic->Geometry()));
    const Bitmap healed = PlainRepair::WithoutSpot(picture, place);
    EXPECT_FALSE(healed == picture);
    EXPECT_TRUE(logic->Picture() == healed);
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(history.CloneCurrent()->ReadImage() == healed);
    EXPECT_FALSE(logic->HasWork());
    // The mark of the first click is gone when the second comes.
    const QRect second = Click(Over(40, 150));
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutSpot(healed, second));
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(Spots, AClickAtTheEdgeFillsTheClippedRectangle) {
    const QRect corner = Click(Over(239, 179));
    EXPECT_EQ(corner.right(), 239);
    EXPECT_EQ(corner.bottom(), 179);
    EXPECT_LT(corner.width(), 40);
    const Bitmap first = PlainRepair::WithoutSpot(picture, corner);
    EXPECT_TRUE(logic->Picture() == first);
    const QRect zero = Click(logic->Geometry().ViewOffset() + QPoint(20, 20));
    EXPECT_EQ(zero.topLeft(), QPoint(-5, -5));
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutSpot(first, zero));
}

TEST_F(Spots, WhereNothingIsHitAClickIsIgnored) {
    const ViewGeometry geometry = logic->Geometry();
    EXPECT_FALSE(logic->Aim(geometry.ScreenRect().topLeft() - QPoint(1, 1)));
    EXPECT_FALSE(logic->Aim(geometry.ScreenRect().bottomRight() + QPoint(1, 0)));
    logic->SetPenSize(0);
    EXPECT_EQ(logic->PenPixels(), 0);
    EXPECT_FALSE(logic->Aim(Over(Spot.x(), Spot.y()))) << "a pen of 0 covers nothing";
    logic->Reset();
    EXPECT_FALSE(logic->Aim({10, 10})) << "there is no picture";
    EXPECT_FALSE(logic->Repair(QRect(0, 0, 20, 20), nullptr));
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(Spots, FarOutsideAndEmptyNothingIsRepaired) {
    EXPECT_FALSE(logic->MarkAndFill(-50, -50, -10, -10));
    EXPECT_FALSE(logic->MarkAndFill(240, 20, 280, 60));
    EXPECT_FALSE(logic->MarkAndFill(20, 20, 20, 60));
    EXPECT_FALSE(logic->MarkAndFill(60, 20, 20, 60));
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_FALSE(logic->HasWork());
}

TEST_F(Spots, AMarkOverEverythingAndAPictureOfOnePixelStay) {
    EXPECT_TRUE(logic->MarkAndFill(-400, -400, 700, 700));
    EXPECT_TRUE(logic->Picture() == picture);
    const Bitmap pixel = TestPictures::Plain(1, 1, 0xFF406080);
    Open(pixel, {50, 50});
    EXPECT_TRUE(logic->MarkAndFill(0, 0, 1, 1));
    EXPECT_TRUE(logic->Picture() == pixel);
}

TEST_F(Spots, AStoppedRepairChangesNothingAndLeavesNoMark) {
    WatchfulSink sink(0);
    EXPECT_FALSE(logic->Repair(QRect(100, 100, 40, 40), &sink));
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_FALSE(logic->HasWork());
    EXPECT_FALSE(logic->CommitStep());
    const QRect place = Click(Over(40, 150));
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutSpot(picture, place));
}

TEST_F(Spots, TheViewShowsTheRepairAtOnce) {
    Click(Over(Spot.x(), Spot.y()));
    const Bitmap shown = logic->View().bitmap;
    logic->SetZoom(2.0);
    logic->FitToWindow();
    EXPECT_TRUE(shown == logic->View().bitmap) << "as if it had been drawn anew";
    EXPECT_TRUE(logic->Geometry().ScreenRect().contains(logic->Changed()));
    EXPECT_FALSE(logic->Changed().isEmpty());
}

TEST_F(Spots, TransparencyStays) {
    const Bitmap glass = TestPictures::Noise(120, 90, 5, false);
    Open(glass, {200, 150});
    EXPECT_TRUE(logic->MarkAndFill(30, 30, 60, 60));
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 120; ++x) ASSERT_EQ(logic->Picture().Row(y)[4 * x + 3], glass.Row(y)[4 * x + 3]);
}

TEST_F(Spots, UndoRedoJumpRevertAndVisits) {
    Click(Over(Spot.x(), Spot.y()));
    const Bitmap first = logic->Picture();
    Click(Over(40, 150));
    const Bitmap second = logic->Picture();
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->Picture() == first);
    EXPECT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->Picture() == second);
    EXPECT_TRUE(logic->Jump(0));
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_TRUE(logic->Jump(2));
    EXPECT_TRUE(logic->Revert());
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_EQ(history.m_count, 4);
    const QRect place = Click(Over(Spot.x(), Spot.y()));
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutSpot(picture, place));
    const Bitmap left = logic->Picture();
    logic->Apply();
    logic->Reset();
    ASSERT_TRUE(logic->TakeViewState());
    EXPECT_TRUE(logic->Picture() == left);
    EXPECT_EQ(history.m_count, 5) << "leaving adds no step";
}

TEST_F(RedEyes, TheRectangleUnderThePenIsRepairedAndOneClickIsOneStep) {
    EXPECT_EQ(logic->PenSize(), 60);
    const QRect place = Click(Over(Eye.x(), Eye.y()));
    const Bitmap repaired = PlainRepair::WithoutRedEye(picture, place);
    EXPECT_FALSE(repaired == picture) << "the picture has a red eye there";
    EXPECT_TRUE(logic->Picture() == repaired);
    EXPECT_EQ(history.m_count, 2);
    EXPECT_FALSE(logic->HasWork());
    Click(Over(Eye.x(), Eye.y()));
    EXPECT_TRUE(logic->Picture() == repaired) << "a second click changes nothing more";
    EXPECT_EQ(history.m_count, 3) << "and is a step all the same";
    logic->Undo();
    logic->Undo();
    EXPECT_TRUE(logic->Picture() == picture);
}

// Some repairs ask the sink only before they begin and when they are over.
TEST_F(RedEyes, OneThatIsStoppedOnTheWayIsPutBack) {
    WatchfulSink sink(0);
    EXPECT_FALSE(logic->Repair(*logic->Aim(Over(Eye.x(), Eye.y())), &sink));
    EXPECT_GT(sink.GetValue(), 0.0f) << "told at once, so that the progress window takes Esc";
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_FALSE(logic->HasWork());
}

TEST_F(RedEyes, WhereNothingIsRedNoPixelChanges) {
    Click(Over(120, 150));
    EXPECT_TRUE(logic->Picture() == picture);
    logic->SetPenSize(0);
    EXPECT_FALSE(logic->Aim(Over(Eye.x(), Eye.y())));
}

namespace {

class Circles : public RepairTool<CXiaoChuHYQLogic> {
  protected:
    // Strokes without the canvas; the discs that it marks.
    std::vector<QRect> Stroke(const std::vector<QPoint>& places, bool end = true) {
        std::vector<QRect> discs;
        const int side = Side();
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (i == 0)
                EXPECT_TRUE(logic->BeginStroke(places[i]));
            else
                logic->MoveStroke(places[i]);
            const QRect place = PlainRepair::Place(places[i], logic->PenSize(), logic->Geometry());
            if (!place.isEmpty()) discs.push_back(QRect(place.topLeft(), QSize(side, side)));
        }
        if (end) {
            logic->EndStroke(nullptr);
            logic->CommitStep();
        }
        return discs;
    }
    int Side() const { return 2 * BrushTip::RadiusOf(logic->PenSize(), logic->Geometry().Zoom()); }
    std::vector<QPoint> UnderTheEye() const { return {Over(50, 95), Over(60, 96), Over(72, 97), Over(90, 95)}; }
};

}  // namespace

TEST_F(Circles, AStrokeMarksDiscsAndItsEndRepairsThem) {
    EXPECT_EQ(logic->PenSize(), 50);
    EXPECT_EQ(logic->Strength(), 3);
    logic->SetStrength(10);
    const std::vector<QRect> discs = Stroke(UnderTheEye(), false);
    EXPECT_EQ(logic->Mark(), discs);
    EXPECT_TRUE(logic->Overlay() == PlainRepair::Mask({240, 180}, discs, 0x66FF6363))
        << "discs that lie over each other are no darker";
    EXPECT_TRUE(logic->Picture() == picture) << "the mark is not in the picture";
    EXPECT_TRUE(logic->EndStroke(nullptr));
    EXPECT_TRUE(logic->CommitStep());
    const Bitmap lighter = PlainRepair::WithoutCircles(picture, discs, Side(), 10);
    EXPECT_FALSE(lighter == picture);
    EXPECT_TRUE(logic->Picture() == lighter);
    EXPECT_TRUE(logic->Mark().empty());
    EXPECT_TRUE(logic->Overlay() == Bitmap(240, 180)) << "the overlay is clear again";
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Circles, AMarkThatEndsOutsideIsRepairedToo) {
    std::vector<QPoint> places = UnderTheEye();
    places.push_back({-500, 400});
    const std::vector<QRect> discs = Stroke(places);
    EXPECT_EQ(discs.size(), 4u);
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutCircles(picture, discs, Side(), 3));
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Circles, BeginsOnThePictureOnly) {
    EXPECT_FALSE(logic->BeginStroke(logic->Geometry().ScreenRect().topLeft() - QPoint(1, 0)));
    logic->Reset();
    EXPECT_FALSE(logic->BeginStroke({10, 10}));
}

TEST_F(Circles, APenOfZeroMarksNothingAndMakesNoStep) {
    logic->SetPenSize(0);
    Stroke(UnderTheEye());
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(Circles, StrengthZeroChangesNoPixel) {
    logic->SetStrength(0);
    Stroke(UnderTheEye());
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_EQ(history.m_count, 2) << "a stroke is a step";
}

TEST_F(Circles, AStoppedRepairAndADroppedMarkChangeNothing) {
    for (const int answers : {0, 1}) {
        Stroke(UnderTheEye(), false);
        WatchfulSink sink(answers);
        EXPECT_FALSE(logic->EndStroke(&sink));
        EXPECT_TRUE(logic->Picture() == picture);
        EXPECT_TRUE(logic->Mark().empty());
        EXPECT_TRUE(logic->Overlay() == Bitmap(240, 180));
        EXPECT_FALSE(logic->HasWork());
    }
    Stroke(UnderTheEye(), false);
    logic->DropMark();
    EXPECT_FALSE(logic->EndStroke(nullptr));
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_TRUE(logic->Overlay() == Bitmap(240, 180));
}

TEST_F(Circles, ErasingPaintsThePictureOfTheEntryBackThroughTheSoftDisc) {
    logic->SetStrength(10);
    Stroke(UnderTheEye());
    PlainBrush plain;
    plain.Take(picture, picture);
    plain.working = logic->Picture();
    logic->SetErase(true);
    const int radius = Side() / 2;
    for (int n = 0; n < 2; ++n) {
        const QRect place = PlainRepair::Place(Over(60, 96), 50, logic->Geometry());
        Stroke({Over(60, 96)});
        plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, radius, place.x(), place.y(), true, 0.0, false);
        EXPECT_TRUE(logic->Picture() == plain.working) << n;
    }
    EXPECT_EQ(history.m_count, 4);
    EXPECT_EQ(TestPictures::PixelAt(logic->Picture(), 60, 96), TestPictures::PixelAt(picture, 60, 96));
}

TEST_F(Circles, AfterAMoveInTheHistoryErasingPaintsWhatWasRestored) {
    logic->SetStrength(10);
    Stroke(UnderTheEye());
    const Bitmap lighter = logic->Picture();
    Stroke(UnderTheEye());
    logic->Undo();
    ASSERT_TRUE(logic->Picture() == lighter);
    logic->SetErase(true);
    Stroke(UnderTheEye());
    EXPECT_TRUE(logic->Picture() == lighter) << "there is nothing to take back";
}

TEST_F(Circles, RestoringAStepClearsTheOverlay) {
    Stroke(UnderTheEye());
    Stroke(UnderTheEye(), false);
    ASSERT_FALSE(logic->Mark().empty());
    logic->Undo();
    EXPECT_TRUE(logic->Picture() == picture);
    EXPECT_TRUE(logic->Mark().empty());
    EXPECT_FALSE(logic->EndStroke(nullptr));
    const std::vector<QRect> discs = Stroke({Over(180, 100)});
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutCircles(picture, discs, Side(), 3))
        << "nothing of the old mark is left";
}

TEST_F(Circles, AKeyThatErasesForAMomentLeavesTheMarkAsItIs) {
    const std::vector<QRect> discs = Stroke({Over(60, 96)}, false);
    logic->SetErase(true);
    logic->MoveStroke(Over(160, 96));
    logic->SetErase(false);
    EXPECT_EQ(logic->Mark(), discs);
    EXPECT_TRUE(logic->EndStroke(nullptr));
    EXPECT_TRUE(logic->Picture() == PlainRepair::WithoutCircles(picture, discs, Side(), 3));
}
