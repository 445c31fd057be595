// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include "CanvasSupport.h"
#include "CCompareListWnd.h"
#include "CHistoryManager.h"
#include "CHistoryStep.h"
#include "ClickCount.h"
#include "CMidBottomEditTool.h"
#include "CMidTopEditTool.h"
#include "CSliderCtrl.h"
#include "CUndoListWnd.h"
#include "HistoryButtons.h"
#include "ImageParams.h"
#include "Language.h"
#include "ShortName.h"

namespace {

using TestPictures::Plain;

// A canvas that writes down what it is asked for and moves in the history as a tool would.
class RecordingCanvas : public PlainTool {
  public:
    explicit RecordingCanvas(RecordingHost& host) : PlainTool(host), m_log(host.log) {}

    void ZoomToPercent(int percent) override { m_log.push_back(QStringLiteral("percent %1").arg(percent)); }
    void ZoomIn() override { m_log.push_back(QStringLiteral("in")); }
    void ZoomOut() override { m_log.push_back(QStringLiteral("out")); }
    void ZoomActualSize() override { m_log.push_back(QStringLiteral("actual")); }
    void ZoomFit() override { m_log.push_back(QStringLiteral("fit")); }
    void OnUndo() override {
        m_log.push_back(QStringLiteral("undo"));
        CHistoryManager::Instance().Undo();
    }
    void OnRedo() override {
        m_log.push_back(QStringLiteral("redo"));
        CHistoryManager::Instance().Redo();
    }
    void OnRevert() override {
        m_log.push_back(QStringLiteral("revert"));
        std::unique_ptr<CHistoryStep> step = CHistoryManager::Instance().MakeRevertStep();
        CHistoryManager::Instance().PushStep(step);
    }
    void OnHistoryJump(int row) override {
        m_log.push_back(QStringLiteral("jump %1").arg(row));
        CHistoryManager::Instance().JumpTo(row + 1);
    }
    bool IsImageChanged() override { return !CHistoryManager::Instance().IsOriginal() || pending; }
    bool HasPendingWork() override { return pending; }

    bool pending = false;

  private:
    std::vector<QString>& m_log;
};

class EditBars : public testing::Test {
  protected:
    EditBars() : canvas(host) {
        SetLanguage(QStringLiteral("1033"));
        CHistoryManager::Instance().Reset();
        host.canvas = &canvas;
        ClickCounts().Clear();
        bar = std::make_unique<CMidTopEditTool>(host, nullptr);
        bar->resize(774, 45);
        bar->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(bar.get()));
    }
    ~EditBars() override { CHistoryManager::Instance().Reset(); }

    void Open() {
        CHistoryManager::Instance().OpenImage(Plain(40, 30, 0xFF336699));
        bar->EnableZoom(true);
        bar->UpdateHistoryButtons();
        host.log.clear();
        host.messages.clear();
    }
    void Push(int count) {
        for (int i = 0; i < count; ++i) {
            auto step = std::make_unique<CHistoryStep>();
            step->SetNameFromKey(QStringLiteral("ids_bianji"));
            auto record = std::make_unique<ImageParams>();
            record->image = Plain(40, 30, 0xFF000000u + static_cast<std::uint32_t>(i));
            record->save = true;
            step->AddParams(std::move(record));
            EXPECT_TRUE(CHistoryManager::Instance().PushStep(step));
        }
        bar->UpdateHistoryButtons();
    }
    QWidget* Control(const char* name) {
        auto* control = bar->findChild<QWidget*>(QLatin1String(name));
        if (!control) qFatal("no control %s", name);
        return control;
    }
    void Click(const char* name) { QTest::mouseClick(Control(name), Qt::LeftButton); }
    QStringList Enabled() {
        QStringList names;
        for (const char* name : {"BtnUndo", "BtnRedo", "BtnMenuUndo", "BtnOriginal", "BtnCompare", "BtnMenuCompare"})
            if (Control(name)->isEnabled()) names << QLatin1String(name);
        return names;
    }
    int Clicks(const char* code) {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QLatin1String(code));
        return found == counts.end() ? 0 : found->second;
    }
    CUndoListWnd* UndoList() { return Control("BtnMenuUndo")->findChild<CUndoListWnd*>(); }

    RecordingHost host;
    RecordingCanvas canvas;
    std::unique_ptr<CMidTopEditTool> bar;
};

using Log = std::vector<QString>;

Log Words(std::initializer_list<const char*> words) {
    Log log;
    for (const char* word : words) log.push_back(QLatin1String(word));
    return log;
}

