// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

#include "Bitmap.h"

// Pictures of known scenes, and how near another picture comes to one.

// Grey levels of scene(x, y) at the pixels' centres, the first at (0.5, 0.5); opaque.
template <class Scene>
Bitmap Drawn(int width, int height, const Scene& scene) {
    Bitmap bitmap = Bitmap::Uninitialised(width, height);
    std::uint8_t* out = bitmap.MutablePixels();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, out += 4) {
            const auto level = static_cast<std::uint8_t>(std::clamp(scene(x + 0.5, y + 0.5), 0.0, 255.0) + 0.5);
            std::fill_n(out, 3, level);
            out[3] = 255;
        }
    return bitmap;
}

// The mean squared error of levels, as a peak signal to noise ratio.
class SquaredError {
  public:
    void Add(double level, double truth) {
        m_sum += (level - truth) * (level - truth);
        ++m_count;
    }
    // In dB against 255.
    double Psnr() const { return 10.0 * std::log10(255.0 * 255.0 * static_cast<double>(m_count) / m_sum); }

  private:
    double m_sum = 0.0;
    long m_count = 0;
};
