// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QTemporaryDir>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "RunTask.h"
#include "ToolHost.h"

// The work area around one canvas in a few lines: a picture larger than its client of 1600 x 1000, so that every pixel
// of the view is computed and painted.
template <class Wnd>
class BenchHost : public ToolHost {
  public:
    explicit BenchHost(const Bitmap& picture) : history(folder.path() + QStringLiteral("/")) {
        frame.resize(1850, 1000);
        canvas = new Wnd(*this, &frame, history);
        canvas->Place(QRect(250, 0, 1600, 1000));
        frame.show();
        QApplication::processEvents();
        history.OpenImage(picture);
        canvas->SetShowBitmap(picture);
        canvas->ZoomToPercent(30);
        QApplication::processEvents();
    }
    int Tool() const override { return Wnd::Facts.number; }
    CBaseWnd* Canvas() const override { return canvas; }
    void SwitchTool(int) override {}
    int CompareMode() const override { return 0; }
    void SetCompareMode(int) override {}
    bool IsBusy() const override { return false; }
    bool RunTask(const std::function<void(CObjProgress&)>& work) override { return ::RunTask(work); }
    const tag_ImageInfo* ImageInfo() const override { return nullptr; }
    void UpdateSizeText() override {}
    void Tell(const QString&) override {}
    void SendFrame(const FrameMessage&) override {}

    QTemporaryDir folder;
    CHistoryManager history;
    QWidget frame;
    Wnd* canvas = nullptr;
};

// A mouse event, handled before this returns.
inline void SendMouse(QWidget* widget, QEvent::Type type, QPoint at) {
    const bool move = type == QEvent::MouseMove;
    const bool release = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, QPointF(at), widget->mapToGlobal(QPointF(at)), move ? Qt::NoButton : Qt::LeftButton,
                      release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}
