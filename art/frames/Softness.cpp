// SPDX-License-Identifier: GPL-3.0-or-later
#include "Softness.h"

#include <QtGui/QColor>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Noise.h"
#include "Parallel.h"

namespace {

// One pass of a moving mean along rows of four channels.
void MeanAlong(const std::vector<float>& from, std::vector<float>& to, int count, int lines, int radius, bool across,
               int width) {
    const auto at = [&](int line, int i) {
        return across ? 4 * (std::size_t(line) * width + i) : 4 * (std::size_t(i) * width + line);
    };
    ForEachBand(lines, 16, [&](int first, int last) {
        for (int line = first; line < last; ++line)
            for (int c = 0; c < 4; ++c) {
                double sum = 0;
                const auto value = [&](int i) { return from[at(line, std::clamp(i, 0, count - 1)) + c]; };
                for (int i = -radius; i <= radius; ++i) sum += value(i);
                for (int i = 0; i < count; ++i) {
                    to[at(line, i) + c] = static_cast<float>(sum / (2 * radius + 1));
                    sum += value(i + radius + 1) - value(i - radius);
                }
            }
    });
}

}  // namespace

QImage Computed(int width, int height, const std::function<QRgb(int x, int y)>& colour) {
    QImage image(width, height, QImage::Format_ARGB32);
    uchar* bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    ForEachBand(height, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            auto* row = reinterpret_cast<QRgb*>(bits + y * stride);
            for (int x = 0; x < width; ++x) row[x] = colour(x, y);
        }
    });
    return image;
}

QImage Blurred(const QImage& image, double deviation) {
    QImage result = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int width = result.width(), height = result.height();
    // Three means of this radius have nearly the deviation wanted.
    const int radius = std::max(1, static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2)));
    std::vector<float> a(4 * std::size_t(width) * height), b(a.size());
    for (int y = 0; y < height; ++y) std::copy_n(result.constScanLine(y), 4 * width, &a[4 * std::size_t(y) * width]);
    for (int pass = 0; pass < 3; ++pass) {
        MeanAlong(a, b, width, height, radius, true, width);
        MeanAlong(b, a, height, width, radius, false, width);
    }
    for (int y = 0; y < height; ++y) {
        uchar* row = result.scanLine(y);
        for (int i = 0; i < 4 * width; ++i)
            row[i] = static_cast<uchar>(std::clamp(std::lround(a[4 * std::size_t(y) * width + i]), 0L, 255L));
    }
    return result;
}

double Ramp(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double Mixed(double a, double b, double share) {
    return a + (b - a) * share;
}

QColor MixedColour(const QColor& a, const QColor& b, double share) {
    const auto mix = [&](int x, int y) { return static_cast<int>(std::lround(Mixed(x, y, share))); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()), mix(a.alpha(), b.alpha())};
}

QColor Shaded(const QColor& colour, double factor) {
    const auto shade = [&](int v) { return std::clamp(static_cast<int>(std::lround(v * factor)), 0, 255); };
    return {shade(colour.red()), shade(colour.green()), shade(colour.blue()), colour.alpha()};
}

// Two noises, one period apart, fade into each other.
double PeriodicNoise(double x, double y, double period, unsigned seed) {
    const double phase = x - period * std::floor(x / period);
    const double share = phase / period;
    return Mixed(ValueNoise({phase, y}, seed), ValueNoise({phase - period, y}, seed), share);
}
