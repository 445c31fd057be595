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
    SendMouse(slider, QEvent::MouseButtonPress, slider->HandleAt(slider->value()));
    std::vector<double> times;
    const int span = slider->maximum() - slider->minimum();
    for (int i = 0; i < 240; ++i) {
        const QPoint at = slider->HandleAt(slider->minimum() + span / 20 + i * 7 % 180 * span / 200);
        const auto start = std::chrono::steady_clock::now();
        SendMouse(slider, QEvent::MouseMove, at);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    SendMouse(slider, QEvent::MouseButtonRelease, slider->HandleAt(slider->value()));
    std::sort(times.begin(), times.end());
    const BenchSize view{1600, 1000};
    report.Add(name, view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add(name + ".worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
}
