// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchTool.h"

#include <QtGui/QMouseEvent>

#include "CSliderCtrl.h"

namespace {

void SendMouse(QWidget* widget, QEvent::Type type, QPoint at) {
    const bool move = type == QEvent::MouseMove;
    const bool release = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, QPointF(at), widget->mapToGlobal(QPointF(at)), move ? Qt::NoButton : Qt::LeftButton,
                      release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

}  // namespace

void ReportDrag(BenchReport& report, const std::string& name, CSliderCtrl& slider) {
    SendMouse(&slider, QEvent::MouseButtonPress, slider.HandleAt(0));
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const QPoint at = slider.HandleAt((i * 7 % 180 - 90) * slider.maximum() / 100);
        const auto start = std::chrono::steady_clock::now();
        SendMouse(&slider, QEvent::MouseMove, at);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    SendMouse(&slider, QEvent::MouseButtonRelease, slider.HandleAt(0));
    std::sort(times.begin(), times.end());
    const BenchSize view{1600, 1000};
    report.Add(name, view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add(name + ".worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
}
