// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

#include "Bench.h"
#include "BenchHost.h"
#include "BenchWindows.h"
#include "CWordWnd.h"

namespace {

constexpr BenchSize View{1600, 1000};

// A canvas with five texts of the default size; the last one is selected and lies free in the middle.
class TextBench : public BenchHost<CWordWnd> {
  public:
    TextBench() : BenchHost<CWordWnd>(BenchPicture(Size24)) {
        const QPoint places[] = {{-400, -300}, {400, -280}, {-380, 300}, {420, 310}, {60, 40}};
        for (const QPoint& by : places) Add(QStringLiteral("Text over the picture"), by);
    }
    void Add(const QString& text, QPoint by) {
        WordStyle style;
        style.fontSize = canvas->GetDefaultFontSize();
        canvas->AddText(text, style);
        const QPoint middle = Middle();
        SendMouse(canvas, QEvent::MouseButtonPress, middle);
        SendMouse(canvas, QEvent::MouseMove, middle + by);
        SendMouse(canvas, QEvent::MouseButtonRelease, middle + by);
        QApplication::processEvents();
    }
    QPoint Middle() const { return canvas->Logic().BoxOf(canvas->Logic().Selected()).Centre(); }
    QPoint RotateAt() const { return canvas->Logic().ButtonsOf(canvas->Logic().Selected()).rotateCentre.toPoint(); }
};

// From an event until its change is painted: a row each for the median and the worst of 240.
void ReportEvents(BenchReport& report, const std::string& name, const std::function<void(int)>& event) {
    std::vector<double> times;
    for (int i = 0; i < 240; ++i) {
        const auto start = std::chrono::steady_clock::now();
        event(i);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        QApplication::processEvents();
    }
    std::sort(times.begin(), times.end());
    report.Add(name, View.Megapixels(), times[times.size() / 2], "copy", CopyMs(View));
    report.Add(name + ".worst", View.Megapixels(), times.back(), "copy", CopyMs(View));
}

}  // namespace

static const BenchCase textDrag("text.drag", [](BenchReport& report) {
    NeedWindows();
    TextBench bench;
    const QPoint from = bench.Middle();
    SendMouse(bench.canvas, QEvent::MouseButtonPress, from);
    ReportEvents(report, "text.drag", [&](int i) {
        SendMouse(bench.canvas, QEvent::MouseMove, from + QPoint(i * 37 % 300 - 150, i * 23 % 200 - 100));
    });
    SendMouse(bench.canvas, QEvent::MouseButtonRelease, from);
});

static const BenchCase textTurn("text.turn", [](BenchReport& report) {
    NeedWindows();
    TextBench bench;
    const QPoint from = bench.RotateAt();
    SendMouse(bench.canvas, QEvent::MouseButtonPress, from);
    ReportEvents(report, "text.turn", [&](int i) {
        SendMouse(bench.canvas, QEvent::MouseMove, from + QPoint(i * 37 % 160 - 80, i * 23 % 120 - 60));
    });
    SendMouse(bench.canvas, QEvent::MouseButtonRelease, from);
});

// Five lines of forty letters, to which one is added.
static const BenchCase textType("text.type", [](BenchReport& report) {
    NeedWindows();
    TextBench bench;
    QString text;
    for (int line = 0; line < 5; ++line)
        text +=
            QStringLiteral("Forty letters of text in every line here") + (line < 4 ? QStringLiteral("\n") : QString());
    ReportEvents(report, "text.type", [&](int i) {
        QString typed = text;
        typed.insert(100, QChar(u'a' + i % 26));
        bench.canvas->SetText(typed);
    });
});

static const BenchCase textBurn("text.burn", [](BenchReport& report) {
    NeedWindows();
    TextBench bench;
    const double ms = MedianMs(
        15, [&] { bench.canvas->GetShowBitmap(); },
        [&, x = 0]() mutable { bench.canvas->SetAlpha(0.5 + 0.001 * (++x)); });
    report.Add("text.burn", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});

// From the last tool's picture to the first paint.
static const BenchCase textEnter("text.enter", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CWordWnd> bench(BenchPicture(Size24));
    bench.canvas->OnApply();
    const double ms = MedianMs(15, [&] {
        auto* entering = new CWordWnd(bench, &bench.frame, bench.history);
        entering->Place(QRect(250, 0, View.width, View.height));
        entering->OnEnter();
        entering->OnImageReady();
        entering->show();
        entering->Redraw(CBaseWnd::Paint::Now);
        delete bench.canvas;
        bench.canvas = entering;
    });
    report.Add("text.enter", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});
