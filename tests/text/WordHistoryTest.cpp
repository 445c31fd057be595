// SPDX-License-Identifier: GPL-3.0-or-later
#include "CHistoryStep.h"
#include "ImageParams.h"
#include "WordFixture.h"

namespace {

// The texts that the step on show holds.
QStringList RecordedTexts(const CHistoryManager& history) {
    QStringList texts;
    const auto step = history.CloneCurrent();
    for (const auto& record : step->Params())
        if (const auto* text = RecordAs<StringParams>(*record)) texts << text->GetText();
    return texts;
}

}  // namespace

TEST_F(WordTest, AllActsOfAVisitMakeOneStepThatHoldsPictureAndTexts) {
    Add(QStringLiteral("one"), {10, 10});
    EXPECT_EQ(history.m_count, 2);
    Add(QStringLiteral("two"), {10, 100});
    logic.MoveSelected(5, 5);
    logic.TurnSelected(15);
    Click(Middle(0));
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(history.GetStepNames()[1], LanguageText(QStringLiteral("ids_wenzi")));
    EXPECT_EQ(RecordedTexts(history), QStringList({QStringLiteral("two"), QStringLiteral("one")}));
    const auto step = history.CloneCurrent();
    EXPECT_TRUE(step->ReadImage() == opened) << "the file is that of the picture below";
    for (std::size_t i = 1; i < step->Params().size(); ++i) EXPECT_EQ(step->Params()[i]->order, static_cast<int>(i));
}

TEST_F(WordTest, AReleaseRecordsWhatChangedAndNothingElse) {
    Add(QStringLiteral("one"), {100, 100}, 60);
    const auto stamp = history.CurrentStamp();
    Click(Middle(0));
    EXPECT_EQ(history.CurrentStamp(), stamp);
    const QPoint from = Middle(0);
    logic.Press(from);
    logic.MoveTo(from + QPoint(20, 0), false);
    EXPECT_EQ(history.CurrentStamp(), stamp);
    logic.Release(from + QPoint(20, 0));
    EXPECT_NE(history.CurrentStamp(), stamp);
    EXPECT_FALSE(logic.HasUnrecorded());
}

TEST_F(WordTest, AChangeWaitsToBeSettled) {
    Add(QStringLiteral("one"), {100, 100});
    logic.ChangeSelected([](StringParams& text) { text.SetText(QStringLiteral("typed")); });
    EXPECT_TRUE(logic.HasUnrecorded());
    EXPECT_EQ(RecordedTexts(history), QStringList({QStringLiteral("one")}));
    EXPECT_TRUE(logic.CommitStep());
    EXPECT_FALSE(logic.HasUnrecorded());
    EXPECT_EQ(RecordedTexts(history), QStringList({QStringLiteral("typed")}));
    EXPECT_FALSE(logic.CommitStep());
}

TEST_F(WordTest, UndoAndRedoBringTheTextsBackUnselected) {
    Add(QStringLiteral("one"), {10, 10});
    Add(QStringLiteral("two"), {10, 100});
    const Bitmap burnt = logic.RenderResult();
    EXPECT_TRUE(logic.Undo());
    EXPECT_EQ(logic.Count(), 0);
    EXPECT_TRUE(logic.RenderResult() == opened);
    EXPECT_FALSE(logic.IsImageChanged());
    EXPECT_TRUE(logic.Redo());
    EXPECT_EQ(Texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(logic.Selected(), CWordLogic::None);
    EXPECT_TRUE(logic.RenderResult() == burnt);
    // The step is the visit's again.
    Click(Middle(0));
    logic.MoveSelected(1, 1);
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(WordTest, AfterUndoTheNextActIsANewStep) {
    Add(QStringLiteral("one"), {10, 10});
    logic.Undo();
    Add(QStringLiteral("two"), {10, 10});
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(Texts(), QStringList{QStringLiteral("two")});
    EXPECT_FALSE(logic.Redo());
}

TEST_F(WordTest, AStepSharesNothingWithTheTextsOnShow) {
    Add(QStringLiteral("one"), {10, 10});
    const auto step = history.CloneCurrent();
    logic.ChangeSelected([](StringParams& text) {
        text.SetText(QStringLiteral("changed"));
        text.SetPosition(99, 99);
    });
    EXPECT_EQ(RecordedTexts(history), QStringList{QStringLiteral("one")});
    EXPECT_EQ(TextDrawing::PlaceOf(*RecordAs<StringParams>(*step->Params()[1])), QPointF(10, 10));
}

TEST_F(WordTest, DeletionsAreTakenBackOneByOneWhereTheyWereTheLastActs) {
    for (const char* text : {"a", "b", "c"}) Add(QLatin1String(text), {100, 100}, 60);
    const Bitmap before = logic.RenderResult();
    logic.DeleteSelected();
    logic.SelectNext(true);
    EXPECT_FALSE(logic.MayRestoreDeleted()) << "a text came to the top since";
    logic.DeleteSelected();
    EXPECT_EQ(logic.Count(), 1);
    ASSERT_TRUE(logic.MayRestoreDeleted());
    EXPECT_TRUE(logic.RestoreDeleted());
    EXPECT_EQ(logic.Count(), 2);
    EXPECT_FALSE(logic.RestoreDeleted());
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(RecordedTexts(history).size(), 2);
    // Two at once.
    Open(opened);
    for (const char* text : {"a", "b"}) Add(QLatin1String(text), {100, 100}, 60);
    const Bitmap both = logic.RenderResult();
    logic.DeleteSelected();
    Click(Middle(0));
    logic.DeleteSelected();
    EXPECT_EQ(logic.Count(), 0);
    EXPECT_TRUE(logic.RestoreDeleted());
    EXPECT_TRUE(logic.RestoreDeleted());
    EXPECT_TRUE(logic.RenderResult() == both);
    EXPECT_FALSE(logic.MayRestoreDeleted());
}

TEST_F(WordTest, LeavingBurnsTheTextsIntoASnapshot) {
    Add(QStringLiteral("burn"), {100, 100}, 80);
    const Bitmap burnt = logic.RenderResult();
    logic.Apply();
    EXPECT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == burnt);
    EXPECT_TRUE(history.CurrentBitmap() == burnt);
    // The next tool goes on with the view of the burnt picture.
    Bitmap view;
    DrawVisiblePart(burnt, logic.Geometry(), ViewQuality::Settled, view);
    EXPECT_TRUE(history.ViewState()->bitmap == view);
    EXPECT_EQ(history.ViewState()->destRect, logic.Geometry().ScreenRect());
}

TEST_F(WordTest, LeavingWithNoTextLeftMakesTheVisitsStepThePlainPicture) {
    Add(QStringLiteral("gone"), {100, 100});
    logic.DeleteSelected();
    logic.Apply();
    EXPECT_EQ(history.m_count, 2);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->ReadImage() == opened);
    EXPECT_TRUE(history.CurrentBitmap() == opened);
}

