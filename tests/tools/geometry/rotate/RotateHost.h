// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QLabel>

#include "CEditXuanZhuan.h"
#include "CRotateWnd.h"
#include "CSliderCtrl.h"
#include "EditHost.h"
#include "PC_Dsp.h"

// The rotate tool's canvas and panel side by side.
class RotateHost : public EditHost<CRotateWnd, CEditXuanZhuan> {
  public:
    using EditHost::EditHost;

    CSliderCtrl* Slider() const { return Control<CSliderCtrl>("SlideRenYiXuanZhuan"); }
    QString Value() const { return Control<QLabel>("RenYiXuanZhuanVal")->text(); }
    Bitmap Result() const { return canvas->GetShowBitmap(); }
    const RotateState& State() const { return canvas->Logic().State(); }

    void PressSlider() const { QTest::mousePress(Slider(), Qt::LeftButton, {}, Slider()->HandleAt(Slider()->value())); }
    // The handle goes to where `angle` lies; a pixel may stand for more than one degree.
    void MoveSlider(int angle) const { QTest::mouseMove(Slider(), Slider()->HandleAt(angle)); }
    void ReleaseSlider() const {
        QTest::mouseRelease(Slider(), Qt::LeftButton, {}, Slider()->HandleAt(Slider()->value()));
    }
    // By the keyboard, exactly.
    void SetAngle(int angle) const {
        Slider()->setFocus();
        while (Slider()->value() != angle)
            QTest::keyClick(Slider(), Slider()->value() < angle ? Qt::Key_Right : Qt::Key_Left);
    }
    static Bitmap Turned(const Bitmap& source, int angle) { return PC_Dsp::MultiRotate(source, angle, 0, 0, 0, 0); }
    static Bitmap Reoriented(Bitmap source, RotateFlipType type) {
        EXPECT_NE(PC_Dsp::SingleRotate(source, type), 0);
        return source;
    }
};
