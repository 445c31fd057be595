// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchHost.h"
#include "BenchSlider.h"
#include "BenchWindows.h"
#include "CEditXuanZhuan.h"
#include "CRotateWnd.h"

static const BenchCase drag("rotate.drag", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CRotateWnd> host(BenchPicture(Size24));
    auto* panel = new CEditXuanZhuan(host, &host.frame);
    panel->setGeometry(0, 0, 250, 1000);
    panel->show();
    host.canvas->ZoomFit();
    QApplication::processEvents();
    ReportSliderDrag(report, "rotate.drag", *panel, "SlideRenYiXuanZhuan");
});
