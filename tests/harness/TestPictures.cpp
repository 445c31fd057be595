// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestPictures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

namespace TestPictures {
namespace {

struct Rgb {
    double r, g, b;
};

Rgb FromArgb(std::uint32_t c) {
    return {double(c >> 16 & 255), double(c >> 8 & 255), double(c & 255)};
}

Rgb Mix(const Rgb& a, const Rgb& b, double t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// 1 well inside the ellipse, 0 well outside, soft over `rim` of its size.
double Inside(double x, double y, double cx, double cy, double rx, double ry, double rim) {
    const double d = std::hypot((x - cx) / rx, (y - cy) / ry);
    return std::clamp((1.0 - d) / rim + 0.5, 0.0, 1.0);
}

template <class F>
Bitmap Make(int width, int height, F pixel) {
    Bitmap bitmap = Bitmap::Uninitialised(width, height);
    auto* words = reinterpret_cast<std::uint32_t*>(bitmap.MutablePixels());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) *words++ = pixel(x, y);
    return bitmap;
}

std::uint32_t Byte(double v) {
    return static_cast<std::uint32_t>(std::clamp(v, 0.0, 255.0));
}

}  // namespace

Bitmap Ramp(int width, int height) {
    return Make(width, height, [&](int x, int) {
        const auto v = static_cast<std::uint32_t>(x * 255 / std::max(1, width - 1));
        return 0xFF000000u | v << 16 | v << 8 | v;
    });
}

Bitmap Checker(int width, int height, int side, std::uint32_t first, std::uint32_t second) {
    return Make(width, height, [&](int x, int y) { return (x / side + y / side) % 2 ? second : first; });
}

Bitmap Noise(int width, int height, std::uint32_t seed, bool opaque) {
    std::mt19937 random(seed);
    return Make(width, height, [&](int, int) {
        const auto v = static_cast<std::uint32_t>(random());
        return opaque ? v | 0xFF000000u : v;
    });
}

Bitmap Face(int width, int height, std::uint32_t skin, std::uint32_t seed) {
    std::mt19937 random(seed);
    const Rgb tone = FromArgb(skin);
    return Make(width, height, [&](int px, int py) {
        const double x = (px + 0.5) / width, y = (py + 0.5) / height;
        Rgb c = Mix({70, 96, 120}, {168, 186, 178}, 0.5 + 0.5 * std::sin(3.0 * x + 2.0 * y));
        const double head = Inside(x, y, 0.5, 0.5, 0.3, 0.4, 0.08);
        const double shade = 1.08 - 0.5 * (x - 0.35) * (x - 0.35) - 0.25 * (y - 0.4) * (y - 0.4);
        c = Mix(c, {tone.r * shade, tone.g * shade, tone.b * shade}, head);
        for (const double ex : {0.38, 0.62}) {
            c = Mix(c, {240, 238, 234}, Inside(x, y, ex, 0.44, 0.06, 0.028, 0.3));
            c = Mix(c, {60, 44, 34}, Inside(x, y, ex, 0.44, 0.024, 0.024, 0.3));
        }
        c = Mix(c, {180, 84, 84}, Inside(x, y, 0.5, 0.68, 0.1, 0.03, 0.3));
        const double grain = (static_cast<double>(random() % 1024) / 1023.0 - 0.5) * 6.0;
        return 0xFF000000u | Byte(c.r + grain) << 16 | Byte(c.g + grain) << 8 | Byte(c.b + grain);
    });
}

Bitmap Plain(int width, int height, std::uint32_t argb) {
    Bitmap bitmap = Bitmap::Uninitialised(width, height);
    bitmap.Fill(argb);
    return bitmap;
}

int LargestDifference(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height()) return 256;
    int largest = 0;
    for (std::size_t i = 0; i < a.ByteCount(); ++i)
        largest = std::max(largest, std::abs(a.Pixels()[i] - b.Pixels()[i]));
    return largest;
}

std::uint32_t PixelAt(const Bitmap& bitmap, int x, int y) {
    return reinterpret_cast<const std::uint32_t*>(bitmap.Row(y))[x];
}

}  // namespace TestPictures
