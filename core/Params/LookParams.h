// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CUndoRedoParams.h"

// The records of the tools that lay one look over the picture at a strength in percent.

// An effect of the catalogue.
struct EffectParams : ParamsOf<EffectParams, 4> {
    // Index in the catalogue; -1 is no effect.
    int EffectIndex = -1;
    int Alpha = 100;
    // File with the picture at the effect's full strength.
    QString path;

    bool operator==(const EffectParams&) const = default;
};

// A one-click beauty look.
struct AutoBeautifyParams : ParamsOf<AutoBeautifyParams, 5> {
    // 0 none, 1 to 8 the looks.
    int preset = 0;
    int Alpha = 100;
    // File with the look's result.
    QString path;

    bool operator==(const AutoBeautifyParams&) const = default;
};

// A frame round the picture.
struct FrameParams : ParamsOf<FrameParams, 6> {
    // Full path of the material.
    QString FramePath;
    // 0 none, 1 simple, 2 ornate.
    int FrameType = 0;
    int Alpha = 100;

    bool operator==(const FrameParams&) const = default;
};
