// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CUndoRedoParams.h"

// The record of the effect tool: an effect of the catalogue over the picture.
struct EffectParams : ParamsOf<EffectParams, 4> {
    // Index in the catalogue; -1 is no effect.
    int EffectIndex = -1;
    // Strength in percent.
    int Alpha = 100;
    // File with the picture at the effect's full strength.
    QString path;

    bool operator==(const EffectParams&) const = default;
};