TEST_F(EditBars, AllButTheSliderStartDisabled) {
    for (const char* name : {"BtnZoomOut", "BtnZoomIn", "BtnMaster", "BtnMatch", "BtnUndo", "BtnRedo", "BtnOriginal",
                             "BtnCompare", "ComboCompare", "BtnMenuUndo", "BtnMenuCompare"})
        EXPECT_FALSE(Control(name)->isEnabled()) << name;
    EXPECT_TRUE(Control("SliderProportion")->isEnabled());
}

TEST_F(EditBars, OpeningAPictureLeavesHistoryAndCompareOff) {
    Open();
    EXPECT_EQ(Enabled(), QStringList{QStringLiteral("BtnMenuUndo")});
    EXPECT_TRUE(Control("BtnZoomIn")->isEnabled());
}

TEST_F(EditBars, ZoomButtonsAskTheCanvas) {
    Open();
    Click("BtnZoomOut");
    Click("BtnZoomIn");
    EXPECT_EQ(host.log, Words({"out", "in"}));
    EXPECT_TRUE(ClickCounts().Counts().empty());
}

TEST_F(EditBars, ActualSizeAndFitTakeEachOthersPlace) {
    Open();
    EXPECT_TRUE(Control("BtnMaster")->isVisible());
    EXPECT_FALSE(Control("BtnMatch")->isVisible());
    Click("BtnMaster");
    EXPECT_FALSE(Control("BtnMaster")->isVisible());
    EXPECT_TRUE(Control("BtnMatch")->isVisible());
    Click("BtnMatch");
    EXPECT_TRUE(Control("BtnMaster")->isVisible());
    EXPECT_FALSE(Control("BtnMatch")->isVisible());
    EXPECT_EQ(host.log, Words({"actual", "fit"}));
    EXPECT_EQ(Clicks("888050301"), 1);
    EXPECT_EQ(Clicks("888050302"), 1);
}

TEST_F(EditBars, TheSliderZoomsWhileItIsDraggedAndWhenItSettles) {
    Open();
    auto* slider = bar->Find<CSliderCtrl>(QStringLiteral("SliderProportion"));
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(100));
    QMouseEvent move(QEvent::MouseMove, QPointF(slider->HandleAt(300)),
                     slider->mapToGlobal(QPointF(slider->HandleAt(300))), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(slider, &move);
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(300));
    ASSERT_GE(host.log.size(), 2u);
    EXPECT_EQ(host.log.back(), QStringLiteral("percent %1").arg(slider->value()));
    EXPECT_NEAR(slider->value(), 300, 4);
}

TEST_F(EditBars, SliderFeedbackIsHeldBetweenItsEndsAndAsksForNothing) {
    Open();
    auto* slider = bar->Find<CSliderCtrl>(QStringLiteral("SliderProportion"));
    const std::pair<int, int> cases[] = {{5, 20},    {16, 20},   {20, 20},   {21, 21},
                                         {137, 137}, {400, 400}, {401, 400}, {900, 400}};
    for (const auto& [told, shown] : cases) {
        bar->ShowZoom(told);
        EXPECT_EQ(slider->value(), shown) << told;
    }
    EXPECT_TRUE(host.log.empty());
}

TEST_F(EditBars, EveryZoomRequestLeavesCompareFirst) {
    Open();
    for (const char* name : {"BtnZoomOut", "BtnZoomIn", "BtnMaster", "BtnMatch"}) {
        host.compareMode = 2;
        host.log.clear();
        Click(name);
        ASSERT_EQ(host.log.size(), 2u) << name;
        EXPECT_EQ(host.log[0], u"compare 0") << name;
    }
    host.compareMode = 1;
    host.log.clear();
    auto* slider = bar->Find<CSliderCtrl>(QStringLiteral("SliderProportion"));
    QTest::keyClick(slider, Qt::Key_Right);
    ASSERT_FALSE(host.log.empty());
    EXPECT_EQ(host.log[0], u"compare 0");
}

TEST_F(EditBars, EveryHistoryRequestLeavesCompareFirst) {
    Open();
    Push(2);
    CHistoryManager::Instance().Undo();
    bar->UpdateHistoryButtons();
    for (const char* name : {"BtnRedo", "BtnUndo", "BtnOriginal"}) {
        host.compareMode = 2;
        host.log.clear();
        Click(name);
        ASSERT_FALSE(host.log.empty()) << name;
        EXPECT_EQ(host.log[0], u"compare 0") << name;
    }
}

