// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QString>
#include <utility>
#include <vector>

#include "CUndoRedoParams.h"

// The records of the adjust tool. Each is written only when it is not default.

// A one-click scene.
struct AutoOptimizeParams : ParamsOf<AutoOptimizeParams, 1> {
    // 0 none, 1 scenery, 2 portrait, 3 objects, 4 food.
    int ScenarioIndex = 0;
    // File with the scene's result.
    QString path;

    // No scene is active; the path does not count.
    bool IsDefault() const { return ScenarioIndex == 0; }
    bool operator==(const AutoOptimizeParams&) const = default;
};

// The basic slider group; 0 leaves the picture as it is.
struct BasicAdjustParams : ParamsOf<BasicAdjustParams, 2> {
    int Brightness = 0;
    int Contrast = 0;
    int Saturation = 0;
    int Sharpness = 0;
    // Carried along by every copy and read by nothing.
    int Unused = 0;

    bool IsDefault() const { return Brightness == 0 && Contrast == 0 && Saturation == 0 && Sharpness == 0; }
    bool operator==(const BasicAdjustParams&) const = default;
};

// The advanced slider group; 0 leaves the picture as it is.
struct AdvanceAdjustParams : ParamsOf<AdvanceAdjustParams, 3> {
    // No control writes Pairs, First and Second, yet they count as set when they are not empty or not 0.
    std::vector<std::pair<std::int32_t, std::int32_t>> Pairs;
    int Exposure = 0;
    int Hue = 0;
    int Red = 0;
    int Green = 0;
    int Blue = 0;
    int First = 0;
    int Second = 0;
    // Carried along by every copy and read by nothing.
    int Unused = 0;

    bool IsDefault() const {
        return Pairs.empty() && Exposure == 0 && Hue == 0 && Red == 0 && Green == 0 && Blue == 0 && First == 0 &&
               Second == 0;
    }
    bool operator==(const AdvanceAdjustParams&) const = default;
};
