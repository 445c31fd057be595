// SPDX-License-Identifier: GPL-3.0-or-later
#include "CAdjustLogic.h"

#include <algorithm>
#include <cmath>
#include <QtCore/QFile>

#include "AdjustChain.h"
#include "AdjustFixture.h"
#include "PC_Dsp.h"

using namespace AdjustIndex;

namespace {

class AdjustLogicTest : public AdjustFixture {};

const AdjustPanelValues NoValues{};

double MeanDifference(const Bitmap& a, const Bitmap& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.ByteCount(); ++i) sum += std::abs(a.Pixels()[i] - b.Pixels()[i]);
    return sum / static_cast<double>(a.ByteCount());
}

TEST_F(AdjustLogicTest, EverythingIsANoOpWithoutAPicture) {
    NewLogic();
    RecordingProgress sink;
    logic->SetValue(Brightness, 30);
    EXPECT_FALSE(logic->ApplyScenario(1, &sink));
    logic->ResetScenario();
    logic->ResetBasic();
    logic->ResetAdvance();
    logic->SetZoom(2.0);
    logic->PanBy(5, 5);
    logic->SetSource({});
    logic->Apply();
    EXPECT_FALSE(logic->TakeViewState());
    EXPECT_FALSE(logic->Undo());
    EXPECT_FALSE(logic->Redo());
    EXPECT_FALSE(logic->Jump(0));
    EXPECT_FALSE(logic->Revert());
    EXPECT_FALSE(logic->CommitStep());
    EXPECT_FALSE(logic->LoadStep(nullptr));
    EXPECT_EQ(logic->BuildStep(true), nullptr);
    EXPECT_TRUE(logic->RenderResult().IsNull());
    EXPECT_TRUE(logic->View().bitmap.IsNull());
    EXPECT_FALSE(logic->IsImageChanged());
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_TRUE(sink.values.empty());
    EXPECT_EQ(history.m_count, 0);
}

TEST_F(AdjustLogicTest, ASliderPreviewsAndLeavesTheHistoryAlone) {
    Open(TestPictures::Face(240, 180));
    const Bitmap before = logic->View().bitmap.Clone();
    logic->SetValue(Brightness, 40);
    EXPECT_GT(TestPictures::LargestDifference(before, logic->View().bitmap), 10);
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(logic->IsImageChanged());
    EXPECT_EQ(logic->GetValue(Brightness), 40);
}

TEST_F(AdjustLogicTest, EverySliderChangesThePictureAndZeroGivesItBackExactly) {
    Open(TestPictures::Face(120, 90));
    const Bitmap view = logic->View().bitmap.Clone();
    for (const AdjustSlider& slider : AdjustSliders) {
        for (const int value : {slider.minimum, slider.maximum}) {
            logic->SetValue(slider.index, value);
            EXPECT_FALSE(logic->RenderResult() == picture) << slider.control << " " << value;
            EXPECT_EQ(logic->GetPanelValues()[static_cast<std::size_t>(slider.panelPlace)], value);
        }
        logic->SetValue(slider.index, 0);
        EXPECT_TRUE(logic->RenderResult() == picture) << slider.control;
        EXPECT_TRUE(logic->View().bitmap == view) << slider.control;
    }
    EXPECT_FALSE(logic->State().BakedPending);
}

TEST_F(AdjustLogicTest, PanelValuesComeInTheirFixedOrder) {
    Open(TestPictures::Face(60, 40));
    for (const auto& [index, value] : {std::pair{2, 11}, {3, 12}, {1, 13}, {4, 14}}) logic->SetValue(index, value);
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{0, 11, 12, 13, 14, 0, 0, 0, 0, 0}));
    for (const auto& [index, value] : {std::pair{8, 15}, {0, 16}, {5, 17}, {6, 18}, {7, 19}})
        logic->SetValue(index, value);
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{0, 0, 0, 0, 0, 15, 16, 17, 18, 19}));
    ASSERT_TRUE(logic->ApplyScenario(3, nullptr));
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{3}));
}

TEST_F(AdjustLogicTest, AnUnknownIndexDoesNothing) {
    Open(TestPictures::Face(60, 40));
    logic->SetValue(Hue, 30);
    logic->SetValue(9, 10);
    logic->SetValue(-1, 10);
    EXPECT_EQ(logic->GetValue(Hue), 30);
    EXPECT_EQ(logic->GetValue(9), 0);
}

