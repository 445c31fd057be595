// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

// What may differ between portraits of the one face, so that retouches can be judged on more than one person.
struct PortraitLook {
    // From pale to deep, near the six types of Fitzpatrick; the sample is the second.
    enum class Skin { Pale, Fair, Medium, Olive, Brown, Deep };
    enum class Iris { Blue, DarkBrown };
    static constexpr int SkinCount = 6;

    Skin skin = Skin::Fair;
    // Colour that the skin reflects in plain white light, as 0xRRGGBB, in place of that of `skin`; 0 for none.
    std::uint32_t skinColour = 0;
    Iris iris = Iris::Blue;
    bool flaws = true;  // spots, freckles, dark circles and the red pupil
};