TEST_F(EditBars, UndoMovesTellsTheFrameAndSetsTheButtons) {
    Open();
    Push(2);
    EXPECT_EQ(Enabled(),
              (QStringList{QStringLiteral("BtnUndo"), QStringLiteral("BtnMenuUndo"), QStringLiteral("BtnOriginal"),
                           QStringLiteral("BtnCompare"), QStringLiteral("BtnMenuCompare")}));
    Click("BtnUndo");
    EXPECT_EQ(host.log, Words({"undo", "message 7f6", "size text", "message 7f4"}));
    EXPECT_EQ(Enabled().size(), 6);
    Click("BtnUndo");
    EXPECT_EQ(Enabled(), (QStringList{QStringLiteral("BtnRedo"), QStringLiteral("BtnMenuUndo")}));
    EXPECT_EQ(Clicks("8880504"), 2);
}

TEST_F(EditBars, RedoIsOffAtTheNewestStep) {
    Open();
    Push(1);
    Click("BtnUndo");
    host.log.clear();
    Click("BtnRedo");
    EXPECT_EQ(host.log, Words({"redo", "message 7f6", "size text", "message 7f4"}));
    EXPECT_FALSE(Control("BtnRedo")->isEnabled());
    EXPECT_TRUE(Control("BtnUndo")->isEnabled());
    EXPECT_EQ(Clicks("8880505"), 1);
}

TEST_F(EditBars, AfterRevertCompareIsOffThoughThereWereStepsToRedo) {
    Open();
    Push(3);
    Click("BtnUndo");
    Click("BtnOriginal");
    for (const char* name : {"BtnOriginal", "BtnCompare", "BtnMenuCompare", "BtnRedo"})
        EXPECT_FALSE(Control(name)->isEnabled()) << name;
    EXPECT_TRUE(Control("BtnUndo")->isEnabled());
    EXPECT_EQ(Clicks("8880506"), 1);
}

TEST_F(EditBars, PendingWorkAloneEnablesUndoAndCompare) {
    Open();
    canvas.pending = true;
    bar->UpdateHistoryButtons();
    EXPECT_EQ(Enabled().size(), 5);
    EXPECT_FALSE(Control("BtnRedo")->isEnabled());
}

TEST_F(EditBars, HistoryRequestsDoNothingWhileTheWorkAreaIsBusy) {
    Open();
    Push(1);
    host.busy = true;
    host.log.clear();
    Click("BtnUndo");
    bar->Press(QStringLiteral("BtnUndo"));
    QTest::mousePress(Control("BtnCompare"), Qt::LeftButton);
    QTest::mouseRelease(Control("BtnCompare"), Qt::LeftButton);
    EXPECT_TRUE(host.log.empty());
}