TEST_F(AdjustLogicTest, MovingBrightnessBakesTheHueAndItReturnsToZero) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Hue, 30);
    const Bitmap hued = logic->RenderResult();
    logic->SetValue(Brightness, 20);
    EXPECT_EQ(logic->GetValue(Hue), 0);
    EXPECT_EQ(logic->GetValue(Brightness), 20);
    EXPECT_TRUE(logic->State().BaseBitmap == hued);
    EXPECT_TRUE(logic->State().BakedPending);
    EXPECT_TRUE(logic->RenderResult() == Rendered(hued, Brightness, 20));
}

TEST_F(AdjustLogicTest, MovingAnAdvancedSliderBakesTheBasicGroup) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Contrast, 30);
    logic->SetValue(Saturation, -20);
    const Bitmap toned = logic->RenderResult();
    logic->SetValue(Red, 25);
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{0, 0, 0, 0, 0, 0, 0, 25, 0, 0}));
    EXPECT_TRUE(logic->State().BaseBitmap == toned);
    EXPECT_TRUE(logic->RenderResult() == Rendered(toned, Red, 25));
}

TEST_F(AdjustLogicTest, SlidersOfOneGroupActTogetherAndBakeNothing) {
    Open(TestPictures::Face(120, 90));
    for (const int index : {Hue, Red, Green, Blue, Exposure}) logic->SetValue(index, 10);
    EXPECT_FALSE(logic->State().BakedPending);
    EXPECT_TRUE(logic->State().BaseBitmap == picture);
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{0, 0, 0, 0, 0, 10, 10, 10, 10, 10}));
}

TEST_F(AdjustLogicTest, ASliderBakesTheActiveScene) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->ApplyScenario(2, nullptr));
    const Bitmap scene = logic->RenderResult();
    logic->SetValue(Brightness, 20);
    EXPECT_EQ(logic->State().Scenario.ScenarioIndex, 0);
    EXPECT_TRUE(logic->State().BaseBitmap == scene);
    EXPECT_TRUE(logic->RenderResult() == Rendered(scene, Brightness, 20));
}

TEST_F(AdjustLogicTest, BakingOnTheWayKeepsThePreviewEqualToTheResult) {
    Open(TestPictures::Face(120, 90));  // smaller than the client: the view shows every pixel
    logic->SetValue(Hue, 30);
    logic->SetValue(Brightness, 20);
    EXPECT_TRUE(logic->View().bitmap == logic->RenderResult());
    logic->SetValue(Green, -20);
    EXPECT_TRUE(logic->View().bitmap == logic->RenderResult());
}

TEST_F(AdjustLogicTest, EachSceneIsTheClosedCallOnTheBase) {
    for (const AdjustScene& scene : AdjustScenes) {
        Open(TestPictures::Face(120, 90));
        ASSERT_TRUE(logic->ApplyScenario(scene.scenario, nullptr));
        Bitmap expected = picture;
        PC_Dsp::ScenarioBeauty(expected.MutablePixels(), 120, 90, 480, static_cast<eScenarioType>(scene.type), nullptr,
                               0, 100);
        EXPECT_TRUE(logic->RenderResult() == expected) << scene.button;
        EXPECT_TRUE(logic->State().BaseBitmap == picture);
        EXPECT_EQ(logic->GetPanelValues()[0], scene.scenario);
        EXPECT_EQ(history.m_count, 2);
    }
}

TEST_F(AdjustLogicTest, TheSceneAlreadyActiveDoesNothing) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->ApplyScenario(3, nullptr));
    const Bitmap shown = logic->RenderResult();
    const auto stamp = history.CurrentStamp();
    RecordingProgress sink;
    EXPECT_FALSE(logic->ApplyScenario(3, &sink));
    EXPECT_TRUE(logic->RenderResult().SharesPixelsWith(shown));
    EXPECT_EQ(history.CurrentStamp(), stamp);
    EXPECT_TRUE(sink.values.empty());
}

