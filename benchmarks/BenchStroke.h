// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchHost.h"

namespace BenchStroke {

using Clock = std::chrono::steady_clock;

inline double MsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A stroke of 240 moves over a canvas, each from the mouse's move until the window is painted: the median as `name`,
// the longest as `name`.worst. `step` is how far the hand goes between two events.
template <class Wnd>
void Measure(BenchReport& report, Wnd* canvas, const std::string& name, QPoint step) {
    constexpr BenchSize view{1600, 1000};
    SendMouse(canvas, QEvent::MouseButtonPress, {400, 300});
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const QPoint at(400 + i * step.x() % 800, 300 + i * step.y() % 400);
        const auto start = Clock::now();
        SendMouse(canvas, QEvent::MouseMove, at);
        times.push_back(MsSince(start));
        QApplication::processEvents();
    }
    SendMouse(canvas, QEvent::MouseButtonRelease, {900, 700});
    std::sort(times.begin(), times.end());
    report.Add(name, view.Megapixels(), times[times.size() / 2], "copy", CopyMs(view));
    report.Add(name + ".worst", view.Megapixels(), times.back(), "copy", CopyMs(view));
}

}  // namespace BenchStroke
