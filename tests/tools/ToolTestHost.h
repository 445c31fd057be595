// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "CToolPanel.h"
#include "Language.h"
#include "RunTask.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "ToolHost.h"

template <class News>
inline constexpr bool IsFrameNews =
    std::is_same_v<News, ZoomNews> || std::is_same_v<News, SizeNews> || std::is_same_v<News, HistoryNews>;

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

// The work area and the frame around a tool in a few lines: canvas and panel side by side. A tool's test adds which
// messages the main frame hands on to the panel, and what its user does.
template <class Wnd, class Panel>
class ToolTestHost : public ToolHost {
  public:
    explicit ToolTestHost(const QString& language, QSize size = {1090, 700}, int panelWidth = 250)
        : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(language);
        frame.resize(size);
        panel = new Panel(*this, &frame);
        panel->setGeometry(0, 0, panelWidth, size.height());
        NewCanvas();
        frame.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&frame));
        frame.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&frame));
    }

    void NewCanvas() {
        canvas = std::make_unique<Wnd>(*this, &frame, history);
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
        panel->OnFrameMessage(ImageLoadedMessage{Wnd::Facts.number});
        messages.clear();
    }
    int Tool() const override { return tool; }
    CBaseWnd* Canvas() const override { return canvas.get(); }
    void SwitchTool(int) override {}
    int CompareMode() const override { return compareMode; }
    void SetCompareMode(int mode) override { compareMode = mode; }
    bool IsBusy() const override { return busy || IsTaskRunning() || (canvas && canvas->IsStrokeHeld()); }
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
    void Tell(const QString& key) override { told.push_back(key); }
    void SendFrame(const FrameMessage& message) override {
        messages.push_back(message);
        if (PanelHears(message)) panel->OnFrameMessage(message);
    }

    // How often the canvas told news of this kind since they were last cleared.
    template <class News>
    int Sent() const {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const FrameMessage& message) {
            const auto* view = std::get_if<ViewNotifyMessage>(&message);
            if (!view || view->tool != Wnd::Facts.number) return false;
            if constexpr (IsFrameNews<News>)
                return std::holds_alternative<News>(view->news);
            else
                return PanelNewsOf<News>(message) != nullptr;
        }));
    }

    template <class T = QWidget>
    T* Control(const char* name) const {
        T* control = panel->template Find<T>(QString::fromLatin1(name));
        if (!control) qFatal("no control %s", name);
        return control;
    }

    CHistoryManager history;
    QWidget frame;
    std::unique_ptr<Wnd> canvas;
    Panel* panel = nullptr;
    int tool = Wnd::Facts.number;
    int compareMode = 0;
    int tasks = 0;
    bool busy = false;
    // The percentage at which the user presses Esc in the progress window.
    std::optional<float> cancelAt;
    std::vector<FrameMessage> messages;
    // Keys of the texts shown to the user.
    std::vector<QString> told;

  protected:
    // The main frame hands this message of the canvas on to the panel.
    virtual bool PanelHears(const FrameMessage& message) const {
        const auto* view = std::get_if<ViewNotifyMessage>(&message);
        return view && !std::holds_alternative<ZoomNews>(view->news) &&
               !std::holds_alternative<HistoryNews>(view->news);
    }

  private:
    class Cancelling : public CObjProgress {
      public:
        explicit Cancelling(float at) : m_at(at) {}
        int CanContinue() override { return m_fValue < m_at ? 1 : 0; }

      private:
        float m_at;
    };
};
