// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBrushPanel.h"
#include "CWarpWnd.h"

// Base of the panels of the tools that push pixels about: their two sliders.
class CWarpPanel : public CBrushPanel {
    Q_OBJECT

  protected:
    CWarpPanel(ToolHost& host, QWidget* parent) : CBrushPanel(host, parent) {}

    // The canvas of this panel's tool; null while another's is on show.
    CWarpWnd* Brush() const override = 0;
    // In percent, for the places that the hand comes to.
    BrushSlider StrengthSlider(const char* control, const char* valueLabel) {
        return {control,
                valueLabel,
                Unit::Percent,
                {},
                [this](int value) { Brush()->SetStrength(value); },
                [this] { return Brush()->Strength(); }};
    }
};
