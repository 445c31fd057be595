// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

#include "AdjustHost.h"
#include "CCardNode.h"

using namespace AdjustIndex;

namespace {

class AdjustPanel : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
    }
    int Count() const { return host.history.m_count; }
    bool Checked(const char* name) const { return host.Control<QAbstractButton>(name)->isChecked(); }
    bool Enabled(const char* name) const { return host.Control(name)->isEnabled(); }

    Bitmap picture;
    AdjustHost host;
};

TEST_F(AdjustPanel, ASliderPreviewsWhileItMovesAndCommitsAtRelease) {
    PaintCounter paints(host.canvas.get());
    CSliderCtrl* slider = host.Slider("Liangdu");
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(0));
    for (const int value : {10, 25, 40}) {
        const int before = paints.count;
        QTest::mouseMove(slider, slider->HandleAt(value));
        EXPECT_EQ(host.canvas->Value(Brightness), slider->value());
        EXPECT_GT(paints.count, before);  // painted before the event returns
        EXPECT_EQ(host.Label("LiangduVal"), QString::number(slider->value()));
        EXPECT_EQ(Count(), 1);
        EXPECT_EQ(host.Sent<HistoryNews>(), 0);
    }
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(40));
    EXPECT_EQ(slider->value(), 40);
    EXPECT_EQ(Count(), 2);
    EXPECT_EQ(host.Sent<HistoryNews>(), 1);
    EXPECT_TRUE(Enabled("BtnJiChuRestart"));
    EXPECT_FALSE(Enabled("BtnGaoJiRestart"));
    EXPECT_FALSE(host.canvas->GetShowBitmap() == picture);
}

TEST_F(AdjustPanel, EverySliderReachesItsOwnValue) {
    for (const AdjustSlider& row : AdjustSliders) {
        host.Drag(row.control, row.maximum / 2);
        const int value = host.Slider(row.control)->value();
        EXPECT_NEAR(value, row.maximum / 2, 2) << row.control;
        EXPECT_EQ(host.canvas->Value(row.index), value) << row.control;
        if (row.valueLabel) {
            EXPECT_EQ(host.Label(row.valueLabel), QString::number(value));
        }
    }
    EXPECT_EQ(Count(), 2);
}

TEST_F(AdjustPanel, OneGroupClearsTheOther) {
    host.Drag("SliderSeXiang", 30);
    host.Drag("Baoguang", 20);
    EXPECT_TRUE(Enabled("BtnGaoJiRestart"));
    host.Drag("Liangdu", 20);
    EXPECT_EQ(host.Slider("SliderSeXiang")->value(), 0);
    EXPECT_EQ(host.Slider("Baoguang")->value(), 0);
    EXPECT_EQ(host.Label("BaoguangVal"), QString());
    EXPECT_FALSE(Enabled("BtnGaoJiRestart"));
    EXPECT_TRUE(Enabled("BtnJiChuRestart"));
    host.Drag("SliderR", 20);
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    EXPECT_EQ(host.Label("LiangduVal"), QString());
    EXPECT_FALSE(Enabled("BtnJiChuRestart"));
    EXPECT_TRUE(Enabled("BtnGaoJiRestart"));
}

TEST_F(AdjustPanel, ComingBackToTheToolTheLabelsShow0) {
    host.Drag("Liangdu", 30);
    host.canvas->OnApply();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    host.panel->OnFrameMessage(RefreshPanelMessage{CAdjustWnd::Facts.number});
    for (const char* label : {"LiangduVal", "DuibiduVal", "BaoheduVal", "RuiduVal", "BaoguangVal"})
        EXPECT_EQ(host.Label(label), QStringLiteral("0")) << label;
}

TEST_F(AdjustPanel, APressThatMovesNothingChangesNothing) {
    host.Drag("SliderSeXiang", 30);
    const auto stamp = host.history.CurrentStamp();
    CSliderCtrl* slider = host.Slider("Liangdu");
    QTest::mouseClick(slider, Qt::LeftButton, {}, slider->HandleAt(0));
    EXPECT_NE(host.Slider("SliderSeXiang")->value(), 0);
    EXPECT_EQ(host.history.CurrentStamp(), stamp);
}

