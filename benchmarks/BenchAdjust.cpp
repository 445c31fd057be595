// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustSliders.h"
#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchWindows.h"
#include "CAdjustWnd.h"
#include "CBasePanelAdjust.h"

namespace {

using namespace AdjustIndex;

// Drags a slider of the panel with the other values of its group set.
void Drag(BenchReport& report, const std::string& name, int index, const std::vector<std::pair<int, int>>& values) {
    NeedWindows();
    BenchHost<CAdjustWnd> host(BenchPicture(Size24));
    auto* panel = new CBasePanelAdjust(host, &host.frame);
    panel->setGeometry(0, 0, 250, 1000);
    panel->show();
    QApplication::processEvents();
    for (const auto& [other, value] : values) host.canvas->PreviewValue(other, value);
    ReportSliderDrag(report, name, *panel, FindAdjustSlider(index)->control);
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
