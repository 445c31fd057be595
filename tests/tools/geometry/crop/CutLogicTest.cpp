// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCutLogic.h"

#include <gtest/gtest.h>

#include <limits>

#include "CropPictures.h"
#include "ImageParams.h"
#include "Language.h"
#include "TestHome.h"

namespace {

struct CutLogicTest : testing::Test {
    CutLogicTest() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")), logic(history) {
        SetLanguage(QStringLiteral("1033"));
        logic.SetViewSize(800, 600);
    }
    void Open(const Bitmap& picture) {
        ASSERT_TRUE(history.OpenImage(picture));
        logic.SetSource(picture);
    }
    CHistoryManager history;
    CCutLogic logic;
};

TEST_F(CutLogicTest, ACutCopiesThePixelsUnchanged) {
    const Bitmap picture = TestPictures::Noise(131, 97, 7, false);
    Open(picture);
    ASSERT_TRUE(logic.Crop(13, 29, 71, 40));
    const Bitmap cut = logic.RenderResult();
    ASSERT_EQ(logic.ImageSize(), QSize(71, 40));
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 71; ++x)
            ASSERT_EQ(TestPictures::PixelAt(cut, x, y), TestPictures::PixelAt(picture, 13 + x, 29 + y));
}

TEST_F(CutLogicTest, ACutStartsAtAWholePixelAndHasWholeSides) {
    const Bitmap picture = Coordinates(100, 80);
    Open(picture);
    ASSERT_TRUE(logic.Crop(10.9, 20.2, 30.99, 0.3));
    EXPECT_EQ(logic.ImageSize(), QSize(30, 1));
    EXPECT_EQ(PlaceOf(logic.RenderResult(), 0, 0), QPoint(10, 20));
    EXPECT_EQ(PlaceOf(logic.RenderResult(), 29, 0), QPoint(39, 20));
}

TEST_F(CutLogicTest, ACutIsHeldWithinThePicture) {
    Open(Coordinates(100, 80));
    ASSERT_TRUE(logic.Crop(-5, 70, 50, 500));
    EXPECT_EQ(logic.ImageSize(), QSize(50, 10));
    EXPECT_EQ(PlaceOf(logic.RenderResult(), 0, 0), QPoint(0, 70));
    ASSERT_TRUE(logic.Crop(900, 900, 10, 10));
    EXPECT_EQ(logic.ImageSize(), QSize(1, 1));
}

TEST_F(CutLogicTest, TheWholePictureIsNoCutAndPushesNothing) {
    const Bitmap picture = TestPictures::Face(100, 80);
    Open(picture);
    EXPECT_FALSE(logic.Crop(0, 0, 100, 80));
    EXPECT_FALSE(logic.HasUnrecorded());
    EXPECT_FALSE(logic.CommitStep());
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(logic.RenderResult().SharesPixelsWith(picture));
}

TEST_F(CutLogicTest, SenselessNumbersDoNothing) {
    Open(TestPictures::Face(100, 80));
    EXPECT_FALSE(logic.Crop(std::numeric_limits<double>::quiet_NaN(), 0, 10, 10));
    EXPECT_FALSE(logic.Crop(0, 0, std::numeric_limits<double>::infinity(), 10));
    CCutLogic empty(history);
    EXPECT_FALSE(empty.Crop(0, 0, 10, 10));
}

TEST_F(CutLogicTest, EachCutIsAStepOfItsOwnWithASnapshotAlone) {
    Open(Coordinates(100, 80));
    ASSERT_TRUE(logic.Crop(10, 10, 50, 50));
    ASSERT_TRUE(logic.CommitStep());
    ASSERT_TRUE(logic.Crop(5, 5, 20, 20));
    ASSERT_TRUE(logic.CommitStep());
    EXPECT_EQ(history.m_count, 3);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->GetName(), QStringLiteral("Crop"));
    ASSERT_EQ(step->Params().size(), 1u);
    EXPECT_EQ(step->Image()->order, 0);
    const Bitmap kept = step->ReadImage();
    EXPECT_TRUE(kept == logic.RenderResult());
    EXPECT_EQ(PlaceOf(kept, 0, 0), QPoint(15, 15));
}

TEST_F(CutLogicTest, UndoRedoRevertAndJumpBringSizesBack) {
    const Bitmap picture = Coordinates(100, 80);
    Open(picture);
    ASSERT_TRUE(logic.Crop(10, 10, 50, 50));
    ASSERT_TRUE(logic.CommitStep());
    ASSERT_TRUE(logic.Undo());
    EXPECT_TRUE(logic.RenderResult() == picture);
    ASSERT_TRUE(logic.Redo());
    EXPECT_EQ(logic.ImageSize(), QSize(50, 50));
    ASSERT_TRUE(logic.Revert());
    EXPECT_EQ(logic.ImageSize(), QSize(100, 80));
    ASSERT_TRUE(logic.Undo());
    EXPECT_EQ(logic.ImageSize(), QSize(50, 50));
    ASSERT_TRUE(logic.Jump(0));
    EXPECT_EQ(logic.ImageSize(), QSize(100, 80));
}

TEST_F(CutLogicTest, ACutIsShownAtItsFit) {
    Open(TestPictures::Face(3000, 200));
    EXPECT_LT(logic.Geometry().Zoom(), 1.0);
    ASSERT_TRUE(logic.Crop(10, 10, 200, 100));
    EXPECT_DOUBLE_EQ(logic.Geometry().Zoom(), 1.0);
    EXPECT_TRUE(logic.View().bitmap == logic.RenderResult());
}

}  // namespace
