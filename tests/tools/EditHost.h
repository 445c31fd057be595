// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "ClickCount.h"
#include "CToolPanel.h"
#include "Language.h"
#include "RunTask.h"
#include "TestHome.h"
#include "TestPictures.h"
#include "ToolHost.h"

// The work area and the frame around a tool in a few lines: canvas and panel side by side, messages routed as the main
// frame does.
template <class Wnd, class Panel>
class EditHost : public ToolHost {
  public:
    explicit EditHost(const QString& language = QStringLiteral("1033"))
        : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(language);
        frame.resize(1090, 700);
        panel = new Panel(*this, &frame);
        panel->setGeometry(0, 0, 250, 700);
        NewCanvas();
        frame.show();
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
        panel->OnFrameMessage(ImageLoadedMessage{Wnd::ToolNumber});
        messages.clear();
    }
    // As the tool bar's buttons do.
    void Undo() {
        canvas->OnUndo();
        panel->OnFrameMessage(RefreshPanelMessage{Wnd::ToolNumber});
    }
    void Redo() {
        canvas->OnRedo();
        panel->OnFrameMessage(RefreshPanelMessage{Wnd::ToolNumber});
    }

    int Tool() const override { return Wnd::ToolNumber; }
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
    void SendFrame(const FrameMessage& message) override {
        messages.push_back(message);
        const auto* view = std::get_if<ViewNotifyMessage>(&message);
        if (view && view->code != 0 && view->code != 5) panel->OnFrameMessage(message);
    }

    // How often the canvas sent a code since the messages were last cleared.
    int Sent(int code) const {
        return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const FrameMessage& message) {
            const auto* view = std::get_if<ViewNotifyMessage>(&message);
            return view && view->code == code && view->tool == Wnd::ToolNumber;
        }));
    }
    // The clicks counted so far for a code.
    static int Clicks(const char* code) {
        const auto counts = ClickCounts().Counts();
        const auto found = counts.find(QString::fromLatin1(code));
        return found == counts.end() ? 0 : found->second;
    }

    template <class T = QWidget>
    T* Control(const char* name) const {
        T* control = panel->template Find<T>(QString::fromLatin1(name));
        if (!control) qFatal("no control %s", name);
        return control;
    }
    QString Text(const char* edit) const { return Control<QLineEdit>(edit)->text(); }
    bool Enabled(const char* name) const { return Control(name)->isEnabled(); }
    bool Checked(const char* name) const { return Control<QAbstractButton>(name)->isChecked(); }
    // Width and height as the panel shows them.
    QSize Fields() const { return {Text("EditKuanDu").toInt(), Text("EditGaoDu").toInt()}; }
    bool FieldsAreEmpty() const { return Text("EditKuanDu").isEmpty() && Text("EditGaoDu").isEmpty(); }
    QSize ImageSize() const {
        int width = 0, height = 0;
        canvas->GetImageSize(&width, &height);
        return {width, height};
    }

    // Acts of the user.
    void Click(const char* name) const {
        QWidget* control = Control(name);
        // A check box answers to its indicator, at its left.
        QTest::mouseClick(control, Qt::LeftButton, {}, {8, control->height() / 2});
    }
    void Type(const char* edit, const QString& text) const {
        QLineEdit* field = Control<QLineEdit>(edit);
        field->setFocus();
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Backspace);
        else
            QTest::keyClicks(field, text);
    }
    void Choose(const char* combo, int item) const {
        auto* box = Control<QComboBox>(combo);
        box->setFocus();
        const int rows = item - box->currentIndex();
        for (int i = 0; i < std::abs(rows); ++i) QTest::keyClick(box, rows > 0 ? Qt::Key_Down : Qt::Key_Up);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(canvas.get(), static_cast<Qt::Key>(key), modifiers);
    }
    // A drag on the canvas between two points of it.
    void Drag(QPoint from, QPoint to) const {
        QTest::mousePress(canvas.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(canvas.get(), (from + to) / 2);
        QTest::mouseMove(canvas.get(), to);
        QTest::mouseRelease(canvas.get(), Qt::LeftButton, {}, to);
    }

    CHistoryManager history;
    QWidget frame;
    std::unique_ptr<Wnd> canvas;
    Panel* panel = nullptr;
    int compareMode = 0;
    int tasks = 0;
    bool busy = false;
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
