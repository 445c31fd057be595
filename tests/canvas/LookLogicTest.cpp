// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>

#include "CViewState.h"
#include "ToyLook.h"

namespace {

using LookLogicTest = ToyLookTest;

TEST_F(LookLogicTest, WithoutALookThePictureIsShownAsItIs) {
    EXPECT_TRUE(toy->RenderResult().SharesPixelsWith(picture));
    EXPECT_TRUE(toy->View().bitmap == picture);
    EXPECT_FALSE(toy->IsImageChanged());
    EXPECT_FALSE(toy->HasUnrecorded());
    EXPECT_EQ(toy->BuildStep(false), nullptr);
    EXPECT_EQ(toy->BuildStep(true), nullptr);
}

TEST_F(LookLogicTest, WithoutAPictureEverythingIsANoOp) {
    ToyLook empty(history);
    EXPECT_FALSE(empty.Run(1));
    empty.SetAlpha(50);
    EXPECT_TRUE(empty.RenderResult().IsNull());
    EXPECT_TRUE(empty.Overview({10, 10}).IsNull());
    EXPECT_TRUE(empty.View().bitmap.IsNull());
    EXPECT_FALSE(empty.Undo() || empty.Redo() || empty.Jump(0) || empty.Revert());
    empty.Apply();
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(LookLogicTest, ALookReplacesTheFormerOneAndStartsFromTheSource) {
    ASSERT_TRUE(toy->Run(5));
    ASSERT_TRUE(toy->Run(9));
    EXPECT_TRUE(toy->RenderResult() == With(9));
    EXPECT_TRUE(toy->View().bitmap == With(9));
    EXPECT_TRUE(toy->Picture() == picture);
    EXPECT_TRUE(toy->IsImageChanged());
}

TEST_F(LookLogicTest, AllLooksOfAVisitMakeOneStep) {
    for (const int look : {5, 9, 5}) ASSERT_TRUE(toy->Run(look));
    EXPECT_EQ(history.m_count, 2);
    LeaveAndEnter();
    ASSERT_TRUE(toy->Run(3));
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(LookLogicTest, LooksStackAcrossVisits) {
    ASSERT_TRUE(toy->Run(5));
    LeaveAndEnter();
    ASSERT_TRUE(toy->Run(9));
    EXPECT_TRUE(toy->RenderResult() == ToyLook::Of(With(5), 9));
}

TEST_F(LookLogicTest, TheProgressGoesTo89PercentForTheLookAndTo100AtTheEnd) {
    StoppingProgress progress;
    ASSERT_TRUE(toy->Run(5, &progress));
    EXPECT_EQ(progress.values, (std::vector<float>{44.5f, 89.0f, 100.0f}));
}

TEST_F(LookLogicTest, TheStrengthIsBlendedInTheViewAndLeavesTheHistoryAlone) {
    ASSERT_TRUE(toy->Run(0x60));
    const auto stamp = history.CurrentStamp();
    toy->SetAlpha(40);
    EXPECT_LE(TestPictures::LargestDifference(toy->View().bitmap, Mixed(picture, With(0x60), 40)), 1);
    EXPECT_EQ(history.CurrentStamp(), stamp);
    EXPECT_TRUE(toy->HasUnrecorded());
}

TEST_F(LookLogicTest, ViewAndResultBlendTheSame) {
    ASSERT_TRUE(toy->Run(0x60));
    for (const int percent : {1, 25, 50, 77, 99}) {
        toy->SetAlpha(percent);
        EXPECT_LE(TestPictures::LargestDifference(toy->View().bitmap, toy->RenderResult()), 1) << percent;
        EXPECT_LE(TestPictures::LargestDifference(toy->RenderResult(), Mixed(picture, With(0x60), percent)), 1);
    }
}

TEST_F(LookLogicTest, AtStrength0TheSourceIsShownAndIsTheResult) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(0);
    EXPECT_TRUE(toy->View().bitmap == picture);
    EXPECT_TRUE(toy->RenderResult() == picture);
}

TEST_F(LookLogicTest, AtStrength100TheEffectItselfIsTheResult) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(30);
    toy->SetAlpha(100);
    EXPECT_TRUE(toy->RenderResult() == With(0x60));
    EXPECT_TRUE(toy->View().bitmap == With(0x60));
}

TEST_F(LookLogicTest, AStrengthWithoutALookDoesNothing) {
    toy->SetAlpha(30);
    EXPECT_EQ(toy->Alpha(), 100);
    EXPECT_TRUE(toy->View().bitmap == picture);
    EXPECT_FALSE(toy->HasUnrecorded());
}

TEST_F(LookLogicTest, AStrengthIsHeldBetween0And100) {
    ASSERT_TRUE(toy->Run(5));
    toy->SetAlpha(-20);
    EXPECT_EQ(toy->Alpha(), 0);
    toy->SetAlpha(400);
    EXPECT_EQ(toy->Alpha(), 100);
}

TEST_F(LookLogicTest, TheSameLookAgainRunsAgainAtFullStrength) {
    ASSERT_TRUE(toy->Run(5));
    toy->SetAlpha(30);
    ASSERT_TRUE(toy->Run(5));
    EXPECT_EQ(toy->computed, 2);
    EXPECT_EQ(toy->Alpha(), 100);
    EXPECT_TRUE(toy->RenderResult() == With(5));
}

TEST_F(LookLogicTest, AResultIsComputedOnceForEachStrength) {
    ASSERT_TRUE(toy->Run(5));
    toy->SetAlpha(30);
    const Bitmap result = toy->RenderResult();
    EXPECT_TRUE(toy->RenderResult().SharesPixelsWith(result));
    toy->SetAlpha(31);
    EXPECT_FALSE(toy->RenderResult().SharesPixelsWith(result));
}

TEST_F(LookLogicTest, AFailedLookPutsBackPictureLookAndStrength) {
    for (const int failing : {ToyLook::Failing, ToyLook::TooLarge}) {
        ASSERT_TRUE(toy->Run(0x60));
        toy->SetAlpha(40);
        const Bitmap result = toy->RenderResult(), view = toy->View().bitmap;
        const auto stamp = history.CurrentStamp();
        if (failing == ToyLook::TooLarge)
            EXPECT_THROW(toy->Run(failing), std::bad_alloc);
        else
            EXPECT_FALSE(toy->Run(failing));
        EXPECT_EQ(toy->Look(), 0x60);
        EXPECT_EQ(toy->Alpha(), 40);
        EXPECT_TRUE(toy->RenderResult() == result);
        EXPECT_TRUE(toy->View().bitmap == view);
        EXPECT_EQ(history.CurrentStamp(), stamp);
    }
}

TEST_F(LookLogicTest, AStoppedLookPutsBackWhatWasThere) {
    for (const float at : {1.0f, 88.0f, 89.0f}) {
        StoppingProgress progress(at);
        EXPECT_FALSE(toy->Run(5, &progress)) << at;
        EXPECT_EQ(toy->Look(), ToyLook::NoLook);
        EXPECT_TRUE(toy->RenderResult() == picture);
        EXPECT_TRUE(toy->View().bitmap == picture);
        EXPECT_EQ(history.m_count, 1);
        EXPECT_FALSE(toy->IsImageChanged());
    }
}

TEST_F(LookLogicTest, TheViewFollowsZoomAndPan) {
    ASSERT_TRUE(toy->Run(0x60));
    toy->SetAlpha(50);
    toy->SetZoom(4.0);
    const QRect dest = toy->View().dest;
    EXPECT_EQ(dest.size(), QSize(400, 300));
    EXPECT_EQ(toy->View().bitmap.Width(), dest.width());
    const QRectF before = toy->Geometry().ImageRect();
    toy->PanBy(-40, 0);
    EXPECT_DOUBLE_EQ(toy->Geometry().ImageRect().x(), before.x() + 10);
    toy->PanBy(40, 0);
    EXPECT_EQ(toy->Geometry().ImageRect(), before);
    toy->FitToWindow();
    EXPECT_LE(TestPictures::LargestDifference(toy->View().bitmap, toy->RenderResult()), 1);
}

TEST_F(LookLogicTest, TheOverviewShowsTheBlend) {
    ASSERT_TRUE(toy->Run(0x60));
    EXPECT_TRUE(toy->Overview({500, 500}) == With(0x60));
    toy->SetAlpha(50);
    EXPECT_LE(TestPictures::LargestDifference(toy->Overview({500, 500}), Mixed(picture, With(0x60), 50)), 1);
    EXPECT_EQ(toy->Overview({60, 60}).Width(), 60);
}

TEST_F(LookLogicTest, ATranslucentPictureIsNotOpaque) {
    const Bitmap glass = TestPictures::Noise(40, 30, 3, false);
    toy->Reset();
    toy->SetSource(glass);
    EXPECT_FALSE(toy->View().opaque);
    ASSERT_TRUE(toy->Run(5));
    EXPECT_FALSE(toy->View().opaque);
    for (int i = 3; i < 4 * 40 * 30; i += 4) ASSERT_EQ(toy->RenderResult().Pixels()[i], glass.Pixels()[i]);
}

}  // namespace
