// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QAbstractButton>

#include "AppPaths.h"
#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchWindows.h"
#include "CBasePanelFrame.h"
#include "CImageFrameWnd.h"
#include "CNinePartFrame.h"
#include "CSetAlphaWnd.h"
#include "CStripFrame.h"
#include "CXuanCaiFrame.h"
#include "FrameCatalogue.h"

namespace {

QString FramePath(const char* name) {
    return ResourcePath(QStringLiteral("Sucai/Biankuang/") + QLatin1String(name));
}

// A simple frame that is read already, around a picture; the reference is a copy of the result.
template <class Frame>
void ReportSimple(BenchReport& report, const char* name, const char* file) {
    Frame frame;
    if (!frame.Load(FramePath(file))) return;
    const Bitmap& picture = BenchPicture(Size24);
    Bitmap result = frame.Compose(picture, 1.0f);
    const BenchSize size{result.Width(), result.Height()};
    const double ms = MedianMs(
        9, [&] { result = frame.Compose(picture, 1.0f); }, [&] { result = {}; });
    report.Add(name, size.Megapixels(), ms, "copy", CopyMs(size));
}

void ReportOverlay(BenchReport& report, const char* name, const char* file) {
    CXuanCaiFrame frame;
    if (!frame.Load(FramePath(file))) return;
    const Bitmap& picture = BenchPicture(Size24);
    Bitmap result = picture;
    frame.Compose(result);
    const double ms = MedianMs(
        9, [&] { frame.Compose(result); }, [&] { result = picture; });
    report.Add(name, Size24.Megapixels(), ms, "copy", CopyMs(Size24));
}

class FrameHost : public BenchHost<CImageFrameWnd> {
  public:
    explicit FrameHost(const Bitmap& picture) : BenchHost(picture), panel(new CBasePanelFrame(*this, &frame)) {
        panel->setGeometry(0, 0, 250, 1000);
        panel->show();
    }
    ~FrameHost() override { delete panel; }

    void SendFrame(const FrameMessage& message) override {
        if (std::holds_alternative<HandOffMessage>(message)) panel->OnFrameMessage(message);
    }
    void Open() { panel->OnFrameMessage(ImageLoadedMessage{CImageFrameWnd::Facts.number}); }
    void Await(int kind) {
        while (!panel->IsLoaded(kind)) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    CBasePanelFrame* panel;
};

}  // namespace

static const BenchCase frameStrip("frame.strip", [](BenchReport& report) {
    ReportSimple<CStripFrame>(report, "frame.strip", "JianDan/Wood.nlf");
});

static const BenchCase frameNine("frame.nine", [](BenchReport& report) {
    ReportSimple<CNinePartFrame>(report, "frame.nine", "JianDan/MatWhite.vnbkwz");
});

// Drawn by its alpha, and in a blend mode.
static const BenchCase frameOverlay("frame.overlay", [](BenchReport& report) {
    ReportOverlay(report, "frame.overlay", "XuanCai/Lace.vnbkxc");
    ReportOverlay(report, "frame.overlay.blend", "XuanCai/Bokeh.vnbkxc");
});

static const BenchCase frameDrag("frame.drag", [](BenchReport& report) {
    NeedWindows();
    FrameHost host(BenchPicture(Size24));
    host.Open();
    host.canvas->RunLook(FrameNumber(FrameOrnate, FramePath("XuanCai/Bokeh.vnbkxc")));
    host.panel->OnFrameMessage(RefreshPanelMessage{CImageFrameWnd::Facts.number});
    ReportSliderDrag(report, "frame.drag", *host.panel->Strength(), "SliderSetAlpha");
});

// A page that was never shown: from opening the panel until the last of its twelve rows is in the list.
static const BenchCase frameList("frame.list", [](BenchReport& report) {
    NeedWindows();
    std::unique_ptr<FrameHost> host;
    const double ms = MedianMs(
        7,
        [&] {
            host->Open();
            host->Await(FrameSimple);
        },
        [&] {
            host = nullptr;
            host = std::make_unique<FrameHost>(BenchPicture({600, 400}));
        });
    report.Add("frame.list", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});
