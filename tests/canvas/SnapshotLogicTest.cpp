// SPDX-License-Identifier: GPL-3.0-or-later
#include "SnapshotLogic.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include "ImageParams.h"
#include "ToySnapshots.h"

namespace {

struct SnapshotLogicTest : testing::Test, OpenedHistory {
    void Enter(const Bitmap& opened) {
        picture = opened;
        Open(picture);
        logic = std::make_unique<HalvingLogic>(history);
        logic->SetViewSize(300, 200);
        logic->SetSource(picture);
    }
    void HalveAndCommit() {
        logic->Halve();
        ASSERT_TRUE(logic->CommitStep());
    }
    Bitmap picture;
    std::unique_ptr<HalvingLogic> logic;
};

TEST_F(SnapshotLogicTest, EverythingIsANoOpWithoutAPicture) {
    HalvingLogic empty(history);
    empty.SetSource({});
    EXPECT_FALSE(empty.TakeViewState());
    EXPECT_FALSE(empty.Undo());
    EXPECT_FALSE(empty.Redo());
    EXPECT_FALSE(empty.Jump(0));
    EXPECT_FALSE(empty.Revert());
    EXPECT_FALSE(empty.CommitStep());
    EXPECT_EQ(empty.BuildStep(true), nullptr);
    EXPECT_FALSE(empty.LoadStep(nullptr));
    EXPECT_FALSE(empty.IsImageChanged());
    empty.Apply();
    EXPECT_EQ(history.m_count, 0);
    EXPECT_EQ(empty.sources, 0);
}

TEST_F(SnapshotLogicTest, WorkIsPendingUntilItIsCommitted) {
    Enter(TestPictures::Face(400, 300));
    EXPECT_FALSE(logic->IsImageChanged());
    EXPECT_FALSE(logic->CommitStep());
    logic->Halve();
    EXPECT_TRUE(logic->HasUnrecorded());
    EXPECT_TRUE(logic->IsImageChanged());
    const auto step = logic->BuildStep(false);
    ASSERT_NE(step, nullptr);
    ASSERT_EQ(step->Params().size(), 1u);
    EXPECT_TRUE(step->Image()->save);
    EXPECT_EQ(step->Image()->order, 0);
    EXPECT_TRUE(logic->CommitStep());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_TRUE(logic->IsImageChanged());
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(SnapshotLogicTest, AResultIsShownAtItsFit) {
    Enter(TestPictures::Face(400, 300));
    ViewGeometry geometry = logic->Geometry();
    geometry.SetZoom(2.0);
    logic->SetGeometry(geometry, ViewQuality::Settled);
    logic->Halve();
    EXPECT_TRUE(logic->Geometry().AtFit());
    EXPECT_EQ(logic->ImageSize(), QSize(200, 300));
    EXPECT_EQ(logic->View().dest, logic->Geometry().ScreenRect());
}

TEST_F(SnapshotLogicTest, EachCommitIsAStepOfItsOwnAndUndoWalksThem) {
    Enter(TestPictures::Face(400, 300));
    HalveAndCommit();
    HalveAndCommit();
    EXPECT_EQ(history.m_count, 3);
    EXPECT_TRUE(logic->Undo());
    EXPECT_EQ(logic->ImageSize(), QSize(200, 300));
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_FALSE(logic->Undo());
    EXPECT_TRUE(logic->Redo());
    EXPECT_TRUE(logic->Redo());
    EXPECT_EQ(logic->ImageSize(), QSize(100, 300));
    EXPECT_FALSE(logic->Redo());
    EXPECT_TRUE(logic->Jump(0));
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_TRUE(logic->Jump(2));
    EXPECT_TRUE(logic->Revert());
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_FALSE(logic->IsImageChanged());
    EXPECT_EQ(history.m_count, 4);
}

TEST_F(SnapshotLogicTest, UndoRecordsWhatIsPendingFirst) {
    Enter(TestPictures::Face(400, 300));
    logic->Halve();
    EXPECT_TRUE(logic->Undo());
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_TRUE(logic->Redo());
    EXPECT_EQ(logic->ImageSize(), QSize(200, 300));
}

TEST_F(SnapshotLogicTest, AnUnreadableSnapshotKeepsThePicture) {
    Enter(TestPictures::Face(400, 300));
    HalveAndCommit();
    ASSERT_TRUE(QFile::remove(history.m_originPath));
    EXPECT_FALSE(logic->Undo());
    EXPECT_EQ(logic->ImageSize(), QSize(200, 300));
    EXPECT_EQ(history.m_currentNo, 2);
}

TEST_F(SnapshotLogicTest, ThePictureAndItsViewGoToTheNextTool) {
    Enter(TestPictures::Face(400, 300));
    HalveAndCommit();
    ViewGeometry geometry = logic->Geometry();
    geometry.SetZoom(2.5);
    geometry.PanBy(12, -9);
    logic->SetGeometry(geometry, ViewQuality::Settled);
    logic->Apply();
    EXPECT_EQ(history.m_count, 2);
    HalvingLogic next(history);
    next.SetViewSize(300, 200);
    ASSERT_TRUE(next.TakeViewState());
    EXPECT_TRUE(next.RenderResult() == logic->RenderResult());
    EXPECT_DOUBLE_EQ(next.Geometry().Zoom(), 2.5);
    EXPECT_EQ(next.Geometry().Pan(), logic->Geometry().Pan());
    EXPECT_TRUE(next.View().bitmap == logic->View().bitmap);
    EXPECT_FALSE(next.HasUnrecorded());
}

TEST_F(SnapshotLogicTest, EveryWayInTellsTheToolOfItsSource) {
    Enter(TestPictures::Face(400, 300));
    EXPECT_EQ(logic->sources, 1);
    HalveAndCommit();
    EXPECT_EQ(logic->sources, 1);  // the tool's own work comes from inside
    logic->Undo();
    EXPECT_EQ(logic->sources, 2);
    logic->Apply();
    EXPECT_TRUE(logic->TakeViewState());
    EXPECT_EQ(logic->sources, 3);
}

TEST_F(SnapshotLogicTest, ResetForgetsPictureAndPendingWork) {
    Enter(TestPictures::Face(400, 300));
    logic->Halve();
    logic->Reset();
    EXPECT_FALSE(logic->HasPicture());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_EQ(logic->Geometry().Client(), QSize(300, 200));
}

}  // namespace
