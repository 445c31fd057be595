// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <vector>

#include "Bench.h"
#include "BenchHost.h"
#include "BenchWindows.h"
#include "CCutWnd.h"

// From the mouse's move until the window is painted, while a corner of the frame is dragged.
static const BenchCase cropDrag("crop.drag", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CCutWnd> host(BenchPicture(Size24));
    SendMouse(host.canvas, QEvent::MouseButtonPress, {200, 200});
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const QPoint at(300 + i * 37 % 1200, 300 + i * 23 % 600);
        const auto start = std::chrono::steady_clock::now();
        SendMouse(host.canvas, QEvent::MouseMove, at);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    SendMouse(host.canvas, QEvent::MouseButtonRelease, {900, 700});
    std::sort(times.begin(), times.end());
    const BenchSize view{1600, 1000};
    report.Add("crop.drag", view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add("crop.drag.worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
});
