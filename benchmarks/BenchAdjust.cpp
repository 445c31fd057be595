// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <memory>
#include <QtCore/QTemporaryDir>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include "AdjustSliders.h"
#include "AdjustWnd.h"
#include "BasePanelAdjust.h"
#include "Bench.h"
#include "BenchWindows.h"
#include "CHistoryManager.h"
#include "CSliderCtrl.h"
#include "RunTask.h"

namespace {

using namespace AdjustIndex;

class BenchHost : public ToolHost {
  public:
    explicit BenchHost(const Bitmap& picture) : history(folder.path() + QStringLiteral("/")) {
        frame.resize(1850, 1000);
        canvas = new CAdjustWnd(*this, &frame, history);
        panel = new CBasePanelAdjust(*this, &frame);
        panel->setGeometry(0, 0, 250, 1000);
        canvas->Place(QRect(250, 0, 1600, 1000));
        frame.show();
        QApplication::processEvents();
        history.OpenImage(picture);
        canvas->SetShowBitmap(picture);
        canvas->ZoomToPercent(30);  // larger than the client: every pixel of the view is computed and painted
        QApplication::processEvents();
    }
    int Tool() const override { return CAdjustWnd::ToolNumber; }
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
    CAdjustWnd* canvas = nullptr;
    CBasePanelAdjust* panel = nullptr;
};

void SendMouse(QWidget* widget, QEvent::Type type, QPoint at) {
    const bool move = type == QEvent::MouseMove;
    const bool release = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, QPointF(at), widget->mapToGlobal(QPointF(at)), move ? Qt::NoButton : Qt::LeftButton,
                      release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

// Drags a slider of the panel with the other values of its group set, and adds a row each for the median and the worst
// event: from the mouse's move until the window is painted.
void Drag(BenchReport& report, const std::string& name, int index, const std::vector<std::pair<int, int>>& values) {
    NeedWindows();
    BenchHost host(BenchPicture(Size24));
    auto* slider = host.panel->Find<CSliderCtrl>(FindAdjustSlider(index)->Control());
    if (!slider) {
        std::printf("%-28s no skin beside the program: not measured\n", name.c_str());
        return;
    }
    for (const auto& [other, value] : values) host.canvas->PreviewValue(other, value);
    SendMouse(slider, QEvent::MouseButtonPress, slider->HandleAt(0));
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const int span = slider->maximum();
        const QPoint at = slider->HandleAt((i * 7 % 180 - 90) * span / 100);
        const auto start = std::chrono::steady_clock::now();
        SendMouse(slider, QEvent::MouseMove, at);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    SendMouse(slider, QEvent::MouseButtonRelease, slider->HandleAt(0));
    std::sort(times.begin(), times.end());
    const BenchSize view{1600, 1000};
    report.Add(name, view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add(name + ".worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
}

}  // namespace

static const BenchCase adjustDrag("adjust.drag", [](BenchReport& report) {
    Drag(report, "adjust.drag", Contrast, {{Brightness, 30}, {Saturation, 20}, {Sharpness, 25}});
    Drag(report, "adjust.drag.advanced", Hue, {{Exposure, 20}, {Red, 10}, {Green, -10}, {Blue, 5}});
});

static const BenchCase adjustFull("adjust.full", [](BenchReport& report) {
    const QTemporaryDir folder;
    CHistoryManager history(folder.path() + QStringLiteral("/"));
    CAdjustLogic logic(history);
    logic.SetViewSize(1600, 1000);
    logic.SetSource(BenchPicture(Size24));
    for (const int index : {Brightness, Contrast, Saturation, Sharpness}) logic.SetValue(index, 30);
    int value = 30;
    const double ms = MedianMs(
        9, [&] { logic.RenderResult(); }, [&] { logic.SetValue(Contrast, ++value); });
    report.Add("adjust.full", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});
