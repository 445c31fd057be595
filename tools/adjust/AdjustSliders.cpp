// SPDX-License-Identifier: GPL-3.0-or-later
#include "AdjustSliders.h"

const AdjustSlider* FindAdjustSlider(int index) {
    for (const AdjustSlider& slider : AdjustSliders)
        if (slider.index == index) return &slider;
    return nullptr;
}

const AdjustSlider* FindAdjustSlider(QStringView control) {
    for (const AdjustSlider& slider : AdjustSliders)
        if (control == slider.Control()) return &slider;
    return nullptr;
}

const AdjustScene* FindAdjustScene(int scenario) {
    for (const AdjustScene& scene : AdjustScenes)
        if (scene.scenario == scenario) return &scene;
    return nullptr;
}