TEST_F(WordTest, LeavingWithoutAnActPushesNothing) {
    logic.Apply();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(history.CurrentBitmap() == opened);
}

TEST_F(WordTest, AStepLeftAheadByUndoIsFinishedForOtherTools) {
    Add(QStringLiteral("ahead"), {100, 100}, 80);
    const Bitmap burnt = logic.RenderResult();
    logic.Undo();
    logic.Apply();
    EXPECT_TRUE(history.CurrentBitmap() == opened);
    const auto head = history.CloneHead();
    EXPECT_EQ(head->Params().size(), 1u);
    EXPECT_TRUE(head->ReadImage() == burnt);
}

TEST_F(WordTest, ASecondVisitStartsFromTheBurntPicture) {
    Add(QStringLiteral("first"), {100, 100}, 80);
    const Bitmap burnt = logic.RenderResult();
    logic.Apply();
    CWordLogic next(history);
    next.SetViewSize(1000, 700);
    ASSERT_TRUE(next.TakeViewState());
    EXPECT_EQ(next.Count(), 0);
    EXPECT_TRUE(next.Picture() == burnt);
    ASSERT_TRUE(next.AddText(Style(QStringLiteral("second"))));
    EXPECT_EQ(history.m_count, 3);
    next.Undo();
    EXPECT_TRUE(next.RenderResult() == burnt);
    next.Undo();
    EXPECT_TRUE(next.RenderResult() == opened);
}

TEST_F(WordTest, RevertShowsTheOpenedPictureAndIsUndone) {
    Add(QStringLiteral("away"), {100, 100}, 80);
    const Bitmap burnt = logic.RenderResult();
    EXPECT_TRUE(logic.Revert());
    EXPECT_EQ(logic.Count(), 0);
    EXPECT_TRUE(logic.RenderResult() == opened);
    EXPECT_TRUE(logic.Undo());
    EXPECT_TRUE(logic.RenderResult() == burnt);
}

TEST_F(WordTest, AStepWhosePixelsAreGoneIsRefusedAndNothingChanges) {
    Add(QStringLiteral("stay"), {100, 100});
    EXPECT_FALSE(logic.LoadStep(nullptr));
    EXPECT_FALSE(logic.LoadStep(std::make_unique<CHistoryStep>()));
    auto step = std::make_unique<CHistoryStep>();
    auto image = std::make_unique<ImageParams>();
    image->path = QStringLiteral("/nowhere/at/all.bin");
    step->AddParams(std::move(image));
    EXPECT_FALSE(logic.LoadStep(std::move(step)));
    EXPECT_EQ(Texts(), QStringList{QStringLiteral("stay")});
    EXPECT_TRUE(logic.Picture() == opened);
}

TEST_F(WordTest, AnActWithoutMemoryHasNotHappened) {
    Add(QStringLiteral("stay"), {100, 100});
    const auto putBack = logic.Remember();
    logic.DeleteSelected();
    logic.AddText(Style(QStringLiteral("other")));
    putBack();
    EXPECT_EQ(Texts(), QStringList{QStringLiteral("stay")});
    EXPECT_EQ(logic.Selected(), 0);
    EXPECT_EQ(RecordedTexts(history), QStringList{QStringLiteral("stay")});
}
