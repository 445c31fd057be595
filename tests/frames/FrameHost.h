// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CBasePanelFrame.h"
#include "CEffectListView.h"
#include "CImageFrameWnd.h"
#include "CSetAlphaWnd.h"
#include "CSliderCtrl.h"
#include "Messages.h"
#include "Style.h"
#include "ToolTestHost.h"

// The program's style, taken on before the first window.
struct StyledProgram {
    StyledProgram() {
        static const bool styled = (Style::Apply(*qApp), true);
        static_cast<void>(styled);
    }
};

// The surroundings of the frame tool.
class FrameHost : private StyledProgram, public ToolTestHost<CImageFrameWnd, CBasePanelFrame> {
  public:
    explicit FrameHost(const QString& language = QStringLiteral("1033")) : ToolTestHost(language, {1090, 730}, 249) {}

    // Leaves the tool for another one, and comes back.
    void Leave() {
        panel->OnFrameMessage(LeavingToolMessage{CImageFrameWnd::Facts.number});
        canvas->OnApply();
        canvas = nullptr;
        tool = 1;
    }
    void Enter() {
        NewCanvas();
        ASSERT_TRUE(canvas->OnEnter());
        canvas->OnImageReady();
        tool = CImageFrameWnd::Facts.number;
        panel->OnFrameMessage(RefreshPanelMessage{tool});
    }
    // A move in the history as the bar makes it.
    template <class Move>
    void MoveInHistory(Move move) {
        move(*canvas);
        panel->OnFrameMessage(ClearSelectionsMessage{tool});
        panel->OnFrameMessage(RefreshPanelMessage{tool});
    }
    void Undo() {
        MoveInHistory([](CBaseWnd& c) { c.OnUndo(); });
    }
    void Redo() {
        MoveInHistory([](CBaseWnd& c) { c.OnRedo(); });
    }

    CEffectListView* List(int kind) const { return panel->List(kind); }
    bool WaitLoaded(int kind) const {
        return QTest::qWaitFor([&] { return panel->IsLoaded(kind); }, 20000);
    }
    bool IsStrengthShown() const { return panel->Strength() && panel->Strength()->isVisible(); }
    CSliderCtrl* Slider() const { return panel->Strength()->Find<CSliderCtrl>(QStringLiteral("SliderSetAlpha")); }
    QStringList Names(int kind) const {
        QStringList names;
        for (int i = 0; i < List(kind)->count(); ++i) names << List(kind)->Row(i)->Name();
        return names;
    }

    // Acts of the user.
    void Click(const char* button) const {
        QTest::mouseClick(panel->Find<QAbstractButton>(QLatin1String(button)), Qt::LeftButton);
    }
    void Choose(int kind, int row) const {
        CEffectListView* list = List(kind);
        list->scrollToItem(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    }
    void DragStrength(int value) const {
        CSliderCtrl* slider = Slider();
        QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(slider->value()));
        QTest::mouseMove(slider, slider->HandleAt(value));
        QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(value));
    }

  protected:
    bool PanelHears(const FrameMessage& message) const override {
        EXPECT_TRUE(OnMainThread());
        return std::holds_alternative<HandOffMessage>(message) || ToolTestHost::PanelHears(message);
    }
};
