// SPDX-License-Identifier: GPL-3.0-or-later
// Slimming and one-click beauty at 24 megapixels: under the hand, at the end of a stroke, and their lists.

#include "Bench.h"
#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchStroke.h"
#include "BenchWindows.h"
#include "CMeiRongMeiYan.h"
#include "CMRYiJianMeiYanWnd.h"
#include "CSetAlphaWnd.h"
#include "CShouLianSSWnd.h"

namespace {

constexpr BenchSize View{1600, 1000};
constexpr int Entries = 200;

class LooksHost : public BenchHost<CMRYiJianMeiYanWnd> {
  public:
    explicit LooksHost(const Bitmap& picture) : BenchHost(picture), panel(new CMeiRongMeiYan(*this, &frame)) {
        panel->setGeometry(0, 0, 250, 1000);
        panel->show();
        Fill();
    }
    ~LooksHost() override { delete panel; }

    void SendFrame(const FrameMessage& message) override {
        if (std::holds_alternative<HandOffMessage>(message)) panel->OnFrameMessage(message);
    }
    // From the crop of the picture until the last of the eight rows is in the list.
    void Fill() {
        panel->OnFrameMessage(ImageLoadedMessage{CMRYiJianMeiYanWnd::Facts.number});
        while (!panel->IsLoaded(1)) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    CMeiRongMeiYan* panel;
};

}  // namespace

// From the mouse's move until the window is painted.
static const BenchCase drag("warp.drag", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CShouLianSSWnd> host(BenchPicture(Size24));
    host.canvas->SetPenSize(200);
    BenchStroke::Measure(report, host.canvas, "warp.drag", {3, 2});
});

// The places of a drag that wait at its end, each of radius 300 in the picture and a motion of ten pixels.
static const BenchCase drain("warp.drain", [](BenchReport& report) {
    QTemporaryDir folder;
    CHistoryManager history(folder.path() + QStringLiteral("/"));
    history.OpenImage(BenchPicture(Size24));
    CShouLianSSLogic logic(history);
    logic.SetViewSize(View.width, View.height);
    logic.SetSource(BenchPicture(Size24));
    logic.SetZoom(0.3);
    logic.SetPenSize(80);
    const QPoint start = logic.Geometry().ScreenRect().center() - QPoint(300, 0);
    const double ms = MedianMs(
        5, [&] { logic.WaitForWorker({}); },
        [&] {
            logic.DropStroke();
            logic.BeginStroke(start);
            for (int i = 0; i < Entries; ++i) logic.MoveStroke(start + QPoint(3 * i, 0));
        });
    logic.DropStroke();
    report.Add("warp.drain", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});

static const BenchCase list("beauty.list", [](BenchReport& report) {
    NeedWindows();
    LooksHost host(BenchPicture(Size24));
    report.Add("beauty.list", Size24.Megapixels(), MedianMs(9, [&] { host.Fill(); }), "copy", CopyMs(Size24));
});

static const BenchCase strength("beauty.drag", [](BenchReport& report) {
    NeedWindows();
    LooksHost host(BenchPicture(Size24));
    host.canvas->RunLook(1);
    host.panel->OnFrameMessage(RefreshPanelMessage{CMRYiJianMeiYanWnd::Facts.number});
    ReportSliderDrag(report, "beauty.drag", *host.panel->Strength(), "SliderSetAlpha");
});