TEST_F(AdjustPanel, ADragThatReturnsIsRecordedToo) {
    host.Drag("SliderSeXiang", 30);
    CSliderCtrl* slider = host.Slider("Liangdu");
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(0));
    QTest::mouseMove(slider, slider->HandleAt(30));
    QTest::mouseMove(slider, slider->HandleAt(0));
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(0));
    EXPECT_EQ(host.Slider("SliderSeXiang")->value(), 0);  // baked by the move
    EXPECT_FALSE(host.canvas->Logic().State().BakedPending);
}

TEST_F(AdjustPanel, ArrowKeysCommit) {
    CSliderCtrl* slider = host.Slider("Ruidu");
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(host.canvas->Value(Sharpness), 1);
    EXPECT_EQ(Count(), 2);
    QTest::keyClick(slider, Qt::Key_PageUp);
    EXPECT_EQ(host.canvas->Value(Sharpness), 11);
    QTest::keyClick(slider, Qt::Key_Left);
    EXPECT_EQ(host.canvas->Value(Sharpness), 10);
    EXPECT_EQ(Count(), 2);
    EXPECT_EQ(host.Label("RuiduVal"), QStringLiteral("10"));
}

TEST_F(AdjustPanel, SharpnessGoesBelowZero) {
    host.Drag("Ruidu", -40);
    EXPECT_LT(host.canvas->Value(Sharpness), 0);
}

TEST_F(AdjustPanel, ADoubleClickOnASliderTakesItBackToNoChange) {
    host.Drag("Duibidu", 40);
    CSliderCtrl* slider = host.Slider("Duibidu");
    QTest::mouseDClick(slider, Qt::LeftButton, {}, slider->HandleAt(slider->value()));
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(host.canvas->Value(Contrast), 0);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    EXPECT_FALSE(Enabled("BtnJiChuRestart"));
}

TEST_F(AdjustPanel, ADoubleClickOnTheLabelOfASliderTakesItBackToo) {
    host.Drag("SliderG", 40);
    QTest::mouseDClick(host.Control("SliderGText"), Qt::LeftButton);
    EXPECT_EQ(host.Slider("SliderG")->value(), 0);
    EXPECT_EQ(host.canvas->Value(Green), 0);
    host.Drag("Liangdu", 40);
    QTest::mouseDClick(host.Control("LiangduVal"), Qt::LeftButton);
    EXPECT_EQ(host.canvas->Value(Brightness), 0);
}

TEST_F(AdjustPanel, ADoubleClickOnALabelAtRestLeavesTheOtherGroupAlone) {
    host.Drag("SliderG", 40);
    QTest::mouseDClick(host.Control("LiangduText"), Qt::LeftButton);
    EXPECT_NE(host.Slider("SliderG")->value(), 0);
}

TEST_F(AdjustPanel, AChangedValueStandsOut) {
    EXPECT_FALSE(host.Control("BaoheduVal")->property("changed").toBool());
    host.Drag("Baohedu", 40);
    EXPECT_TRUE(host.Control("BaoheduVal")->property("changed").toBool());
    EXPECT_EQ(host.Label("DuibiduVal"), QStringLiteral("0"));
    EXPECT_FALSE(host.Control("DuibiduVal")->property("changed").toBool());
}

TEST_F(AdjustPanel, ASceneIsAppliedAndHighlightedAlone) {
    host.Drag("Liangdu", 20);
    for (const AdjustScene& scene : AdjustScenes) {
        host.messages.clear();
        host.Click(scene.button);
        EXPECT_EQ(host.canvas->PanelValues(), (AdjustPanelValues{scene.scenario}));
        EXPECT_EQ(host.panel->SelectedScenario(), scene.scenario);
        EXPECT_EQ(host.Sent<HistoryNews>(), 1);
        for (const AdjustScene& other : AdjustScenes) {
            const bool chosen = other.scenario == scene.scenario;
            EXPECT_EQ(Checked(other.button), chosen) << other.button;
            EXPECT_EQ(host.Control(other.button)->property("textPaddingBottom").toInt(), chosen ? 24 : 3);
        }
        EXPECT_TRUE(Enabled("BtnMeiHuaRestart"));
        EXPECT_FALSE(Enabled("BtnJiChuRestart"));
        EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
        EXPECT_EQ(host.Label("LiangduVal"), QString());
    }
    EXPECT_EQ(host.tasks, 4);
    EXPECT_EQ(Count(), 2);
}

