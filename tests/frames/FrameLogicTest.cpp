// SPDX-License-Identifier: GPL-3.0-or-later
// The frame tool without its window.
#include "CEffect.h"
#include "CHistoryManager.h"
#include "CImageFrameLogic.h"
#include "FrameFolder.h"
#include "PC_File.h"
#include "TestHome.h"

namespace {

class FrameLogic : public testing::Test {
  protected:
    FrameLogic() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        strip = folder.AddStrip(QStringLiteral("strip"), 9);
        nine = folder.AddNine(QStringLiteral("nine"), 7);
        overlay = folder.AddOverlay(QStringLiteral("overlay"), 5);
        other = folder.AddOverlay(QStringLiteral("other"), 6);
        picture = TestPictures::Face(120, 98);
        EXPECT_TRUE(history.OpenImage(picture));
        NewVisit();
        logic->SetSource(picture);
    }
    void NewVisit() {
        logic = nullptr;
        logic = std::make_unique<CImageFrameLogic>(history);
        logic->SetViewSize(400, 300);
    }
    static FrameParams Record(const QString& path, int kind) {
        FrameParams params;
        params.FramePath = path;
        params.FrameType = kind;
        return params;
    }
    Bitmap With(const QString& path, int kind) const { return Record(path, kind).Apply(picture, 1.0f); }
    bool Apply(const QString& path, int kind) { return logic->ApplyFrame(path, kind, nullptr); }
    Bitmap Shown() { return logic->RenderResult(); }
    QString LookFile() const { return logic->LookFile(); }

    FrameFolder folder;
    CHistoryManager history;
    QString strip, nine, overlay, other;
    Bitmap picture;
    std::unique_ptr<CImageFrameLogic> logic;
};

TEST_F(FrameLogic, ParamsApplyKnowsAFrameByItsContent) {
    EXPECT_TRUE(With({}, FrameSimple).IsNull());
    EXPECT_TRUE(With(strip, FrameNone).IsNull());
    EXPECT_TRUE(Record(strip, FrameSimple).Apply({}, 1.0f).IsNull());
    EXPECT_TRUE(With(strip, FrameOrnate).IsNull());
    EXPECT_TRUE(With(overlay, FrameSimple).IsNull());
    EXPECT_EQ(With(overlay, FrameOrnate).Width(), 120);
    const QString disguised = folder.Folder(FrameSimple) + QStringLiteral("/disguised.vnbkwz");
    ASSERT_TRUE(QFile::copy(strip, disguised));
    EXPECT_EQ(With(disguised, FrameSimple), With(strip, FrameSimple)) << "a strip by the name of a nine-part frame";
}

TEST_F(FrameLogic, ASimpleFrameMakesThePictureLarger) {
    ASSERT_TRUE(Apply(strip, FrameSimple));
    EXPECT_EQ(Shown(), With(strip, FrameSimple));
    EXPECT_EQ(logic->ImageSize(), QSize(138, 116));
    EXPECT_EQ(logic->Geometry().Image(), QSize(138, 116)) << "the view follows";
    EXPECT_EQ(logic->Params(), Record(strip, FrameSimple));
    EXPECT_EQ(history.m_count, 2);
    ASSERT_TRUE(logic->Undo());
    EXPECT_EQ(logic->ImageSize(), QSize(120, 98));
    EXPECT_EQ(Shown(), picture);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(Shown(), With(strip, FrameSimple));
    EXPECT_EQ(logic->Geometry().Image(), QSize(138, 116));
}

TEST_F(FrameLogic, ASecondChoiceReplacesTheFirst) {
    ASSERT_TRUE(Apply(strip, FrameSimple));
    ASSERT_TRUE(Apply(nine, FrameSimple));
    EXPECT_EQ(Shown(), With(nine, FrameSimple));
    ASSERT_TRUE(Apply(overlay, FrameOrnate));
    EXPECT_EQ(Shown(), With(overlay, FrameOrnate));
    EXPECT_EQ(history.m_count, 2) << "one step a visit";
    ASSERT_TRUE(logic->Undo());
    EXPECT_EQ(Shown(), picture);
}