TEST_F(AdjustLogicTest, AnotherSceneReplacesTheFirstAndMakesNoSecondStep) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    ASSERT_TRUE(logic->ApplyScenario(2, nullptr));
    EXPECT_TRUE(logic->RenderResult() == SceneOf(picture, 2));
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(AdjustLogicTest, ASceneAfterSlidersBakesThemFirst) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Contrast, 40);
    const Bitmap toned = logic->RenderResult();
    ASSERT_TRUE(logic->ApplyScenario(4, nullptr));
    EXPECT_TRUE(logic->State().BaseBitmap == toned);
    EXPECT_TRUE(logic->RenderResult() == SceneOf(toned, 4));
    EXPECT_EQ(logic->GetPanelValues(), (AdjustPanelValues{4}));
}

TEST_F(AdjustLogicTest, AnUnknownSceneDoesNothing) {
    Open(TestPictures::Face(60, 40));
    EXPECT_FALSE(logic->ApplyScenario(0, nullptr));
    EXPECT_FALSE(logic->ApplyScenario(5, nullptr));
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(AdjustLogicTest, ASceneReportsForwardsUpToHundred) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Hue, 30);
    RecordingProgress sink;
    ASSERT_TRUE(logic->ApplyScenario(2, &sink));
    ASSERT_FALSE(sink.values.empty());
    EXPECT_TRUE(std::is_sorted(sink.values.begin(), sink.values.end()));
    EXPECT_EQ(sink.values.back(), 100.0f);
    for (const double told : {34.99999940395355, 94.9999988079071})
        EXPECT_NE(std::find(sink.values.begin(), sink.values.end(), static_cast<float>(told)), sink.values.end());
}

TEST_F(AdjustLogicTest, ACancelledSceneLeavesEverythingAsItWas) {
    for (const float stopAt : {0.0f, 20.0f, 35.0f, 60.0f, 85.0f, 94.0f}) {
        Open(TestPictures::Face(120, 90));
        SetAndCommit(Contrast, 25);
        const AdjustState before = logic->State();
        const Bitmap view = logic->View().bitmap.Clone();
        const Bitmap result = logic->RenderResult().Clone();
        const auto stamp = history.CurrentStamp();
        RecordingProgress sink(stopAt);
        EXPECT_FALSE(logic->ApplyScenario(2, &sink)) << stopAt;
        EXPECT_EQ(logic->State().Basic, before.Basic);
        EXPECT_EQ(logic->State().Scenario, before.Scenario);
        EXPECT_TRUE(logic->State().BaseBitmap == before.BaseBitmap);
        EXPECT_TRUE(logic->State().WorkBitmap == before.WorkBitmap);
        EXPECT_FALSE(logic->State().BakedPending);
        EXPECT_TRUE(logic->View().bitmap == view);
        EXPECT_TRUE(logic->RenderResult() == result);
        EXPECT_EQ(history.CurrentStamp(), stamp);
        EXPECT_EQ(history.m_count, 2);
        EXPECT_FALSE(QFile::exists(logic->SceneFilePath()));
    }
}

TEST_F(AdjustLogicTest, ASceneThatRunsOutOfMemoryLeavesEverythingAsItWas) {
    class Failing : public CObjProgress {
        void SetValue(float v) override {
            if (v > 40.0f) throw std::bad_alloc();
        }
    };
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Contrast, 25);
    const Bitmap view = logic->View().bitmap.Clone();
    const Bitmap result = logic->RenderResult();
    Failing sink;
    EXPECT_THROW(logic->ApplyScenario(2, &sink), std::bad_alloc);
    EXPECT_EQ(logic->GetValue(Contrast), 25);
    EXPECT_EQ(logic->State().Scenario.ScenarioIndex, 0);
    EXPECT_TRUE(logic->View().bitmap == view);
    EXPECT_TRUE(logic->RenderResult() == result);
}

TEST_F(AdjustLogicTest, ACancelledSecondSceneKeepsTheFirst) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    const Bitmap first = logic->RenderResult();
    RecordingProgress sink(50.0f);
    EXPECT_FALSE(logic->ApplyScenario(2, &sink));
    EXPECT_EQ(logic->State().Scenario.ScenarioIndex, 1);
    EXPECT_TRUE(logic->RenderResult() == first);
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == first);
}

