// SPDX-License-Identifier: GPL-3.0-or-later
#include "Picture.h"

#include "Noise.h"
#include "Parallel.h"
#include "Truncate.h"

namespace {

// Film: a soft toe, a long shoulder; the middle stays.
double Tone(double light) {
    const double x = light * 1.02;
    const double shoulder = x * (1 + x / 5.5) / (1 + 0.62 * x);
    return Clamp01(1.10 * shoulder);
}

double Encode(double light) {
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

}  // namespace

Picture::Picture(int width)
    : m_width(width),
      m_height(TruncateSide(width * (Scene::Height / Scene::Width) + 0.5)),
      m_pixel(Scene::Width / width),
      m_light(static_cast<std::size_t>(3) * width * m_height) {}

void Picture::Paint(const std::function<void(Brush&)>& paint) {
    ForEachBand(m_height, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            for (int x = 0; x < m_width; ++x) {
                float* at = &m_light[3 * (static_cast<std::size_t>(y) * m_width + x)];
                Brush brush{CanvasOf(x, y), m_pixel, {at[0], at[1], at[2]}};
                paint(brush);
                at[0] = static_cast<float>(brush.colour.x);
                at[1] = static_cast<float>(brush.colour.y);
                at[2] = static_cast<float>(brush.colour.z);
            }
        }
    });
}

std::vector<std::uint8_t> Picture::Develop() const {
    std::vector<std::uint8_t> bytes(m_light.size());
    ForEachBand(m_height, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            for (int x = 0; x < m_width; ++x) {
                const std::size_t at = 3 * (static_cast<std::size_t>(y) * m_width + x);
                const Vec2 p = CanvasOf(x, y);
                const Vec2 off{(p.x - 0.0) / 2.1, (p.y - 0.25) / 2.5};
                const double fall = 1 / std::pow(1 + 0.30 * Dot(off, off), 2.0);
                const double grain = HashUnit(x, y, 5) + HashUnit(x, y, 6) + HashUnit(x, y, 7) - 1.5;
                for (std::size_t c = 0; c < 3; ++c) {
                    const double value = Encode(Tone(m_light[at + c] * fall));
                    const double own = HashUnit(x, y, 8 + static_cast<std::uint32_t>(c)) - 0.5;
                    const double noise = (0.011 * grain + 0.009 * own) * (1 - 0.6 * value);
                    bytes[at + c] = static_cast<std::uint8_t>(Truncate(255 * Clamp01(value + noise) + 0.5));
                }
            }
        }
    });
    return bytes;
}