TEST_F(AdjustPanel, TheSceneAlreadyActiveStaysHighlightedAndDoesNothing) {
    host.Click("BtnFood");
    host.messages.clear();
    host.Click("BtnFood");
    EXPECT_TRUE(Checked("BtnFood"));
    EXPECT_EQ(host.tasks, 1);
    EXPECT_EQ(host.Sent<HistoryNews>(), 0);
}

TEST_F(AdjustPanel, ACancelledSceneGivesBackSelectionValuesAndPicture) {
    host.Drag("Duibidu", 30);
    const int value = host.Slider("Duibidu")->value();
    const Bitmap shown = host.canvas->GetShowBitmap();
    host.messages.clear();
    host.cancelAt = 50.0f;
    host.Click("BtnPortrait");
    EXPECT_FALSE(Checked("BtnPortrait"));
    EXPECT_EQ(host.panel->SelectedScenario(), 0);
    EXPECT_EQ(host.Slider("Duibidu")->value(), value);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == shown);
    EXPECT_EQ(Count(), 2);
    EXPECT_EQ(host.Sent<HistoryNews>(), 0);
    EXPECT_FALSE(Enabled("BtnMeiHuaRestart"));

    host.cancelAt.reset();
    host.Click("BtnScenery");
    host.cancelAt = 50.0f;
    host.Click("BtnPortrait");
    EXPECT_TRUE(Checked("BtnScenery"));
    EXPECT_FALSE(Checked("BtnPortrait"));
}

TEST_F(AdjustPanel, ASliderEndsTheScene) {
    host.Click("BtnObjects");
    host.Drag("SliderB", 20);
    EXPECT_FALSE(Checked("BtnObjects"));
    EXPECT_EQ(host.panel->SelectedScenario(), 0);
    EXPECT_FALSE(Enabled("BtnMeiHuaRestart"));
}

TEST_F(AdjustPanel, ResetsClearTheirControlsAndCommitNothing) {
    host.Drag("Liangdu", 20);
    auto stamp = host.history.CurrentStamp();
    host.Click("BtnJiChuRestart");
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    EXPECT_EQ(host.Label("LiangduVal"), QStringLiteral("0"));
    EXPECT_FALSE(Enabled("BtnJiChuRestart"));
    EXPECT_EQ(host.history.CurrentStamp(), stamp);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);

    host.Drag("SliderSeXiang", 60);
    host.Click("BtnGaoJiRestart");
    EXPECT_EQ(host.Slider("SliderSeXiang")->value(), 0);
    EXPECT_FALSE(Enabled("BtnGaoJiRestart"));

    host.Click("BtnScenery");
    host.Click("BtnMeiHuaRestart");
    EXPECT_FALSE(Checked("BtnScenery"));
    EXPECT_EQ(host.panel->SelectedScenario(), 0);
    EXPECT_FALSE(Enabled("BtnMeiHuaRestart"));
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
}

TEST_F(AdjustPanel, EveryActLeavesCompareFirst) {
    const auto inCompare = [&](const auto& act) {
        host.compareMode = 1;
        act();
        return host.compareMode == 1;
    };
    EXPECT_FALSE(inCompare([&] { host.Drag("Liangdu", 20); }));
    EXPECT_FALSE(inCompare([&] { host.Click("BtnJiChuRestart"); }));
    EXPECT_FALSE(inCompare([&] { host.Drag("SliderR", 20); }));
    EXPECT_FALSE(inCompare([&] { host.Click("BtnGaoJiRestart"); }));
    EXPECT_FALSE(inCompare([&] { host.Click("BtnFood"); }));
    EXPECT_FALSE(inCompare([&] { host.Click("BtnMeiHuaRestart"); }));
}

TEST_F(AdjustPanel, UndoRedoRevertAndJumpBringTheSlidersBack) {
    host.Drag("Liangdu", 30);
    const int value = host.Slider("Liangdu")->value();
    host.messages.clear();
    host.canvas->OnUndo();
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    EXPECT_FALSE(Enabled("BtnJiChuRestart"));
    host.canvas->OnRedo();
    EXPECT_EQ(host.Slider("Liangdu")->value(), value);
    EXPECT_EQ(host.Label("LiangduVal"), QString::number(value));
    EXPECT_TRUE(Enabled("BtnJiChuRestart"));
    host.canvas->OnHistoryJump(0);
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    host.canvas->OnHistoryJump(1);
    EXPECT_EQ(host.Slider("Liangdu")->value(), value);
    host.canvas->OnRevert();
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    EXPECT_EQ(Count(), 3);
}

