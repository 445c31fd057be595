// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QDir>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CEffectWnd.h"
#include "CTeXiaoPanel.h"
#include "EffectCatalogue.h"
#include "LookTestHost.h"

// The surroundings of the effect tool.
class EffectHost : public LookTestHost<CEffectWnd, CTeXiaoPanel> {
  public:
    using LookTestHost::LookTestHost;

    // Opens a picture as the work area does.
    void Open(const Bitmap& picture) {
        panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
        LookTestHost::Open(picture);
    }
    int Selected(int category) const { return List(category)->SelectedItem(); }

    static Bitmap Effect(Bitmap source, int index) {
        EXPECT_TRUE(RunEffect(source, index, EffectResourceDir()));
        return source;
    }
    static QString CoverPath(const char* file) { return AppPath(QStringLiteral("Temp/TeXiao/")) + QLatin1String(file); }
};
