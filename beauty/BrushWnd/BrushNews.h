// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What a brush canvas tells its panel: a key asks for a step of the pen's slider or the effect's, up or down.
struct BrushStepNews {
    enum class Slider { Pen, Effect };
    Slider slider;
    int step;
};
