// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlainBrush.h"

#include <cmath>

namespace {

// A disc of that alpha over what is there, to the nearest level.
std::uint8_t Over(std::uint8_t ground, std::uint8_t colour, std::uint8_t alpha) {
    return static_cast<std::uint8_t>(std::lround((ground * (255.0 - alpha) + colour * double(alpha)) / 255.0));
}

std::uint8_t Mix(std::uint8_t base, std::uint8_t processed, double weight) {
    return static_cast<std::uint8_t>(processed * weight + base * (1.0 - weight));
}

}  // namespace

void PlainBrush::Take(const Bitmap& picture, const Bitmap& effect) {
    base = working = picture;
    processed = effect;
    mask.assign(static_cast<std::size_t>(picture.Width()) * picture.Height(), 0);
    painted = false;
}

void PlainBrush::Stamp(BrushTip::Shape shape, int radius, int x, int y, bool erase, double weight, bool intoMask) {
    const int side = 2 * radius;
    std::vector<std::vector<unsigned char>> table(side, std::vector<unsigned char>(side));
    std::vector<unsigned char*> rows;
    for (auto& row : table) rows.push_back(row.data());
    shape(rows.data(), radius);
    painted = true;
    for (int j = 0; j < side; ++j)
        for (int i = 0; i < side; ++i) {
            const int px = x + i, py = y + j;
            if (px < 0 || py < 0 || px >= base.Width() || py >= base.Height()) continue;
            const std::size_t pixel = static_cast<std::size_t>(py) * base.Width() + px;
            if (intoMask) mask[pixel] = Over(mask[pixel], erase ? 0 : 255, table[j][i]);
            std::uint8_t* out = working.MutablePixels() + 4 * pixel;
            for (int c = 0; c < 3; ++c) {
                const std::uint8_t b = base.Pixels()[4 * pixel + c], p = processed.Pixels()[4 * pixel + c];
                out[c] = Over(out[c], erase ? b : Mix(b, p, weight), table[j][i]);
            }
        }
}

Bitmap PlainBrush::Composed(double strength) const {
    Bitmap result = base;
    std::uint8_t* out = result.MutablePixels();
    for (std::size_t pixel = 0; pixel < mask.size(); ++pixel)
        for (int c = 0; c < 3; ++c) {
            const std::size_t at = 4 * pixel + c;
            if (mask[pixel] != 0)
                out[at] = Mix(base.Pixels()[at], processed.Pixels()[at], mask[pixel] * (strength / 255.0));
        }
    return result;
}
