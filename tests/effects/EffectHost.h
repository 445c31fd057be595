// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CEffectListView.h"
#include "CHistoryManager.h"
#include "CSetAlphaWnd.h"
#include "CSliderCtrl.h"
#include "CTeXiaoPanel.h"
#include "EffectCatalogue.h"
#include "EffectWnd.h"
#include "Language.h"
#include "Messages.h"
#include "RunTask.h"
#include "Style.h"
#include "TestHome.h"
#include "TestPictures.h"

// The work area and the frame around the effect tool in a few lines: canvas and panel side by side, messages routed as
// the main frame does.
class EffectHost : public ToolHost {
  public:
    explicit EffectHost(const QString& language = QStringLiteral("1033"))
        : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(language);
        static const bool styled = (Style::Apply(*qApp), true);
        static_cast<void>(styled);
        frame.resize(1090, 730);
        panel = new CTeXiaoPanel(*this, &frame);
        panel->setGeometry(0, 0, 249, 730);
        NewCanvas();
        frame.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&frame));
        frame.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&frame));
    }

    void NewCanvas() {
        canvas = std::make_unique<CEffectWnd>(*this, &frame, history);
        canvas->Place(QRect(250, 0, 840, 700));
        canvas->show();
    }

    // Opens a picture as the work area does.
    void Open(const Bitmap& picture) {
        history.OpenImage(picture);
        history.SetViewState(nullptr);
        panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::ToolNumber});
        canvas->SetShowBitmap(picture);
        canvas->ZoomFit();
        canvas->OnImageReady();
        panel->OnFrameMessage(ImageLoadedMessage{CEffectWnd::ToolNumber});
        messages.clear();
    }
    // Leaves the tool for another one, and comes back.
    void Leave() {
        panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::ToolNumber});
        canvas->OnApply();
        canvas = nullptr;
        tool = 1;
    }
    void Enter() {
        NewCanvas();
        ASSERT_TRUE(canvas->OnEnter());
        canvas->OnImageReady();
        tool = CEffectWnd::ToolNumber;
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

    int Tool() const override { return tool; }
    CBaseWnd* Canvas() const override { return canvas.get(); }
    void SwitchTool(int) override {}
    int CompareMode() const override { return compareMode; }
    void SetCompareMode(int mode) override { compareMode = mode; }
    bool IsBusy() const override { return IsTaskRunning() || (canvas && canvas->IsStrokeHeld()); }
    bool RunTask(const std::function<void(CObjProgress&)>& work) override {
        ++tasks;
        return ::RunTask([&](CObjProgress& progress) {
            if (!cancelAt) return work(progress);
            Cancelling sink(*cancelAt);
            work(sink);
        });
    }
    const tag_ImageInfo* ImageInfo() const override { return nullptr; }
    void UpdateSizeText() override {}
    void SendFrame(const FrameMessage& message) override {
        messages.push_back(message);
        EXPECT_TRUE(OnMainThread());
        if (std::holds_alternative<HandOffMessage>(message)) panel->OnFrameMessage(message);
    }

    // How often the canvas sent a code since the messages were last cleared.
    int Sent(int code) const {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const FrameMessage& message) {
            const auto* view = std::get_if<ViewNotifyMessage>(&message);
            return view && view->code == code && view->tool == CEffectWnd::ToolNumber;
        }));
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

    CHistoryManager history;
    QWidget frame;
    std::unique_ptr<CEffectWnd> canvas;
    CTeXiaoPanel* panel = nullptr;
    int tool = CEffectWnd::ToolNumber;
    int compareMode = 0;
    int tasks = 0;
    // The percentage at which the user presses Esc in the progress window.
    std::optional<float> cancelAt;
    std::vector<FrameMessage> messages;

  private:
    class Cancelling : public CObjProgress {
      public:
        explicit Cancelling(float at) : m_at(at) {}
        int CanContinue() override { return m_fValue < m_at ? 1 : 0; }

      private:
        float m_at;
    };
};
