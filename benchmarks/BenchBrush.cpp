// SPDX-License-Identifier: GPL-3.0-or-later
// The brushes at 24 megapixels: entering, stamping, strokes and sliders in the window, and what a release costs.
#include <algorithm>
#include <chrono>
#include <optional>
#include <QtTest/QTest>
#include <vector>

#include "Bench.h"
#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchStroke.h"
#include "BenchWindows.h"
#include "CChunCaiShowWnd.h"
#include "CMoPiWnd.h"
#include "CMouthColorPanel.h"
#include "CQuDouQBShowWnd.h"

namespace {

using BenchStroke::Clock, BenchStroke::MsSince;

constexpr BenchSize View{1600, 1000};

// A brush's logic with the picture in it and a pen of so many picture pixels.
template <class Logic>
struct Brush {
    explicit Brush(int radius) : history(folder.path() + QStringLiteral("/")), logic(history) {
        history.OpenImage(BenchPicture(Size24));
        logic.SetViewSize(View.width, View.height);
        logic.SetSource(BenchPicture(Size24));
        logic.RebuildBrush(radius);
    }
    QTemporaryDir folder;
    CHistoryManager history;
    Logic logic;
};

// A quarter of the picture, by stamps that lie side by side.
template <class Logic>
void PaintAQuarter(Logic& logic) {
    for (int y = 0; y < 2000; y += 200)
        for (int x = 0; x < 3000; x += 200) logic.StampAt(x, y, true);
}

template <class Logic>
void MeasureEntry(BenchReport& report, const char* name) {
    QTemporaryDir folder;
    CHistoryManager history(folder.path() + QStringLiteral("/"));
    history.OpenImage(BenchPicture(Size24));
    const double ms = MedianMs(7, [&] {
        Logic logic(history);
        logic.SetViewSize(View.width, View.height);
        logic.SetSource(BenchPicture(Size24));
    });
    report.Add(name, Size24.Megapixels(), ms, "copy", CopyMs(Size24));
}

// From the mouse's move until the window is painted.
template <class Wnd>
void MeasureDrag(BenchReport& report) {
    BenchHost<Wnd> host(BenchPicture(Size24));
    host.canvas->SetPenSize(100);
    BenchStroke::Measure(report, host.canvas, "brush.drag", {37, 3});
}

// A canvas that notes when it was first painted since it was asked to.
class WatchedSpots : public CQuDouQBShowWnd {
  public:
    using CQuDouQBShowWnd::CQuDouQBShowWnd;
    std::optional<Clock::time_point> painted;

  protected:
    void paintEvent(QPaintEvent* event) override {
        CQuDouQBShowWnd::paintEvent(event);
        if (!painted) painted = Clock::now();
    }
};

// From the press until the repaired spot is painted; the step is written after that.
void MeasureSpotClicks(BenchReport& report) {
    constexpr int radius = 25;
    BenchHost<WatchedSpots> host(BenchPicture(Size24));
    host.canvas->SetPenSize(static_cast<int>(2 * radius * host.canvas->GetZoom() + 0.5));
    std::vector<double> times;
    for (int i = 0; i < 16; ++i) {
        const QPoint at(300 + i * 61 % 1000, 200 + i * 97 % 600);
        QApplication::processEvents();
        host.canvas->painted.reset();
        const auto start = Clock::now();
        SendMouse(host.canvas, QEvent::MouseButtonPress, at);
        if (host.canvas->painted && i > 0)  // the first makes pixels of its own and the mask
            times.push_back(std::chrono::duration<double, std::milli>(*host.canvas->painted - start).count());
        SendMouse(host.canvas, QEvent::MouseButtonRelease, at);
        QTest::qWait(2 * CQuDouQBShowWnd::RingTime);
    }
    std::sort(times.begin(), times.end());
    report.Add("spot.click", View.Megapixels(), times[times.size() / 2], "copy", CopyMs(View));
}

// The end of a stroke of one stamp.
template <class Logic>
double ReleaseMs() {
    Brush<Logic> brush(200);
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) {
        brush.logic.StampAt(300 + 150 * i, 900, true);
        const auto start = Clock::now();
        brush.logic.EndStroke();
        times.push_back(MsSince(start));
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace

static const BenchCase entry("brush.enter", [](BenchReport& report) {
    MeasureEntry<CChunCaiLogic>(report, "brush.enter.lips");
    MeasureEntry<CMoPiLogic>(report, "brush.enter.smooth");
});

static const BenchCase stamp("brush.stamp", [](BenchReport& report) {
    Brush<CChunCaiLogic> brush(200);
    brush.logic.StampAt(0, 0, true);
    int n = 0;
    const double ms = MedianMs(101, [&] {
        brush.logic.StampAt(n * 53 % 5000, n * 97 % 3000, true);
        ++n;
    });
    report.Add("brush.stamp", 0.16, ms, "three copies of the square", 3 * CopyMs({400, 400}));
});

static const BenchCase drag("brush.drag", [](BenchReport& report) {
    NeedWindows();
    MeasureDrag<CChunCaiShowWnd>(report);
});

static const BenchCase spotClick("spot.click", [](BenchReport& report) {
    NeedWindows();
    MeasureSpotClicks(report);
});

static const BenchCase strength("brush.strength.drag", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CChunCaiShowWnd> host(BenchPicture(Size24));
    auto* panel = new CMouthColorPanel(host, &host.frame);
    panel->setGeometry(0, 0, 250, 1000);
    panel->show();
    panel->OnFrameMessage(RefreshPanelMessage{17});
    SendMouse(host.canvas, QEvent::MouseButtonPress, {400, 300});
    for (int i = 0; i < 40; ++i) SendMouse(host.canvas, QEvent::MouseMove, {400 + 20 * i, 300 + 8 * i});
    SendMouse(host.canvas, QEvent::MouseButtonRelease, {1200, 620});
    ReportSliderDrag(report, "brush.strength.drag", *panel, "SliderMouthColorAlpha");
});

static const BenchCase compose("brush.compose", [](BenchReport& report) {
    Brush<CChunCaiLogic> brush(200);
    PaintAQuarter(brush.logic);
    int n = 0;
    const double ms = MedianMs(9, [&] { brush.logic.ComposeFull(0.3 + 0.05 * (n++ % 10)); });
    report.Add("brush.compose", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});

static const BenchCase release("brush.release", [](BenchReport& report) {
    report.Add("brush.release.mask", Size24.Megapixels(), ReleaseMs<CChunCaiLogic>(), "copy", CopyMs(Size24));
    report.Add("brush.release.direct", Size24.Megapixels(), ReleaseMs<CMoPiLogic>(), "write() of the same bytes",
               NewFileMs(Size24));
});
