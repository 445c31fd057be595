// SPDX-License-Identifier: GPL-3.0-or-later
// Slimming and eye enlarging without their windows.
#include <cstring>

#include "BlockAllocator.h"
#include "ImageParams.h"
#include "ShapeVisit.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

class Shape : public testing::Test {
  protected:
    void SetUp() override {
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        for (WarpLogic* tool : {static_cast<WarpLogic*>(&slim), static_cast<WarpLogic*>(&eye)}) {
            tool->SetViewSize(200, 150);
            tool->SetSource(picture);
            tool->SetPenSize(40);
        }
        slimTwin.Take(picture);
        eyeTwin.Take(picture);
    }
    void TearDown() override { BlockAllocator::SetGuard(nullptr); }

    // A place of the client above that pixel of the picture, which is shown at 100 %.
    QPoint At(int x, int y) const { return slim.Geometry().ViewOffset() + QPoint(x, y); }
    std::vector<QPoint> Drag(int x, int y, int moves) const {
        std::vector<QPoint> places{At(x, y)};
        for (int i = 1; i <= moves; ++i) places.push_back(At(x + 3 * i, y + i));
        return places;
    }
    Bitmap Shown() const { return slim.View().bitmap; }

    const Bitmap picture = TestPictures::Face(160, 120);
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/Shape/")};
    CShouLianSSLogic slim{history};
    CYanJingFDLogic eye{history};
    ShapeVisit slimTwin{slim, true}, eyeTwin{eye, false};
};

}  // namespace

TEST_F(Shape, BothBeginWithTheirOwnBrush) {
    CShouLianSSLogic freshSlim(history);
    EXPECT_EQ(freshSlim.PenSize(), 100);
    EXPECT_EQ(freshSlim.Strength(), 20);
    CYanJingFDLogic freshEye(history);
    EXPECT_EQ(freshEye.PenSize(), 60);
    EXPECT_EQ(freshEye.Strength(), 30);
}

TEST_F(Shape, TheBrushKeepsItsSizeOnTheScreen) {
    slim.SetPenSize(90);
    EXPECT_EQ(slim.ViewRadius(), 100);
    EXPECT_EQ(slim.ImageRadius(), 100);
    slim.SetZoom(0.5);
    EXPECT_EQ(slim.ImageRadius(), 200);
    slim.SetZoom(1.5);
    EXPECT_EQ(slim.ViewRadius(), 100);
    EXPECT_EQ(slim.ImageRadius(), 67) << "66.67, rounded";
    slim.SetScreenScale(2.0);
    EXPECT_EQ(slim.PenPixels(), 180);
    EXPECT_EQ(slim.ViewRadius(), 190);
    slim.SetPenSize(-3);
    EXPECT_EQ(slim.PenSize(), 1);
    slim.SetScreenScale(1.0);
    slim.SetZoom(4.0);
    EXPECT_GE(slim.ImageRadius(), 2);
}

TEST_F(Shape, ADragPushesThePictureWhenItEnds) {
    const auto places = Drag(60, 50, 8);
    ASSERT_TRUE(slim.BeginStroke(places.front()));
    for (std::size_t i = 1; i < places.size(); ++i) {
        slim.MoveStroke(places[i]);
        slimTwin.MoveTwin(places[i]);
    }
    EXPECT_TRUE(slim.HasWaiting());
    EXPECT_FALSE(Shown() == picture) << "the hand sees it at once";
    EXPECT_TRUE(slim.EndStroke({}));
    EXPECT_FALSE(slim.HasWaiting());
    EXPECT_FALSE(slim.Picture() == picture);
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    EXPECT_TRUE(Shown() == slim.Picture()) << "at 100 % the view is the picture";
    ASSERT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == slim.Picture());
    EXPECT_FALSE(slim.HasWork());
}