TEST_F(EditBars, ShortcutsPressEnabledButtonsOnly) {
    Open();
    bar->Press(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(host.log.empty());
    bar->Press(QStringLiteral("BtnZoomIn"));
    // The one of the two that is hidden can be asked for as well.
    bar->Press(QStringLiteral("BtnMatch"));
    EXPECT_EQ(host.log, Words({"in", "fit"}));
}

TEST_F(EditBars, CompareLastsAsLongAsTheButtonIsHeld) {
    Open();
    Push(1);
    host.log.clear();
    QTest::mousePress(Control("BtnCompare"), Qt::LeftButton);
    EXPECT_EQ(host.compareMode, 1);
    QTest::mouseRelease(Control("BtnCompare"), Qt::LeftButton);
    EXPECT_EQ(host.compareMode, 0);
    EXPECT_EQ(host.log, Words({"compare 1", "compare 0"}));
    EXPECT_EQ(Clicks("8880507"), 1);
}

TEST_F(EditBars, CompareEndsWhenTheMouseIsReleasedOutside) {
    Open();
    Push(1);
    QWidget* compare = Control("BtnCompare");
    QTest::mousePress(compare, Qt::LeftButton);
    const auto moveTo = [&](QPoint at) {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), compare->mapToGlobal(QPointF(at)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(compare, &move);
    };
    moveTo({-200, 300});
    EXPECT_EQ(host.compareMode, 1) << "leaving the button alone does not end it";
    moveTo({5, 5});
    moveTo({-200, 300});
    QTest::mouseRelease(compare, Qt::LeftButton, {}, {-200, 300});
    EXPECT_EQ(host.compareMode, 0);
    EXPECT_EQ(Clicks("8880507"), 1);
}

TEST_F(EditBars, CompareCanBeHeldByTheKeyboard) {
    Open();
    Push(1);
    QWidget* compare = Control("BtnCompare");
    compare->setFocus();
    QTest::keyPress(compare, Qt::Key_Space);
    EXPECT_EQ(host.compareMode, 1);
    QTest::keyRelease(compare, Qt::Key_Space);
    EXPECT_EQ(host.compareMode, 0);
    bar->HoldCompare(true);
    EXPECT_EQ(host.compareMode, 1);
    bar->HoldCompare(false);
    EXPECT_EQ(host.compareMode, 0);
}

TEST_F(EditBars, AShortcutCannotCompareAnUnchangedPicture) {
    Open();
    bar->HoldCompare(true);
    EXPECT_EQ(host.compareMode, 0);
}

TEST_F(EditBars, TheMenuComparesSideBySide) {
    Open();
    Push(1);
    Click("BtnMenuCompare");
    auto* menu = Control("BtnMenuCompare")->findChild<CCompareListWnd*>();
    ASSERT_TRUE(menu && menu->isVisible());
    EXPECT_TRUE(bar->Find<QAbstractButton>(QStringLiteral("BtnMenuCompare"))->isChecked());
    EXPECT_GE(menu->y(), bar->mapToGlobal(Control("BtnMenuCompare")->geometry().bottomLeft()).y());
    host.log.clear();
    QTest::mouseClick(menu->findChild<QWidget*>(QStringLiteral("ElementCompare")), Qt::LeftButton);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_FALSE(bar->Find<QAbstractButton>(QStringLiteral("BtnMenuCompare"))->isChecked());
    EXPECT_EQ(host.log, Words({"compare 2"}));
    // Already there: nothing more.
    Click("BtnMenuCompare");
    QTest::mouseClick(menu->findChild<QWidget*>(QStringLiteral("ElementCompare")), Qt::LeftButton);
    EXPECT_EQ(host.log, Words({"compare 2"}));
}

TEST_F(EditBars, EscClosesTheMenuAndResetsItsButton) {
    Open();
    Push(1);
    Click("BtnMenuCompare");
    auto* menu = Control("BtnMenuCompare")->findChild<CCompareListWnd*>();
    ASSERT_TRUE(menu && menu->isVisible());
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_FALSE(bar->Find<QAbstractButton>(QStringLiteral("BtnMenuCompare"))->isChecked());
    EXPECT_EQ(host.compareMode, 0);
}

TEST_F(EditBars, TheMenuClosesWhenItLosesTheFocus) {
    Open();
    Push(1);
    Click("BtnMenuCompare");
    auto* menu = Control("BtnMenuCompare")->findChild<CCompareListWnd*>();
    ASSERT_TRUE(menu && menu->isVisible());
    QEvent deactivate(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(menu, &deactivate);
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(EditBars, TheComboComparesSideBySide) {
    Open();
    Push(1);
    auto* combo = bar->Find<QComboBox>(QStringLiteral("ComboCompare"));
    combo->show();
    combo->setFocus();
    host.log.clear();
    QTest::keyClick(combo, Qt::Key_Space);
    auto* view = combo->view();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(0, 0)).center());
    EXPECT_EQ(host.log, Words({"compare 2"}));
    EXPECT_EQ(Clicks("8880507"), 1);
}

TEST_F(EditBars, TheHistoryListShowsTheStepsWithTheCurrentOneSelected) {
    Open();
    Push(2);
    Click("BtnUndo");
    Click("BtnMenuUndo");
    ASSERT_TRUE(UndoList() && UndoList()->isVisible());
    auto* list = UndoList()->findChild<CHistoryList*>(QStringLiteral("ListUndo"));
    ASSERT_TRUE(list);
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->Row(0)->Text(), u" Open picture");
    EXPECT_EQ(list->Row(1)->Text(), u" Adjust");
    EXPECT_EQ(list->currentRow(), 1);
    for (int row = 0; row < 3; ++row) EXPECT_EQ(list->visualItemRect(list->item(row)).height(), 25);
    const QWidget* option = Control("BtnMenuUndo");
    const QPoint below = option->mapToGlobal(QPoint(option->width() - 100, option->height()));
    EXPECT_EQ(UndoList()->pos(), below);
    UndoList()->hide();
    EXPECT_FALSE(bar->Find<QAbstractButton>(QStringLiteral("BtnMenuUndo"))->isChecked());
}

TEST_F(EditBars, ALongHistoryListScrollsToTheCurrentStep) {
    Open();
    Push(20);
    Click("BtnMenuUndo");
    auto* list = UndoList()->findChild<CHistoryList*>(QStringLiteral("ListUndo"));
    EXPECT_EQ(list->currentRow(), 20);
    EXPECT_TRUE(list->viewport()->rect().contains(list->visualItemRect(list->item(20)).center()));
    EXPECT_FALSE(list->viewport()->rect().intersects(list->visualItemRect(list->item(0))));
    EXPECT_NEAR(list->viewport()->height(), 6 * 25, 2);
    UndoList()->hide();
}

