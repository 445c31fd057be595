// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PcDspTypes.h"
#include "PointCurves.h"
#include "Resampler.h"

// What a scene finds out about a picture, and what it makes of it. All numbers come from a reduced copy, are summed in
// a fixed order, and move little when the picture does.
struct SceneStatistics {
    double black = 0.0, median = 128.0, bright = 230.0, white = 255.0;  // luma below which 0.5, 50, 95, 99.5 % lie
    double castR = 1.0, castG = 1.0, castB = 1.0;  // light of nearly grey pixels by channel, geometric mean 1
    double greyShare = 0.0;                        // share of pixels that the cast was read from
    double skinShare = 0.0;                        // share of pixels of skin colour
    double skinMedian = 0.0, skinBright = 0.0;     // the luma below which 50 and 95 % of them lie

    explicit SceneStatistics(const PixelView& reduced);
};

// How a scene treats a picture.
struct SceneRecipe {
    double levels;        // how much of the way to full black and white is gone, 0 to 1
    double levelsLimit;   // and the most levels either end moves
    double balance;       // how much of a cast is taken away
    double balanceLimit;  // and the most that a channel's light changes, as a factor above 1
    double warmth;        // light added to red and taken from blue, as a factor above 1
    double median;        // the luma that the middle is drawn to, 0 to 255
    double medianPull;    // and how much
    double contrast;      // of the base layer, as in Light
    double shadowLift;    // levels by which deep shadows of the base layer rise at most
    float baseDetail, fineDetail, skinBase, skinFine;
    float saturation, skinSaturation, sky, foliage, warm, skinWarm, neutral;
};

// The recipe of a scene; null for a number that is no scene.
const SceneRecipe* RecipeOf(eScenarioType type);

// Levels and white balance for this picture, one curve for each channel.
struct SceneCurves {
    LevelCurve r, g, b;
    SceneCurves(const SceneStatistics& statistics, const SceneRecipe& recipe);
};

// The curve of the base layer.
PointCurve SceneTone(const SceneRecipe& recipe);
