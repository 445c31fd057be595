// SPDX-License-Identifier: GPL-3.0-or-later
// Every row of the tool table, so that a new tool is tested at its birth.
#include <map>
#include <QtCore/QFile>

#include "AdjustSliders.h"
#include "AppPaths.h"
#include "CAdjustWnd.h"
#include "CCutWnd.h"
#include "CEffectWnd.h"
#include "CHistoryManager.h"
#include "CImageFrameWnd.h"
#include "CLeftPanel.h"
#include "CMRYiJianMeiYanWnd.h"
#include "CRotateWnd.h"
#include "CSizeWnd.h"
#include "CToolPanel.h"
#include "CWordWnd.h"
#include "FrameCatalogue.h"
#include "FrameFixture.h"
#include "Language.h"
#include "Strokes.h"
#include "TestPictures.h"

namespace {

void PaintOnce(CBaseWnd& canvas) {
    const QPoint middle = canvas.rect().center();
    Strokes::Draw(canvas, Strokes::Line(middle - QPoint(60, 20), middle + QPoint(60, 20), 12));
}

void ClickRedEye(CBaseWnd& canvas) {
    const ViewGeometry& geometry = static_cast<CViewWnd&>(canvas).Geometry();
    Strokes::Draw(canvas, {geometry.ToClient(QPointF(FrameTest::RedEye())).toPoint()});
}

// Something that each tool does to the picture. A tool that is missing here fails the tests below.
const std::map<int, std::function<void(CBaseWnd&)>> Works{
    {1, [](CBaseWnd& canvas) { static_cast<CAdjustWnd&>(canvas).CommitValue(AdjustIndex::Contrast, 40); }},
    {2,
     [](CBaseWnd& canvas) {
         static_cast<CCutWnd&>(canvas).SetSelectionSize(700, 900);
         static_cast<CCutWnd&>(canvas).CropToSelection();
     }},
    {3, [](CBaseWnd& canvas) { static_cast<CRotateWnd&>(canvas).Turn(&CRotateLogic::TurnRight); }},
    {4, [](CBaseWnd& canvas) { static_cast<CSizeWnd&>(canvas).ApplySize(1000, 1100); }},
    {5, [](CBaseWnd& canvas) { static_cast<CWordWnd&>(canvas).AddText(QStringLiteral("Rows"), {}); }},
    {6,
     [](CBaseWnd& canvas) {
         static_cast<CImageFrameWnd&>(canvas).RunLook(
             FrameNumber(FrameSimple, ResourcePath(QStringLiteral("Sucai/Biankuang/JianDan/GoldLine.nlf"))));
     }},
    {7, [](CBaseWnd& canvas) { static_cast<CEffectWnd&>(canvas).RunLook(5); }},
    {8, [](CBaseWnd& canvas) { static_cast<CMRYiJianMeiYanWnd&>(canvas).RunLook(3); }},
    {9, PaintOnce},
    {10, PaintOnce},
    {11, PaintOnce},
    {12, PaintOnce},
    {13, PaintOnce},
    {14, PaintOnce},
    {15, ClickRedEye},
    {16, PaintOnce},
    {17, PaintOnce},
    {18, PaintOnce},
};

std::vector<int> Numbers() {
    const ToolTable tools = BuiltInTools();
    std::vector<int> numbers;
    for (const ToolRow& row : tools.Rows()) numbers.push_back(row.facts.number);
    return numbers;
}

class ToolRows : public FrameTest, public testing::WithParamInterface<int> {
  protected:
    static CHistoryManager& History() { return CHistoryManager::Instance(); }
    ToolFacts Facts() const { return BuiltInTools().Row(GetParam())->facts; }
    void Work() {
        const auto work = Works.find(GetParam());
        ASSERT_NE(work, Works.end()) << "say what tool " << GetParam() << " does";
        work->second(*Mid().Canvas());
    }
};

}  // namespace

TEST_P(ToolRows, TheNumberIsThereOnce) {
    const std::vector<int> numbers = Numbers();
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), GetParam()), 1);
}

TEST_P(ToolRows, SkinPanelWindowAndStepNameAreThereInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        EXPECT_TRUE(QFile::exists(
            ResourcePath(QStringLiteral("I18N/%1/%2").arg(QLatin1String(language), QLatin1String(Facts().skin)))));
        EXPECT_FALSE(LanguageText(QLatin1String(Facts().stepName)).isEmpty());
        Show(Photo());
        CToolPanel* panel = Frame().LeftPanel().Panel(GetParam());
        ASSERT_TRUE(panel);
        EXPECT_FALSE(panel->findChildren<QWidget*>().isEmpty()) << "the skin did not load";
        Mid().SwitchTool(GetParam());
        EXPECT_EQ(Mid().Tool(), GetParam());
        EXPECT_EQ(Mid().Canvas()->Tool(), GetParam());
        EXPECT_TRUE(Mid().Canvas()->isVisible());
        TearDown();
    }
}

TEST_P(ToolRows, EnteringAndLeavingWithoutAnActChangesNothing) {
    Show(Photo());
    for (const int other : Numbers()) {
        if (other == GetParam()) continue;
        Mid().SwitchTool(other);
        Mid().SwitchTool(GetParam());
        EXPECT_FALSE(Mid().Canvas()->IsImageChanged());
        Mid().SwitchTool(other);
        EXPECT_EQ(History().m_count, 1) << "by way of " << other;
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == PhotoPixels());
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap().IsOpaque());
    }
}

TEST_P(ToolRows, EveryOtherToolGetsItsPixelsItsViewAndItsStep) {
    Show(Photo());
    for (const int next : Numbers()) {
        if (next == GetParam()) continue;
        SCOPED_TRACE(testing::Message() << GetParam() << " then " << next);
        ASSERT_TRUE(Mid().OpenImage(Photo()));
        Mid().SwitchTool(GetParam());
        Work();
        ASSERT_FALSE(testing::Test::HasFatalFailure());
        Mid().Canvas()->ZoomToPercent(130);
        const Bitmap result = Mid().Canvas()->GetShowBitmap();
        EXPECT_FALSE(result == PhotoPixels());
        QRectF source, sourceNext;
        QRect place, placeNext;
        Mid().Canvas()->GetViewRects(&source, &place);
        Mid().SwitchTool(next);
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == result);
        EXPECT_DOUBLE_EQ(Mid().Canvas()->GetZoom(), 1.3);
        Mid().Canvas()->GetViewRects(&sourceNext, &placeNext);
        EXPECT_EQ(sourceNext, source);
        EXPECT_EQ(placeNext, place);
        EXPECT_TRUE(Mid().Canvas()->IsImageChanged());
        ASSERT_EQ(History().m_count, 2);
        EXPECT_EQ(History().GetStepNames()[1], LanguageText(QLatin1String(Facts().stepName)));
        Mid().Canvas()->OnUndo();
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == PhotoPixels());
        Mid().Canvas()->OnRedo();
        EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == result);
        Mid().SwitchTool(1);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ToolRows, testing::ValuesIn(Numbers()));
