// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "PortraitScene.h"

// The picture while it is painted: linear light in floats, and the way between pixels and canvas units.
class Picture {
  public:
    // Four to five sides, so only the width is given.
    explicit Picture(int width);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    double PixelSide() const { return m_pixel; }
    Vec2 CanvasOf(int x, int y) const {
        return {(x + 0.5) * m_pixel - Scene::OriginX, (y + 0.5) * m_pixel - Scene::OriginY};
    }
    // Pixel coordinates, with the middle of the first pixel at 0.
    Vec2 PixelOf(Vec2 canvas) const {
        return {(canvas.x + Scene::OriginX) / m_pixel - 0.5, (canvas.y + Scene::OriginY) / m_pixel - 0.5};
    }

    void Lay(int x, int y, Colour colour, double share) {
        float* to = &m_light[3 * (static_cast<std::size_t>(y) * m_width + x)];
        to[0] += static_cast<float>((colour.x - to[0]) * share);
        to[1] += static_cast<float>((colour.y - to[1]) * share);
        to[2] += static_cast<float>((colour.z - to[2]) * share);
    }
    // Calls paint for every pixel, on all cores.
    void Paint(const std::function<void(Brush&)>& paint);
    // The developed picture: lens fall-off, film tone and grain; three bytes a pixel, red first.
    std::vector<std::uint8_t> Develop() const;

  private:
    int m_width;
    int m_height;
    double m_pixel;
    std::vector<float> m_light;
};
