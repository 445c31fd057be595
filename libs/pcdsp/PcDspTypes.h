// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

// One operation on single pixels, for PC_Dsp::ApplyPointOps. What a, b and c mean, their units, neutral values and
// ranges stand in PC_Dsp.h at the call of the same name.
struct PointOp {
    enum class Kind {
        LightNew,        // a = step
        Light,           // a = contrast
        Saturateconst,   // a = saturation, b = 1 when skin is protected, else 0
        ExposureFilter,  // a = value
        SetHue,          // a = degrees
        SetColor,        // a = red, b = green, c = blue
    };
    Kind kind = Kind::LightNew;
    float a = 0.0f, b = 0.0f, c = 0.0f;
};

// Quarter turns clockwise, then a mirror. The numbers are fixed: they are written into records.
enum RotateFlipType {
    RotateNoneFlipNone = 0,
    Rotate90FlipNone = 1,
    Rotate180FlipNone = 2,
    Rotate270FlipNone = 3,
    RotateNoneFlipX = 4,
    Rotate90FlipX = 5,
    RotateNoneFlipY = 6,  // the same as a half turn and a mirror in x
    Rotate270FlipX = 7,
};

// The kinds of picture that ScenarioBeauty knows, by their fixed numbers.
enum eScenarioType {
    ScenarioPortrait = 2,
    ScenarioFood = 3,
    ScenarioObjects = 4,
    ScenarioScenery = 5,
};

enum class ResampleQuality {
    Fast,  // while the view moves: bilinear where it enlarges
    Best,  // a settled view: cubic where it enlarges
};

// A rectangle of whole pixels; right and bottom lie outside.
struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    PixelRect Grown(int by) const { return {left - by, top - by, right + by, bottom + by}; }
    PixelRect Within(const PixelRect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    PixelRect Moved(int dx, int dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
};
