// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "Bitmap.h"
#include "CUndoRedoParams.h"

// Where the pixels of a step lie: the first record of every step, with order 0.
struct ImageParams : CUndoRedoParams {
    static constexpr int Type = 8;

    // The snapshot file; empty until the step is pushed.
    QString path;
    // The pixels while the step is being built; null once it is pushed, so that the ring holds files, not bitmaps.
    Bitmap image;
    // True asks the push for a file of the step's own, false lets it read the file of the step it stands on.
    bool save = false;

    int GetType() const override { return Type; }
    // A clone never asks for a file: `save` is false in it.
    std::unique_ptr<CUndoRedoParams> Clone() const override {
        auto clone = std::make_unique<ImageParams>(*this);
        clone->save = false;
        return clone;
    }
    bool operator==(const ImageParams&) const = default;
};
