// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CSliderCtrl.h"

// The quality slider: it fills from its left end, which is no neutral point that a double click could mean. There a
// second press is a press.
class QualitySlider : public CSliderCtrl {
  public:
    using CSliderCtrl::CSliderCtrl;

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
};