TEST_F(Shape, AClickSwellsAtOnceAndOnce) {
    ASSERT_TRUE(eye.BeginStroke(At(80, 60)));
    eyeTwin.PressTwin(At(80, 60));
    EXPECT_FALSE(eye.View().bitmap == picture);
    const Bitmap clicked = eye.View().bitmap;
    EXPECT_TRUE(eye.MoveStroke(At(100, 60)).isEmpty());
    EXPECT_TRUE(eye.View().bitmap == clicked) << "a move only moves the cursor";
    EXPECT_TRUE(eye.EndStroke({}));
    EXPECT_TRUE(eye.Picture() == eyeTwin.Expected());
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Shape, LaterStrokesGoOnInTheSameField) {
    slimTwin.Stroke(Drag(60, 50, 6));
    slimTwin.Stroke(Drag(66, 54, 6));
    slimTwin.Stroke(Drag(90, 40, 3));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected()) << "one sample of the picture that came in";
    EXPECT_EQ(history.m_count, 4);
}

TEST_F(Shape, APressAloneDoesNothingWhenDragging) {
    slimTwin.Stroke({At(60, 50)});
    EXPECT_EQ(history.m_count, 1);
    EXPECT_FALSE(slim.IsImageChanged());
    EXPECT_TRUE(slim.RenderResult().SharesPixelsWith(picture));
}

TEST_F(Shape, ADragThatEndsWhereItBeganIsAStepWithoutAChange) {
    slimTwin.Stroke({At(60, 50), At(60, 50)});
    EXPECT_TRUE(slim.Picture() == picture);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Shape, StrengthZeroChangesNothingAndIsRecordedAllTheSame) {
    slim.SetStrength(0);
    slimTwin.Stroke(Drag(60, 50, 5));
    EXPECT_TRUE(slim.Picture() == picture);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Shape, APressBesideThePictureIsRefused) {
    EXPECT_FALSE(slim.BeginStroke(At(-3, 20)));
    EXPECT_FALSE(eye.BeginStroke(At(20, 121)));
    EXPECT_TRUE(slim.MoveStroke(At(20, 20)).isEmpty());
    EXPECT_FALSE(slim.EndStroke({}));
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(Shape, AHandThatLeavesThePictureAndComesBackPushesNothingInBetween) {
    std::vector<QPoint> places = Drag(60, 50, 2);
    for (const QPoint off : {At(-10, 50), At(-90, 55), At(-90, 90), At(30, 90), At(34, 91)}) places.push_back(off);
    slimTwin.Stroke(places);
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, TheLastRowAndColumnAndTheBorderStayWhereTheyAre) {
    slim.SetStrength(100);
    eye.SetStrength(100);
    for (const QPoint corner : {At(0, 0), At(159, 0), At(0, 119), At(159, 119), At(159, 60), At(80, 119)})
        eyeTwin.Stroke({corner});
    EXPECT_TRUE(eye.Picture() == eyeTwin.Expected());
    EXPECT_FALSE(eye.Picture() == picture);
    slimTwin.Stroke({At(150, 60), At(140, 60), At(120, 58), At(100, 58)});
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    for (const Bitmap& pushed : {eye.Picture(), slim.Picture()}) {
        EXPECT_EQ(std::memcmp(pushed.Row(119), picture.Row(119), 160 * 4), 0);
        for (int y = 0; y < 120; ++y)
            EXPECT_EQ(TestPictures::PixelAt(pushed, 159, y), TestPictures::PixelAt(picture, 159, y)) << y;
        EXPECT_EQ(std::memcmp(pushed.Row(0), picture.Row(0), 160 * 4), 0);
        for (int y = 0; y < 120; ++y)
            EXPECT_EQ(TestPictures::PixelAt(pushed, 0, y), TestPictures::PixelAt(picture, 0, y)) << y;
    }
}

TEST_F(Shape, ABrushThatIsChangedInAStrokeCountsFromThereOn) {
    const auto places = Drag(60, 50, 9);
    ASSERT_TRUE(slim.BeginStroke(places.front()));
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (i == 4) slim.SetPenSize(80);
        if (i == 7) slim.SetStrength(90);
        slim.MoveStroke(places[i]);
        slimTwin.MoveTwin(places[i]);
    }
    slim.SetPenSize(10);
    slim.SetStrength(1);
    EXPECT_TRUE(slim.EndStroke({}));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, AStoppedDrainKeepsWhatIsDoneAndRecordsIt) {
    const auto places = Drag(40, 50, 20);
    ASSERT_TRUE(slim.BeginStroke(places.front()));
    for (std::size_t i = 1; i < places.size(); ++i) slim.MoveStroke(places[i]);
    WatchfulSink sink(0);
    EXPECT_TRUE(slim.EndStroke({&sink, 0, 100}));
    EXPECT_FALSE(slim.HasWaiting());
    EXPECT_EQ(history.m_count, 2);
    EXPECT_TRUE(Shown() == slim.Picture());
    EXPECT_FALSE(slim.HasUnrecorded());
    // It is the drag up to some place of it.
    bool found = false;
    for (std::size_t done = 1; done < places.size() && !found; ++done) {
        slimTwin.Take(picture);
        slimTwin.PressTwin(places.front());
        for (std::size_t i = 1; i <= done; ++i) slimTwin.MoveTwin(places[i]);
        found = slim.Picture() == slimTwin.Expected();
    }
    EXPECT_TRUE(found);
}

