// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CUndoRedoParams.h"

// The records of the brush tools that paint through a mask. -1 means that nothing was done yet.

// Teeth whitening.
struct TeethWhiteParams : ParamsOf<TeethWhiteParams, 10> {
    // The tool's mask file.
    QString path;
    // Percent.
    int strength = -1;

    bool operator==(const TeethWhiteParams&) const = default;
};

// Lip colour.
struct LipTintParams : ParamsOf<LipTintParams, 11> {
    // The tool's mask file.
    QString path;
    // Percent.
    int strength = -1;
    int brightness = -1;

    bool operator==(const LipTintParams&) const = default;
};

// Eye colour: teeth whitening's fields and a colour, 0 to 255 each.
struct EyeColorParams : ParamsOf<EyeColorParams, 12, TeethWhiteParams> {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const EyeColorParams&) const = default;
};
