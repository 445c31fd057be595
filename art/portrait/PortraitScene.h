// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PortraitLook.h"
#include "Relief.h"
#include "Vec.h"

// The fixed arrangement: where the head stands in the picture, how it is turned, and the lights.
//
// Canvas units: the origin is where the middle between the eyes would be without the turn, one unit is half a head, y
// down. The picture shows Width × Height of them whatever its size in pixels.
class Scene {
  public:
    static constexpr double Width = 2.76;
    static constexpr double Height = Width * 5 / 4;
    static constexpr double OriginX = Width / 2 - 0.03;
    static constexpr double OriginY = 1.40;

    explicit Scene(const PortraitLook& look = {});

    // The point of the face that is seen at a canvas point, and back. Outside the head only the tilt is left.
    Vec2 ToFace(Vec2 canvas) const;
    Vec2 ToCanvas(Vec2 face) const;
    // Canvas point of a point in the head's own upright frame (hair, ears), which the turn of the face does not move.
    static Vec2 Tilt(Vec2 head);
    static Vec2 Untilt(Vec2 canvas);

    const Relief& FaceRelief() const { return m_relief; }
    const PortraitLook& Look() const { return m_look; }

  private:
    PortraitLook m_look;
    Relief m_relief;
};

// Directions to the lights and what they send, in linear light.
namespace Light {
inline const Vec3 Key = Normalized({-0.66, -0.52, 0.60});
inline const Vec3 Rim = Normalized({0.85, -0.25, -0.18});
inline constexpr Colour KeyColour{1.58, 1.39, 1.17};
inline constexpr Colour SkyColour{0.24, 0.28, 0.34};
inline constexpr Colour BounceColour{0.17, 0.13, 0.105};
inline constexpr Colour RimColour{0.34, 0.52, 0.62};
}  // namespace Light

// One point of the picture while it is being painted.
struct Brush {
    Vec2 canvas;
    double pixel;  // side of a pixel in units
    Colour colour{};
    // Lays `paint` over with a share of 0 to 1.
    void Lay(Colour paint, double share) { colour = Mix(colour, paint, Clamp01(share)); }
    // Multiplies towards `tint` with a share of 0 to 1.
    void Glaze(Colour tint, double share) { colour = colour * Mix(Colour{1, 1, 1}, tint, Clamp01(share)); }
    // Share of the pixel that lies inside an edge at signed distance d, over an edge of at least `soft`.
    double Cover(double d, double soft = 0) const {
        const double width = std::max(pixel, soft);
        return Smooth(-0.5 * width, 0.5 * width, d);
    }
};
