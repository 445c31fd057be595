// SPDX-License-Identifier: GPL-3.0-or-later
#include "CHistoryManager.h"
#include "FrameFixture.h"
#include "ToyTool.h"

namespace {

class ToolSwitch : public FrameTest {
  protected:
    ToolTable WithToys() {
        std::vector<ToolRow> rows{*BuiltInTools().Row(1)};
        for (const int number : {2, 7, 8}) {
            ToolRow row;
            row.facts.number = number;
            row.makeCanvas = [this, number](QWidget* parent, ToolHost& host) -> CBaseWnd* {
                return new ToyTool(host, number, parent, m_told);
            };
            rows.push_back(row);
        }
        ToolRow broken;
        broken.facts.number = 6;
        broken.makeCanvas = [](QWidget*, ToolHost&) -> CBaseWnd* { return nullptr; };
        rows.push_back(broken);
        return ToolTable(rows);
    }
    QStringList m_told;
};

}  // namespace

TEST_F(ToolSwitch, TheNewToolIsEnteredOnAWorkerAfterTheOldOneLeft) {
    Show(Photo(), WithToys());
    Mid().SwitchTool(2);
    EXPECT_EQ(m_told, QStringList({QStringLiteral("2 OnEnter on worker"), QStringLiteral("2 SetShowBitmap on worker"),
                                   QStringLiteral("2 ZoomFit on worker"), QStringLiteral("2 OnImageReady on worker")}));
    m_told.clear();
    Mid().SwitchTool(7);
    EXPECT_EQ(m_told.first(), QStringLiteral("2 OnApply on worker"));
    EXPECT_EQ(m_told.last(), QStringLiteral("2 gone")) << "the old tool goes when the new one stands";
    EXPECT_EQ(Mid().Tool(), 7);
}

TEST_F(ToolSwitch, TheSameToolDoesNothingBeyondLeavingCompare) {
    Show(Photo(), WithToys());
    Driver::DragSlider(QStringLiteral("Liangdu"), 20);
    CBaseWnd* canvas = Mid().Canvas();
    Mid().SetCompareMode(1);
    ASSERT_EQ(Mid().CompareMode(), 1);
    Mid().SwitchTool(1);
    EXPECT_EQ(Mid().CompareMode(), 0);
    EXPECT_EQ(Mid().Canvas(), canvas);
}

TEST_F(ToolSwitch, AnUnknownNumberIsOnlyStored) {
    Show(Photo(), WithToys());
    CBaseWnd* canvas = Mid().Canvas();
    Mid().SwitchTool(99);
    EXPECT_EQ(Mid().Tool(), 99);
    EXPECT_EQ(Mid().Canvas(), canvas);
    Mid().SwitchTool(1);
    EXPECT_EQ(Mid().Tool(), 1);
}

TEST_F(ToolSwitch, AToolThatCannotBeMadeLeavesThePresentOne) {
    Show(Photo(), WithToys());
    CBaseWnd* canvas = Mid().Canvas();
    Mid().SwitchTool(6);
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_EQ(Mid().Canvas(), canvas);
}

TEST_F(ToolSwitch, WithoutAPictureAToolIsEnteredWithoutASource) {
    Show({}, WithToys());
    Mid().SwitchTool(2);
    EXPECT_EQ(m_told, QStringList({QStringLiteral("2 OnEnter"), QStringLiteral("2 OnImageReady")}));
}

TEST_F(ToolSwitch, EnteringAndLeavingWithoutAnActLeavesPictureAndSteps) {
    Show(Photo(), WithToys());
    Mid().SwitchTool(2);
    Mid().SwitchTool(1);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    EXPECT_EQ(CHistoryManager::Instance().m_count, 1);
    EXPECT_FALSE(Mid().Canvas()->IsImageChanged());
}

TEST_F(ToolSwitch, WorkDoneInAToolReachesTheNextOneAsPixelsAndAsASnapshotStep) {
    Show(Photo(), WithToys());
    Driver::DragSlider(QStringLiteral("Liangdu"), 40);
    const Bitmap adjusted = Mid().Canvas()->GetShowBitmap();
    ASSERT_NE(adjusted, PhotoPixels());
    Mid().SwitchTool(2);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), adjusted);
    auto& history = CHistoryManager::Instance();
    EXPECT_EQ(history.m_count, 2);
    EXPECT_EQ(history.CloneCurrent()->Params().size(), 1u);
    EXPECT_EQ(history.CloneCurrent()->ReadImage(), adjusted);
    Mid().SwitchTool(1);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), adjusted);
}