TEST_F(AdjustLogicTest, ResetsTakeTheirGroupBackAndCommitNothing) {
    Open(TestPictures::Face(120, 90));
    SetAndCommit(Brightness, 30);
    const auto stamp = history.CurrentStamp();
    logic->ResetBasic();
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_EQ(history.CurrentStamp(), stamp);
    logic->SetValue(Blue, 30);
    logic->ResetAdvance();
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    logic->ResetScenario();
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_TRUE(logic->View().bitmap == picture);
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
}

TEST_F(AdjustLogicTest, AResetOfADefaultGroupDoesNothing) {
    Open(TestPictures::Face(60, 40));
    logic->ResetBasic();
    logic->ResetAdvance();
    logic->ResetScenario();
    EXPECT_FALSE(logic->State().Modified);
}

TEST_F(AdjustLogicTest, TheResultIsComputedOnceAndAgainAfterAChange) {
    Open(TestPictures::Face(120, 90));
    logic->SetValue(Brightness, 30);
    const Bitmap first = logic->RenderResult();
    EXPECT_TRUE(logic->RenderResult().SharesPixelsWith(first));
    logic->SetValue(Brightness, 60);
    EXPECT_FALSE(logic->RenderResult() == first);
    logic->SetValue(Brightness, 30);
    EXPECT_TRUE(logic->RenderResult() == first);
}

TEST_F(AdjustLogicTest, WithoutValuesTheResultIsThePictureItself) {
    Open(TestPictures::Face(120, 90));
    EXPECT_TRUE(logic->RenderResult().SharesPixelsWith(logic->State().WorkBitmap));
}

TEST_F(AdjustLogicTest, AtFullSizeThePreviewIsTheResult) {
    Open(TestPictures::Face(200, 150));
    for (const AdjustSlider& slider : AdjustSliders) {
        logic->SetValue(slider.index, slider.maximum / 2);
        EXPECT_TRUE(logic->View().bitmap == logic->RenderResult()) << slider.control;
    }
}

TEST_F(AdjustLogicTest, AReducedPreviewLooksLikeTheReducedResult) {
    Open(TestPictures::Face(1200, 900), 500, 400);
    for (const AdjustSlider& slider : AdjustSliders) {
        logic->ResetBasic();
        logic->ResetAdvance();
        logic->SetValue(slider.index, slider.maximum / 2);
        const Bitmap preview = logic->View().bitmap.Clone();
        const Bitmap reduced = PC_Dsp::Resample(logic->RenderResult(), preview.Width(), preview.Height());
        EXPECT_LT(MeanDifference(preview, reduced), 2.0) << slider.control;
    }
}

TEST_F(AdjustLogicTest, ASliderEventTouchesOnlyTheView) {
    Open(TestPictures::Face(1200, 900), 500, 400);
    const AdjustState before = logic->State();
    logic->SetValue(Contrast, 20);
    logic->SetValue(Contrast, 40);
    EXPECT_TRUE(logic->State().WorkBitmap.SharesPixelsWith(before.WorkBitmap));
    EXPECT_TRUE(logic->State().ResultBitmap.IsNull());
}

TEST_F(AdjustLogicTest, WhatADragKeepsNeverShows) {
    Open(TestPictures::Face(301, 233), 400, 300);
    const auto expectView = [&](const char* after) {
        const Bitmap kept = logic->View().bitmap;
        // Another tool that has kept nothing.
        CHistoryManager otherHistory(TestHome::Path() + QStringLiteral("/Temp/Other/"));
        CAdjustLogic other(otherHistory);
        other.SetViewSize(400, 300);
        other.SetSource(logic->Picture());
        for (const AdjustSlider& slider : AdjustSliders)
            if (logic->GetValue(slider.index) != 0) other.SetValue(slider.index, logic->GetValue(slider.index));
        other.SetGeometry(logic->Geometry(), ViewQuality::Settled);
        EXPECT_TRUE(kept == other.View().bitmap) << after;
    };
    logic->SetValue(Sharpness, 40);
    expectView("sharpness");
    for (const int contrast : {5, 10, 15, 0, -20}) {
        logic->SetValue(Contrast, contrast);
        expectView("a drag of contrast");
    }
    for (const int sharpness : {30, 30, -50, 20}) {
        logic->SetValue(Sharpness, sharpness);
        expectView("a drag of sharpness");
    }
    logic->SetValue(Saturation, 25);
    logic->SetValue(Saturation, 35);
    logic->SetZoom(1.7);
    expectView("a zoom");
    logic->PanBy(-30, 12);
    expectView("a pan");
    logic->SetValue(Saturation, 45);
    expectView("a drag after it");
    logic->SetValue(Hue, 20);
    expectView("the other group");
    logic->SetValue(Sharpness, 25);
    logic->SetSource(TestPictures::Face(301, 233));
    logic->SetValue(Contrast, 12);
    logic->SetValue(Contrast, 13);
    expectView("another picture");
}

