// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "BenchTool.h"
#include "BenchWindows.h"
#include "CEditXuanZhuan.h"
#include "CSliderCtrl.h"
#include "RotateWnd.h"

static const BenchCase drag("rotate.drag", [](BenchReport& report) {
    NeedWindows();
    BenchHost<CRotateWnd, CEditXuanZhuan> host(BenchPicture(Size24));
    auto* slider = host.panel->Find<CSliderCtrl>(QStringLiteral("SlideRenYiXuanZhuan"));
    if (!slider) {
        std::printf("%-28s no skin beside the program: not measured\n", "rotate.drag");
        return;
    }
    ReportDrag(report, "rotate.drag", *slider);
});
