// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "CMoPiLogic.h"
#include "CPiFuMBLogic.h"
#include "ImageParams.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

Bitmap Smoothed(Bitmap picture, float sigma) {
    PC_Dsp::CannyDericheBlur(picture, sigma, sigma, nullptr, nullptr, 0, 100);
    return picture;
}

// Counts how often the copy is made.
class CountingSmooth : public CMoPiLogic {
  public:
    using CMoPiLogic::CMoPiLogic;
    mutable int runs = 0;

  protected:
    void Process(Bitmap& picture, const ProgressSpan& span) const override {
        ++runs;
        CMoPiLogic::Process(picture, span);
    }
};

class DirectBrush : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(160, 120);
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        smooth = std::make_unique<CountingSmooth>(history);
        smooth->SetViewSize(200, 150);
        smooth->SetSource(picture);
        plain.Take(picture, Smoothed(picture, 1.0f));
    }
    void Press(int x, int y) {
        ASSERT_TRUE(smooth->BeginStroke(smooth->Geometry().ViewOffset() + QPoint(x, y)));
        ASSERT_TRUE(smooth->EndStroke());
    }
    void PlainPress(int x, int y, bool erase = false) {
        plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 30, x - 30, y - 30, erase, erase ? 0.0 : 1.0, false);
    }

    Bitmap picture;
    CHistoryManager history{TestHome::Path() + QStringLiteral("/Temp/Direct/")};
    std::unique_ptr<CountingSmooth> smooth;
    PlainBrush plain;
};

}  // namespace

TEST_F(DirectBrush, EachStrokeIsAStepWithASnapshot) {
    Press(60, 60);
    PlainPress(60, 60);
    EXPECT_TRUE(smooth->Picture() == plain.working);
    Press(110, 60);
    PlainPress(110, 60);
    EXPECT_TRUE(smooth->Picture() == plain.working);
    EXPECT_EQ(history.m_count, 3);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == plain.working);
    EXPECT_FALSE(smooth->HasWork());
}

TEST_F(DirectBrush, UndoWithinTheVisitDoesNotMakeTheCopyAnew) {
    Press(60, 60);
    Press(110, 60);
    const int runs = smooth->runs;
    smooth->Undo();
    smooth->Undo();
    EXPECT_TRUE(smooth->Picture() == picture);
    smooth->Redo();
    smooth->Jump(0);
    EXPECT_EQ(smooth->runs, runs);
    smooth->Redo();
    PlainPress(60, 60);
    EXPECT_TRUE(smooth->Picture() == plain.working);
    Press(20, 60);
    plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, 30, -10, 30, false, 1.0, false);
    EXPECT_TRUE(smooth->Picture() == plain.working) << "the copy is still that of the visit's beginning";
}

TEST_F(DirectBrush, AStepOfAnotherVisitIsTakenAsANewPicture) {
    Press(60, 60);
    const Bitmap first = smooth->Picture();
    smooth->Apply();
    smooth->Reset();
    ASSERT_TRUE(smooth->TakeViewState());
    Press(110, 60);
    int runs = smooth->runs;
    smooth->Undo();
    EXPECT_EQ(smooth->runs, runs) << "the visit began there";
    EXPECT_TRUE(smooth->Picture() == first);
    smooth->Undo();
    EXPECT_EQ(smooth->runs, runs + 1);
    EXPECT_TRUE(smooth->Picture() == picture);
    runs = smooth->runs;
    smooth->Redo();
    EXPECT_EQ(smooth->runs, runs + 1) << "what lies ahead is of the visit before";
}

TEST_F(DirectBrush, RevertTakesTheOpenedPictureAsANewOne) {
    Press(60, 60);
    smooth->Apply();
    smooth->Reset();
    ASSERT_TRUE(smooth->TakeViewState());
    Press(110, 60);
    const int runs = smooth->runs;
    ASSERT_TRUE(smooth->Revert());
    EXPECT_TRUE(smooth->Picture() == picture);
    EXPECT_EQ(smooth->runs, runs + 1);
    EXPECT_EQ(history.m_count, 4);
    Press(60, 60);
    PlainPress(60, 60);
    EXPECT_TRUE(smooth->Picture() == plain.working) << "painted from copies of the opened picture";
}

TEST_F(DirectBrush, AnotherStrengthCountsForLaterStrokesOnly) {
    Press(60, 60);
    PlainPress(60, 60);
    EXPECT_TRUE(smooth->SetStrength(40, nullptr));
    EXPECT_TRUE(smooth->Picture() == plain.working) << "strokes keep their look";
    plain.processed = Smoothed(picture, 40 * 0.1f);
    Press(110, 60);
    PlainPress(110, 60);
    EXPECT_TRUE(smooth->Picture() == plain.working) << "the new copy is made of the base";
    const int runs = smooth->runs;
    EXPECT_FALSE(smooth->SetStrength(40, nullptr));
    EXPECT_EQ(smooth->runs, runs);
}

TEST_F(DirectBrush, StrengthZeroPaintsNothingNew) {
    smooth->SetStrength(0, nullptr);
    Press(60, 60);
    EXPECT_TRUE(smooth->Picture() == picture);
}

TEST_F(DirectBrush, ErasingPaintsTheBase) {
    Press(60, 60);
    PlainPress(60, 60);
    smooth->SetErase(true);
    for (int n = 0; n < 4; ++n) {
        Press(60, 60);
        PlainPress(60, 60, true);
    }
    EXPECT_TRUE(smooth->Picture() == plain.working);
    EXPECT_EQ(TestPictures::PixelAt(smooth->Picture(), 60, 60), TestPictures::PixelAt(picture, 60, 60));
}

TEST_F(DirectBrush, TheSkinToneTakesEachColourOnce) {
    CPiFuMBLogic tone(history);
    tone.SetViewSize(200, 150);
    tone.SetSource(picture);
    EXPECT_EQ(tone.PenSize(), 60);
    EXPECT_FALSE(tone.SetColor(252, 203, 186, nullptr));
    EXPECT_TRUE(tone.SetColor(156, 104, 73, nullptr));
    Bitmap tinted = picture;
    PC_Dsp::CompositeColor(tinted, 156, 104, 73, nullptr, 0, 100);
    plain.Take(picture, tinted);
    ASSERT_TRUE(tone.BeginStroke(tone.Geometry().ViewOffset() + QPoint(80, 60)));
    tone.EndStroke();
    PlainPress(80, 60);
    EXPECT_TRUE(tone.Picture() == plain.working);
}
