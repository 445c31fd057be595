// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QDir>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CEffectListView.h"
#include "CEffectWnd.h"
#include "CSetAlphaWnd.h"
#include "CSliderCtrl.h"
#include "CTeXiaoPanel.h"
#include "EffectCatalogue.h"
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

// The surroundings of the effect tool.
class EffectHost : private StyledProgram, public ToolTestHost<CEffectWnd, CTeXiaoPanel> {
  public:
    explicit EffectHost(const QString& language = QStringLiteral("1033")) : ToolTestHost(language, {1090, 730}, 249) {}

    // Opens a picture as the work area does.
    void Open(const Bitmap& picture) {
        panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
        ToolTestHost::Open(picture);
    }
    // Leaves the tool for another one, and comes back.
    void Leave() {
        panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
        canvas->OnApply();
        canvas = nullptr;
        tool = 1;
    }
    void Enter() {
        NewCanvas();
        ASSERT_TRUE(canvas->OnEnter());
        canvas->OnImageReady();
        tool = CEffectWnd::Facts.number;
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

    CEffectListView* List(int category) const { return panel->List(category); }
    bool WaitLoaded(int category) const {
        return QTest::qWaitFor([&] { return panel->IsLoaded(category); }, 20000);
    }
    QAbstractButton* Button(const char* name) const { return panel->Find<QAbstractButton>(QLatin1String(name)); }
    int Selected(int category) const { return List(category)->SelectedItem(); }
    bool IsStrengthShown() const { return panel->Strength() && panel->Strength()->isVisible(); }
    CSliderCtrl* Slider() const { return panel->Strength()->Find<CSliderCtrl>(QStringLiteral("SliderSetAlpha")); }

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

    static Bitmap Effect(Bitmap source, int index) {
        EXPECT_TRUE(RunEffect(source, index, EffectResourceDir()));
        return source;
    }
    static QString CoverPath(const char* file) { return AppPath(QStringLiteral("Temp/TeXiao/")) + QLatin1String(file); }

  protected:
    bool PanelHears(const FrameMessage& message) const override {
        EXPECT_TRUE(OnMainThread());
        return std::holds_alternative<HandOffMessage>(message) || ToolTestHost::PanelHears(message);
    }
};
