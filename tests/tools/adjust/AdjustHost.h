// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "CAdjustWnd.h"
#include "CBasePanelAdjust.h"
#include "CSliderCtrl.h"
#include "ToolTestHost.h"

// The surroundings of the adjust tool.
class AdjustHost : public ToolTestHost<CAdjustWnd, CBasePanelAdjust> {
  public:
    explicit AdjustHost(const QString& language = QStringLiteral("1033")) : ToolTestHost(language) {}

    CSliderCtrl* Slider(const char* name) const { return Control<CSliderCtrl>(name); }
    QString Label(const char* name) const { return Control<QLabel>(name)->text(); }

    // Acts of the user.
    void Drag(const char* name, int value) const {
        CSliderCtrl* slider = Slider(name);
        QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(slider->value()));
        QTest::mouseMove(slider, slider->HandleAt(value));
        QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(value));
    }
    void Click(const char* name) const { QTest::mouseClick(Control(name), Qt::LeftButton); }
};
