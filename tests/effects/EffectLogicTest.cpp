// SPDX-License-Identifier: GPL-3.0-or-later
#include "CEffectLogic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <QtCore/QFile>
#include <thread>

#include "CEffect.h"
#include "EffectCatalogue.h"
#include "ImageParams.h"
#include "Language.h"
#include "PC_File.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

class EffectLogic : public testing::Test {
  protected:
    EffectLogic() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(QStringLiteral("1033"));
        picture = TestPictures::Face(120, 90);
        EXPECT_TRUE(history.OpenImage(picture));
        NewVisit();
        logic->SetSource(picture);
    }
    void NewVisit() {
        logic = nullptr;
        logic = std::make_unique<CEffectLogic>(history);
        logic->SetViewSize(400, 300);
    }
    void LeaveAndEnter() {
        logic->Apply();
        NewVisit();
        ASSERT_TRUE(logic->TakeViewState());
    }
    static Bitmap Effect(Bitmap source, int index) {
        EXPECT_TRUE(RunEffect(source, index, EffectResourceDir()));
        return source;
    }
    const CHistoryStep& CurrentStep() const { return *history.m_ring[static_cast<std::size_t>(history.m_current)]; }

    CHistoryManager history;
    Bitmap picture;
    std::unique_ptr<CEffectLogic> logic;
};

// Asks to stop at its first question, or at a percentage.
class Stop : public CObjProgress {
  public:
    explicit Stop(float at) : m_at(at) {}
    int CanContinue() override { return m_fValue < m_at ? 1 : 0; }

  private:
    float m_at;
};

TEST_F(EffectLogic, BeginsWithNoEffectAtFullStrength) {
    EXPECT_EQ(logic->EffectIndex(), -1);
    EXPECT_EQ(logic->Alpha(), 100);
    EXPECT_FALSE(logic->HasLook());
    EXPECT_TRUE(logic->RenderResult() == picture);
}

TEST_F(EffectLogic, AnEffectStartsFromTheSourceAndReplacesTheFormerOne) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    ASSERT_TRUE(logic->ApplyEffect(40, nullptr));
    EXPECT_EQ(logic->EffectIndex(), 40);
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 40));
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(EffectLogic, EffectsStackAcrossVisits) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    LeaveAndEnter();
    EXPECT_EQ(logic->EffectIndex(), -1);
    ASSERT_TRUE(logic->ApplyEffect(40, nullptr));
    EXPECT_TRUE(logic->RenderResult() == Effect(Effect(picture, 3), 40));
}

TEST_F(EffectLogic, ChoosingTheSameEffectTwiceRunsItAgainAtFullStrength) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    logic->SetAlpha(20);
    const auto stamp = history.CurrentStamp();
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    EXPECT_EQ(logic->Alpha(), 100);
    EXPECT_NE(history.CurrentStamp(), stamp);
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 3));
}

TEST_F(EffectLogic, ItsStepIsNamedAndHoldsTheRecord) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    logic->SetAlpha(20);
    const auto step = logic->BuildStep(false);
    EXPECT_EQ(step->GetName(), LanguageText(QStringLiteral("ids_texiao")));
    ASSERT_EQ(step->Params().size(), 2u);
    EXPECT_TRUE(step->Image()->image == picture);
    EXPECT_FALSE(step->Image()->save);
    const auto* record = RecordAs<EffectParams>(*step->Params()[1]);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->GetType(), 4);
    EXPECT_EQ(record->order, 1);
    EXPECT_EQ(record->EffectIndex, 3);
    EXPECT_EQ(record->Alpha, 20);
    EXPECT_EQ(record->path, history.m_tempDir + QStringLiteral("EffectRes.bin"));
    EXPECT_TRUE(PC_File::ImageReadFrombinary(record->path.toStdWString()) == Effect(picture, 3));
}

TEST_F(EffectLogic, UndoAndRedoBringEffectAndStrengthBack) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    logic->SetAlpha(20);
    const Bitmap result = logic->RenderResult();
    ASSERT_TRUE(logic->Undo());
    EXPECT_EQ(logic->EffectIndex(), -1);
    EXPECT_EQ(logic->Alpha(), 100);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->EffectIndex(), 3);
    EXPECT_EQ(logic->Alpha(), 20);
    EXPECT_TRUE(logic->RenderResult() == result);
}

