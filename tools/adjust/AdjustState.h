// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "AdjustParams.h"
#include "Bitmap.h"

// What the adjust tool holds beside its view: a plain value, and a cheap one, since bitmaps share their pixels until
// they are written.
struct AdjustState {
    // Path of the history snapshot that the bitmaps were read from; empty when they came from another tool.
    QString SnapshotPath;

    // Full size: where the slider chain starts; the scene's result when a scene is active, else the same as BaseBitmap.
    Bitmap WorkBitmap;
    // Full size: WorkBitmap with the chain applied, valid while ResultDirty is clear.
    Bitmap ResultBitmap;
    // Full size: the picture with everything baked in; the source of every scene.
    Bitmap BaseBitmap;

    // WorkBitmap or a value changed since ResultBitmap was made.
    bool ResultDirty = true;
    // Something differs from the state at entry.
    bool Modified = false;
    // Values were baked into BaseBitmap since the last push.
    bool BakedPending = false;
    // The step that the tool stands on holds exactly this.
    bool Recorded = false;
    // The scene file holds WorkBitmap, and need not be written again.
    bool SceneFileCurrent = false;

    BasicAdjustParams Basic;
    AutoOptimizeParams Scenario;
    AdvanceAdjustParams Advance;

    bool HasValues() const { return !Scenario.IsDefault() || !Basic.IsDefault() || !Advance.IsDefault(); }
};
