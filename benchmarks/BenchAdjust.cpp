// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "AdjustSliders.h"
#include "AdjustWnd.h"
#include "BasePanelAdjust.h"
#include "BenchTool.h"
#include "BenchWindows.h"
#include "CSliderCtrl.h"

namespace {

using namespace AdjustIndex;

// Drags a slider of the panel with the other values of its group set, as ReportDrag
// does.
void Drag(BenchReport& report, const std::string& name, int index, const std::vector<std::pair<int, int>>& values) {
    NeedWindows();
    BenchHost<CAdjustWnd, CBasePanelAdjust> host(BenchPicture(Size24));
    // Larger than the client: every pixel of the view is computed and painted.
    host.canvas->ZoomToPercent(30);
    auto* slider = host.panel->Find<CSliderCtrl>(FindAdjustSlider(index)->Control());
    if (!slider) {
        std::printf("%-28s no skin beside the program: not measured\n", name.c_str());
        return;
    }
    for (const auto& [other, value] : values) host.canvas->PreviewValue(other, value);
    ReportDrag(report, name, *slider);
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