TEST_F(EffectLogic, AnEffectIsRunAgainWhenItsFileIsGone) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(QFile::remove(logic->LookFile()));
    ASSERT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 3));
}

TEST_F(EffectLogic, AnEffectThatNoCatalogueHasChangesNothing) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    const auto stamp = history.CurrentStamp();
    for (const int index : {-1, -2, 50, 99}) EXPECT_FALSE(logic->ApplyEffect(index, nullptr)) << index;
    EXPECT_EQ(logic->EffectIndex(), 3);
    EXPECT_EQ(history.CurrentStamp(), stamp);
}

TEST_F(EffectLogic, ACancelledEffectPutsBackWhatWasThere) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    logic->SetAlpha(20);
    const Bitmap result = logic->RenderResult(), view = logic->View().bitmap;
    const auto stamp = history.CurrentStamp();
    for (const float at : {0.0f, 40.0f}) {
        Stop stop(at);
        EXPECT_FALSE(logic->ApplyEffect(40, &stop)) << at;
        EXPECT_EQ(logic->EffectIndex(), 3);
        EXPECT_EQ(logic->Alpha(), 20);
        EXPECT_TRUE(logic->RenderResult() == result);
        EXPECT_TRUE(logic->View().bitmap == view);
        EXPECT_EQ(history.CurrentStamp(), stamp);
    }
}

class Recording : public CObjProgress {
  public:
    void SetValue(float v) override { values.push_back(v); }
    std::vector<float> values;
};

TEST_F(EffectLogic, ItTellsHowFarItIs) {
    logic->SetSource(TestPictures::Face(900, 600));
    Recording progress;
    ASSERT_TRUE(logic->ApplyEffect(16, &progress));
    ASSERT_GT(progress.values.size(), 3u);
    EXPECT_TRUE(std::is_sorted(progress.values.begin(), progress.values.end()));
    EXPECT_LE(progress.values[progress.values.size() - 2], 89.0f);
    EXPECT_EQ(progress.values.back(), 100.0f);
}

TEST_F(EffectLogic, AThumbnailIsRenderedAtFullStrengthWithoutTheState) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    logic->SetAlpha(20);
    Bitmap thumbnail = TestPictures::Face(70, 96);
    const Bitmap expected = Effect(thumbnail, 17);
    EXPECT_TRUE(CEffectLogic::RenderThumbnail(&thumbnail, 17));
    EXPECT_TRUE(thumbnail == expected);
    EXPECT_EQ(logic->EffectIndex(), 3);
    EXPECT_EQ(logic->Alpha(), 20);
    EXPECT_FALSE(CEffectLogic::RenderThumbnail(nullptr, 17));
    EXPECT_FALSE(CEffectLogic::RenderThumbnail(&thumbnail, -1));
}

TEST_F(EffectLogic, ThumbnailsAndTheTool) {
    std::thread thumbnails([&] {
        for (int index = 0; index < 8; ++index) {
            Bitmap thumbnail = TestPictures::Face(70, 96);
            EXPECT_TRUE(CEffectLogic::RenderThumbnail(&thumbnail, index));
        }
    });
    for (int index = 0; index < 4; ++index) EXPECT_TRUE(logic->ApplyEffect(index, nullptr));
    thumbnails.join();
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 3));
}

TEST_F(EffectLogic, AStepOfAnotherToolIsShownAsItsSnapshot) {
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->image = Effect(picture, 9);
    image->save = true;
    step->AddParams(std::move(image));
    struct Foreign : ParamsOf<Foreign, 77> {};
    auto other = std::make_unique<Foreign>();
    other->order = 1;
    step->AddParams(std::move(other));
    ASSERT_TRUE(history.PushStep(step));
    ASSERT_TRUE(logic->Undo());
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->EffectIndex(), -1);
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 9));
}

TEST_F(EffectLogic, RevertKeepsTheResultAndShowsTheOriginal) {
    ASSERT_TRUE(logic->ApplyEffect(3, nullptr));
    ASSERT_TRUE(logic->Revert());
    EXPECT_EQ(logic->EffectIndex(), -1);
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_FALSE(logic->IsImageChanged());
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == Effect(picture, 3));
    EXPECT_EQ(logic->EffectIndex(), -1) << "reverting baked it";
}

}  // namespace
