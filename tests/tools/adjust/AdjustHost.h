// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

#include "AdjustWnd.h"
#include "BasePanelAdjust.h"
#include "CHistoryManager.h"
#include "CSliderCtrl.h"
#include "Language.h"
#include "RunTask.h"
#include "TestHome.h"
#include "TestPictures.h"

// Counts the paints of a widget.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget* widget) : QObject(widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
    int count = 0;
};

// The work area and the frame around the adjust tool in a few lines: canvas and panel side by side, messages routed as
// the main frame does.
class AdjustHost : public ToolHost {
  public:
    explicit AdjustHost(const QString& language = QStringLiteral("1033"))
        : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(language);
        frame.resize(1090, 700);
        panel = new CBasePanelAdjust(*this, &frame);
        panel->setGeometry(0, 0, 250, 700);
        NewCanvas();
        frame.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&frame));
    }

    void NewCanvas() {
        canvas = std::make_unique<CAdjustWnd>(*this, &frame, history);
        canvas->Place(QRect(250, 0, 840, 700));
        canvas->show();
    }

    // Opens a picture as the work area does.
    void Open(const Bitmap& picture) {
        history.OpenImage(picture);
        history.SetCurrentBitmap(picture);
        history.SetViewState(nullptr);
        canvas->SetShowBitmap(picture);
        canvas->ZoomFit();
        canvas->OnImageReady();
        panel->OnFrameMessage(ImageLoadedMessage{CAdjustWnd::ToolNumber});
        messages.clear();
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
        const auto* view = std::get_if<ViewNotifyMessage>(&message);
        if (view && view->code == CAdjustWnd::ValuesCode) panel->OnFrameMessage(message);
    }

    // How often the canvas sent a code since the messages were last cleared.
    int Sent(int code) const {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const FrameMessage& message) {
            const auto* view = std::get_if<ViewNotifyMessage>(&message);
            return view && view->code == code && view->tool == CAdjustWnd::ToolNumber;
        }));
    }

    template <class T = QWidget>
    T* Control(const char* name) const {
        return panel->Find<T>(QString::fromLatin1(name));
    }
    CSliderCtrl* Slider(const char* name) const { return Control<CSliderCtrl>(name); }
    QString Label(const char* name) const { return Control<QLabel>(name)->text(); }

    // Acts of the user.
    void Drag(const char* name, int value) const {
        CSliderCtrl* slider = Slider(name);
        QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(slider->value()));
        QTest::mouseMove(slider, slider->HandleAt(value));
        QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(value));
    }
    void Click(const char* name) const { QTest::mouseClick(Control(name), Qt::LeftButton); }

    CHistoryManager history;
    QWidget frame;
    std::unique_ptr<CAdjustWnd> canvas;
    CBasePanelAdjust* panel = nullptr;
    int tool = CAdjustWnd::ToolNumber;
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
