// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>
#include <variant>

#include "CEffectListView.h"
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

// The surroundings of a tool whose panel is a CLookListPanel: leaving, moves in the history, and what the user does to
// lists and strength window.
template <class Wnd, class Panel>
class LookTestHost : private StyledProgram, public ToolTestHost<Wnd, Panel> {
    using Host = ToolTestHost<Wnd, Panel>;

  public:
    using Host::canvas;
    using Host::panel;
    using Host::tool;

    explicit LookTestHost(const QString& language = QStringLiteral("1033")) : Host(language, {1090, 730}, 249) {}

    // Leaves the tool for another one, and comes back.
    void Leave() {
        panel->OnFrameMessage(LeavingToolMessage{Wnd::Facts.number});
        canvas->OnApply();
        canvas = nullptr;
        tool = 1;
    }
    void Enter() {
        Host::NewCanvas();
        ASSERT_TRUE(canvas->OnEnter());
        canvas->OnImageReady();
        tool = Wnd::Facts.number;
        panel->OnFrameMessage(RefreshPanelMessage{tool});
    }
    void Refresh() {
        panel->OnFrameMessage(ClearSelectionsMessage{tool});
        panel->OnFrameMessage(RefreshPanelMessage{tool});
    }
    // A move in the history as the bar makes it.
    template <class Move>
    void MoveInHistory(Move move) {
        move(*canvas);
        Refresh();
    }
    void Undo() {
        MoveInHistory([](CBaseWnd& c) { c.OnUndo(); });
    }
    void Redo() {
        MoveInHistory([](CBaseWnd& c) { c.OnRedo(); });
    }

    CEffectListView* List(int category) const { return panel->List(category); }
    bool WaitLoaded(int category) const {
        return QTest::qWaitFor([&] { return panel->IsLoaded(category); }, 20000);
    }
    QAbstractButton* Button(const char* name) const {
        return panel->template Find<QAbstractButton>(QLatin1String(name));
    }
    bool IsStrengthShown() const { return panel->Strength() && panel->Strength()->isVisible(); }
    CSliderCtrl* Slider() const {
        return panel->Strength()->template Find<CSliderCtrl>(QStringLiteral("SliderSetAlpha"));
    }

    // Acts of the user.
    void Click(const char* button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }
    void Choose(int category, int row) const {
        CEffectListView* list = List(category);
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
        return std::holds_alternative<HandOffMessage>(message) || Host::PanelHears(message);
    }
};