TEST_F(FrameLogic, AFrameThatFailsLeavesTheFormerOneItsRecordAndItsStep) {
    ASSERT_TRUE(Apply(overlay, FrameOrnate));
    logic->SetAlpha(40);
    ASSERT_TRUE(logic->CommitStep());
    const Bitmap shown = Shown();
    const FrameParams params = logic->Params();
    const QString broken = folder.Write(FrameSimple, QStringLiteral("broken.nlf"), {1, 2, 3});
    for (const QString& path : {broken, overlay, QStringLiteral("/none.nlf")}) {
        EXPECT_FALSE(Apply(path, FrameSimple));
        EXPECT_TRUE(logic->TakeFailure());
        EXPECT_FALSE(logic->TakeFailure()) << "it is told once";
        EXPECT_EQ(Shown(), shown);
        EXPECT_EQ(logic->Params(), params);
        EXPECT_EQ(history.m_count, 2);
        EXPECT_TRUE(logic->IsRecorded());
    }
    EXPECT_FALSE(Apply({}, FrameSimple));
    EXPECT_FALSE(Apply(strip, FrameNone));
    EXPECT_FALSE(logic->TakeFailure()) << "nothing was asked for";
}

TEST_F(FrameLogic, StrengthIsForOrnateFramesAlone) {
    logic->SetAlpha(30);
    EXPECT_EQ(logic->Alpha(), 100);
    ASSERT_TRUE(Apply(strip, FrameSimple));
    EXPECT_FALSE(logic->CanFade());
    logic->SetAlpha(30);
    EXPECT_EQ(logic->Alpha(), 100);
    EXPECT_EQ(Shown(), With(strip, FrameSimple));
    ASSERT_TRUE(Apply(overlay, FrameOrnate));
    EXPECT_TRUE(logic->CanFade());
    logic->SetAlpha(30);
    EXPECT_EQ(logic->Alpha(), 30);
    Bitmap faded = With(overlay, FrameOrnate), source = picture;
    CEffect::Effect_AlphaAdJust(faded.MutablePixels(), source.MutablePixels(), 120, 98, 0.7);
    EXPECT_EQ(Shown(), faded);
    ASSERT_TRUE(Apply(other, FrameOrnate));
    EXPECT_EQ(logic->Alpha(), 100);
}

// Around nothing: a simple frame of the picture's own size.
TEST_F(FrameLogic, ASimpleFrameOfThePicturesSizeCantBeFadedEither) {
    const QString flat = folder.AddStrip(QStringLiteral("flat"), 4);
    QFile file(flat);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(45);
    file.write(QByteArray(8, '\0'));
    file.close();
    ASSERT_TRUE(Apply(flat, FrameSimple));
    EXPECT_EQ(logic->ImageSize(), QSize(120, 98));
    logic->SetAlpha(20);
    EXPECT_EQ(logic->Alpha(), 100);
    EXPECT_EQ(Shown(), With(flat, FrameSimple));
}

TEST_F(FrameLogic, AStepHoldsSourceAndRecordWhileTheToolIsOpen) {
    ASSERT_TRUE(Apply(overlay, FrameOrnate));
    logic->SetAlpha(55);
    ASSERT_TRUE(logic->CommitStep());
    const auto step = history.CloneCurrent();
    ASSERT_EQ(step->Params().size(), 2u);
    const auto* record = RecordAs<FrameParams>(*step->Params()[1]);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->FramePath, overlay);
    EXPECT_EQ(record->FrameType, FrameOrnate);
    EXPECT_EQ(record->Alpha, 55);
    EXPECT_EQ(record->order, 1);
    EXPECT_EQ(step->ReadImage(), picture);
    EXPECT_EQ(PC_File::ImageReadFrombinary(LookFile().toStdWString()), With(overlay, FrameOrnate));
    EXPECT_TRUE(LookFile().endsWith(QStringLiteral("FrameRes.bin")));
}

TEST_F(FrameLogic, TheFinalStepIsTheResultAloneAndFramesStackAcrossVisits) {
    ASSERT_TRUE(Apply(strip, FrameSimple));
    const Bitmap framed = Shown();
    logic->Apply();
    EXPECT_EQ(history.CurrentBitmap(), framed);
    EXPECT_EQ(history.CloneCurrent()->Params().size(), 1u);
    NewVisit();
    ASSERT_TRUE(logic->TakeViewState());
    EXPECT_FALSE(logic->HasLook());
    EXPECT_EQ(logic->ImageSize(), QSize(138, 116));
    ASSERT_TRUE(Apply(nine, FrameSimple));
    EXPECT_EQ(Shown(), Record(nine, FrameSimple).Apply(framed, 1.0f));
    EXPECT_EQ(history.m_count, 3);
}

