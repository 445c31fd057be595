// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <QtCore/QLatin1String>

#include "AdjustParams.h"

// The nine sliders of the adjust panel, stated once: logic, panel and tests walk this table, and a test compares the
// skins with it, so that no slider can ask for what a kernel refuses.

// The two groups never act at once on the same base: touching one folds the other into the picture.
enum class AdjustGroup { Basic, Advance };

// The number by which a slider reaches CAdjustLogic::SetValue; not the order of the sliders on the panel.
namespace AdjustIndex {
inline constexpr int Hue = 0;
inline constexpr int Saturation = 1;
inline constexpr int Brightness = 2;
inline constexpr int Contrast = 3;
inline constexpr int Sharpness = 4;
inline constexpr int Red = 5;
inline constexpr int Green = 6;
inline constexpr int Blue = 7;
inline constexpr int Exposure = 8;
}  // namespace AdjustIndex

struct AdjustSlider {
    int index;
    const char* control;     // objectName of the slider
    const char* valueLabel;  // objectName of the label that shows the value; null for sliders that have none
    AdjustGroup group;
    int BasicAdjustParams::*basicField;      // set in the basic group
    int AdvanceAdjustParams::*advanceField;  // set in the advanced group
    int minimum;
    int maximum;
    int panelPlace;  // position in the ten panel values, where 0 is the scene

    // Position of "no change" on every slider.
    static constexpr int Neutral = 0;

    QLatin1String Control() const { return QLatin1String(control); }
    QLatin1String ValueLabel() const { return QLatin1String(valueLabel); }
};

// In the order in which the panel shows them.
inline constexpr std::array<AdjustSlider, 9> AdjustSliders{{
    {AdjustIndex::Brightness, "Liangdu", "LiangduVal", AdjustGroup::Basic, &BasicAdjustParams::Brightness, nullptr,
     -100, 100, 1},
    {AdjustIndex::Contrast, "Duibidu", "DuibiduVal", AdjustGroup::Basic, &BasicAdjustParams::Contrast, nullptr, -100,
     100, 2},
    {AdjustIndex::Saturation, "Baohedu", "BaoheduVal", AdjustGroup::Basic, &BasicAdjustParams::Saturation, nullptr,
     -100, 100, 3},
    {AdjustIndex::Sharpness, "Ruidu", "RuiduVal", AdjustGroup::Basic, &BasicAdjustParams::Sharpness, nullptr, -100, 100,
     4},
    {AdjustIndex::Exposure, "Baoguang", "BaoguangVal", AdjustGroup::Advance, nullptr, &AdvanceAdjustParams::Exposure,
     -100, 100, 5},
    {AdjustIndex::Hue, "SliderSeXiang", nullptr, AdjustGroup::Advance, nullptr, &AdvanceAdjustParams::Hue, -180, 180,
     6},
    {AdjustIndex::Red, "SliderR", nullptr, AdjustGroup::Advance, nullptr, &AdvanceAdjustParams::Red, -100, 100, 7},
    {AdjustIndex::Green, "SliderG", nullptr, AdjustGroup::Advance, nullptr, &AdvanceAdjustParams::Green, -100, 100, 8},
    {AdjustIndex::Blue, "SliderB", nullptr, AdjustGroup::Advance, nullptr, &AdvanceAdjustParams::Blue, -100, 100, 9},
}};

// The row of an index, or of a control's name; null when there is none.
const AdjustSlider* FindAdjustSlider(int index);
const AdjustSlider* FindAdjustSlider(QStringView control);

// The four one-click scenes: option button, number in the records (1 to 4), type that ScenarioBeauty receives.
struct AdjustScene {
    const char* button;
    int scenario;
    int type;
    QLatin1String Button() const { return QLatin1String(button); }
};
inline constexpr std::array<AdjustScene, 4> AdjustScenes{{
    {"BtnScenery", 1, 5},
    {"BtnPortrait", 2, 2},
    {"BtnObjects", 3, 4},
    {"BtnFood", 4, 3},
}};

// The row of a scene's number; null when there is none.
const AdjustScene* FindAdjustScene(int scenario);