TEST_F(AdjustPanel, UndoOfASceneTakesTheHighlightBack) {
    host.Click("BtnPortrait");
    host.canvas->OnUndo();
    EXPECT_FALSE(Checked("BtnPortrait"));
    host.canvas->OnRedo();
    EXPECT_TRUE(Checked("BtnPortrait"));
    EXPECT_TRUE(Enabled("BtnMeiHuaRestart"));
}

TEST_F(AdjustPanel, ANewPictureShowsTheRestState) {
    host.Drag("Liangdu", 30);
    host.Open(TestPictures::Ramp(200, 100));
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    EXPECT_FALSE(Enabled("BtnJiChuRestart"));
}

TEST_F(AdjustPanel, WithAnotherToolsCanvasNothingHappens) {
    host.canvas = nullptr;
    host.Drag("Liangdu", 30);
    EXPECT_EQ(host.Slider("Liangdu")->value(), 0);
    host.Click("BtnFood");
    EXPECT_FALSE(Checked("BtnFood"));
    EXPECT_EQ(host.tasks, 0);
}

TEST_F(AdjustPanel, NodesFoldTheirCardByMouseAndKeyboard) {
    host.Click("NodeGaoJi");
    EXPECT_TRUE(host.Control<CCardNode>("NodeGaoJi")->IsFolded());
    EXPECT_FALSE(host.Slider("SliderR")->isVisible());
    EXPECT_TRUE(host.Slider("Liangdu")->isVisible());
    QTest::keyClick(host.Control("NodeGaoJi"), Qt::Key_Return);
    EXPECT_TRUE(host.Slider("SliderR")->isVisible());
    QTest::keyClick(host.Control("NodeTiaoSe"), Qt::Key_Space);
    EXPECT_FALSE(host.Slider("Liangdu")->isVisible());
}

TEST_F(AdjustPanel, TheWheelOverASliderIsLeftToThePanelThatScrolls) {
    host.panel->setGeometry(0, 0, 250, 300);
    QTest::qWait(20);
    auto* area = host.Control<QScrollArea>("TreeAdjust");
    const auto turn = [](QWidget* widget) {
        const QPointF at(20, 8);
        QWheelEvent event(at, widget->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        event.ignore();
        QApplication::sendEvent(widget, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(turn(host.Slider("Duibidu")));
    EXPECT_EQ(host.canvas->Value(Contrast), 0);
    EXPECT_TRUE(turn(area->viewport()));
    EXPECT_GT(area->verticalScrollBar()->value(), 0);
}

TEST_F(AdjustPanel, TabReachesEveryControlInReadingOrder) {
    host.Drag("Liangdu", 30);  // enables one reset
    const QStringList order{
        QStringLiteral("BtnScenery"),    QStringLiteral("BtnPortrait"), QStringLiteral("BtnObjects"),
        QStringLiteral("BtnFood"),       QStringLiteral("NodeTiaoSe"),  QStringLiteral("BtnJiChuRestart"),
        QStringLiteral("Liangdu"),       QStringLiteral("Duibidu"),     QStringLiteral("Baohedu"),
        QStringLiteral("Ruidu"),         QStringLiteral("NodeGaoJi"),   QStringLiteral("Baoguang"),
        QStringLiteral("SliderSeXiang"), QStringLiteral("SliderR"),     QStringLiteral("SliderG"),
        QStringLiteral("SliderB")};
    host.frame.activateWindow();
    static_cast<void>(QTest::qWaitForWindowActive(&host.frame));
    host.Control("BtnScenery")->setFocus();
    for (const QString& name : order) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(AdjustPanel, AHeldSliderHoldsBackShortcuts) {
    CSliderCtrl* slider = host.Slider("Liangdu");
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
    QTest::mousePress(host.frame.windowHandle(), Qt::LeftButton, {}, slider->mapTo(&host.frame, slider->HandleAt(0)));
    QTest::mouseMove(host.frame.windowHandle(), slider->mapTo(&host.frame, slider->HandleAt(30)));
    EXPECT_TRUE(host.canvas->IsStrokeHeld());
    QTest::mouseRelease(host.frame.windowHandle(), Qt::LeftButton, {},
                        slider->mapTo(&host.frame, slider->HandleAt(30)));
    EXPECT_FALSE(host.canvas->IsStrokeHeld());
}

}  // namespace
