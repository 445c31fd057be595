// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "CUndoRedoParams.h"

// The record of one-click beauty: a look over the picture.
struct AutoBeautifyParams : ParamsOf<AutoBeautifyParams, 5> {
    // 1 to 8; 0 is no look.
    int preset = 0;
    // Strength in percent.
    int Alpha = 100;
    // File with the picture at the look's full strength.
    QString path;

    bool operator==(const AutoBeautifyParams&) const = default;
};