TEST_F(AdjustLogicTest, FitLeavesAMargin) {
    Open(TestPictures::Plain(1200, 600, 0xFF808080), 600, 600);
    EXPECT_DOUBLE_EQ(logic->Geometry().FitZoom(), 1.0 / 2.2);
    EXPECT_DOUBLE_EQ(logic->Geometry().Zoom(), 1.0 / 2.2);
    EXPECT_EQ(logic->View().dest, QRect(27, 164, 545, 272));
    EXPECT_EQ(logic->View().bitmap.Width(), 545);
    EXPECT_EQ(logic->View().bitmap.Height(), 272);
}

TEST_F(AdjustLogicTest, AnInvalidViewSizeIsIgnored) {
    Open(TestPictures::Face(60, 40));
    const ViewGeometry before = logic->Geometry();
    logic->SetViewSize(0, 100);
    logic->SetViewSize(100, -1);
    EXPECT_EQ(logic->Geometry(), before);
}

TEST_F(AdjustLogicTest, AZoomedViewShowsTheVisiblePartWithTheValuesApplied) {
    Open(TestPictures::Face(400, 300), 200, 150);
    logic->SetValue(Contrast, 50);
    logic->SetZoom(1.0);
    const CanvasView view = logic->View();
    EXPECT_EQ(view.dest, QRect(0, 0, 200, 150));
    const QRectF source = logic->Geometry().ImageRect();
    const Bitmap result = logic->RenderResult();
    for (const QPoint at : {QPoint(0, 0), QPoint(100, 75), QPoint(199, 149)}) {
        const auto x = static_cast<int>(source.x()) + at.x(), y = static_cast<int>(source.y()) + at.y();
        EXPECT_EQ(TestPictures::PixelAt(view.bitmap, at.x(), at.y()), TestPictures::PixelAt(result, x, y));
    }
}

TEST_F(AdjustLogicTest, OnePixelWorks) {
    Open(TestPictures::Plain(1, 1, 0xFF406080));
    for (const AdjustSlider& slider : AdjustSliders) logic->SetValue(slider.index, slider.maximum);
    ASSERT_TRUE(logic->ApplyScenario(2, nullptr));
    EXPECT_EQ(logic->RenderResult().Width(), 1);
    EXPECT_EQ(logic->View().bitmap.Width(), 1);
}

TEST_F(AdjustLogicTest, AlphaIsKept) {
    Open(TestPictures::Noise(40, 30, 5, false));
    EXPECT_FALSE(logic->View().opaque);
    logic->SetValue(Brightness, 50);
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    const Bitmap result = logic->RenderResult();
    for (std::size_t i = 3; i < result.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], picture.Pixels()[i]);
}

TEST_F(AdjustLogicTest, ResetForgetsPictureAndValues) {
    Open(TestPictures::Face(60, 40));
    SetAndCommit(Brightness, 30);
    logic->Reset();
    EXPECT_FALSE(logic->HasPicture());
    EXPECT_EQ(logic->GetPanelValues(), NoValues);
    EXPECT_FALSE(logic->HasWork());
    EXPECT_DOUBLE_EQ(logic->Geometry().Zoom(), 1.0);
    EXPECT_DOUBLE_EQ(logic->Geometry().FitZoom(), 1.0);
}

TEST_F(AdjustLogicTest, TheSceneFileGoesWithTheLogic) {
    Open(TestPictures::Face(60, 40));
    ASSERT_TRUE(logic->ApplyScenario(1, nullptr));
    const QString path = logic->SceneFilePath();
    EXPECT_TRUE(path.endsWith(QStringLiteral("/Temp/UndoTemp/AdEffectRes.bin")));
    EXPECT_TRUE(QFile::exists(path));
    logic = nullptr;
    EXPECT_FALSE(QFile::exists(path));
}

}  // namespace