TEST_F(EditBars, AClickInTheHistoryListJumps) {
    Open();
    Push(3);
    Click("BtnMenuUndo");
    auto* list = UndoList()->findChild<CHistoryList*>(QStringLiteral("ListUndo"));
    host.compareMode = 2;
    host.log.clear();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    EXPECT_EQ(host.log, Words({"compare 0", "jump 1", "message 7f6", "size text", "message 7f4"}));
    EXPECT_FALSE(UndoList()->isVisible());
    EXPECT_TRUE(Control("BtnUndo")->isEnabled());
    EXPECT_TRUE(Control("BtnRedo")->isEnabled());
}

TEST_F(EditBars, TheFirstRowSwitchesUndoOffAndTheLastRedo) {
    Open();
    Push(2);
    const auto jump = [&](int row) {
        Click("BtnMenuUndo");
        auto* list = UndoList()->findChild<CHistoryList*>(QStringLiteral("ListUndo"));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    };
    jump(0);
    EXPECT_FALSE(Control("BtnUndo")->isEnabled());
    EXPECT_TRUE(Control("BtnRedo")->isEnabled());
    jump(2);
    EXPECT_TRUE(Control("BtnUndo")->isEnabled());
    EXPECT_FALSE(Control("BtnRedo")->isEnabled());
}

TEST_F(EditBars, TheHistoryListWorksByTheKeyboard) {
    Open();
    Push(2);
    Click("BtnMenuUndo");
    auto* list = UndoList()->findChild<CHistoryList*>(QStringLiteral("ListUndo"));
    host.log.clear();
    QTest::keyClick(list, Qt::Key_Up);
    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_FALSE(host.log.empty());
    EXPECT_EQ(host.log[0], u"jump 1");
}

TEST(HistoryButtonRule, IsOffBeforeTheFirstPicture) {
    CHistoryManager history(QStringLiteral("/nowhere"));
    EXPECT_EQ(HistoryButtonsFor(history, nullptr), HistoryButtons{});
}

TEST(ShortName, KeepsShortNamesAndShortensLongOnes) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"abcdefghij", "abcdefghij"},        // 10 without a dot
        {"abcdefghijk", "abc...efghijk"},    // 11 become 13
        {"abcdefghi.jpg", "abcdefghi.jpg"},  // stem of 9
        {"abcdefghij.jpg", "abc...hij.jpg"},
        {"a.b.c.defghijk.jpeg", "a.b...ijk.jpeg"},  // the last dot counts
        {".abcdefghijklm", ".abcdefghijklm"},
        {"abcdefghijkl.", "abc...jkl."},
    };
    for (const auto& [name, shown] : cases)
        EXPECT_EQ(ShortenName(QString::fromUtf8(name)).toStdString(), shown) << name;
    EXPECT_EQ(ShortenName(QStringLiteral("一二三四五六七八九十.png")), QStringLiteral("一二三...八九十.png"));
    // A character of two units is never cut in two.
    EXPECT_EQ(ShortenName(QStringLiteral("😀😁😂😃😄😅😆😇😈😉.png")), QStringLiteral("😀😁😂...😇😈😉.png"));
    EXPECT_EQ(ShortenName(QStringLiteral("😀😁😂😃😄.png")), QStringLiteral("😀😁😂😃😄.png"));
}

TEST(BottomBar, ShowsNameSizeAndFileSize) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        RecordingHost host;
        CMidBottomEditTool bar(host, nullptr);
        bar.ShowFacts(QStringLiteral("portrait-of-anna.jpg"), CMidBottomEditTool::SizeText(6000, 4000),
                      QStringLiteral("8402KB"));
        EXPECT_EQ(bar.Find<QLabel>(QStringLiteral("TextPicName"))->text(), u"por...nna.jpg");
        EXPECT_EQ(bar.Find<QLabel>(QStringLiteral("TextPicSize"))->text(), u"6000 x 4000");
        EXPECT_EQ(bar.Find<QLabel>(QStringLiteral("TextFileSize"))->text(), u"8402KB");
        const auto* info = bar.Find<QAbstractButton>(QStringLiteral("OptExif"));
        ASSERT_TRUE(info);
        EXPECT_TRUE(info->isEnabled());
        EXPECT_FALSE(info->toolTip().isEmpty());
    }
    SetLanguage(QStringLiteral("1033"));
}

}  // namespace
