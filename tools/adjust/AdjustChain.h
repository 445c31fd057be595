// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "AdjustParams.h"
#include "Bitmap.h"
#include "ProgressSpan.h"

// The chain of pixel calls that the nine slider values stand for.

// One call with its exact numbers, in the order in which the call takes them.
struct AdjustCall {
    enum class Kind { UsmSharp, LightNew, Light, Saturateconst, ExposureFilter, SetHue, SetColor };
    Kind kind = Kind::UsmSharp;
    float a = 0;
    float b = 0;
    float c = 0;
    bool operator==(const AdjustCall&) const = default;
};

// The calls for these values, in their order: sharpness, brightness, contrast, saturation, exposure, hue, colour; each
// only when its value is not 0. `scale` is 1.0 for the full picture; a preview passes its zoom, so that sharpening
// weakens with the reduction and looks the same. A pure function.
//
// Brightness reaches the library in steps of ten slider units; a value between -9 and 9 still makes the call, with step
// 0.
std::vector<AdjustCall> AdjustChain(const BasicAdjustParams& basic, const AdvanceAdjustParams& advance, double scale);

// Runs the calls in one fused pass from `source` into `target`, whose memory is used again where nobody shares it:
// the sharpening first, then everything that is a function of one pixel. Without calls the target shares the source's
// pixels, and also when the work was stopped. False when the sink asked to stop. Any thread.
bool RunAdjustChain(const Bitmap& source, Bitmap& target, const std::vector<AdjustCall>& calls,
                    const ProgressSpan& span = {});
// The same on one bitmap.
bool RunAdjustChain(Bitmap& bitmap, const std::vector<AdjustCall>& calls, const ProgressSpan& span = {});

// Runs a scene (1 to 4) on the bitmap's own pixels. False for an unknown scene and when the sink stopped it. Any
// thread.
bool RunAdjustScene(Bitmap& bitmap, int scenario, const ProgressSpan& span = {});