TEST_F(FrameLogic, LeavingWithoutAFramePushesNothing) {
    logic->Apply();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_EQ(history.CurrentBitmap(), picture);
}

TEST_F(FrameLogic, UndoRedoAndJumpKeepStrength) {
    ASSERT_TRUE(Apply(overlay, FrameOrnate));
    logic->SetAlpha(35);
    const Bitmap faded = Shown();
    ASSERT_TRUE(logic->Undo());
    EXPECT_FALSE(logic->CanFade());
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(logic->Alpha(), 35);
    EXPECT_EQ(Shown(), faded);
    ASSERT_TRUE(logic->Jump(0));
    ASSERT_TRUE(logic->Jump(1));
    EXPECT_EQ(Shown(), faded);
    ASSERT_TRUE(logic->Revert());
    EXPECT_EQ(Shown(), picture);
}

TEST_F(FrameLogic, AResultThatCannotBeReadIsComposedAgain) {
    for (const QString& path : {strip, nine}) {
        ASSERT_TRUE(Apply(path, FrameSimple));
        const Bitmap framed = Shown();
        ASSERT_TRUE(logic->Undo());
        QFile::remove(LookFile());
        ASSERT_TRUE(logic->Redo());
        EXPECT_EQ(Shown(), framed);
        ASSERT_TRUE(logic->Undo());
        // One of another size.
        ASSERT_TRUE(PC_File::ImageSaveTobinary(TestPictures::Face(50, 50), LookFile().toStdWString()));
        ASSERT_TRUE(logic->Redo());
        EXPECT_EQ(Shown(), framed);
        EXPECT_FALSE(logic->TakeFailure());
        ASSERT_TRUE(logic->Undo());
    }
}

TEST_F(FrameLogic, WithoutResultAndFrameTheSourceIsShownAndThatIsTold) {
    ASSERT_TRUE(Apply(strip, FrameSimple));
    ASSERT_TRUE(logic->Undo());
    QFile::remove(LookFile());
    QFile::remove(strip);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(Shown(), picture);
    EXPECT_FALSE(logic->HasLook());
    EXPECT_EQ(logic->Geometry().Image(), QSize(120, 98));
    EXPECT_TRUE(logic->TakeFailure());
}

TEST_F(FrameLogic, AResultAtHandNeedsTheFrameNoMore) {
    ASSERT_TRUE(Apply(strip, FrameSimple));
    const Bitmap framed = Shown();
    ASSERT_TRUE(logic->Undo());
    QFile::remove(strip);
    ASSERT_TRUE(logic->Redo());
    EXPECT_EQ(Shown(), framed);
    EXPECT_FALSE(logic->TakeFailure());
}

TEST_F(FrameLogic, ARecordOfASimpleFrameIsTakenAtFullStrength) {
    auto step = std::make_unique<CHistoryStep>();
    ASSERT_TRUE(Apply(strip, FrameSimple));
    step = history.CloneCurrent();
    for (const auto& record : step->Params())
        if (record->GetType() == FrameParams::Type) static_cast<FrameParams&>(*record).Alpha = 12;
    ASSERT_TRUE(logic->LoadStep(std::move(step)));
    EXPECT_EQ(logic->Alpha(), 100);
    EXPECT_EQ(Shown(), With(strip, FrameSimple));
}

TEST_F(FrameLogic, AStoppedFrameHasNotHappenedAndIsNoFailure) {
    class Stopping : public CObjProgress {
      public:
        int CanContinue() override { return m_fValue < 5; }
    };
    picture = TestPictures::Face(400, 3000);
    logic->SetSource(picture);
    for (const auto& [path, kind] : {std::pair(strip, FrameSimple), std::pair(overlay, FrameOrnate)}) {
        Stopping sink;
        EXPECT_FALSE(logic->ApplyFrame(path, kind, &sink));
        EXPECT_FALSE(logic->TakeFailure());
        EXPECT_EQ(Shown(), picture);
        EXPECT_EQ(history.m_count, 1);
    }
}

}  // namespace
