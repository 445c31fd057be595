// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QAbstractButton>

#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchWindows.h"
#include "CEffectWnd.h"
#include "CSetAlphaWnd.h"
#include "CTeXiaoPanel.h"

namespace {

class EffectHost : public BenchHost<CEffectWnd> {
  public:
    explicit EffectHost(const Bitmap& picture) : BenchHost(picture), panel(new CTeXiaoPanel(*this, &frame)) {
        panel->setGeometry(0, 0, 250, 1000);
        panel->show();
        Open();
    }
    ~EffectHost() override { delete panel; }

    void SendFrame(const FrameMessage& message) override {
        if (std::holds_alternative<HandOffMessage>(message)) panel->OnFrameMessage(message);
    }
    // Opens the panel anew, with the first category filled and no other.
    void Open() {
        panel->OnFrameMessage(ImageLoadedMessage{CEffectWnd::Facts.number});
        Await(1);
    }
    void Await(int category) {
        while (!panel->IsLoaded(category)) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    CTeXiaoPanel* panel;
};

}  // namespace

static const BenchCase effectDrag("effect.drag", [](BenchReport& report) {
    NeedWindows();
    EffectHost host(BenchPicture(Size24));
    host.canvas->RunLook(16);
    host.panel->OnFrameMessage(RefreshPanelMessage{CEffectWnd::Facts.number});
    ReportSliderDrag(report, "effect.drag", *host.panel->Strength(), "SliderSetAlpha");
});

// From the click on its button until the last of its eight rows is in the list.
static const BenchCase effectCategory("effect.category", [](BenchReport& report) {
    NeedWindows();
    EffectHost host(BenchPicture(Size24));
    constexpr int Lomo = 4;
    auto* button = host.panel->Find<QAbstractButton>(QStringLiteral("BtnLomo"));
    const double ms = MedianMs(
        9,
        [&] {
            button->click();
            host.Await(Lomo);
        },
        [&] { host.Open(); });
    report.Add("effect.category", Size24.Megapixels(), ms, "copy", CopyMs(Size24));
});
