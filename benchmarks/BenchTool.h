// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "Bench.h"
#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "RunTask.h"
#include "ToolHost.h"

class CSliderCtrl;

// A tool's canvas of 1600 x 1000 with its panel in a window, at fit.
template <class Wnd, class Panel>
class BenchHost : public ToolHost {
  public:
    explicit BenchHost(const Bitmap& picture) : history(folder.path() + QStringLiteral("/")) {
        frame.resize(1850, 1000);
        canvas = new Wnd(*this, &frame, history);
        panel = new Panel(*this, &frame);
        panel->setGeometry(0, 0, 250, 1000);
        canvas->Place(QRect(250, 0, 1600, 1000));
        frame.show();
        QApplication::processEvents();
        history.OpenImage(picture);
        canvas->SetShowBitmap(picture);
        canvas->ZoomFit();
        QApplication::processEvents();
    }
    int Tool() const override { return Wnd::ToolNumber; }
    CBaseWnd* Canvas() const override { return canvas; }
    void SwitchTool(int) override {}
    int CompareMode() const override { return 0; }
    void SetCompareMode(int) override {}
    bool IsBusy() const override { return false; }
    bool RunTask(const std::function<void(CObjProgress&)>& work) override { return ::RunTask(work); }
    const tag_ImageInfo* ImageInfo() const override { return nullptr; }
    void UpdateSizeText() override {}
    void SendFrame(const FrameMessage&) override {}

    QTemporaryDir folder;
    CHistoryManager history;
    QWidget frame;
    Wnd* canvas = nullptr;
    Panel* panel = nullptr;
};

// Drags a slider to and fro and adds a row each for the median and the worst event: from the mouse's move until the
// window is painted.
void ReportDrag(BenchReport& report, const std::string& name, CSliderCtrl& slider);
