// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchSlider.h"

#include <cstdio>

#include "BenchHost.h"
#include "CSliderCtrl.h"

void ReportSliderDrag(BenchReport& report, const std::string& name, const QWidget& panel, const char* control) {
    auto* slider = panel.findChild<CSliderCtrl*>(QLatin1String(control));
    if (!slider) {
        std::printf("%-28s no skin beside the program: not measured\n", name.c_str());
        return;
    }
    const int middle = (slider->maximum() + slider->minimum()) / 2;
    const int reach = (slider->maximum() - slider->minimum()) / 2;
    SendMouse(slider, QEvent::MouseButtonPress, slider->HandleAt(middle));
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const QPoint at = slider->HandleAt(middle + (i * 7 % 180 - 90) * reach / 100);
        const auto start = std::chrono::steady_clock::now();
        SendMouse(slider, QEvent::MouseMove, at);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    SendMouse(slider, QEvent::MouseButtonRelease, slider->HandleAt(middle));
    std::sort(times.begin(), times.end());
    const BenchSize view{1600, 1000};
    report.Add(name, view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add(name + ".worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
}
