// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "Bitmap.h"
#include "CUndoRedoParams.h"
#include "ProgressSpan.h"

// What a frame does to the picture: nothing; it lies around it and makes it larger; it lies over it and can be faded.
enum FrameKind { FrameNone = 0, FrameSimple = 1, FrameOrnate = 2 };

// The record of the frame tool: a frame on the picture.
struct FrameParams : ParamsOf<FrameParams, 6> {
    // Full path of the frame's file; empty for none.
    QString FramePath;
    // A FrameKind.
    int FrameType = FrameNone;
    // Strength in percent; 100 for all but ornate frames.
    int Alpha = 100;

    // The picture with the frame at full strength. A simple frame may be of either kind of file, whatever its name
    // says. `scale` is the size of a simple frame's pixel in the picture's; an ornate frame keeps the picture's size.
    // Null without a frame, for a null picture, for a file that can't be used, and when `span` stopped it. Any thread.
    Bitmap Apply(const Bitmap& source, float scale, const ProgressSpan& span = {}) const;

    bool operator==(const FrameParams&) const = default;
};
