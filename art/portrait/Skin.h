// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitScene.h"

// The skin's surface at one point, ready for the lights.
struct SkinPoint {
    Colour albedo;
    Vec3 normal{0, 0, 1};
    double open = 1;
    double lit = 1;
    double gloss = 1;
    double silhouette = 1;  // share of the rim light that can reach the point
};

// Light that leaves skin: soft diffuse light that bleeds red into the shadows, two lobes of shine and the rim light.
Colour LightSkin(const SkinPoint& point);

// Plain skin colour with the fine and coarse unevenness that skin has everywhere.
Colour SkinAlbedo(const PortraitLook& look, Vec2 face);
// Tilt of the surface by pores at a point; strength 1 is a cheek.
Vec3 WithPores(Vec3 normal, Vec2 face, double strength);

// Paints the face's skin with everything that is colour on it: blush, freckles, spots, dark circles.
void PaintFaceSkin(const Scene& scene, Brush& brush, Vec2 face);
// Neck and the skin of the shoulders, below the face.
void PaintNeck(const Scene& scene, Brush& brush);
