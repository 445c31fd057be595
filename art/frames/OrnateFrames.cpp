// SPDX-License-Identifier: GPL-3.0-or-later
#include "OrnateFrames.h"

const std::vector<FrameArt>& OrnateFrameArt() {
    static const std::vector<FrameArt> art{
        {"Bokeh", "vnbkxc", DrawBokeh},         {"Confetti", "vnbkxc", DrawConfetti},
        {"Dust", "vnbkxc", DrawDust},           {"Flourish", "vnbkxc", DrawFlourish},
        {"Lace", "vnbkxc", DrawLace},           {"Petals", "vnbkxc", DrawPetals},
        {"Rain", "vnbkxc", DrawRain},           {"Snow", "vnbkxc", DrawSnow},
        {"SoftLight", "vnbkxc", DrawSoftLight}, {"Stars", "vnbkxc", DrawStars},
        {"SunFlare", "vnbkxc", DrawSunFlare},   {"WindowLight", "vnbkxc", DrawWindowLight},
    };
    return art;
}
