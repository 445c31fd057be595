// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QLabel>

#include "CBasePanelFrame.h"
#include "CImageFrameWnd.h"
#include "LookTestHost.h"

// The surroundings of the frame tool.
class FrameHost : public LookTestHost<CImageFrameWnd, CBasePanelFrame> {
  public:
    using LookTestHost::LookTestHost;

    QStringList Names(int kind) const {
        QStringList names;
        for (int i = 0; i < List(kind)->count(); ++i) names << List(kind)->Row(i)->Name();
        return names;
    }
};
