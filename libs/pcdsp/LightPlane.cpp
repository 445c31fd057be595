// SPDX-License-Identifier: GPL-3.0-or-later
#include "LightPlane.h"

#include <cmath>

#include "PlaneBlur.h"

namespace {

constexpr int Colours = SpotPlace::Colours;
constexpr float Near = 1.5f, Far = 2.5f;  // the ring in radii
constexpr int Steps = 8;                  // samples to a radius
constexpr std::size_t LeastSamples = 30;
constexpr int Rounds = 4;
constexpr double Level = 0.02;  // how much a tilt is mistrusted

struct Sample {
    float x, y;  // from the middle, in radii
    float lack[Colours];
};

struct Middle {
    float x, y;
    explicit Middle(const PixelRect& hole)
        : x(0.5f * static_cast<float>(hole.left + hole.right - 1)),
          y(0.5f * static_cast<float>(hole.top + hole.bottom - 1)) {}
};

std::vector<Sample> SamplesOf(const SpotPlace& place, const PatchMix& mix) {
    std::vector<Sample> samples;
    const Middle middle(place.hole);
    const int step = std::max(1, static_cast<int>(place.radius) / Steps);
    const PixelRect box =
        place.hole.Grown(static_cast<int>((Far - 1.0f) * place.radius) + 2).Within(place.holes.Bounds());
    for (int y = box.top; y < box.bottom; y += step)
        for (int x = box.left; x < box.right; x += step) {
            Sample sample{(static_cast<float>(x) - middle.x) / place.radius,
                          (static_cast<float>(y) - middle.y) / place.radius,
                          {}};
            const float away = std::hypot(sample.x, sample.y);
            if (place.holes.Row(y)[x] || away < Near || away > Far || !mix.MeanAt(x, y, sample.lack)) continue;
            for (int c = 0; c < Colours; ++c) sample.lack[c] = place.colours.Row(c, y)[x] - sample.lack[c];
            samples.push_back(sample);
        }
    return samples;
}

struct Fit {
    double middle = 0.0, x = 0.0, y = 0.0;
    double At(const Sample& sample) const { return middle + x * sample.x + y * sample.y; }
};

// Weighed least squares, by elimination. `scale` is the error in levels that halves a sample's weight.
Fit Fitted(const std::vector<Sample>& samples, int c, const Fit& last, double scale) {
    double m[3][4] = {};
    for (const Sample& sample : samples) {
        const double error = (sample.lack[c] - last.At(sample)) / scale, square = error * error;
        const double weight = 1.0 / (1.0 + square * square);
        const double terms[] = {1.0, sample.x, sample.y, sample.lack[c]};
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < 4; ++k) m[i][k] += weight * terms[i] * terms[k];
    }
    m[0][0] += 1e-9;
    m[1][1] += Level * m[0][0];
    m[2][2] += Level * m[0][0];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            if (j == i) continue;
            const double part = m[j][i] / m[i][i];
            for (int k = i; k < 4; ++k) m[j][k] -= part * m[i][k];
        }
    return {m[0][3] / m[0][0], m[1][3] / m[1][1], m[2][3] / m[2][2]};
}

double MedianError(const std::vector<Sample>& samples, int c, const Fit& fit) {
    std::vector<double> errors;
    for (const Sample& sample : samples) errors.push_back(std::abs(sample.lack[c] - fit.At(sample)));
    const auto middle = errors.begin() + static_cast<std::ptrdiff_t>(errors.size() / 2);
    std::nth_element(errors.begin(), middle, errors.end());
    return *middle;
}

}  // namespace

LightPlane::LightPlane(const SpotPlace& place, const PatchMix& mix) {
    const std::vector<Sample> samples = SamplesOf(place, mix);
    if (samples.size() < LeastSamples) return;
    for (int c = 0; c < Colours; ++c) {
        Fit fit;
        double scale = 1e9;
        for (int round = 0; round < Rounds; ++round) {
            fit = Fitted(samples, c, fit, scale);
            scale = 2.0 * MedianError(samples, c, fit) + 0.3;
        }
        middle[c] = static_cast<float>(fit.middle);
        across[c] = static_cast<float>(fit.x) / place.radius;
        down[c] = static_cast<float>(fit.y) / place.radius;
    }
}

void LightPlane::AddTo(const SpotPlace& place, const PixelRect& box, Planes& planes) const {
    const Middle at(place.hole);
    ForEachRow(planes, [&](int c, int y, int width) {
        float* const row = planes.Row(c, y);
        const float light = middle[c] + down[c] * (static_cast<float>(box.top + y) - at.y);
        for (int x = 0; x < width; ++x) row[x] += light + across[c] * (static_cast<float>(box.left + x) - at.x);
    });
}