TEST_F(Shape, AStrokeThatIsDroppedHasNotBeen) {
    slimTwin.Stroke(Drag(60, 50, 4));
    const Bitmap before = slim.Picture();
    ASSERT_TRUE(slim.BeginStroke(At(60, 60)));
    for (int i = 0; i < 6; ++i) slim.MoveStroke(At(60 + 4 * i, 60));
    EXPECT_FALSE(Shown() == before);
    slim.DropStroke();
    EXPECT_TRUE(slim.RenderResult() == before);
    EXPECT_TRUE(Shown() == before);
    EXPECT_FALSE(slim.HasWork());
    EXPECT_FALSE(slim.EndStroke({}));
    EXPECT_EQ(history.m_count, 2);
    slimTwin.Stroke(Drag(80, 60, 4));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, TheResultIsAskedForInTheMiddleOfAStroke) {
    const auto places = Drag(60, 50, 9);
    ASSERT_TRUE(slim.BeginStroke(places.front()));
    for (std::size_t i = 1; i < places.size(); ++i) {
        slim.MoveStroke(places[i]);
        slimTwin.MoveTwin(places[i]);
        if (i % 3 != 0) continue;
        const Bitmap result = slim.RenderResult();
        EXPECT_TRUE(result == slimTwin.Expected());
    }
    EXPECT_TRUE(slim.EndStroke({}));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(Shape, WhatWasWorkedForTheResultStaysWhenTheRestIsDropped) {
    ASSERT_TRUE(slim.BeginStroke(At(60, 60)));
    slim.MoveStroke(At(60, 60));
    slim.MoveStroke(At(66, 60));
    const Bitmap asked = slim.RenderResult();
    slim.MoveStroke(At(72, 60));
    slim.DropStroke();
    EXPECT_TRUE(slim.Picture() == asked);
    EXPECT_TRUE(slim.HasUnrecorded());
}

TEST_F(Shape, MovesInTheHistoryFinishTheStrokeFirst) {
    const auto places = Drag(60, 50, 6);
    const auto begin = [&] {
        ASSERT_TRUE(slim.BeginStroke(places.front()));
        for (std::size_t i = 1; i < places.size(); ++i) slim.MoveStroke(places[i]);
    };
    for (std::size_t i = 1; i < places.size(); ++i) slimTwin.MoveTwin(places[i]);
    begin();
    EXPECT_TRUE(slim.Undo());
    EXPECT_TRUE(slim.Picture() == picture);
    EXPECT_FALSE(slim.IsStroking());
    EXPECT_TRUE(slim.Redo());
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    slim.Undo();
    begin();
    EXPECT_FALSE(slim.Redo()) << "a stroke is held";
    slim.Jump(0);
    EXPECT_TRUE(slim.Picture() == picture);
    slim.Redo();
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    slim.Undo();
    begin();
    EXPECT_TRUE(slim.Revert());
    EXPECT_TRUE(slim.Picture() == picture);
    EXPECT_EQ(history.m_count, 3) << "opened, the stroke, the way back";
}

TEST_F(Shape, AMoveInTheHistoryBeginsANewField) {
    slimTwin.Stroke(Drag(60, 50, 6));
    const Bitmap first = slim.Picture();
    slimTwin.Stroke(Drag(70, 60, 6));
    ASSERT_TRUE(slim.Undo());
    EXPECT_TRUE(slim.Picture() == first);
    EXPECT_TRUE(Shown() == first);
    slimTwin.Take(first);
    slimTwin.Stroke(Drag(70, 60, 6));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, LeavingHandsOnTheVeryPixelsWhenNothingWasDone) {
    slim.Prepare();
    slim.Apply();
    EXPECT_TRUE(history.CurrentBitmap().SharesPixelsWith(picture));
    EXPECT_EQ(history.m_count, 1);
    slimTwin.Stroke(Drag(60, 50, 6));
    slim.Apply();
    EXPECT_TRUE(history.CurrentBitmap() == slimTwin.Expected());
    EXPECT_EQ(history.m_count, 2);
    eye.Reset();
    ASSERT_TRUE(eye.TakeViewState());
    EXPECT_TRUE(eye.Picture() == slimTwin.Expected());
}

TEST_F(Shape, TransparentPicturesAreFlattenedOnWhite) {
    Bitmap clear(160, 120);
    slim.SetSource(clear);
    EXPECT_TRUE(slim.Picture() == TestPictures::Plain(160, 120, 0xFFFFFFFF));
    const Bitmap noise = TestPictures::Noise(160, 120, 5, false);
    slim.SetSource(noise);
    const Bitmap flat = slim.Picture();
    EXPECT_TRUE(flat.IsOpaque());
    slimTwin.Take(flat);
    slimTwin.Stroke(Drag(60, 50, 6));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
    EXPECT_TRUE(slim.Picture().IsOpaque());
}

TEST_F(Shape, WithoutAPictureNothingHappens) {
    slim.Reset();
    slim.Prepare();
    EXPECT_FALSE(slim.BeginStroke({20, 20}));
    EXPECT_TRUE(slim.MoveStroke({30, 20}).isEmpty());
    EXPECT_FALSE(slim.EndStroke({}));
    slim.DropStroke();
    EXPECT_TRUE(slim.RenderResult().IsNull());
    EXPECT_FALSE(slim.Undo());
    EXPECT_FALSE(slim.LoadStep(nullptr));
}

TEST_F(Shape, WithoutMemoryForTheFieldStrokesAreRefusedUntilThereIsSome) {
    BlockAllocator::SetGuard([](std::size_t bytes) { return bytes < 50000; });
    EXPECT_THROW(slim.Prepare(), std::bad_alloc);
    EXPECT_THROW(slim.BeginStroke(At(60, 50)), std::bad_alloc);
    EXPECT_FALSE(slim.IsStroking());
    EXPECT_TRUE(slim.RenderResult().SharesPixelsWith(picture));
    EXPECT_THROW(eye.BeginStroke(At(60, 50)), std::bad_alloc);
    EXPECT_FALSE(eye.HasWork());
    BlockAllocator::SetGuard(nullptr);
    slimTwin.Stroke(Drag(60, 50, 6));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, WithoutMemoryForAPlaceTheNextOneGoesAllTheWay) {
    slim.SetPenSize(60);
    ASSERT_TRUE(slim.BeginStroke(At(40, 40)));
    slim.MoveStroke(At(40, 40));
    slimTwin.MoveTwin(At(40, 40));
    BlockAllocator::SetGuard([](std::size_t) { return false; });
    slim.MoveStroke(At(130, 40));  // needs squares of the field that are not there yet
    BlockAllocator::SetGuard(nullptr);
    slim.MoveStroke(At(136, 46));
    slimTwin.MoveTwin(At(136, 46));
    EXPECT_TRUE(slim.EndStroke({}));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}

TEST_F(Shape, AStrokeThatCouldBeginCanBeWorkedWithoutAnyMemory) {
    ASSERT_TRUE(slim.BeginStroke(At(40, 40)));
    for (const QPoint at : Drag(40, 40, 20)) {
        slim.MoveStroke(at);
        slimTwin.MoveTwin(at);
    }
    BlockAllocator::SetGuard([](std::size_t) { return false; });
    EXPECT_TRUE(slim.WaitForWorker({}));
    BlockAllocator::SetGuard(nullptr);
    EXPECT_TRUE(slim.EndStroke({}));
    EXPECT_TRUE(slim.Picture() == slimTwin.Expected());
}
